// The scan of a leaf, the engine's innermost work. It gives the figures of figures.h, to the last
// bit, in a fraction of the time: rays come from tables, counts from sets, and the squares that a
// side reaches are listed first and summed afterwards, both sides in step, so that the additions,
// which must be made one after the other, do not wait for each other.
#pragma once

#include <cstring>

#include "board/bits.h"
#include "eval/figures.h"
#include "eval/pawn_cache.h"

namespace korvu {

using Inversos = std::array<std::array<double, 64>, 64>;

// 1 / divisor between two squares.
inline constexpr Inversos inverso_do_divisor = [] {
  Inversos t{};
  for (int r = 0; r < 64; ++r)
    for (int s = 0; s < 64; ++s)
      t[static_cast<std::size_t>(r)][static_cast<std::size_t>(s)] =
          1.0 / divisor(coluna_de(r), fila_de(r), coluna_de(s), fila_de(s));
  return t;
}();

// Lists are copied whole, eight squares at a time, and cut to their length afterwards.
using Lista = std::array<std::uint8_t, 8>;

// Squares reached by a leap, in the order of the scan.
struct Saltos {
  Lista lista{};
  std::uint8_t n = 0;
};
using TabelaDeSaltos = std::array<Saltos, 64>;

template <std::size_t n>
constexpr TabelaDeSaltos saltos_em_ordem(const std::array<Passo, n>& passos) {
  TabelaDeSaltos t{};
  for (std::size_t s = 0; s < 64; ++s)
    for (const Passo p : passos) {
      const int x = coluna_de(static_cast<int>(s)) + p.dx, y = fila_de(static_cast<int>(s)) + p.dy;
      if (dentro(x, y)) t[s].lista[t[s].n++] = static_cast<std::uint8_t>(casa(x, y));
    }
  return t;
}

template <Cor cor, Peca p>
inline constexpr TabelaDeSaltos saltos_na_varredura =
    p == Peca::cavalo ? saltos_em_ordem(saltos_da_varredura)
    : p == Peca::rei  ? saltos_em_ordem(passos_do_rei)
                      : saltos_em_ordem<2>({{{+1, Lado<cor>::frente}, {-1, Lado<cor>::frente}}});

// The squares on which a pawn of `cor` shields its king on the square.
template <Cor cor>
inline constexpr Conjuntos escudo_de = [] {
  Conjuntos c{};
  for (int r = 0; r < 64; ++r)
    for (int dx = -1; dx <= 1; ++dx)
      for (int dy = 0; dy <= 2; ++dy) {
        const int x = coluna_de(r) + dx, y = fila_de(r) + Lado<cor>::frente * dy;
        if (dentro(x, y)) c[static_cast<std::size_t>(r)] |= bit(static_cast<int>(casa(x, y)));
      }
  return c;
}();

// Kind and colour as one small number, so that a jump table leads to a man's own code; 0 is nobody.
constexpr int qual_homem(Peca p, Cor c) {
  return 1 + 2 * static_cast<int>(p) + static_cast<int>(c);
}
inline constexpr std::array<std::uint8_t, 256> homem_do_codigo = [] {
  std::array<std::uint8_t, 256> t{};
  for (const Peca p : todas_as_pecas)
    for (const Cor c : {Cor::b, Cor::p})
      t[codigo_de(p, c)] = static_cast<std::uint8_t>(qual_homem(p, c));
  return t;
}();

// Terms of the positional sum that hang on the square alone. Where there is none, 0 is added, which
// changes no float and costs no branch.
template <Cor cor, Peca p>
inline constexpr TabelaFloat por_ter_saido = tabela<float>([](int x, int y) {
  const bool saiu = p == Peca::torre ? x != 0 && x != 7 : y != Lado<cor>::fila(0);
  return saiu ? 15 : 0;
});
inline constexpr std::array<TabelaFloat, 2> na_grande_diagonal = {
    tabela<float>([](int x, int y) { return x == y || x + y == 7 ? 11 : 0; }),
    tabela<float>([](int x, int y) { return x == y || x + y == 7 ? 5 : 0; })};

template <Cor raiz, Cor ataca>
class Varre<Varredura::folha, raiz, ataca> {
 public:
  explicit Varre(const Tabuleiro& t) : t_(t) {
    varre();
    conta_peoes<Cor::b>();
    conta_peoes<Cor::p>();
    soma_alcances();
    fecha<Cor::b>();
    fecha<Cor::p>();
  }

  template <Cor cor>
  const Figuras& de() const {
    return lado<cor>().f;
  }

 private:
  static constexpr std::size_t maximo_de_alcances = 64 * 27 + sizeof(Lista);

  static constexpr std::uint64_t um_mob = 1, um_att = um_mob << 16, um_def = um_att << 16;

  // What grows with every man of a side.
  struct Alcance {
    std::uint8_t* fim;         // behind the last square reached
    std::uint64_t contas = 0;  // mob, att and def, 16 bits each
    float pos = 0;

    void junta(const Lista& casas, int n) {
      std::memcpy(fim, casas.data(), casas.size());
      fim += n;
      contas += static_cast<std::uint64_t>(n) * um_mob;
    }
  };

  struct DoLado {
    Figuras f;
    Bits homens, peoes, extensao;  // extensao: pawns and kings
    std::uint64_t especies = 0;    // advance in 16 bits, then the number of men by kind in 8 each
    std::array<std::uint8_t, maximo_de_alcances> casas;  // those reached, in order
    Alcance alcance{casas.data()};
  };

  // What a reached square adds to the counts besides mob, by its code: an own man takes mob back.
  template <Cor cor>
  static constexpr std::array<std::uint64_t, 256> encontro = [] {
    std::array<std::uint64_t, 256> t{};
    for (const Peca p : todas_as_pecas) {
      t[codigo_de(p, cor)] = um_def - um_mob;
      t[codigo_de(p, outra(cor))] = um_att;
    }
    return t;
  }();

  static constexpr std::uint64_t um_de(Peca p) {
    return std::uint64_t{1} << (16 + 8 * static_cast<int>(p));
  }

  template <Cor cor>
  DoLado& lado() {
    return cor == Cor::b ? branco_ : preto_;
  }
  template <Cor cor>
  const DoLado& lado() const {
    return cor == Cor::b ? branco_ : preto_;
  }
  template <Cor cor>
  int ao_rei(int s) const {
    return divisor(coluna_de(s), fila_de(s), rei_x<cor>(), rei_y<cor>());
  }
  template <Cor cor>
  static double escala() {
    return cor == raiz ? static_cast<double>(agresprxrei) : 1.0;
  }

  void varre();
  void homem(int qual, int s);
  template <Cor cor>
  void peao(int s);
  template <Cor cor>
  void ganhos_do_peao(int s, Bits vitimas);
  template <Cor cor>
  void estrutura(int s);
  template <Cor cor, Peca p>
  void oficial(int s);
  template <Cor cor>
  void rei(int s);
  template <Cor cor, Peca p>
  void encontra(Alcance& a, std::uint8_t q, bool reta_em_x);
  template <Cor cor, Peca p, int d>
  void anda_no_raio(Alcance& a, int s);
  template <Cor cor, Peca p>
  void salta(Alcance& a, int s);
  template <Cor cor>
  void conta_peoes();
  void soma_alcances();
  template <Cor cor>
  void fecha();

  const Tabuleiro& t_;
  const Bits ocupadas_ = korvu::ocupadas(t_);
  const bool poucos_ = npecasb + npecasp < 15;
  DoLado branco_, preto_;
  std::array<std::int16_t, maximo_de_peoes> estruturas_;
  std::size_t peao_ = 0;  // pawns met so far
  bool estruturas_prontas_ = false;
};

template <Cor raiz, Cor ataca>
void Varre<Varredura::folha, raiz, ataca>::varre() {
  const Bits pretas = negativas(t_);
  branco_.homens = ocupadas_ & ~pretas;
  preto_.homens = ocupadas_ & pretas;
  branco_.extensao = branco_.peoes = onde(t_, Lado<Cor::b>::peao);
  preto_.extensao = preto_.peoes = onde(t_, Lado<Cor::p>::peao);
  if (static_cast<std::size_t>(quantas(branco_.peoes | preto_.peoes)) <= maximo_de_peoes) {
    estruturas_ = estruturas_de(branco_.peoes, preto_.peoes);
    estruturas_prontas_ = true;
  }
  cada_casa(ocupadas_, [this](int s) {
    homem(homem_do_codigo[t_[static_cast<std::size_t>(s)]], s);
    return false;
  });
}

template <Cor raiz, Cor ataca>
void Varre<Varredura::folha, raiz, ataca>::homem(int qual, int s) {
  switch (qual) {
    case qual_homem(Peca::peao, Cor::b):
      return peao<Cor::b>(s);
    case qual_homem(Peca::peao, Cor::p):
      return peao<Cor::p>(s);
    case qual_homem(Peca::cavalo, Cor::b):
      return oficial<Cor::b, Peca::cavalo>(s);
    case qual_homem(Peca::cavalo, Cor::p):
      return oficial<Cor::p, Peca::cavalo>(s);
    case qual_homem(Peca::bispo, Cor::b):
      return oficial<Cor::b, Peca::bispo>(s);
    case qual_homem(Peca::bispo, Cor::p):
      return oficial<Cor::p, Peca::bispo>(s);
    case qual_homem(Peca::torre, Cor::b):
      return oficial<Cor::b, Peca::torre>(s);
    case qual_homem(Peca::torre, Cor::p):
      return oficial<Cor::p, Peca::torre>(s);
    case qual_homem(Peca::dama, Cor::b):
      return oficial<Cor::b, Peca::dama>(s);
    case qual_homem(Peca::dama, Cor::p):
      return oficial<Cor::p, Peca::dama>(s);
    case qual_homem(Peca::rei, Cor::b):
      return rei<Cor::b>(s);
    case qual_homem(Peca::rei, Cor::p):
      return rei<Cor::p>(s);
    default:
      return;
  }
}

// A man of code q, or nobody, stands at the end of the reach.
template <Cor raiz, Cor ataca>
template <Cor cor, Peca p>
[[gnu::always_inline]] inline void Varre<Varredura::folha, raiz, ataca>::encontra(Alcance& a,
                                                                                  std::uint8_t q,
                                                                                  bool reta_em_x) {
  using L = Lado<cor>;
  a.contas += encontro<cor>[q];
  if constexpr (cor == ataca && (p == Peca::cavalo || p == Peca::bispo || p == Peca::torre))
    if (-L::visto(q) > valor_de(p)) a.pos += static_cast<float>(-L::visto(q) - valor_de(p));
  if constexpr (p == Peca::torre || p == Peca::dama)
    if (q == L::dama || q == L::torre) a.pos += p == Peca::dama ? 1.0F : reta_em_x ? 3.0F : 5.0F;
}

template <Cor raiz, Cor ataca>
template <Cor cor, Peca p, int d>
[[gnu::always_inline]] inline void Varre<Varredura::folha, raiz, ataca>::anda_no_raio(Alcance& a,
                                                                                      int s) {
  const Raio& r = raio(d, s);
  const int f = fim_do_raio<d>(ocupadas_, s);
  const int n = passos_ate<d>(s, f);
  a.junta(r.lista, n);
  encontra<cor, p>(a, n == 0 ? vazia : t_[static_cast<std::size_t>(f)], direcoes[d].dx != 0);
}

template <Cor raiz, Cor ataca>
template <Cor cor, Peca p>
[[gnu::always_inline]] inline void Varre<Varredura::folha, raiz, ataca>::salta(Alcance& a, int s) {
  const Saltos& saltos = saltos_na_varredura<cor, p>[static_cast<std::size_t>(s)];
  a.junta(saltos.lista, saltos.n);
  for (std::size_t i = 0; i < saltos.n; ++i) encontra<cor, p>(a, t_[saltos.lista[i]], false);
}

template <Cor raiz, Cor ataca>
template <Cor cor, Peca p>
void Varre<Varredura::folha, raiz, ataca>::oficial(int s) {
  using L = Lado<cor>;
  DoLado& l = lado<cor>();
  Alcance a = l.alcance;
  const int fila = L::fila(fila_de(s));
  const double no_centro = centro[static_cast<std::size_t>(s)];
  l.especies += um_de(p) + static_cast<std::uint64_t>(fila + 1);
  a.pos += por_ter_saido<cor, p>[static_cast<std::size_t>(s)];
  if constexpr (p == Peca::cavalo) {
    soma(a.pos, no_centro * (poucos_ ? 10 : 25));
    soma(a.pos, (poucos_ ? 15 : 5) * escala<cor>() / ao_rei<L::outro>(s));
    salta<cor, p>(a, s);
  } else if constexpr (p == Peca::bispo) {
    a.pos += na_grande_diagonal[static_cast<std::size_t>(poucos_)][static_cast<std::size_t>(s)];
  } else if constexpr (p == Peca::torre) {
    if (poucos_) soma(a.pos, 10 * escala<cor>() / ao_rei<L::outro>(s));
    if (npecasb + npecasp < 11 && fila >= 6) a.pos += 11;
  } else {
    soma(a.pos, no_centro * (poucos_ ? 15 : 10));
    soma(a.pos, (poucos_ ? 25 : 5) * escala<cor>() / ao_rei<L::outro>(s));
  }
  constexpr bool reto = p == Peca::torre || p == Peca::dama;
  constexpr bool diagonal = p == Peca::bispo || p == Peca::dama;
  cada_direcao<reto ? 0 : 4, diagonal ? 7
                             : reto   ? 3
                                      : -1>([&]<int d>() {
    anda_no_raio<cor, p, d>(a, s);
    return false;
  });
  l.alcance = a;
}

template <Cor raiz, Cor ataca>
template <Cor cor>
void Varre<Varredura::folha, raiz, ataca>::rei(int s) {
  constexpr Cor outro = outra(cor);
  DoLado& l = lado<cor>();
  l.especies += static_cast<std::uint64_t>(Lado<cor>::fila(fila_de(s)) + 1);
  l.extensao |= bit(s);
  if (!rei_ativo<cor>()) return;
  soma(l.alcance.pos, static_cast<double>(centro[static_cast<std::size_t>(s)]) * 50);
  if (npecas<outro>() == 0) soma(l.alcance.pos, 75 * escala<cor>() / ao_rei<outro>(s));
  salta<cor, Peca::rei>(l.alcance, s);
}

template <Cor raiz, Cor ataca>
template <Cor cor>
void Varre<Varredura::folha, raiz, ataca>::peao(int s) {
  constexpr Cor outro = outra(cor);
  DoLado& l = lado<cor>();
  l.especies += um_de(Peca::peao) + static_cast<std::uint64_t>(Lado<cor>::fila(fila_de(s)) + 1);
  if (rei_ativo<cor>()) {
    soma(l.alcance.pos, static_cast<double>(promo<cor>[static_cast<std::size_t>(s)]) * 100);
    soma(l.alcance.pos, 25.0 / ao_rei<cor>(s));
    soma(lado<outro>().alcance.pos, 25.0 / ao_rei<outro>(s));
  } else {
    const Saltos& diante = saltos_na_varredura<cor, Peca::peao>[static_cast<std::size_t>(s)];
    std::memcpy(l.alcance.fim, diante.lista.data(), 2);
    l.alcance.fim += diante.n;
  }
  const Bits vitimas = peao_ataca<cor>[static_cast<std::size_t>(s)] & lado<outro>().homens;
  if (vitimas != 0) ganhos_do_peao<cor>(s, vitimas);
  estrutura<cor>(s);
}

template <Cor raiz, Cor ataca>
template <Cor cor>
void Varre<Varredura::folha, raiz, ataca>::ganhos_do_peao(int s, Bits vitimas) {
  using L = Lado<cor>;
  DoLado& l = lado<cor>();
  const bool protegido = (peao_ataca<L::outro>[static_cast<std::size_t>(s)] & l.peoes) != 0;
  for (const int lado_dela : {+8, -8}) {
    const int alvo = s + lado_dela + L::frente;
    if (alvo < 0 || alvo > 63 || (vitimas & bit(alvo)) == 0) continue;
    const int v = -L::visto(t_[static_cast<std::size_t>(alvo)]);
    if constexpr (cor == ataca)
      soma(l.alcance.pos, v * static_cast<double>(agres) - 10);
    else if (v > valor_de(Peca::peao) && protegido)
      l.alcance.pos += static_cast<float>(v / 2);
  }
}

// The terms are whole numbers above 0 and far below 2^24. Added one by one or as one sum to a
// number that is not negative they give the same float as long as its exponent grows by two steps
// at most: a bit that is lost on the way is then lost in the same direction.
template <Cor raiz, Cor ataca>
template <Cor cor>
void Varre<Varredura::folha, raiz, ataca>::estrutura(int s) {
  float& pos = lado<cor>().alcance.pos;
  const auto n = static_cast<float>(estruturas_prontas_ ? estruturas_[peao_++] : 0);
  const float total = pos + n;
  if (estruturas_prontas_ && (total < 4 * pos || pos == 0)) {
    pos = total;
    return;
  }
  estrutura_do_peao<cor>(t_, coluna_de(s), fila_de(s),
                         [&pos](int termo) { pos += static_cast<float>(termo); });
}

template <Cor raiz, Cor ataca>
template <Cor cor>
void Varre<Varredura::folha, raiz, ataca>::conta_peoes() {
  constexpr Bits terceira_fila = Bits{0x0101010101010101} << Lado<cor>::fila(2);
  DoLado& l = lado<cor>();
  const Bits adiante = um_adiante<cor>(l.peoes);
  const Bits um_passo = adiante & ~ocupadas_;
  const Bits dois_passos = um_adiante<cor>(um_passo & terceira_fila) & ~ocupadas_;
  const Bits direita = adiante << 8, esquerda = adiante >> 8;
  const Bits inimigos = ocupadas_ & ~l.homens;
  const int att = quantas(direita & inimigos, esquerda & inimigos);
  const int def = quantas(direita & l.homens, esquerda & l.homens);
  const int mob = quantas(um_passo | dois_passos) + att;
  l.alcance.contas += static_cast<std::uint64_t>(mob) * um_mob +
                      static_cast<std::uint64_t>(att) * um_att +
                      static_cast<std::uint64_t>(def) * um_def;
  if (!rei_ativo<cor>()) l.f.shield = quantas(l.peoes & escudo_de<cor>[casa_do_rei<cor>()]);
}

// The sums of nota() over the lists. Float and float add to the same float in single precision as
// in double, so that `cen` needs no conversion; the inverses are doubles.
template <Cor raiz, Cor ataca>
void Varre<Varredura::folha, raiz, ataca>::soma_alcances() {
  const auto& ao_branco = inverso_do_divisor[casa_do_rei<Cor::b>()];
  const auto& ao_preto = inverso_do_divisor[casa_do_rei<Cor::p>()];
  float cen_b = 0, ataque_b = 0, defesa_b = 0, cen_p = 0, ataque_p = 0, defesa_p = 0;
  const auto do_branco = [&](std::size_t i) {
    const std::size_t s = branco_.casas[i];
    cen_b += centroo[s];
    soma(ataque_b, ao_preto[s]);
    soma(defesa_b, ao_branco[s]);
  };
  const auto do_preto = [&](std::size_t i) {
    const std::size_t s = preto_.casas[i];
    cen_p += centroo[s];
    soma(ataque_p, ao_branco[s]);
    soma(defesa_p, ao_preto[s]);
  };
  const auto n_b = static_cast<std::size_t>(branco_.alcance.fim - branco_.casas.data());
  const auto n_p = static_cast<std::size_t>(preto_.alcance.fim - preto_.casas.data());
  const std::size_t juntos = std::min(n_b, n_p);
  for (std::size_t i = 0; i < juntos; ++i) {
    do_branco(i);
    do_preto(i);
  }
  for (std::size_t i = juntos; i < n_b; ++i) do_branco(i);
  for (std::size_t i = juntos; i < n_p; ++i) do_preto(i);
  branco_.f.cen = cen_b;
  branco_.f.kattack = ataque_b;
  branco_.f.kdefend = defesa_b;
  preto_.f.cen = cen_p;
  preto_.f.kattack = ataque_p;
  preto_.f.kdefend = defesa_p;
}

// What follows from the numbers of men by kind, and the extent of the squares given.
inline void completa(Figuras& f, Bits extensao) {
  f.officers = f.knights + f.bishops + f.rooks + f.queens;
  f.weight = 3 * (f.knights + f.bishops) + 5 * f.rooks + 9 * f.queens;
  if (extensao == 0) return;
  Bits filas = extensao | extensao >> 32;
  filas |= filas >> 16;
  filas = (filas | filas >> 8) & 0xff;
  f.xmin = coluna_de(primeira_de(extensao));
  f.xmax = coluna_de(ultima_de(extensao));
  f.ymin = primeira_de(filas);
  f.ymax = ultima_de(filas);
}

// Unpacks the counts.
template <Cor raiz, Cor ataca>
template <Cor cor>
void Varre<Varredura::folha, raiz, ataca>::fecha() {
  DoLado& l = lado<cor>();
  Figuras& f = l.f;
  const auto de_16 = [](std::uint64_t v, int n) {
    return static_cast<int>(v >> (16 * n) & 0xffff);
  };
  const auto especie = [&](Peca p) {
    return static_cast<int>(l.especies >> (16 + 8 * static_cast<int>(p)) & 0xff);
  };
  f.pos = l.alcance.pos;
  f.mob = de_16(l.alcance.contas, 0);
  f.att = de_16(l.alcance.contas, 1);
  f.def = de_16(l.alcance.contas, 2);
  f.advance = de_16(l.especies, 0);
  f.pawns = especie(Peca::peao);
  f.knights = especie(Peca::cavalo);
  f.bishops = especie(Peca::bispo);
  f.rooks = especie(Peca::torre);
  f.queens = especie(Peca::dama);
  completa(f, l.extensao);
}

}  // namespace korvu
