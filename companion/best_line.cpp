#include "companion/best_line.h"

#include <algorithm>
#include <cstdlib>

namespace companion {
namespace {

int value_of(char man) {
  switch (man) {
    case 'p':
    case 'P':
      return 1;
    case 'n':
    case 'N':
    case 'b':
    case 'B':
      return 3;
    case 'r':
    case 'R':
      return 5;
    case 'q':
    case 'Q':
      return 9;
    default:
      return 0;
  }
}

// White's material less Black's.
int balance(const rules::Position& p) {
  int sum = 0;
  for (int s = 0; s < 64; ++s) {
    const char man = p.at(s);
    sum += man >= 'a' ? -value_of(man) : value_of(man);
  }
  return sum;
}

constexpr int mate = 1000;

// The material balance for the side that has just moved, after the best reply.
int worth(const rules::Position& after) {
  const bool white_moved = !after.white_to_move();
  const auto seen = [&](const rules::Position& p) {
    return white_moved ? balance(p) : -balance(p);
  };
  const std::vector<rules::Move> replies = after.legal_moves();
  if (replies.empty()) return after.in_check() ? mate : 0;
  int least = seen(after);
  for (const rules::Move& reply : replies)
    if (after.at(reply.to) != ' ' || reply.promo != 0)
      least = std::min(least, seen(after.after(reply)));
  return least;
}

// Steps from the middle of the board, doubled: 2 on the four central squares, 14 in a corner.
int remoteness(int sq) {
  return std::abs(2 * rules::file_of(sq) - 7) + std::abs(2 * rules::rank_of(sq) - 7);
}

// How much nearer to the centre it brings a man; the king stays where it is.
int toward_the_centre(const rules::Position& p, const rules::Move& m) {
  const char man = p.at(m.from);
  return man == 'K' || man == 'k' ? 0 : remoteness(m.from) - remoteness(m.to);
}

bool same_line(const InfoLine& a, const InfoLine& b) {
  return a.depth == b.depth && a.score == b.score && a.pv == b.pv;
}

}  // namespace

const InfoLine* BestLine::of_the_depth(const rules::Move& move) const {
  const auto line = std::ranges::find(lines_, move, [](const InfoLine& l) { return l.pv.front(); });
  return line == lines_.end() ? nullptr : &*line;
}

const InfoLine* BestLine::best_of_the_depth() const {
  const auto worse = [](const InfoLine& a, const InfoLine& b) { return *a.score < *b.score; };
  return &*std::max_element(lines_.begin(), lines_.end(), worse);
}

bool BestLine::hear(const InfoLine& info) {
  if (!info.score || !info.depth || info.pv.empty() || !info.has("currmove")) return false;
  if (*info.depth < depth_) return false;
  if (*info.depth > depth_) lines_.clear();
  depth_ = *info.depth;
  std::erase_if(lines_, [&](const InfoLine& l) { return l.pv.front() == info.pv.front(); });
  lines_.push_back(info);

  const InfoLine& top = *best_of_the_depth();
  const auto standing = move();
  if (standing && !of_the_depth(*standing) && !(best_ && *best_->score < *top.score)) return false;
  const bool another = !best_ || !same_line(*best_, top);
  best_ = top;
  concluded_.reset();
  return another;
}

void BestLine::conclude(const rules::Move& move) {
  concluded_ = move;
  if (best_ && best_->pv.front() == move) return;
  const InfoLine* line = of_the_depth(move);
  best_ = line ? std::optional(*line) : std::nullopt;
}

std::optional<rules::Move> BestLine::move() const {
  if (concluded_) return concluded_;
  if (best_) return best_->pv.front();
  return std::nullopt;
}

std::optional<rules::Move> plain_choice(const rules::Position& position) {
  std::optional<rules::Move> best;
  int most = 0;
  for (const rules::Move& move : position.legal_moves()) {
    const int n = 100 * worth(position.after(move)) + toward_the_centre(position, move);
    if (best && n <= most) continue;
    best = move;
    most = n;
  }
  return best;
}

}  // namespace companion
