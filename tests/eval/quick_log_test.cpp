// Sums of logarithms in double precision against the same in extended precision, to the last bit:
// the material quotient, and the rounding test that a leaf's sum goes through.
#include "eval/quick_log.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

#include "board/attack.h"
#include "board/move.h"
#include "eval/bench.h"
#include "eval/knobs.h"
#include "eval/leaf.h"
#include "eval/leaf_cache.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "support/lab.h"
#include "support/positions.h"
#include "tree/clock.h"

namespace korvu {
namespace {

// --- The logarithm of an estimate ---

TEST(QuickLogarithm, OfAnEstimateIsNear) {
  std::mt19937_64 dice(4);
  std::uniform_real_distribution<double> exponent(-20, 20);
  for (int i = 0; i < 1000000; ++i) {
    const double x = std::exp(exponent(dice));
    ASSERT_NEAR(ln_aproximado(x), std::log(x), 3e-8) << x;
  }
  for (const double x : {1.0, 2.0, 0.5, 4.0 / 3, 1e300, 1e-300, std::nextafter(1.0, 0.0),
                         std::nextafter(1.0, 2.0), std::nextafter(2.0, 0.0)})
    EXPECT_NEAR(ln_aproximado(x), std::log(x), 3e-8) << x;
}

// --- The material quotient ---

float told_plainly(float own, float other) {
  const long double a = own, b = other;
  return static_cast<float>(a - b + static_cast<long double>(MQ) * std::log(a / b));
}

// To the last bit; one that is no number equals any other.
bool same(float a, float b) {
  return (std::isnan(a) && std::isnan(b)) || bench::same_bits(a, b);
}

constexpr float weights[] = {0, 1, 2, 5, 9, 11, 0.5F, -3};

TEST(QuickLogarithm, OfWholeTotalsIsTheExtendedOne) {
  for (const float weight : weights) {
    MQ = weight;
    for (int a = 0; a <= 600; ++a)
      for (int b = 0; b <= 600; ++b) {
        const auto own = static_cast<float>(a), other = static_cast<float>(b);
        ASSERT_PRED2(same, com_logaritmo(own, other), told_plainly(own, other))
            << a << ' ' << b << " weight " << MQ;
      }
  }
}

// What the root's discount and captures leave of the totals may lie below zero, and nothing says
// that they are whole; the tables end somewhere, too.
TEST(QuickLogarithm, OfAnyOtherTotalsIsTheExtendedOne) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  constexpr float ends[] = {0,          -0.0F,    1,    -1,     0.5F, 0.99999994F,
                            1.0000001F, 2046,     2047, 2048,   2049, 2047.5,
                            4096,       16777216, -110, 1e-30F, 1e30F};
  std::mt19937 dice(1);
  const auto any = [&]() -> float {
    switch (dice() % 5) {
      case 0:
        return ends[dice() % std::size(ends)];
      case 1:
        return static_cast<float>(dice() % 3000);
      case 2:
        return static_cast<float>(dice() % 600) + static_cast<float>(dice() % 16) / 16;
      case 3:
        return -static_cast<float>(dice() % 600);
      default:
        return static_cast<float>(dice() % 600000) / 1000;
    }
  };
  int none = 0, infinite = 0, finite = 0;
  for (int k = 0; k < 400000; ++k) {
    MQ = weights[dice() % std::size(weights)];
    const float own = any(), other = any(), should = told_plainly(own, other);
    ASSERT_PRED2(same, com_logaritmo(own, other), should) << own << ' ' << other << ' ' << MQ;
    none += std::isnan(should);
    infinite += std::abs(should) == infinity;
    finite += std::isfinite(should);
  }
  EXPECT_GT(none, 1000);
  EXPECT_GT(infinite, 1000);
  EXPECT_GT(finite, 100000);
}

TEST(QuickLogarithm, TablesAreTheLogarithmsOfWholeNumbers) {
  const auto near = [](double is, long double should) {
    return std::abs(is - should) <= std::abs(should) * std::numeric_limits<double>::epsilon();
  };
  for (int n = 1; n < 5000; ++n) EXPECT_PRED2(near, ln_inteiro(n), std::log(1.0L * n)) << n;
  for (int n = 0; n < 5000; ++n) EXPECT_PRED2(near, ln_do_peso(n), std::log(n + 10.1L)) << n;
  EXPECT_EQ(ln_inteiro(0), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(ln_inteiro(-1)));
  EXPECT_TRUE(std::isnan(ln_do_peso(-11)));
}

// --- The rounding test ---

struct Sums {
  double quick;
  long double exact;
};

// Terms as a leaf has them, a weight by the logarithm of a quotient, twelve at most.
Sums random_sums(std::mt19937& dice) {
  Sums s = {0, 0};
  for (unsigned n = 1 + dice() % 12; n > 0; --n) {
    const int weight = static_cast<int>(dice() % 21) - 10;
    const auto a = static_cast<int>(1 + dice() % 700), b = static_cast<int>(1 + dice() % 700);
    s.quick += weight * (ln_inteiro(a) - ln_inteiro(b));
    s.exact += weight * std::log(static_cast<long double>(a) / b);
  }
  // The root move's own part, a float; now and then one that leaves next to nothing of the sum.
  const float part = dice() % 4 == 0 ? -static_cast<float>(s.exact)
                                     : (static_cast<float>(dice() % 2001) - 1000) / 700;
  s.quick += static_cast<double>(part);
  s.exact += part;
  return s;
}

TEST(RoundingTest, NeverPassesAnotherFloatThanThatOfTheExactSum) {
  std::mt19937 dice(2);
  constexpr int cases = 600000;
  int passed = 0;
  for (int k = 0; k < cases; ++k) {
    const Sums s = random_sums(dice);
    ASSERT_LT(std::abs(s.quick - s.exact), margem_da_soma / 2) << "the margin is a margin";
    float rounded = 77;
    if (!arredonda_com_certeza(s.quick, rounded)) continue;
    ++passed;
    ASSERT_PRED2(bench::same_bits, rounded, static_cast<float>(s.exact)) << "case " << k;
  }
  RecordProperty("sums", cases);
  RecordProperty("passed", passed);
  EXPECT_GT(passed, cases / 2) << "and most sums are certain";
}

// Whatever the quick sum within its margin of the exact one, next to where floats part most of all.
TEST(RoundingTest, HoldsForEverySumWithinTheMargin) {
  std::mt19937 dice(3);
  int passed = 0, refused = 0;
  for (int k = 0; k < 400000; ++k) {
    const float f = (static_cast<float>(dice() % 200001) - 100000) / 1700;
    const float next = std::nextafterf(f, dice() % 2 == 0 ? 100.0F : -100.0F);
    const long double middle = (static_cast<long double>(f) + next) / 2;
    const auto within = [&](long double by) {
      return by * (static_cast<long double>(dice()) / std::mt19937::max() * 2 - 1);
    };
    const long double exact = middle + within(k % 2 == 0 ? 3e-10L : 1e-7L);
    const auto quick = static_cast<double>(exact + within(margem_da_soma * 0.999L));
    float rounded = 77;
    if (!arredonda_com_certeza(quick, rounded)) {
      ++refused;
      continue;
    }
    ++passed;
    ASSERT_PRED2(bench::same_bits, rounded, static_cast<float>(exact)) << "case " << k;
  }
  EXPECT_GT(passed, 100000);
  EXPECT_GT(refused, 10000);
}

TEST(RoundingTest, RefusesZeroAndWhatIsNoNumber) {
  float rounded;
  EXPECT_FALSE(arredonda_com_certeza(0, rounded));
  EXPECT_FALSE(arredonda_com_certeza(-0.0, rounded));
  EXPECT_FALSE(arredonda_com_certeza(margem_da_soma / 3, rounded));
  EXPECT_FALSE(arredonda_com_certeza(std::numeric_limits<double>::quiet_NaN(), rounded));
  EXPECT_TRUE(arredonda_com_certeza(1.25 + 1e-9, rounded));
  EXPECT_EQ(rounded, 1.25F);
}

// --- Where a quotient of the leaf loses its logarithm ---

// Two White pawns attack a pawn each; the weight of such attacks moves White's positional sum from
// where its quotient has a logarithm to where it has none, by the smallest steps there are.
TEST(LeafSums, AreTheExtendedOnesNextToWhereAQuotientEnds) {
  bench::lay("4k3/8/8/1p3p2/P5P1/8/8/4K3 w - - 0 1");
  bench::kings_at_home();
  piecesac = 10000;  // the sum itself is to be seen
  const auto base = [] {
    const Figuras f = bench::figures<Varredura::folha, Cor::b, Cor::b, Cor::b>();
    return static_cast<double>(f.pos) + f.cen + 10.1;
  };
  agres = 0;
  const double at_none = base();
  agres = 1;
  const double by_one = base() - at_none;
  ASSERT_GT(by_one, 0);
  agres = static_cast<float>(-at_none / by_one);
  for (int k = 0; k < 2000; ++k) agres = std::nextafterf(agres, -100);
  int above = 0, below = 0, tiny = 0;
  for (int k = 0; k < 4000; ++k) {
    agres = std::nextafterf(agres, 100);
    const plain::Leaf twin = plain::leaf(plain::board_from_bytes(tab2), plain::setting_from_slots(),
                                         plain::white, plain::white);
    extra_eval<Cor::b, Cor::b>();
    ASSERT_PRED2(bench::same_sum, extraeval, twin.correction) << "step " << k;
    (base() > 0 ? above : below)++;
    tiny += base() > 0 && base() < 1e-5;
  }
  EXPECT_GT(above, 100);
  EXPECT_GT(below, 100);
  EXPECT_GT(tiny, 1);
}

// --- How often the slow sum is needed ---

struct Parent {
  Tabuleiro board;
  Duplos doubles;
  int white_mark, black_mark;
  float inherited;
};
std::vector<Parent> parents;
constexpr int depth = 5;  // leaves stand at ply 6

// Called after each root move: the node of ply 5 searched last.
void note_parent() {
  parents.push_back({tabd[depth], duplos_D[depth], roque_b, roque_p, extraevalll});
}

void search(const std::string& fen) {
  lab::position(fen);
  lab::position(fen);  // the tables around the kings go by the totals that stand when made
  bench::rest_knobs();
  parents.clear();
  relata_linha = note_parent;
  inicio = fim = 0;
  tempo = 300000;
  deep = deepp = depth;
  por_cor(joga_com_b, []<Cor raiz>() {
    define_empate<raiz>();
    esquece_lances();
    procura<raiz>();
  });
}

struct Share {
  int leaves = 0, slow = 0, unseen = 0;
};
int scanned_again = 0;

// The leaf on tab2, as ply 6 values it: the root side moves next.
template <Cor raiz>
void value_leaf(Share& share) {
  extra_eval<raiz, raiz>();
  const int before = scanned_again;
  const ResumoDaFolha& r = resumo_de(tab2, chave_da_folha<raiz, raiz>(),
                                     [] { return ++scanned_again, ResumoDaFolha{}; });
  if (scanned_again != before) {  // no longer known, so nothing is known of its sum
    ++share.unseen;
    return;
  }
  float rounded;
  ++share.leaves;
  share.slow += !arredonda_com_certeza(r.soma + static_cast<double>(extraevalll), rounded);
}

// The leaves behind a node of ply 5: its captures and moves of officers.
template <Cor raiz>
void value_leaves_of(const Parent& p, Share& share) {
  constexpr Cor other = outra(raiz);
  roque_b = p.white_mark;
  roque_p = p.black_mark;
  extraevalll = p.inherited;
  tab2 = p.board;
  verifica_rei<raiz>();
  const auto leaf = [&](int x1, int y1, int x2, int y2) {
    if (Lado<other>::propria(p.board[casa(x2, y2)])) return false;
    tab2 = p.board;
    move_as_pecas<other>(tab2, p.doubles, x1, y1, x2, y2);
    verifica_rei<other>();
    if (!Y) value_leaf<raiz>(share);
    return false;
  };
  percorre_tabuleiro([&](int x, int y, std::size_t s) {
    const auto moves_of = [&]<Peca man>() {
      if (p.board[s] == codigo_de(man, other))
        alvos<man>(p.board, x, y, [&](int i, int j) { return leaf(x, y, i, j); });
    };
    moves_of.template operator()<Peca::cavalo>();
    moves_of.template operator()<Peca::bispo>();
    moves_of.template operator()<Peca::torre>();
    moves_of.template operator()<Peca::dama>();
    moves_of.template operator()<Peca::rei>();
    return false;
  });
}

// The slow sum is right whenever it is asked for; asked for often it would cost what it was to
// save.
TEST(RoundingTest, SeldomNeedsTheSlowSumInSearches) {
  Share share;
  std::size_t n = 0;
  for (const std::string& fen : referee::varied_fens()) {
    if (n++ % 8 != 0) continue;
    search(fen);
    por_cor(joga_com_b, [&]<Cor raiz>() {
      for (const Parent& p : parents) value_leaves_of<raiz>(p, share);
    });
  }
  relata_linha = [] {};
  RecordProperty("leaves", share.leaves);
  RecordProperty("slow", share.slow);
  std::printf("leaves %d, of which %d need the slow sum\n", share.leaves, share.slow);
  EXPECT_GT(share.leaves, 10000);
  EXPECT_LT(share.slow * 100, share.leaves) << "1 % at most";
  EXPECT_LT(share.unseen * 100, share.leaves);
}

}  // namespace
}  // namespace korvu
