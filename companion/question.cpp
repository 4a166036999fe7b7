#include "companion/question.h"

#include <algorithm>
#include <cstdlib>

#include "companion/words.h"
#include "frontend/book.h"
#include "frontend/line.h"

namespace companion {
namespace {

using rules::Move;
using rules::Position;

std::string moves_text(const std::vector<Move>& moves) {
  Words words;
  for (const Move& m : moves) words.push_back(m.text());
  return joined(words);
}

std::string list_line(const std::vector<Move>& moves) {
  return moves.empty() ? "position startpos" : "position startpos moves " + moves_text(moves);
}

// A step from one empty square to another, neither of them `occupied`.
Move empty_step(const Position& p, std::optional<int> occupied = std::nullopt) {
  int empty[2] = {}, found = 0;
  for (int s = 0; s < 64 && found < 2; ++s)
    if (p.at(s) == ' ' && s != occupied) empty[found++] = s;
  return {empty[0], empty[1], 0};
}

// The board field and the castling field of the FEN.
struct Fields {
  std::string board, castling;
};
Fields fields_of(const Position& p) {
  const Words words = words_of(p.fen());
  return {words[0], words[2]};
}

// The board field with one man moved.
std::string board_with(const Position& p, int from, int to) {
  return fields_of(p.after({from, to, 0})).board;
}

// A game as the engine is to replay it.
struct Replay {
  Fields fields;
  bool white_first;
  std::vector<Move> moves;
  std::optional<int> occupied = std::nullopt;  // here, though empty in the game's first position
};

// A passed square is told by the double step itself.
Replay replay_of(const Game& game) {
  const Position& p = game.start;
  Replay replay{fields_of(p), p.white_to_move(), game.moves};
  if (!p.en_passant()) return replay;
  const int file = rules::file_of(*p.en_passant());
  const bool white_passed = !p.white_to_move();
  const Move step = {rules::square(file, white_passed ? 1 : 6),
                     rules::square(file, white_passed ? 3 : 4), 0};
  replay.fields.board = board_with(p, step.to, step.from);
  replay.white_first = white_passed;
  replay.moves.insert(replay.moves.begin(), step);
  replay.occupied = step.from;
  return replay;
}

// Can a later position repeat one from before the last move?
bool last_move_can_be_undone(const Game& game) {
  if (game.moves.empty()) return false;
  Position before = game.start;
  for (std::size_t i = 0; i + 1 < game.moves.size(); ++i) before = before.after(game.moves[i]);
  const Move& last = game.moves.back();
  const char man = before.at(last.from);
  return man != 'P' && man != 'p' && before.at(last.to) == ' ';
}

// The test for repetitions expects White's moves in the first, third ... place. With White to move
// the number is even when they stand there. With Black to move one place must be filled behind
// them, or before them when the last move has made all repetitions impossible: what it took, or the
// square that it passed, must stay in force.
void fill_up(Replay& replay, const Game& game) {
  const auto put_first = [&] {
    replay.moves.insert(replay.moves.begin(), empty_step(game.start, replay.occupied));
  };
  if (replay.moves.empty()) {
    const Move step = empty_step(game.start);
    replay.moves = {step, step};
    return;
  }
  const bool undoable = last_move_can_be_undone(game);
  const bool white_moves = game.now.white_to_move();
  if (!replay.white_first && (white_moves || undoable)) put_first();
  if (replay.moves.size() % 2 == 0) return;
  if (undoable)
    replay.moves.push_back(empty_step(game.now));
  else
    put_first();
}

std::string fen_line(const Game& game) {
  Replay replay = replay_of(game);
  fill_up(replay, game);
  return "position fen " + replay.fields.board + (game.now.white_to_move() ? " w " : " b ") +
         replay.fields.castling + " - 0 1 moves " + moves_text(replay.moves);
}

bool answers(std::span<const korvu::Entrada> book, const std::string& line) {
  korvu::in = line;
  return korvu::procura_no_livro(book).has_value();
}

// Without a search, and without a go.
bool answered_at_once(const Game& game) {
  const std::string line = list_line(game.moves);
  if (game.moves.empty()) return true;
  if (game.moves.size() == 1) return answers(korvu::livro_de_um_lance(), line);
  return answers(game.now.white_to_move() ? korvu::livro_b() : korvu::livro_p(), line);
}

std::string primer_for(bool white) {
  if (white) return list_line({});
  return list_line({}) + " moves " + std::string(korvu::livro_de_um_lance().front().lances);
}

}  // namespace

bool in_the_book(const Game& game) {
  return game.from_the_start && answered_at_once(game);
}

Question question_for(const Game& game, bool with_book, bool white_root) {
  const bool white_moves = game.now.white_to_move();
  if (with_book && in_the_book(game)) {
    // A longer line of the book leaves the root colour alone.
    const bool after = game.moves.size() < 2 ? white_moves : white_root;
    return {list_line(game.moves), std::nullopt, after};
  }
  // A shorter list would be answered without a search, or not at all. With the book on a list that
  // it knows would be answered by it.
  if (!game.from_the_start || game.moves.size() < 2)
    return {fen_line(game), std::nullopt, white_moves};
  std::optional<std::string> primer;
  if (white_root != white_moves) primer = primer_for(white_moves);
  return {list_line(game.moves), primer, white_moves};
}

}  // namespace companion
