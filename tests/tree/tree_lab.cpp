#include "tree/tree_lab.h"
#include "tree/indifference.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <vector>

#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/first_ply.h"
#include "support/lab.h"

namespace tree_lab {
namespace {

std::function<int()> clock_reading = [] { return 0; };
int reads = 0;

char other_case(char c) {
  return static_cast<char>(std::islower(c) ? std::toupper(c) : std::tolower(c));
}

}  // namespace

std::string mirrored(std::string_view fen) {
  std::istringstream fields{std::string(fen)};
  std::string board, side, castling, passing, counters;
  fields >> board >> side >> castling >> passing;
  std::getline(fields, counters);

  std::vector<std::string> ranks(1);
  for (const char c : board)
    if (c == '/')
      ranks.emplace_back();
    else
      ranks.back() += other_case(c);
  std::reverse(ranks.begin(), ranks.end());

  std::string text;
  for (const std::string& rank : ranks) text += (text.empty() ? "" : "/") + rank;
  std::transform(castling.begin(), castling.end(), castling.begin(), other_case);
  if (passing != "-") passing[1] = passing[1] == '3' ? '6' : '3';
  return text + (side == "w" ? " b " : " w ") + castling + ' ' + passing + counters;
}

void stand(int ply, std::string_view fen) {
  using namespace korvu;
  lab::position(fen);
  clock_says([] { return 0; });
  const auto n = static_cast<std::size_t>(ply);
  tabd[n] = tab;
  jm_D[n] = jm;
  duplos_D[n] = duplos;
  materialb[n] = materialba;
  materialp[n] = materialpa;

  alfa.fill(start_alfa);
  beta.fill(start_beta);
  corte_alfa.fill(0);
  corte_beta.fill(0);
  X_D.fill(0);
  XEQUE_MATE.fill(1);
  MAXcut.fill(20000);
  MAXcutt.fill(20000);
  guardado.fill(sem_lance);
  guardado_g.fill(sem_lance);
  linha.fill({' ', ' ', ' ', ' '});
  currN.fill(0);
  LmrT.fill(0);
  AmrT.fill(0);
  ALFA0 = start_alfa;
  nodes = 0;
  nd = -1;
  deep = DEEP = 0;
  ddep = dddep = 0;
  inicio = fim = 0;
  tempo = 300000;
  corte_MAXcut = 0;
  SCAN1 = SCANT = PVSm = PVSm2 = LMRtest = deeppromo = pempate = pempatee = 0;
  roque_b = roque_p = 0;
  emp = -15;
  extraeval = extraevalll = shashinn = 0;

  SEARCH_E = PVS = VERTICAL_filt = LMR = TC = EXTRA_EVAL = HASHf = 0;
  NULL_MOVE = 0;
  CPU = 2;
  Tu = 3;
  extradef = 1;
  MQ = MOB = PM = 5;
  piecesac = 50;
  folhas_exatas = false;
  registros_a_fazer = 0;
}

void mark_board(int ply) {
  korvu::tabd[static_cast<std::size_t>(ply)].fill(1);
}

bool board_is_marked(int ply) {
  return korvu::tabd[static_cast<std::size_t>(ply)][0] == 1;
}

void clock_says(std::function<int()> reading) {
  clock_reading = std::move(reading);
  reads = 0;
  korvu::relogio = [] {
    ++reads;
    return clock_reading();
  };
}

int clock_reads() {
  return reads;
}

}  // namespace tree_lab
