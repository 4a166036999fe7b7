// What the engine makes of the companion's lines, slot by slot.
#include "companion/question.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "board/draw.h"
#include "board/state.h"
#include "companion/words.h"
#include "eval/knobs.h"
#include "eval/plain_twin.h"
#include "frontend/book.h"
#include "frontend/line.h"
#include "frontend/position.h"
#include "support/lab.h"
#include "support/positions.h"

namespace {

using companion::Game;
using companion::Question;
using companion::question_for;
using rules::Position;

Game game_of(const std::string& fen, const std::string& moves = "") {
  const auto read =
      companion::read_game(companion::words_of(fen + (moves.empty() ? "" : " moves " + moves)));
  EXPECT_EQ(read.complaint, "");
  return read.game.value();
}

Game game_from_fen(const std::string& fen, const std::string& moves = "") {
  return game_of("fen " + fen, moves);
}

// The engine takes the position line in, up to the search.
void take_in(const std::string& line) {
  korvu::in = line;
  korvu::zera_jogo(korvu::Caminho::lista_ou_fen);
  if (line.starts_with("position fen"))
    korvu::recebe_fen();
  else
    korvu::recebe_lista();
  korvu::joga_com_b = korvu::brancas_jogam();
}

// Everything that the companion sends before the go, with the lines that the engine answers.
std::vector<std::string> ask(const Question& q) {
  std::vector<std::string> answers;
  if (q.primer) answers = lab::dialogue({*q.primer});
  take_in(q.position);
  return answers;
}

int value_of(char man) {
  switch (man) {
    case 'P':
      return 10;
    case 'N':
      return 32;
    case 'B':
      return 33;
    case 'R':
      return 50;
    case 'Q':
      return 90;
    case 'K':
      return 110;
    default:
      return 0;
  }
}

struct Side {
  int total = 0, officers_total = 0, men = 0, officers = 0;
};

Side side_of(const Position& p, bool white) {
  Side side;
  for (int s = 0; s < 64; ++s) {
    const char man = p.at(s);
    if (man == ' ' || (man >= 'A' && man <= 'Z') != white) continue;
    const char upper = white ? man : static_cast<char>(man - 'a' + 'A');
    const bool king = upper == 'K', officer = !king && upper != 'P';
    side.total += value_of(upper);
    side.men += !king;
    side.officers += officer;
    side.officers_total += officer ? value_of(upper) : 0;
  }
  return side;
}

plain::Board board_of(const Position& p) {
  plain::Board board{};
  for (std::size_t s = 0; s < 64; ++s) {
    const char man = p.at(static_cast<int>(s));
    board[s] = man >= 'a' ? -value_of(static_cast<char>(man - 'a' + 'A')) : value_of(man);
  }
  return board;
}

void expect_counters(const Position& p) {
  const Side w = side_of(p, true), b = side_of(p, false);
  EXPECT_EQ(korvu::materialba, static_cast<float>(w.total));
  EXPECT_EQ(korvu::materialpa, static_cast<float>(b.total));
  EXPECT_EQ(korvu::materialmaiorb, static_cast<float>(w.officers_total));
  EXPECT_EQ(korvu::materialmaiorp, static_cast<float>(b.officers_total));
  EXPECT_EQ(korvu::npecasb, w.men);
  EXPECT_EQ(korvu::npecasp, b.men);
  EXPECT_EQ(korvu::npecasbdp, w.officers);
  EXPECT_EQ(korvu::npecaspdp, b.officers);
  EXPECT_EQ(8 * korvu::p_x_Rb + korvu::p_y_Rb, p.king_square(true));
  EXPECT_EQ(8 * korvu::p_x_Rp + korvu::p_y_Rp, p.king_square(false));
}

plain::Reading reading(const Position& p, bool white_root) {
  plain::Setting set = plain::setting_from_slots();
  const int w = p.king_square(true), b = p.king_square(false);
  set.king_file = {w / 8, b / 8};
  set.king_rank = {w % 8, b % 8};
  return plain::root_reading(board_of(p), set, white_root ? plain::white : plain::black);
}

// The two figures of the root are those of the side to move.
void expect_orientation(const Position& p) {
  const bool white = p.white_to_move();
  EXPECT_EQ(korvu::materialflot0,
            static_cast<float>(side_of(p, white).total - side_of(p, !white).total));
  EXPECT_NEAR(korvu::shashinn, reading(p, white).shashinn, 1e-4);
}

void expect_passed_squares(const Position& p) {
  const auto passed = p.en_passant();
  for (int file = 0; file < 8; ++file) {
    const auto f = static_cast<std::size_t>(file);
    EXPECT_EQ(korvu::duplos.pb[f], passed == rules::square(file, 2));
    EXPECT_EQ(korvu::duplos.pp[f], passed == rules::square(file, 5));
  }
}

void expect_rights(const Position& p) {
  const rules::CastlingRights& r = p.castling();
  const korvu::Movidos& jm = korvu::jm;
  EXPECT_EQ(!jm.R_b_jm && !jm.T_b_h_jm, r.white_king_side);
  EXPECT_EQ(!jm.R_b_jm && !jm.T_b_a_jm, r.white_queen_side);
  EXPECT_EQ(!jm.R_p_jm && !jm.T_p_h_jm, r.black_king_side);
  EXPECT_EQ(!jm.R_p_jm && !jm.T_p_a_jm, r.black_queen_side);
}

void expect_board_and_side(const Position& p) {
  EXPECT_EQ(plain::board_from_bytes(korvu::tab), board_of(p));
  EXPECT_EQ(korvu::joga_com_b, p.white_to_move());
}

class TakenIn : public testing::Test {
 protected:
  // Whatever the engine has been about, it is ready for a position line.
  void SetUp() override { lab::dialogue({"setoption name Own book value true"}); }
};

}  // namespace

TEST_F(TakenIn, ABareFenComesOutAsItIsMeant) {
  int cases = 0, passed = 0, rights = 0, sign_matters = 0;
  std::mt19937 dice(1);
  for (const std::string& fen : referee::varied_fens()) {
    SCOPED_TRACE(fen);
    const Position p = Position::from_fen(fen);
    korvu::joga_com_b = dice() % 2;  // the root colour of the search before
    const Question q = question_for(game_from_fen(fen), true, korvu::joga_com_b);
    EXPECT_FALSE(q.primer);
    EXPECT_EQ(q.white_root_after, p.white_to_move());
    EXPECT_TRUE(ask(q).empty());
    expect_board_and_side(p);
    expect_rights(p);
    expect_passed_squares(p);
    expect_counters(p);
    expect_orientation(p);
    if (HasFailure()) FAIL() << q.position;
    ++cases;
    passed += p.en_passant().has_value();
    rights += !korvu::jm.R_b_jm || !korvu::jm.R_p_jm;
    sign_matters += std::abs(reading(p, true).shashinn - reading(p, false).shashinn) > 1e-3;
  }
  RecordProperty("cases", cases);
  EXPECT_GE(cases, 500);
  EXPECT_GT(passed, 20);
  EXPECT_GT(rights, 50);
  EXPECT_GT(sign_matters, 400);
}

TEST_F(TakenIn, TheSameFenWithoutMovesWouldKeepTheCountersOfTheLineBefore) {
  const std::string fen = "4k3/8/8/8/8/8/8/4KQ2 w - - 0 1";
  lab::dialogue({"position startpos"});
  take_in("position fen " + fen);
  EXPECT_EQ(korvu::materialba, 510);
  ask(question_for(game_from_fen(fen), true, true));
  EXPECT_EQ(korvu::materialba, 200);
  EXPECT_EQ(korvu::materialpa, 110);
}

TEST_F(TakenIn, ARecentDoubleStepIsPlayedOnce) {
  // White may take d6 in passing.
  const std::string fen = "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1";
  ask(question_for(game_from_fen(fen), true, false));
  EXPECT_TRUE(korvu::duplos.pp[3]);
  expect_board_and_side(Position::from_fen(fen));
}

TEST_F(TakenIn, GamesFromAFenComeOutMoveByMove) {
  std::mt19937 dice(2);
  int positions = 0, promotions = 0, in_passing = 0;
  const auto& fens = referee::varied_fens();
  for (std::size_t i = 0; i < fens.size(); i += 4) {
    Game game = game_from_fen(fens[i]);
    for (int ply = 0; ply < 9; ++ply) {
      const auto legal = game.now.legal_moves();
      if (legal.empty()) break;
      const rules::Move m = legal[dice() % legal.size()];
      const char man = game.now.at(m.from);
      const bool pawn = man == 'P' || man == 'p';
      promotions += m.promo != 0;
      in_passing += pawn && m.from / 8 != m.to / 8 && game.now.at(m.to) == ' ';
      const int taken = board_of(game.now)[static_cast<std::size_t>(m.to)];
      game.moves.push_back(m);
      game.now = game.now.after(m);
      if (game.now.legal_moves().empty()) break;
      korvu::joga_com_b = dice() % 2;
      const Question q = question_for(game, true, korvu::joga_com_b);
      SCOPED_TRACE(q.position);
      EXPECT_FALSE(q.primer && !game.from_the_start);
      ask(q);
      expect_board_and_side(game.now);
      expect_passed_squares(game.now);
      expect_counters(game.now);
      expect_orientation(game.now);
      // What the last move took counts in the caps.
      EXPECT_EQ(korvu::peca, taken);
      if (HasFailure()) FAIL();
      ++positions;
    }
  }
  EXPECT_GT(positions, 1000);
  EXPECT_GT(promotions, 10);
  EXPECT_GT(in_passing, 3);
}

namespace {

// Would the engine see the position as a repetition: after its own move, or after the reply?
bool seen_again(const Position& p, bool after_the_reply) {
  korvu::pempatee = 1;
  korvu::deeppromo = after_the_reply;
  for (std::size_t s = 0; s < 64; ++s) korvu::tab2[s] = static_cast<unsigned char>(board_of(p)[s]);
  korvu::verifica_empate();
  korvu::deeppromo = 0;
  return korvu::pempate;
}

struct Shuffle {
  const char* fen;
  const char* moves;
};

// Kings and knights go to and fro. Both sides begin, both are to move, on moves that can be undone.
const Shuffle shuffles[] = {
    {"4k1n1/p7/8/8/8/8/P7/4K1N1 w - - 0 1", "g1f3 g8f6 f3g1 f6g8 g1f3 g8f6 f3g1 f6g8"},
    {"4k1n1/p7/8/8/8/8/P7/4K1N1 w - - 0 1", "g1f3 g8f6 f3g1 f6g8 g1f3 g8f6 f3g1"},
    {"4k1n1/p7/8/8/8/8/P7/4K1N1 b - - 0 1", "g8f6 g1f3 f6g8 f3g1 g8f6 g1f3 f6g8 f3g1"},
    {"4k1n1/p7/8/8/8/8/P7/4K1N1 b - - 0 1", "g8f6 g1f3 f6g8 f3g1 g8f6 g1f3 f6g8"},
};

}  // namespace

// The engine's rule: one earlier position is enough after its own move, two after a reply.
TEST_F(TakenIn, RepetitionsOfAGameFromAFenAreSeen) {
  int own = 0, replies = 0;
  for (const Shuffle& shuffle : shuffles) {
    const Game game = game_from_fen(shuffle.fen, shuffle.moves);
    ask(question_for(game, true, true));
    SCOPED_TRACE(korvu::in);
    std::vector<Position> reached;
    Position p = game.start;
    for (const rules::Move& m : game.moves) reached.push_back(p = p.after(m));
    for (const Position& at : reached) {
      const bool engine_has_moved = at.white_to_move() != game.now.white_to_move();
      const auto times =
          std::ranges::count(reached, at.repetition_key(), &Position::repetition_key);
      EXPECT_EQ(seen_again(at, !engine_has_moved), engine_has_moved || times >= 2) << at.fen();
      ++(engine_has_moved ? own : replies);
    }
  }
  EXPECT_GE(own, 14);
  EXPECT_GE(replies, 14);
}

// --- Games from the start position ---

TEST(Question, AGameFromTheStartGoesAsItIs) {
  const Game game = game_of("startpos", "d2d4 d7d5 c2c4 e7e6");
  EXPECT_EQ(question_for(game, true, true).position, "position startpos moves d2d4 d7d5 c2c4 e7e6");
  EXPECT_FALSE(question_for(game, true, true).primer);
}

TEST(Question, TheStartPositionAsAFenIsTheStartPosition) {
  const Game game =
      game_from_fen("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", "e2e4 e7e5");
  EXPECT_EQ(question_for(game, true, true).position, "position startpos moves e2e4 e7e5");
}

TEST_F(TakenIn, BookLinesAreAnsweredAtOnce) {
  for (const std::span<const korvu::Entrada> book :
       {korvu::livro_de_um_lance(), korvu::livro_b(), korvu::livro_p()})
    for (const korvu::Entrada& entry : book) {
      const Game game = game_of("startpos", std::string(entry.lances));
      EXPECT_TRUE(companion::in_the_book(game));
      const Question q = question_for(game, true, true);
      EXPECT_FALSE(q.primer);
      EXPECT_EQ(lab::dialogue({q.position}),
                std::vector<std::string>{"bestmove " + std::string(entry.resposta)});
      EXPECT_EQ(korvu::joga_com_b, q.white_root_after || game.moves.size() >= 2);
      korvu::joga_com_b = 1;
    }
  EXPECT_EQ(lab::dialogue({question_for(Game{}, true, false).position}),
            std::vector<std::string>{"bestmove e2e4"});
}

// The twenty first moves: six have an answer in the book, the others are searched.
TEST_F(TakenIn, NoFirstMoveStaysUnanswered) {
  int searched = 0;
  for (const rules::Move& m : Position::start().legal_moves()) {
    const Game game = game_of("startpos", m.text());
    const Question q = question_for(game, true, true);
    SCOPED_TRACE(q.position);
    if (companion::in_the_book(game)) {
      EXPECT_EQ(q.position, "position startpos moves " + m.text());
      continue;
    }
    ++searched;
    ask(q);
    expect_board_and_side(game.now);
    expect_rights(game.now);
    expect_passed_squares(game.now);
    expect_counters(game.now);
    expect_orientation(game.now);
    // Without a clock worth the name the engine answers with one search.
    const auto lines = lab::dialogue({q.position, "go wtime 900 btime 900 winc 0 binc 0"});
    ASSERT_FALSE(lines.empty());
    EXPECT_TRUE(lines.back().starts_with("bestmove ")) << lines.back();
  }
  EXPECT_EQ(searched, 14);
}

// Without the book the first two plies would be scanned without regard to any limit.
TEST_F(TakenIn, WithoutTheBookTheFirstPliesAreSearched) {
  for (const std::string moves : {"", "e2e4"}) {
    const Game game = game_of("startpos", moves);
    const Question q = question_for(game, false, false);
    EXPECT_TRUE(q.position.starts_with("position fen "));
    ask(q);
    expect_board_and_side(game.now);
    expect_counters(game.now);
    expect_orientation(game.now);
    expect_passed_squares(game.now);
  }
}

// After a capture, so that the sign of the material counts.
TEST_F(TakenIn, AnotherRootColourIsPrimed) {
  const Game white = game_of("startpos", "d2d4 e7e5 d4e5 b8c6"),
             black = game_of("startpos", "d2d4 e7e5 d4e5");
  for (const Game& game : {white, black})
    for (const bool root : {true, false}) {
      const Question q = question_for(game, true, root);
      EXPECT_EQ(q.primer.has_value(), root != game.now.white_to_move());
      korvu::joga_com_b = root;
      const std::vector<std::string> answers = ask(q);
      EXPECT_EQ(answers.size(), q.primer ? 1U : 0U);
      expect_board_and_side(game.now);
      expect_counters(game.now);
      expect_orientation(game.now);
      EXPECT_EQ(std::abs(korvu::materialflot0), 10);
    }
}
