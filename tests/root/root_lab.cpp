#include "root/root_lab.h"

#include "eval/strategy.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/driver.h"
#include "root/ladder.h"

namespace root_lab {
namespace {

std::vector<Report> heard;

void listen() {
  using namespace korvu;
  const Texto& t = linha[0];
  heard.push_back({{t.A, t.B, t.C, t.D},
                   beta1,
                   curr,
                   ataque,
                   deep,
                   DEEP,
                   SCAN1 != 0,
                   SCANT != 0,
                   alfa0,
                   ALFA0,
                   E,
                   EP,
                   emp,
                   pempatee,
                   roque_b,
                   roque_p});
}

}  // namespace

void at_root(std::string_view fen) {
  using namespace korvu;
  tree_lab::stand(0, fen);
  caps_de_mate();
  MAXcutt = MAXcut;
  limpa_tabelas<Cor::b>();
  limpa_tabelas<Cor::p>();
  heard.clear();
  relata_linha = listen;
  E = no_best;
  EP = 0;
  BETA1 = 0;
  curr = 0;
  melhor = sem_lance;
  jogada = {-1, -1, -1, -1};
  PR = PRs = PRe = '0';
  ataque = 100;
  TURBO = DEEP9 = 0;
  Temperamento = 3;
  deepp = 17;
  IIDS = 1;
  peca = 0;
}

void at_depth(std::string_view fen, int depth) {
  at_root(fen);
  korvu::deep = korvu::DEEP = depth;
}

void default_settings() {
  using namespace korvu;
  SEARCH_E = SEARCH_EE = PVS = VERTICAL_filt = LMR = TC = HASHf = TURBO = 1;
  EXTRA_EVAL = EXTRA_EVALL = extradef = 1;
  NULL_MOVE = CPU = 2;
  Tu = Temperamento = 3;
  Positive_filter = Positive_filterp = Negative_filter = Negative_filterp = 2;
  positfilter = negatfilter = 100;
  MQ = MOB = PM = 5;
  piecesac = 50;
  empp = -5;
  deep = deepp = 17;
}

const std::vector<Report>& reports() {
  return heard;
}

std::string reported_moves() {
  std::string text;
  for (const Report& r : heard) text += (text.empty() ? "" : " ") + r.move;
  return text;
}

std::string best_move() {
  using namespace korvu;
  if (melhor == sem_lance) return "none";
  const Texto t = texto_do_lance(melhor.aa, melhor.bb, melhor.cc, melhor.dd);
  return {t.A, t.B, t.C, t.D};
}

}  // namespace root_lab
