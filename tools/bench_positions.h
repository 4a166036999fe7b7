// The positions that korvu-bench searches: openings, middle games, tactics and endings from games
// of the engine's own, with what each switches from the defaults. All are searched to 9 plies
// ("Deep" 5) unless they say otherwise.
#pragma once

#include <array>
#include <string_view>

namespace korvu::bench {

struct Posicao {
  std::string_view posicao;                 // behind the word "position"
  std::array<std::string_view, 3> ajustes;  // behind the words "setoption name"
};

// clang-format off
inline constexpr Posicao posicoes[] = {
    {"startpos moves d2d4 d7d5 c2c4 e7e6 b1c3 g8f6 c1g5", {}},
    {"startpos moves e2e4 e7e5 g1f3 b8c6 f1b5 a7a6 b5a4 g8f6", {}},
    {"startpos moves c2c4 e7e5 b1c3 g8f6", {"Deep value 4"}},
    {"fen r1bqkb1r/pppppp1p/2n4n/6p1/3P2PP/5N2/PPP1PP2/RNBQKB1R b KQkq d3 0 4 moves h6g4", {}},
    {"fen r1bq3Q/p1pp1p1p/4kP2/1p6/4P3/6b1/PPP1K3/RNB2B1R w - - 1 18 moves h8d8", {}},
    {"fen rnbqkb1r/pppppp1p/8/6p1/1P4n1/P5P1/1BPPPP1P/RN1QKBNR b KQkq - 2 4 moves f7f5", {}},
    {"fen r1b1k3/ppqp3R/2n2B2/5P2/1b2P1P1/5NP1/1RP1QP2/1N2KB2 w q - 1 18 moves c2c3", {"Temperament value consistent"}},
    {"fen rnb1kbnr/1p2p1pp/1qp5/3pPp2/1p1P1P2/P7/R1P3PP/1NBQKBNR w Kkq - 0 9 moves a2b2", {"Deep value 4"}},
    {"fen 1nb2kn1/rp6/4p3/3pPp2/1P3PQ1/1R6/2P2b1P/1NBK4 b - - 0 22 moves f5g4", {}},
    {"fen 2b2k2/1p6/4p3/4P3/2Nn1P1R/8/4n2P/2K5 w - - 8 36 moves c1d1", {"Deep value 6"}},
    {"fen 2R5/6k1/3Np3/1p2P3/3n1P2/8/4n2P/3K4 b - - 1 49 moves e2f4", {}},
    {"fen 8/8/4pk2/1p1n4/7P/1K3n2/8/8 w - - 5 63 moves h4h5", {"Deep value 6"}},
    {"fen 2kr1bnr/p3pppp/1qpp1n2/1p3P2/3P4/2P2Q2/PP3PPP/RNB1K1NR w KQ - 1 9 moves g2g4", {"Temperament value positional", "Deep value 4"}},
    {"fen 2kr2r1/p2n4/1qp1p2P/3p4/1B1Pn3/1P3N2/P1Q2P1P/RN2K2R b KQ - 0 22 moves b6b4", {}},
    {"fen 2k2n2/p7/4p3/P1pp4/3P1r2/1P6/3N3P/R3K2R w - - 0 36 moves a1a4", {}},
    {"fen 8/p7/1k2p3/3p4/KPn5/8/7P/5N2 b - - 10 49 moves c4b2", {"Deep value 6"}},
    {"fen 8/8/8/3np3/8/1k1p2N1/3K3P/8 w - - 10 63 moves d2d3", {"Deep value 7"}},
    {"fen r1bqkb1r/1ppp1p1p/p1n1p1p1/3n2P1/3P3P/P7/RPP2P2/1NBQKBNR w Kkq - 1 9 moves f1g2", {"Positive float filter value full", "Deep value 4"}},
    {"fen r1bq1rk1/1p1pnp1p/2p1p3/P1b3PB/5P1P/P4N2/2RB4/1N2K2R b K - 3 22 moves d7d6", {}},
    {"fen r1b3k1/4b2p/2R1p3/p2p2BB/P6P/1q3r2/6K1/1N6 w - - 0 36 moves h5f3", {"Negative float filter value manual", "Negative float filter level value 4"}},
    {"fen r5k1/7p/3q4/p7/b7/5K2/3p4/8 b - - 1 49 moves d2d1q", {}},
    {"fen rn3bn1/ppq1k3/2p1bp1r/3P4/6Pp/N1PB4/PP1P3P/R1BQK1NR b KQ - 0 13 moves e6d5", {}},
    {"fen rnbqkbnr/p1ppp1p1/1p5p/5p2/3P3P/P3P3/1PP2PP1/RNBQKBNR b KQkq - 0 4 moves d7d5", {}},
    {"fen rn3b1r/p5p1/bp2p2p/2p1P3/2pPk1PP/P3B3/1PP5/RN2K1NR w KQ - 0 18 moves e3f2", {"Lmr value false", "Null move filter value off", "Deep value 4"}},
    {"fen rnbq1rk1/pppp1ppp/4p3/4P2n/3P3b/2P2P1P/P3K1P1/RNBQ1BNR w - - 1 9 moves h1h2", {}},
    {"fen rnbr2k1/p6p/2p5/3pPpp1/R1PP4/3Q1P1P/4N3/1N3K1R b - - 0 22 moves g8h8", {"PVS value false", "Deep value 4"}},
    {"fen rnbqkb2/pppppppr/5n1p/6P1/3P1P2/8/PPP1P2P/RNBQKBNR b KQq - 0 4 moves h6g5", {}},
    {"fen rnbq1b2/ppk1pPr1/1npp4/4PBB1/3P4/2P5/PP2Q2P/RN2K1NR w KQ - 3 18 moves h2h4", {"Turbo search value false", "Deep value 4"}},
    {"fen 4k3/pp3q2/n1p1p3/4P3/2Pr3P/4Q3/PP6/RN2K1R1 b Q - 4 31 moves d4c4", {}},
    {"fen r1bqkb1r/ppppp2p/3n1np1/3P4/5PQ1/3B4/PPP4P/RNB1K1NR w KQkq - 1 9 moves g4g5", {}},
    {"fen r1bqk2r/pp5p/2p3p1/2bP2P1/7P/3BNp2/1P6/R1BK3R b kq - 2 22 moves c6d5", {"Vertical filter value false", "Deep value 4"}},
    {"fen r6r/pp4kp/6p1/6P1/1q1p3P/8/1BK5/4N2R w - - 0 36 moves e1d3", {}},
    {"fen rnbqkbnr/1pppp2p/p5p1/3P1p2/3Q4/7P/PPP1PPP1/RNB1KBNR b KQkq - 1 4 moves g8f6", {"Deep memory value false", "Deep value 4"}},
    {"fen rnb1k3/3p3p/p1p2p2/8/8/2P4P/PP2PP1b/RN2KBN1 w Qq - 1 18 moves e2e4", {}},
    {"fen r3k3/3n3p/p1R5/5b2/P1P1p2P/8/3NK3/8 b q - 0 31 moves d7e5", {"Search extension value false"}},
    {"fen r5k1/2R4N/p7/8/P1P5/3n1K2/8/8 w - - 11 45 moves c7c6", {"Deep value 6"}},
    {"fen 8/6k1/p7/4K3/r6n/8/8/8 b - - 1 58 moves a6a5", {"Deep value 7"}},
    {"fen rnbqkbnr/1ppp1p1p/p5p1/4p3/6PP/1P3N2/P1PPPP2/RNBQKB1R b KQkq - 1 4 moves b7b6", {"Deep value 4"}},
    {"fen rnbqkbnr/pp3ppp/2p1p3/3p4/1P4Q1/4P1P1/P1PP1P1P/RNB1KBNR b KQkq - 1 4 moves e6e5", {}},
    {"fen rnbk4/pp1n1p1p/3r4/1Pp5/3p1N1P/3BP1P1/PBPP4/RN2K2R w KQ - 0 18 moves e3d4", {"Extra evaluation value false"}},
    {"fen 1r1k4/p6b/4Nn2/1PR5/P2p3P/5BP1/3P4/R5K1 b - - 4 31 moves d8d7", {}},
    {"fen R7/1B6/3k4/1P2N1PP/P4n2/3b4/3P4/R5K1 w - - 7 45 moves a8a7", {"Material quociente value 9", "Mobility value 1"}},
    {"fen 8/3B1b2/6kP/1PR5/P7/7n/3P4/R4K2 b - - 4 58 moves h3f4", {}},
    {"fen r1bqkbnr/pppp1p1p/2n5/4p1p1/8/1P4P1/P1PPPP1P/RNBQKBNR b KQkq - 3 4 moves c6d4", {"Extra definition value false", "Deep value 4"}},
    {"fen 1r1qk1nr/1Qp4p/5p1b/3pP3/P4p2/1PP2N2/4P2P/RNB1K2R w KQk - 1 18 moves b7c6", {}},
    {"fen 4r3/5Nkp/1r1pPp2/P2P4/5p1P/2P5/8/RN3K1R b - - 0 31 moves b6a6", {}},
    {"fen 4r3/8/1NNp1p1k/P2P3p/5R1P/2P5/8/5K2 w - - 6 45 moves f4f6", {}},
    {"fen 6k1/3RN3/1N6/P2P3p/7P/2P1r3/8/5K2 b - - 24 58 moves g8h8", {}},
};
// clang-format on

}  // namespace korvu::bench
