// Castling at the root.
#include <gtest/gtest.h>

#include "root/expander_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

constexpr std::string_view both_castlings = "4k3/p7/8/8/8/8/P7/R3K2R w KQ - 0 1";

// No move becomes the best one, on which admission to the pass would hang.
void none_is_best() {
  E = 5000;
}

template <Cor root>
void castle(std::string_view fen) {
  at_depth_1(told_for<root>(fen));
  expand<root>(positive1, Peca::rei, "e1");
}

TEST(RootCastling, IsInTheKingsFirstCaptureClassAlone) {
  each_colour([]<Cor root>() {
    castle<root>(both_castlings);
    expect_moves<root>({"e1g1", "e1c1"});
    for (const Classe k : {livre, positive2, positive3, positive4, positive5}) {
      at_depth_1(told_for<root>(both_castlings));
      expand<root>(k, Peca::rei, "e1");
      EXPECT_EQ(reported_moves().find(written<root>("e1g1")), std::string::npos);
      EXPECT_EQ(reported_moves().find(written<root>("e1c1")), std::string::npos);
    }
  });
}

TEST(RootCastling, NeedsItsRightsRookSquaresAndSafeWay) {
  each_colour([]<Cor root>() {
    castle<root>("4k3/p7/8/8/8/8/P7/R3K2R w K - 0 1");
    expect_moves<root>({"e1g1"});
    castle<root>("4k3/p7/8/8/8/8/P7/R3K2R w Q - 0 1");
    expect_moves<root>({"e1c1"});
    castle<root>("4k3/p7/8/8/8/8/P7/R3K2R w - - 0 1");
    expect_moves<root>({});
    castle<root>("4k3/p7/8/8/8/8/P7/RN2K1NR w KQ - 0 1");
    expect_moves<root>({});
    castle<root>("4k3/p7/8/8/8/8/P7/4K3 w KQ - 0 1");
    expect_moves<root>({});
    castle<root>("4kr2/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
    expect_moves<root>({"e1c1"});
    castle<root>("3rk3/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
    expect_moves<root>({"e1g1"});
    castle<root>("4k3/p7/8/8/8/4r3/P7/R3K2R w KQ - 0 1");
    expect_moves<root>({});
  });
}

TEST(RootCastling, BearsItsMarkWhileItIsSearched) {
  each_colour([]<Cor root>() {
    castle<root>(both_castlings);
    ASSERT_EQ(reports().size(), 2U);
    for (const Report& r : reports()) {
      EXPECT_EQ(root == Cor::b ? r.roque_b : r.roque_p, 10);
      EXPECT_EQ(root == Cor::b ? r.roque_p : r.roque_b, 0);
    }
    EXPECT_EQ(roque_b + roque_p, 0);
    castle<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1");
    EXPECT_EQ(nodes, 1U + 5U) << "itself, and the replies: two pawn moves, three king's steps";
  });
}

TEST(RootCastling, IsStoredLikeAnyMove) {
  each_colour([]<Cor root>() {
    castle<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1");
    EXPECT_EQ(best_move(), written<root>("e1g1"));
    EXPECT_EQ(E, reports()[0].score);
    EXPECT_EQ(alfa0, E);
    castle<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1");
    at_depth_1(told_for<root>(both_castlings));
    MAXcut[0] = -1000;
    expand<root>(positive1, without, Peca::rei, "e1");
    EXPECT_EQ(corte_MAXcut, 1);
  });
}

TEST(RootCastling, TakesPartInThePassesByItsOwnCoordinates) {
  each_colour([]<Cor root>() {
    for (const std::string_view best : {"e1g1", "e1c1"})
      for (const bool single : {true, false}) {
        at_depth_1(told_for<root>(both_castlings));
        SCAN1 = single;
        SCANT = !single;
        melhor = move_of<root>(best);
        none_is_best();
        expand<root>(positive1, without, Peca::rei, "e1");
        expect_moves<root>({(best == "e1g1") == single ? "e1g1" : "e1c1"});
      }
  });
}

// The short castling gives check on the f-file, the long one none.
constexpr std::string_view short_checks = "5k2/p7/8/8/8/8/P7/R3K2R w KQ - 0 1";
// The long one gives check on the d-file, the short one none.
constexpr std::string_view long_checks = "3k4/p7/8/8/8/8/P7/R3K2R w KQ - 0 1";

TEST(RootCastling, WithCheckWhitesLongOneAsksTheTestOfTheShortOne) {
  // Black's long castling is judged by itself.
  at_depth_1(told_for<Cor::p>(short_checks));
  none_is_best();
  expand<Cor::p>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::p>({"e1g1"});
  at_depth_1(told_for<Cor::p>(long_checks));
  none_is_best();
  expand<Cor::p>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::p>({"e1c1"});

  // White's is taken for the short one: it "gives check" when that does.
  at_depth_1(short_checks);
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({"e1g1", "e1c1"});
  at_depth_1(long_checks);
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({});
}

TEST(RootCastling, WithoutCheckEachIsJudgedByItself) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(short_checks));
    none_is_best();
    expand<root>(positive1, without, Peca::rei, "e1");
    expect_moves<root>({"e1c1"});
    at_depth_1(told_for<root>(long_checks));
    none_is_best();
    expand<root>(positive1, without, Peca::rei, "e1");
    expect_moves<root>({"e1g1"});
  });
}

TEST(RootCastling, WithCheckWhitesLongOneHasTheOthersSafetyAndAdmission) {
  // g1 is attacked: the short castling is forbidden, and with it White's long one in this class.
  at_depth_1("5kr1/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({});
  // d1 is attacked: the long castling would walk through it, and is searched all the same.
  at_depth_1("3r1k2/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({"e1g1", "e1c1"});
  // Admitted when the short one is.
  for (const bool single : {true, false}) {
    at_depth_1(short_checks);
    SCAN1 = single;
    SCANT = !single;
    melhor = {4, 0, 6, 0};
    none_is_best();
    expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
    if (single)
      expect_moves<Cor::b>({"e1g1", "e1c1"});
    else
      expect_moves<Cor::b>({});
  }
}

}  // namespace
}  // namespace korvu
