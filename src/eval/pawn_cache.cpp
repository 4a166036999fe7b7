#include "eval/pawn_cache.h"

namespace korvu {
namespace {

struct RegistroDePeoes {
  Bits b = 0, p = 0;
  Estruturas estruturas{};  // of a board without pawns: the start state is a valid record
};

constexpr std::size_t registros_de_peoes = 8192;
std::array<RegistroDePeoes, registros_de_peoes> registros;

std::size_t indice_de(Bits b, Bits p) {
  const Bits h = (b * 0x9e3779b97f4a7c15) ^ (p * 0xc2b2ae3d27d4eb4f);
  return static_cast<std::size_t>(h >> 32) % registros_de_peoes;
}

// The squares that matter to one pawn.
struct VistaDoPeao {
  Bits ao_lado = 0;  // beside it
  Bits adiante = 0,
       nas_vizinhas = 0;       // ahead of it to the rank before promotion: its file, the others
  std::array<Bits, 2> toma{};  // the capture square on either side, nothing when there is none
  std::array<Bits, 2> abre{};  // where an enemy pawn hinders a lever on that side
};

template <Cor cor>
constexpr VistaDoPeao vista_do_peao(int s) {
  using L = Lado<cor>;
  VistaDoPeao v;
  const int x = coluna_de(s), fila = L::fila(fila_de(s));
  const auto casa_em = [](int i, int r) {
    return i < 0 || i > 7 ? Bits{0} : bit(static_cast<int>(casa(i, L::fila(r))));
  };
  v.ao_lado = casa_em(x + 1, fila) | casa_em(x - 1, fila);
  for (int r = fila + 1; r <= 6; ++r) {
    v.adiante |= casa_em(x, r);
    v.nas_vizinhas |= casa_em(x + 1, r) | casa_em(x - 1, r);
  }
  for (const std::size_t k : {0U, 1U}) {
    const int lado = k == 0 ? +1 : -1;
    if (fila < 7) v.toma[k] = casa_em(x + lado, fila + 1);
    if (fila + 2 > 6) v.toma[k] = 0;  // no lever from there
    for (int r = fila + 2; r <= 6; ++r) v.abre[k] |= casa_em(x, r) | casa_em(x + 2 * lado, r);
  }
  return v;
}

template <Cor cor>
constexpr std::array<VistaDoPeao, 64> vistas = [] {
  std::array<VistaDoPeao, 64> t{};
  for (int s = 0; s < 64; ++s) t[static_cast<std::size_t>(s)] = vista_do_peao<cor>(s);
  return t;
}();

// Of the squares `b`, those before the first of `bloqueio` as a pawn of `cor` walks; ranks count.
template <Cor cor>
Bits antes_de(Bits b, Bits bloqueio) {
  constexpr Bits todas_as_colunas = 0x0101010101010101;
  if (bloqueio == 0) return b;
  bloqueio |= bloqueio >> 32;
  bloqueio |= bloqueio >> 16;
  bloqueio = (bloqueio | bloqueio >> 8) & 0xff;
  const Bits filas =
      cor == Cor::b ? (bit(primeira_de(bloqueio)) - 1) : 0xff & ~(2 * bit(ultima_de(bloqueio)) - 1);
  return b & (filas * todas_as_colunas);
}

// The sum of the terms of estrutura_do_peao.
template <Cor cor>
int soma_da_estrutura(Bits proprios, Bits inimigos, int s) {
  const VistaDoPeao& v = vistas<cor>[static_cast<std::size_t>(s)];
  int total = Lado<cor>::fila(fila_de(s)) == 6 ? 100 : 0;
  total += 13 * quantas(v.ao_lado & proprios);
  total += 11 * quantas(peao_ataca<cor>[static_cast<std::size_t>(s)] & proprios);
  for (const std::size_t k : {0U, 1U})
    if (v.toma[k] != 0 && (v.toma[k] & (proprios | inimigos)) == 0 && (v.abre[k] & inimigos) == 0)
      total += 25;
  const Bits bloqueio = (v.adiante & (proprios | inimigos)) | (v.nas_vizinhas & inimigos);
  total += 10 * quantas(antes_de<cor>(v.nas_vizinhas & proprios, bloqueio));
  return bloqueio == 0 ? total + 33 : total;
}

}  // namespace

const Estruturas& estruturas_de(Bits peoes_b, Bits peoes_p) {
  RegistroDePeoes& r = registros[indice_de(peoes_b, peoes_p)];
  if (r.b == peoes_b && r.p == peoes_p) return r.estruturas;
  r = {peoes_b, peoes_p, {}};
  std::size_t i = 0;
  cada_casa(peoes_b | peoes_p, [&](int s) {
    r.estruturas[i++] = static_cast<std::int16_t>(
        (peoes_b & bit(s)) != 0 ? soma_da_estrutura<Cor::b>(peoes_b, peoes_p, s)
                                : soma_da_estrutura<Cor::p>(peoes_p, peoes_b, s));
    return false;
  });
  return r.estruturas;
}

}  // namespace korvu
