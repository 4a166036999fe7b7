#include "support/lab.h"

#include <regex>
#include <sstream>

#include "board/root_tables.h"
#include "frontend/dialogue.h"
#include "frontend/line.h"
#include "frontend/position.h"
#include "memory/game_memory.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "tree/clock.h"

namespace lab {
namespace {

int standing_clock = 0;

bool shown(const std::string& line, bool& identifying) {
  if (line.starts_with("id name")) identifying = true;
  const bool hidden = identifying || line.starts_with("info nps");
  if (line == "uciok") identifying = false;
  return !hidden;
}

}  // namespace

void position(std::string_view fen) {
  using namespace korvu;
  clock_at(0);
  limpa_memoria();
  limpa_tabelas<Cor::b>();
  limpa_tabelas<Cor::p>();
  in = "position fen " + std::string(fen);
  zera_jogo(Caminho::lista_ou_fen);
  recebe_fen();
  joga_com_b = brancas_jogam();
  analisa_tabuleiro();
  caps_de_mate();
  MAXcutt = MAXcut;
}

std::vector<std::string> dialogue(const std::vector<std::string>& lines) {
  std::stringstream asked, answered;
  for (const std::string& line : lines) asked << line << '\n';
  korvu::dialogo(asked, answered);
  static const std::regex time_field(" time -?[0-9]+");
  std::vector<std::string> kept;
  bool identifying = false;
  for (std::string line; std::getline(answered, line);)
    if (shown(line, identifying)) kept.push_back(std::regex_replace(line, time_field, " time T"));
  return kept;
}

void clock_at(int ms) {
  standing_clock = ms;
  korvu::relogio = [] { return standing_clock; };
}

std::size_t square(std::string_view name) {
  return korvu::casa(name[0] - 'a', name[1] - '1');
}

}  // namespace lab
