// The move loops of every ply find exactly the legal moves, promotions to a queen alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "ply_members.h"
#include "sides.h"

namespace {

using namespace korvu;

std::uint32_t tried(void (*loops)()) {
  nodes = 0;
  loops();
  return nodes;
}

// --- How many ---

// The positions as they are, and with the other side to move where that is legal.
std::vector<kit::Case> cases_for_both() {
  std::vector<kit::Case> all = kit::cases();
  for (const kit::Case& c : kit::cases()) {
    if (c.position.in_check()) continue;
    referee::Position p = kit::other_to_move(c.position);
    all.push_back({p.fen(), p, kit::searched_moves(p)});
  }
  return all;
}

TEST(MoveSets, EveryPlyTriesAsManyMovesAsAreLegal) {
  int positions[2] = {0, 0};
  std::array<int, 24> by_ply{};
  for (const kit::Case& c : cases_for_both()) {
    const bool white = c.position.white_to_move();
    kit::place(c.fen);
    for (int n = kit::first_ply; n <= kit::last_ply; ++n) {
      kit::open_ply(n);
      EXPECT_EQ(tried(kit::members(n, white).phases), c.moves.size()) << c.fen << " ply " << n;
      EXPECT_EQ(kit::cut_flag(n), 0);
      EXPECT_EQ(X_D[static_cast<std::size_t>(n)], c.moves.empty() ? 1 : 0) << c.fen;
      EXPECT_EQ(tabd[static_cast<std::size_t>(n)], tab) << c.fen;  // moves are made elsewhere
      ++by_ply[static_cast<std::size_t>(n)];
    }
    ++positions[white];
  }
  EXPECT_GE(positions[0], 300);
  EXPECT_GE(positions[1], 300);
  for (int n = 1; n <= 23; ++n)
    EXPECT_EQ(by_ply[static_cast<std::size_t>(n)], positions[0] + positions[1]);
}

// --- Which ---

// Each legal move, stored, is tried by the loops of the stored moves alone, and then once by all
// loops together: the plain ones leave it out.
TEST(MoveSets, EveryPlyTriesEachLegalMoveOnce) {
  std::array<std::array<int, 2>, 24> by_ply{};
  for (const kit::Case& c : kit::cases()) {
    const bool white = c.position.white_to_move();
    std::vector<Tabuleiro> after;
    for (const referee::Move& m : c.moves) after.push_back(kit::board_of(c.position.after(m)));
    kit::place(c.fen);
    for (int n = kit::first_ply; n <= kit::last_ply; ++n) {
      const kit::PlyMembers& ply = kit::members(n, white);
      kit::open_ply(n);
      for (std::size_t i = 0; i < c.moves.size(); ++i) {
        const referee::Move& m = c.moves[i];
        const bool capture = kit::is_capture(c.position, m);
        const bool promotes = m.promo != 0 && kit::has_promotion_loop(n);
        kit::store(n, m, capture);
        const std::uint32_t alone = tried(capture ? ply.stored_capture : ply.stored_quiet);
        EXPECT_EQ(alone, promotes ? 0U : 1U) << c.fen << ' ' << m.text() << " ply " << n;
        if (alone == 1) {
          EXPECT_EQ(kit::difference(tab2, after[i]), "") << c.fen << ' ' << m.text();
        }
        EXPECT_EQ(tried(ply.phases), c.moves.size()) << c.fen << ' ' << m.text() << " ply " << n;
        ++by_ply[static_cast<std::size_t>(n)][white];
      }
    }
  }
  EXPECT_GE(kit::cases().size(), 300U);
  for (int n = 1; n <= 23; ++n) {
    EXPECT_GE(by_ply[static_cast<std::size_t>(n)][0], 2000) << "ply " << n;
    EXPECT_GE(by_ply[static_cast<std::size_t>(n)][1], 2000) << "ply " << n;
  }
}

// Every square that an own man stands on, to every square, stored: met by the walk and legal, or
// not tried.
TEST(MoveSets, NoPlyTriesAStoredMoveThatIsNotLegal) {
  std::array<int, 24> wrong_by_ply{};
  for (const kit::Case& c : kit::cases()) {
    const bool white = c.position.white_to_move();
    const auto own = [&](int s) {
      return c.position.at(s) != ' ' && (c.position.at(s) < 'a') == white;
    };
    std::map<std::pair<int, int>, referee::Move> legal;
    for (const referee::Move& m : c.moves) legal[{m.from, m.to}] = m;
    kit::place(c.fen);
    for (int n = kit::first_ply; n <= kit::last_ply; ++n) {
      const kit::PlyMembers& ply = kit::members(n, white);
      kit::open_ply(n);
      int wrong = 0;
      for (int from = 0; from < 64; ++from) {
        if (!own(from)) continue;
        for (int to = 0; to < 64; ++to) {
          const auto found = legal.find({from, to});
          const bool is_legal =
              found != legal.end() && !(found->second.promo != 0 && kit::has_promotion_loop(n));
          const referee::Move m = {from, to, 0};
          const bool takes = is_legal && kit::is_capture(c.position, m);
          kit::store(n, m, false);
          const std::uint32_t as_quiet = tried(ply.stored_quiet);
          EXPECT_EQ(as_quiet, is_legal && !takes ? 1U : 0U) << c.fen << ' ' << m.text() << ' ' << n;
          kit::store(n, m, true);
          const std::uint32_t as_capture = tried(ply.stored_capture);
          EXPECT_EQ(as_capture, takes ? 1U : 0U) << c.fen << ' ' << m.text() << ' ' << n;
          wrong += !is_legal;
        }
      }
      wrong_by_ply[static_cast<std::size_t>(n)] += wrong;
    }
  }
  for (int n = 1; n <= 23; ++n) EXPECT_GE(wrong_by_ply[static_cast<std::size_t>(n)], 50000);
}

// --- Loop by loop ---

// The quiet moves of one man, and the captures of one man, as the arbiter has them.
TEST(MoveSets, EachLoopTriesTheMovesOfItsSquare) {
  int loops = 0;
  for (const kit::Case& c : kit::cases()) {
    const bool white = c.position.white_to_move();
    kit::place(c.fen);
    const auto count = [&](auto fits) {
      return static_cast<std::uint32_t>(std::count_if(c.moves.begin(), c.moves.end(), fits));
    };
    for (int n = kit::first_ply; n <= kit::last_ply; ++n) {
      const kit::PlyMembers& ply = kit::members(n, white);
      const bool apart = kit::has_promotion_loop(n);
      kit::open_ply(n);
      for (int s = 0; s < 64; ++s) {
        const char man = c.position.at(s);
        if (man == ' ') continue;
        const std::size_t kind = kit::kind_of(man);
        SCOPED_TRACE(c.fen + ' ' + referee::square_name(s) + " ply " + std::to_string(n));
        const auto expect_tries = [&](kit::Loop loop, std::uint32_t moves) {
          nodes = 0;
          loop(s / 8, s % 8);
          EXPECT_EQ(nodes, moves);
          ++loops;
        };
        if ((man < 'a') == white) {
          expect_tries(ply.livre[kind], count([&](const referee::Move& m) {
                         return m.from == s && !kit::is_capture(c.position, m) &&
                                !(apart && m.promo != 0);
                       }));
          if (apart && kind == 0)
            expect_tries(ply.positive_peao, count([&](const referee::Move& m) {
                           return m.from == s && m.promo != 0;
                         }));
        } else if (n >= 2 && kind != 5) {
          expect_tries(ply.gerador, count([&](const referee::Move& m) {
                         return m.to == s && !(apart && m.promo != 0);
                       }));
        }
      }
    }
  }
  EXPECT_GE(loops, 50000);
}

// A plain loop leaves the stored move of its kind out, and a test loop tries it alone.
TEST(MoveSets, PlainLoopsLeaveOutWhatTestLoopsTry) {
  int moves = 0;
  for (std::size_t at = 0; at < kit::cases().size(); at += 3) {
    const kit::Case& c = kit::cases()[at];
    const bool white = c.position.white_to_move();
    kit::place(c.fen);
    for (int n = 2; n <= kit::last_ply; ++n) {
      const kit::PlyMembers& ply = kit::members(n, white);
      kit::open_ply(n);
      for (const referee::Move& m : c.moves) {
        if (m.promo != 0 && kit::has_promotion_loop(n)) continue;
        const bool capture = kit::is_capture(c.position, m);
        const std::size_t kind = kit::kind_of(c.position.at(m.from));
        const int s = capture ? m.to : m.from;
        const auto run = [&](kit::Loop loop) {
          nodes = 0;
          loop(s / 8, s % 8);
          return nodes;
        };
        guardado[static_cast<std::size_t>(n)] = guardado_g[static_cast<std::size_t>(n)] = sem_lance;
        const std::uint32_t all = run(capture ? ply.gerador : ply.livre[kind]);
        kit::store(n, m, capture);
        EXPECT_EQ(run(capture ? ply.gerador : ply.livre[kind]), all - 1)
            << c.fen << ' ' << m.text();
        EXPECT_EQ(run(capture ? ply.geradortest : ply.livretest[kind]), 1U)
            << c.fen << ' ' << m.text();
        ++moves;
      }
    }
  }
  EXPECT_GE(moves, 20000);
}

}  // namespace
