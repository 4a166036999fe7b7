// The evaluation once more, as plainly as it can be told: walks over 64 squares, run-time colours,
// one formula a line. It shares nothing with the engine but the slots that set_from_slots reads.
#pragma once

#include <array>

namespace plain {

enum Side : int { white = 0, black = 1 };

constexpr Side other(Side s) {
  return s == white ? black : white;
}

template <class T>
using Both = std::array<T, 2>;  // by Side

// Signed value of what stands on each square, White's men positive. Index 8 x file + rank.
using Board = std::array<int, 64>;

// Everything that an evaluation reads besides the board.
struct Setting {
  Both<int> king_file, king_rank;  // where the last legality tests left the kings
  Both<int> men;                   // at the root, without the king
  Both<float> total;               // at the root, with the king
  Both<float> officers_total;      // at the root, without pawns and king
  Both<int> castling;              // castling marks of the line
  float agres, agresprxrei;
  float mob_weight, pos_weight;  // MOB, PM
  int castling_weight;           // roque_v
  int budget;                    // piecesac
  int matrix, check_value;       // matrix, agreschrei
  float shashinn, extraevalll;
};

Setting setting_from_slots();
Board board_from_bytes(const std::array<unsigned char, 64>& bytes);

struct Figures {
  float pos = 0, cen = 0, kattack = 0, kdefend = 0;
  int mob = 0, att = 0, def = 0, shield = 0;
  int weight = 0, officers = 0, pawns = 0, advance = 0;
  int knights = 0, bishops = 0, rooks = 0, queens = 0;
  int xmin = 7, xmax = 0, ymin = 7, ymax = 0;
};

enum class Mobility { every_move, legal_moves };

// `root` is the root side, `gains` the side whose attacks on greater values count.
Both<Figures> scan(const Board& board, const Setting& set, Side root, Side gains,
                   Mobility mobility);

struct Leaf {
  Both<Figures> figures;
  float correction;  // extraeval
  bool drawn;        // EMPAT
};
Leaf leaf(const Board& board, const Setting& set, Side root, Side to_move);

// How many men of each side and kind attack each square; kinds in the order pawn, knight, bishop,
// rook, queen, king.
struct Attacks {
  std::array<std::array<int, 64>, 6> by_kind{};
  std::array<int, 64> all{};
};
Both<Attacks> attacks(const Board& board);

struct Rating {
  Both<Figures> figures;
  float inherited;  // extraevalll
  int exchange;     // credits less debits
  int matriz;       // MATRIZ as it is left
  int ataque, estrategia;
};
Rating rating(const Board& after, const Both<Attacks>& attackers, const Setting& set, Side root,
              int matriz, bool promotion_urged);

// The root's reading, shashinn. Counts men and material on the board itself; of the setting only
// the king squares and the weights are read.
struct Reading {
  Both<Figures> figures;
  float shashinn;
};
Reading root_reading(const Board& board, Setting set, Side root);

}  // namespace plain
