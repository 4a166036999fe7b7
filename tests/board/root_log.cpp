#include "root_log.h"

#include "board_kit.h"
#include "eval/knobs.h"
#include "eval/strategy.h"
#include "memory/ply_tables.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "tree/knobs.h"

namespace kit {
namespace {

std::vector<RootMove> log;

void note_move() {
  using namespace korvu;
  const Texto& t = linha[0];
  log.push_back({{t.A, t.B, t.C, t.D},
                 ESTRATEGIA,
                 XEQUE != 0,
                 extraevalll,
                 joga_com_b ? roque_b : roque_p,
                 joga_com_b ? roque_p : roque_b,
                 tabd[1]});
}

}  // namespace

void open_root(std::string_view fen) {
  using namespace korvu;
  place(fen);
  SCAN1 = 0;
  SCANT = 1;
  melhor = sem_lance;
  deep = DEEP = 1;
  PVS = TURBO = HASHf = 0;
  alfa.fill(16500);
  beta.fill(-16500);
  MAXcut.fill(1e9F);
  MAXcutt = MAXcut;
  E = 1e9F;
  nodes = 0;
  corte_MAXcut = 0;
}

namespace {

template <class F>
std::vector<RootMove> logged(F scan) {
  log.clear();
  korvu::relata_linha = note_move;
  scan();
  korvu::relata_linha = [] {};
  return log;
}

}  // namespace

std::vector<RootMove> scanned() {
  using namespace korvu;
  return logged([] { por_cor(joga_com_b, []<Cor cor>() { percorre_escada<cor>(); }); });
}

std::vector<RootMove> scanned_at_first_move() {
  using namespace korvu;
  return logged([] { por_cor(joga_com_b, []<Cor cor>() { percorre_primeiro_lance<cor>(); }); });
}

std::vector<RootMove> expanded(const korvu::Expansor& e, std::size_t square) {
  using namespace korvu;
  return logged([&] {
    for (ataque = 100; ataque >= -100; --ataque)
      por_cor(joga_com_b, [&]<Cor cor>() {
        analise100<cor>(e, static_cast<int>(square / 8), static_cast<int>(square % 8));
      });
  });
}

std::string text_of(const std::vector<RootMove>& moves) {
  std::string text;
  for (const RootMove& m : moves) text += m.move + ' ';
  return text;
}

}  // namespace kit
