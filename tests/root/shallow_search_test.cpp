// The shallow search of a root move, four plies short of the pass.
#include <gtest/gtest.h>

#include <tuple>

#include "memory/ply_tables.h"
#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

constexpr std::string_view mates = "7k/8/6KQ/8/8/8/8/8 w - - 0 1";          // h6g7
constexpr std::string_view mates_in_two = "7k/8/5K2/8/8/8/8/Q7 w - - 0 1";  // f6g6, Kg8, Qa8
constexpr std::string_view gets_mated = "8/8/8/8/8/6k1/q7/6K1 w - - 0 1";   // g1h1

TEST(ShallowSearch, RunsAboveDepth6AndLeavesItsValue) {
  each_colour([]<Cor root>() {
    for (const int depth : {1, 3, 5, 6}) {
      at_depth(told_for<root>(locked), depth);
      beta[3] = 42;  // what a search without depth for ply 3 would read
      first_ply<root>("d1e1");
      EXPECT_EQ(BETA1, 16500) << depth;
    }
    for (const int depth : {7, 9}) {
      at_depth(told_for<root>(locked), depth);
      first_ply<root>("d1e1");
      EXPECT_EQ(BETA1, 0) << depth;
    }
  });
}

TEST(ShallowSearch, IsFourPliesShortAndUsesNoTables) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 13);
    HASHf = 1;
    const auto seen = readings<root>("d1e1");
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front().shallow, 16500) << "its value is not known yet";
    EXPECT_EQ(seen.front().deep, 9);
    EXPECT_EQ(seen.front().tables, 0);
    EXPECT_EQ(seen.back().shallow, 0);
    EXPECT_EQ(seen.back().deep, 13);
    EXPECT_EQ(seen.back().tables, 1);
    EXPECT_EQ(deep, 13);
  });
}

TEST(ShallowSearch, AMateIsTakenAsItStandsAndTheMoveIsNotCounted) {
  each_colour([]<Cor root>() {
    for (const auto& [fen, move, value] :
         {std::tuple{mates, "h6g7", 15400.0F}, std::tuple{mates_in_two, "f6g6", 14300.0F}}) {
      at_depth(told_for<root>(fen), 7);
      SCANT = 1;
      first_ply<root>(move);
      EXPECT_EQ(beta1, value);
      EXPECT_EQ(BETA1, value);
      EXPECT_EQ(curr, 0);
      EXPECT_TRUE(reports().empty());
    }
    at_depth(told_for<root>(mates_in_two), 5);
    first_ply<root>("f6g6");
    EXPECT_EQ(beta1, 14300);
    EXPECT_EQ(curr, 1) << "without a shallow search it is counted";
  });
}

TEST(ShallowSearch, AMateAgainstTheRootIsNoReasonToStop) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(gets_mated), 7);
    first_ply<root>("g1h1");
    EXPECT_EQ(BETA1, -15400) << "mated at ply 2";
    EXPECT_EQ(beta1, -15400);
    EXPECT_EQ(curr, 1);
  });
}

}  // namespace
}  // namespace korvu
