#include "root/ladder.h"

#include <span>
#include <string_view>

#include "board/state.h"
#include "eval/strategy.h"
#include "root/expanders.h"
#include "root/pass_memory.h"

namespace korvu {
namespace {

// Expanders of one class, by the English letters of the men in their order.
struct Degrau {
  Classe classe;
  Xeque xeque;
  std::string_view homens;
};
// A step whose expanders share one rating loop, or have a loop each: together, a higher rating
// comes before an earlier expander.
enum class Lacos { um, um_por_expansor };
struct Etapa {
  Lacos lacos;
  std::span<const Degrau> degraus;
};

using enum Classe;
constexpr Xeque ch = Xeque::ch, sh = Xeque::sh;

// clang-format off
constexpr Degrau tudo_que_toma[] = {
    {positive5, ch, "PNBRQK"}, {positive5, sh, "PNBRQK"},
    {positive4, ch, "PNBRQK"}, {positive4, sh, "PNBRQK"},
    {positive3, ch, "PNBRQK"}, {positive3, sh, "PNBRQK"},
    {positive2, ch, "PNBRQK"}, {positive2, sh, "PNBRQK"},
    {positive1, ch, "PNBRQK"}, {positive1, sh, "PNBRQK"},
};
constexpr Degrau tudo_que_anda[] = {{livre, ch, "PNBRQK"}, {livre, sh, "PNBRQK"}};

// Captures that give up about as much as they take, or less ...
constexpr Degrau boas_5[] = {{positive5, ch, "PNBRQK"}, {positive5, sh, "PNBRQK"}};
constexpr Degrau boas_4[] = {{positive4, ch, "PNBRK"},  {positive4, sh, "PNBRK"}};
constexpr Degrau boas_3[] = {{positive3, ch, "PNBK"},   {positive3, sh, "PNBK"}};
constexpr Degrau boas_2[] = {{positive2, ch, "PNBK"},   {positive2, sh, "PNBK"}};
constexpr Degrau boas_1[] = {{positive1, ch, "PK"},     {positive1, sh, "PK"}};
// ... and the others, put off to the quiet moves.
constexpr Degrau resto[] = {
    {positive3, ch, "R"}, {positive2, ch, "R"}, {positive4, ch, "Q"},
    {positive1, ch, "B"}, {positive1, ch, "N"}, {positive1, ch, "R"},
    {positive3, ch, "Q"}, {positive2, ch, "Q"}, {positive1, ch, "Q"}, {livre, ch, "PNBRQK"},
    {positive3, sh, "R"}, {positive2, sh, "R"}, {positive4, sh, "Q"},
    {positive1, sh, "B"}, {positive1, sh, "N"}, {positive1, sh, "R"},
    {positive3, sh, "Q"}, {positive2, sh, "Q"}, {positive1, sh, "Q"}, {livre, sh, "PNBRQK"},
};

constexpr Etapa dinamica[] = {{Lacos::um_por_expansor, tudo_que_toma}, {Lacos::um, tudo_que_anda}};
constexpr Etapa consistente[] = {
    {Lacos::um_por_expansor, boas_5}, {Lacos::um_por_expansor, boas_4},
    {Lacos::um_por_expansor, boas_3}, {Lacos::um_por_expansor, boas_2},
    {Lacos::um_por_expansor, boas_1}, {Lacos::um, resto},
};
constexpr Etapa posicional[] = {
    {Lacos::um, boas_5}, {Lacos::um, boas_4}, {Lacos::um, boas_3},
    {Lacos::um, boas_2}, {Lacos::um, boas_1}, {Lacos::um, resto},
};

// Against a bare king: pawns first, for promotion; the king's captures are empty but hold castling.
constexpr Degrau rei_so_peoes[] = {{livre, ch, "P"}, {livre, sh, "P"}};
constexpr Degrau rei_so_homens[] = {{livre, ch, "NBRQ"}, {livre, sh, "NBRQK"}, {livre, ch, "K"}};
constexpr Degrau rei_so_roques[] = {{positive1, ch, "K"}, {positive1, sh, "K"}};
constexpr Etapa contra_rei_so[] = {
    {Lacos::um, rei_so_peoes}, {Lacos::um, rei_so_homens}, {Lacos::um, rei_so_roques},
};

constexpr Degrau primeiro_lance[] = {{livre, sh, "PN"}};
constexpr Etapa escada_do_primeiro_lance[] = {{Lacos::um, primeiro_lance}};
// clang-format on

constexpr Peca peca_da_inicial(char letra) {
  return static_cast<Peca>(std::string_view("PNBRQK").find(letra));
}

template <Cor raiz>
void varre_casas(const Expansor& e) {
  if (corte_MAXcut || memoria_do_passe.dispensa_expansor(e)) return;
  memoria_do_passe.comeca_expansor(e);
  cada_casa(onde(tab, codigo_de(e.peca, raiz)), [&](int s) {
    analise100<raiz>(e, coluna_de(s), fila_de(s));
    return corte_MAXcut != 0;
  });
  memoria_do_passe.acaba_expansor();
}

template <class F>
void cada_expansor(std::span<const Degrau> degraus, F f) {
  for (const Degrau& d : degraus)
    for (const char homem : d.homens) f(Expansor{d.classe, d.xeque, peca_da_inicial(homem)});
}

// Serves the ratings from the highest down; the slot stands at the highest again afterwards.
template <class F>
void cada_nota(F f) {
  for (ataque = 100; ataque >= -100; --ataque) f();
  ataque = 100;
}

template <Cor raiz>
void sobe(const Etapa& etapa) {
  if (etapa.lacos == Lacos::um)
    cada_nota([&] { cada_expansor(etapa.degraus, varre_casas<raiz>); });
  else
    cada_expansor(etapa.degraus,
                  [](const Expansor& e) { cada_nota([&] { varre_casas<raiz>(e); }); });
}

template <Cor raiz>
void sobe_etapas(std::span<const Etapa> etapas) {
  memoria_do_passe.comeca();
  for (const Etapa& etapa : etapas) sobe<raiz>(etapa);
  poe_em_dia<raiz>();
  memoria_do_passe.acaba();
}

// The ladder of the temperament in force; an unknown one has none.
std::span<const Etapa> escada() {
  switch (Temperamento) {
    case 3:
      return dinamica;
    case 2:
      return consistente;
    case 1:
      return posicional;
    default:
      return {};
  }
}

}  // namespace

template <Cor raiz>
void percorre_escada() {
  const float outro = material_da_raiz<outra(raiz)>();
  corte_MAXcut = 0;
  if (outro < 110) return;
  std::span<const Etapa> etapas = escada();
  if (outro == 110 && !etapas.empty()) etapas = contra_rei_so;
  sobe_etapas<raiz>(etapas);
}

template <Cor raiz>
void percorre_primeiro_lance() {
  corte_MAXcut = 0;
  sobe_etapas<raiz>(escada_do_primeiro_lance);
}

template void percorre_escada<Cor::b>();
template void percorre_escada<Cor::p>();
template void percorre_primeiro_lance<Cor::b>();
template void percorre_primeiro_lance<Cor::p>();

}  // namespace korvu
