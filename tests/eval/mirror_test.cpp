// Exchanging the colours and flipping the ranks changes nothing but the order of the additions.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "board/root_move.h"
#include "board/tables.h"
#include "eval/bench.h"
#include "eval/knobs.h"
#include "eval/leaf.h"
#include "eval/root_analysis.h"
#include "eval/strategy.h"
#include "support/positions.h"
#include "support/referee.h"

namespace {

using korvu::Cor;
using korvu::Figuras;
using korvu::Varredura;

// Board and side to move only.
std::string plain_fen(const std::string& fen) {
  std::istringstream in(fen);
  std::string board, side;
  in >> board >> side;
  return board + ' ' + side + " - - 0 1";
}

// Exchanges every slot that belongs to a colour.
void exchange_slots() {
  using namespace korvu;
  std::swap(npecasb, npecasp);
  std::swap(materialba, materialpa);
  std::swap(materialmaiorb, materialmaiorp);
  std::swap(roque_b, roque_p);
  std::swap(p_x_Rb, p_x_Rp);
  std::swap(p_y_Rb, p_y_Rp);
  p_y_Rb = 7 - p_y_Rb;
  p_y_Rp = 7 - p_y_Rp;
}

korvu::Tabuleiro flipped(const korvu::Tabuleiro& t) {
  korvu::Tabuleiro f{};
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y)
      f[static_cast<std::size_t>(8 * x + 7 - y)] =
          static_cast<std::uint8_t>(-static_cast<int>(t[static_cast<std::size_t>(8 * x + y)]));
  return f;
}

void exchange_board() {
  korvu::tab2 = flipped(korvu::tab2);
}

void scatter(std::mt19937& dice) {
  bench::scatter(dice);
  if (korvu::agres == 0) korvu::agres = 1;  // sums near nothing make their logarithms steep
}

void expect_near(float a, float b, double tolerance) {
  EXPECT_NEAR(a, b, tolerance * (1 + std::abs(a)));
}

void expect_mirrored(const Figuras& a, const Figuras& b) {
  EXPECT_EQ(a.mob, b.mob);
  EXPECT_EQ(a.att, b.att);
  EXPECT_EQ(a.def, b.def);
  EXPECT_EQ(a.shield, b.shield);
  EXPECT_EQ(a.weight, b.weight);
  EXPECT_EQ(a.officers, b.officers);
  EXPECT_EQ(a.pawns, b.pawns);
  EXPECT_EQ(a.knights, b.knights);
  EXPECT_EQ(a.bishops, b.bishops);
  EXPECT_EQ(a.rooks, b.rooks);
  EXPECT_EQ(a.queens, b.queens);
  EXPECT_EQ(a.advance, b.advance);
  EXPECT_EQ(a.xmin, b.xmin);
  EXPECT_EQ(a.xmax, b.xmax);
  EXPECT_EQ(a.ymin, 7 - b.ymax);
  EXPECT_EQ(a.ymax, 7 - b.ymin);
  expect_near(a.pos, b.pos, 1e-5);
  expect_near(a.cen, b.cen, 1e-5);
  expect_near(a.kattack, b.kattack, 1e-5);
  expect_near(a.kdefend, b.kdefend, 1e-5);
}

void exchange() {
  korvu::tab = flipped(korvu::tab);  // where a reading of the root plays its moves
  exchange_board();
  exchange_slots();
}

template <Varredura V, Cor raiz, Cor ataca>
void compare_scans() {
  constexpr Cor raiz2 = korvu::outra(raiz), ataca2 = korvu::outra(ataca);
  const Figuras w = bench::figures<V, raiz, ataca, Cor::b>();
  const Figuras b = bench::figures<V, raiz, ataca, Cor::p>();
  SCOPED_TRACE(bench::bench_state());
  exchange();
  expect_mirrored(w, bench::figures<V, raiz2, ataca2, Cor::p>());
  expect_mirrored(b, bench::figures<V, raiz2, ataca2, Cor::b>());
  exchange();
}

template <Cor raiz, Cor ataca>
void compare_leaves() {
  compare_scans<Varredura::folha, raiz, ataca>();
  korvu::extra_eval<raiz, ataca>();
  const float value = korvu::extraeval;
  const std::uint8_t drawn = korvu::EMPAT;
  SCOPED_TRACE(bench::bench_state());
  exchange();
  korvu::extra_eval<korvu::outra(raiz), korvu::outra(ataca)>();
  expect_near(korvu::extraeval, value, 1e-4);
  EXPECT_EQ(korvu::EMPAT, drawn);
  exchange();
}

int flipped(int square) {
  return square / 8 * 8 + 7 - square % 8;
}

template <Cor cor>
void prepare(const referee::Move& m, bool flip) {
  const int from = flip ? flipped(m.from) : m.from, to = flip ? flipped(m.to) : m.to;
  korvu::init_tabuleiro2<cor>(from / 8, from % 8, to / 8, to % 8);
}

struct Rated {
  float inherited;
  int ataque, estrategia, matriz;
};

template <Cor cor>
Rated rate() {
  korvu::verifica_estrategia<cor>();
  return {korvu::extraevalll, korvu::ATAQUE, korvu::ESTRATEGIA, korvu::MATRIZ};
}

// The rating of one move, or of its mirror image on the mirrored board. The square value is given:
// its tables do have centres of their own for each colour.
Rated rate_move(const std::string& fen, const referee::Move& m, bool white, bool mirror, int matriz,
                bool urged, std::uint32_t seed) {
  bench::lay(mirror ? bench::mirrored(fen) : fen);
  const bool by_white = white != mirror;
  if (by_white)
    prepare<Cor::b>(m, mirror);
  else
    prepare<Cor::p>(m, mirror);
  const korvu::Tabuleiro after = korvu::tab2;
  if (mirror) exchange_board();
  std::mt19937 dice(seed);
  scatter(dice);
  korvu::tab2 = after;
  if (mirror) exchange_slots();
  korvu::MATRIZ = matriz;
  korvu::incentiva_promo = urged;
  return by_white ? rate<Cor::b>() : rate<Cor::p>();
}

}  // namespace

TEST(Mirror, LeafFiguresAndValues) {
  std::mt19937 dice(11);
  for (const std::string& fen : referee::many_fens()) {
    bench::lay(fen);
    scatter(dice);
    compare_leaves<Cor::b, Cor::b>();
    compare_leaves<Cor::p, Cor::p>();
    compare_leaves<Cor::b, Cor::p>();
    compare_leaves<Cor::p, Cor::b>();
    if (HasFailure()) FAIL() << fen;
  }
  EXPECT_GE(referee::many_fens().size(), 4000U);
}

// The scans of the root count only what may really move.
TEST(Mirror, FiguresOfTheRoot) {
  std::mt19937 dice(15);
  for (const std::string& fen : referee::many_fens()) {
    bench::lay(fen);
    scatter(dice);
    compare_scans<Varredura::raiz, Cor::b, Cor::p>();
    compare_scans<Varredura::raiz, Cor::p, Cor::b>();
    compare_scans<Varredura::estrategia, Cor::b, Cor::p>();
    compare_scans<Varredura::estrategia, Cor::p, Cor::b>();
    if (HasFailure()) FAIL() << fen;
  }
}

// Without the leanings that favour the root side a leaf is worth to one side what it costs the
// other.
TEST(Mirror, TheOtherRootSideSeesTheNegative) {
  std::mt19937 dice(12);
  for (const std::string& fen : referee::varied_fens()) {
    bench::lay(fen);
    scatter(dice);
    korvu::agresprxrei = 1;
    korvu::shashinn = korvu::extraevalll = 0;
    korvu::extra_eval<Cor::b, Cor::b>();
    const float of_white = korvu::extraeval;
    korvu::extra_eval<Cor::p, Cor::b>();
    expect_near(korvu::extraeval, -of_white, 1e-5);
    if (HasFailure()) FAIL() << fen << '\n' << bench::bench_state();
  }
}

TEST(Mirror, RatingsOfRootMoves) {
  std::mt19937 dice(13);
  int cases = 0;
  for (const std::string& whole : referee::many_fens()) {
    const std::string fen = plain_fen(whole);
    const referee::Position p = referee::Position::from_fen(fen);
    const std::vector<referee::Move> moves = p.legal_moves();
    if (moves.empty()) continue;  // all were captures in passing
    const referee::Move& m = moves[dice() % moves.size()];
    const int matriz = static_cast<int>(dice() % 61) - 30;
    const bool urged = dice() % 2 == 0;
    const auto seed = static_cast<std::uint32_t>(dice());
    const Rated a = rate_move(fen, m, p.white_to_move(), false, matriz, urged, seed);
    const Rated b = rate_move(fen, m, p.white_to_move(), true, matriz, urged, seed);
    EXPECT_EQ(a.ataque, b.ataque);
    EXPECT_EQ(a.estrategia, b.estrategia);
    EXPECT_EQ(a.matriz, b.matriz);
    expect_near(a.inherited, b.inherited, 1e-5);
    if (HasFailure()) FAIL() << fen << ", move " << m.text();
    ++cases;
  }
  EXPECT_GT(cases, 4000);
}

TEST(Mirror, ReadingsOfTheRoot) {
  std::mt19937 dice(14);
  for (const std::string& whole : referee::many_fens()) {
    const std::string fen = plain_fen(whole);
    const std::vector<referee::Move> moves = referee::Position::from_fen(fen).legal_moves();
    if (moves.empty()) continue;
    const referee::Move& m = moves[dice() % moves.size()];
    const auto read = [&](bool flip, bool white_root) {
      bench::lay(flip ? bench::mirrored(fen) : fen);
      const int from = flip ? flipped(m.from) : m.from, to = flip ? flipped(m.to) : m.to;
      korvu::joga_com_b = white_root;
      korvu::jogada = {from / 8, from % 8, to / 8, to % 8};
      korvu::PRe = m.promo == 0 ? '0' : m.promo;
      korvu::init_tabuleiro();
      return korvu::shashinn;
    };
    expect_near(read(false, true), read(true, false), 1e-5);
    expect_near(read(false, false), read(true, true), 1e-5);
    expect_near(read(false, true), -read(false, false), 1e-5);
    if (HasFailure()) FAIL() << fen << ", move " << m.text();
  }
}

TEST(Mirror, OfTheTablesTheEvaluationReads) {
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y) {
      const auto s = static_cast<std::size_t>(8 * x + y);
      const auto over = static_cast<std::size_t>(8 * x + 7 - y);
      const auto across = static_cast<std::size_t>(8 * (7 - x) + y);
      EXPECT_EQ(korvu::centro[s], korvu::centro[over]);
      EXPECT_EQ(korvu::centro[s], korvu::centro[across]);
      EXPECT_EQ(korvu::centroo[s], korvu::centroo[over]);
      EXPECT_EQ(korvu::centroo[s], korvu::centroo[across]);
      EXPECT_EQ(korvu::promo_b[s], korvu::promo_p[over]);
    }
}

// The square values of root moves, by contrast, have centres of their own: bishops of both colours
// lean to the queen's side.
TEST(Mirror, IsBrokenByTheSquareValuesOfRootMoves) {
  const auto bishop = [](const auto& table, int x, int y) {
    return table[static_cast<std::size_t>(8 * x + y)];
  };
  EXPECT_EQ(bishop(korvu::posix_b_bispo, 3, 4), 5);  // d5 at its centre
  EXPECT_EQ(bishop(korvu::posix_b_bispo, 4, 4), 3);  // e5 a file away
  EXPECT_EQ(bishop(korvu::posix_p_bispo, 3, 3), 5);
  EXPECT_EQ(bishop(korvu::posix_p_bispo, 4, 3), 3);
}
