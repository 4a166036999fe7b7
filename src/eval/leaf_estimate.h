// An estimate of a leaf, far cheaper than its scan: most leaves need no more, since all that
// matters of them is on which side of a bound they fall. Counts are exact; sums of fractions are
// made in fixed point and in any order, so that whole sets are counted at once, both colours
// together. How far an estimate may be wrong: margem_da_estimativa.
#pragma once

#include "eval/leaf_scan.h"
#include "eval/pawn_sums.h"
#include "eval/reach.h"

namespace korvu {

// What the terms of a man's place are worth, in order of the men left at the root: many, fewer than
// 15, fewer than 11.
enum class Epoca : std::size_t { cheia, rala, escassa };
inline Epoca epoca_da_raiz() {
  const int n = npecasb + npecasp;
  return n < 11 ? Epoca::escassa : n < 15 ? Epoca::rala : Epoca::cheia;
}

// By Epoca and qual_homem(): the terms of the square alone, and the factor of the nearness to the
// enemy king.
struct Lugar {
  std::array<double, 64> na_casa{};
  double perto_do_rei = 0;
  std::uint32_t especie = 0;  // 1 in the byte of its kind
};
constexpr int byte_da_especie(Peca p) {
  return 8 * (static_cast<int>(p) - static_cast<int>(Peca::cavalo));
}

template <Cor cor, Peca p>
constexpr Lugar lugar_de(bool poucos, bool raros) {
  constexpr bool vai_ao_centro = p == Peca::cavalo || p == Peca::dama;
  const int peso_do_centro = p == Peca::cavalo ? (poucos ? 10 : 25) : poucos ? 15 : 10;
  Lugar l;
  l.especie = 1U << byte_da_especie(p);
  for (std::size_t s = 0; s < 64; ++s) {
    l.na_casa[s] = por_ter_saido<cor, p>[s];
    if (vai_ao_centro) l.na_casa[s] += static_cast<double>(centro[s]) * peso_do_centro;
    if (p == Peca::bispo) l.na_casa[s] += na_grande_diagonal[poucos][s];
    if (p == Peca::torre && raros && Lado<cor>::fila(fila_de(static_cast<int>(s))) >= 6)
      l.na_casa[s] += 11;
  }
  if (p == Peca::cavalo) l.perto_do_rei = poucos ? 15 : 5;
  if (p == Peca::torre) l.perto_do_rei = poucos ? 10 : 0;
  if (p == Peca::dama) l.perto_do_rei = poucos ? 25 : 5;
  return l;
}

using Lugares = std::array<Lugar, 13>;
template <Cor cor>
constexpr void acha_lugares(Lugares& t, bool poucos, bool raros) {
  const auto de = [&]<Peca p>() {
    t[static_cast<std::size_t>(qual_homem(p, cor))] = lugar_de<cor, p>(poucos, raros);
  };
  de.template operator()<Peca::cavalo>();
  de.template operator()<Peca::bispo>();
  de.template operator()<Peca::torre>();
  de.template operator()<Peca::dama>();
}
inline constexpr std::array<Lugares, 3> lugares_por_epoca = [] {
  std::array<Lugares, 3> t{};
  for (std::size_t e = 0; e < 3; ++e) {
    acha_lugares<Cor::b>(t[e], e > 0, e > 1);
    acha_lugares<Cor::p>(t[e], e > 0, e > 1);
  }
  return t;
}();

// How far the correction may be from that of the scan, score units. A weight in fixed point is off
// by 2^-16 of a king's and 2^-11 of the centre's, against 0.01 and 1.8 at the least; an addition of
// the scan rounds by 2^-24 of its sum, and there are about a thousand at most. A king's sum is then
// right to 0.002 of itself, and four of them count fivefold; place and centre, where
// tem_peso_certo() holds, to 0.005.
inline double margem_da_estimativa() {
  return 0.07 + 0.01 * static_cast<double>(PM);
}

// Does the sum of place and centre say enough about its logarithm? It does when place is no loss:
// only pawns' attacks can be one, with agres 0 and by 10 each, so that the scan's sum on the way
// stays below 4000 and its some 200 additions are off by 0.03, to which 10.1 are added before the
// logarithm. Otherwise when the sum is large and not the rest of two that cancel.
inline bool tem_peso_certo(const Figuras& f) {
  return f.pos >= 0 || (f.pos + f.cen >= 50 && 2 * f.pos > -f.cen);
}

template <Cor raiz, Cor ataca, class Modo = Estreito>
class Estimativa {
 public:
  explicit Estimativa(const Tabuleiro& t) : t_(t), h_(Modo::homens(t)) {
    if (!conhecida()) return;
    typename Modo::Conta conta = oficiais();
    peoes(conta);
    const std::array<Pesagem, 2> pesagens =
        Modo::pesa(conta, {brancas_, pretas_}, {pretas_, brancas_}, casa_do_rei<Cor::b>(),
                   casa_do_rei<Cor::p>());
    fecha<Cor::b>(pesagens[0]);
    fecha<Cor::p>(pesagens[1]);
    certa_ = true;
  }

  // False for boards that the estimate does not know: without two kings, or with pawns where none
  // can stand. Their figures are not to be read.
  bool certa() const { return certa_; }

  template <Cor cor>
  const Figuras& de() const {
    return f_[static_cast<std::size_t>(cor)];
  }

 private:
  template <Cor cor>
  Figuras& figuras() {
    return f_[static_cast<std::size_t>(cor)];
  }
  Par ambos(Peca p) const { return {h_.template de<Cor::b>(p), h_.template de<Cor::p>(p)}; }
  template <Cor cor>
  Bits homens() const {
    return cor == Cor::b ? brancas_ : pretas_;
  }
  template <Cor cor>
  static double escala() {
    return cor == raiz ? static_cast<double>(agresprxrei) : 1.0;
  }
  template <class F>
  void por_lado(Par a, F f) {
    f(figuras<Cor::b>(), static_cast<int>(a.template de<Cor::b>()));
    f(figuras<Cor::p>(), static_cast<int>(a.template de<Cor::p>()));
  }

  bool conhecida() const {
    const Bits todos = h_.template de<Cor::b>(Peca::peao) | h_.template de<Cor::p>(Peca::peao);
    return h_.template unico<Cor::b>(Peca::rei) >= 0 && h_.template unico<Cor::p>(Peca::rei) >= 0 &&
           (todos & (na_fila(0) | na_fila(7))) == 0;
  }

  typename Modo::Conta oficiais();
  template <Cor cor, Peca p, std::size_t de, std::size_t ate>
  void ganhos(const PorDirecao& a);
  Par reis_ativos() const;
  void peoes(typename Modo::Conta& conta);
  template <Cor cor>
  void fecha(const Pesagem& w);
  template <Cor cor>
  double lugares();
  template <Cor cor>
  double ganhos_dos_peoes() const;
  template <Cor cor>
  double luta_dos_reis() const;

  const Tabuleiro& t_;
  const Homens h_;
  const Bits pretas_ = negativas(t_);
  const Bits brancas_ = h_.ocupadas & ~pretas_;
  std::array<Figuras, 2> f_{};
  bool certa_ = false;
};

// The reach of officers and of kings that fight.
template <Cor raiz, Cor ataca, class Modo>
typename Modo::Conta Estimativa<raiz, ataca, Modo>::oficiais() {
  const Oficiais o{ambos(Peca::torre), ambos(Peca::bispo), ambos(Peca::dama), ambos(Peca::cavalo)};
  const Alcances a = Modo::alcances(o, nos_dois(~h_.ocupadas));
  const auto& [linhas, damas, cavalos] = a;
  const Par pesadas = o.torres | o.damas;
  // Squares that one queen reaches are reached once; with more queens directions count apart.
  const auto tem_varias = [](Bits b) { return (b & (b - 1)) != 0; };
  Par da_dama =
      damas[0] | damas[1] | damas[2] | damas[3] | damas[4] | damas[5] | damas[6] | damas[7];
  if (tem_varias(h_.de<Cor::b>(Peca::dama)) || tem_varias(h_.de<Cor::p>(Peca::dama)))
    da_dama = Modo::quantas(damas[0] & pesadas, damas[1] & pesadas, damas[2] & pesadas,
                            damas[3] & pesadas, damas[4] & pesadas, damas[5] & pesadas,
                            damas[6] & pesadas, damas[7] & pesadas);
  else
    da_dama = Modo::quantas(da_dama & pesadas);
  const Par apoios = Modo::quantas(linhas[0] & pesadas, linhas[1] & pesadas).vezes(3) +
                     Modo::quantas(linhas[2] & pesadas, linhas[3] & pesadas).vezes(5) + da_dama;
  por_lado(apoios, [](Figuras& f, int n) { f.pos = static_cast<float>(n); });
  ganhos<ataca, Peca::cavalo, 0, 8>(cavalos);
  ganhos<ataca, Peca::bispo, primeira_diagonal, 8>(linhas);
  ganhos<ataca, Peca::torre, primeira_reta, primeira_diagonal>(linhas);
  typename Modo::Conta conta = Modo::conta(a);
  if (rei_ativo<Cor::b>() || rei_ativo<Cor::p>()) conta.junta(reis_ativos());
  return conta;
}

template <Cor raiz, Cor ataca, class Modo>
Par Estimativa<raiz, ataca, Modo>::reis_ativos() const {
  const auto vizinhas = [](Bits rei) {
    return vizinhas_de[static_cast<std::size_t>(primeira_de(rei))];
  };
  return {rei_ativo<Cor::b>() ? vizinhas(h_.template de<Cor::b>(Peca::rei)) : 0,
          rei_ativo<Cor::p>() ? vizinhas(h_.template de<Cor::p>(Peca::rei)) : 0};
}

// Attacks on greater values.
template <Cor raiz, Cor ataca, class Modo>
template <Cor cor, Peca p, std::size_t de, std::size_t ate>
void Estimativa<raiz, ataca, Modo>::ganhos(const PorDirecao& a) {
  constexpr Cor outro = outra(cor);
  Bits vitimas = h_.template de<outro>(Peca::dama) | h_.template de<outro>(Peca::rei);
  if (p != Peca::torre) vitimas |= h_.template de<outro>(Peca::torre);
  if (p == Peca::cavalo) vitimas |= h_.template de<outro>(Peca::bispo);
  Par tudo = a[de];
  for (std::size_t d = de + 1; d < ate; ++d) tudo = tudo | a[d];
  if ((tudo.de<cor>() & vitimas) == 0) return;
  for (std::size_t d = de; d < ate; ++d)
    cada_casa(a[d].de<cor>() & vitimas, [&](int s) {
      const int v = Lado<outro>::visto(t_[static_cast<std::size_t>(s)]);
      figuras<cor>().pos += static_cast<float>(v - valor_de(p));
      return false;
    });
}

// What pawns attack, defend and may walk to.
template <Cor raiz, Cor ataca, class Modo>
void Estimativa<raiz, ataca, Modo>::peoes(typename Modo::Conta& conta) {
  constexpr Bits todas = ~Bits{0};
  const Bits b = h_.template de<Cor::b>(Peca::peao), p = h_.template de<Cor::p>(Peca::peao);
  const Bits vazias = ~h_.ocupadas;
  const Par adiante(um_adiante<Cor::b>(b), um_adiante<Cor::p>(p));
  const Par direita = adiante.adiante<8>(), esquerda = adiante.adiante<-8>();
  const Par proprios(brancas_, pretas_), inimigos(pretas_, brancas_);
  const Par um_passo = adiante & nos_dois(vazias);
  const Par dois_passos(um_adiante<Cor::b>(um_passo.de<Cor::b>() & na_fila(2)) & vazias,
                        um_adiante<Cor::p>(um_passo.de<Cor::p>() & na_fila(5)) & vazias);
  // The reach of a side whose king does not fight counts with its officers'.
  const Par contam(rei_ativo<Cor::b>() ? 0 : todas, rei_ativo<Cor::p>() ? 0 : todas);
  const Par d = direita & contam, e = esquerda & contam;
  conta.junta(d);
  conta.junta(e);
  por_lado(Modo::quantas(um_passo, dois_passos, direita & inimigos, esquerda & inimigos),
           [](Figuras& f, int n) { f.mob = n; });
  por_lado(Modo::quantas(d.sem(proprios), e.sem(proprios)), [](Figuras& f, int n) { f.mob -= n; });
  const Par fora_d = direita.sem(contam), fora_e = esquerda.sem(contam);
  if (!(fora_d | fora_e).vazio()) {
    por_lado(Modo::quantas(fora_d & inimigos, fora_e & inimigos),
             [](Figuras& f, int n) { f.att = n; });
    por_lado(Modo::quantas(fora_d & proprios, fora_e & proprios),
             [](Figuras& f, int n) { f.def = n; });
  }
  const auto& somas = somas_dos_peoes(b, p);
  for (const std::size_t k : {0U, 1U}) {
    f_[k].pawns = somas[k].quantos;
    f_[k].pos += static_cast<float>(somas[k].estrutura);
  }
  const Par escudo(b & escudo_de<Cor::b>[casa_do_rei<Cor::b>()],
                   p & escudo_de<Cor::p>[casa_do_rei<Cor::p>()]);
  por_lado(Modo::quantas(escudo & contam), [](Figuras& f, int n) { f.shield = n; });
}

// The terms that hang on the squares of officers; counts these by kind.
template <Cor raiz, Cor ataca, class Modo>
template <Cor cor>
double Estimativa<raiz, ataca, Modo>::lugares() {
  const auto& inverso = inverso_do_divisor[casa_do_rei<outra(cor)>()];
  const Lugares& lugares_da_epoca = lugares_por_epoca[static_cast<std::size_t>(epoca_da_raiz())];
  const Bits reis_e_peoes = h_.template de<cor>(Peca::rei) | h_.template de<cor>(Peca::peao);
  double pos = 0, perto = 0;
  std::uint32_t especies = 0;
  cada_casa(homens<cor>() & ~reis_e_peoes, [&](int s) {
    const auto i = static_cast<std::size_t>(s);
    const Lugar& l = lugares_da_epoca[homem_do_codigo[t_[i]]];
    pos += l.na_casa[i];
    perto += l.perto_do_rei * inverso[i];
    especies += l.especie;
    return false;
  });
  const auto quantos = [especies](Peca p) {
    return static_cast<int>(especies >> byte_da_especie(p) & 0xff);
  };
  Figuras& f = figuras<cor>();
  f.knights = quantos(Peca::cavalo);
  f.bishops = quantos(Peca::bispo);
  f.rooks = quantos(Peca::torre);
  f.queens = quantos(Peca::dama);
  return pos + escala<cor>() * perto;
}

// What pawns attack: the attacking side gains by any man, the other by an officer, if the pawn is
// protected.
template <Cor raiz, Cor ataca, class Modo>
template <Cor cor>
double Estimativa<raiz, ataca, Modo>::ganhos_dos_peoes() const {
  constexpr Cor outro = outra(cor);
  Bits peoes = h_.template de<cor>(Peca::peao), vitimas = homens<outro>();
  if constexpr (cor != ataca) {
    const Bits guardadas = um_adiante<cor>(peoes);
    peoes &= guardadas << 8 | guardadas >> 8;
    vitimas &= ~h_.template de<outro>(Peca::peao);
  }
  double pos = 0;
  const auto toma = [&](int s) {
    const int v = Lado<outro>::visto(t_[static_cast<std::size_t>(s)]);
    pos += cor == ataca ? v * static_cast<double>(agres) - 10 : v / 2;
    return false;
  };
  const Bits adiante = um_adiante<cor>(peoes);
  cada_casa(adiante << 8 & vitimas, toma);
  cada_casa(adiante >> 8 & vitimas, toma);
  return pos;
}

// With few enemy officers left: the own king's place, and the pawns' way to promotion and nearness
// to either king. What the enemy's pawns give this side is among it.
template <Cor raiz, Cor ataca, class Modo>
template <Cor cor>
double Estimativa<raiz, ataca, Modo>::luta_dos_reis() const {
  constexpr Cor outro = outra(cor);
  const auto& inverso = inverso_do_divisor[casa_do_rei<cor>()];
  double pos = 0;
  if (rei_ativo<cor>()) {
    const auto rei = static_cast<std::size_t>(primeira_de(h_.template de<cor>(Peca::rei)));
    pos += static_cast<double>(centro[rei]) * 50;
    if (npecas<outro>() == 0)
      pos += 75 * escala<cor>() * inverso_do_divisor[casa_do_rei<outro>()][rei];
    cada_casa(h_.template de<cor>(Peca::peao), [&](int casa) {
      const auto s = static_cast<std::size_t>(casa);
      pos += static_cast<double>(promo<cor>[s]) * 100 + 25 * inverso[s];
      return false;
    });
  }
  if (rei_ativo<outro>())
    cada_casa(h_.template de<outro>(Peca::peao), [&](int casa) {
      pos += 25 * inverso[static_cast<std::size_t>(casa)];
      return false;
    });
  return pos;
}

template <Cor raiz, Cor ataca, class Modo>
template <Cor cor>
void Estimativa<raiz, ataca, Modo>::fecha(const Pesagem& w) {
  Figuras& f = figuras<cor>();
  f.mob += w.total - w.proprios;
  f.att += w.inimigos;
  f.def += w.proprios;
  f.advance = cor == Cor::b ? w.filas_b : w.filas_p;
  f.cen = static_cast<float>(w.no_centro) / escala_do_centro;
  f.kattack = static_cast<float>(cor == Cor::b ? w.rei_p : w.rei_b) / escala_dos_reis;
  f.kdefend = static_cast<float>(cor == Cor::b ? w.rei_b : w.rei_p) / escala_dos_reis;
  f.pos += static_cast<float>(lugares<cor>() + ganhos_dos_peoes<cor>() + luta_dos_reis<cor>());
  completa(f, h_.de<cor>(Peca::peao) | h_.de<cor>(Peca::rei));
}

}  // namespace korvu
