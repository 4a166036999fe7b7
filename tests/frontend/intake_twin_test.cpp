// Position lines against a plain reader written apart, on lines of games and on garbled ones: what
// fits no rule is skipped, repeated or taken as it stands, and never an error.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "board/state.h"
#include "frontend/line.h"
#include "frontend/position.h"
#include "support/positions.h"
#include "support/referee.h"

namespace {

using Board = std::array<int, 64>;

// A game as the lines of one process leave it. Whatever a line does not name stays.
class PlainGame {
 public:
  Board board{};
  bool king_moved[2] = {}, a_rook_moved[2] = {}, h_rook_moved[2] = {};  // White, Black
  std::array<bool, 8> doubled[2] = {};
  int last_taken = 0;
  int move[4] = {};
  bool white_side = false, has_moves = false;
  std::vector<Board> positions;
  bool chess960 = false;
  bool undefined = false;  // the line has something for which there is no rule

  void take_list(const std::string& line) {
    begin(line);
    const int back_rank[] = {50, 32, 33, 90, 110, 33, 32, 50};
    board.fill(0);
    for (int file = 0; file < 8; ++file) {
      board[at(file, 0)] = back_rank[file];
      board[at(file, 1)] = 10;
      board[at(file, 6)] = -10;
      board[at(file, 7)] = -back_rank[file];
    }
    for (int side : {0, 1}) king_moved[side] = a_rook_moved[side] = h_rook_moved[side] = false;
    replay(24);
  }

  void take_fen(const std::string& line) {
    begin(line);
    for (int side : {0, 1}) king_moved[side] = a_rook_moved[side] = h_rook_moved[side] = true;
    const int end = read_board();
    if (letter(end + 1) == 'w') white_side = true;
    if (letter(end + 1) == 'b') white_side = false;
    read_double_step(read_castling(end + 3));
    has_moves = false;
    for (int k = end + 1; k <= end + 30 && k < static_cast<int>(line_.size()); ++k) {
      if (letter(k) == '\0') break;
      if (letter(k) != 'm' || letter(k + 1) != 'o') continue;
      has_moves = true;
      replay(k + 6);
      break;
    }
  }

  int moves() const { return std::max<int>(1, static_cast<int>(positions.size())); }

 private:
  std::string line_;

  static std::size_t at(int file, int rank) { return static_cast<std::size_t>(8 * file + rank); }
  int letter(int column) const {
    const auto k = static_cast<std::size_t>(column);
    return k < line_.size() ? line_[k] : k == line_.size() ? '\0' : -1;
  }
  bool any_of(int column, std::string_view letters) const {
    const int l = letter(column);
    return l > 0 && letters.find(static_cast<char>(l)) != letters.npos;
  }

  void begin(const std::string& line) {
    line_ = line;
    undefined = false;
    last_taken = 0;
    positions.clear();
    for (auto& files : doubled) files.fill(false);
  }

  void replay(int column) {
    for (;;) {
      const bool promotes =
          any_of(column + 4, "qbrn") && (letter(column + 5) == ' ' || letter(column + 5) == '\0');
      const bool more = letter(column + (promotes ? 5 : 4)) == ' ';
      for (int i = 0; i < 4; ++i) {
        const int value = letter(column + i) - (i % 2 == 0 ? 'a' : '1');
        if (value >= 0 && value <= 7) move[i] = value;
      }
      play(promotes ? letter(column + 4) : '0');
      positions.push_back(board);
      if (!more) return;
      column += promotes ? 6 : 5;
    }
  }

  void play(int promotion) {
    const auto [x1, y1, x2, y2] = move;
    const int man = board[at(x1, y1)];
    last_taken = board[at(x2, y2)];
    const int side = man < 0 ? 1 : 0, sign = man < 0 ? -1 : 1;
    const auto rank = [&](int told) { return side == 0 ? told : 7 - told; };
    bool placed = false;
    if (man == 110 * sign) {
      king_moved[side] = true;
      const bool own_rook = last_taken == 50 * sign;
      if (chess960 && own_rook) {
        board[at(x1, y1)] = board[at(x2, y2)] = 0;
        board[at(x2 < x1 ? 3 : 5, rank(0))] = 50 * sign;
        board[at(x2 < x1 ? 2 : 6, rank(0))] = 110 * sign;
        placed = true;
      } else if (!chess960 && x1 == 4 && y1 == rank(0) && (x2 == 2 || x2 == 6)) {
        board[at(x2 == 2 ? 3 : 5, rank(0))] = 50 * sign;
        board[at(x2 == 2 ? 0 : 7, rank(0))] = 0;
      }
    }
    if (man == 50 * sign && x1 == 0) a_rook_moved[side] = true;
    if (man == 50 * sign && x1 == 7) h_rook_moved[side] = true;
    const bool pawn = man == 10 * sign;
    if (pawn && y2 == rank(5) && doubled[1 - side][static_cast<std::size_t>(x2)]) {
      board[at(x1, y1)] = board[at(x2, rank(4))] = 0;
      board[at(x2, y2)] = man;
      placed = true;
    }
    for (auto& files : doubled) files.fill(false);
    if (pawn && y1 == rank(1) && y2 == rank(3)) doubled[side][static_cast<std::size_t>(x1)] = true;
    if (!placed) {
      board[at(x2, y2)] = man;
      board[at(x1, y1)] = 0;  // a move onto its own square takes the man off
    }
    if (board[at(x2, y2)] == 10 * sign && pawn && y2 == rank(7))
      for (const auto& [l, value] : {std::pair{'q', 90}, {'r', 50}, {'n', 32}, {'b', 33}})
        if (promotion == l) board[at(x2, y2)] = value * sign;
  }

  // Gives the column behind the board.
  int read_board() {
    int column = 13;
    for (int rank = 7; rank >= 0; --rank) {
      int file = 0;
      for (const char stop = rank > 0 ? '/' : ' '; letter(column) != stop; ++column) {
        const int l = letter(column);
        if (l == '\0' || l == -1) return column;
        if (l == '9') undefined = true;
        const std::size_t kind = std::string_view("PNBRQKpnbrqk").find(static_cast<char>(l));
        const int values[] = {10, 32, 33, 50, 90, 110, -10, -32, -33, -50, -90, -110};
        const bool empties = l >= '1' && l <= '8';
        if (!empties && kind == std::string_view::npos) continue;
        for (int n = empties ? l - '0' : 1; n > 0; --n, ++file) {
          if (file > 7) undefined = true;
          if (file <= 7) board[at(file, rank)] = empties ? 0 : values[kind];
        }
      }
      if (rank > 0) ++column;
    }
    return column;
  }

  // Gives the column behind the blank that ends the field.
  int read_castling(int first) {
    for (int column = first; column <= first + 4; ++column) {
      const int l = letter(column);
      if (l == ' ') return column + 1;
      if (l == '-') return column + 2;
      if (chess960) continue;
      const std::size_t right = std::string_view("KkQq").find(static_cast<char>(l));
      if (l <= 0 || right == std::string_view::npos) continue;
      king_moved[right % 2] = false;
      (right < 2 ? h_rook_moved : a_rook_moved)[right % 2] = false;
    }
    undefined = true;
    return first + 5;
  }

  void read_double_step(int column) {
    if (!any_of(column, "abcdefgh")) return;
    const auto file = static_cast<std::size_t>(letter(column) - 'a');
    if (letter(column + 1) == '3') doubled[0][file] = true;
    if (letter(column + 1) == '6') doubled[1][file] = true;
  }
};

// --- Lines ---

class Lines {
 public:
  explicit Lines(unsigned seed) : dice_(seed) {}

  std::string list() {
    std::string line = "position startpos moves";
    append_game(line, referee::Position::start(), 2 + dice_() % 30);
    return garbled(line, 24, 29);
  }
  std::string fen() {
    const std::vector<std::string>& all = referee::varied_fens();
    const std::string& text = all[dice_() % all.size()];
    std::string line = "position fen " + text;
    if (dice_() % 3 != 0) {
      line += " moves";
      append_game(line, referee::Position::from_fen(text), 1 + dice_() % 12);
    }
    return garbled(line, 13, 14);
  }

 private:
  void append_game(std::string& line, referee::Position p, std::size_t plies) {
    for (std::size_t k = 0; k < plies; ++k) {
      const std::vector<referee::Move> moves = p.legal_moves();
      if (moves.empty()) return;
      const referee::Move m = moves[dice_() % moves.size()];
      line += ' ' + m.text();
      p = p.after(m);
    }
  }
  // Spoils some characters from the first column on, and keeps the line as long as it must be.
  std::string garbled(std::string line, std::size_t first, std::size_t least) {
    constexpr std::string_view pool = " abcdefgh12345678qrnbKQkqP-/wmox0Z";
    for (std::size_t spoilt = dice_() % 4; spoilt > 0; --spoilt) {
      const std::size_t k = first + dice_() % (line.size() - first);
      const char c = pool[dice_() % pool.size()];
      switch (dice_() % 4) {
        case 0:
          line.insert(k, 1, c);
          break;
        case 1:
          if (line.size() > least) line.erase(k, 1);
          break;
        case 2:
          if (dice_() % 8 == 0) line.resize(std::max(k, least));
          break;
        default:
          line[k] = c;
          break;
      }
    }
    return line;
  }

  std::mt19937 dice_;
};

// --- Comparison ---

Board seen(const korvu::Tabuleiro& t) {
  Board b{};
  for (std::size_t s = 0; s < 64; ++s) b[s] = korvu::com_sinal(t[s]);
  return b;
}

void expect_taken_in(const PlainGame& g) {
  using namespace korvu;
  EXPECT_EQ(seen(tab), g.board);
  const bool white[] = {jm.R_b_jm != 0, jm.T_b_a_jm != 0, jm.T_b_h_jm != 0};
  const bool black[] = {jm.R_p_jm != 0, jm.T_p_a_jm != 0, jm.T_p_h_jm != 0};
  for (const int side : {0, 1}) {
    const bool* lost = side == 0 ? white : black;
    EXPECT_EQ(lost[0], g.king_moved[side]) << side;
    EXPECT_EQ(lost[1], g.a_rook_moved[side]) << side;
    EXPECT_EQ(lost[2], g.h_rook_moved[side]) << side;
  }
  for (std::size_t file = 0; file < 8; ++file) {
    EXPECT_EQ(duplos.pb[file] != 0, g.doubled[0][file]) << file;
    EXPECT_EQ(duplos.pp[file] != 0, g.doubled[1][file]) << file;
  }
  EXPECT_EQ(peca, g.last_taken);
  EXPECT_EQ(nb, g.moves());
  for (std::size_t k = 0; k < g.positions.size(); ++k) ASSERT_EQ(seen(tabr1[k]), g.positions[k]);
  ASSERT_EQ(tabr1[g.positions.size()][0], 1);
}

// Where a line has no rule the two go on from what the engine made of it.
void follow(PlainGame& g) {
  using namespace korvu;
  g.board = seen(tab);
  g.white_side = joga_com_b != 0;
  g.move[0] = jogada.a;
  g.move[1] = jogada.b;
  g.move[2] = jogada.c;
  g.move[3] = jogada.d;
}

TEST(IntakeTwin, AgreesOnGamesAndOnGarbledLines) {
  using namespace korvu;
  Lines lines(8);
  PlainGame game;
  follow(game);
  int compared = 0, without_rule = 0, with_moves = 0;
  for (int k = 0; k < 12000; ++k) {
    const bool is_list = k % 3 == 0;
    game.chess960 = k / 5 % 4 == 0;
    CHESS_960 = game.chess960;
    in = is_list ? lines.list() : lines.fen();
    SCOPED_TRACE(in + (game.chess960 ? " (960)" : ""));
    zera_jogo(Caminho::lista_ou_fen);
    if (is_list) {
      joga_c_fen = 0;
      recebe_lista();
      game.take_list(in);
    } else {
      recebe_fen();
      game.take_fen(in);
    }
    if (game.undefined) {
      follow(game);
      ++without_rule;
      continue;
    }
    expect_taken_in(game);
    const bool odd = game.moves() % 2 == 1;
    if (is_list) {
      EXPECT_EQ(brancas_jogam(), !odd);
    } else {
      EXPECT_EQ(joga_com_b != 0, game.white_side);
      EXPECT_EQ(brancas_jogam(), game.white_side != (game.has_moves && odd));
      with_moves += game.has_moves;
    }
    if (HasFailure()) FAIL() << "at line " << k;
    ++compared;
  }
  CHESS_960 = 0;
  RecordProperty("cases", compared);
  EXPECT_GT(compared, 8000);
  EXPECT_GT(with_moves, 2000);
  EXPECT_LT(without_rule, 4000);
}

}  // namespace
