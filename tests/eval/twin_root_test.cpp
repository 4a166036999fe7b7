// The reading of the root against its plain twin, to the last bit, over moves of the game.
#include <gtest/gtest.h>

#include "eval/bench.h"
#include "eval/root_analysis.h"
#include "support/positions.h"
#include "support/referee.h"

namespace {

plain::Board board_of(const referee::Position& p) {
  plain::Board b{};
  for (int s = 0; s < 64; ++s) {
    const char c = p.at(s);
    const auto value = [](char lower) {
      switch (lower) {
        case 'p':
          return 10;
        case 'n':
          return 32;
        case 'b':
          return 33;
        case 'r':
          return 50;
        case 'q':
          return 90;
        case 'k':
          return 110;
        default:
          return 0;
      }
    };
    const bool is_white = c >= 'A' && c <= 'Z';
    b[static_cast<std::size_t>(s)] = is_white ? value(static_cast<char>(c - 'A' + 'a')) : -value(c);
  }
  return b;
}

void play(const referee::Move& m) {
  korvu::jogada = {m.from / 8, m.from % 8, m.to / 8, m.to % 8};
  korvu::PRs = '0';
  korvu::PRe = m.promo == 0 ? '0' : m.promo;
  korvu::deeppromo = 0;
  korvu::init_tabuleiro();
}

// The setting as it must be after the move: kings where they stand, weights as set before.
plain::Setting setting_for(const referee::Position& p) {
  plain::Setting set = plain::setting_from_slots();
  const int w = p.king_square(true), b = p.king_square(false);
  set.king_file = {w / 8, b / 8};
  set.king_rank = {w % 8, b % 8};
  return set;
}

}  // namespace

TEST(RootReadingTwin, AgreesAfterEveryMove) {
  std::mt19937 dice(6);
  int cases = 0, promotions = 0, fighting_kings = 0;
  for (const std::string& fen : referee::varied_fens()) {
    const referee::Position before = referee::Position::from_fen(fen);
    const std::vector<referee::Move> moves = before.legal_moves();
    for (int k = 0; k < 6; ++k) {
      const referee::Move& m = moves[dice() % moves.size()];
      const referee::Position after = before.after(m);
      bench::lay(fen);
      bench::scatter(dice);  // counters and king squares are found anew whatever they were
      const bool white_root = dice() % 2 == 0;
      korvu::joga_com_b = white_root;
      korvu::extraeval = 5;
      play(m);
      const plain::Board board = board_of(after);
      ASSERT_EQ(plain::board_from_bytes(korvu::tab), board) << fen << ' ' << m.text();
      const plain::Reading twin =
          plain::root_reading(board, setting_for(after), white_root ? plain::white : plain::black);
      const plain::Figures &w = twin.figures[plain::white], &b = twin.figures[plain::black];
      SCOPED_TRACE(fen + ", move " + m.text() + (white_root ? ", White's root" : ", Black's root"));
      EXPECT_PRED2(bench::same_sum, korvu::shashinn, twin.shashinn);
      EXPECT_PRED2(bench::same_bits, korvu::atack_ksf_b, w.kattack);
      EXPECT_PRED2(bench::same_bits, korvu::atack_ksf_p, b.kattack);
      EXPECT_PRED2(bench::same_bits, korvu::defesa_ksf_b, w.kdefend);
      EXPECT_PRED2(bench::same_bits, korvu::defesa_ksf_p, b.kdefend);
      EXPECT_PRED2(bench::same_bits, korvu::centro_b, w.cen);
      EXPECT_PRED2(bench::same_bits, korvu::centro_p, b.cen);
      EXPECT_EQ(korvu::extraeval, 0);
      EXPECT_EQ(korvu::PRe, '0');
      if (HasFailure()) FAIL() << "at case " << cases;
      ++cases;
      if (m.promo != 0) ++promotions;
      if (korvu::materialmaiorb <= 90 && korvu::materialmaiorp <= 90) ++fighting_kings;
    }
  }
  RecordProperty("cases", cases);
  EXPECT_GE(cases, 320 * 6);
  EXPECT_GT(promotions, 20);
  EXPECT_GT(fighting_kings, 100);
}
