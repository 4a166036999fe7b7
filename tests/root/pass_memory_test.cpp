// A pass that rates each root move once, against one that rates it whenever it is met: the same
// moves searched, the same outcome, and the same marks left behind.
#include "root/pass_memory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "board/draw.h"
#include "board/move.h"
#include "board/root_move.h"
#include "eval/strategy.h"
#include "root/ladder.h"
#include "root/plain_ladder.h"
#include "root/root_lab.h"
#include "support/positions.h"
#include "support/referee.h"

namespace korvu {
namespace {

using namespace root_lab;
using namespace plain_ladder;

// --- The pass without a memory ---

Classe class_of(const Rung& r) {
  return static_cast<Classe>(r.target - '0');
}
Peca man_of(const Rung& r) {
  return static_cast<Peca>(std::string_view("PNBRQK").find(r.man));
}

template <Cor raiz>
void serve(const Rung& r) {
  const Peca man = man_of(r);
  for (int s = 0; s < 64 && !corte_MAXcut; ++s)
    if (tab[static_cast<std::size_t>(s)] == codigo_de(man, raiz))
      analise100<raiz>({class_of(r), r.check ? Xeque::ch : Xeque::sh, man}, s / 8, s % 8);
}

template <Cor raiz>
void climb(const Ladder& ladder) {
  memoria_do_passe.comeca();
  memoria_do_passe.acaba();  // nothing is remembered, and nothing will be
  corte_MAXcut = 0;
  for (const Loop& l : ladder)
    for (ataque = 100; ataque >= -100; --ataque)
      for (const Rung& r : l) serve<raiz>(r);
  ataque = 100;
}

template <Cor raiz>
Ladder ladder_in_force() {
  if (material_da_raiz<outra(raiz)>() == 110) return against_a_bare_king();
  return Temperamento == 3 ? dynamic() : Temperamento == 2 ? consistent() : positional();
}

// --- What a pass leaves behind ---

struct Slot {
  const char* name;
  const void* at;
  std::size_t size;
};
template <class T>
Slot slot(const char* name, const T& t) {
  return {name, &t, sizeof t};
}

// R is not among them: only a castling's own test reads it, right after writing it, and a castling
// that is put off and then followed by another move leaves no R.
const std::vector<Slot>& slots() {
  static const std::vector<Slot> all = {
      // the outcome
      slot("nodes", nodes), slot("the chosen move", jogada), slot("the best move", melhor),
      slot("PRs", PRs), slot("E", E), slot("EP", EP), slot("alfa", alfa), slot("beta", beta),
      slot("ALFA0", ALFA0), slot("BETA1", BETA1), slot("corte_MAXcut", corte_MAXcut),
      slot("MAXcut", MAXcut), slot("curr", curr), slot("ddep", ddep), slot("deep", deep),
      slot("roque_b", roque_b), slot("roque_p", roque_p), slot("tab", tab), slot("linha", linha),
      slot("stored moves", guardado), slot("stored captures", guardado_g), slot("ataque", ataque),
      slot("deeppromo", deeppromo),
      // the marks of rating a move
      slot("tab2", tab2), slot("tab2t", tab2t), slot("Y", Y), slot("XEQUE", XEQUE), slot("XM", XM),
      slot("YY", YY), slot("p_x_Rb", p_x_Rb), slot("p_y_Rb", p_y_Rb), slot("p_x_Rp", p_x_Rp),
      slot("p_y_Rp", p_y_Rp), slot("MATRIZ", MATRIZ), slot("incentiva_promo", incentiva_promo),
      slot("ATAQUE", ATAQUE), slot("ESTRATEGIA", ESTRATEGIA), slot("extraevalll", extraevalll),
      slot("White's attacks", ataca_b), slot("Black's attacks", ataca_p), slot("pempate", pempate),
      slot("TEST1IID", TEST1IID), slot("atack_ksf_b", atack_ksf_b),
      slot("atack_ksf_p", atack_ksf_p), slot("defesa_ksf_b", defesa_ksf_b),
      slot("defesa_ksf_p", defesa_ksf_p), slot("centro_b", centro_b), slot("centro_p", centro_p)};
  return all;
}

struct Outcome {
  std::vector<std::string> contents;
  std::string searched;  // moves with rating and score, in order
};

Outcome outcome() {
  Outcome o;
  for (const Slot& s : slots()) o.contents.emplace_back(static_cast<const char*>(s.at), s.size);
  for (const Report& r : reports())
    o.searched += r.move + '/' + std::to_string(r.rating) + '/' + std::to_string(r.score) + ' ';
  return o;
}

void expect_same(const Outcome& is, const Outcome& should) {
  EXPECT_EQ(is.searched, should.searched);
  for (std::size_t k = 0; k < slots().size(); ++k)
    EXPECT_TRUE(is.contents[k] == should.contents[k]) << slots()[k].name;
}

// --- Searches of three passes ---

struct Scenario {
  std::string fen;
  int temperament = 3;
  int depth = 1;
  int ply = 1;               // nb
  bool repetitions = false;  // every third move leads to a position of the game
  float cap = 20000;         // of the root
  bool settings = false;     // all as in a new process: extra evaluation, reductions, tables

  std::string text() const {
    return fen + " temperament " + std::to_string(temperament) + " depth " + std::to_string(depth) +
           " nb " + std::to_string(ply) + (repetitions ? " repetitions" : "") + " cap " +
           std::to_string(cap) + (settings ? " default settings" : "");
  }
};

// The positions after every third legal move stand in the game's list, at all places of a colour.
void remember_positions(const std::string& fen) {
  const referee::Position p = referee::Position::from_fen(fen);
  std::size_t n = 0;
  tabr1.fill({});
  for (const referee::Move& m : p.legal_moves()) {
    if (n++ % 3 != 0) continue;
    Tabuleiro t = tab;
    por_cor(joga_com_b, [&]<Cor cor>() {
      move_as_pecas<cor>(t, duplos, m.from / 8, m.from % 8, m.to / 8, m.to % 8);
    });
    tabr1[2 * (n / 3)] = tabr1[2 * (n / 3) + 1] = t;
  }
}

// Marks that no rating makes: what a pass does not write it must not read either, and whoever reads
// them first must read the same.
void mark() {
  for (Ataques* at : {&ataca_b, &ataca_p}) {
    for (TabelaInt& by_kind : at->por_peca) by_kind.fill(0);
    at->N_A.fill(1);
  }
  tab2 = tab2t = tab;
  Y = XEQUE = XM = R = YY = EMPAT = pempate = TEST1IID = 0;
  MATRIZ = 3;
  incentiva_promo = 0;
  ATAQUE = ESTRATEGIA = 0;
  extraevalll = 0.25F;
  atack_ksf_b = atack_ksf_p = defesa_ksf_b = defesa_ksf_p = centro_b = centro_p = 0;
  for (std::size_t n = 1; n < tabd.size(); ++n) {
    tabd[n].fill(vazia);
    jm_D[n] = {};
    duplos_D[n] = {};
    materialb[n] = materialp[n] = 0;
  }
}

void begin(const Scenario& s) {
  at_root(s.fen);
  at_root(s.fen);  // the tables around the kings go by the totals that stand when they are made
  if (s.settings) default_settings();
  TC = 0;
  deep = DEEP = s.depth;
  Temperamento = s.temperament;
  MAXcut[0] = s.cap;
  nb = s.ply;
  pempatee = s.repetitions;
  if (s.repetitions) remember_positions(s.fen);
  mark();
}

using Pass = std::function<void()>;

// Pre-pass, single-move pass, and the pass of the others, as a search makes them.
std::vector<Outcome> searched(const Scenario& s, const Pass& pass) {
  begin(s);
  std::vector<Outcome> outcomes;
  const auto run = [&](bool single, bool rest) {
    SCAN1 = single;
    SCANT = rest;
    roque_b = roque_p = 0;
    MAXcut = MAXcutt;
    MAXcut[0] = s.cap;
    pass();
    outcomes.push_back(outcome());
  };
  run(false, false);
  ALFA0 = alfa0;
  alfa0 -= 10;
  E -= 10;
  EP = 0;
  curr = 0;
  run(true, false);
  run(false, true);
  return outcomes;
}

void expect_same_search(const Scenario& s) {
  SCOPED_TRACE(s.text());
  at_root(s.fen);
  por_cor(joga_com_b, [&]<Cor raiz>() {
    const Ladder ladder = [&] {
      Temperamento = s.temperament;
      return ladder_in_force<raiz>();
    }();
    const std::vector<Outcome> should = searched(s, [&] { climb<raiz>(ladder); });
    const std::vector<Outcome> is = searched(s, [] { percorre_escada<raiz>(); });
    for (std::size_t k = 0; k < should.size(); ++k) {
      SCOPED_TRACE("pass " + std::to_string(k));
      expect_same(is[k], should[k]);
    }
  });
}

void expect_same_searches_by_every_temperament(Scenario s) {
  for (const int temperament : {3, 2, 1}) {
    s.temperament = temperament;
    expect_same_search(s);
  }
}

// --- The positions ---

// Castlings of both colours and wings, with and without check, under attack, with few other moves
// before them, captures by the king in the same expanders.
TEST(PassMemory, Castlings) {
  for (const std::string_view fen :
       {"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "5k2/8/8/8/8/8/8/R3K2R w KQ - 0 1",
        "3k4/8/8/8/8/8/4p3/R3K2R w KQ - 0 1", "4k3/8/8/8/8/6n1/3p1p2/R3K2R w KQ - 0 1",
        "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1"})
    each_colour([&]<Cor root>() {
      expect_same_searches_by_every_temperament({.fen = told_for<root>(fen)});
    });
}

// A castling met right after a pawn's move in a late game scales MATRIZ again and again.
TEST(PassMemory, CastlingsLateInTheGame) {
  for (const std::string_view fen :
       {"4k3/8/8/8/8/p7/P6P/R3K2R w KQ - 0 40", "4k3/p7/8/8/8/8/7P/4K2R w K - 0 40",
        "r3k3/8/8/3p4/4P3/8/8/R3K2R w KQ - 0 40"})
    each_colour([&]<Cor root>() {
      expect_same_searches_by_every_temperament({.fen = told_for<root>(fen), .ply = 75});
    });
}

// With two kings the moves met before a castling differ from one king to the other, and so does the
// castling's rating: attacks are those of the move before.
TEST(PassMemory, CastlingsOfTwoKings) {
  for (const std::string_view fen :
       {"4k3/8/8/2n5/2p5/2K5/8/3pK2R w K - 0 1", "7k/8/8/8/2p5/2K5/8/R3Kp2 w Q - 0 1"})
    each_colour([&]<Cor root>() {
      expect_same_search({.fen = told_for<root>(fen)});
      expect_same_search({.fen = told_for<root>(fen), .temperament = 1, .ply = 75});
    });
}

TEST(PassMemory, IllegalMovesPinsAndChecks) {
  for (const std::string_view fen :
       {"4r1k1/8/8/b7/8/2N5/4B3/R3K2R w KQ - 0 1", "4k3/8/8/8/7b/8/8/R3K2R w KQ - 0 1",
        "k3r3/8/8/8/1b6/8/8/R3K2R w KQ - 0 1", "7k/8/8/8/8/1q6/8/K7 w - - 0 1"})
    each_colour([&]<Cor root>() {
      expect_same_searches_by_every_temperament({.fen = told_for<root>(fen)});
    });
}

TEST(PassMemory, CapturesInPassingAndPromotions) {
  for (const std::string_view fen :
       {"4k3/8/8/2pPp3/8/8/8/4K2R w K c6 0 1", "4k3/8/8/K2pP2r/8/8/8/8 w - d6 0 1",
        "1n1n3k/P1P1P3/8/8/8/8/p1p1p3/1N1N3K w - - 0 1"})
    each_colour([&]<Cor root>() {
      for (const int ply : {1, 80})
        expect_same_searches_by_every_temperament({.fen = told_for<root>(fen), .ply = ply});
    });
}

TEST(PassMemory, BareKings) {
  for (const std::string_view fen :
       {"7k/8/8/8/3P4/8/8/R3K2R w KQ - 0 1", "8/2P5/8/1k6/8/5N2/8/4K2R w K - 0 1",
        "7k/8/8/8/3p4/3K4/8/8 w - - 0 1", "8/8/3k4/8/8/3K4/8/8 w - - 0 1"})
    each_colour([&]<Cor root>() {
      for (const int ply : {1, 75}) expect_same_search({.fen = told_for<root>(fen), .ply = ply});
    });
}

TEST(PassMemory, RepetitionsOfTheGame) {
  for (const std::string_view fen : {"r3k2r/pp3ppp/2n5/8/8/2N5/PP3PPP/R3K2R w KQkq - 0 20",
                                     "8/5k2/8/2p5/2P5/8/3K1R2/8 w - - 0 1"})
    each_colour([&]<Cor root>() {
      expect_same_searches_by_every_temperament(
          {.fen = told_for<root>(fen), .ply = 60, .repetitions = true});
      expect_same_search({.fen = told_for<root>(fen), .depth = 3, .ply = 60, .repetitions = true});
    });
}

// A move that reaches the root's cap ends the pass; every cap ends it elsewhere.
TEST(PassMemory, PassesThatEndEarly) {
  for (const float cap : {-1000.0F, -20.0F, 0.0F, 1.5F, 10.0F, 40.0F})
    each_colour([&]<Cor root>() {
      expect_same_search(
          {.fen = told_for<root>("r3k2r/pp3ppp/2n5/3q4/4P3/2N5/PP3PPP/R3K2R w KQkq - 0 20"),
           .cap = cap});
    });
}

TEST(PassMemory, PositionsOfGames) {
  std::size_t n = 0;
  int positions = 0;
  for (const std::string& fen : referee::varied_fens()) {
    if (n++ % 17 != 0) continue;
    const auto turn = static_cast<int>(positions++);
    expect_same_search({.fen = fen,
                        .temperament = 1 + turn % 3,
                        .depth = turn % 4 == 3 ? 3 : 1,
                        .ply = turn % 5 == 4   ? 75
                               : turn % 5 == 3 ? 40
                                               : 1,
                        .repetitions = turn % 6 == 5,
                        .settings = turn % 2 == 1});
    if (HasFailure()) return;
  }
  EXPECT_GT(positions, 30);
}

// Deep enough for the null move and the shallow search of the first ply, which test the other king
// on what the rating left in tab2, and for leaves that add the root move's own assessment.
TEST(PassMemory, SearchesWithAllTheirStages) {
  for (const std::string_view fen : {"4k2r/3p1pp1/2n5/8/8/2N5/3P1PP1/4K2R w Kk - 0 20",
                                     "8/5k2/2n5/2p5/2P5/2N5/3K4/8 w - - 0 40"})
    each_colour([&]<Cor root>() {
      expect_same_search({.fen = told_for<root>(fen), .depth = 5, .settings = true});
      expect_same_search(
          {.fen = told_for<root>(fen), .temperament = 2, .depth = 7, .ply = 75, .settings = true});
    });
}

TEST(PassMemory, TheShortScanOfAFirstMove) {
  for (const std::string_view fen : {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
                                     "rnbqkbnr/pppp1ppp/8/4p3/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1"})
    each_colour([&]<Cor root>() {
      for (const int depth : {1, 3}) {
        const Scenario s = {.fen = told_for<root>(fen), .depth = depth, .settings = true};
        const auto should = searched(s, [] { climb<root>({loop({"0- PN"})}); });
        const auto is = searched(s, [] { percorre_primeiro_lance<root>(); });
        for (std::size_t k = 0; k < should.size(); ++k) expect_same(is[k], should[k]);
      }
    });
}

}  // namespace
}  // namespace korvu
