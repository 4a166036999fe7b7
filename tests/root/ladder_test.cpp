// In which order a pass searches the root moves: the three ladders and the one against a bare king.
// At depth 1 every move searched is reported, with the rating that is being served.
#include "root/ladder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "board/attack.h"
#include "eval/strategy.h"
#include "root/plain_ladder.h"
#include "root/root_lab.h"
#include "support/positions.h"
#include "support/referee.h"
#include "tree/expected_order.h"

namespace korvu {
namespace {

using namespace root_lab;
using namespace plain_ladder;

TEST(Ladder, HasItsNumberOfLoops) {
  EXPECT_EQ(dynamic().size(), 61U);
  EXPECT_EQ(consistent().size(), 43U);
  EXPECT_EQ(positional().size(), 6U);
}

// --- What a ladder makes of a position without castling ---

struct Candidate {
  referee::Move move;
  Rung rung;
  int rating;
};

char victim_class(const referee::Position& p, const referee::Move& m) {
  switch (p.at(m.to)) {
    case 'Q':
    case 'q':
      return '5';
    case 'R':
    case 'r':
      return '4';
    case 'N':
    case 'n':
      return '3';
    case 'B':
    case 'b':
      return '2';
    case 'P':
    case 'p':
      return '1';
    default: {
      const bool pawn = p.at(m.from) == 'P' || p.at(m.from) == 'p';
      const bool in_passing = pawn && referee::file_of(m.from) != referee::file_of(m.to);
      return in_passing ? '1' : '0';
    }
  }
}

// The engine's own rating of a move.
template <Cor root>
int rating(const referee::Move& m) {
  init_tabuleiro2<root>(referee::file_of(m.from), referee::rank_of(m.from), referee::file_of(m.to),
                        referee::rank_of(m.to));
  verifica_rei<root>();
  verifica_estrategia<root>();
  return ESTRATEGIA;
}

// Targets of one man in the order of generation. A pawn's double step comes before its single one,
// captures towards the h-file first, those in passing last.
std::vector<int> targets(const referee::Position& p, int from) {
  if (p.at(from) != 'P' && p.at(from) != 'p') return expected::targets(p, from);
  const int f = p.white_to_move() ? 1 : -1;
  const int x = referee::file_of(from), y = referee::rank_of(from);
  std::vector<int> squares;
  if (y + 2 * f >= 0 && y + 2 * f < 8) squares.push_back(referee::square(x, y + 2 * f));
  squares.push_back(referee::square(x, y + f));
  for (const bool in_passing : {false, true})
    for (const int side : {1, -1}) {
      if (x + side < 0 || x + side > 7) continue;
      const int to = referee::square(x + side, y + f);
      if ((p.at(to) == ' ') == in_passing) squares.push_back(to);
    }
  return squares;
}

template <Cor root>
std::vector<Candidate> candidates(const referee::Position& p) {
  std::vector<Candidate> all;
  for (int from = 0; from < 64; ++from) {
    if (p.at(from) == ' ' || (p.at(from) < 'a') != p.white_to_move()) continue;
    for (const int to : targets(p, from))
      for (const char promo : {'\0', 'q'}) {
        const referee::Move m{from, to, promo};
        if (!p.is_legal(m)) continue;
        const char man = p.at(from);
        const Rung rung = {victim_class(p, m), p.after(m).in_check(),
                           man >= 'a' ? static_cast<char>(man - 'a' + 'A') : man};
        all.push_back({m, rung, rating<root>(m)});
      }
  }
  return all;
}

struct Served {
  std::string move;
  int rating;
};

std::vector<Served> served(const Ladder& ladder, const std::vector<Candidate>& all) {
  std::vector<Served> order;
  for (const Loop& l : ladder)
    for (int rated = 100; rated >= -100; --rated)
      for (const Rung& r : l)
        for (const Candidate& c : all)
          if (c.rating == rated && c.rung.target == r.target && c.rung.check == r.check &&
              c.rung.man == r.man)
            order.push_back({c.move.text().substr(0, 4), rated});
  return order;
}

std::string text(const std::vector<Served>& order) {
  std::string t;
  for (const Served& s : order) t += s.move + '/' + std::to_string(s.rating) + ' ';
  return t;
}

// Positions met so far in which the three ladders have three orders.
int told_apart = 0;

template <Cor root>
void expect_ladder(const std::string& fen, int temperament, const Ladder& ladder) {
  const referee::Position p = referee::Position::from_fen(fen);
  at_root(fen);
  at_root(fen);  // the tables around the kings go by the totals that stand when they are made
  const std::vector<Candidate> all = candidates<root>(p);
  std::vector<Served> wanted = served(ladder, all);
  const std::string d = text(served(dynamic(), all)), c = text(served(consistent(), all)),
                    l = text(served(positional(), all));
  told_apart += d != c && c != l && l != d;
  at_root(fen);
  deep = 1;
  SCANT = 1;
  Temperamento = temperament;
  corte_MAXcut = 1;  // a new pass clears it
  percorre_escada<root>();
  EXPECT_EQ(ataque, 100) << "the slot stands at the highest again";
  // A move that mates ends the pass.
  const bool mate = !reports().empty() && reports().back().score >= 15400;
  EXPECT_EQ(corte_MAXcut, mate);
  if (mate) wanted.resize(std::min(wanted.size(), reports().size()));
  std::vector<Served> seen;
  for (const Report& r : reports()) seen.push_back({r.move, r.rating});
  EXPECT_EQ(text(seen), text(wanted)) << fen;
}

std::string without_castling(const std::string& fen) {
  const std::size_t field = fen.find(' ', fen.find(' ') + 1) + 1;
  return fen.substr(0, field) + '-' + fen.substr(fen.find(' ', field));
}

// Some of the varied positions, with captures of all kinds among them.
std::vector<std::string> some_positions(std::size_t first) {
  std::vector<std::string> fens;
  const auto& all = referee::varied_fens();
  for (std::size_t i = first; i < all.size(); i += 16) fens.push_back(without_castling(all[i]));
  return fens;
}

void expect_ladder_everywhere(std::size_t first, int temperament, const Ladder& ladder) {
  int positions = 0;
  told_apart = 0;
  for (const std::string& fen : some_positions(first)) {
    const bool white = fen.find(" w ") != std::string::npos;
    at_root(fen);
    if ((white ? materialpa : materialba) == 110) continue;
    if (white)
      expect_ladder<Cor::b>(fen, temperament, ladder);
    else
      expect_ladder<Cor::p>(fen, temperament, ladder);
    ++positions;
  }
  EXPECT_GT(positions, 15);
  EXPECT_GT(told_apart, 0) << "no position here tells the ladders apart";
}

TEST(Ladder, Dynamic) {
  expect_ladder_everywhere(0, 3, dynamic());
}
TEST(Ladder, Consistent) {
  expect_ladder_everywhere(5, 2, consistent());
}
TEST(Ladder, Positional) {
  expect_ladder_everywhere(10, 1, positional());
}

// A ladder whose captures of one class are served by the other rule: one loop in place of the many,
// or many in place of the one.
Ladder with_other_loops(const Ladder& ladder, char target) {
  Ladder other;
  std::size_t joined = ladder.size();  // the place of the one loop; none yet
  for (const Loop& l : ladder) {
    const bool of_class = &l != &ladder.back() && l.front().target == target;
    if (!of_class) {
      other.push_back(l);
    } else if (l.size() > 1) {
      for (const Rung& r : l) other.push_back({r});
    } else {
      if (joined == ladder.size()) {
        joined = other.size();
        other.emplace_back();
      }
      other[joined].push_back(l.front());
    }
  }
  return other;
}

template <Cor root>
bool tells_apart(const std::string& fen, const Ladder& one, const Ladder& other) {
  at_root(fen);
  at_root(fen);
  const auto all = candidates<root>(referee::Position::from_fen(fen));
  return text(served(one, all)) != text(served(other, all));
}

// Men that take the same kind of victim, the later ones rated higher: in some positions for each
// class.
TEST(Ladder, EveryClassOfCapturesIsServedByTheRuleOfItsLadder) {
  const std::vector<std::pair<int, Ladder>> ladders = {
      {3, dynamic()}, {2, consistent()}, {1, positional()}};
  for (const auto& [temperament, ladder] : ladders)
    for (const char target : {'5', '4', '3', '2', '1'}) {
      const Ladder other = with_other_loops(ladder, target);
      int told = 0;
      for (const std::string& varied : referee::varied_fens()) {
        const std::string fen = without_castling(varied);
        if (fen.find(" w ") == std::string::npos || !tells_apart<Cor::b>(fen, ladder, other))
          continue;
        expect_ladder<Cor::b>(fen, temperament, ladder);
        if (++told == 2) break;
      }
      EXPECT_GT(told, 0) << "ladder " << temperament << ", class " << target;
    }
}

TEST(Ladder, AgainstABareKingPawnsComeFirst) {
  each_colour([]<Cor root>() {
    for (const int temperament : {1, 2, 3}) {
      expect_ladder<root>(told_for<root>("7k/8/8/8/3P4/8/1P6/RNBQK3 w - - 0 1"), temperament,
                          against_a_bare_king());
      expect_ladder<root>(told_for<root>("8/2P5/8/1k6/8/5N2/8/4K2R w - - 0 1"), temperament,
                          against_a_bare_king());
    }
    EXPECT_TRUE(reported_moves().starts_with(written<root>("c7c8"))) << reported_moves();
  });
}

TEST(Ladder, ByTheMenOfTheOtherSideAlone) {
  each_colour([]<Cor root>() {
    // The root side's own king is bare: the usual ladder.
    expect_ladder<root>(told_for<root>("7k/8/8/8/3p4/3K4/8/8 w - - 0 1"), 3, dynamic());
    EXPECT_EQ(reports().size(), 6U) << "the pawn guards two squares and can be taken";
  });
}

TEST(Ladder, ATotalBelowAKingsRunsNone) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>(locked));
    deep = 1;
    SCANT = 1;
    material_da_raiz<outra(root)>() = 109;
    corte_MAXcut = 1;
    percorre_escada<root>();
    EXPECT_TRUE(reports().empty());
    EXPECT_EQ(best_move(), "none");
    EXPECT_EQ(corte_MAXcut, 0) << "cleared all the same";
  });
}

TEST(Ladder, AnUnknownTemperamentRunsNone) {
  each_colour([]<Cor root>() {
    for (const int temperament : {0, 4, -1}) {
      at_root(told_for<root>(locked));
      deep = 1;
      SCANT = 1;
      Temperamento = temperament;
      percorre_escada<root>();
      EXPECT_TRUE(reports().empty()) << temperament;
    }
  });
}

TEST(Ladder, AnUnknownTemperamentRunsNoneAgainstABareKingEither) {
  each_colour([]<Cor root>() {
    for (const int temperament : {0, 4}) {
      at_root(told_for<root>("7k/8/8/8/3P4/8/1P6/RNBQK3 w - - 0 1"));
      deep = 1;
      SCANT = 1;
      Temperamento = temperament;
      percorre_escada<root>();
      EXPECT_TRUE(reports().empty()) << temperament;
    }
  });
}

TEST(Ladder, EndsWhereAMoveReachesTheRootsCap) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>(locked));
    deep = 1;
    SCANT = 1;
    MAXcut[0] = 1;  // what either move is worth
    percorre_escada<root>();
    EXPECT_EQ(reports().size(), 1U);
    EXPECT_EQ(corte_MAXcut, 1);
    at_root(told_for<root>(locked));
    deep = 1;
    SCANT = 1;
    MAXcut[0] = 1.5;
    percorre_escada<root>();
    EXPECT_EQ(reports().size(), 2U);
    EXPECT_EQ(corte_MAXcut, 0);
  });
}

TEST(Ladder, NothingIsSearchedAfterTheCutNeitherOfOtherMenNorOfOtherRatings) {
  // The first square of the board holds a man with many moves; then two pawns whose moves share a
  // rating.
  each_colour([]<Cor root>() {
    for (const std::string_view fen :
         {"4k3/8/8/3r4/8/8/8/Q3K2R w - - 0 1", "4k3/p7/8/8/8/8/3P1P2/4K3 w - - 0 1"})
      for (const int temperament : {1, 2, 3}) {
        at_root(told_for<root>(fen));
        deep = 1;
        SCANT = 1;
        Temperamento = temperament;
        MAXcut[0] = -1000;
        percorre_escada<root>();
        EXPECT_EQ(reports().size(), 1U) << fen;
        EXPECT_EQ(corte_MAXcut, 1);
      }
  });
}

TEST(Ladder, OfTwoEqualMovesTheFirstStaysBest) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>(locked));
    deep = 1;
    SCANT = 1;
    percorre_escada<root>();
    ASSERT_EQ(reports().size(), 2U);
    EXPECT_EQ(reports()[0].score, reports()[1].score);
    EXPECT_EQ(best_move(), reports()[0].move);
  });
}

TEST(FirstMoveScan, HasThePawnsAndKnightsQuietMovesWithoutCheckByRating) {
  const std::string fen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w - - 0 1";
  for (const bool white : {true, false}) {
    const std::string start = white ? fen : tree_lab::mirrored(fen);
    const referee::Position p = referee::Position::from_fen(start);
    at_root(start);
    const auto all = white ? candidates<Cor::b>(p) : candidates<Cor::p>(p);
    const std::vector<Served> wanted = served({loop({"0- PN"})}, all);
    at_root(start);
    deep = 1;
    SCANT = 1;
    if (white)
      percorre_primeiro_lance<Cor::b>();
    else
      percorre_primeiro_lance<Cor::p>();
    ASSERT_EQ(reports().size(), 20U);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      EXPECT_EQ(reports()[i].move, wanted[i].move);
      EXPECT_EQ(reports()[i].rating, wanted[i].rating);
    }
  }
}

}  // namespace
}  // namespace korvu
