// Makes mates.txt: positions with a forced mate in one, two or three, and some with none so near,
// from random games and from a few men strewn over the board. Every run prints the same.
//
// A line holds the distance (0: no mate in three), the position before, and the move that leads to
// the one meant, so that an engine which counts its men on moves has one to count on.
#include <algorithm>
#include <array>
#include <iostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "mates/solver.h"
#include "support/dice.h"
#include "support/referee.h"

namespace {

using referee::Dice;
using referee::Move;
using referee::Position;

struct Quota {
  int distance;  // 0 is none
  int wanted;
};

bool promotes_low(const Move& m) {
  return m.promo != 0 && m.promo != 'q';
}

// Somebody who promotes to queens alone can give the mate.
bool needs_no_low_promotion(const Position& p, int distance) {
  for (const Move& m : p.legal_moves())
    if (!promotes_low(m) && mates::keeps_mate_within(p, m, distance - 1)) return true;
  return false;
}

class Collection {
 public:
  template <std::size_t n>
  void fill(std::array<Quota, n> quotas, int most, const auto& next) {
    while (std::any_of(quotas.begin(), quotas.end(), [](const Quota& q) { return q.wanted > 0; }))
      next(
          [&](const Position& before, const Move& m) { return consider(before, m, most, quotas); });
  }

 private:
  // Says whether the position is taken.
  bool consider(const Position& before, const Move& m, int most, auto& quotas) {
    const Position p = before.after(m);
    if (p.legal_moves().empty()) return false;
    const int found = mates::distance(p, most).value_or(0);
    if (found != 0 && !needs_no_low_promotion(p, found)) return false;
    for (Quota& q : quotas) {
      if (q.distance != found || q.wanted == 0 || !seen_.insert(p.fen()).second) continue;
      --q.wanted;
      std::cout << found << ' ' << before.fen() << " moves " << m.text() << '\n';
      return true;
    }
    return false;
  }

  std::set<std::string> seen_;
};

// --- Random games: the first position of each that fits, from the tenth ply on ---

void play_a_game(Dice& dice, const auto& take) {
  Position p = Position::start();
  for (int ply = 1; ply <= 80; ++ply) {
    const std::vector<Move> moves = p.legal_moves();
    if (moves.empty()) return;
    const Move m = moves[dice.below(moves.size())];
    if (ply >= 10 && take(p, m)) return;
    p = p.after(m);
  }
}

// --- A few men: a strong side against a king with little help ---

std::string fen_of(const std::array<char, 64>& men, bool white_to_move) {
  std::string fen;
  for (int rank = 7; rank >= 0; --rank) {
    int gap = 0;
    const auto close_gap = [&] {
      if (gap > 0) fen += static_cast<char>('0' + gap);
      gap = 0;
    };
    for (int file = 0; file < 8; ++file) {
      const char man = men[static_cast<std::size_t>(referee::square(file, rank))];
      if (man == 0) {
        ++gap;
        continue;
      }
      close_gap();
      fen += man;
    }
    close_gap();
    if (rank > 0) fen += '/';
  }
  return fen + (white_to_move ? " w" : " b") + " - - 0 1";
}

void strew(Dice& dice, const auto& take) {
  std::array<char, 64> men{};
  const bool strong_is_white = dice.below(2) == 0;
  const auto place = [&](char man, bool strong) {
    const std::size_t s = dice.below(64);
    const bool back_rank = s % 8 == 0 || s % 8 == 7;
    if (men[s] != 0 || (man == 'p' && back_rank)) return;
    men[s] = strong == strong_is_white ? static_cast<char>(man - 'a' + 'A') : man;
  };
  constexpr std::string_view strong_men = "qrrbnnpp", weak_men = "ppprbn";
  place('k', true);
  place('k', false);
  for (std::size_t k = 2 + dice.below(3); k > 0; --k) place(strong_men[dice.below(8)], true);
  for (std::size_t k = dice.below(5); k > 0; --k) place(weak_men[dice.below(6)], false);

  const Position before = Position::from_fen(fen_of(men, !strong_is_white));
  const Position other = Position::from_fen(fen_of(men, strong_is_white));
  if (before.king_square(true) < 0 || before.king_square(false) < 0 || other.in_check()) return;
  const std::vector<Move> moves = before.legal_moves();
  if (!moves.empty()) take(before, moves[dice.below(moves.size())]);
}

}  // namespace

int main() {
  std::cout << "# Forced mates, made by make_mates.cpp: distance, position, move\n";
  Collection all;
  Dice games(2026), few(2027);
  all.fill(std::array<Quota, 2>{{{1, 35}, {2, 15}}}, 2,
           [&](const auto& take) { play_a_game(games, take); });
  all.fill(std::array<Quota, 4>{{{1, 15}, {2, 30}, {3, 40}, {0, 30}}}, 3,
           [&](const auto& take) { strew(few, take); });
}
