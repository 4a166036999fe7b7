// What a node must leave as it found it, whatever way it takes out.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "memory/ply_tables.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

struct Case {
  std::string_view fen, move;
};

constexpr std::array<Case, 6> cases = {{
    {locked, "d1e1"},
    {"3k4/p1p1p1p1/P1P1P1P1/8/7P/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1", "h4h5"},
    {"3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/3Kn3 w - - 0 1", "d1e1"},
    {"7k/8/6KQ/8/8/8/8/8 w - - 0 1", "h6g7"},    // mate
    {"7k/8/6K1/8/8/8/8/5Q2 w - - 0 1", "f1f7"},  // stalemate
    {"4k3/8/8/8/8/8/8/3RK3 w - - 0 1", "d1d8"},  // a check that loses the rook
}};

// Settings under which a node takes different ways.
struct Way {
  const char* name;
  void (*set)();
};

constexpr std::array<Way, 8> ways = {{
    {"plain", [] {}},
    {"all on", [] { SEARCH_E = PVS = VERTICAL_filt = LMR = TC = LMRtest = SCANT = 1; }},
    {"passing", [] { SCANT = 1; }},
    {"out of time", [] { clock_says([] { return 1000000; }); }},
    {"out of time, mated",
     [] {
       clock_says([] { return 1000000; });
       alfa[6] = alfa[8] = alfa[10] = alfa[12] = -9000;
     }},
    {"behind", [] { alfa[0] = 60, ALFA0 = 60; }},
    {"ahead", [] { beta[1] = -60; }},
    {"open below the root",
     [] {
       alfa[0] = 5;
       beta[1] = 6;
     }},
}};

template <int N, Cor cor>
void prepare(const Case& c, const Way& w, int depth) {
  stand(N - 1, told_for<cor>(c.fen));
  SEARCH_E = PVS = VERTICAL_filt = LMR = TC = LMRtest = HASHf = 1;
  NULL_MOVE = 2;
  npecasb = npecasp = 8;
  deep = depth;
  DEEP = N;
  for (std::size_t n = 0; n < MAXcut.size(); ++n) MAXcut[n] = MAXcutt[n] = 200;
  w.set();
}

TEST(Restore, DepthTablesAndEveryBoundAboveAreAsBefore) {
  each_node<2, 24>([]<int N, Cor cor>() {
    for (const Case& c : cases)
      for (const Way& w : ways)
        for (int depth = N - 3; depth <= N + 4; ++depth) {
          if (depth > 23 && N < 23) continue;
          // Deep enough for the steps of the upper plies, too.
          const int lifted = N <= 5 && depth == N + 4 ? 9 : depth;
          for (const std::uint8_t tables : {1, 0}) {
            prepare<N, cor>(c, w, lifted);
            HASHf = tables;
            if (N == 2 && beta[1] == start_beta) beta[1] = 3;
            const auto alfas = alfa, betas = beta;
            const int nominal = DEEP;
            enter<N, cor>(c.move);
            const std::string where = at<cor>(N) + " at " + std::to_string(lifted) + ", " + w.name +
                                      ", " + std::string(c.fen);
            ASSERT_EQ(deep, lifted) << where;
            ASSERT_EQ(HASHf, tables) << where;
            ASSERT_EQ(DEEP, nominal) << where;
            for (std::size_t k = 0; k < N; ++k) {
              ASSERT_EQ(alfa[k], alfas[k]) << where << " alfa" << k;
              ASSERT_EQ(beta[k], betas[k]) << where << " beta" << k;
            }
            for (std::size_t k = 0; k < MAXcut.size(); ++k)
              ASSERT_EQ(MAXcut[k], 200) << where << " cap " << k;
            ASSERT_EQ(PVSm2, 0) << where;
            ASSERT_EQ(roque_b + roque_p, 0) << where;
          }
        }
  });
}

TEST(Restore, TheBoardsAboveAreNotTouched) {
  each_node<2, 24>([]<int N, Cor cor>() {
    for (const Case& c : cases) {
      prepare<N, cor>(c, ways[1], N + 1);
      const Tabuleiro root = tab, above = tabd[N - 1];
      const float b = materialb[N - 1], p = materialp[N - 1];
      enter<N, cor>(c.move);
      ASSERT_EQ(tab, root) << at<cor>(N);
      ASSERT_EQ(tabd[N - 1], above) << at<cor>(N);
      ASSERT_EQ(materialb[N - 1], b);
      ASSERT_EQ(materialp[N - 1], p);
    }
  });
}

}  // namespace
}  // namespace korvu
