#include "companion/game.h"

#include <algorithm>
#include <stdexcept>

#include "companion/words.h"

namespace companion {
namespace {

using rules::Position;

int count(const Position& p, char man) {
  int n = 0;
  for (int s = 0; s < 64; ++s) n += p.at(s) == man;
  return n;
}

bool pawn_on_a_last_rank(const Position& p) {
  for (int file = 0; file < 8; ++file)
    for (const int rank : {0, 7}) {
      const char man = p.at(rules::square(file, rank));
      if (man == 'P' || man == 'p') return true;
    }
  return false;
}

bool playable(const Position& p) {
  if (p.men() > 32) return false;
  if (count(p, 'K') != 1 || count(p, 'k') != 1 || pawn_on_a_last_rank(p)) return false;
  return !p.attacked(p.king_square(!p.white_to_move()), p.white_to_move());
}

// The castling field, without rights that the board belies.
std::string castling_field(const Position& p) {
  const auto stands = [&](int file, int rank, char man) {
    return p.at(rules::square(file, rank)) == man;
  };
  const rules::CastlingRights& r = p.castling();
  std::string field;
  if (r.white_king_side && stands(4, 0, 'K') && stands(7, 0, 'R')) field += 'K';
  if (r.white_queen_side && stands(4, 0, 'K') && stands(0, 0, 'R')) field += 'Q';
  if (r.black_king_side && stands(4, 7, 'k') && stands(7, 7, 'r')) field += 'k';
  if (r.black_queen_side && stands(4, 7, 'k') && stands(0, 7, 'r')) field += 'q';
  return field.empty() ? "-" : field;
}

bool passed_by_a_pawn(const Position& p) {
  if (!p.en_passant()) return false;
  const bool white_passed = !p.white_to_move();
  const int file = rules::file_of(*p.en_passant()), forward = white_passed ? 1 : -1;
  const int passed = white_passed ? 2 : 5;
  return rules::rank_of(*p.en_passant()) == passed && p.at(rules::square(file, passed)) == ' ' &&
         p.at(rules::square(file, passed - forward)) == ' ' &&
         p.at(rules::square(file, passed + forward)) == (white_passed ? 'P' : 'p');
}

// The position with the rights that are real.
Position set_right(const Position& p) {
  Words fields = words_of(p.fen());
  fields[2] = castling_field(p);
  if (!passed_by_a_pawn(p)) fields[3].assign(1, '-');
  return Position::from_fen(joined(fields));
}

std::optional<Position> read_fen(const std::string& text) {
  try {
    return Position::from_fen(text);
  } catch (const std::invalid_argument&) {
    return std::nullopt;
  }
}

// Board, side, rights and passed square: a FEN without its counters.
std::string essence(const Position& p) {
  const Words fields = words_of(p.fen());
  return joined({fields.begin(), fields.begin() + 4});
}

ReadGame play(Game game, std::span<const std::string> words) {
  game.moves = legal_start(game.now, words);
  for (const rules::Move& move : game.moves) game.now = game.now.after(move);
  if (game.moves.size() == words.size()) return {game, ""};
  return {game, "no legal move: " + words[game.moves.size()]};
}

ReadGame unreadable(const std::string& what) {
  return {std::nullopt, "no position: " + what, false};
}

}  // namespace

std::optional<rules::Move> legal_move(const Position& position, std::string_view word) {
  const std::string text = lower(word);
  for (const rules::Move& move : position.legal_moves())
    if (move.text() == text || move.text() == text + 'q') return move;
  return std::nullopt;
}

std::vector<rules::Move> legal_start(Position position, std::span<const std::string> words) {
  std::vector<rules::Move> moves;
  for (const std::string& word : words) {
    const auto move = legal_move(position, word);
    if (!move) break;
    moves.push_back(*move);
    position = position.after(*move);
  }
  return moves;
}

ReadGame read_game(std::span<const std::string> words) {
  const auto moves = std::find(words.begin(), words.end(), "moves");
  const std::span<const std::string> played{moves == words.end() ? moves : moves + 1, words.end()};
  if (words.empty()) return unreadable("nothing");
  if (words[0] == "startpos") return play(Game{}, played);
  if (words[0] != "fen") return unreadable(words[0]);
  const std::string fen = joined({words.begin() + 1, moves});
  const auto read = read_fen(fen);
  if (!read) return unreadable(fen);
  if (!playable(*read)) return {std::nullopt, "no position to play: " + fen};
  const Position start = set_right(*read);
  const bool from_the_start = essence(start) == essence(Position::start());
  return play({start, from_the_start, {}, start}, played);
}

}  // namespace companion
