// A leaf's value never comes from another leaf: each input changed alone between two evaluations,
// and many boards on the same records, against the plain twin.
#include "eval/leaf_cache.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <set>
#include <vector>

#include "eval/bench.h"
#include "eval/leaf.h"
#include "support/positions.h"

namespace korvu {
namespace {

// --- The four members against the twin ---

struct Member {
  plain::Side root, to_move;
  void (*run)();
};
constexpr Member members[] = {
    {plain::white, plain::white, extra_eval<Cor::b, Cor::b>},
    {plain::white, plain::black, extra_eval<Cor::b, Cor::p>},
    {plain::black, plain::black, extra_eval<Cor::p, Cor::p>},
    {plain::black, plain::white, extra_eval<Cor::p, Cor::b>},
};

// What an evaluation leaves, as the engine and as the twin have it.
struct Value {
  float correction;
  int drawn;
  std::array<float, 6> sums;
};
Value valued(const Member& m) {
  EMPAT = 7;
  extraeval = 77;
  m.run();
  return {
      extraeval, EMPAT, {atack_ksf_b, defesa_ksf_b, centro_b, atack_ksf_p, defesa_ksf_p, centro_p}};
}
Value told_plainly(const Member& m) {
  const plain::Leaf l =
      plain::leaf(plain::board_from_bytes(tab2), plain::setting_from_slots(), m.root, m.to_move);
  const plain::Figures &w = l.figures[plain::white], &b = l.figures[plain::black];
  return {
      l.correction, l.drawn ? 1 : 0, {w.kattack, w.kdefend, w.cen, b.kattack, b.kdefend, b.cen}};
}

bool same(const Value& a, const Value& b) {
  for (std::size_t k = 0; k < a.sums.size(); ++k)
    if (!bench::same_bits(a.sums[k], b.sums[k])) return false;
  return bench::same_sum(a.correction, b.correction) && a.drawn == b.drawn;
}

// Evaluates with one member, and again: the second time the record is there. Gives the twin's.
Value expect_value(const Member& m, const std::string& when) {
  const Value should = told_plainly(m);
  EXPECT_TRUE(same(valued(m), should)) << when << '\n' << bench::bench_state();
  EXPECT_TRUE(same(valued(m), should)) << when << ", again\n" << bench::bench_state();
  return should;
}

// --- The inputs, each with a change of its own ---

template <class T, std::size_t n>
void to_next(T& slot, const T (&values)[n]) {
  std::size_t k = 0;
  while (k < n && values[k] != slot) ++k;
  slot = values[(k + 1) % n];
}

struct Input {
  const char* name;
  std::function<void(std::mt19937&)> change;
};

// A man comes, goes, or becomes another; kings stay.
void change_a_square(std::mt19937& dice) {
  constexpr std::uint8_t codes[] = {0, 10, 246, 32, 224, 33, 223, 50, 206, 90, 166};
  for (;;) {
    std::uint8_t& square = tab2[dice() % 64];
    const std::uint8_t code = codes[dice() % std::size(codes)];
    if (square == 110 || square == 146 || square == code) continue;
    square = code;
    return;
  }
}

void move_king_slot(int& slot, std::mt19937& dice) {
  slot = (slot + 1 + static_cast<int>(dice() % 7)) % 8;
}

const std::vector<Input>& inputs() {
  static const std::vector<Input> all = {
      {"agres",
       [](std::mt19937&) {
         to_next(agres, {0.0F, 1.0F, 2.0F, 9.0F});
       }},
      {"agresprxrei",
       [](std::mt19937&) {
         to_next(agresprxrei, {0.0F, 1.0F, 2.0F, 7.0F});
       }},
      {"MOB",
       [](std::mt19937&) {
         to_next(MOB, {0.0F, 2.0F, 5.0F, 9.0F});
       }},
      {"PM",
       [](std::mt19937&) {
         to_next(PM, {0.0F, 2.0F, 5.0F, 9.0F});
       }},
      {"roque_v",
       [](std::mt19937&) {
         to_next(roque_v, {0, 1, 3, 9});
       }},
      {"piecesac",
       [](std::mt19937&) {
         to_next(piecesac, {5, 1, 50});
       }},
      {"shashinn", [](std::mt19937&) { shashinn += 3.5F; }},
      {"shashinn, a little",
       [](std::mt19937&) { shashinn = std::nextafterf(shashinn, 99) + 0.01F; }},
      {"extraevalll", [](std::mt19937&) { extraevalll += 0.125F; }},
      {"npecasb",
       [](std::mt19937&) {
         to_next(npecasb, {0, 10, 11, 15});
       }},
      {"npecasp",
       [](std::mt19937&) {
         to_next(npecasp, {0, 10, 11, 15});
       }},
      {"materialmaiorb",
       [](std::mt19937&) {
         to_next(materialmaiorb, {90.0F, 91.0F});
       }},
      {"materialmaiorp",
       [](std::mt19937&) {
         to_next(materialmaiorp, {90.0F, 91.0F});
       }},
      {"p_x_Rb", [](std::mt19937& dice) { move_king_slot(p_x_Rb, dice); }},
      {"p_y_Rb", [](std::mt19937& dice) { move_king_slot(p_y_Rb, dice); }},
      {"p_x_Rp", [](std::mt19937& dice) { move_king_slot(p_x_Rp, dice); }},
      {"p_y_Rp", [](std::mt19937& dice) { move_king_slot(p_y_Rp, dice); }},
      {"roque_b",
       [](std::mt19937&) {
         to_next(roque_b, {0, 2, 5, 10});
       }},
      {"roque_p",
       [](std::mt19937&) {
         to_next(roque_p, {0, 2, 5, 10});
       }},
      {"a square", change_a_square},
  };
  return all;
}

// Takes the inputs back to what they were.
class Kept {
 public:
  Kept() = default;
  ~Kept() {
    tab2 = board_;
    agres = reals_[0];
    agresprxrei = reals_[1];
    MOB = reals_[2];
    PM = reals_[3];
    shashinn = reals_[4];
    extraevalll = reals_[5];
    materialmaiorb = reals_[6];
    materialmaiorp = reals_[7];
    for (std::size_t k = 0; k < wholes_.size(); ++k) *whole(k) = wholes_[k];
  }
  Kept(const Kept&) = delete;
  Kept& operator=(const Kept&) = delete;

 private:
  static int* whole(std::size_t k) {
    static const std::array<int*, 10> slots = {&roque_v, &piecesac, &npecasb, &npecasp, &p_x_Rb,
                                               &p_y_Rb,  &p_x_Rp,   &p_y_Rp,  &roque_b, &roque_p};
    return slots[k];
  }
  const Tabuleiro board_ = tab2;
  const std::array<float, 8> reals_ = {agres,       agresprxrei,    MOB,           PM, shashinn,
                                       extraevalll, materialmaiorb, materialmaiorp};
  const std::array<int, 10> wholes_ = {roque_v, piecesac, npecasb, npecasp, p_x_Rb,
                                       p_y_Rb,  p_x_Rp,   p_y_Rp,  roque_b, roque_p};
};

TEST(LeafCache, NoResultOutlivesAChangeOfOneInput) {
  std::mt19937 dice(1);
  std::vector<int> mattered(inputs().size());
  int positions = 0, members_differ = 0;
  for (const std::string& fen : referee::varied_fens()) {
    if (positions++ % 3 != 0) continue;
    bench::lay(fen);
    if (positions % 2 == 0) bench::scatter(dice);
    for (const Member& m : members) {
      const Value before = expect_value(m, "at first");
      for (std::size_t k = 0; k < inputs().size(); ++k) {
        {
          const Kept kept;
          inputs()[k].change(dice);
          mattered[k] += !same(expect_value(m, inputs()[k].name), before);
        }
        EXPECT_TRUE(same(valued(m), before)) << inputs()[k].name << ", taken back";
      }
      members_differ += !same(before, told_plainly(members[0]));
    }
    if (HasFailure()) FAIL() << fen;
  }
  for (std::size_t k = 0; k < mattered.size(); ++k)
    EXPECT_GT(mattered[k], 20) << inputs()[k].name << " must matter to be told";
  EXPECT_GT(members_differ, 100);
}

// Two inputs at once, in every order: a change that is taken back while another stays.
TEST(LeafCache, NoResultOutlivesChangesThatCross) {
  std::mt19937 dice(2);
  int changes = 0;
  for (const std::string& fen : referee::varied_fens()) {
    if (changes++ % 8 != 0) continue;
    bench::lay(fen);
    for (int k = 0; k < 60; ++k) {
      inputs()[dice() % inputs().size()].change(dice);
      const Member& m = members[dice() % 4];
      EXPECT_TRUE(same(valued(m), told_plainly(m))) << bench::bench_state();
    }
    if (HasFailure()) FAIL() << fen;
  }
}

// More boards than there are records, each met three times, among them boards a square apart.
TEST(LeafCache, BoardsOnTheSameRecordAreToldApart) {
  std::mt19937 dice(3);
  struct Met {
    Tabuleiro board;
    Value should;
  };
  std::vector<Met> met;
  bench::lay("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  for (int k = 0; k < 60000; ++k) {
    if (k % 4 == 0) bench::strew(dice, 2 + k % 30);
    if (k % 4 != 0) change_a_square(dice);
    met.push_back({tab2, told_plainly(members[0])});
    ASSERT_TRUE(same(valued(members[0]), met.back().should)) << k << '\n' << bench::bench_state();
  }
  for (int round = 0; round < 2; ++round)
    for (std::size_t k = 0; k < met.size(); ++k) {
      tab2 = met[round == 0 ? met.size() - 1 - k : k].board;
      const Value& should = met[round == 0 ? met.size() - 1 - k : k].should;
      ASSERT_TRUE(same(valued(members[0]), should)) << k << '\n' << bench::bench_state();
    }
}

// --- The key ---

int calculated = 0;
ResumoDaFolha counted() {
  return {static_cast<double>(++calculated), {1, 2, 3}, {4, 5, 6}, false};
}

TEST(LeafCache, CalculatesAgainForEveryOtherKeyAndBoard) {
  const Tabuleiro board = {1, 2, 3};
  const ChaveDaFolha key = {1000000, 1, 4, 0, 4, 7, 2, 5};
  const auto calculates = [&](const Tabuleiro& t, const ChaveDaFolha& k) {
    resumo_de(board, key, counted);  // the record is there
    const int before = calculated;
    const double sum = resumo_de(t, k, counted).soma;
    EXPECT_TRUE(calculated == before || sum == calculated);
    return calculated != before;
  };
  EXPECT_FALSE(calculates(board, key)) << "what is known is not calculated again";

  const std::function<void(ChaveDaFolha&)> changes[] = {
      [](ChaveDaFolha& k) { ++k.revisao; }, [](ChaveDaFolha& k) { k.membro = 2; },
      [](ChaveDaFolha& k) { ++k.x_Rb; },    [](ChaveDaFolha& k) { ++k.y_Rb; },
      [](ChaveDaFolha& k) { ++k.x_Rp; },    [](ChaveDaFolha& k) { ++k.y_Rp; },
      [](ChaveDaFolha& k) { ++k.roque_b; }, [](ChaveDaFolha& k) { ++k.roque_p; },
  };
  for (std::size_t c = 0; c < std::size(changes); ++c) {
    ChaveDaFolha other = key;
    changes[c](other);
    EXPECT_TRUE(calculates(board, other)) << "change " << c;
  }
  for (std::size_t s = 0; s < 64; ++s) {
    Tabuleiro other = board;
    other[s] = static_cast<std::uint8_t>(other[s] + 1);
    EXPECT_TRUE(calculates(other, key)) << "square " << s;
  }
}

TEST(LeafCache, KeysOfTheFourMembersDiffer) {
  bench::lay("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  EXPECT_EQ((std::set<int>{
                 chave_da_folha<Cor::b, Cor::b>().membro, chave_da_folha<Cor::b, Cor::p>().membro,
                 chave_da_folha<Cor::p, Cor::b>().membro, chave_da_folha<Cor::p, Cor::p>().membro})
                .size(),
            4U);
}

}  // namespace
}  // namespace korvu
