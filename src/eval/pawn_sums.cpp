#include "eval/pawn_sums.h"

#include "eval/set_pair.h"

namespace korvu {
namespace {

// Turns Black's ranks around, so that both sides' pawns walk to higher ranks.
Bits filas_ao_contrario(Bits b) {
  b = (b >> 1 & 0x5555555555555555) | (b & 0x5555555555555555) << 1;
  b = (b >> 2 & 0x3333333333333333) | (b & 0x3333333333333333) << 2;
  return (b >> 4 & 0x0f0f0f0f0f0f0f0f) | (b & 0x0f0f0f0f0f0f0f0f) << 4;
}
Par mirado(Bits branco, Bits preto) {
  return {branco, filas_ao_contrario(preto)};
}

// The sums of estrutura_do_peao over all pawns, both sides walking up the board.
Par soma_da_estrutura(Bits b, Bits p) {
  const Par proprios = mirado(b, p), inimigos(p, filas_ao_contrario(b));
  const Par todos = proprios | inimigos, sexta = nos_dois(na_fila(6));
  const Par a_direita = proprios.adiante<8>(), a_esquerda = proprios.adiante<-8>();
  // Squares at least two ranks behind an enemy pawn.
  Par atras = inimigos.adiante<-1>().sem(nos_dois(na_fila(0))).adiante<-1>();
  atras = atras | atras.sem(nos_dois(na_fila(0))).adiante<-1>();
  atras = atras | atras.sem(nos_dois(na_fila(0) | na_fila(1))).adiante<-2>();
  atras = atras | atras.sem(nos_dois(0x0f0f0f0f0f0f0f0f)).adiante<-4>();
  constexpr Bits ate_a_quinta = na_fila(1) | na_fila(2) | na_fila(3) | na_fila(4);
  const Par abrem = (proprios & nos_dois(ate_a_quinta)).sem(atras);
  const Par diante = todos.adiante<-1>();
  const Par abrem_d =
      abrem.sem(diante.adiante<-8>() | atras.adiante<-16>() | nos_dois(Bits{0xff} << 56));
  const Par abrem_e = abrem.sem(diante.adiante<8>() | atras.adiante<16>() | nos_dois(0xff));
  const Par atacam = proprios.adiante<1>();
  const Par lugares =
      quantas_em(proprios & sexta).vezes(100) + quantas_em(proprios & a_direita).vezes(2 * 13) +
      quantas_em(proprios & atacam.adiante<8>(), proprios & atacam.adiante<-8>()).vezes(11) +
      quantas_em(abrem_d, abrem_e).vezes(25);
  // The way of a pawn until it meets a pawn, or a square beside an enemy's. No two pawns share any
  // of it, since the one behind stops at the one ahead.
  const Par barram = todos | inimigos.adiante<8>() | inimigos.adiante<-8>();
  Par livres = nos_dois(~(na_fila(0) | na_fila(7))).sem(barram), andam = proprios;
  andam = andam | (livres & andam.adiante<1>());
  livres = livres & livres.adiante<1>();
  andam = andam | (livres & andam.adiante<2>());
  livres = livres & livres.adiante<2>();
  andam = andam | (livres & andam.adiante<4>());
  const Par caminho = andam.sem(proprios);
  return lugares + quantas_em(caminho & a_direita, caminho & a_esquerda).vezes(10) +
         quantas_em(andam & sexta).vezes(33);
}

std::array<SomasDosPeoes, 2> soma(Bits b, Bits p) {
  const Par quantos = quantas_em(Par(b, p)), estrutura = soma_da_estrutura(b, p);
  const auto de = [&]<Cor cor>() {
    return SomasDosPeoes{static_cast<int>(quantos.de<cor>()),
                         static_cast<int>(estrutura.de<cor>())};
  };
  return {de.operator()<Cor::b>(), de.operator()<Cor::p>()};
}

struct Registro {
  Bits b = 0, p = 0;
  std::array<SomasDosPeoes, 2> somas{};  // of a board without pawns: the start state is valid
};

constexpr std::size_t registros_de_peoes = 8192;
std::array<Registro, registros_de_peoes> registros;

std::size_t indice_de(Bits b, Bits p) {
  const Bits h = (b * 0x9e3779b97f4a7c15) ^ (p * 0xc2b2ae3d27d4eb4f);
  return static_cast<std::size_t>(h >> 32) % registros_de_peoes;
}

}  // namespace

const std::array<SomasDosPeoes, 2>& somas_dos_peoes(Bits peoes_b, Bits peoes_p) {
  Registro& r = registros[indice_de(peoes_b, peoes_p)];
  if (r.b != peoes_b || r.p != peoes_p) r = {peoes_b, peoes_p, soma(peoes_b, peoes_p)};
  return r.somas;
}

}  // namespace korvu
