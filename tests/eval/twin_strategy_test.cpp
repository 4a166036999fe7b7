// The rating of root moves against its plain twin: inherited value to the last bit, the rest whole.
#include <gtest/gtest.h>

#include "board/attack.h"
#include "board/root_move.h"
#include "eval/bench.h"
#include "eval/strategy.h"
#include "support/positions.h"
#include "support/referee.h"

namespace {

using korvu::Cor;
using korvu::Varredura;

void run(plain::Side root) {
  if (root == plain::white)
    korvu::verifica_estrategia<Cor::b>();
  else
    korvu::verifica_estrategia<Cor::p>();
}

template <Cor cor>
std::string figures_differ(const plain::Rating& twin) {
  const korvu::Varre<Varredura::estrategia, cor, korvu::outra(cor)> v(korvu::tab2);
  return bench::differences(v.template de<Cor::b>(), twin.figures[plain::white]) +
         bench::differences(v.template de<Cor::p>(), twin.figures[plain::black]);
}

struct Tally {
  int cases = 0, credits = 0, debits = 0, cut_up = 0, cut_down = 0, scaled = 0, illegal = 0;
};

void expect_sums(const plain::Rating& twin) {
  const plain::Figures &w = twin.figures[plain::white], &b = twin.figures[plain::black];
  EXPECT_PRED2(bench::same_bits, korvu::atack_ksf_b, w.kattack);
  EXPECT_PRED2(bench::same_bits, korvu::atack_ksf_p, b.kattack);
  EXPECT_PRED2(bench::same_bits, korvu::defesa_ksf_b, w.kdefend);
  EXPECT_PRED2(bench::same_bits, korvu::defesa_ksf_p, b.kdefend);
  EXPECT_PRED2(bench::same_bits, korvu::centro_b, w.cen);
  EXPECT_PRED2(bench::same_bits, korvu::centro_p, b.cen);
}

void compare(plain::Side root, const plain::Both<plain::Attacks>& attackers, Tally& tally) {
  const plain::Setting set = plain::setting_from_slots();
  const int matriz = korvu::MATRIZ;
  const bool urged = korvu::incentiva_promo != 0;
  const plain::Board board = plain::board_from_bytes(korvu::tab2);
  const plain::Rating twin = plain::rating(board, attackers, set, root, matriz, urged);
  run(root);
  SCOPED_TRACE((root == plain::white ? "White's move\n" : "Black's move\n") + bench::bench_state() +
               "MATRIZ before " + std::to_string(matriz));
  EXPECT_PRED2(bench::same_sum, korvu::extraevalll, twin.inherited);
  EXPECT_EQ(korvu::ATAQUE, twin.ataque);
  EXPECT_EQ(korvu::ESTRATEGIA, twin.estrategia);
  EXPECT_EQ(korvu::MATRIZ, twin.matriz);
  expect_sums(twin);
  EXPECT_EQ(root == plain::white ? figures_differ<Cor::b>(twin) : figures_differ<Cor::p>(twin), "");

  ++tally.cases;
  if (twin.exchange > 0) ++tally.credits;
  if (twin.exchange < 0) ++tally.debits;
  if (twin.ataque > 100) ++tally.cut_up;
  if (twin.ataque < -100) ++tally.cut_down;
  if (urged && twin.matriz != matriz) ++tally.scaled;
  const auto all = plain::scan(board, set, root, plain::other(root), plain::Mobility::every_move);
  if (all[0].mob != twin.figures[0].mob || all[1].mob != twin.figures[1].mob) ++tally.illegal;
}

// A root move of the side to move, through the engine's own preparation of it.
void prepare(plain::Side root, const referee::Move& m) {
  const int x1 = m.from / 8, y1 = m.from % 8, x2 = m.to / 8, y2 = m.to % 8;
  if (root == plain::white) {
    korvu::init_tabuleiro2<Cor::b>(x1, y1, x2, y2);
    korvu::verifica_rei<Cor::b>();
  } else {
    korvu::init_tabuleiro2<Cor::p>(x1, y1, x2, y2);
    korvu::verifica_rei<Cor::p>();
  }
}

void scatter_rating(std::mt19937& dice) {
  const korvu::Tabuleiro after = korvu::tab2;
  bench::scatter(dice);
  korvu::tab2 = after;
  korvu::incentiva_promo = dice() % 3 == 0;
  if (dice() % 2 == 0) korvu::MATRIZ = static_cast<int>(dice() % 401) - 200;
  if (dice() % 16 == 0) korvu::MATRIZ = static_cast<int>(dice());
}

// Attackers that belong to no board, as a rating meets them that is made on the tables of an
// earlier move.
plain::Both<plain::Attacks> strewn_attackers(std::mt19937& dice) {
  plain::Both<plain::Attacks> out{};
  korvu::ataca_b = {};
  korvu::ataca_p = {};
  for (std::size_t side = 0; side < 2; ++side) {
    korvu::Ataques& engine = side == 0 ? korvu::ataca_b : korvu::ataca_p;
    for (std::size_t s = 0; s < 64; ++s) {
      if (dice() % 4 == 0) continue;
      for (std::size_t kind = 0; kind < 6; ++kind) {
        if (dice() % 3 != 0) continue;
        const int count = 1 + static_cast<int>(dice() % 2);
        out[side].by_kind[kind][s] = engine.por_peca[kind][s] = count;
        out[side].all[s] += count;
      }
      engine.N_A[s] = out[side].all[s];
    }
  }
  return out;
}

}  // namespace

TEST(RatingTwin, AgreesOnRootMoves) {
  std::mt19937 dice(4);
  Tally tally;
  for (const std::string& fen : referee::varied_fens()) {
    const referee::Position p = referee::Position::from_fen(fen);
    const plain::Side root = p.white_to_move() ? plain::white : plain::black;
    const std::vector<referee::Move> moves = p.legal_moves();
    bench::lay(fen);
    for (int k = 0; k < 16; ++k) {
      const referee::Move& m = moves[dice() % moves.size()];
      if (m.promo != 0 && m.promo != 'q') continue;
      korvu::nb = static_cast<int>(dice() % 100);
      prepare(root, m);
      if (k >= 2) scatter_rating(dice);
      compare(root, plain::attacks(plain::board_from_bytes(korvu::tab2)), tally);
      if (HasFailure()) FAIL() << fen << ", move " << m.text();
      bench::lay(fen);
    }
  }
  RecordProperty("cases", tally.cases);
  EXPECT_GE(tally.cases, 4800);
  EXPECT_GT(tally.credits, 100);
  EXPECT_GT(tally.debits, 100);
  EXPECT_GT(tally.cut_up, 20);
  EXPECT_GT(tally.cut_down, 20);
  EXPECT_GT(tally.scaled, 100);
  EXPECT_GT(tally.illegal, 100);
}

TEST(RatingTwin, AgreesOnStrewnMenAndForeignAttackTables) {
  std::mt19937 dice(5);
  Tally tally;
  bench::lay("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  for (int k = 0; k < 6000; ++k) {
    bench::strew(dice, 2 + k % 40);
    scatter_rating(dice);
    const plain::Both<plain::Attacks> attackers = strewn_attackers(dice);
    compare(k % 2 == 0 ? plain::white : plain::black, attackers, tally);
    if (HasFailure()) FAIL() << "at case " << tally.cases;
  }
  RecordProperty("cases", tally.cases);
  EXPECT_EQ(tally.cases, 6000);
  EXPECT_GT(tally.credits, 500);
  EXPECT_GT(tally.debits, 500);
  EXPECT_GT(tally.scaled, 100);
  EXPECT_GT(tally.illegal, 500);
}

// A castling prepares no tables of its own: it is rated by those of the move before it, on the
// board that its own test leaves in tab2. Here that move was the pawn's capture of the queen; its
// tables attack nothing of what stands there after the castling. Tables of its own would find the
// queen attacked by the pawn (100) and the pawn by the queen (10).
TEST(RatingTwin, CastlingIsRatedByTheTablesOfTheMoveBefore) {
  bench::lay("4k3/8/8/3q4/4P3/8/8/R3K2R w KQ - 0 1");
  korvu::init_tabuleiro2<Cor::b>(4, 3, 3, 4);
  const plain::Both<plain::Attacks> before = plain::attacks(plain::board_from_bytes(korvu::tab2));
  korvu::verifica_roque<0, Cor::b, korvu::Ala::torre_h>();
  korvu::matrix = 0;
  Tally tally;
  compare(plain::white, before, tally);
  EXPECT_EQ(korvu::ATAQUE, 0);
  const plain::Board castled = plain::board_from_bytes(korvu::tab2);
  const plain::Rating own = plain::rating(castled, plain::attacks(castled),
                                          plain::setting_from_slots(), plain::white, 0, false);
  EXPECT_EQ(own.ataque, 100 - 10);
}
