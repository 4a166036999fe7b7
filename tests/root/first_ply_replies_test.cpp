// In which order the first ply tries the replies to a root move.
#include <gtest/gtest.h>

#include <string>

#include "root/root_lab.h"
#include "support/positions.h"
#include "tree/expected_order.h"

namespace korvu {
namespace {

using namespace root_lab;

// With bounds that nothing meets every reply is tried once.
template <Cor root>
void expect_all_replies(const std::string& fen, const referee::Move& m, std::size_t replies) {
  at_depth(fen, 1);
  MAXcut[1] = 20000;
  deep1<root>(referee::file_of(m.from), referee::rank_of(m.from), referee::file_of(m.to),
              referee::rank_of(m.to));
  EXPECT_EQ(nodes, replies);
}

// The first reply refutes the move, so that it is the one stored.
template <Cor root>
void expect_first_reply(const std::string& fen, const referee::Move& m) {
  const referee::Position p = referee::Position::from_fen(fen);
  const auto replies = expected::order_at_the_first_ply(p.after(m));
  expect_all_replies<root>(fen, m, replies.size());
  if (replies.empty()) return;
  at_depth(fen, 1);
  MAXcut[1] = -20000;
  const Lance l = {referee::file_of(m.from), referee::rank_of(m.from), referee::file_of(m.to),
                   referee::rank_of(m.to)};
  deep1<root>(l.aa, l.bb, l.cc, l.dd);
  const referee::Move& r = replies.front();
  const Lance reply = {referee::file_of(r.from), referee::rank_of(r.from), referee::file_of(r.to),
                       referee::rank_of(r.to)};
  ASSERT_EQ(nodes, 1U);
  const bool capture = p.after(m).at(r.to) != ' ';
  EXPECT_EQ((capture ? guardado_g : guardado)[1], reply) << "both kinds from first at this ply";
  EXPECT_EQ((capture ? guardado : guardado_g)[1], sem_lance);
}

TEST(FirstPly, TheFirstReplyTriedIsTheExpectedOneAndEveryOneIsTriedOnce) {
  int tried = 0;
  for (const std::string& fen : referee::varied_fens()) {
    const referee::Position p = referee::Position::from_fen(fen);
    for (const referee::Move& m : p.legal_moves()) {
      if (m.promo != 0 && m.promo != 'q') continue;
      SCOPED_TRACE(m.text() + " in " + fen);
      if (p.white_to_move())
        expect_first_reply<Cor::b>(fen, m);
      else
        expect_first_reply<Cor::p>(fen, m);
      ++tried;
    }
  }
  EXPECT_GT(tried, 3000);
}

TEST(FirstPly, AStoredCaptureComesFirstByTheManThatStandsThere) {
  // Black to answer: b5 takes a4 or c4, c3 takes a4, d1 takes a1. By victims the rook comes first.
  constexpr std::string_view fen = "4k3/8/8/1p6/N1B5/2n5/5K2/R2r4 w - - 0 1";
  const auto first = [&](Lance capture) {
    at_depth(fen, 1);
    guardado_g[1] = capture;
    alfa0 = 16000;  // the first reply refutes
    first_ply<Cor::b>("f2g2");
    EXPECT_EQ(nodes, 1U);
    return linha[1];
  };
  const auto text = [](const Texto& t) { return std::string{t.A, t.B, t.C, t.D}; };
  EXPECT_EQ(text(first(sem_lance)), "d1a1");
  EXPECT_EQ(text(first({1, 4, 2, 3})), "b5c4");
  EXPECT_EQ(text(first({2, 2, 0, 3})), "c3a4");
  EXPECT_EQ(text(first({2, 2, 1, 3})), "d1a1") << "no capture any more";
  EXPECT_EQ(text(first({4, 4, 1, 3})), "d1a1") << "nobody stands there";
}

}  // namespace
}  // namespace korvu
