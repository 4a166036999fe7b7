#include "eval/strategy.h"

#include <algorithm>

#include "board/root_move.h"
#include "eval/quotients.h"

namespace korvu {
namespace {

// The leaf formula scaled to one hundredth.
template <Cor raiz>
float herda_da_raiz(const Figuras& r, const Figuras& o) {
  Estendido total = valor_do_roque<raiz>();
  total += defesa_do_rei(r, o);
  total += peso(r, o);
  total += avanco(r) - avanco(o) + densidade(r) - densidade(o);
  total += ataque_ao_rei(r, o);
  total += mobilidade(r, o);
  total += posicao(r, o);
  return arredonda(0.01 * total + ataque_por_defesa(r, o));
}

// Who attacks one square.
struct Atacantes {
  int peao, cavalo, bispo, torre, dama, rei, todos;
};

template <Cor cor>
Atacantes atacantes(std::size_t s) {
  const Ataques& at = ataca<cor>();
  const auto de = [&](Peca p) { return at.por_peca[static_cast<std::size_t>(p)][s]; };
  return {de(Peca::peao), de(Peca::cavalo), de(Peca::bispo), de(Peca::torre),
          de(Peca::dama), de(Peca::rei),    at.N_A[s]};
}

// What the opponent's man with code q gives when it stands attacked by `meu`; `dele` defends it.
template <Cor cor>
int credito(std::uint8_t q, const Atacantes& meu, const Atacantes& dele) {
  using Inimigo = Lado<outra(cor)>;
  const bool defendida = dele.todos != 0;
  const bool leve = meu.peao || meu.cavalo || meu.bispo;
  switch (q) {
    case Inimigo::rei:
      return meu.todos && npecas<outra(cor)>() ? 11 * agreschrei : 0;
    case Inimigo::dama:
      return leve || meu.torre ? 100 : 0;
    case Inimigo::torre:
      if (leve) return 50;
      return (meu.dama || meu.rei) && !defendida ? 25 : 0;
    case Inimigo::cavalo:
      if (meu.peao) return 35;
      return (meu.torre || meu.bispo || meu.dama || meu.rei) && !defendida ? 17 : 0;
    case Inimigo::bispo:
      if (meu.peao) return 30;
      return (meu.torre || meu.cavalo || meu.rei) && !defendida ? 15 : 0;
    case Inimigo::peao:
      if (meu.peao || dele.peao) return 0;
      return (meu.cavalo || meu.bispo || meu.torre || meu.dama || meu.rei) && !defendida ? 10 : 0;
    default:
      return 0;
  }
}

// What the own man with code q costs when `dele` attacks it and `meu` defends it.
template <Cor cor>
int debito(std::uint8_t q, const Atacantes& meu, const Atacantes& dele) {
  using L = Lado<cor>;
  const bool mais = dele.todos > meu.todos;
  const bool leve = dele.peao || dele.cavalo || dele.bispo;
  const int leves = meu.cavalo + meu.bispo;
  switch (q) {
    case L::dama:
      if (leve || dele.torre) return 100;
      return mais && !meu.peao && leves + meu.torre <= 1 ? 100 : 0;
    case L::torre:
      if (leve) return 50;
      return mais && !meu.peao && leves <= 1 ? 50 : 0;
    case L::cavalo:
    case L::bispo:
      return dele.peao || (mais && !meu.peao) ? 30 : 0;
    case L::peao:
      return mais ? 10 : 0;
    default:
      return 0;
  }
}

template <Cor cor>
int trocas() {
  int n = 0;
  for (std::size_t s = 0; s < tab2.size(); ++s) {
    const Atacantes meu = atacantes<cor>(s), dele = atacantes<outra(cor)>(s);
    n += credito<cor>(tab2[s], meu, dele) - debito<cor>(tab2[s], meu, dele);
  }
  return n;
}

// A castling is rated with the MATRIZ of the move before it, which may so be scaled again and
// again: 32-bit wrap-around, as unsigned arithmetic has it.
int vezes(int valor, int fator) {
  return static_cast<int>(static_cast<unsigned>(valor) * static_cast<unsigned>(fator));
}

template <Cor cor>
void escala_matriz(int n) {
  const float proprio = material_da_raiz<cor>(), outro = material_da_raiz<outra(cor)>();
  if (n < 0)
    MATRIZ /= proprio > outro ? 3 : proprio == outro ? 4 : 5;
  else
    MATRIZ = vezes(MATRIZ, proprio > outro ? 5 : proprio == outro ? 4 : 3);
}

}  // namespace

template <Cor cor>
void verifica_estrategia() {
  const Varre<Varredura::estrategia, cor, outra(cor)> v(tab2);
  registra_somas(v.template de<Cor::b>(), v.template de<Cor::p>());
  extraevalll = herda_da_raiz<cor>(v.template de<cor>(), v.template de<outra(cor)>());
  const int n = trocas<cor>();
  if (incentiva_promo) escala_matriz<cor>(n);
  ATAQUE =
      static_cast<int>(static_cast<unsigned>(n) + static_cast<unsigned>(vezes(MATRIZ, matrix)));
  ESTRATEGIA = std::clamp(ATAQUE, -100, 100);
}

template void verifica_estrategia<Cor::b>();
template void verifica_estrategia<Cor::p>();

}  // namespace korvu
