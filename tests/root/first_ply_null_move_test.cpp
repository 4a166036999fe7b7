// The null move of the first ply: with two moves in a row the root side still does not beat its
// best.
#include <gtest/gtest.h>

#include "memory/ply_tables.h"
#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

constexpr std::string_view king_takes =
    "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/3Kn3 w - - 0 1";  // d1e1
constexpr std::string_view rook_free =
    "3k4/p1p1p1p1/P1P1P1P1/8/7R/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1";          // h4h8 checks, h4h7
constexpr std::string_view gets_mated = "8/8/8/8/8/6k1/q7/6K1 w - - 0 1";  // g1h1

// Everything that the null move needs; two moves of the root side in a row are worth 0.
void passing(std::string_view fen, int depth) {
  at_depth(fen, depth);
  SCANT = 1;
  NULL_MOVE = 1;
  alfa0 = 0;
}

// The node has ended with the null move: nothing after it has run.
bool ended_by_passing() {
  return curr == 0 && BETA1 == 16500;
}

TEST(FirstPlyNullMove, RefutesAMoveThatTwoInARowDoNotMakeBetter) {
  each_colour([]<Cor root>() {
    for (const int depth : {7, 9}) {
      passing(told_for<root>(locked), depth);
      HASHf = 1;
      first_ply<root>("d1e1");
      EXPECT_TRUE(ended_by_passing());
      EXPECT_EQ(beta1, 0);
      EXPECT_EQ(alfa[2], 0);
      EXPECT_TRUE(reports().empty());
      EXPECT_EQ(deep, depth);
      EXPECT_EQ(HASHf, 1);
      EXPECT_EQ((tabela_de<3, outra(root)>().indice()), 0);
      EXPECT_EQ(deeppromo, 0);
    }
  });
}

TEST(FirstPlyNullMove, BeginsWithoutAValueOfAnEarlierMove) {
  each_colour([]<Cor root>() {
    passing(told_for<root>(locked), 7);
    alfa[2] = 500;
    corte_beta[1] = 1;
    X_D[2] = 0;
    first_ply<root>("d1e1");
    EXPECT_TRUE(ended_by_passing());
    EXPECT_EQ(beta1, 0);
  });
}

TEST(FirstPlyNullMove, NeedsEveryOneOfItsConditions) {
  each_colour([]<Cor root>() {
    const auto ends = [](auto change) {
      passing(told_for<root>(locked), 7);
      change();
      first_ply<root>("d1e1");
      return ended_by_passing();
    };
    EXPECT_TRUE(ends([] {}));
    EXPECT_FALSE(ends([] { SCANT = 0; }));
    EXPECT_FALSE(ends([] { NULL_MOVE = 0; }));
    EXPECT_TRUE(ends([] { npecas<root>() = 3; }));
    EXPECT_FALSE(ends([] { npecas<root>() = 2; }));
    EXPECT_TRUE(ends([] { npecas<outra(root)>() = 5; }));
    EXPECT_FALSE(ends([] { npecas<outra(root)>() = 4; }));
    EXPECT_FALSE(ends([] { alfa0 = -0.5; })) << "two moves do make it better";
    EXPECT_FALSE(ends([] { deep = 6, alfa0 = 5; })) << "too shallow";
    EXPECT_EQ(curr, 1);
  });
}

TEST(FirstPlyNullMove, IsNotForAMoveThatGivesCheck) {
  each_colour([]<Cor root>() {
    for (const bool check : {false, true}) {
      passing(told_for<root>(rook_free), 7);
      alfa0 = 16000;
      MAXcut.fill(-20000);  // every descendant is content with its first reply
      MAXcutt = MAXcut;
      first_ply<root>(check ? "h4h8" : "h4h7");
      EXPECT_EQ(ended_by_passing(), !check);
    }
  });
}

TEST(FirstPlyNullMove, DoesNotTrustAMateAgainstTheRoot) {
  each_colour([]<Cor root>() {
    // Moving twice the king comes back to where he is mated.
    passing(told_for<root>(gets_mated), 7);
    npecasb = npecasp = 8;
    alfa0 = -200;
    first_ply<root>("g1h1");
    EXPECT_FALSE(ended_by_passing());
    EXPECT_LE(BETA1, -3300) << "the shallow search has run and sees a mate too";
  });
}

TEST(FirstPlyNullMove, PlaysTheMoveAtPly2AndNobodyAnswers) {
  each_colour([]<Cor root>() {
    passing(told_for<root>(king_takes), 7);
    alfa0 = 500;
    first_ply<root>("d1e1");
    ASSERT_TRUE(ended_by_passing());
    EXPECT_EQ(tabd[2][tree_lab::square_of<root>("e1")], Lado<root>::rei);
    EXPECT_EQ(tabd[2][tree_lab::square_of<root>("d8")], Lado<outra(root)>::rei);
    EXPECT_EQ(material<root>(2), 90) << "the discount stands here too";
    EXPECT_EQ(material<outra(root)>(2), 90);
  });
}

TEST(FirstPlyNullMove, TakesTheRightsOfTheRootAlong) {
  each_colour([]<Cor root>() {
    passing(told_for<root>("r3k2r/8/8/8/8/8/4P3/R3K2R w KQkq - 0 1"), 7);
    npecasb = npecasp = 8;
    alfa0 = 16000;
    MAXcut.fill(-20000);  // every descendant is content with its first reply
    MAXcutt = MAXcut;
    jm_D[2] = {1, 1, 1, 1, 1, 1};
    first_ply<root>("h1h4");
    ASSERT_TRUE(ended_by_passing());
    EXPECT_EQ(torre_h_moveu<root>(jm_D[2]), 1) << "the move's own mark";
    EXPECT_EQ(torre_a_moveu<root>(jm_D[2]) + rei_moveu<root>(jm_D[2]), 0);
    constexpr Cor other = outra(root);
    EXPECT_EQ(
        torre_a_moveu<other>(jm_D[2]) + torre_h_moveu<other>(jm_D[2]) + rei_moveu<other>(jm_D[2]),
        0);
  });
}

TEST(FirstPlyNullMove, IsSearchedTwoPliesShortAgainstTheBestValue) {
  each_colour([]<Cor root>() {
    passing(told_for<root>(locked), 11);
    HASHf = 1;
    alfa0 = 3.25;
    const auto seen = readings<root>("d1e1");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].deep, 9);
    EXPECT_EQ(seen[0].tables, 0);
    EXPECT_EQ(seen[0].beta1, static_cast<float>(3.25 + 0.001));
  });
}

}  // namespace
}  // namespace korvu
