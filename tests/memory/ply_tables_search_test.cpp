// When a search uses the tables: short searches through the dialogue, and the fill they leave.
#include <gtest/gtest.h>

#include "memory/game_memory.h"
#include "memory/tables_bench.h"
#include "support/lab.h"
#include "tree/try_move.h"

namespace {

using korvu::Cor;

template <int N, Cor cor>
int fill() {
  return korvu::tabela_de<N, cor>().indice();
}

class PlyTablesInSearch : public testing::Test {
 protected:
  void SetUp() override {
    bench::rest_tables();
    lab::clock_at(0);
    lab::dialogue({"setoption name Own book value false", "setoption name Memory value false",
                   "setoption name Deep memory value true"});
  }
  void TearDown() override {
    lab::dialogue({"setoption name Deep memory value true", "setoption name Memory value true",
                   "setoption name Deep value 9"});
  }
};

constexpr const char* white_to_move = "position startpos moves g1f3 g8f6 b1c3 b8c6";
constexpr const char* black_to_move = "position startpos moves g1f3 g8f6 b1c3";
// With that many men a clock of four figures searches three plies, one of three figures one ply.
constexpr const char* three_plies = "go wtime 9000 btime 9000";
constexpr const char* one_ply = "go wtime 900 btime 900";
// A pawn's ending, which nine plies take no time.
constexpr const char* ending = "position fen 7k/8/8/8/8/8/P7/K7 b - - 0 1 moves h8h7";
constexpr const char* long_go = "go wtime 300000 btime 300000";

}  // namespace

TEST_F(PlyTablesInSearch, PlyThreeRecordsInTheChainOfTheRoot) {
  lab::dialogue({white_to_move, three_plies});
  EXPECT_GT((fill<3, Cor::b>()), 0);
  EXPECT_EQ((fill<3, Cor::p>()), 0);
  const int of_white = fill<3, Cor::b>();
  lab::dialogue({black_to_move, three_plies});
  EXPECT_GT((fill<3, Cor::p>()), 0);
  EXPECT_EQ((fill<3, Cor::b>()), of_white);  // a search resets its own chain alone
}

TEST_F(PlyTablesInSearch, EverySearchBeginsWithItsTablesEmpty) {
  lab::dialogue({white_to_move, three_plies});
  const int once = fill<3, Cor::b>();
  ASSERT_GT(once, 0);
  lab::dialogue({white_to_move, three_plies});
  EXPECT_EQ((fill<3, Cor::b>()), once);
}

TEST_F(PlyTablesInSearch, BelowDepthThreeThereIsNothingToRecord) {
  lab::dialogue({white_to_move, one_ply});
  EXPECT_EQ((fill<3, Cor::b>()), 0);
}

TEST_F(PlyTablesInSearch, PliesFourAndFiveRecordFromDepthEight) {
  lab::dialogue({white_to_move, three_plies});
  EXPECT_EQ((fill<4, Cor::p>()), 0);
  EXPECT_EQ((fill<5, Cor::b>()), 0);
  lab::dialogue({"setoption name Deep value 5", ending, long_go});
  EXPECT_GT((fill<4, Cor::p>()), 0);
  EXPECT_GT((fill<5, Cor::b>()), 0);
  EXPECT_EQ((fill<4, Cor::b>()), 0);
  EXPECT_EQ((fill<5, Cor::p>()), 0);
}

TEST_F(PlyTablesInSearch, SwitchedOffNothingIsRecorded) {
  lab::dialogue({"setoption name Deep memory value false", white_to_move, three_plies});
  EXPECT_EQ((fill<3, Cor::b>()), 0);
}

TEST_F(PlyTablesInSearch, SwitchedOffNothingIsForgottenOrRead) {
  lab::dialogue({white_to_move, three_plies});
  const int before = fill<3, Cor::b>();
  ASSERT_GT(before, 0);
  korvu::HASHTABLE3 = 0;
  lab::dialogue({"setoption name Deep memory value false", white_to_move, three_plies});
  EXPECT_EQ((fill<3, Cor::b>()), before);
  EXPECT_EQ(korvu::HASHTABLE3, 0);
}

TEST_F(PlyTablesInSearch, TheButtonEmptiesAllTables) {
  lab::dialogue({white_to_move, three_plies, black_to_move, three_plies});
  ASSERT_GT((fill<3, Cor::b>()), 0);
  ASSERT_GT((fill<3, Cor::p>()), 0);
  lab::dialogue({"setoption name Clear deep memory"});
  EXPECT_EQ((fill<3, Cor::b>()), 0);
  EXPECT_EQ((fill<3, Cor::p>()), 0);
}

// --- The step into a node ---

namespace {

constexpr float known = 17.25F;

// White's pawn from e2 to e4 as a move of ply N - 1, that is still unplayed there but stands on
// tab2, with the bounds wide open and the search `deep` plies long. A record of the position it
// leads to says `known`.
template <int N>
void prepare_step(int deep) {
  lab::position("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1");
  bench::rest_tables();
  korvu::tabd.fill(korvu::tab);
  korvu::jm_D.fill(korvu::jm);
  korvu::duplos_D.fill(korvu::duplos);
  korvu::materialb.fill(410);
  korvu::materialp.fill(410);
  korvu::corte_alfa.fill(0);
  korvu::corte_beta.fill(0);
  korvu::deep = korvu::DEEP = deep;
  korvu::init_tabuleiro2_deep<N - 1, Cor::b>(4, 1, 4, 3);
  bench::remember<N, Cor::b>(known);
  bench::slot<N>() = -1;
  korvu::nd = N - 1;
  korvu::X_D[N] = 5;
}

template <int N>
bool answered_by_the_table() {
  korvu::filho<N - 1, Cor::b>(4, 1, 4, 3);
  const bool answered = bench::slot<N>() == known;
  EXPECT_EQ(answered, korvu::HASHTABLE<N>() == 1);
  EXPECT_EQ(answered, korvu::nd == N - 1);  // the node did not begin
  EXPECT_EQ(answered, korvu::X_D[N] == 5);
  return answered;
}

}  // namespace

TEST(PlyTablesStep, AHitSparesTheNode) {
  prepare_step<3>(3);
  EXPECT_TRUE(answered_by_the_table<3>());
  EXPECT_EQ((fill<3, Cor::b>()), 1);
  prepare_step<4>(9);
  EXPECT_TRUE(answered_by_the_table<4>());
  prepare_step<5>(9);
  EXPECT_TRUE(answered_by_the_table<5>());
}

TEST(PlyTablesStep, AMissRunsTheNodeAndRecordsIt) {
  prepare_step<3>(3);
  korvu::alfa[0] = -16000;
  EXPECT_FALSE(answered_by_the_table<3>());
  EXPECT_EQ((fill<3, Cor::b>()), 2);
}

TEST(PlyTablesStep, SwitchedOffTheNodeRunsAndIsNotRecorded) {
  prepare_step<3>(3);
  korvu::HASHf = 0;
  EXPECT_FALSE(answered_by_the_table<3>());
  EXPECT_EQ((fill<3, Cor::b>()), 1);
  korvu::HASHf = 1;
}

TEST(PlyTablesStep, PliesFourAndFiveAskFromDepthEightAlone) {
  prepare_step<4>(7);
  EXPECT_FALSE(answered_by_the_table<4>());
  EXPECT_EQ((fill<4, Cor::b>()), 1);
  prepare_step<5>(7);
  EXPECT_FALSE(answered_by_the_table<5>());
  EXPECT_EQ((fill<5, Cor::b>()), 1);
  prepare_step<4>(8);
  EXPECT_TRUE(answered_by_the_table<4>());
}
