// The game memory: what is a hit, which record wins, how the ring turns.
#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

#include "memory/game_memory.h"

namespace {

struct Answer {
  float e;
  int a, b, c, d;
  char promotion;
  friend bool operator==(const Answer&, const Answer&) = default;
};

void PrintTo(const Answer& x, std::ostream* os) {
  *os << x.e << ' ' << x.a << x.b << x.c << x.d << x.promotion;
}

void put(const Answer& x) {
  korvu::E = x.e;
  korvu::jogada = {x.a, x.b, x.c, x.d};
  korvu::PR = x.promotion;
}

Answer present() {
  const korvu::Jogada& j = korvu::jogada;
  return {korvu::E, j.a, j.b, j.c, j.d, korvu::PR};
}

constexpr Answer nothing = {-777, 7, 7, 7, 7, '?'};

void remember(const std::string& line, int tempo, int deep, const Answer& answer) {
  korvu::guarda_linha(line);
  korvu::deep = deep;
  put(answer);
  korvu::hash_mem_build(tempo);
}

// What the memory answers; the slots of the answer must stay as they were on a miss.
std::optional<Answer> ask(const std::string& line, int tempo, int deep) {
  korvu::guarda_linha(line);
  korvu::deep = deep;
  korvu::mem_TEST = 0;
  put(nothing);
  korvu::hash_mem_scan(tempo);
  EXPECT_EQ(korvu::mem_TEST == 0, present() == nothing);
  EXPECT_EQ(korvu::deep, deep);
  if (korvu::mem_TEST == 0) return std::nullopt;
  return present();
}

Answer numbered(int k) {
  return {static_cast<float>(k), k % 8, k / 8 % 8, k / 64 % 8, k / 512 % 8, k % 2 ? 'q' : '0'};
}

class GameMemory : public testing::Test {
 protected:
  void SetUp() override { korvu::limpa_memoria(); }
  void TearDown() override { korvu::limpa_memoria(); }
};

constexpr const char* line = "position startpos moves e2e4 e7e5 g1f3";

}  // namespace

TEST_F(GameMemory, AnEmptyMemoryKnowsNothing) {
  EXPECT_EQ(ask(line, 0, 0), std::nullopt);
  EXPECT_EQ(ask("", 0, 0), std::nullopt);
  EXPECT_EQ(ask(std::string(999, '9'), 0, 0), std::nullopt);
}

TEST_F(GameMemory, GivesScoreMoveAndPromotion) {
  const Answer answer = {-12.5F, 1, 6, 2, 7, 'q'};
  remember(line, 300000, 9, answer);
  EXPECT_EQ(ask(line, 300000, 9), answer);
}

TEST_F(GameMemory, AnswersWhatIsAskedWithAtMostItsTime) {
  remember(line, 200000, 9, numbered(1));
  EXPECT_EQ(ask(line, 200000, 9), numbered(1));
  EXPECT_EQ(ask(line, 10000, 9), numbered(1));
  EXPECT_EQ(ask(line, 200001, 9), std::nullopt);
  EXPECT_EQ(ask(line, 300000, 9), std::nullopt);
}

TEST_F(GameMemory, AnswersWhatIsAskedWithAtMostItsDepth) {
  remember(line, 200000, 9, numbered(1));
  EXPECT_EQ(ask(line, 200000, 7), numbered(1));
  EXPECT_EQ(ask(line, 200000, 0), numbered(1));
  EXPECT_EQ(ask(line, 200000, 10), std::nullopt);
}

TEST_F(GameMemory, DepthIsThatOfTheEndOfTheSearch) {
  remember(line, 200000, 13, numbered(1));
  EXPECT_EQ(ask(line, 200000, 9), numbered(1));
}

TEST_F(GameMemory, TheKeyIsTheLineLetterForLetter) {
  remember(line, 200000, 9, numbered(1));
  EXPECT_EQ(ask("position startpos moves e2e4 e7e5 g1f4", 200000, 9), std::nullopt);
  EXPECT_EQ(ask("position startpos moves e2e4 e7e5 g1f3 ", 200000, 9), std::nullopt);
  EXPECT_EQ(ask("position startpos moves e2e4 e7e5 g1f", 200000, 9), std::nullopt);
  EXPECT_EQ(ask("Position startpos moves e2e4 e7e5 g1f3", 200000, 9), std::nullopt);
  EXPECT_EQ(ask("position startpos moves g1f3 e7e5 e2e4", 200000, 9), std::nullopt);
}

TEST_F(GameMemory, AnEndingOfNinesIsLostInThePadding) {
  remember("position fen 8/8 9", 200000, 9, numbered(1));
  EXPECT_EQ(ask("position fen 8/8 ", 200000, 9), numbered(1));
  EXPECT_EQ(ask("position fen 8/8 999", 200000, 9), numbered(1));
  EXPECT_EQ(ask("position fen 8/8", 200000, 9), std::nullopt);
}

TEST_F(GameMemory, TheFirstRecordThatFitsWins) {
  remember(line, 100000, 9, numbered(1));
  remember(line, 300000, 9, numbered(2));
  remember(line, 300000, 11, numbered(3));
  EXPECT_EQ(ask(line, 100000, 9), numbered(1));  // the old one stands in front
  EXPECT_EQ(ask(line, 200000, 9), numbered(2));
  EXPECT_EQ(ask(line, 100000, 11), numbered(3));
  EXPECT_EQ(ask(line, 400000, 9), std::nullopt);
}

TEST_F(GameMemory, OtherLinesInFrontDoNotMatter) {
  for (int k = 0; k < 200; ++k)
    remember("position startpos moves e2e4 " + std::to_string(k) + "x", 300000, 9, numbered(k));
  for (const int k : {0, 1, 57, 199})
    EXPECT_EQ(ask("position startpos moves e2e4 " + std::to_string(k) + "x", 300000, 9),
              numbered(k));
}

TEST_F(GameMemory, OfALine999CharactersFitAnd1000DoNot) {
  korvu::guarda_linha(std::string(999, 'm'));
  EXPECT_EQ(korvu::HASH_MEM, 1);
  korvu::guarda_linha(std::string(1000, 'm'));
  EXPECT_EQ(korvu::HASH_MEM, 0);
  korvu::guarda_linha(std::string(5000, 'm'));
  EXPECT_EQ(korvu::HASH_MEM, 0);
  korvu::guarda_linha("");
  EXPECT_EQ(korvu::HASH_MEM, 1);
}

TEST_F(GameMemory, TheLastOf999CharactersCounts) {
  const std::string start(998, 'm');
  remember(start + 'a', 300000, 9, numbered(1));
  remember(start + 'b', 300000, 9, numbered(2));
  EXPECT_EQ(ask(start + 'a', 300000, 9), numbered(1));
  EXPECT_EQ(ask(start + 'b', 300000, 9), numbered(2));
  EXPECT_EQ(ask(start + 'c', 300000, 9), std::nullopt);
}

TEST_F(GameMemory, ALineLeavesNothingOfTheOneBefore) {
  remember("position fen", 300000, 9, numbered(1));
  korvu::guarda_linha(std::string(999, 'z'));
  EXPECT_EQ(ask("position fen", 300000, 9), numbered(1));
}

TEST_F(GameMemory, ClearingForgetsAndStartsOver) {
  for (int k = 0; k < 5; ++k) remember(std::to_string(k) + "x", 300000, 9, numbered(k));
  EXPECT_EQ(korvu::indice_da_memoria(), 5);
  korvu::limpa_memoria();
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
  remember("new", 300000, 9, numbered(8));
  EXPECT_EQ(ask("new", 300000, 9), numbered(8));
  for (int k = 0; k < 5; ++k) EXPECT_EQ(ask(std::to_string(k) + "x", 300000, 9), std::nullopt) << k;
}

TEST_F(GameMemory, TurnsAfter99999Records) {
  const auto name = [](int k) { return std::to_string(k) + "x"; };
  for (int k = 0; k < 99998; ++k) remember(name(k), 300000, 9, numbered(k));
  EXPECT_EQ(korvu::indice_da_memoria(), 99998);
  remember(name(99998), 300000, 9, numbered(99998));
  EXPECT_EQ(korvu::indice_da_memoria(), 0);
  for (const int k : {0, 1, 50000, 99997, 99998})
    EXPECT_EQ(ask(name(k), 300000, 9), numbered(k)) << k;
  remember("over", 300000, 9, numbered(5));
  EXPECT_EQ(korvu::indice_da_memoria(), 1);
  EXPECT_EQ(ask("over", 300000, 9), numbered(5));
  EXPECT_EQ(ask(name(0), 300000, 9), std::nullopt);  // the oldest went
  EXPECT_EQ(ask(name(1), 300000, 9), numbered(1));
  // The newest stands in front of an older record of the same line.
  remember(name(77777), 300000, 9, numbered(6));
  EXPECT_EQ(ask(name(77777), 300000, 9), numbered(6));
  korvu::limpa_memoria();
  EXPECT_EQ(ask(name(99998), 300000, 9), std::nullopt);
}

// --- Against a plain list ---

namespace {

struct PlainRecord {
  std::string line;
  int tempo, deep;
  Answer answer;
};

std::optional<Answer> find(const std::vector<PlainRecord>& list, const std::string& text, int tempo,
                           int deep) {
  for (const PlainRecord& r : list)
    if (tempo <= r.tempo && deep <= r.deep && text == r.line) return r.answer;
  return std::nullopt;
}

}  // namespace

TEST_F(GameMemory, AgreesWithAPlainList) {
  std::mt19937 dice(31);
  std::vector<PlainRecord> list;
  int hits = 0, misses = 0;
  const auto text = [&] {
    return "position startpos moves " + std::string(dice() % 3, 'a') + std::to_string(dice() % 60) +
           "-";
  };
  for (int k = 0; k < 6000; ++k) {
    const std::string asked = text();
    const int tempo = static_cast<int>(1 + dice() % 10) * 10000;
    const int deep = static_cast<int>(dice() % 12);
    if (dice() % 5 == 0) {
      const Answer answer = numbered(k);
      remember(asked, tempo, deep, answer);
      list.push_back({asked, tempo, deep, answer});
    } else if (dice() % 2000 == 0) {
      korvu::limpa_memoria();
      list.clear();
    } else {
      const std::optional<Answer> expected = find(list, asked, tempo, deep);
      ASSERT_EQ(ask(asked, tempo, deep), expected) << asked << " at step " << k;
      ++(expected ? hits : misses);
    }
  }
  EXPECT_GT(hits, 1000);
  EXPECT_GT(misses, 200);
}
