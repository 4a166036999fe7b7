// Forced mates: the data are true, the engine finds the near ones, and what it announces is so.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "mates/positions.h"
#include "mates/solver.h"

namespace {

using mates::Answer;
using mates::reach;
using mates::Told;
using referee::Position;

const std::vector<Told>& all() {
  static const std::vector<Told> read = mates::told(KORVU_MATES);
  return read;
}

}  // namespace

TEST(MatePositions, AreManyOfEachKindAndForBothSides) {
  std::array<std::array<int, 2>, reach + 1> count{};
  for (const Told& t : all())
    ++count.at(static_cast<std::size_t>(t.distance))[t.position.white_to_move()];
  int with_mate = 0;
  for (std::size_t d = 0; d <= reach; ++d) {
    EXPECT_GE(count[d][0], 10) << d;
    EXPECT_GE(count[d][1], 10) << d;
    if (d > 0) with_mate += count[d][0] + count[d][1];
  }
  EXPECT_GE(with_mate, 130);
}

TEST(MatePositions, HaveTheirDistance) {
  for (const Told& t : all())
    EXPECT_EQ(mates::distance(t.position, reach).value_or(0), t.distance) << t.line;
}

// Against mates known by hand.
TEST(MateSolver, TellsDistances) {
  const auto within = [](const char* fen) { return mates::distance(Position::from_fen(fen), 3); };
  EXPECT_EQ(within("6k1/5ppp/8/8/8/8/8/R5K1 w - - 0 1"), 1);  // a1a8
  EXPECT_EQ(within("7k/8/8/8/8/8/R7/1R4K1 w - - 0 1"), 2);    // a2a7, then b1b8
  EXPECT_EQ(within("8/6k1/8/8/8/8/R7/1R4K1 w - - 0 1"), 3);   // a rank at a time
  EXPECT_EQ(within("7k/8/8/8/8/8/8/R5K1 w - - 0 1"), std::nullopt);
  EXPECT_EQ(within("7k/8/5K2/6Q1/8/8/8/8 b - - 0 1"), std::nullopt);  // no move, no check
  EXPECT_EQ(within("k7/8/1K6/8/8/8/8/7R b - - 0 1"), std::nullopt);   // the other side mates
}

// To depth 6, or 8 with at most five men beside the kings.
TEST(Mates, InOneAreAllFound) {
  int found = 0;
  for (const Told& t : all()) {
    if (t.distance != 1) continue;
    const Answer a = mates::ask(t, "go wtime 10000 btime 10000 winc 0 binc 0");
    EXPECT_TRUE(mates::finds(t, a)) << t.line << ' ' << a.best.text();
    EXPECT_EQ(a.moves, 2) << t.line;  // "mate 1"
    ++found;
  }
  EXPECT_GE(found, 50);
}

// To depth 4, or 6. mate_table.cpp asks for all of them, and deeper.
TEST(Mates, AnnouncedOnesAreTrue) {
  int announced = 0;
  for (std::size_t i = 0; i < all().size(); i += 3) {
    const Told& t = all()[i];
    const Answer a = mates::ask(t, "go wtime 9999 btime 9999 winc 0 binc 0");
    EXPECT_TRUE(mates::is_true(t, a)) << t.line << ' ' << a.best.text() << ' ' << a.moves;
    announced += a.moves != 0;
  }
  EXPECT_GE(announced, 35);
}

// After the first move of a mate in two the other side is asked.
TEST(Mates, TheSideThatIsMatedKnows) {
  int asked = 0;
  for (const Told& t : all()) {
    if (t.distance != 2) continue;
    const std::vector<referee::Move> moves = t.position.legal_moves();
    const auto key = std::find_if(moves.begin(), moves.end(), [&](const referee::Move& m) {
      return mates::keeps_mate_within(t.position, m, 1);
    });
    ASSERT_NE(key, moves.end());
    const Told lost = {0, t.line + ' ' + key->text(), t.position.after(*key)};
    const Answer a = mates::ask(lost, "go wtime 9999 btime 9999 winc 0 binc 0");
    EXPECT_EQ(a.moves, -1) << lost.line << ' ' << a.best.text();
    EXPECT_TRUE(mates::is_true(lost, a)) << lost.line << ' ' << a.best.text();
    ++asked;
  }
  EXPECT_GE(asked, 40);
}
