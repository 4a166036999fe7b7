#include "frontend/options.h"

#include <algorithm>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/book.h"
#include "frontend/line.h"
#include "frontend/report.h"
#include "memory/game_memory.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace korvu {
namespace {

constexpr bool digito(char v) {
  return v >= '0' && v <= '9';
}

template <class T>
bool liga(T& slot, char v) {
  if (v != 't' && v != 'f') return false;
  slot = v == 't';
  return true;
}

// A digit as it is, but 9 as `nove`.
template <class T>
bool numero(T& slot, char v, int nove) {
  if (!digito(v)) return false;
  slot = static_cast<T>(v == '9' ? nove : v - '0');
  return true;
}

// One of a few letters, by its value.
struct Letra {
  char letra;
  int valor;
};
template <std::size_t n>
bool escolhe(int& slot, char v, const Letra (&letras)[n]) {
  for (const Letra& l : letras)
    if (l.letra == v) {
      slot = l.valor;
      return true;
    }
  return false;
}

bool filtro(int& em_vigor, int& escolhido, char v) {
  if (!escolhe(escolhido, v, {{'o', 0}, {'f', 3}, {'a', 2}, {'m', 1}})) return false;
  em_vigor = escolhido;
  return true;
}

// Settings 2 and 3 stand in falling order: what a level means stays what it meant.
bool margem(float& slot, char v) {
  constexpr float margens[] = {0, 10, 33, 32, 50, 90, 110};
  if (v < '0' || v > '6') return false;
  slot = margens[v - '0'];
  return true;
}

bool profundidade(char v) {
  if (!digito(v)) return false;
  deepp = v == '0' ? 0 : 2 * (v - '0') - 1;
  deep = deepp;
  return true;
}

bool confianca(char v) {
  constexpr int vieses[] = {10, 7, 5, 3, 0, -3, -5, -7, -10};
  if (v < '1' || v > '9') return false;
  empp = vieses[v - '1'];
  return true;
}

bool liga_com_copia(std::uint8_t& em_vigor, std::uint8_t& escolhido, char v) {
  if (!liga(escolhido, v)) return false;
  em_vigor = escolhido;
  return true;
}

bool limpa_todas_as_tabelas() {
  limpa_tabelas<Cor::b>();
  limpa_tabelas<Cor::p>();
  return true;
}

constexpr Opcao check(std::string_view nome, bool ligada, std::array<int, 4> marcas, int n,
                      bool (*aplica)(char), std::string_view ajuda) {
  return {nome, Tipo::check, ligada ? "true" : "false", 0, 0, "", marcas, n, aplica, ajuda};
}
constexpr Opcao spin(std::string_view nome, std::string_view padrao, int minimo, int maximo,
                     std::array<int, 4> marcas, int n, bool (*aplica)(char),
                     std::string_view ajuda) {
  return {nome, Tipo::spin, padrao, minimo, maximo, "", marcas, n, aplica, ajuda};
}
constexpr Opcao combo(std::string_view nome, std::string_view padrao, std::string_view valores,
                      std::array<int, 4> marcas, int n, bool (*aplica)(char),
                      std::string_view ajuda) {
  return {nome, Tipo::combo, padrao, 0, 0, valores, marcas, n, aplica, ajuda};
}
constexpr Opcao button(std::string_view nome, std::array<int, 4> marcas, int n,
                       bool (*aplica)(char), std::string_view ajuda) {
  return {nome, Tipo::button, "", 0, 0, "", marcas, n, aplica, ajuda};
}

// In the order in which they are printed and tested.
constexpr Opcao tabela_de_opcoes[] = {
    combo(
        "CPU power level", "medium", "extreme high medium low", {0, 2, 5}, 3,
        [](char v) {
          return escolhe(CPU, v, {{'e', 5}, {'h', 1}, {'m', 2}, {'l', 3}});
        },
        "how soon a short clock lowers the depth; a slower level does so at higher clocks"),
    spin("Deep", "9", 0, 9, {0, 2, 5}, 3, profundidade,
         "depth limit: k stands for 2k - 1 plies, 0 for material only, 9 for no limit"),
    check(
        "Time control", true, {0, 2, 5}, 3, [](char v) { return liga(TC, v); },
        "the time limits apply; without them a search ends by its depth alone"),
    spin(
        "Time usage", "3", 1, 9, {0, 2, 5}, 3, [](char v) { return v != '0' && numero(Tu, v, 10); },
        "share of the clock that a move may take; higher is more"),
    check(
        "Search extension", true, {0, 1, 2}, 3,
        [](char v) { return liga_com_copia(SEARCH_E, SEARCH_EE, v); },
        "second searches of a root move may go two or four plies further"),
    check(
        "PVS", true, {0, 1, 2}, 3, [](char v) { return liga(PVS, v); },
        "capped search of root moves and null window at the second ply"),
    check(
        "Turbo search", true, {0, 2, 6}, 3, [](char v) { return liga(TURBO, v); },
        "narrows the score caps by the best score so far"),
    combo(
        "Positive float filter", "auto", "off full auto manual", {0, 2, 5, 22}, 4,
        [](char v) { return filtro(Positive_filter, Positive_filterp, v); },
        "caps on what the engine may gain in a line"),
    spin(
        "Positive float filter level", "5", 0, 6, {0, 2, 5, 22}, 4,
        [](char v) { return margem(positfilter, v); },
        "margin of the positive filter when it is manual"),
    combo(
        "Negative float filter", "auto", "off full auto manual", {0, 2, 5, 22}, 4,
        [](char v) { return filtro(Negative_filter, Negative_filterp, v); },
        "caps on what the opponent may gain in a line"),
    spin(
        "Negative float filter level", "5", 0, 6, {0, 2, 5, 22}, 4,
        [](char v) { return margem(negatfilter, v); },
        "margin of the negative filter when it is manual"),
    check(
        "Vertical filter", true, {0, 2, 5}, 3, [](char v) { return liga(VERTICAL_filt, v); },
        "ends or shortens lines that fall behind in material from the seventh ply on"),
    check(
        "Lmr", true, {0, 2}, 2, [](char v) { return liga(LMR, v); },
        "searches late and early moves two plies shorter first"),
    combo(
        "Null move filter", "plus", "off normal plus", {0, 2, 5}, 3,
        [](char v) {
          return escolhe(NULL_MOVE, v, {{'o', 0}, {'n', 1}, {'p', 2}});
        },
        "refutes a move by passing: at the first two plies, or to the fifth"),
    combo(
        "Temperament", "dynamic", "dynamic consistent positional", {0, 2, 5}, 3,
        [](char v) {
          return escolhe(Temperamento, v, {{'d', 3}, {'c', 2}, {'p', 1}});
        },
        "order in which root moves are searched"),
    spin(
        "Aggressiveness", "1", 0, 9, {0, 2, 5}, 3, [](char v) { return numero(agres, v, 9); },
        "value of what pawns of the side to move attack"),
    spin(
        "Attack to King proximity", "1", 0, 9, {0, 2, 7}, 3,
        [](char v) { return numero(agresprxrei, v, 9); },
        "value of the engine's pieces near the enemy king"),
    spin(
        "Attack by check to King", "1", 0, 9, {0, 2, 7}, 3,
        [](char v) { return numero(agreschrei, v, 10); },
        "how early checks are searched at the root"),
    spin("Confidence", "7", 1, 9, {0, 2, 5}, 3, confianca,
         "the value of a draw; higher plays on more"),
    check(
        "Positional matrices", true, {0, 2, 5}, 3, [](char v) { return liga(matrix, v); },
        "square values take part in the order of root moves"),
    check(
        "Extra evaluation", true, {0, 2, 6}, 3,
        [](char v) { return liga_com_copia(EXTRA_EVAL, EXTRA_EVALL, v); },
        "leaves are evaluated beyond material, and the search deepens"),
    spin(
        "Positional relevance", "5", 0, 9, {0, 2, 5, 11}, 4,
        [](char v) { return numero(PM, v, 10); }, "weight of the positional quotient"),
    spin(
        "Mobility", "5", 0, 9, {0, 2, 5}, 3, [](char v) { return numero(MOB, v, 10); },
        "weight of the mobility quotient"),
    spin(
        "Castle value", "3", 0, 9, {0, 2, 5}, 3, [](char v) { return numero(roque_v, v, 10); },
        "weight of the castling quotient"),
    check(
        "Extra definition", true, {0, 2, 6}, 3, [](char v) { return liga(extradef, v); },
        "the material quotient is added to the material difference"),
    spin(
        "Material quociente", "5", 0, 9, {0, 2, 5, 11}, 4, [](char v) { return numero(MQ, v, 10); },
        "weight of the material quotient"),
    check(
        "Own book", true, {0, 2, 6}, 3, [](char v) { return liga(OwnBook, v); },
        "answers from the opening book"),
    check(
        "Memory", true, {0, 2, 5}, 3, [](char v) { return liga(HASH1, v); },
        "answers a position line asked before without a search"),
    button(
        "Clear memory", {0, 2, 6}, 3, [](char) { return limpa_memoria(), true; },
        "forgets the answers"),
    check(
        "Deep memory", true, {0, 2, 5}, 3, [](char v) { return liga(HASHf, v); },
        "remembers positions of plies 3 to 5 during a search"),
    button(
        "Clear deep memory", {0, 2, 6}, 3, [](char) { return limpa_todas_as_tabelas(); },
        "forgets those positions"),
    check(
        "Full info", true, {0, 2, 5}, 3, [](char v) { return liga(FULL_inf, v); },
        "reports root moves that lose material too"),
    check(
        "UCI_Chess960", false, {0, 2, 5}, 3, [](char v) { return liga(CHESS_960, v); },
        "reads castling in position lines as the king taking its rook; the engine itself does not "
        "castle so"),
};

constexpr std::size_t inicio_do_nome = 15;  // behind the words "setoption name "
constexpr std::string_view palavra_valor = " value ";

// The letter of the option's own line at this column of its name and the words behind it.
char letra_da_marca(const Opcao& o, std::size_t k) {
  return k < o.nome.size() ? o.nome[k] : palavra_valor[k - o.nome.size()];
}

bool tem_as_marcas(const Opcao& o) {
  for (int i = 0; i < o.n_marcas; ++i) {
    const auto k = static_cast<std::size_t>(o.marcas[static_cast<std::size_t>(i)]);
    if (coluna(inicio_do_nome + k) != letra_da_marca(o, k)) return false;
  }
  return true;
}

void aplica(const Opcao& o) {
  if (!tem_as_marcas(o)) return;
  const int valor =
      o.tipo == Tipo::button ? '\0' : coluna(inicio_do_nome + o.nome.size() + palavra_valor.size());
  if (valor != alem_da_linha) o.aplica(static_cast<char>(valor));
}

std::string combo_por_extenso(std::string_view valores) {
  std::string texto;
  while (!valores.empty()) {
    const std::size_t n = std::min(valores.find(' '), valores.size());
    texto += " var " + std::string(valores.substr(0, n));
    valores.remove_prefix(std::min(n + 1, valores.size()));
  }
  return texto;
}

}  // namespace

std::span<const Opcao> opcoes() {
  return tabela_de_opcoes;
}

std::string linha_da_opcao(const Opcao& o) {
  constexpr std::string_view tipos[] = {"check", "spin", "combo", "button"};
  std::string texto = "option name " + std::string(o.nome) + " type " +
                      std::string(tipos[static_cast<std::size_t>(o.tipo)]);
  if (o.tipo != Tipo::button) texto += " default " + std::string(o.padrao);
  if (o.tipo == Tipo::spin)
    texto += " min " + std::to_string(o.minimo) + " max " + std::to_string(o.maximo);
  if (o.tipo == Tipo::combo) texto += combo_por_extenso(o.valores);
  return texto;
}

void aplica_opcoes() {
  if (coluna(0) != 's' || coluna(8) != 'n' || coluna(10) != 'n') return;
  for (const Opcao& o : opcoes()) aplica(o);
}

}  // namespace korvu
