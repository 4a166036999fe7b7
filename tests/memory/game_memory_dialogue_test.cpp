// The game memory as the interface meets it: repeated questions, options, lines too long.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "board/state.h"
#include "memory/game_memory.h"
#include "support/lab.h"

namespace {

const std::string position = "position startpos moves g1f3 g8f6 b1c3 b8c6";
// A line without moves may end in blanks.
const std::string fen_position = "position fen 6k1/5pp1/7p/8/8/7P/5PP1/R5K1 w - - 0 1";
// One figure: the root moves alone, by material. Three figures: a ply deeper.
const std::string short_go = "go wtime 9 btime 9";
const std::string deeper_go = "go wtime 999 btime 999";

struct Reply {
  std::string info, bestmove;
};

// The closing info line and the move.
Reply ask(const std::string& line, const std::string& go) {
  const std::vector<std::string> answered = lab::dialogue({line, go});
  if (answered.size() < 2) return {"too short", "too short"};
  return {answered[answered.size() - 2], answered.back()};
}

bool searched(const Reply& r) {
  return r.info.find(" nodes ") != std::string::npos &&
         r.info.find(" nodes 0 ") == std::string::npos;
}
bool remembered(const Reply& r) {
  return r.info.find(" nodes 0 ") != std::string::npos;
}

class GameMemoryDialogue : public testing::Test {
 protected:
  void SetUp() override {
    // A FEN without moves is searched with the counters of the position before.
    lab::position("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1");
    lab::dialogue({"setoption name Own book value false", "setoption name Memory value true",
                   "setoption name Clear memory"});
  }
  void TearDown() override {
    lab::dialogue({"setoption name Memory value true", "setoption name Clear memory"});
  }
};

}  // namespace

TEST_F(GameMemoryDialogue, ARepeatedQuestionIsAnsweredWithoutASearch) {
  const Reply first = ask(position, deeper_go);
  EXPECT_TRUE(searched(first)) << first.info;
  EXPECT_EQ(korvu::mem_TEST, 0);
  const Reply second = ask(position, deeper_go);
  EXPECT_TRUE(remembered(second)) << second.info;
  EXPECT_EQ(korvu::mem_TEST, 1);
  EXPECT_EQ(second.bestmove, first.bestmove);
  const auto score = [](const Reply& r) { return r.info.substr(0, r.info.find(" nodes ")); };
  EXPECT_EQ(score(second), score(first));
  EXPECT_EQ(korvu::indice_da_memoria(), 1);  // and writes no new record
}

TEST_F(GameMemoryDialogue, AHitReportsNothingButTheClosingLine) {
  ask(position, deeper_go);
  EXPECT_EQ(lab::dialogue({position, deeper_go}).size(), 2U);
}

TEST_F(GameMemoryDialogue, ASearchPlaysItsMoveAndAHitLeavesTheBoard) {
  lab::position("r1bqkb1r/pppppppp/2n2n2/8/8/2N2N2/PPPPPPPP/R1BQKB1R w KQkq - 4 3");
  const korvu::Tabuleiro asked = korvu::tab;
  ask(position, short_go);
  EXPECT_NE(korvu::tab, asked);
  ask(position, short_go);
  EXPECT_EQ(korvu::mem_TEST, 1);
  EXPECT_EQ(korvu::tab, asked);
}

TEST_F(GameMemoryDialogue, AGreaterBudgetSearchesAndWritesAnotherRecord) {
  ask(position, short_go);
  EXPECT_EQ(korvu::indice_da_memoria(), 1);
  EXPECT_TRUE(searched(ask(position, deeper_go)));
  EXPECT_EQ(korvu::indice_da_memoria(), 2);
  EXPECT_TRUE(remembered(ask(position, deeper_go)));
  EXPECT_TRUE(remembered(ask(position, short_go)));
  EXPECT_EQ(korvu::indice_da_memoria(), 2);
}

TEST_F(GameMemoryDialogue, ASmallerBudgetIsAnsweredByAGreaterRecord) {
  const Reply deep = ask(position, deeper_go);
  const Reply shallow = ask(position, short_go);
  EXPECT_TRUE(remembered(shallow));
  EXPECT_EQ(shallow.bestmove, deep.bestmove);
}

// Every search sets out at depth 9 at most, but the record tells how far it came.
TEST_F(GameMemoryDialogue, ARecordHasTheDepthThatTheSearchReached) {
  const std::string ending = "position fen 7k/8/8/8/8/8/P7/K7 b - - 0 1 moves h8h7";
  const auto known_at = [&](int depth) {
    korvu::guarda_linha(ending);
    korvu::deep = depth;
    korvu::hash_mem_scan(300000);
    return korvu::mem_TEST == 1;
  };
  ask(ending, deeper_go);  // with a single pawn a clock of three figures searches three plies
  EXPECT_TRUE(known_at(3));
  EXPECT_FALSE(known_at(5));
  lab::dialogue({"setoption name Deep value 6", ending, "go", "setoption name Deep value 9"});
  EXPECT_TRUE(known_at(11));
  EXPECT_FALSE(known_at(13));
}

TEST_F(GameMemoryDialogue, AnotherLineToTheSamePositionIsAnotherQuestion) {
  ask(fen_position, short_go);
  EXPECT_TRUE(searched(ask(fen_position + " ", short_go)));
  EXPECT_EQ(korvu::indice_da_memoria(), 2);
}

TEST_F(GameMemoryDialogue, TheGameInTheLineIsPartOfTheKey) {
  ask("position startpos moves g1f3 g8f6 b1c3 b8c6", short_go);
  EXPECT_TRUE(searched(ask("position startpos moves b1c3 b8c6 g1f3 g8f6", short_go)));
  EXPECT_TRUE(remembered(ask("position startpos moves g1f3 g8f6 b1c3 b8c6", short_go)));
}

TEST_F(GameMemoryDialogue, AGamesFirstMovesAreSearchedEveryTimeAndNotRemembered) {
  const std::vector<std::string> answered =
      lab::dialogue({"setoption name Deep value 0", "position startpos", "position startpos",
                     "position startpos moves e2e4", "position startpos moves e2e4",
                     "setoption name Deep value 9"});
  int searches = 0;
  for (const std::string& line : answered) searches += line.find(" nodes 20 ") != std::string::npos;
  EXPECT_EQ(searches, 4) << "the pawns' and knights' moves";
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
}

TEST_F(GameMemoryDialogue, APromotionIsRemembered) {
  const std::string promotes = "position fen 8/P5k1/8/8/8/8/8/K7 b - - 0 1 moves g7h7";
  EXPECT_EQ(ask(promotes, short_go).bestmove, "bestmove a7a8q");
  const Reply again = ask(promotes, short_go);
  EXPECT_TRUE(remembered(again));
  EXPECT_EQ(again.bestmove, "bestmove a7a8q");
}

TEST_F(GameMemoryDialogue, TheProtocolsGreetingClearsIt) {
  ask(position, short_go);
  lab::dialogue({"uci"});
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
  EXPECT_TRUE(searched(ask(position, short_go)));
}

TEST_F(GameMemoryDialogue, SwitchedOffTheGreetingClearsNothing) {
  ask(position, short_go);
  lab::dialogue({"setoption name Memory value false", "uci", "setoption name Memory value true"});
  EXPECT_EQ(korvu::indice_da_memoria(), 1);
  EXPECT_TRUE(remembered(ask(position, short_go)));
}

TEST_F(GameMemoryDialogue, SwitchedOffItNeitherAnswersNorWrites) {
  ask(position, short_go);
  lab::dialogue({"setoption name Memory value false"});
  EXPECT_TRUE(searched(ask(position, short_go)));
  EXPECT_TRUE(searched(ask(position, deeper_go)));
  EXPECT_EQ(korvu::indice_da_memoria(), 1);
}

// The mark of the last hit is gone with the next go, even when the memory is not asked: the move
// that is found is played.
TEST_F(GameMemoryDialogue, SwitchedOffAfterAnAnswerTheNextSearchIsASearch) {
  ask(position, short_go);
  ask(position, short_go);
  ASSERT_EQ(korvu::mem_TEST, 1);
  const korvu::Tabuleiro unplayed = korvu::tab;
  lab::dialogue({"setoption name Memory value false"});
  EXPECT_TRUE(searched(ask(position, short_go)));
  EXPECT_EQ(korvu::mem_TEST, 0);
  EXPECT_NE(korvu::tab, unplayed);
}

TEST_F(GameMemoryDialogue, TheButtonClearsItAtAnyTime) {
  ask(position, short_go);
  lab::dialogue({"setoption name Clear memory"});
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
  // In the wait for a position too.
  lab::dialogue({position, short_go, "setoption name Clear memory"});
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
  EXPECT_TRUE(searched(ask(position, short_go)));
}

TEST_F(GameMemoryDialogue, TheButtonWorksWithTheMemoryOff) {
  ask(position, short_go);
  lab::dialogue({"setoption name Memory value false", "setoption name Clear memory"});
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
}

TEST_F(GameMemoryDialogue, ANewGameIsNoEvent) {
  ask(position, short_go);
  lab::dialogue({"ucinewgame", "isready"});
  EXPECT_TRUE(remembered(ask(position, short_go)));
}

TEST_F(GameMemoryDialogue, ALineOf1000CharactersTakesNoPart) {
  const std::string fits = fen_position + std::string(999 - fen_position.size(), ' ');
  const std::string too_long = fits + ' ';
  EXPECT_TRUE(searched(ask(too_long, short_go)));
  EXPECT_TRUE(searched(ask(too_long, short_go)));
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
  EXPECT_TRUE(searched(ask(fits, short_go)));
  EXPECT_TRUE(remembered(ask(fits, short_go)));
  EXPECT_EQ(korvu::indice_da_memoria(), 1);
}
