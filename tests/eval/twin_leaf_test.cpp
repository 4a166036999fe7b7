// The leaf evaluation against its plain twin, to the last bit.
#include <gtest/gtest.h>

#include "eval/bench.h"
#include "eval/leaf.h"
#include "support/lab.h"
#include "support/positions.h"
#include "tree/clock.h"
#include "tree/restore.h"

namespace {

using korvu::Cor;
using korvu::Varredura;

struct Member {
  const char* name;
  plain::Side root, to_move;
  void (*run)();
  std::string (*figures_differ)(const plain::Leaf&);
};

template <Cor raiz, Cor ataca>
std::string figures_differ(const plain::Leaf& twin) {
  const korvu::Varre<Varredura::folha, raiz, ataca> v(korvu::tab2);
  const std::string w = bench::differences(v.template de<Cor::b>(), twin.figures[plain::white]);
  const std::string b = bench::differences(v.template de<Cor::p>(), twin.figures[plain::black]);
  return (w.empty() ? "" : "White's " + w) + (b.empty() ? "" : "Black's " + b);
}

template <Cor raiz, Cor ataca>
constexpr Member member(const char* name) {
  return {name, raiz == Cor::b ? plain::white : plain::black,
          ataca == Cor::b ? plain::white : plain::black, korvu::extra_eval<raiz, ataca>,
          figures_differ<raiz, ataca>};
}

const Member members[] = {
    member<Cor::b, Cor::b>("extra_eval_b"),
    member<Cor::p, Cor::p>("extra_eval_p"),
    member<Cor::b, Cor::p>("extra_evall_b"),
    member<Cor::p, Cor::b>("extra_evall_p"),
};

// What was met on the way: a comparison that never meets a thing says nothing about it.
struct Tally {
  int cases = 0, clamped_up = 0, clamped_down = 0, inside = 0, drawn = 0;
};

void expect_sums(const plain::Leaf& twin) {
  const plain::Figures &w = twin.figures[plain::white], &b = twin.figures[plain::black];
  EXPECT_PRED2(bench::same_bits, korvu::atack_ksf_b, w.kattack);
  EXPECT_PRED2(bench::same_bits, korvu::atack_ksf_p, b.kattack);
  EXPECT_PRED2(bench::same_bits, korvu::defesa_ksf_b, w.kdefend);
  EXPECT_PRED2(bench::same_bits, korvu::defesa_ksf_p, b.kdefend);
  EXPECT_PRED2(bench::same_bits, korvu::centro_b, w.cen);
  EXPECT_PRED2(bench::same_bits, korvu::centro_p, b.cen);
}

void compare(const Member& m, std::mt19937& dice, Tally& tally) {
  const plain::Setting set = plain::setting_from_slots();
  const plain::Leaf twin =
      plain::leaf(plain::board_from_bytes(korvu::tab2), set, m.root, m.to_move);
  const int deepest = static_cast<int>(dice() % 24), last = static_cast<int>(dice() % 24);
  korvu::ddep = deepest;
  korvu::deep = last;
  korvu::EMPAT = dice() % 2;
  korvu::extraeval = 77;
  m.run();
  SCOPED_TRACE(m.name + ("\n" + bench::bench_state()));
  EXPECT_PRED2(bench::same_sum, korvu::extraeval, twin.correction);
  EXPECT_EQ(korvu::EMPAT, twin.drawn ? 1 : 0);
  EXPECT_EQ(korvu::ddep, m.root == m.to_move && last > deepest ? last : deepest);
  expect_sums(twin);
  EXPECT_EQ(m.figures_differ(twin), "");

  const auto limit = static_cast<float>(set.budget);
  ++tally.cases;
  if (twin.correction == limit) ++tally.clamped_up;
  if (twin.correction == -limit) ++tally.clamped_down;
  if (twin.correction > -limit && twin.correction < limit) ++tally.inside;
  if (twin.drawn) ++tally.drawn;
}

void expect_all_met(const Tally& t) {
  EXPECT_GT(t.clamped_up, 10);
  EXPECT_GT(t.clamped_down, 10);
  EXPECT_GT(t.inside, t.cases / 2);
  EXPECT_GT(t.drawn, 10);
}

}  // namespace

TEST(LeafTwin, AgreesOnPositionsOfGames) {
  std::mt19937 dice(1);
  Tally tally;
  for (const std::string& fen : referee::varied_fens()) {
    bench::lay(fen);
    for (int k = 0; k < 25; ++k) {
      bench::scatter(dice);
      for (const Member& m : members) compare(m, dice, tally);
      if (HasFailure()) FAIL() << "at case " << tally.cases << ", " << fen;
    }
  }
  EXPECT_GE(tally.cases, 320 * 25 * 4);
  RecordProperty("cases", tally.cases);
  expect_all_met(tally);
}

TEST(LeafTwin, AgreesOnStrewnMen) {
  std::mt19937 dice(2);
  Tally tally;
  bench::lay("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  for (int k = 0; k < 12000; ++k) {
    bench::strew(dice, 2 + k % 44);
    bench::scatter(dice);
    for (const Member& m : members) compare(m, dice, tally);
    if (HasFailure()) FAIL() << "at case " << tally.cases;
  }
  EXPECT_EQ(tally.cases, 48000);
  RecordProperty("cases", tally.cases);
  expect_all_met(tally);
}

namespace {

// What a search leaves in the slots: boards with kings on squares of other lines among them.
struct InSearch {
  int readings = 0, cases = 0, stale_kings = 0, castled = 0;
};
InSearch in_search;

bool kings_are_elsewhere(const plain::Setting& set) {
  const auto at = [](int file, int rank) {
    return korvu::com_sinal(korvu::tab2[static_cast<std::size_t>(8 * file + rank)]);
  };
  return at(set.king_file[plain::white], set.king_rank[plain::white]) != 110 ||
         at(set.king_file[plain::black], set.king_rank[plain::black]) != -110;
}

// Stands in for the clock, which nodes from ply 7 on read: the engine is in the middle of a search
// then, and finds all slots as they were when it goes on.
int compare_instead_of_the_clock() {
  if (++in_search.readings % 100 != 0 || ::testing::Test::HasFailure()) return 0;
  const korvu::Repoe<float> value(korvu::extraeval);
  const korvu::Repoe<std::uint8_t> draw(korvu::EMPAT);
  const korvu::Repoe<int> deepest(korvu::ddep);
  const plain::Setting set = plain::setting_from_slots();
  in_search.stale_kings += kings_are_elsewhere(set);
  in_search.castled += set.castling[plain::white] != 0 || set.castling[plain::black] != 0;
  for (const Member& m : members) {
    const plain::Leaf twin =
        plain::leaf(plain::board_from_bytes(korvu::tab2), set, m.root, m.to_move);
    m.run();
    ++in_search.cases;
    EXPECT_PRED2(bench::same_sum, korvu::extraeval, twin.correction) << m.name << "\n"
                                                                     << bench::bench_state();
    EXPECT_EQ(korvu::EMPAT, twin.drawn ? 1 : 0);
  }
  return 0;
}

}  // namespace

TEST(LeafTwin, AgreesInTheMiddleOfSearches) {
  korvu::relogio = compare_instead_of_the_clock;
  const std::vector<std::string> positions = {
      "startpos moves e2e4 e7e5 g1f3 b8c6 f1b5 a7a6 b5a4 g8f6",
      "startpos moves d2d4 d7d5 c2c4 e7e6 b1c3 g8f6 c1g5 f8e7 e2e3",
      "fen r3k2r/pp1n1ppp/2p1pn2/3p4/3P4/2N1PN2/PPP2PPP/R3K2R w KQkq - 0 1 moves a2a3",
      "fen 8/5pk1/4p1p1/3pP2p/3P1P1P/2K3P1/8/8 w - - 0 1 moves c3b4"};
  for (const std::string& position : positions)
    lab::dialogue({"setoption name Own book value false", "setoption name Deep value 5",
                   "position startpos", "position " + position, "go wtime 90000000"});
  EXPECT_GT(in_search.cases, 8000);
  EXPECT_GT(in_search.stale_kings, 0);
  EXPECT_GT(in_search.castled, 0);
  RecordProperty("cases", in_search.cases);
}

// With the true counters and the settings at their defaults, as a search finds them.
TEST(LeafTwin, AgreesAtRest) {
  std::mt19937 dice(3);
  Tally tally;
  for (const std::string& fen : referee::varied_fens()) {
    bench::lay(fen);
    korvu::shashinn = static_cast<float>(dice() % 1000) / 64 - 8;
    korvu::extraevalll = static_cast<float>(dice() % 1000) / 1000 - 0.4F;
    for (const Member& m : members) compare(m, dice, tally);
    if (HasFailure()) FAIL() << fen;
  }
  EXPECT_GE(tally.cases, 320 * 4);
}
