// The exchange reading of a root move: credits for his men that stand attacked, debits for mine.
//
// Each board is told with the root side's king on b1, where it has just come from a1; the square
// value is left out. Every row is read for Black too, on the mirror image.
#include <gtest/gtest.h>

#include "board/root_move.h"
#include "eval/bench.h"
#include "eval/knobs.h"
#include "eval/strategy.h"

namespace {

using korvu::Cor;

// Puts the king back where it came from, and makes its move as the root does.
template <Cor cor>
int rate(const std::string& fen) {
  using L = korvu::Lado<cor>;
  bench::lay(fen);
  korvu::matrix = 0;
  EXPECT_EQ(korvu::tab[L::primeira(1)], L::rei) << fen;
  korvu::tab[L::primeira(1)] = 0;
  korvu::tab[L::primeira(0)] = L::rei;
  korvu::init_tabuleiro2<cor>(0, L::fila(0), 1, L::fila(0));
  korvu::verifica_estrategia<cor>();
  return korvu::ATAQUE;
}

struct Row {
  const char* what;
  const char* fen;
  int n;
};

void expect_rows(std::initializer_list<Row> rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(rate<Cor::b>(row.fen), row.n) << "White, " << row.what;
    EXPECT_EQ(rate<Cor::p>(bench::mirrored(row.fen)), row.n) << "Black, " << row.what;
  }
}

}  // namespace

TEST(Credit, King) {
  expect_rows({
      {"by a rook, and he has another man", "7k/p7/8/8/8/8/8/1K5R w - - 0 1", 11},
      {"by a queen", "7k/p7/8/4Q3/8/8/8/1K6 w - - 0 1", 11},
      {"by a knight", "7k/p4N2/8/8/8/8/8/1K6 w - - 0 1", 11},
      {"by rook and queen: once", "7k/p7/8/4Q3/8/8/8/1K5R w - - 0 1", 11},
      {"bare", "7k/8/8/8/8/8/8/1K5R w - - 0 1", 0},
      {"not attacked", "7k/p7/8/8/8/8/8/1K4R1 w - - 0 1", 0},
  });
}

TEST(Credit, CheckIsWeightedByItsSetting) {
  rate<Cor::b>("7k/p7/8/8/8/8/8/1K5R w - - 0 1");
  korvu::agreschrei = 4;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ATAQUE, 44);
  korvu::agreschrei = 0;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ATAQUE, 0);
}

TEST(Credit, TheOtherKingsMenAreCountedAtTheRoot) {
  rate<Cor::b>("7k/8/8/8/8/8/8/1K5R w - - 0 1");
  bench::men(1, 1);  // as if the root move had taken his last man
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ATAQUE, 11);
}

TEST(Credit, Queen) {
  expect_rows({
      // e4 and d3 are protected as often as she attacks them.
      {"by a pawn", "7k/8/8/3q4/4P3/3P4/2P5/1K6 w - - 0 1", 100},
      {"by a knight", "7k/8/8/3q4/8/2N5/8/1K6 w - - 0 1", 100},
      {"by a bishop", "7k/8/8/3q4/8/5B2/6P1/1K6 w - - 0 1", 100},
      {"by a rook", "7k/8/8/3q4/8/3R4/2P5/1K6 w - - 0 1", 100},
      {"defended all the same", "7k/8/4p3/3q4/8/2N5/8/1K6 w - - 0 1", 100},
      {"by a queen", "7k/8/8/3q4/8/3Q4/2P5/1K6 w - - 0 1", 0},
      {"by a king", "7k/8/8/8/8/8/2q5/1K6 w - - 0 1", 0},
  });
}

TEST(Credit, Rook) {
  expect_rows({
      {"by a pawn", "7k/8/8/3r4/4P3/8/8/1K6 w - - 0 1", 50},
      {"by a knight", "7k/8/8/3r4/8/2N5/8/1K6 w - - 0 1", 50},
      {"by a bishop", "7k/8/8/3r4/8/5B2/8/1K6 w - - 0 1", 50},
      {"by a pawn, defended", "7k/8/4p3/3r4/4P3/8/8/1K6 w - - 0 1", 50},
      {"by a pawn and a queen", "7k/8/8/3r4/4P3/8/Q7/1K6 w - - 0 1", 50},
      {"by a queen, undefended", "7k/8/8/3r4/8/8/Q7/1K6 w - - 0 1", 25},
      {"by a queen, defended", "7k/8/4p3/3r4/8/8/Q7/1K6 w - - 0 1", 0},
      {"by a king, undefended", "7k/8/8/8/8/8/2r5/1K6 w - - 0 1", 25},
      {"by a king, defended", "7k/8/6b1/8/8/8/2r5/1K6 w - - 0 1", 0},
      {"by a rook", "7k/8/8/3r4/8/3R4/2P5/1K6 w - - 0 1", 0},
  });
}

TEST(Credit, Knight) {
  expect_rows({
      {"by a pawn", "7k/8/8/3n4/4P3/8/8/1K6 w - - 0 1", 35},
      {"by a pawn, defended", "7k/8/4p3/3n4/4P3/8/8/1K6 w - - 0 1", 35},
      {"by a rook, undefended", "7k/8/8/3n4/8/8/8/1K1R4 w - - 0 1", 17},
      {"by a bishop, undefended", "7k/8/8/3n4/8/5B2/8/1K6 w - - 0 1", 17},
      {"by a queen, undefended", "7k/8/8/3n4/8/8/Q7/1K6 w - - 0 1", 17},
      {"by a king, undefended", "7k/8/8/8/8/8/2n5/1K6 w - - 0 1", 17},
      {"by a rook, defended", "7k/8/4p3/3n4/8/8/8/1K1R4 w - - 0 1", 0},
      {"by a bishop, defended", "7k/8/4p3/3n4/8/5B2/8/1K6 w - - 0 1", 0},
      {"by a queen, defended", "7k/8/4p3/3n4/8/8/Q7/1K6 w - - 0 1", 0},
      {"by a king, defended", "7k/8/6b1/8/8/8/2n5/1K6 w - - 0 1", 0},
      // The two knights attack each other; the pawn keeps mine from a debit.
      {"by a knight", "7k/8/8/3n4/8/2N5/1P6/1K6 w - - 0 1", 0},
  });
}

TEST(Credit, Bishop) {
  expect_rows({
      {"by a pawn", "7k/8/8/3b4/4P3/3P4/8/1K6 w - - 0 1", 30},
      {"by a pawn, defended", "7k/8/2p5/3b4/4P3/3P4/8/1K6 w - - 0 1", 30},
      {"by a rook, undefended", "7k/8/8/3b4/8/8/8/1K1R4 w - - 0 1", 15},
      {"by a knight, undefended", "7k/8/8/3b4/8/2N5/8/1K6 w - - 0 1", 15},
      {"by a king, undefended", "7k/8/8/8/8/8/2b5/1K6 w - - 0 1", 15},
      {"by a rook, defended", "7k/8/2p5/3b4/8/8/8/1K1R4 w - - 0 1", 0},
      {"by a knight, defended", "7k/8/2p5/3b4/8/2N5/8/1K6 w - - 0 1", 0},
      {"by a king, defended", "2r4k/8/8/8/8/8/2b5/1K6 w - - 0 1", 0},
      {"by a queen", "7k/8/8/3b4/8/8/8/1K1Q4 w - - 0 1", 0},
      {"by a bishop", "7k/8/8/3b4/8/5B2/6P1/1K6 w - - 0 1", 0},
  });
}

TEST(Credit, Pawn) {
  expect_rows({
      {"by a rook", "7k/8/8/3p4/8/8/8/1K1R4 w - - 0 1", 10},
      {"by a knight", "7k/8/8/3p4/8/2N5/8/1K6 w - - 0 1", 10},
      {"by a bishop", "7k/8/8/3p4/8/5B2/8/1K6 w - - 0 1", 10},
      {"by a queen", "7k/8/8/3p4/8/8/Q7/1K6 w - - 0 1", 10},
      {"by a king", "7k/8/8/8/8/8/2p5/1K6 w - - 0 1", 10},
      {"by a rook, defended by a knight", "7k/8/5n2/3p4/8/8/8/1K1R4 w - - 0 1", 0},
      {"by a rook, defended by a pawn", "7k/8/2p5/3p4/8/8/8/1K1R4 w - - 0 1", 0},
      // e4 is attacked once and defended once.
      {"by a rook and a pawn", "7k/8/8/3p4/4P3/8/8/1K1RR3 w - - 0 1", 0},
  });
}

TEST(Debit, Queen) {
  expect_rows({
      {"by a pawn", "7k/8/2p5/3p4/4Q3/8/8/1K6 w - - 0 1", -100},
      {"by a knight", "7k/8/5n2/8/4Q3/8/8/1K6 w - - 0 1", -100},
      {"by a bishop", "7k/1b6/8/8/4Q3/8/8/1K6 w - - 0 1", -100},
      {"by a rook", "4rk2/8/8/8/4Q3/8/8/1K6 w - - 0 1", -100},
      // As often defended as attacked, which is enough against a queen alone.
      {"by a pawn, defended", "7k/8/2p5/3p4/4Q3/3P4/8/1K6 w - - 0 1", -100},
      {"by a knight, defended", "7k/8/5n2/8/4Q3/3P4/8/1K6 w - - 0 1", -100},
      {"by a bishop, defended", "7k/1b6/8/8/4Q3/3P4/8/1K6 w - - 0 1", -100},
      {"by a rook, defended", "4rk2/8/8/8/4Q3/3P4/8/1K6 w - - 0 1", -100},
      {"by a queen, defended", "4q2k/8/8/8/4Q3/3P4/8/1K6 w - - 0 1", 0},
      {"by a queen, undefended", "4q2k/8/8/8/4Q3/8/8/1K6 w - - 0 1", -100},
      // His king stands attacked as well: 11.
      {"by queen and king", "4q3/8/8/5k2/4Q3/8/8/1K6 w - - 0 1", 11 - 100},
      {"by queen and king, a pawn defends", "4q3/8/8/5k2/4Q3/3P4/8/1K6 w - - 0 1", 11},
      {"by three, a rook defends", "q3q3/8/8/5k2/4Q3/8/8/1K2R3 w - - 0 1", 11 - 100},
      {"by three, rook and knight defend", "q3q3/8/8/5k2/4Q3/2N5/8/1K2R3 w - - 0 1", 11},
  });
}

TEST(Debit, Rook) {
  expect_rows({
      {"by a pawn", "7k/8/8/3p4/4R3/8/8/1K6 w - - 0 1", -50},
      {"by a knight", "7k/8/5n2/8/4R3/8/8/1K6 w - - 0 1", -50},
      {"by a bishop", "7k/1b6/8/8/4R3/8/8/1K6 w - - 0 1", -50},
      {"by a pawn, defended", "7k/8/8/3p4/4R3/3P4/8/1K6 w - - 0 1", -50},
      {"by a knight, defended", "7k/8/5n2/8/4R3/3P4/8/1K6 w - - 0 1", -50},
      {"by a bishop, defended", "7k/1b6/8/8/4R3/3P4/8/1K6 w - - 0 1", -50},
      {"by a rook, undefended", "4r2k/8/8/8/4R3/8/8/1K6 w - - 0 1", -50},
      {"by a rook, defended", "4r2k/8/8/8/4R3/8/8/1K2R3 w - - 0 1", 0},
      {"by two rooks, a pawn defends", "4r2k/8/8/8/4R2r/3P4/8/1K6 w - - 0 1", 0},
      {"by three, knight and rook defend", "q3r2k/8/8/8/4R2r/2N5/8/1K2R3 w - - 0 1", -50},
      {"by three, knight and bishop defend", "q3r2k/8/8/8/4R2r/2NB4/8/1K6 w - - 0 1", 0},
  });
}

TEST(Debit, KnightAndBishop) {
  expect_rows({
      {"knight by a pawn, defended", "7k/8/8/3p4/4N3/3P4/8/1K6 w - - 0 1", -30},
      {"knight by a rook, undefended", "4r2k/8/8/8/4N3/8/8/1K6 w - - 0 1", -30},
      {"knight by a rook, defended", "4r2k/8/8/8/4N3/8/8/1K2R3 w - - 0 1", 0},
      {"knight by two rooks, a rook defends", "4r2k/8/8/8/4N2r/8/8/1K2R3 w - - 0 1", -30},
      {"knight by two rooks, a pawn defends", "4r2k/8/8/8/4N2r/3P4/8/1K6 w - - 0 1", 0},
      {"bishop by a pawn, defended", "7k/8/2p5/3p4/4B3/3P4/8/1K6 w - - 0 1", -30},
      {"bishop by a rook, undefended", "4r2k/8/8/8/4B3/8/8/1K6 w - - 0 1", -30},
      {"bishop by a rook, defended", "4r2k/8/8/8/4B3/8/8/1K2R3 w - - 0 1", 0},
      {"bishop by two rooks, a pawn defends", "4r2k/8/8/8/4B2r/3P4/8/1K6 w - - 0 1", 0},
  });
}

TEST(Debit, Pawn) {
  expect_rows({
      {"undefended", "4r2k/8/8/8/4P3/8/8/1K6 w - - 0 1", -10},
      {"defended", "4r2k/8/8/8/4P3/8/8/1K2R3 w - - 0 1", 0},
      {"attacked twice, defended by a pawn", "4r2k/8/8/8/4P2r/3P4/8/1K6 w - - 0 1", -10},
      {"attacked twice, defended twice", "4r2k/8/8/8/4P2r/3P4/8/1K2R3 w - - 0 1", 0},
  });
}

TEST(Debit, NotForTheKing) {
  expect_rows({{"attacked", "1r5k/8/8/8/8/8/8/1K6 w - - 0 1", 0}});
}

TEST(Exchange, CreditsAndDebitsAddUp) {
  // The pawn attacks knight and rook, and hangs to the other rook.
  expect_rows({{"fork and loss", "7k/8/8/3n1r2/4P2r/8/8/1K6 w - - 0 1", 35 + 50 - 10}});
}

// --- Ratings of real moves ---

namespace {

int rating_of(const char* fen, int x1, int y1, int x2, int y2) {
  bench::lay(fen);
  korvu::init_tabuleiro2<Cor::b>(x1, y1, x2, y2);
  korvu::verifica_estrategia<Cor::b>();
  return korvu::ESTRATEGIA;
}

}  // namespace

TEST(RootRating, AQueenHungToAPawnIsTriedLast) {
  // Qd1-d4, where the pawns on c5 and e5 wait; she attacks nothing that is not defended. The square
  // is worth 10 / (1 + 4 + 2) to her, in whole numbers.
  const char* fen = "7k/2p5/3p4/2p1p3/8/8/8/K2Q4 w - - 0 1";
  EXPECT_EQ(rating_of(fen, 3, 0, 3, 3), -100 + 1);
  korvu::matrix = 0;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ESTRATEGIA, -100);
}

TEST(RootRating, AForkIsCutToAHundred) {
  // Nb4-c6 attacks queen and rook.
  EXPECT_EQ(rating_of("3q3k/4r3/8/8/1N6/8/8/K7 w - - 0 1", 1, 3, 2, 5), 100);
  EXPECT_EQ(korvu::ATAQUE, 100 + 50 + korvu::MATRIZ);
  EXPECT_GE(korvu::MATRIZ, 0);
}

TEST(RootRating, ACheckToABareKingAddsNothing) {
  bench::lay("7k/8/8/8/8/8/8/K6R w - - 0 1");
  korvu::matrix = 0;
  korvu::init_tabuleiro2<Cor::b>(7, 0, 7, 1);
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ESTRATEGIA, 0);
  bench::lay("7k/p7/8/8/8/8/8/K6R w - - 0 1");
  korvu::matrix = 0;
  korvu::init_tabuleiro2<Cor::b>(7, 0, 7, 1);
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ESTRATEGIA, 11);
}
