// The options: what people read, where a line tells them, and what their settings mean.
#include <map>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/book.h"
#include "frontend/options.h"
#include "frontend/report.h"
#include "memory/game_memory.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "tables.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace tables {
namespace {

using korvu::Opcao;
using korvu::Tipo;

// All settings by their words.
Row settings(const Opcao& o) {
  Row all;
  switch (o.tipo) {
    case Tipo::check:
      return {"true", "false"};
    case Tipo::spin:
      for (int v = o.minimo; v <= o.maximo; ++v) all.push_back(std::to_string(v));
      break;
    case Tipo::combo:
      all.emplace_back();
      for (const char c : o.valores) c == ' ' ? all.emplace_back() : all.back() += c;
      break;
    case Tipo::button:
      break;
  }
  return all;
}

std::string range(const Opcao& o) {
  if (o.tipo == Tipo::button) return "button";
  if (o.tipo == Tipo::spin) return std::to_string(o.minimo) + " to " + std::to_string(o.maximo);
  return join(settings(o), ", ");
}

Table for_people() {
  Table t{{"Option", "Settings", "Default", "What it does"}, {}};
  for (const Opcao& o : korvu::opcoes())
    t.rows.push_back({std::string(o.nome), range(o), std::string(o.padrao), std::string(o.ajuda)});
  return t;
}

// --- Where a line tells an option ---

constexpr int first_of_the_name = 15;
constexpr std::string_view value_word = " value ";

std::string marks(const Opcao& o) {
  const std::string line = std::string(o.nome) + std::string(value_word);
  Row all;
  for (int i = 0; i < o.n_marcas; ++i) {
    const int k = o.marcas[static_cast<std::size_t>(i)];
    all.push_back(std::to_string(first_of_the_name + k) + " " + line[static_cast<std::size_t>(k)]);
  }
  return join(all, ", ");
}

Table by_columns() {
  Table t{{"Option", "Columns that tell it", "Column of the setting"}, {}};
  for (const Opcao& o : korvu::opcoes()) {
    const std::size_t setting = first_of_the_name + o.nome.size() + value_word.size();
    t.rows.push_back(
        {std::string(o.nome), marks(o), o.tipo == Tipo::button ? "" : std::to_string(setting)});
  }
  return t;
}

// --- What the settings mean ---

const std::map<std::string_view, std::vector<Slot>>& variables() {
  using namespace korvu;
  static const std::map<std::string_view, std::vector<Slot>> all = {
      {"CPU power level", {{"CPU", &CPU}}},
      {"Deep", {{"deepp", &deepp}, {"deep", &deep}}},
      {"Time control", {{"TC", &TC}}},
      {"Time usage", {{"Tu", &Tu}}},
      {"Search extension", {{"SEARCH_EE", &SEARCH_EE}, {"SEARCH_E", &SEARCH_E}}},
      {"PVS", {{"PVS", &PVS}}},
      {"Turbo search", {{"TURBO", &TURBO}}},
      {"Positive float filter",
       {{"Positive_filterp", &Positive_filterp}, {"Positive_filter", &Positive_filter}}},
      {"Positive float filter level", {{"positfilter", &positfilter}}},
      {"Negative float filter",
       {{"Negative_filterp", &Negative_filterp}, {"Negative_filter", &Negative_filter}}},
      {"Negative float filter level", {{"negatfilter", &negatfilter}}},
      {"Vertical filter", {{"VERTICAL_filt", &VERTICAL_filt}}},
      {"Lmr", {{"LMR", &LMR}}},
      {"Null move filter", {{"NULL_MOVE", &NULL_MOVE}}},
      {"Temperament", {{"Temperamento", &Temperamento}}},
      {"Aggressiveness", {{"agres", &agres}}},
      {"Attack to King proximity", {{"agresprxrei", &agresprxrei}}},
      {"Attack by check to King", {{"agreschrei", &agreschrei}}},
      {"Confidence", {{"empp", &empp}}},
      {"Positional matrices", {{"matrix", &matrix}}},
      {"Extra evaluation", {{"EXTRA_EVALL", &EXTRA_EVALL}, {"EXTRA_EVAL", &EXTRA_EVAL}}},
      {"Positional relevance", {{"PM", &PM}}},
      {"Mobility", {{"MOB", &MOB}}},
      {"Castle value", {{"roque_v", &roque_v}}},
      {"Extra definition", {{"extradef", &extradef}}},
      {"Material quociente", {{"MQ", &MQ}}},
      {"Own book", {{"OwnBook", &OwnBook}}},
      {"Memory", {{"HASH1", &HASH1}}},
      {"Deep memory", {{"HASHf", &HASHf}}},
      {"Full info", {{"FULL_inf", &FULL_inf}}},
      {"UCI_Chess960", {{"CHESS_960", &CHESS_960}}},
  };
  return all;
}

// What each setting gives the variables, which all take the same value.
std::string meanings(const Opcao& o, const std::vector<Slot>& slots) {
  Row all;
  for (const std::string& setting : settings(o)) {
    for (const Slot& slot : slots) slot.poison();
    std::string value = o.aplica(setting[0]) ? slots[0].value() : "refused";
    for (const Slot& slot : slots)
      if (slot.value() != slots[0].value()) value = "unequal";
    all.push_back(setting == value ? value : setting + ": " + value);
  }
  return join(all, ", ");
}

Table by_values() {
  Table t{{"Option", "Variable", "At the start", "Settings and their values"}, {}};
  for (const Opcao& o : korvu::opcoes()) {
    if (o.tipo == Tipo::button) continue;
    const std::vector<Slot>& slots = variables().at(o.nome);
    Row names;
    for (const Slot& slot : slots) names.push_back(code(slot.name));
    const std::string start = slots[0].value();
    t.rows.push_back({std::string(o.nome), join(names, ", "), start, meanings(o, slots)});
  }
  return t;
}

}  // namespace

std::vector<Entry> of_options() {
  return {{"options", for_people}, {"option-columns", by_columns}, {"option-values", by_values}};
}

}  // namespace tables
