// The scan that counts and weighs what each man of a board can reach. Three callers share it: the
// leaf evaluation, the rating of a root move and the analysis of the root position.
#pragma once

#include <algorithm>
#include <cstdlib>

#include "board/state.h"
#include "board/tables.h"
#include "eval/extended.h"
#include "eval/freedom.h"
#include "eval/knobs.h"
#include "eval/pawns.h"

namespace korvu {

enum class Varredura { folha, estrategia, raiz };

// One side's figures of a scan.
struct Figuras {
  float pos = 0;      // positional sum
  float cen = 0;      // centroo over the reached squares
  float kattack = 0;  // 1 / divisor to the enemy king over the reached squares
  float kdefend = 0;  // the same to the own king
  int mob = 0;        // reached squares that are empty or hold an enemy
  int att = 0;        // enemy men reached
  int def = 0;        // own men reached
  int shield = 0;     // own pawns before the own king
  int weight = 0;     // 3 a knight or bishop, 5 a rook, 9 a queen
  int officers = 0, pawns = 0;
  int knights = 0, bishops = 0, rooks = 0, queens = 0;
  int advance = 0;                             // ranks from 1, king included
  int xmin = 7, xmax = 0, ymin = 7, ymax = 0;  // extent of the pawns and the king

  void estende(int x, int y) {
    xmin = std::min(xmin, x);
    xmax = std::max(xmax, x);
    ymin = std::min(ymin, y);
    ymax = std::max(ymax, y);
  }
};

// Every addition to a sum is made in double precision and rounded to float: the sums depend on the
// order of the additions, so that order is fixed.
inline void soma(float& total, double termo) {
  total = static_cast<float>(total + termo);
}

// How far the men have come for their number, and how closely the pawns stand.
inline Estendido avanco(const Figuras& f) {
  return (static_cast<Estendido>(f.advance) + 0.1) / (f.officers + f.pawns + 1);
}
inline Estendido densidade(const Figuras& f) {
  return static_cast<Estendido>(f.pawns + 1) / ((f.xmax - f.xmin + 1) * (f.ymax - f.ymin + 1));
}

// True when the enemy's pieces are so few that a king counts as a fighting man.
template <Cor cor>
bool rei_ativo() {
  return material_maior<outra(cor)>() <= 90;
}

// The king's square as the last legality test left it.
template <Cor cor>
std::size_t casa_do_rei() {
  return casa(rei_x<cor>(), rei_y<cor>());
}

// The scan of one board. `raiz` is the root side: its men's proximity to the enemy king is scaled
// by agresprxrei. `ataca` is the side whose attacks on greater values count as gains. King squares
// other than a scanned king's own are the slots p_x_Rb and its kin, as they were left.
template <Varredura V, Cor raiz, Cor ataca>
class Varre {
 public:
  explicit Varre(const Tabuleiro& t) : t_(t) {
    percorre_tabuleiro([this](int x, int y, std::size_t s) {
      if (com_sinal(t_[s]) > 0) homem<Cor::b>(x, y);
      if (com_sinal(t_[s]) < 0) homem<Cor::p>(x, y);
      return false;
    });
  }

  template <Cor cor>
  const Figuras& de() const {
    return f_[static_cast<std::size_t>(cor)];
  }

 private:
  template <Cor cor>
  Figuras& figuras() {
    return f_[static_cast<std::size_t>(cor)];
  }

  std::uint8_t em(int x, int y) const { return t_[casa(x, y)]; }
  bool tem(int x, int y, std::uint8_t codigo) const { return tem_codigo(t_, x, y, codigo); }

  // Divisor of the distance from (x, y) to the king of `cor`.
  template <Cor cor>
  static int ao_rei(int x, int y) {
    return divisor(x, y, rei_x<cor>(), rei_y<cor>());
  }

  template <Cor cor>
  static double escala() {
    return cor == raiz ? static_cast<double>(agresprxrei) : 1.0;
  }

  template <Cor cor>
  void homem(int x, int y);
  template <Cor cor>
  void peao(int x, int y);
  template <Cor cor, Peca p>
  void oficial(int x, int y);
  template <Cor cor>
  void rei(int x, int y);

  template <Cor cor, Peca p>
  void alcanca(int x, int y, Passo d, int i, int j);
  template <Cor cor, Peca p>
  void alcances(int x, int y);
  template <Cor cor>
  void nota(int x, int y);
  template <Cor cor>
  void conta_mob(int x1, int y1, int x2, int y2);

  template <Cor cor>
  void peao_e_rei(int x, int y);
  template <Cor cor>
  void capturas_do_peao(int x, int y);
  template <Cor cor>
  void ganho_do_peao(int x, int y, int v);

  const Tabuleiro& t_;
  const int n_ = npecasb + npecasp;  // men at the root
  std::array<Figuras, 2> f_{};
};

// The leaf's, which runs a thousand times as often, is written for speed: eval/leaf_scan.h.
template <Cor raiz, Cor ataca>
class Varre<Varredura::folha, raiz, ataca>;

template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::homem(int x, int y) {
  figuras<cor>().advance += Lado<cor>::fila(y) + 1;
  com_a_peca<cor>(em(x, y), [&]<Peca p>() {
    if constexpr (p == Peca::peao)
      peao<cor>(x, y);
    else if constexpr (p == Peca::rei)
      rei<cor>(x, y);
    else
      oficial<cor, p>(x, y);
  });
}

// A square reached by a man of `cor`, whatever stands there.
template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::nota(int x, int y) {
  Figuras& f = figuras<cor>();
  soma(f.cen, centroo[casa(x, y)]);
  soma(f.kattack, 1.0 / ao_rei<outra(cor)>(x, y));
  soma(f.kdefend, 1.0 / ao_rei<cor>(x, y));
}

// At the root only legal moves count as mobility; at a leaf, all.
template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::conta_mob(int x1, int y1, int x2, int y2) {
  if constexpr (V == Varredura::raiz) verifica_liberdade<cor>(x1, y1, x2, y2);
  if constexpr (V == Varredura::estrategia) verifica_liberdadee<cor>(x1, y1, x2, y2);
  if (!YY) ++figuras<cor>().mob;
}

template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor, Peca p>
void Varre<V, raiz, ataca>::alcanca(int x, int y, Passo d, int i, int j) {
  using L = Lado<cor>;
  Figuras& f = figuras<cor>();
  const std::uint8_t q = em(i, j);
  if (!L::propria(q)) conta_mob<cor>(x, y, i, j);
  if (L::inimiga(q)) {
    ++f.att;
    constexpr bool tem_ganho = p == Peca::cavalo || p == Peca::bispo || p == Peca::torre;
    const int ganho = -L::visto(q) - valor_de(p);
    if (cor == ataca && tem_ganho && ganho > 0) soma(f.pos, ganho);
  } else if (L::propria(q)) {
    ++f.def;
    const bool pesada = q == L::dama || q == L::torre;
    if (p == Peca::torre && pesada) soma(f.pos, d.dx != 0 ? 3 : 5);
    if (p == Peca::dama && pesada) soma(f.pos, 1);
  }
  nota<cor>(i, j);
}

// The knight's leaps are met in another order here than where moves are generated.
inline constexpr std::array<Passo, 8> saltos_da_varredura = {
    {{+2, +1}, {+2, -1}, {-2, +1}, {-2, -1}, {-1, +2}, {-1, -2}, {+1, -2}, {+1, +2}}};

template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor, Peca p>
void Varre<V, raiz, ataca>::alcances(int x, int y) {
  if constexpr (p == Peca::torre || p == Peca::dama)
    for (Passo d : raios_da_torre)
      anda(t_, x, y, d, [&](int i, int j) { return alcanca<cor, p>(x, y, d, i, j), false; });
  if constexpr (p == Peca::bispo || p == Peca::dama)
    for (Passo d : raios_do_bispo)
      anda(t_, x, y, d, [&](int i, int j) { return alcanca<cor, p>(x, y, d, i, j), false; });
  if constexpr (p == Peca::cavalo || p == Peca::rei)
    for (Passo d : p == Peca::cavalo ? saltos_da_varredura : passos_do_rei)
      if (dentro(x + d.dx, y + d.dy)) alcanca<cor, p>(x, y, d, x + d.dx, y + d.dy);
}

template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor, Peca p>
void Varre<V, raiz, ataca>::oficial(int x, int y) {
  using L = Lado<cor>;
  Figuras& f = figuras<cor>();
  const double no_centro = centro[casa(x, y)];
  const int longe = ao_rei<L::outro>(x, y);
  const bool poucos = n_ < 15;
  ++f.officers;
  if (p == Peca::torre) {
    if (x != 0 && x != 7) soma(f.pos, 15);
  } else if (y != L::fila(0)) {
    soma(f.pos, 15);
  }
  if constexpr (p == Peca::cavalo) {
    ++f.knights;
    f.weight += 3;
    soma(f.pos, no_centro * (poucos ? 10 : 25));
    soma(f.pos, (poucos ? 15 : 5) * escala<cor>() / longe);
  } else if constexpr (p == Peca::bispo) {
    ++f.bishops;
    f.weight += 3;
    if (x == y || x + y == 7) soma(f.pos, n_ > 14 ? 11 : 5);
  } else if constexpr (p == Peca::torre) {
    ++f.rooks;
    f.weight += 5;
    if (poucos) soma(f.pos, 10 * escala<cor>() / longe);
    if (n_ < 11 && L::fila(y) >= 6) soma(f.pos, 11);
  } else {
    ++f.queens;
    f.weight += 9;
    soma(f.pos, no_centro * (poucos ? 15 : 10));
    soma(f.pos, (poucos ? 25 : 5) * escala<cor>() / longe);
  }
  alcances<cor, p>(x, y);
}

template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::rei(int x, int y) {
  constexpr Cor outro = outra(cor);
  Figuras& f = figuras<cor>();
  f.estende(x, y);
  if (!rei_ativo<cor>()) return;
  soma(f.pos, static_cast<double>(centro[casa(x, y)]) * 50);
  if (npecas<outro>() == 0) soma(f.pos, 75 * escala<cor>() / ao_rei<outro>(x, y));
  alcances<cor, Peca::rei>(x, y);
}

// Shield of the own king while the enemy has pieces; nearness to promotion and to both kings after.
template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::peao_e_rei(int x, int y) {
  using L = Lado<cor>;
  Figuras& f = figuras<cor>();
  if (rei_ativo<cor>()) {
    soma(f.pos, static_cast<double>(promo<cor>[casa(x, y)]) * 100);
    soma(f.pos, 25.0 / ao_rei<cor>(x, y));
    soma(figuras<L::outro>().pos, 25.0 / ao_rei<L::outro>(x, y));
    return;
  }
  const int adiante = L::frente * (y - rei_y<cor>());
  if (std::abs(x - rei_x<cor>()) <= 1 && adiante >= 0 && adiante <= 2) ++f.shield;
  for (const int i : {x + 1, x - 1})
    if (dentro(i, y + L::frente)) nota<cor>(i, y + L::frente);
}

// The attacking side gains by the victim's value; the other only from an officer, and with a pawn
// that protects this one.
template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::ganho_do_peao(int x, int y, int v) {
  using L = Lado<cor>;
  Figuras& f = figuras<cor>();
  if (cor == ataca)
    soma(f.pos, v * static_cast<double>(agres) - 10);
  else if (v > valor_de(Peca::peao) &&
           (tem(x + 1, y - L::frente, L::peao) || tem(x - 1, y - L::frente, L::peao)))
    soma(f.pos, v / 2);
}

template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::capturas_do_peao(int x, int y) {
  using L = Lado<cor>;
  Figuras& f = figuras<cor>();
  for (const int i : {x + 1, x - 1}) {
    const int j = y + L::frente;
    if (!dentro(i, j) || !L::inimiga(em(i, j))) continue;
    ganho_do_peao<cor>(x, y, -L::visto(em(i, j)));
    conta_mob<cor>(x, y, i, j);
    ++f.att;
  }
  if (tem(x, y + L::frente, vazia)) {
    conta_mob<cor>(x, y, x, y + L::frente);
    if (y == L::fila(1) && em(x, L::fila(3)) == vazia) conta_mob<cor>(x, y, x, L::fila(3));
  }
  for (const int i : {x + 1, x - 1})
    if (dentro(i, y + L::frente) && L::propria(em(i, y + L::frente))) ++f.def;
}

template <Varredura V, Cor raiz, Cor ataca>
template <Cor cor>
void Varre<V, raiz, ataca>::peao(int x, int y) {
  Figuras& f = figuras<cor>();
  ++f.pawns;
  f.estende(x, y);
  peao_e_rei<cor>(x, y);
  capturas_do_peao<cor>(x, y);
  estrutura_do_peao<cor>(t_, x, y, [&f](int n) { soma(f.pos, n); });
}

}  // namespace korvu
