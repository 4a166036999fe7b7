// Position lines: what they leave on the board, in the flags and in the counters.
#include "frontend/position.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/line.h"
#include "frontend/report.h"
#include "memory/game_memory.h"
#include "memory/ply_tables.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "support/lab.h"
#include "support/referee.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace korvu {
namespace {

void list(const std::string& moves) {
  in = "position startpos moves " + moves;
  zera_jogo(Caminho::lista_ou_fen);
  joga_c_fen = 0;
  recebe_lista();
}

void fen(const std::string& text) {
  in = "position fen " + text;
  zera_jogo(Caminho::lista_ou_fen);
  recebe_fen();
}

int man(std::string_view square) {
  return com_sinal(tab[lab::square(square)]);
}

std::string flags() {
  std::string s;
  for (const int f : {jm.R_b_jm, jm.R_p_jm, jm.T_b_a_jm, jm.T_b_h_jm, jm.T_p_a_jm, jm.T_p_h_jm})
    s += f ? '1' : '0';
  return s;
}

// The files whose double-step flag is set: small letters White's, capitals Black's.
std::string doubles() {
  std::string s;
  for (std::size_t x = 0; x < 8; ++x) {
    if (duplos.pb[x]) s += static_cast<char>('a' + x);
    if (duplos.pp[x]) s += static_cast<char>('A' + x);
  }
  return s;
}

TEST(MoveList, IsReplayedFromTheStartPosition) {
  list("e2e4 e7e5");
  EXPECT_EQ(nb, 2);
  EXPECT_TRUE(brancas_jogam());
  EXPECT_EQ(man("e4"), 10);
  EXPECT_EQ(man("e5"), -10);
  EXPECT_EQ(man("e2"), 0);
  EXPECT_EQ(doubles(), "E");
  EXPECT_EQ(tabr1[1], tab);
  EXPECT_EQ(tabr1[0][lab::square("e7")], Lado<Cor::p>::peao);
  EXPECT_EQ(tabr1[2][0], 1) << "no position after the last move";
}

TEST(MoveList, AnOddNumberOfMovesLetsBlackPlay) {
  list("e2e4 e7e5 g1f3");
  EXPECT_EQ(nb, 3);
  EXPECT_FALSE(brancas_jogam());
}

TEST(MoveList, ATrailingBlankRepeatsTheLastNumbers) {
  list("e2e4 e7e5 ");
  EXPECT_EQ(nb, 3);
  EXPECT_EQ(man("e5"), 0) << "the empty e7 was moved onto the pawn";
  EXPECT_EQ(man("e7"), 0);
}

TEST(MoveList, CastlingBringsTheRookAndSetsTheFlags) {
  list("e2e4 e7e5 g1f3 g8f6 f1c4 f8c5 e1g1 e8g8");
  EXPECT_EQ(man("g1"), 110);
  EXPECT_EQ(man("f1"), 50);
  EXPECT_EQ(man("h1"), 0);
  EXPECT_EQ(man("g8"), -110);
  EXPECT_EQ(man("f8"), -50);
  EXPECT_EQ(flags(), "110000");
}

TEST(MoveList, ARookThatLeavesItsFileSetsTheFlagOnAnyRank) {
  list("a2a4 h7h5 a1a3 h8h6");
  EXPECT_EQ(flags(), "001001");
  list("a2a4 h7h5 a1a3 h8h6 a3b3 h6g6 b3a3");
  EXPECT_EQ(flags(), "001001");
}

TEST(MoveList, CaptureInPassing) {
  list("e2e4 a7a6 e4e5 d7d5 e5d6");
  EXPECT_EQ(man("d6"), 10);
  EXPECT_EQ(man("d5"), 0);
  EXPECT_EQ(peca, 0) << "the to-square was empty";
  EXPECT_EQ(materialpa, 500);
}

TEST(MoveList, PromotionsAtTheEndAndInTheMiddle) {
  const std::string race = "a2a4 b7b5 a4b5 a7a6 b5a6 c8b7 a6b7 h7h6 b7a8";
  for (const auto& [letter, value] : {std::pair{'q', 90}, {'r', 50}, {'n', 32}, {'b', 33}}) {
    list(race + letter);
    EXPECT_EQ(man("a8"), value) << letter;
    EXPECT_EQ(nb, 9);
    list(race + letter + " h6h5");
    EXPECT_EQ(man("a8"), value) << letter;
    EXPECT_EQ(man("h5"), -10) << letter;
    EXPECT_EQ(nb, 10);
  }
}

TEST(MoveList, AnUppercasePromotionLetterEndsTheReplayWithAPawnOnTheLastRank) {
  list("a2a4 b7b5 a4b5 a7a6 b5a6 c8b7 a6b7 h7h6 b7a8Q h6h5");
  EXPECT_EQ(man("a8"), 10);
  EXPECT_EQ(man("h5"), 0);
  EXPECT_EQ(nb, 9);
}

TEST(MoveList, TheLastCaptureIsRemembered) {
  list("e2e4 d7d5 e4d5");
  EXPECT_EQ(peca, -10);
  list("e2e4 d7d5 e4d5 d8d5");
  EXPECT_EQ(peca, 10);
}

TEST(MoveList, ALetterOutOfRangeKeepsTheLastNumber) {
  list("e2e4 e7e5 z9f3");  // e7 again
  EXPECT_EQ(jogada.a, 4);
  EXPECT_EQ(jogada.b, 6);
  EXPECT_EQ(jogada.c, 5);
  EXPECT_EQ(jogada.d, 2);
}

TEST(MoveList, PositionsBeyondTheTableAreDropped) {
  std::string line;
  for (int i = 0; i < 600; ++i) line += "g1f3 g8f6 f3g1 f6g8 ";
  line.pop_back();
  list(line);
  EXPECT_EQ(nb, 2400);
  EXPECT_EQ(tabr1[999], tab) << "the start position again, after every fourth move";
  EXPECT_EQ(man("g1"), 32);
}

TEST(MoveList, ResetsWhatAGameNeeds) {
  MAXcut[0] = 1;
  EP = E = alfa0 = ALFA0 = 1;
  curr = DEEP = dddep = peca = 7;
  roque_b = roque_p = 9;
  melhor = guardado[5] = guardado_g[1] = {1, 1, 1, 1};
  FULL3 = FULL4 = FULL5 = 1;
  empp = -5;
  lab::clock_at(1234);
  list("e2e4 e7e5");
  EXPECT_EQ(EP, 0);
  EXPECT_EQ(E, -10000000);
  EXPECT_EQ(alfa0, -16500);
  EXPECT_EQ(ALFA0, -16500);
  EXPECT_EQ(curr + DEEP + dddep + peca + roque_b + roque_p, 0);
  EXPECT_EQ(melhor, sem_lance);
  EXPECT_EQ(guardado[5], sem_lance);
  EXPECT_EQ(guardado_g[1], sem_lance);
  EXPECT_EQ(FULL3 + FULL4 + FULL5, 0);
  EXPECT_EQ(emp, -5);
  EXPECT_EQ(inicio, 1234);
  EXPECT_EQ(MAXcut[0], 1) << "the caps are set with the search";
}

// The side whose figures count at the root is the one of the last search until the replay is over:
// in a fresh process, Black's.
TEST(MoveList, TheRootColourInForceOrientsTheReplay) {
  joga_com_b = 0;
  list("e2e4 d7d5 e4d5 g8f6");
  EXPECT_EQ(materialflot0, -10);
  joga_com_b = 1;
  list("e2e4 d7d5 e4d5 g8f6");
  EXPECT_EQ(materialflot0, 10);
}

// --- What each kind of position line resets ---

constexpr Caminho every_kind[] = {Caminho::primeiro_lance, Caminho::um_lance,
                                  Caminho::lista_ou_fen};

const char* name_of(Caminho kind) {
  return kind == Caminho::primeiro_lance ? "first move"
         : kind == Caminho::um_lance     ? "one move"
                                         : "list or FEN";
}

// Everything that some position line resets, at a value that none gives.
void stir() {
  IIDS = pempatee = FULL3 = FULL4 = FULL5 = Y = deeppromo = SEARCH_E = DEEP9 = EXTRA_EVAL = 9;
  joga_com_b = SCAN1 = SCANT = joga_c_fen = 9;
  EP = E = alfa0 = ALFA0 = materialflot0 = materialba = materialpa = 9;
  materialmaiorb = materialmaiorp = 9;
  curr = DEEP = dddep = peca = roque_b = roque_p = nb = inicio = tempo = emp = emppp = 99;
  npecasb = npecasp = npecasbdp = npecaspdp = 99;
  nodes = 99;
  duplos.pb.fill(9);
  duplos.pp.fill(9);
  jm = {9, 9, 9, 9, 9, 9};
  PR = PRs = PRe = 'x';
  melhor = {9, 9, 9, 9};
  guardado.fill({9, 9, 9, 9});
  guardado_g.fill({9, 9, 9, 9});
  tab.fill(9);
  for (Tabuleiro& t : tabr1) t.fill(9);
  MAXcut.fill(9);
  empp = 3;
  lab::clock_at(1234);
}

void reset(Caminho kind, std::uint8_t extension = 1) {
  SEARCH_EE = extension;
  stir();
  zera_jogo(kind);
  SEARCH_EE = 1;
  empp = -5;
}

TEST(PositionLines, OfEveryKindResetTheGame) {
  for (const Caminho kind : every_kind) {
    SCOPED_TRACE(name_of(kind));
    reset(kind);
    EXPECT_EQ(inicio, 1234);
    EXPECT_EQ(IIDS, 1);
    EXPECT_EQ(pempatee, 1);
    for (const int cleared :
         {+FULL3, +FULL4, +FULL5, +Y, curr, DEEP, dddep, peca, roque_b, roque_p, +deeppromo})
      EXPECT_EQ(cleared, 0);
    EXPECT_EQ(EP, 0);
    EXPECT_EQ(E, -10000000);
    EXPECT_EQ(alfa0, -16500);
    EXPECT_EQ(ALFA0, -16500);
    EXPECT_EQ(nb, 1);
    EXPECT_EQ(doubles(), "");
    EXPECT_EQ((std::string{PR, PRs, PRe}), "000");
    EXPECT_EQ(melhor, sem_lance);
    for (std::size_t n = 1; n <= 23; ++n) {
      EXPECT_EQ(guardado[n], sem_lance) << n;
      EXPECT_EQ(guardado_g[n], sem_lance) << n;
    }
    for (const Tabuleiro& t : tabr1) ASSERT_EQ(std::count(t.begin(), t.end(), 1), 64);
    for (const std::uint8_t extension : {0, 1}) {
      reset(kind, extension);
      EXPECT_EQ(SEARCH_E, extension);
    }
  }
}

TEST(PositionLines, OfTheFirstTwoPliesResetWhatTheirShortScanNeeds) {
  for (const Caminho kind : {Caminho::primeiro_lance, Caminho::um_lance}) {
    SCOPED_TRACE(name_of(kind));
    EXTRA_EVALL = 0;
    reset(kind);
    EXPECT_EQ(EXTRA_EVAL, 1) << "whatever the option says";
    EXTRA_EVALL = 1;
    EXPECT_EQ(DEEP9, 0);
    EXPECT_EQ(tempo, 180000);
    EXPECT_EQ(joga_c_fen, 0);
    EXPECT_EQ(flags(), "000000");
    EXPECT_EQ(joga_com_b, kind == Caminho::primeiro_lance);
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(materialflot0, 0);
    for (const float total : {materialba, materialpa}) EXPECT_EQ(total, 510);
    for (const float total : {materialmaiorb, materialmaiorp}) EXPECT_EQ(total, 320);
    for (const int men : {npecasb, npecasp}) EXPECT_EQ(men, 15);
    for (const int officers : {npecasbdp, npecaspdp}) EXPECT_EQ(officers, 7);
    EXPECT_EQ(emp, 3 - 10);
    EXPECT_EQ(emppp, 3 - 10);
    EXPECT_EQ(SCAN1, 0);
    EXPECT_EQ(SCANT, 1);
    for (std::size_t n = 0; n < 24; ++n)
      EXPECT_EQ(MAXcut[n], 15400 - 1100 * static_cast<float>(n / 2)) << n;
    EXPECT_EQ(man("e1"), 110);
    EXPECT_EQ(man("d8"), -90);
    EXPECT_EQ(std::count(tab.begin(), tab.end(), vazia), 32);
  }
}

TEST(PositionLines, OfLongerGamesLeaveTheRestToThePreparation) {
  reset(Caminho::lista_ou_fen);
  EXPECT_EQ(emp, 3);
  for (const int left : {tempo, emppp, npecasb, npecasp, npecasbdp, npecaspdp}) EXPECT_EQ(left, 99);
  for (const int left : {+EXTRA_EVAL, +DEEP9, +joga_com_b, +SCAN1, +SCANT}) EXPECT_EQ(left, 9);
  for (const float left : {materialflot0, materialba, materialpa, materialmaiorb, MAXcut[7]})
    EXPECT_EQ(left, 9);
  EXPECT_EQ(nodes, 99U);
  EXPECT_EQ(std::count(tab.begin(), tab.end(), 9), 64);
  EXPECT_EQ(jm.R_b_jm, 9);
}

// A record in each of the six tables; afterwards, how many each still has: plies 3 to 5 of White's
// searches, then of Black's.
std::vector<int> records_after(Caminho kind, bool tables_in_use) {
  const auto all = [] {
    return std::array{&tabela_de<3, Cor::b>(), &tabela_de<4, Cor::p>(), &tabela_de<5, Cor::b>(),
                      &tabela_de<3, Cor::p>(), &tabela_de<4, Cor::b>(), &tabela_de<5, Cor::p>()};
  }();
  limpa_tabelas<Cor::b>();
  limpa_tabelas<Cor::p>();
  for (TabelaDeLance* t : all) {
    t->abre({});
    t->fecha(1);
  }
  HASHf = tables_in_use;
  zera_jogo(kind);
  HASHf = 1;
  std::vector<int> left;
  for (const TabelaDeLance* t : all) left.push_back(t->indice());
  return left;
}

TEST(PositionLines, OfTheFirstTwoPliesEmptyTheTablesOfTheirColour) {
  using Left = std::vector<int>;
  EXPECT_EQ(records_after(Caminho::primeiro_lance, true), (Left{0, 0, 0, 1, 1, 1}));
  EXPECT_EQ(records_after(Caminho::um_lance, true), (Left{1, 1, 1, 0, 0, 0}));
  EXPECT_EQ(records_after(Caminho::lista_ou_fen, true), (Left{1, 1, 1, 1, 1, 1}));
  for (const Caminho kind : every_kind)
    EXPECT_EQ(records_after(kind, false), (Left{1, 1, 1, 1, 1, 1})) << name_of(kind);
}

TEST(FirstMoves, ResetTheCounters) {
  materialba = 1;
  zera_jogo(Caminho::primeiro_lance);
  EXPECT_EQ(materialba, 510);
  EXPECT_EQ(materialmaiorp, 320);
  EXPECT_EQ(npecasb, 15);
  EXPECT_EQ(npecaspdp, 7);
  EXPECT_EQ(joga_com_b, 1);
  EXPECT_EQ(SCANT, 1);
  EXPECT_EQ(tempo, 180000);
  EXPECT_EQ(emp, empp - 10);
  zera_jogo(Caminho::um_lance);
  EXPECT_EQ(joga_com_b, 0);
}

TEST(FirstMoves, CapsStandAtTheMateLadder) {
  MAXcut.fill(0);
  zera_jogo(Caminho::primeiro_lance);
  const float ladder[] = {15400, 15400, 14300, 14300, 13200, 13200, 12100, 12100,
                          11000, 11000, 9900,  9900,  8800,  8800,  7700,  7700,
                          6600,  6600,  5500,  5500,  4400,  4400,  3300,  3300};
  for (std::size_t n = 0; n < 24; ++n) EXPECT_EQ(MAXcut[n], ladder[n]) << n;
}

TEST(FirstMoves, AOneMoveLineIsPlayedButNotRecorded) {
  in = "position startpos moves e2e4";
  zera_jogo(Caminho::um_lance);
  recebe_um_lance();
  EXPECT_EQ(man("e4"), 10);
  EXPECT_EQ(doubles(), "e");
  EXPECT_EQ(nb, 1);
  EXPECT_EQ(tabr1[0][0], 1);
}

// --- What an answer leaves on the board ---

void expect_board_after(const std::vector<std::string>& moves) {
  referee::Position p = referee::Position::start();
  for (const std::string& m : moves)
    p = p.after({static_cast<int>(lab::square(m.substr(0, 2))),
                 static_cast<int>(lab::square(m.substr(2, 2))), 0});
  for (int s = 0; s < 64; ++s) {
    const int value = com_sinal(tab[static_cast<std::size_t>(s)]);
    const std::size_t kind = std::string_view(" PNBRQKpnbrqk").find(p.at(s));
    const int values[] = {0, 10, 32, 33, 50, 90, 110, -10, -32, -33, -50, -90, -110};
    EXPECT_EQ(value, values[kind]) << referee::square_name(s);
  }
}

TEST(Answers, OfTheBookAreNotPlayed) {
  lab::dialogue({"position startpos moves a2a3 a7a6", "go wtime 9 btime 9"});
  EXPECT_EQ(lab::dialogue({"position startpos"}), std::vector<std::string>{"bestmove e2e4"});
  expect_board_after({});
  EXPECT_EQ(nodes, 0U);
  lab::dialogue({"position startpos moves d2d4"});
  expect_board_after({"d2d4"});
  lab::dialogue({"position startpos moves e2e4 c7c5"});
  expect_board_after({"e2e4", "c7c5"});
}

TEST(Answers, OfAShortScanArePlayed) {
  const auto ask = [](const std::string& line) {
    const auto answered =
        lab::dialogue({"setoption name Own book value false", "setoption name Deep value 0", line,
                       "setoption name Own book value true", "setoption name Deep value 9"});
    EXPECT_EQ(answered.size(), 2U);
    EXPECT_TRUE(answered.back().starts_with("bestmove ")) << answered.back();
    return answered.back().substr(9);
  };
  const std::string first = ask("position startpos");
  expect_board_after({first});
  const std::string reply = ask("position startpos moves c2c4");
  expect_board_after({"c2c4", reply});
}

// The short scan goes as deep as the option says, and so lives by the hard limit: a share of 180
// seconds, by 30 men a fifteenth.
TEST(Answers, OfAShortScanComeByTheHardLimit) {
  static int readings, early_cuts;
  readings = early_cuts = 0;
  relogio = [] {
    ++readings;
    if (readings <= 5) early_cuts += corte_MAXcut;
    return readings == 1 ? 0 : readings < 5 ? 11999 : 12000;
  };
  const auto answered = lab::dialogue({"setoption name Own book value false", "position startpos",
                                       "setoption name Own book value true"});
  EXPECT_GE(readings, 5);
  EXPECT_EQ(early_cuts, 0) << "until the limit strikes the scan goes on";
  EXPECT_EQ(corte_MAXcut, 1);
  ASSERT_EQ(answered.size(), 3U);
  EXPECT_NE(answered.front().find(" depth 18 "), std::string::npos) << answered.front();
  EXPECT_TRUE(answered.back().starts_with("bestmove ")) << answered.back();
  lab::clock_at(0);
}

constexpr char start[] = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR";

TEST(Fen, SetsBoardSideAndRights) {
  fen(std::string(start) + " w KQkq - 0 1");
  EXPECT_EQ(man("a1"), 50);
  EXPECT_EQ(man("e1"), 110);
  EXPECT_EQ(man("d8"), -90);
  EXPECT_EQ(man("e4"), 0);
  EXPECT_EQ(joga_com_b, 1);
  EXPECT_EQ(flags(), "000000");
  EXPECT_EQ(nb, 1);
  EXPECT_TRUE(brancas_jogam());
  fen(std::string(start) + " b - - 0 1");
  EXPECT_EQ(joga_com_b, 0);
  EXPECT_FALSE(brancas_jogam());
}

TEST(Fen, AnUnknownSideLeavesTheColour) {
  joga_com_b = 1;
  fen(std::string(start) + " x - - 0 1");
  EXPECT_EQ(joga_com_b, 1);
}

TEST(Fen, EachCastlingLetterClearsItsFlags) {
  const std::pair<const char*, const char*> fields[] = {
      {"-", "111111"}, {"K", "011011"},  {"Q", "010111"},   {"k", "101110"},
      {"q", "101101"}, {"Kq", "001001"}, {"KQkq", "000000"}};
  for (const auto& [field, expected] : fields) {
    fen(std::string(start) + " w " + field + " - 0 1");
    EXPECT_EQ(flags(), expected) << field;
  }
}

TEST(Fen, Chess960NeverAllowsTheEngineToCastle) {
  CHESS_960 = 1;
  fen(std::string(start) + " w KQkq e3 0 1");
  EXPECT_EQ(flags(), "111111");
  EXPECT_EQ(doubles(), "e") << "the en-passant field is still found";
  CHESS_960 = 0;
}

TEST(Fen, EnPassantFieldSetsTheFileOfItsColour) {
  for (const char* rights : {"-", "K", "KQkq"}) {
    const std::string head = std::string(start) + " w " + rights + " ";
    fen(head + "e3 0 1");
    EXPECT_EQ(doubles(), "e");
    fen(head + "d6 0 1");
    EXPECT_EQ(doubles(), "D");
    fen(head + "a6");
    EXPECT_EQ(doubles(), "A");
    for (const char* none : {"- 0 1", "e4 0 1", "i3 0 1", "3e 0 1"}) {
      fen(head + none);
      EXPECT_EQ(doubles(), "") << none;
    }
  }
}

TEST(Fen, CharactersWithoutAMeaningAreSkippedInEveryRank) {
  tab.fill(vazia);
  fen("4k3/8/ 8/1 P6/8/8/8/4/K3 w - - 0 1");  // a blank ends the lowest rank, a stroke the others
  EXPECT_EQ(man("e8"), -110);
  EXPECT_EQ(man("b5"), 10);
  EXPECT_EQ(man("e1"), 110);
  EXPECT_EQ(joga_com_b, 1);
  EXPECT_EQ(std::count(tab.begin(), tab.end(), vazia), 61);
}

TEST(Fen, TheCastlingFieldIsReadForFiveColumns) {
  fen(std::string(start) + " w xxxxK - 0 1");
  EXPECT_EQ(flags(), "011011");
  fen(std::string(start) + " w xxxxxK - 0 1");
  EXPECT_EQ(flags(), "111111");
}

TEST(Fen, MovesAreReplayed) {
  fen(std::string(start) + " w KQkq - 0 1 moves e2e4 e7e5 g1f3");
  EXPECT_EQ(nb, 3);
  EXPECT_EQ(man("f3"), 32);
  EXPECT_FALSE(brancas_jogam());
  EXPECT_EQ(joga_com_b, 1) << "the side of the line until the search is prepared";
  fen(std::string(start) + " b KQkq - 0 1 moves e7e5 e2e4");
  EXPECT_FALSE(brancas_jogam());
  fen(std::string(start) + " b KQkq - 0 1 moves e7e5");
  EXPECT_TRUE(brancas_jogam());
}

TEST(Fen, TheWordMovesIsLookedForThirtyColumnsFar) {
  const auto with_gap = [](int column_from_board_end) {
    std::string tail = " w KQkq - 0 1";
    tail.resize(static_cast<std::size_t>(column_from_board_end), ' ');
    return std::string(start) + tail + "moves e2e4";
  };
  fen(with_gap(30));
  EXPECT_EQ(man("e4"), 10);
  fen(with_gap(31));
  EXPECT_EQ(man("e4"), 0);
}

TEST(Fen, WithoutMovesTheCountersStay) {
  list("e2e4 d7d5 e4d5");
  ASSERT_EQ(materialpa, 500);
  fen("4k3/8/8/8/8/8/8/4K2R w K - 0 1");
  EXPECT_EQ(materialpa, 500);
  EXPECT_EQ(npecasb, 15);
  EXPECT_EQ(tabr1[0][0], 1);
}

TEST(Fen, NothingIsWrittenOutsideARank) {
  fen("8/8/8/8/8/8/8/8 w - - 0 1");
  ASSERT_EQ(std::count(tab.begin(), tab.end(), vazia), 64);
  fen("rrrrrrrrr/8p/44P/pppp5P/8/8/8/8 w - - 0 1");
  EXPECT_EQ(man("h8"), -50);
  EXPECT_EQ(man("h7"), 0);
  EXPECT_EQ(man("h6"), 0);
  EXPECT_EQ(man("d5"), -10);
  EXPECT_EQ(man("h5"), 0);
  EXPECT_EQ(std::count(tab.begin(), tab.end(), vazia), 64 - 8 - 4);
}

TEST(Fen, UnmentionedSquaresAndUnknownLettersLeaveTheBoard) {
  fen(std::string(start) + " w KQkq - 0 1");
  fen("////////");
  EXPECT_EQ(man("e1"), 110);
  fen("x9?/8");
  EXPECT_EQ(man("a8"), -50) << "skipped letters advance nothing";
  EXPECT_EQ(man("e7"), 0);
  EXPECT_EQ(man("e1"), 110) << "the board ends where the line ends";
}

TEST(Fen, ALineThatEndsEarlyGoesAsFarAsItGot) {
  const std::string whole = "position fen 4k3/8/8/8/8/8/8/4K2R w K e3 0 1";
  for (std::size_t n = 10; n <= whole.size(); ++n) {
    tab.fill(vazia);
    in = whole.substr(0, n);
    zera_jogo(Caminho::lista_ou_fen);
    recebe_fen();
    const auto men = 64 - std::count(tab.begin(), tab.end(), vazia);
    EXPECT_EQ(men, n < 15 ? 0 : n < 31 ? 1 : n < 33 ? 2 : 3) << in;
  }
}

TEST(GameKey, IsTheLinePaddedWithNines) {
  guarda_linha("position startpos");
  EXPECT_EQ(std::string(inn.data(), 19), "position startpos99");
  EXPECT_EQ(inn.back(), '9');
  EXPECT_EQ(HASH_MEM, 1);
}

}  // namespace
}  // namespace korvu
