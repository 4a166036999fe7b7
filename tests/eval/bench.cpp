#include "eval/bench.h"

#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <sstream>

#include "board/root_tables.h"
#include "eval/knobs.h"
#include "support/lab.h"

namespace bench {
namespace {

int below(std::mt19937& dice, int n) {
  return static_cast<int>(dice() % static_cast<unsigned>(n));
}

template <class T, std::size_t n>
T one_of(std::mt19937& dice, const T (&values)[n]) {
  return values[dice() % n];
}

struct Spot {
  int x, y;
};
Spot spot(std::string_view name) {
  return {name[0] - 'a', name[1] - '1'};
}

char exchanged(char c) {
  const auto u = static_cast<unsigned char>(c);
  return static_cast<char>(std::isupper(u) ? std::tolower(u) : std::toupper(u));
}

}  // namespace

void rest_knobs() {
  using namespace korvu;
  MQ = MOB = PM = 5;
  agres = agresprxrei = 1;
  agreschrei = matrix = 1;
  roque_v = 3;
  piecesac = 50;
  extradef = EXTRA_EVAL = EXTRA_EVALL = 1;
  shashinn = extraevalll = extraeval = 0;
  roque_b = roque_p = 0;
}

void lay(std::string_view fen) {
  lab::position(fen);
  korvu::analisa_tabuleiro();  // the kings' tables are made by the totals of the analysis before
  korvu::tab2 = korvu::tab;
  rest_knobs();
}

void men(int white, int black) {
  korvu::npecasb = white;
  korvu::npecasp = black;
}

void officers_total(float white, float black) {
  korvu::materialmaiorb = white;
  korvu::materialmaiorp = black;
}

void kings(std::string_view white, std::string_view black) {
  const Spot w = spot(white), b = spot(black);
  korvu::p_x_Rb = w.x;
  korvu::p_y_Rb = w.y;
  korvu::p_x_Rp = b.x;
  korvu::p_y_Rp = b.y;
}

std::string mirrored(std::string_view fen) {
  std::istringstream in{std::string(fen)};
  std::string board, side;
  in >> board >> side;
  std::string flipped;
  std::istringstream ranks(board);
  for (std::string rank; std::getline(ranks, rank, '/');) {
    for (char& c : rank)
      if (std::isalpha(static_cast<unsigned char>(c))) c = exchanged(c);
    flipped = flipped.empty() ? rank : rank + '/' + flipped;
  }
  return flipped + (side == "w" ? " b - - 0 1" : " w - - 0 1");
}

double nearness(std::string_view a, std::string_view b) {
  const Spot p = spot(a), q = spot(b);
  return 1.0 / ((p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y) + 2);
}

double centrality(std::string_view square) {
  const Spot p = spot(square);
  return 1.0 / ((p.x - 3.5) * (p.x - 3.5) + (p.y - 3.5) * (p.y - 3.5) + 2);
}

void scatter(std::mt19937& dice) {
  using namespace korvu;
  npecasb = below(dice, 17);
  npecasp = below(dice, 17);
  constexpr float officers[] = {0, 32, 50, 82, 90, 91, 100, 182, 320};
  materialmaiorb = one_of(dice, officers);
  materialmaiorp = one_of(dice, officers);
  materialba = static_cast<float>(110 + below(dice, 401));
  materialpa = below(dice, 3) == 0 ? materialba : static_cast<float>(110 + below(dice, 401));
  constexpr int marks[] = {0, 0, 0, 2, 5, 8, 10};
  roque_b = one_of(dice, marks);
  roque_p = one_of(dice, marks);
  if (below(dice, 2) == 0) {
    p_x_Rb = below(dice, 8);
    p_y_Rb = below(dice, 8);
    p_x_Rp = below(dice, 8);
    p_y_Rp = below(dice, 8);
  } else {
    for (int s = 0; s < 64; ++s) {
      const std::uint8_t man = tab2[static_cast<std::size_t>(s)];
      if (man == 110) p_x_Rb = s / 8, p_y_Rb = s % 8;
      if (man == 146) p_x_Rp = s / 8, p_y_Rp = s % 8;
    }
  }
  MOB = one_of(dice, {0.0F, 1.0F, 5.0F, 10.0F});
  PM = one_of(dice, {0.0F, 1.0F, 5.0F, 10.0F});
  agres = one_of(dice, {0.0F, 1.0F, 1.0F, 2.0F, 9.0F});
  agresprxrei = one_of(dice, {0.0F, 1.0F, 2.0F, 7.0F, 9.0F});
  agreschrei = one_of(dice, {0, 1, 4, 10});
  matrix = one_of(dice, {0, 1, 1, 1});
  roque_v = one_of(dice, {0, 1, 3, 10});
  piecesac = one_of(dice, {5, 25, 50, 50, 50});
  shashinn = below(dice, 5) == 0 ? 0 : static_cast<float>(below(dice, 20001) - 10000) / 512;
  extraevalll = static_cast<float>(below(dice, 2001) - 1000) / 1000;
}

void strew(std::mt19937& dice, int most) {
  using namespace korvu;
  tab2.fill(0);
  tab2[static_cast<std::size_t>(below(dice, 64))] = 110;
  for (;;) {
    const auto s = static_cast<std::size_t>(below(dice, 64));
    if (tab2[s] != 0) continue;
    tab2[s] = 146;
    break;
  }
  constexpr int values[] = {10, 10, 10, 10, 32, 33, 50, 90};
  for (int k = below(dice, most + 1); k > 0; --k) {
    const int s = below(dice, 64);
    const int v = one_of(dice, values);
    if (tab2[static_cast<std::size_t>(s)] != 0) continue;
    if (v == 10 && (s % 8 == 0 || s % 8 == 7)) continue;
    tab2[static_cast<std::size_t>(s)] = static_cast<std::uint8_t>(below(dice, 2) == 0 ? v : -v);
  }
}

bool same_bits(float a, float b) {
  return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

bool same_sum(float a, float b) {
  constexpr float nothing = 1e-17F;
  return same_bits(a, b) || (std::abs(a) < nothing && std::abs(b) < nothing);
}

std::string bench_state() {
  using namespace korvu;
  std::ostringstream os;
  os.precision(9);
  for (int y = 7; y >= 0; --y) {
    for (int x = 0; x < 8; ++x) {
      const std::uint8_t man = tab2[static_cast<std::size_t>(8 * x + y)];
      const int v = man < 128 ? man : man - 256;
      const char letter = v == 0               ? '.'
                          : std::abs(v) == 10  ? 'p'
                          : std::abs(v) == 32  ? 'n'
                          : std::abs(v) == 33  ? 'b'
                          : std::abs(v) == 50  ? 'r'
                          : std::abs(v) == 90  ? 'q'
                          : std::abs(v) == 110 ? 'k'
                                               : '?';
      os << (v > 0 ? exchanged(letter) : letter);
    }
    os << '\n';
  }
  os << "kings " << p_x_Rb << p_y_Rb << ' ' << p_x_Rp << p_y_Rp << " men " << npecasb << ' '
     << npecasp << " officers " << materialmaiorb << ' ' << materialmaiorp << " totals "
     << materialba << ' ' << materialpa << " castling " << roque_b << ' ' << roque_p << " agres "
     << agres << " agresprxrei " << agresprxrei << " MOB " << MOB << " PM " << PM << " roque_v "
     << roque_v << " piecesac " << piecesac << " shashinn " << shashinn << " extraevalll "
     << extraevalll << " matrix " << matrix << " agreschrei " << agreschrei << '\n';
  return os.str();
}

std::string differences(const korvu::Figuras& engine, const plain::Figures& twin) {
  std::ostringstream os;
  os.precision(9);
  const auto whole = [&](const char* name, int a, int b) {
    if (a != b) os << name << ' ' << a << " for " << b << '\n';
  };
  const auto real = [&](const char* name, float a, float b) {
    if (!same_bits(a, b)) os << name << ' ' << a << " for " << b << '\n';
  };
  real("pos", engine.pos, twin.pos);
  real("cen", engine.cen, twin.cen);
  real("kattack", engine.kattack, twin.kattack);
  real("kdefend", engine.kdefend, twin.kdefend);
  whole("mob", engine.mob, twin.mob);
  whole("att", engine.att, twin.att);
  whole("def", engine.def, twin.def);
  whole("shield", engine.shield, twin.shield);
  whole("weight", engine.weight, twin.weight);
  whole("officers", engine.officers, twin.officers);
  whole("pawns", engine.pawns, twin.pawns);
  whole("advance", engine.advance, twin.advance);
  whole("knights", engine.knights, twin.knights);
  whole("bishops", engine.bishops, twin.bishops);
  whole("rooks", engine.rooks, twin.rooks);
  whole("queens", engine.queens, twin.queens);
  whole("xmin", engine.xmin, twin.xmin);
  whole("xmax", engine.xmax, twin.xmax);
  whole("ymin", engine.ymin, twin.ymin);
  whole("ymax", engine.ymax, twin.ymax);
  return os.str();
}

}  // namespace bench
