#include "rules/position.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <initializer_list>
#include <sstream>
#include <stdexcept>

namespace rules {
namespace {

struct Step {
  int file;
  int rank;
};

constexpr std::array<Step, 4> rook_steps = {{{1, 0}, {-1, 0}, {0, 1}, {0, -1}}};
constexpr std::array<Step, 4> bishop_steps = {{{1, 1}, {1, -1}, {-1, 1}, {-1, -1}}};
constexpr std::array<Step, 8> king_steps = {
    {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {1, -1}, {-1, 1}, {-1, -1}}};
constexpr std::array<Step, 8> knight_steps = {
    {{1, 2}, {2, 1}, {2, -1}, {1, -2}, {-1, -2}, {-2, -1}, {-2, 1}, {-1, 2}}};

constexpr char empty = ' ';

constexpr int a1 = square(0, 0), c1 = square(2, 0), d1 = square(3, 0), e1 = square(4, 0),
              f1 = square(5, 0), g1 = square(6, 0), h1 = square(7, 0), b1 = square(1, 0);
constexpr int a8 = square(0, 7), b8 = square(1, 7), c8 = square(2, 7), d8 = square(3, 7),
              e8 = square(4, 7), f8 = square(5, 7), g8 = square(6, 7), h8 = square(7, 7);

constexpr bool on_board(int file, int rank) {
  return file >= 0 && file < 8 && rank >= 0 && rank < 8;
}

constexpr bool is_white(char man) {
  return man >= 'A' && man <= 'Z';
}
constexpr bool is_black(char man) {
  return man >= 'a' && man <= 'z';
}

constexpr char lower(char man) {
  return is_white(man) ? static_cast<char>(man - 'A' + 'a') : man;
}

constexpr char coloured(char lower_man, bool white) {
  return white ? static_cast<char>(lower_man - 'a' + 'A') : lower_man;
}

[[noreturn]] void not_a_fen(std::string_view text) {
  throw std::invalid_argument("not a FEN: " + std::string(text));
}

int counter(const std::string& field, std::string_view whole) {
  int value = 0;
  const char* end = field.data() + field.size();
  const auto [stop, error] = std::from_chars(field.data(), end, value);
  if (error != std::errc() || stop != end || value < 0) not_a_fen(whole);
  return value;
}

}  // namespace

std::string square_name(int sq) {
  return {static_cast<char>('a' + file_of(sq)), static_cast<char>('1' + rank_of(sq))};
}

std::string Move::text() const {
  std::string s = square_name(from) + square_name(to);
  if (promo != 0) s += promo;
  return s;
}

Position Position::start() {
  return from_fen("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1");
}

Position Position::from_fen(std::string_view text) {
  std::istringstream in{std::string(text)};
  std::string board, side, castling, en_passant, halfmoves, number;
  if (!(in >> board >> side >> castling >> en_passant)) not_a_fen(text);

  Position p;
  p.board_.fill(empty);
  int file = 0, rank = 7;
  for (char c : board) {
    if (c == '/') {
      if (file != 8 || rank == 0) not_a_fen(text);
      file = 0;
      --rank;
    } else if (c >= '1' && c <= '8') {
      file += c - '0';
      if (file > 8) not_a_fen(text);
    } else {
      if (std::string_view("PNBRQKpnbrqk").find(c) == std::string_view::npos) not_a_fen(text);
      if (file > 7) not_a_fen(text);
      p.board_[static_cast<std::size_t>(square(file, rank))] = c;
      ++file;
    }
  }
  if (file != 8 || rank != 0) not_a_fen(text);

  if (side != "w" && side != "b") not_a_fen(text);
  p.side_ = side == "w" ? Side::white : Side::black;

  if (castling != "-") {
    for (char c : castling) {
      switch (c) {
        case 'K':
          p.castling_.white_king_side = true;
          break;
        case 'Q':
          p.castling_.white_queen_side = true;
          break;
        case 'k':
          p.castling_.black_king_side = true;
          break;
        case 'q':
          p.castling_.black_queen_side = true;
          break;
        default:
          not_a_fen(text);
      }
    }
  }

  if (en_passant != "-") {
    if (en_passant.size() != 2 || en_passant[0] < 'a' || en_passant[0] > 'h' ||
        (en_passant[1] != '3' && en_passant[1] != '6')) {
      not_a_fen(text);
    }
    p.en_passant_ = square(en_passant[0] - 'a', en_passant[1] - '1');
  }

  if (in >> halfmoves) p.halfmoves_ = counter(halfmoves, text);
  if (in >> number) p.move_number_ = counter(number, text);
  return p;
}

std::string Position::fen() const {
  std::string s;
  for (int rank = 7; rank >= 0; --rank) {
    int gap = 0;
    for (int file = 0; file < 8; ++file) {
      const char man = at(square(file, rank));
      if (man == empty) {
        ++gap;
        continue;
      }
      if (gap > 0) s += std::to_string(gap);
      gap = 0;
      s += man;
    }
    if (gap > 0) s += std::to_string(gap);
    if (rank > 0) s += '/';
  }
  s += white_to_move() ? " w " : " b ";

  std::string rights;
  if (castling_.white_king_side) rights += 'K';
  if (castling_.white_queen_side) rights += 'Q';
  if (castling_.black_king_side) rights += 'k';
  if (castling_.black_queen_side) rights += 'q';
  s += rights.empty() ? "-" : rights;

  s += ' ';
  s += en_passant_ ? square_name(*en_passant_) : "-";
  s += ' ' + std::to_string(halfmoves_) + ' ' + std::to_string(move_number_);
  return s;
}

bool Position::own(int sq) const {
  return white_to_move() ? is_white(at(sq)) : is_black(at(sq));
}

bool Position::enemy(int sq) const {
  return white_to_move() ? is_black(at(sq)) : is_white(at(sq));
}

int Position::king_square(bool white) const {
  const auto king = std::find(board_.begin(), board_.end(), white ? 'K' : 'k');
  return king == board_.end() ? -1 : static_cast<int>(king - board_.begin());
}

int Position::men() const {
  return 64 - static_cast<int>(std::count(board_.begin(), board_.end(), empty));
}

bool Position::attacked(int sq, bool by_white) const {
  const int file = file_of(sq), rank = rank_of(sq);
  const auto holds = [&](int f, int r, char lower_man) {
    return on_board(f, r) && at(square(f, r)) == coloured(lower_man, by_white);
  };

  // A pawn attacks from one rank behind, as its own side sees it.
  const int pawn_rank = by_white ? rank - 1 : rank + 1;
  if (holds(file - 1, pawn_rank, 'p') || holds(file + 1, pawn_rank, 'p')) return true;

  for (const Step s : knight_steps) {
    if (holds(file + s.file, rank + s.rank, 'n')) return true;
  }
  for (const Step s : king_steps) {
    if (holds(file + s.file, rank + s.rank, 'k')) return true;
  }

  const auto seen_along = [&](const std::array<Step, 4>& steps, char slider) {
    for (const Step s : steps) {
      int f = file + s.file, r = rank + s.rank;
      while (on_board(f, r) && at(square(f, r)) == empty) {
        f += s.file;
        r += s.rank;
      }
      if (holds(f, r, slider) || holds(f, r, 'q')) return true;
    }
    return false;
  };
  return seen_along(rook_steps, 'r') || seen_along(bishop_steps, 'b');
}

bool Position::in_check() const {
  const int king = king_square(white_to_move());
  return king >= 0 && attacked(king, !white_to_move());
}

void Position::add_pawn_moves(int from, std::vector<Move>& out) const {
  const int forward = white_to_move() ? 1 : -1;
  const int start_rank = white_to_move() ? 1 : 6;
  const int last_rank = white_to_move() ? 7 : 0;
  const int file = file_of(from), rank = rank_of(from);

  const auto add = [&](int to) {
    if (rank_of(to) != last_rank) {
      out.push_back({from, to, 0});
      return;
    }
    for (char promo : {'q', 'r', 'b', 'n'}) out.push_back({from, to, promo});
  };

  if (!on_board(file, rank + forward)) return;
  const int one_ahead = square(file, rank + forward);
  if (at(one_ahead) == empty) {
    add(one_ahead);
    if (rank == start_rank) {
      const int two_ahead = square(file, rank + 2 * forward);
      if (at(two_ahead) == empty) add(two_ahead);
    }
  }
  for (const int side_file : {file - 1, file + 1}) {
    if (!on_board(side_file, rank + forward)) continue;
    const int to = square(side_file, rank + forward);
    // The passed square is on rank 6 for a White capturer and on rank 3 for a Black one.
    const bool takes_in_passing = en_passant_ == to && rank_of(to) == (white_to_move() ? 5 : 2);
    if (enemy(to) || takes_in_passing) add(to);
  }
}

void Position::add_castling_moves(std::vector<Move>& out) const {
  const bool white = white_to_move();
  const auto all_empty = [&](std::initializer_list<int> squares) {
    return std::all_of(squares.begin(), squares.end(), [&](int s) { return at(s) == empty; });
  };
  const auto none_attacked = [&](std::initializer_list<int> squares) {
    return std::none_of(squares.begin(), squares.end(), [&](int s) { return attacked(s, !white); });
  };

  if (white && at(e1) == 'K') {
    if (castling_.white_king_side && at(h1) == 'R' && all_empty({f1, g1}) &&
        none_attacked({e1, f1, g1})) {
      out.push_back({e1, g1, 0});
    }
    if (castling_.white_queen_side && at(a1) == 'R' && all_empty({b1, c1, d1}) &&
        none_attacked({e1, d1, c1})) {
      out.push_back({e1, c1, 0});
    }
  }
  if (!white && at(e8) == 'k') {
    if (castling_.black_king_side && at(h8) == 'r' && all_empty({f8, g8}) &&
        none_attacked({e8, f8, g8})) {
      out.push_back({e8, g8, 0});
    }
    if (castling_.black_queen_side && at(a8) == 'r' && all_empty({b8, c8, d8}) &&
        none_attacked({e8, d8, c8})) {
      out.push_back({e8, c8, 0});
    }
  }
}

std::vector<Move> Position::pseudo_legal_moves() const {
  std::vector<Move> out;
  for (int from = 0; from < 64; ++from) {
    if (!own(from)) continue;
    const int file = file_of(from), rank = rank_of(from);

    const auto leap = [&](const std::array<Step, 8>& steps) {
      for (const Step s : steps) {
        const int f = file + s.file, r = rank + s.rank;
        if (on_board(f, r) && !own(square(f, r))) out.push_back({from, square(f, r), 0});
      }
    };
    const auto slide = [&](const std::array<Step, 4>& steps) {
      for (const Step s : steps) {
        int f = file + s.file, r = rank + s.rank;
        while (on_board(f, r) && !own(square(f, r))) {
          out.push_back({from, square(f, r), 0});
          if (enemy(square(f, r))) break;
          f += s.file;
          r += s.rank;
        }
      }
    };

    switch (lower(at(from))) {
      case 'p':
        add_pawn_moves(from, out);
        break;
      case 'n':
        leap(knight_steps);
        break;
      case 'b':
        slide(bishop_steps);
        break;
      case 'r':
        slide(rook_steps);
        break;
      case 'q':
        slide(rook_steps);
        slide(bishop_steps);
        break;
      case 'k':
        leap(king_steps);
        break;
      default:
        break;
    }
  }
  add_castling_moves(out);
  return out;
}

std::vector<Move> Position::legal_moves() const {
  std::vector<Move> out;
  for (const Move& m : pseudo_legal_moves()) {
    const Position next = after(m);
    const int king = next.king_square(white_to_move());
    if (king < 0 || !next.attacked(king, !white_to_move())) out.push_back(m);
  }
  return out;
}

bool Position::is_legal(const Move& m) const {
  const std::vector<Move> moves = legal_moves();
  return std::find(moves.begin(), moves.end(), m) != moves.end();
}

Position Position::after(const Move& m) const {
  Position next = *this;
  const auto put = [&](int sq, char man) { next.board_[static_cast<std::size_t>(sq)] = man; };
  const char man = at(m.from);
  const bool white = white_to_move();
  const bool capture = at(m.to) != empty;

  put(m.from, empty);
  put(m.to, m.promo != 0 ? coloured(m.promo, white) : man);

  if (lower(man) == 'p' && file_of(m.from) != file_of(m.to) && !capture) {
    put(square(file_of(m.to), rank_of(m.from)), empty);
  }
  if (man == 'K' && m.from == e1 && m.to == g1) put(h1, empty), put(f1, 'R');
  if (man == 'K' && m.from == e1 && m.to == c1) put(a1, empty), put(d1, 'R');
  if (man == 'k' && m.from == e8 && m.to == g8) put(h8, empty), put(f8, 'r');
  if (man == 'k' && m.from == e8 && m.to == c8) put(a8, empty), put(d8, 'r');

  // A right is gone once anything leaves or reaches the square of its king or rook.
  const auto touched = [&](int sq) { return m.from == sq || m.to == sq; };
  if (touched(e1) || touched(h1)) next.castling_.white_king_side = false;
  if (touched(e1) || touched(a1)) next.castling_.white_queen_side = false;
  if (touched(e8) || touched(h8)) next.castling_.black_king_side = false;
  if (touched(e8) || touched(a8)) next.castling_.black_queen_side = false;

  next.en_passant_.reset();
  if (lower(man) == 'p' && std::abs(rank_of(m.to) - rank_of(m.from)) == 2) {
    next.en_passant_ = square(file_of(m.from), (rank_of(m.from) + rank_of(m.to)) / 2);
  }

  next.halfmoves_ = (lower(man) == 'p' || capture) ? 0 : halfmoves_ + 1;
  if (!white) ++next.move_number_;
  next.side_ = opponent(side_);
  return next;
}

Position Position::with_emptied(int sq) const {
  Position p = *this;
  p.board_[static_cast<std::size_t>(sq)] = empty;
  return p;
}

std::string Position::repetition_key() const {
  Position p = *this;
  p.halfmoves_ = 0;
  p.move_number_ = 1;
  if (en_passant_) {
    const std::vector<Move> moves = legal_moves();
    const bool possible = std::any_of(moves.begin(), moves.end(), [&](const Move& m) {
      return m.to == *en_passant_ && lower(at(m.from)) == 'p' && file_of(m.from) != file_of(m.to);
    });
    if (!possible) p.en_passant_.reset();
  }
  return p.fen();
}

bool Position::insufficient_material() const {
  int knights = 0, light_bishops = 0, dark_bishops = 0;
  for (int sq = 0; sq < 64; ++sq) {
    switch (lower(at(sq))) {
      case 'p':
      case 'r':
      case 'q':
        return false;
      case 'n':
        ++knights;
        break;
      case 'b':
        ((file_of(sq) + rank_of(sq)) % 2 == 0 ? dark_bishops : light_bishops)++;
        break;
      default:
        break;
    }
  }
  if (knights > 0) return knights == 1 && light_bishops + dark_bishops == 0;
  return light_bishops == 0 || dark_bishops == 0;
}

std::optional<Move> Position::move_from_san(std::string_view san) const {
  std::string s(san);
  while (!s.empty() && std::string_view("+#!?").find(s.back()) != std::string_view::npos) {
    s.pop_back();
  }

  const std::vector<Move> moves = legal_moves();
  const auto only = [&](auto fits) -> std::optional<Move> {
    if (std::count_if(moves.begin(), moves.end(), fits) != 1) return std::nullopt;
    return *std::find_if(moves.begin(), moves.end(), fits);
  };

  if (s == "O-O" || s == "O-O-O") {
    const int to_file = s == "O-O" ? 6 : 2;
    return only([&](const Move& m) {
      return lower(at(m.from)) == 'k' && file_of(m.from) == 4 && file_of(m.to) == to_file;
    });
  }

  char promo = 0;
  if (s.size() >= 2 && s[s.size() - 2] == '=') {
    promo = lower(s.back());
    s.resize(s.size() - 2);
  }

  char piece = 'p';
  if (!s.empty() && std::string_view("NBRQK").find(s.front()) != std::string_view::npos) {
    piece = lower(s.front());
    s.erase(s.begin());
  }
  std::erase(s, 'x');

  // What is left is the target, with at most a file and a rank of the from-square in front.
  if (s.size() < 2 || s.size() > 4) return std::nullopt;
  const char to_file = s[s.size() - 2], to_rank = s[s.size() - 1];
  if (to_file < 'a' || to_file > 'h' || to_rank < '1' || to_rank > '8') return std::nullopt;
  const int to = square(to_file - 'a', to_rank - '1');
  s.resize(s.size() - 2);

  return only([&](const Move& m) {
    if (m.to != to || m.promo != promo || lower(at(m.from)) != piece) return false;
    const std::string from = square_name(m.from);
    // Castling has a notation of its own and is not reached through the king's target square.
    if (piece == 'k' && std::abs(file_of(m.from) - file_of(m.to)) > 1) return false;
    return std::all_of(s.begin(), s.end(),
                       [&](char hint) { return from.find(hint) != std::string::npos; });
  });
}

std::uint64_t perft(const Position& p, int depth) {
  if (depth == 0) return 1;
  std::uint64_t total = 0;
  for (const Move& m : p.legal_moves()) total += perft(p.after(m), depth - 1);
  return total;
}

}  // namespace rules
