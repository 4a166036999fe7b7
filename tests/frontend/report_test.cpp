// The info lines and the text of the move.
#include "frontend/report.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "board/state.h"
#include "eval/knobs.h"
#include "memory/ply_tables.h"
#include "support/lab.h"
#include "tree/clock.h"

namespace korvu {
namespace {

class Report : public testing::Test {
 protected:
  void SetUp() override {
    saida = &os_;
    lab::clock_at(5000);
    inicio = 4000;
    emp = -5;
    emppp = -15;
    deep = 9;
    ddep = 11;
    dddep = 10;
    nodes = 4321;
    curr = 3;
    EP = beta1 = 0;
    materialflot0 = 0;
    FULL_inf = HASHf = EXTRA_EVAL = 1;
    FULL3 = FULL4 = FULL5 = 0;
    limpa_tabelas<Cor::b>();
    limpa_tabelas<Cor::p>();
    jogada_texto = {'e', '2', 'e', '4'};
    linha.fill({' ', ' ', ' ', ' '});
    linha[0] = {'g', '1', 'f', '3'};
    linha[1] = {'d', '7', 'd', '5'};
  }

  std::string closing() {
    os_.str("");
    info();
    return os_.str();
  }
  std::string running() {
    os_.str("");
    info_deept();
    return os_.str();
  }
  // The centipawn value of the closing line.
  int closing_value(float score, int depth) {
    EP = score;
    deep = depth;
    const std::string line = closing();
    EXPECT_TRUE(line.starts_with("info score cp ")) << line;
    return std::stoi(line.substr(14));
  }

  std::ostringstream os_;
};

const std::string blanks = std::string(30, ' ');  // six moves of four blanks, each behind one

TEST_F(Report, ClosingLine) {
  EP = 5;
  EXPECT_EQ(closing(), "info score cp 50 depth 11 nodes 4321 pv e2e4\n");
}

TEST_F(Report, OffsetWhileTheDrawValueStands) {
  emp = emppp;
  EXPECT_EQ(closing_value(5, 9), 150);
  EXPECT_EQ(closing_value(5, 8), -50);
}

TEST_F(Report, NoOffsetOnceItHasRisen) {
  for (const int depth : {0, 7, 8, 9, 23}) EXPECT_EQ(closing_value(5, depth), 50);
}

TEST_F(Report, BeyondTheLastPlyThereIsNoClosingLineButAMate) {
  EP = 5;
  deep = 23;
  EXPECT_EQ(closing(), "info score cp 50 depth 11 nodes 4321 pv e2e4\n");
  deep = 24;
  EXPECT_EQ(closing(), "");
  EP = -3300;
  EXPECT_EQ(closing(), "info score mate -12  depth 11 nodes 4321 pv e2e4\n");
}

TEST_F(Report, ALargeScoreIsAMateOnlyWhenItIsOneExactly) {
  EXPECT_EQ(closing_value(15400.001F, 9), 154000);
  EXPECT_EQ(closing_value(3299.75F, 9), 32997);
  EXPECT_EQ(closing_value(-3300.5F, 9), -33005);
  EXPECT_EQ(closing_value(16500, 9), 165000);
  EXPECT_EQ(closing_value(2200, 9), 22000);
}

TEST_F(Report, ValuesAreCutTowardZero) {
  EXPECT_EQ(closing_value(0.99F, 9), 9);
  EXPECT_EQ(closing_value(-0.99F, 9), -9);
  EXPECT_EQ(closing_value(3301, 9), 33010);
}

TEST_F(Report, AScoreThatIsNoNumberShowsAsZero) {
  EXPECT_EQ(closing_value(std::numeric_limits<float>::quiet_NaN(), 9), 0);
}

TEST_F(Report, MatesOfBothSides) {
  const std::pair<float, std::string> cases[] = {
      {15400, "1"},   {14300, "1"},   {13200, "2"},   {12100, "3"},   {11000, "4"},
      {9900, "5"},    {8800, "6"},    {7700, "7"},    {6600, "8"},    {5500, "9"},
      {4400, "10"},   {3300, "11"},   {-15400, "-1"}, {-14300, "-2"}, {-13200, "-3"},
      {-12100, "-4"}, {-11000, "-5"}, {-9900, "-6"},  {-8800, "-7"},  {-7700, "-8"},
      {-6600, "-9"},  {-5500, "-10"}, {-4400, "-11"}, {-3300, "-12"}};
  emp = emppp;  // no offset applies to a mate
  for (const auto& [score, moves] : cases) {
    EP = beta1 = score;
    dddep = 10;
    EXPECT_EQ(closing(), "info score mate " + moves + "  depth 11 nodes 4321 pv e2e4\n");
    EXPECT_TRUE(running().starts_with("info score mate " + moves + "  depth 10 seldepth 12 "));
  }
}

TEST_F(Report, WithoutExtraEvaluationTheDepthIsThatOfThePass) {
  EXTRA_EVAL = 0;
  deep = 3;
  EXPECT_EQ(closing(), "info score cp 0 depth 4 nodes 4321 pv e2e4\n");
  EXPECT_TRUE(running().starts_with("info score cp 0 depth 4 seldepth 4 "));
}

TEST_F(Report, RunningLine) {
  beta1 = -2.5F;
  EXPECT_EQ(running(),
            "info score cp -25 depth 10 seldepth 12 currmove g1f3 currmovenumber 3 nodes 4321 time "
            "1000 hashfull 0 pv g1f3 d7d5" +
                blanks + "\ninfo nps 4000\n");
}

TEST_F(Report, WithoutTablesNoHashfull) {
  HASHf = 0;
  EXPECT_EQ(running(),
            "info score cp 0 depth 10 seldepth 12 currmove g1f3 currmovenumber 3 nodes 4321 time "
            "1000 pv g1f3 d7d5" +
                blanks + "\ninfo nps 4000\n");
}

TEST_F(Report, NoSpeedAtTheStartOfTheClock) {
  lab::clock_at(4000);
  EXPECT_EQ(running().find("nps"), std::string::npos);
}

// The tables of White's searches count, whatever the root colour.
TEST_F(Report, HashfullIsPerMilleOfTheThreeTables) {
  for (int i = 0; i < 300; ++i) {
    tabela_de<3, Cor::b>().abre({});
    tabela_de<3, Cor::b>().fecha(0);
    tabela_de<3, Cor::p>().abre({});
    tabela_de<3, Cor::p>().fecha(0);
  }
  EXPECT_NE(running().find(" hashfull 10 "), std::string::npos);
  FULL4 = 1;
  EXPECT_NE(running().find(" hashfull 343 "), std::string::npos);
  FULL3 = FULL5 = 1;
  EXPECT_NE(running().find(" hashfull 1000 "), std::string::npos);
}

TEST_F(Report, WithoutFullInfoALosingLineIsNotShown) {
  FULL_inf = 0;
  materialflot0 = 10;
  beta1 = -5;  // 10 x -5 is the limit, 10 x 10 - 150
  EXPECT_TRUE(running().starts_with("info score cp -50 "));
  beta1 = -5.25F;
  EXPECT_EQ(running(), "info nps 4000\n");
  beta1 = -3300;
  EXPECT_TRUE(running().starts_with("info score mate -12 "));
}

TEST_F(Report, TheOffsetTakesPartInThatLimit) {
  FULL_inf = 0;
  emp = emppp;
  beta1 = -25;
  EXPECT_TRUE(running().starts_with("info score cp -150 "));
  deep = 8;
  beta1 = -5;
  EXPECT_TRUE(running().starts_with("info score cp -150 "));
  beta1 = -5.25F;
  EXPECT_EQ(running(), "info nps 4000\n");
}

TEST_F(Report, AHiddenLineCountsForTheDeepestPly) {
  FULL_inf = 0;
  beta1 = -100;
  EXPECT_EQ(running(), "info nps 4000\n");
  EXPECT_EQ(dddep, 11);
}

TEST_F(Report, ARunningLineReadsTheClockOnce) {
  static int readings;
  readings = 0;
  relogio = [] { return 5000 + 500 * readings++; };
  EXPECT_NE(running().find(" time 1000 "), std::string::npos);
  EXPECT_EQ(readings, 1);
  closing();
  EXPECT_EQ(readings, 1) << "the closing line tells no time";
}

TEST_F(Report, TheSpeedMovesInStepsOfAThousand) {
  nodes = 1999;
  EXPECT_NE(running().find("\ninfo nps 1000\n"), std::string::npos);
  nodes = 999;
  EXPECT_NE(running().find("\ninfo nps 0\n"), std::string::npos);
}

TEST_F(Report, TheDeepestPlyOfTheSearchIsKept) {
  running();
  EXPECT_EQ(dddep, 11);
  ddep = 9;
  running();
  EXPECT_EQ(dddep, 11);
}

TEST_F(Report, MoveText) {
  jogada = {6, 7, 5, 5};
  PR = '0';
  PRs = 'q';
  convert_0000_to_a1a2();
  EXPECT_EQ(out, "bestmove g8f6");
  EXPECT_EQ(PRs, '0');
}

TEST_F(Report, MoveTextOfAPromotion) {
  jogada = {0, 6, 1, 7};
  PR = 'q';
  convert_0000_to_a1a2();
  EXPECT_EQ(out, "bestmove a7b8q");
  EXPECT_EQ(PR, '0');
}

TEST_F(Report, MoveTextOfAnyOtherLetterStays) {
  out = "bestmove a1a1";
  PR = 'r';
  convert_0000_to_a1a2();
  EXPECT_EQ(out, "bestmove a1a1");
  EXPECT_EQ(PR, 'r');
  PR = '0';
}

TEST_F(Report, MoveTextKeepsALetterOutOfRange) {
  jogada = {-1, 8, 2, 3};
  PR = '0';
  convert_0000_to_a1a2();
  EXPECT_EQ(out, "bestmove e2c4");
}

}  // namespace
}  // namespace korvu
