// Draw by lack of material: nobody has a pawn, rook or queen, and each side is too weak to win.
#include <gtest/gtest.h>

#include "eval/bench.h"
#include "eval/leaf.h"
#include "support/lab.h"

namespace {

using korvu::Cor;

struct Case {
  const char* fen;
  bool drawn;
};

// clang-format off
const Case cases[] = {
    {"4k3/8/8/8/8/8/8/4K3 w - - 0 1", true},
    {"4k3/8/8/8/8/8/8/N3K3 w - - 0 1", true},
    {"4k3/8/8/8/8/8/8/NN2K3 w - - 0 1", true},       // no bishop, at most two knights
    {"4k3/8/8/8/8/8/8/NNN1K3 w - - 0 1", false},
    {"4k3/8/8/8/8/8/8/B3K3 w - - 0 1", true},        // no knight, at most one bishop
    {"4k3/8/8/8/8/8/8/BB2K3 w - - 0 1", false},
    {"4k3/8/8/8/8/8/8/B1B1K3 w - - 0 1", false},     // on one colour of squares too
    {"4k3/8/8/8/8/8/8/BN2K3 w - - 0 1", false},
    {"n3k3/8/8/8/8/8/8/N3K3 w - - 0 1", true},
    {"nn2k3/8/8/8/8/8/8/NN2K3 w - - 0 1", true},
    {"b3k3/8/8/8/8/8/8/B3K3 w - - 0 1", true},
    {"nn2k3/8/8/8/8/8/8/B3K3 w - - 0 1", true},
    {"bb2k3/8/8/8/8/8/8/B3K3 w - - 0 1", false},
    {"bb2k3/8/8/8/8/8/8/BB2K3 w - - 0 1", false},
    {"bn2k3/8/8/8/8/8/8/N3K3 w - - 0 1", false},
    {"nnn1k3/8/8/8/8/8/8/NNN1K3 w - - 0 1", false},
    {"4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", false},
    {"4k3/8/8/8/8/8/8/R3K3 w - - 0 1", false},
    {"4k3/8/8/8/8/8/8/Q3K3 w - - 0 1", false},
    {"n3k3/7p/8/8/8/8/8/N3K3 w - - 0 1", false},
};
// clang-format on

template <Cor raiz, Cor ataca>
bool drawn(const std::string& fen) {
  bench::lay(fen);
  korvu::EMPAT = 2;
  korvu::extra_eval<raiz, ataca>();
  EXPECT_LE(korvu::EMPAT, 1) << "not written: " << fen;
  return korvu::EMPAT == 1;
}

}  // namespace

TEST(LackOfMaterial, IsAskedOfBothSidesInEveryMember) {
  for (const Case& c : cases)
    for (const std::string& fen : {std::string(c.fen), bench::mirrored(c.fen)}) {
      EXPECT_EQ((drawn<Cor::b, Cor::b>(fen)), c.drawn) << fen;
      EXPECT_EQ((drawn<Cor::b, Cor::p>(fen)), c.drawn) << fen;
      EXPECT_EQ((drawn<Cor::p, Cor::b>(fen)), c.drawn) << fen;
      EXPECT_EQ((drawn<Cor::p, Cor::p>(fen)), c.drawn) << fen;
    }
}

TEST(LackOfMaterial, IsSeenOnTheLeafAndNotAtTheRoot) {
  bench::lay("4k3/4q3/8/8/8/8/8/4K3 w - - 0 1");
  korvu::tab2[lab::square("e7")] = 0;  // the line has taken the queen
  korvu::extra_eval<Cor::b, Cor::b>();
  EXPECT_EQ(korvu::EMPAT, 1);
}

TEST(LackOfMaterial, ALaterLeafWithMaterialClearsIt) {
  bench::lay("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  korvu::extra_eval<Cor::b, Cor::b>();
  ASSERT_EQ(korvu::EMPAT, 1);
  bench::lay("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
  korvu::extra_eval<Cor::b, Cor::b>();
  EXPECT_EQ(korvu::EMPAT, 0);
}
