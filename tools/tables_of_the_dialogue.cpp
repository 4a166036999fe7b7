// What a position line resets, how scores are printed, and the book.
#include <sstream>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/book.h"
#include "frontend/position.h"
#include "frontend/report.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "tables.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace tables {
namespace {

std::vector<Slot> slots_of_the_game() {
  using namespace korvu;
  return {
      {"IIDS", &IIDS},
      {"pempatee", &pempatee},
      {"pempate", &pempate},
      {"deeppromo", &deeppromo},
      {"FULL3", &FULL3},
      {"FULL4", &FULL4},
      {"FULL5", &FULL5},
      {"Y", &Y},
      {"EP", &EP},
      {"emp", &emp},
      {"emppp", &emppp},
      {"E", &E},
      {"alfa0", &alfa0},
      {"ALFA0", &ALFA0},
      {"curr", &curr},
      {"nodes", &nodes},
      {"DEEP", &DEEP},
      {"dddep", &dddep},
      {"peca", &peca},
      {"roque_b", &roque_b},
      {"roque_p", &roque_p},
      {"SEARCH_E", &SEARCH_E},
      {"EXTRA_EVAL", &EXTRA_EVAL},
      {"nb", &nb},
      {"PR", &PR},
      {"PRs", &PRs},
      {"PRe", &PRe},
      {"joga_com_b", &joga_com_b},
      {"joga_c_fen", &joga_c_fen},
      {"DEEP9", &DEEP9},
      {"tempo", &tempo},
      {"deep", &deep},
      {"materialba", &materialba},
      {"materialpa", &materialpa},
      {"materialmaiorb", &materialmaiorb},
      {"materialmaiorp", &materialmaiorp},
      {"materialflot0", &materialflot0},
      {"npecasb", &npecasb},
      {"npecasp", &npecasp},
      {"npecasbdp", &npecasbdp},
      {"npecaspdp", &npecaspdp},
      {"SCAN1", &SCAN1},
      {"SCANT", &SCANT},
      {"MAXcut[0]", &MAXcut[0]},
      {"MAXcut[6]", &MAXcut[6]},
      {"MAXcutt[6]", &MAXcutt[6]},
      {"guardado[2].aa", &guardado[2].aa},
      {"guardado_g[2].aa", &guardado_g[2].aa},
      {"melhor.aa", &melhor.aa},
      {"jogada.a", &jogada.a},
      {"jm.R_b_jm", &jm.R_b_jm},
      {"duplos.pb[0]", &duplos.pb[0]},
      {"tab[0]", &tab[0]},
      {"tabr1[0][0]", &tabr1[0][0]},
      {"tab2[0]", &tab2[0]},
      {"shashinn", &shashinn},
      {"extraevalll", &extraevalll},
      {"p_x_Rb", &p_x_Rb},
  };
}

// Each path's value of every slot; blank where it leaves the slot alone.
Table reset() {
  using korvu::Caminho;
  Table t{{"Slot", "first move", "one move", "list or FEN"}, {}};
  const std::vector<Slot> slots = slots_of_the_game();
  for (const Slot& slot : slots) t.rows.push_back({code(slot.name)});
  for (const Caminho path : {Caminho::primeiro_lance, Caminho::um_lance, Caminho::lista_ou_fen}) {
    for (const Slot& slot : slots) slot.poison();
    korvu::zera_jogo(path);
    for (std::size_t i = 0; i < slots.size(); ++i)
      t.rows[i].push_back(slots[i].poisoned() ? "" : slots[i].value());
  }
  return t;
}

// --- Scores as text ---

std::string reported(float score) {
  std::ostringstream os;
  korvu::saida = &os;
  korvu::EP = score;
  korvu::deep = 9;
  korvu::info();
  const std::string line = os.str(), before = "info score ";
  return line.substr(before.size(), line.find("  depth") - before.size());
}

Table mates() {
  Table t{{"Score", "Text", "Score", "Text"}, {}};
  // Whole numbers are exact. NOLINTNEXTLINE(clang-analyzer-security.FloatLoopCounter)
  for (float score = 15400; score >= 3300; score -= 1100)
    t.rows.push_back({text(score), reported(score), text(-score), reported(-score)});
  return t;
}

// --- The book ---

Table book() {
  Table t{{"Line behind `position startpos moves`", "Reply"}, {}};
  for (const auto& entries : {korvu::livro_de_um_lance(), korvu::livro_b(), korvu::livro_p()})
    for (const korvu::Entrada& e : entries)
      t.rows.push_back({std::string(e.lances), std::string(e.resposta)});
  return t;
}

}  // namespace

std::vector<Entry> of_the_dialogue() {
  return {{"reset", reset}, {"mates", mates}, {"book", book}};
}

}  // namespace tables
