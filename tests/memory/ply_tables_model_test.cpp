// The six tables against plain ones that are filled at every reset and scanned to the end.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "memory/tables_bench.h"

namespace {

using korvu::alfa;
using korvu::beta;
using korvu::Cor;

struct Key {
  std::uint8_t flag1, flag2;
  float lower, upper, deep;
  korvu::Tabuleiro board;
};

class PlainTable {
 public:
  PlainTable() { reset(); }

  void reset() {
    Key start{0, 0, 1, 1, 1, {}};
    start.board.fill(1);
    flags_.assign(10000, {0, 0});
    keys_.assign(10000, start);
    values_.assign(10000, 1);
    inc_ = 0;
  }

  void open(const Key& k) {
    flags_[inc_] = {k.flag1, k.flag2};
    keys_[inc_] = k;
  }

  // True when the ring has turned.
  bool close(float value) {
    values_[inc_] = value;
    if (inc_ <= 9998) ++inc_;
    if (inc_ < 9999) return false;
    inc_ = 0;
    return true;
  }

  std::optional<float> find(const Key& k) const {
    for (std::size_t i = 0; i < 10000; ++i) {
      if (flags_[i].first != k.flag1 || flags_[i].second != k.flag2) continue;
      const Key& r = keys_[i];
      if (r.lower != k.lower || r.upper != k.upper || r.deep != k.deep) continue;
      if (r.board == k.board) return values_[i];
    }
    return std::nullopt;
  }

  std::size_t index() const { return inc_; }

 private:
  std::size_t inc_ = 0;
  std::vector<std::pair<std::uint8_t, std::uint8_t>> flags_;
  std::vector<Key> keys_;
  std::vector<float> values_;
};

struct Table {
  int ply;
  bool white_root;  // of which chain
  void (*build)();
  void (*close)(float);
  std::optional<float> (*recall)();
  int (*index)();
};

template <int N, Cor cor>
void close_with(float value) {
  const float before = bench::slot<N>();
  bench::slot<N>() = value;
  korvu::hash_table_valor<N, cor>();
  bench::slot<N>() = before;
}

template <int N, Cor cor>
constexpr Table table() {
  return {N,
          (N % 2 == 1) == (cor == Cor::b),
          korvu::hash_table_build<N, cor>,
          close_with<N, cor>,
          bench::recall<N, cor>,
          [] { return korvu::tabela_de<N, cor>().indice(); }};
}

const Table tables[] = {table<3, Cor::b>(), table<3, Cor::p>(), table<4, Cor::b>(),
                        table<4, Cor::p>(), table<5, Cor::b>(), table<5, Cor::p>()};

float greater(float a, float b) {
  return a > b ? a : b;
}
float lesser(float a, float b) {
  return a < b ? a : b;
}

Key present_key(int ply) {
  Key k{};
  k.flag1 = korvu::PVSm;
  k.flag2 = korvu::PVSm2;
  k.lower = greater(alfa[2], alfa[0]);
  if (ply == 5) k.lower = greater(k.lower, alfa[4]);
  k.upper = ply == 3 ? beta[1] : lesser(beta[3], beta[1]);
  k.deep = static_cast<float>(korvu::deep);
  k.board = korvu::tab2;
  return k;
}

class Model {
 public:
  Model() {
    bench::rest_tables();
    for (int k = 0; k < 40; ++k) {
      korvu::Tabuleiro b = korvu::tab2;
      for (int moves = 0; moves < 3; ++moves) b[dice_() % 64] = values_[dice_() % 6];
      boards_.push_back(b);
    }
  }

  void step() {
    const std::size_t t = dice_() % 6;
    set_slots();
    switch (dice_() % 16) {
      case 0:  // a record that a later one overwrites
        tables[t].build();
        plain_[t].open(present_key(tables[t].ply));
        scan(t);  // open, it has the value that its place had
        set_slots();
        remember(t);
        return;
      case 1:
      case 2:
      case 3:
      case 4:
      case 5:
      case 6:
        remember(t);
        return;
      case 7:  // just remembered
        remember(t);
        scan(t);
        return;
      default:
        scan(t);
        return;
    }
  }

  void reset(bool white_root) {
    if (white_root)
      korvu::limpa_tabelas<Cor::b>();
    else
      korvu::limpa_tabelas<Cor::p>();
    for (std::size_t t = 0; t < 6; ++t)
      if (tables[t].white_root == white_root) plain_[t].reset();
  }

  int hits = 0, misses = 0, turns = 0;

 private:
  // From so small a choice that keys come again and again, but one in four is new.
  void set_slots() {
    const auto pick = [this](std::initializer_list<float> values) {
      return values.begin()[dice_() % values.size()];
    };
    korvu::tab2 = boards_[dice_() % boards_.size()];
    korvu::PVSm = dice_() % 2;
    korvu::PVSm2 = dice_() % 2;
    korvu::deep = 7 + 2 * static_cast<int>(dice_() % 2);
    alfa[0] = pick({-16500, -10, 5});
    alfa[2] = pick({-16500, -10, 4.5F});
    alfa[4] = pick({-16500, 3, 6});
    beta[1] = pick({16500, 20});
    beta[3] = pick({16500, 18});
    if (dice_() % 4 == 0) alfa[2] = 10 + static_cast<float>(dice_() % 100000) / 64;
  }

  void remember(std::size_t t) {
    const auto value = static_cast<float>(dice_() % 1000000) / 32;
    tables[t].build();
    tables[t].close(value);
    plain_[t].open(present_key(tables[t].ply));
    if (plain_[t].close(value)) {
      full_[static_cast<std::size_t>(tables[t].ply - 3)] = 1;
      ++turns;
    }
    ASSERT_EQ(static_cast<std::size_t>(tables[t].index()), plain_[t].index());
    ASSERT_EQ(korvu::FULL3, full_[0]);
    ASSERT_EQ(korvu::FULL4, full_[1]);
    ASSERT_EQ(korvu::FULL5, full_[2]);
  }

  void scan(std::size_t t) {
    const std::optional<float> expected = plain_[t].find(present_key(tables[t].ply));
    ASSERT_EQ(tables[t].recall(), expected);
    ++(expected ? hits : misses);
  }

  static constexpr std::uint8_t values_[] = {0, 10, 32, 90, 246, 206};
  std::mt19937 dice_{21};
  std::vector<korvu::Tabuleiro> boards_;
  PlainTable plain_[6];
  int full_[3] = {};
};

}  // namespace

TEST(PlyTablesModel, AgreesWithPlainTables) {
  auto model = std::make_unique<Model>();
  constexpr int steps = 160000;
  for (int k = 0; k < steps; ++k) {
    if (k == 1000 || k == 130000) model->reset(true);
    if (k == 3000 || k == 140000) model->reset(false);
    model->step();
    if (HasFatalFailure()) FAIL() << "at step " << k;
  }
  RecordProperty("cases", model->hits + model->misses);
  EXPECT_GT(model->hits, 20000);
  EXPECT_GT(model->misses, 20000);
  EXPECT_GE(model->turns, 6);
}
