#include "eval/leaf.h"

#include <algorithm>

#include "eval/quotients.h"

namespace korvu {
namespace {

// Too weak to win alone, when nobody has a pawn, rook or queen.
bool fraco(const Figuras& f) {
  return (f.bishops == 0 && f.knights <= 2) || (f.knights == 0 && f.bishops <= 1);
}

bool falta_material(const Figuras& b, const Figuras& p) {
  const bool so_leves = b.pawns + b.rooks + b.queens + p.pawns + p.rooks + p.queens == 0;
  return so_leves && fraco(b) && fraco(p);
}

}  // namespace

float diferenca(float raiz, float outro) {
  return raiz - outro;
}

float com_quociente(float raiz, float outro) {
  const long double r = raiz, o = outro;
  return static_cast<float>(r - o + r / o);
}

float com_logaritmo(float raiz, float outro) {
  const long double r = raiz, o = outro;
  return static_cast<float>(r - o + MQ * logaritmo(r / o));
}

template <Cor raiz, Cor ataca>
void extra_eval() {
  extraeval = 0;
  const Varre<Varredura::folha, raiz, ataca> v(tab2);
  const Figuras& r = v.template de<raiz>();
  const Figuras& o = v.template de<outra(raiz)>();
  long double total = extraevalll;
  total += avanco(r) - avanco(o);
  total += densidade(r) - densidade(o);
  total += peso(r, o);
  total += valor_do_roque<raiz>();
  total += ataque_por_defesa(r, o);
  total += defesa_do_rei(r, o);
  total += ataque_ao_rei(r, o);
  total += mobilidade(r, o);
  total += posicao(r, o);
  const auto limite = static_cast<float>(piecesac);
  extraeval = std::clamp(arredonda(total), -limite, limite);
  EMPAT = falta_material(v.template de<Cor::b>(), v.template de<Cor::p>());
  registra_somas(v.template de<Cor::b>(), v.template de<Cor::p>());
  if (raiz == ataca) ddep = std::max(ddep, deep);
}

template void extra_eval<Cor::b, Cor::b>();
template void extra_eval<Cor::b, Cor::p>();
template void extra_eval<Cor::p, Cor::b>();
template void extra_eval<Cor::p, Cor::p>();

}  // namespace korvu
