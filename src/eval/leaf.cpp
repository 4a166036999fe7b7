#include "eval/leaf.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

#include "eval/leaf_cache.h"
#include "eval/leaf_estimate.h"
#include "eval/leaf_scan.h"
#include "eval/quick_log.h"
#include "eval/quotients.h"
#include "eval/wide_reach.h"

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

// The correction as it is defined: in extended precision, the root move's own assessment first.
template <Cor raiz>
Estendido soma_exata(const Figuras& r, const Figuras& o) {
  Estendido total = extraevalll;
  total += avanco(r) - avanco(o);
  total += densidade(r) - densidade(o);
  total += peso(r, o);
  total += valor_do_roque<raiz>();
  total += ataque_por_defesa(r, o);
  total += defesa_do_rei(r, o);
  total += ataque_ao_rei(r, o);
  total += mobilidade(r, o);
  total += posicao(r, o);
  return total;
}

double avanco_rapido(const Figuras& f) {
  return (f.advance + 0.1) / (f.officers + f.pawns + 1);
}
double densidade_rapida(const Figuras& f) {
  return static_cast<double>(f.pawns + 1) / ((f.xmax - f.xmin + 1) * (f.ymax - f.ymin + 1));
}

// The same sum without extraevalll; no number where a quotient has no logarithm. The two quotients
// of the kings share theirs. With std::log as `ln` it is right to within margem_da_soma.
template <Cor raiz, class F>
double soma_rapida(const Figuras& r, const Figuras& o, F ln) {
  const double base_r = static_cast<double>(r.pos) + r.cen + 10.1;
  const double base_o = static_cast<double>(o.pos) + o.cen + 10.1;
  if (!(base_r > 0 && base_o > 0)) return std::numeric_limits<double>::quiet_NaN();
  const double reis = ((r.kdefend + (r.shield + 3.0)) * (r.kattack + 3.0)) /
                      ((o.kattack + 3.0) * (o.kdefend + (o.shield + 3.0)));
  double total = avanco_rapido(r) - avanco_rapido(o) + densidade_rapida(r) - densidade_rapida(o);
  total += 2 * (ln_do_peso(r.weight) - ln_do_peso(o.weight));
  if (roque_b != 0 || roque_p != 0)
    total += roque_v * (ln_inteiro(roque<raiz>() + 3) - ln_inteiro(roque<outra(raiz)>() + 3));
  const double peso_da_raiz = shashinn;
  total += peso_da_raiz * 0.01 * (ln_inteiro(r.att + 3) - ln_inteiro(r.def + 3));
  total += peso_da_raiz * 0.001 * (ln_inteiro(o.att + 3) - ln_inteiro(o.def + 3));
  total += 5 * ln(reis);
  total += static_cast<double>(MOB) * (ln_inteiro(r.mob + 3) - ln_inteiro(o.mob + 3));
  total += static_cast<double>(PM) * ln(base_r / base_o);
  return total;
}

template <Cor raiz, class F>
double soma_dos_lados(const Figuras& b, const Figuras& p, F ln) {
  return raiz == Cor::b ? soma_rapida<raiz>(b, p, ln) : soma_rapida<raiz>(p, b, ln);
}

float com_logaritmo_exato(float raiz, float outro) {
  const Estendido r = raiz, o = outro;
  return static_cast<float>(r - o + MQ * logaritmo(r / o));
}

float com_logaritmo_novo(float raiz, float outro) {
  if (!ha_ln_do_total(raiz) || !ha_ln_do_total(outro)) return com_logaritmo_exato(raiz, outro);
  if (raiz == outro) return 0;
  const double quociente = ln_do_total(raiz) - ln_do_total(outro);
  float soma;
  if (arredonda_com_certeza(static_cast<double>(raiz) - outro + MQ * quociente, soma)) return soma;
  return com_logaritmo_exato(raiz, outro);
}

template <Cor raiz, Cor ataca>
[[gnu::noinline]] ResumoDaFolha resume() {
  const Varre<Varredura::folha, raiz, ataca> v(tab2);
  const Figuras& b = v.template de<Cor::b>();
  const Figuras& p = v.template de<Cor::p>();
  const double soma = soma_dos_lados<raiz>(b, p, [](double x) { return std::log(x); });
  return {soma, {b.kattack, b.kdefend, b.cen}, {p.kattack, p.kdefend, p.cen}, falta_material(b, p)};
}

// The same from an estimate, or from the scan where the estimate knows nothing.
template <Cor raiz, Cor ataca, class Modo>
ResumoDaFolha estima() {
  const Estimativa<raiz, ataca, Modo> e(tab2);
  const Figuras& b = e.template de<Cor::b>();
  const Figuras& p = e.template de<Cor::p>();
  if (!e.certa() || !tem_peso_certo(b) || !tem_peso_certo(p)) return resume<raiz, ataca>();
  const double soma = soma_dos_lados<raiz>(b, p, ln_aproximado);
  return {soma, {}, {}, falta_material(b, p), true};
}

// The same, made for the processor at hand: by the compiler for one with AVX2, by hand for one with
// wide registers. Everything that the estimate calls is made part of it.
#ifdef KORVU_WIDE_REGISTERS
template <Cor raiz, Cor ataca>
[[gnu::flatten]] ResumoDaFolha estima_em_qualquer() {
  return estima<raiz, ataca, Estreito>();
}
template <Cor raiz, Cor ataca>
[[gnu::flatten, gnu::target("avx2,bmi,bmi2,popcnt")]] ResumoDaFolha estima_com_avx2() {
  return estima<raiz, ataca, Estreito>();
}
template <Cor raiz, Cor ataca>
[[gnu::flatten]] KORVU_WIDE ResumoDaFolha estima_larga() {
  return estima<raiz, ataca, Largo>();
}
bool tem_avx2() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
         __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
}
const bool com_avx2 = tem_avx2();

template <Cor raiz, Cor ataca>
auto estimador() {
  if (ve_ao_largo) return estima_larga<raiz, ataca>;
  return com_avx2 ? estima_com_avx2<raiz, ataca> : estima_em_qualquer<raiz, ataca>;
}
#else
template <Cor raiz, Cor ataca>
auto estimador() {
  return estima<raiz, ataca, Estreito>;
}
#endif

// Where the fast sum cannot tell the float.
template <Cor raiz, Cor ataca>
float soma_da_folha_exata() {
  const Varre<Varredura::folha, raiz, ataca> v(tab2);
  return arredonda(soma_exata<raiz>(v.template de<raiz>(), v.template de<outra(raiz)>()));
}

template <Cor raiz, Cor ataca>
float soma_da_folha(double sem_heranca) {
  float soma;
  if (arredonda_com_certeza(sem_heranca + static_cast<double>(extraevalll), soma)) return soma;
  return soma_da_folha_exata<raiz, ataca>();
}

}  // namespace

float diferenca(float raiz, float outro) {
  return raiz - outro;
}

float com_quociente(float raiz, float outro) {
  const Estendido r = raiz, o = outro;
  return static_cast<float>(r - o + r / o);
}

float com_logaritmo(float raiz, float outro) {
  struct Conhecido {
    float raiz = 0, outro = 0, peso = 0, soma = 0;
  };
  // Totals change little from node to node, so that the same quotients come again and again.
  static std::array<Conhecido, 256> conhecidos{};
  if (!(raiz > 0 && outro > 0)) return com_logaritmo_novo(raiz, outro);
  const auto bits = [](float f) { return std::bit_cast<std::uint32_t>(f); };
  Conhecido& c = conhecidos[(bits(raiz) * 0x9e3779b1U ^ bits(outro) * 0x85ebca77U) >> 24];
  if (c.raiz != raiz || c.outro != outro || bits(c.peso) != bits(MQ))
    c = {raiz, outro, MQ, com_logaritmo_novo(raiz, outro)};
  return c.soma;
}

template <Cor raiz, Cor ataca>
void extra_eval() {
  const ResumoDaFolha& v = resumo_de(tab2, chave_da_folha<raiz, ataca>(), resume<raiz, ataca>);
  const auto limite = static_cast<float>(piecesac);
  extraeval = std::clamp(soma_da_folha<raiz, ataca>(v.soma), -limite, limite);
  EMPAT = v.falta_material;
  atack_ksf_b = v.branco.kattack;
  defesa_ksf_b = v.branco.kdefend;
  centro_b = v.branco.cen;
  atack_ksf_p = v.preto.kattack;
  defesa_ksf_p = v.preto.kdefend;
  centro_p = v.preto.cen;
  if (raiz == ataca) ddep = std::max(ddep, deep);
}

template <Cor raiz, Cor ataca>
Faixa faixa_do_extra() {
  const ResumoDaFolha& v =
      estimativa_de(tab2, chave_da_folha<raiz, ataca>(), estimador<raiz, ataca>());
  if (raiz == ataca) ddep = std::max(ddep, deep);
  EMPAT = v.falta_material;
  constexpr float tudo = std::numeric_limits<float>::infinity();
  if (v.falta_material || std::isnan(v.soma)) return {-tudo, tudo};
  const auto limite = static_cast<float>(piecesac);
  const double soma = v.soma + static_cast<double>(extraevalll), margem = margem_da_estimativa();
  return {std::clamp(static_cast<float>(soma - margem), -limite, limite),
          std::clamp(static_cast<float>(soma + margem), -limite, limite)};
}

template void extra_eval<Cor::b, Cor::b>();
template void extra_eval<Cor::b, Cor::p>();
template void extra_eval<Cor::p, Cor::b>();
template void extra_eval<Cor::p, Cor::p>();
template Faixa faixa_do_extra<Cor::b, Cor::b>();
template Faixa faixa_do_extra<Cor::b, Cor::p>();
template Faixa faixa_do_extra<Cor::p, Cor::b>();
template Faixa faixa_do_extra<Cor::p, Cor::p>();

}  // namespace korvu
