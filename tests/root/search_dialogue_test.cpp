// Whole searches as the interface sees them.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "memory/game_memory.h"
#include "root/root_lab.h"
#include "support/lab.h"

namespace korvu {
namespace {

using root_lab::Cor;
using root_lab::each_colour;
using root_lab::locked;
using root_lab::told_for;
using root_lab::written;

using Lines = std::vector<std::string>;

Lines asked(const std::string& fen, const std::string& go) {
  root_lab::at_root(fen);  // brings the root's counters up to date, which the line itself does not
  root_lab::default_settings();
  return lab::dialogue({"position fen " + fen, go, "quit"});
}

const std::string blank_moves = std::string(6 * 5, ' ');  // six moves that the line does not have

TEST(SearchDialogue, AClockOfThreeDigitsSearchesOneRestPassAtDepth1) {
  each_colour([]<Cor root>() {
    const auto w = [](std::string_view move) { return written<root>(move); };
    // Both moves are worth a quotient of 1, shown as 10 and 100 more; the second one's first reply
    // is no better than what there is and ends it.
    const Lines expected = {
        "info score cp 110 depth 2 seldepth 2 currmove " + w("d1e1") +
            " currmovenumber 1 nodes 3 time T hashfull 0 pv " + w("d1e1") + ' ' + w("d8e8") +
            blank_moves,
        "info score cp 110 depth 2 seldepth 2 currmove " + w("d1c1") +
            " currmovenumber 2 nodes 5 time T hashfull 0 pv " + w("d1c1") + ' ' + w("d8e8") +
            blank_moves,
        "info score cp 110 depth 2 nodes 5 pv " + w("d1e1"),
        "bestmove " + w("d1e1"),
    };
    EXPECT_EQ(asked(told_for<root>(locked), "go wtime 999 btime 999 winc 0 binc 0"), expected);
  });
}

// The greatest depth that a line of a position's search reports.
int deepest(const Lines& lines) {
  int depth = 0;
  for (const std::string& line : lines)
    if (const std::size_t at = line.find(" depth "); at != std::string::npos)
      depth = std::max(depth, std::stoi(line.substr(at + 7)));
  return depth;
}

TEST(SearchDialogue, AShortClockKeepsNoLaterPositionFromDeepening) {
  each_colour([]<Cor root>() {
    root_lab::at_root(told_for<root>(locked));
    root_lab::default_settings();
    const std::string position = "position fen " + told_for<root>(locked) + " moves " +
                                 written<root>("d1e1") + ' ' + written<root>("d8e8");
    lab::dialogue({"setoption name Deep value 6"});
    for (int game = 0; game < 2; ++game) {
      EXPECT_EQ(deepest(lab::dialogue({position, "go wtime 999 btime 999"})), 2);
      EXPECT_EQ(deepest(lab::dialogue({position, "go wtime 300000 btime 300000"})), 12);
      limpa_memoria();
    }
  });
}

TEST(SearchDialogue, OneMoveIsPlayedAfterThePrePassWithoutAReport) {
  each_colour([]<Cor root>() {
    const Lines lines =
        asked(told_for<root>("3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/K7 w - - 0 1"),
              "go wtime 300000 btime 300000 winc 0 binc 0");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].starts_with("info score cp ")) << lines[0];
    EXPECT_EQ(lines[1], "bestmove " + written<root>("a1b1"));
  });
}

TEST(SearchDialogue, AMateInOneIsPlayedAndToldAtTheEnd) {
  each_colour([]<Cor root>() {
    const Lines lines = asked(told_for<root>("7k/8/6K1/8/8/8/8/R7 w - - 0 1"),
                              "go wtime 300000 btime 300000 winc 0 binc 0");
    ASSERT_GE(lines.size(), 2U);
    EXPECT_TRUE(lines[lines.size() - 2].starts_with("info score mate 1 ")) << lines[0];
    EXPECT_EQ(lines.back(), "bestmove " + written<root>("a1a8"));
  });
}

TEST(SearchDialogue, APromotionIsPlayedWithItsLetter) {
  each_colour([]<Cor root>() {
    const Lines lines = asked(told_for<root>("8/P6k/8/8/8/8/8/K7 w - - 0 1"),
                              "go wtime 9000 btime 9000 winc 0 binc 0");
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), "bestmove " + written<root>("a7a8") + 'q');
  });
}

}  // namespace
}  // namespace korvu
