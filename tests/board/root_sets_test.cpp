// The ladders of the root search exactly the legal moves, each once, in their order: by class and
// rating, and among equals by man, square and target.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "eval/knobs.h"
#include "root/ladder.h"
#include "root_log.h"
#include "sides.h"

namespace {

using namespace korvu;
using referee::Move;
using referee::Position;

// Expanders of one class: the victim ('-' for none), with check or without, the men in order.
struct Rung {
  char victim;
  bool check;
  std::string_view men;
};
// Rungs that share one walk through the ratings.
using Round = std::vector<Rung>;
using Ladder = std::vector<Round>;

constexpr std::string_view all_men = "pnbrqk";

// Every expander of the rung in a walk of its own.
void add_one_by_one(Ladder& ladder, char victim, std::string_view men) {
  for (const bool check : {true, false})
    for (std::size_t i = 0; i < men.size(); ++i)
      ladder.push_back({{victim, check, men.substr(i, 1)}});
}

Ladder dynamic_ladder() {
  Ladder l;
  for (const char victim : std::string_view("qrnbp")) add_one_by_one(l, victim, all_men);
  l.push_back({{'-', true, all_men}, {'-', false, all_men}});
  return l;
}

// The captures that give up more than they take, with the quiet moves.
const Round put_off = {
    {'n', true, "r"},  {'b', true, "r"},  {'r', true, "q"},  {'p', true, "bnr"},
    {'n', true, "q"},  {'b', true, "q"},  {'p', true, "q"},  {'-', true, all_men},  //
    {'n', false, "r"}, {'b', false, "r"}, {'r', false, "q"}, {'p', false, "bnr"},
    {'n', false, "q"}, {'b', false, "q"}, {'p', false, "q"}, {'-', false, all_men}};

struct Good {
  char victim;
  std::string_view men;
};
constexpr Good good[] = {
    {'q', "pnbrqk"}, {'r', "pnbrk"}, {'n', "pnbk"}, {'b', "pnbk"}, {'p', "pk"}};

Ladder consistent_ladder() {
  Ladder l;
  for (const Good& g : good) add_one_by_one(l, g.victim, g.men);
  l.push_back(put_off);
  return l;
}

Ladder positional_ladder() {
  Ladder l;
  for (const Good& g : good) l.push_back({{g.victim, true, g.men}, {g.victim, false, g.men}});
  l.push_back(put_off);
  return l;
}

Ladder bare_king_ladder() {
  return {{{'-', true, "p"}, {'-', false, "p"}},
          {{'-', true, "nbrq"}, {'-', false, "nbrqk"}, {'-', true, "k"}},
          {{'p', true, "k"}, {'p', false, "k"}}};
}

// --- The moves of one man in the order of an expander ---

struct Step {
  int dx, dy;
};

const std::vector<Step> rook_rays = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
const std::vector<Step> bishop_rays = {{1, 1}, {1, -1}, {-1, -1}, {-1, 1}};
const std::vector<Step> knight_leaps = {{2, 1},  {2, -1}, {-2, -1}, {-2, 1},
                                        {-1, 2}, {1, 2},  {1, -2},  {-1, -2}};
const std::vector<Step> king_steps = {{1, 0},   {-1, 0}, {0, 1},  {0, -1},
                                      {-1, -1}, {1, 1},  {-1, 1}, {1, -1}};

bool on_board(int x, int y) {
  return x >= 0 && x < 8 && y >= 0 && y < 8;
}

char lower(char man) {
  return man < 'a' && man != ' ' ? static_cast<char>(man + 32) : man;
}

// Every target in the order of generation, legal or not. Castlings and captures in passing stand
// behind the captures.
std::vector<int> targets(const Position& p, int s) {
  std::vector<int> t;
  const int x = s / 8, y = s % 8;
  const auto leaps = [&](const std::vector<Step>& steps) {
    for (const Step d : steps)
      if (on_board(x + d.dx, y + d.dy)) t.push_back(8 * (x + d.dx) + y + d.dy);
  };
  const auto rays = [&](const std::vector<Step>& steps) {
    for (const Step d : steps)
      for (int i = x + d.dx, j = y + d.dy; on_board(i, j); i += d.dx, j += d.dy) {
        t.push_back(8 * i + j);
        if (p.at(8 * i + j) != ' ') break;
      }
  };
  const bool white = p.white_to_move();
  const int forward = white ? 1 : -1;
  switch (lower(p.at(s))) {
    case 'p':
      if (y == (white ? 1 : 6)) t.push_back(s + 2 * forward);
      t.push_back(s + forward);
      for (const bool empty : {false, true})  // captures, then those in passing
        for (const int i : {x + 1, x - 1})
          if (on_board(i, y + forward) && (p.at(8 * i + y + forward) == ' ') == empty)
            t.push_back(8 * i + y + forward);
      break;
    case 'n':
      leaps(knight_leaps);
      break;
    case 'b':
      rays(bishop_rays);
      break;
    case 'r':
      rays(rook_rays);
      break;
    case 'q':
      rays(rook_rays);
      rays(bishop_rays);
      break;
    default:
      leaps(king_steps);
      t.push_back(s + 16);
      t.push_back(s - 16);
      break;
  }
  return t;
}

bool castles(const Position& p, const Move& m) {
  return lower(p.at(m.from)) == 'k' && std::abs(m.from - m.to) == 16;
}

// The class of a move: its victim, '-' for none. Captures in passing and castlings stand with the
// captures of pawns.
char victim_of(const Position& p, const Move& m) {
  const bool passing = lower(p.at(m.from)) == 'p' && m.from / 8 != m.to / 8 && p.at(m.to) == ' ';
  if (passing || castles(p, m)) return 'p';
  return p.at(m.to) == ' ' ? '-' : lower(p.at(m.to));
}

char own_man(const Position& p, char man) {
  return p.white_to_move() ? static_cast<char>(man - 32) : man;
}

// A move to be searched, and in which check class.
struct Candidate {
  std::string move;
  int from, to;
  char victim;
  bool check;
};

// White's queen-side castling is a case apart. With check it is the king-side castling that is
// asked: its attacks forbid, its rook gives the check.
std::vector<bool> classes_of_the_queen_side(const Position& p, bool legal) {
  std::vector<bool> classes;
  const bool may = p.castling().white_queen_side && p.at(0) == 'R' && p.at(8) == ' ' &&
                   p.at(16) == ' ' && p.at(24) == ' ' && p.at(32) == 'K' && !p.in_check();
  if (!may) return classes;
  std::string fen;
  for (int rank = 7; rank >= 0; --rank) {
    for (int file = 0; file < 8; ++file) {
      char man = p.at(8 * file + rank);
      if (rank == 0 && file == 5) man = 'R';
      if (rank == 0 && file == 6) man = 'K';
      if (rank == 0 && (file == 4 || file == 7)) man = ' ';
      fen += man == ' ' ? '1' : man;
    }
    if (rank > 0) fen += '/';
  }
  const Position king_side = Position::from_fen(fen + " b - - 0 1");
  if (!p.attacked(40, false) && !king_side.attacked(48, false) && king_side.in_check())
    classes.push_back(true);
  if (legal && !p.after({32, 16, 0}).in_check()) classes.push_back(false);
  return classes;
}

std::vector<Candidate> candidates(const kit::Case& c) {
  std::vector<Candidate> all;
  const Position& p = c.position;
  bool queen_side_legal = false;
  for (const Move& m : c.moves) {
    if (p.white_to_move() && castles(p, m) && m.to == 16) {
      queen_side_legal = true;
      continue;
    }
    all.push_back({m.text().substr(0, 4), m.from, m.to, victim_of(p, m), p.after(m).in_check()});
  }
  if (p.white_to_move())
    for (const bool check : classes_of_the_queen_side(p, queen_side_legal))
      all.push_back({"e1c1", 32, 16, 'p', check});
  return all;
}

// The candidates in the order of a ladder, by the ratings that the moves were found to have.
std::string ordered(const kit::Case& c, const Ladder& ladder,
                    const std::vector<kit::RootMove>& rated) {
  const std::vector<Candidate> all = candidates(c);
  std::map<std::pair<std::string, bool>, int> rating;
  for (const kit::RootMove& r : rated) rating[{r.move, r.check}] = r.rating;
  std::string text;
  for (const Round& round : ladder) {
    std::vector<std::pair<int, std::string>> met;
    for (const Rung& rung : round)
      for (const char man : rung.men)
        for (int s = 0; s < 64; ++s) {
          if (c.position.at(s) != own_man(c.position, man)) continue;
          for (const int t : targets(c.position, s))
            for (const Candidate& m : all)
              if (m.from == s && m.to == t && m.victim == rung.victim && m.check == rung.check) {
                const auto r = rating.find({m.move, m.check});
                if (r != rating.end()) met.emplace_back(r->second, m.move);
              }
        }
    std::stable_sort(met.begin(), met.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& m : met) text += m.second + ' ';
  }
  return text;
}

// Runs the ladder over the position and compares: the set with the arbiter's, then the order. Gives
// the moves searched.
std::vector<kit::RootMove> expect_scan(const kit::Case& c, const Ladder& ladder) {
  const std::vector<kit::RootMove> found = kit::scanned();
  std::vector<std::string> is, should;
  for (const kit::RootMove& m : found) is.push_back(m.move);
  for (const Candidate& m : candidates(c)) should.push_back(m.move);
  std::sort(is.begin(), is.end());
  std::sort(should.begin(), should.end());
  EXPECT_EQ(is, should) << c.fen;
  EXPECT_EQ(nodes, found.size()) << c.fen;
  EXPECT_EQ(kit::text_of(found), ordered(c, ladder, found)) << c.fen;
  for (const kit::RootMove& m : found)
    for (const Move& legal : c.moves)
      if (legal.text().substr(0, 4) == m.move) {
        EXPECT_EQ(kit::difference(m.after, kit::board_of(c.position.after(legal))), "")
            << c.fen << ' ' << m.move;
      }
  return found;
}

bool bare_enemy(const Position& p) {
  for (int s = 0; s < 64; ++s)
    if (p.at(s) != ' ' && (p.at(s) < 'a') != p.white_to_move() && lower(p.at(s)) != 'k')
      return false;
  return true;
}

// A pass costs the more, the more men there are and the more moves they have: the lightest
// positions, and some of the others.
std::vector<kit::Case> sample() {
  std::vector<kit::Case> all = kit::cases();
  std::erase_if(all, [](const kit::Case& c) { return bare_enemy(c.position); });
  const auto weight = [](const kit::Case& c) {
    return static_cast<std::size_t>(c.position.men()) * c.moves.size();
  };
  std::stable_sort(all.begin(), all.end(),
                   [&](const kit::Case& a, const kit::Case& b) { return weight(a) < weight(b); });
  std::vector<kit::Case> some;
  int castling = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const kit::Case& c = all[i];
    const bool may_castle = std::any_of(c.moves.begin(), c.moves.end(),
                                        [&](const Move& m) { return castles(c.position, m); });
    if (i >= 300 && i % 25 != 0 && !(may_castle && castling < 15)) continue;
    castling += may_castle;
    some.push_back(c);
  }
  return some;
}

void expect_scans(int temperament, const Ladder& ladder) {
  int positions[2] = {0, 0};
  int castlings = 0, in_passing = 0, promotions = 0, captures = 0, highest = 0, lowest = 0;
  for (const kit::Case& c : sample()) {
    kit::open_root(c.fen);
    Temperamento = temperament;
    for (const kit::RootMove& m : expect_scan(c, ladder)) {
      highest += m.rating == 100;
      lowest += m.rating == -100;
    }
    ++positions[c.position.white_to_move()];
    for (const Move& m : c.moves) {
      castlings += castles(c.position, m);
      promotions += m.promo != 0;
      in_passing +=
          victim_of(c.position, m) == 'p' && c.position.at(m.to) == ' ' && !castles(c.position, m);
      captures += c.position.at(m.to) != ' ';
    }
  }
  EXPECT_GE(positions[0] + positions[1], 300);
  EXPECT_GE(positions[0], 100);
  EXPECT_GE(positions[1], 100);
  EXPECT_GE(castlings, 15);
  EXPECT_GE(in_passing, 5);
  EXPECT_GE(promotions, 100);
  EXPECT_GE(captures, 300);
  EXPECT_GE(highest, 50);
  EXPECT_GE(lowest, 50);
}

TEST(RootLadder, TheDynamicOneSearchesEachLegalMoveInItsOrder) {
  ASSERT_EQ(dynamic_ladder().size(), 61U);
  expect_scans(3, dynamic_ladder());
}

TEST(RootLadder, TheConsistentOneSearchesEachLegalMoveInItsOrder) {
  ASSERT_EQ(consistent_ladder().size(), 43U);
  expect_scans(2, consistent_ladder());
}

TEST(RootLadder, ThePositionalOneSearchesEachLegalMoveInItsOrder) {
  ASSERT_EQ(positional_ladder().size(), 6U);
  expect_scans(1, positional_ladder());
}

// The mover's men of a position against a lone king; empty when that king could be taken.
std::string against_a_bare_king(const Position& p) {
  std::string fen;
  for (int rank = 7; rank >= 0; --rank) {
    for (int file = 0; file < 8; ++file) {
      const char man = p.at(8 * file + rank);
      const bool own = man != ' ' && (man < 'a') == p.white_to_move();
      fen += own || lower(man) == 'k' ? man : '1';
    }
    fen += rank > 0 ? '/' : ' ';
  }
  std::string rights;
  if (p.white_to_move()) {
    if (p.castling().white_king_side) rights += 'K';
    if (p.castling().white_queen_side) rights += 'Q';
  } else {
    if (p.castling().black_king_side) rights += 'k';
    if (p.castling().black_queen_side) rights += 'q';
  }
  fen += (p.white_to_move() ? "w " : "b ") + (rights.empty() ? "-" : rights) + " - 0 1";
  const Position bare = Position::from_fen(fen);
  const int king = bare.king_square(!p.white_to_move());
  return bare.attacked(king, p.white_to_move()) ? "" : bare.fen();
}

TEST(RootLadder, TheOneAgainstABareKingSearchesEachLegalMoveInItsOrder) {
  std::set<std::string> met;
  int castlings = 0;
  for (const kit::Case& c : kit::cases()) {
    const std::string fen = against_a_bare_king(c.position);
    if (fen.empty()) continue;
    const Position p = Position::from_fen(fen);
    const kit::Case bare = {fen, p, kit::searched_moves(p)};
    const bool may_castle = std::any_of(bare.moves.begin(), bare.moves.end(),
                                        [&](const Move& m) { return castles(p, m); });
    const bool wanted = may_castle ? castlings < 20 : p.men() <= 8 && met.size() < 110;
    if (!wanted || !met.insert(fen).second) continue;
    castlings += may_castle;
    kit::open_root(fen);
    Temperamento = 1 + static_cast<int>(met.size() % 3);  // all the same
    expect_scan(bare, bare_king_ladder());
  }
  EXPECT_GE(met.size(), 100U);
  EXPECT_GE(castlings, 10);
}

// Where the ratings hardly tell the moves apart, the order of the expanders and of the squares
// does.
kit::Case case_of(const std::string& fen) {
  const Position p = Position::from_fen(fen);
  return {fen, p, kit::searched_moves(p)};
}

void expect_scan_of_equals(const kit::Case& c, int temperament, const Ladder& ladder) {
  kit::open_root(c.fen);
  Temperamento = temperament;
  matrix = 0;
  agreschrei = 0;
  expect_scan(c, ladder);
}

constexpr std::string_view lively[] = {
    // Every man may check, and the king may let others check.
    "k7/8/8/8/K2R4/8/1P1NBQ2/R7 w - - 0 1",
    "7k/8/8/2P1N3/3K4/2R1B3/8/B2Q4 w - - 0 1",
    // With castlings and promotions.
    "8/1P4k1/8/8/8/8/5B2/R3K2R w KQ - 0 1",
};

TEST(RootLadder, OfEqualMovesTheOrderOfTheExpandersDecides) {
  for (const std::string_view told : lively)
    kit::for_both_sides([&](kit::Seen seen) {
      expect_scan_of_equals(case_of(seen.fen(told)), 3, bare_king_ladder());
    });
  // Every class has something to take.
  const std::string_view rich = "1r2k3/P1p1n1b1/3q1p2/1nr1N1p1/4B2R/2PQ1P2/2K3P1/4R3 w - - 0 1";
  kit::for_both_sides([&](kit::Seen seen) {
    const kit::Case c = case_of(seen.fen(rich));
    ASSERT_GE(c.moves.size(), 40U);
    expect_scan_of_equals(c, 3, dynamic_ladder());
    expect_scan_of_equals(c, 2, consistent_ladder());
    expect_scan_of_equals(c, 1, positional_ladder());
  });
}

TEST(RootLadder, AnotherTemperamentSearchesNothing) {
  for (const char* fen : {"4k3/p7/8/8/8/8/P7/4K3 w - - 0 1", "4k3/8/8/8/8/8/P7/4K3 w - - 0 1"})
    for (const int temperament : {0, 4, -1}) {
      kit::open_root(fen);
      Temperamento = temperament;
      EXPECT_EQ(kit::scanned().size(), 0U) << fen;
    }
}

TEST(RootLadder, AnEnemyBelowAKingsWorthSearchesNothing) {
  kit::for_both_sides([](kit::Seen seen) {
    for (const auto& [total, moves] : {std::pair{111.F, 7U}, {110.F, 7U}, {109.F, 0U}, {0.F, 0U}}) {
      kit::open_root(seen.fen("4k3/8/8/8/8/8/P7/4K3 w - - 0 1"));
      (seen.white ? materialpa : materialba) = total;
      EXPECT_EQ(kit::scanned().size(), moves) << total;
    }
  });
}

TEST(RootLadder, StartsWithAClearedEnd) {
  kit::open_root("4k3/p7/8/8/8/8/P7/4K3 w - - 0 1");
  corte_MAXcut = 1;
  EXPECT_EQ(kit::scanned().size(), 7U);
  EXPECT_EQ(corte_MAXcut, 0);
}

// The scan of a game's first move: quiet moves of pawns and knights that give no check.
std::string short_scan(std::string_view fen) {
  kit::open_root(fen);
  return kit::text_of(kit::scanned_at_first_move());
}

TEST(ShortScan, SearchesThePawnsAndKnights) {
  kit::for_both_sides([](kit::Seen seen) {
    const kit::Case c = case_of(seen.fen(Position::start().fen()));
    kit::open_root(c.fen);
    const std::vector<kit::RootMove> found = kit::scanned_at_first_move();
    EXPECT_EQ(found.size(), 20U);
    EXPECT_EQ(kit::text_of(found), ordered(c, {{{'-', false, "pn"}}}, found));
  });
}

TEST(ShortScan, LeavesOutEverythingElse) {
  // The knight's only move without a check or a capture is to h1, the pawn's only step is to a4.
  EXPECT_EQ(short_scan("4k3/8/4p1p1/8/1R3N2/P4Q1B/8/4K2R w K - 0 1").size(), 5U * (1 + 5));
  const std::string text = short_scan("4k3/8/4p1p1/8/1R3N2/P4Q1B/8/4K2R w K - 0 1");
  for (const std::string_view m : {"a3a4", "f4h5", "f4d3", "f4d5", "f4e2", "f4g2"})
    EXPECT_NE(text.find(m), std::string::npos) << m;
}

}  // namespace
