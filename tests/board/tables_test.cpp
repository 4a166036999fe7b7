// The fixed square tables, and those around the kings and the most advanced pawns.
#include "board/tables.h"

#include <gtest/gtest.h>

#include "board/root_tables.h"
#include "sides.h"

namespace {

using namespace korvu;

template <class Table, class F>
void expect_table(const char* name, const Table& table, F formula) {
  ASSERT_EQ(table.size(), 64U);
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y)
      EXPECT_EQ(table[static_cast<std::size_t>(8 * x + y)], formula(x, y))
          << name << " at " << referee::square_name(referee::square(x, y));
}

// height / (distance squared + 2), in whole numbers.
auto hill(int height, int cx, int cy) {
  return [=](int x, int y) { return height / ((x - cx) * (x - cx) + (y - cy) * (y - cy) + 2); };
}

TEST(FixedTables, OfTheCentre) {
  const auto divisor = [](int x, int y) {
    return (x - 3.5) * (x - 3.5) + (y - 3.5) * (y - 3.5) + 2;
  };
  expect_table("centro", centro,
               [&](int x, int y) { return static_cast<float>(1 / divisor(x, y)); });
  expect_table("centroo", centroo,
               [&](int x, int y) { return static_cast<float>(50 / divisor(x, y)); });
  EXPECT_FLOAT_EQ(centro[lab::square("d4")], 0.4F);  // 1 / 2.5
  EXPECT_FLOAT_EQ(centroo[lab::square("e5")], 20.0F);
  EXPECT_FLOAT_EQ(centroo[lab::square("a1")], 50 / 26.5F);
}

TEST(FixedTables, OfPromotion) {
  expect_table("promo_b", promo_b,
               [](int, int y) { return static_cast<float>(1.0 / (2.0 * (7 - y) * (7 - y) + 2)); });
  expect_table("promo_p", promo_p,
               [](int, int y) { return static_cast<float>(1.0 / (2.0 * y * y + 2)); });
  EXPECT_FLOAT_EQ(promo_b[lab::square("c8")], 0.5F);
  EXPECT_FLOAT_EQ(promo_p[lab::square("c2")], 0.25F);
}

TEST(FixedTables, OfTheMen) {
  expect_table("posix_b_peao_inici", posix_b_peao_inici, hill(10, 4, 3));
  expect_table("posix_b_cavalo", posix_b_cavalo, hill(10, 4, 4));
  expect_table("posix_b_bispo", posix_b_bispo, hill(10, 3, 4));
  expect_table("posix_b_dama", posix_b_dama, hill(10, 4, 5));
  expect_table("posix_b_reifinal", posix_b_reifinal, hill(500, 4, 3));
  expect_table("posix_p_peao_inici", posix_p_peao_inici, hill(10, 4, 4));
  expect_table("posix_p_cavalo", posix_p_cavalo, hill(10, 4, 3));
  expect_table("posix_p_bispo", posix_p_bispo, hill(10, 3, 3));
  expect_table("posix_p_dama", posix_p_dama, hill(10, 4, 2));
  expect_table("posix_p_reifinal", posix_p_reifinal, hill(500, 4, 4));
  const auto nothing = [](int, int) { return 0; };
  expect_table("posix_b_torre", posix_b_torre, nothing);
  expect_table("posix_p_torre", posix_p_torre, nothing);
  EXPECT_EQ(posix_b_peao_inici[lab::square("e4")], 5);
  EXPECT_EQ(posix_b_reifinal[lab::square("e4")], 250);
  EXPECT_EQ(posix_b_reifinal[lab::square("d5")], 125);
}

TEST(FixedTables, OfPawnsInTheMiddleGame) {
  expect_table("posix_b_peao_medio", posix_b_peao_medio,
               [](int, int y) { return 50 / (2 * (7 - y) * (7 - y) + 2); });
  expect_table("posix_p_peao_medio", posix_p_peao_medio,
               [](int, int y) { return 50 / (2 * y * y + 2); });
  EXPECT_EQ(posix_b_peao_medio[lab::square("a7")], 12);
  EXPECT_EQ(posix_p_peao_medio[lab::square("a2")], 12);
}

TEST(FixedTables, OfPawnsInTheEnding) {
  const int white_edge[] = {0, 0, 20, 20, 20, 25, 30, 100};
  const int white_inside[] = {0, 0, 25, 25, 25, 30, 35, 100};
  const int black_edge[] = {100, 30, 25, 20, 20, 20, 0, 0};
  const int black_inside[] = {100, 35, 30, 25, 25, 25, 0, 0};
  const auto edge = [](int x) { return x == 0 || x == 7; };
  expect_table("posix_b_peao_final", posix_b_peao_final,
               [&](int x, int y) { return edge(x) ? white_edge[y] : white_inside[y]; });
  expect_table("posix_p_peao_final", posix_p_peao_final,
               [&](int x, int y) { return edge(x) ? black_edge[y] : black_inside[y]; });
}

TEST(FixedTables, ServeTheColourTheyAreNamedFor) {
  EXPECT_EQ(&posix<Cor::b>.peao_inici, &posix_b_peao_inici);
  EXPECT_EQ(&posix<Cor::b>.peao_medio, &posix_b_peao_medio);
  EXPECT_EQ(&posix<Cor::b>.peao_final, &posix_b_peao_final);
  EXPECT_EQ(&posix<Cor::b>.reifinal, &posix_b_reifinal);
  EXPECT_EQ(&posix<Cor::p>.peao_inici, &posix_p_peao_inici);
  EXPECT_EQ(&posix<Cor::p>.peao_medio, &posix_p_peao_medio);
  EXPECT_EQ(&posix<Cor::p>.peao_final, &posix_p_peao_final);
  EXPECT_EQ(&posix<Cor::p>.reifinal, &posix_p_reifinal);
  EXPECT_EQ(&promo<Cor::b>, &promo_b);
  EXPECT_EQ(&promo<Cor::p>, &promo_p);
}

// --- Around the kings ---

void expect_around(const char* name, const TabelaInt& table, int height, int s) {
  expect_table(name, table, hill(height, referee::file_of(s), referee::rank_of(s)));
}

TEST(KingTables, StandAroundEachKing) {
  kit::place("7k/p7/8/8/8/8/6P1/K7 w - - 0 1");
  expect_around("Xr_b", Xr_b, 15, 0);
  expect_around("Xr_p", Xr_p, 15, 63);
  EXPECT_EQ(Xr_b[lab::square("a1")], 7);
  EXPECT_EQ(Xr_b[lab::square("b2")], 3);
}

TEST(KingTables, AreSteepAroundABareKing) {
  kit::place("7k/8/8/8/8/8/6P1/K7 w - - 0 1");
  expect_around("Xr_b", Xr_b, 15, 0);
  expect_around("Xr_p", Xr_p, 375, 63);
  kit::place("7k/6p1/8/8/8/8/8/K7 w - - 0 1");
  expect_around("Xr_b", Xr_b, 375, 0);
  expect_around("Xr_p", Xr_p, 15, 63);
  EXPECT_EQ(Xr_b[lab::square("a1")], 187);
}

TEST(KingTables, StayWithoutAKing) {
  kit::place("7k/6p1/8/8/8/8/6P1/K7 w - - 0 1");
  materialba = materialpa = 100;
  Xr_b.fill(77);
  Xr_p.fill(78);
  analisa_tabuleiro();
  const auto all = [](int v) { return [=](int, int) { return v; }; };
  expect_table("Xr_b", Xr_b, all(77));
  expect_table("Xr_p", Xr_p, all(78));
}

// --- Around the pawns ---

TEST(PawnTables, StandAroundTheMostAdvancedPawn) {
  kit::place("7k/2p5/3p4/8/4P3/5P2/6P1/K7 w - - 0 1");
  expect_around("XP_b", XP_b, 75, static_cast<int>(lab::square("e4")));
  expect_around("XP_p", XP_p, 75, static_cast<int>(lab::square("d6")));
  EXPECT_EQ(XP_b[lab::square("e4")], 37);
  EXPECT_EQ(XP_b[lab::square("e5")], 25);
}

TEST(PawnTables, PreferTheHighestFileOnARank) {
  kit::place("7k/8/1p1p1p2/7p/P3P2P/P5P1/8/K7 w - - 0 1");
  expect_around("XP_b", XP_b, 75, static_cast<int>(lab::square("h4")));
  expect_around("XP_p", XP_p, 75, static_cast<int>(lab::square("h5")));
  kit::place("7k/8/1p1p1p2/8/P3P3/P5P1/8/K7 w - - 0 1");
  expect_around("XP_b", XP_b, 75, static_cast<int>(lab::square("e4")));
  expect_around("XP_p", XP_p, 75, static_cast<int>(lab::square("f6")));
}

TEST(PawnTables, AreZeroWithoutPawns) {
  const auto nothing = [](int, int) { return 0; };
  kit::place("7k/8/8/3p4/8/8/8/K7 w - - 0 1");
  expect_table("XP_b", XP_b, nothing);
  expect_around("XP_p", XP_p, 75, static_cast<int>(lab::square("d5")));
  kit::place("7k/8/8/3P4/8/8/8/K7 w - - 0 1");
  expect_table("XP_p", XP_p, nothing);
  expect_around("XP_b", XP_b, 75, static_cast<int>(lab::square("d5")));
}

// --- Many positions ---

int lead_pawn(const referee::Position& p, bool white) {
  int lead = -1, farthest = -1;
  for (int s = 0; s < 64; ++s) {
    if (p.at(s) != (white ? 'P' : 'p')) continue;
    const int come = white ? referee::rank_of(s) : 7 - referee::rank_of(s);
    if (come >= farthest) {
      farthest = come;
      lead = s;
    }
  }
  return lead;
}

TEST(PositionTables, AgreeWithTheFormulasOverManyPositions) {
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    SCOPED_TRACE(c.fen);
    for (const bool white : {true, false}) {
      bool bare = true;
      for (int s = 0; s < 64; ++s)
        for (const char man : std::string_view(white ? "PNBRQ" : "pnbrq"))
          bare = bare && c.position.at(s) != man;
      expect_around("Xr", white ? Xr_b : Xr_p, bare ? 375 : 15, c.position.king_square(white));
      const int lead = lead_pawn(c.position, white);
      expect_table("XP", white ? XP_b : XP_p, [&](int x, int y) {
        return lead < 0 ? 0 : hill(75, referee::file_of(lead), referee::rank_of(lead))(x, y);
      });
    }
  }
  EXPECT_GE(kit::cases().size(), 300U);
}

struct Count {
  int total = 0, men = 0, officers = 0, officers_value = 0;
};

Count count(const referee::Position& p, bool white) {
  Count c;
  const std::string_view men = white ? "PNBRQK" : "pnbrqk";
  const int values[] = {10, 32, 33, 50, 90, 110};
  for (int s = 0; s < 64; ++s) {
    const std::size_t kind = men.find(p.at(s));
    if (kind == men.npos) continue;
    c.total += values[kind];
    c.men += kind != 5;
    c.officers += kind != 0 && kind != 5;
    if (kind != 0 && kind != 5) c.officers_value += values[kind];
  }
  return c;
}

TEST(Counters, AgreeWithACountOverManyPositions) {
  for (const kit::Case& c : kit::cases())
    for (const bool white_root : {true, false}) {
      kit::place(c.fen);
      joga_com_b = white_root;
      analisa_tabuleiro();
      SCOPED_TRACE(c.fen);
      const Count b = count(c.position, true), p = count(c.position, false);
      EXPECT_EQ(materialba, b.total);
      EXPECT_EQ(materialpa, p.total);
      EXPECT_EQ(npecasb, b.men);
      EXPECT_EQ(npecasp, p.men);
      EXPECT_EQ(npecasbdp, b.officers);
      EXPECT_EQ(npecaspdp, p.officers);
      EXPECT_EQ(materialmaiorb, b.officers_value);
      EXPECT_EQ(materialmaiorp, p.officers_value);
      EXPECT_EQ(materialflot0, white_root ? b.total - p.total : p.total - b.total);
      EXPECT_EQ(8 * p_x_Rb + p_y_Rb, c.position.king_square(true));
      EXPECT_EQ(8 * p_x_Rp + p_y_Rp, c.position.king_square(false));
    }
}

}  // namespace
