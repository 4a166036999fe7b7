#include "companion/search_plan.h"

#include <algorithm>

namespace companion {
namespace {

// The engine reads the number of digits and the first digit of the first clock, and knows its end
// by the blank behind it. With less than three it would look one ply ahead and take what is
// guarded; three take it some milliseconds, and the time is kept here.
std::string go_line(Milliseconds clock) {
  const std::string n = std::to_string(std::clamp<std::int64_t>(clock.count(), 100, 99999999));
  return "go wtime " + n + " btime " + n + " winc 0 binc 0";
}

// What the engine takes a line without a clock for.
constexpr Milliseconds no_clock{300000};

// The clock that counts: that of the side to move, or the only one there is.
std::optional<Clock> clock_of(const GoLimits& go, bool white_moves) {
  const Clock& own = white_moves ? go.white : go.black;
  const Clock& other = white_moves ? go.black : go.white;
  if (own.left) return own;
  if (other.left) return other;
  return std::nullopt;
}

// Without a move to go there is no control that the time must last for.
std::optional<int> moves_to_the_control(const GoLimits& go) {
  return go.moves_to_go.value_or(0) >= 1 ? go.moves_to_go : std::nullopt;
}

// The engine gives each move a share of the clock that suits a game without increment which lasts
// some forty moves more.
Milliseconds clock_for_the_engine(const Clock& clock, std::optional<int> moves_to_go) {
  constexpr int usual = 40, increments = 20;
  const Milliseconds left = *clock.left;
  if (!moves_to_go || *moves_to_go >= usual) return left + increments * clock.increment;
  return (left + (*moves_to_go - 1) * clock.increment) * usual / *moves_to_go;
}

// With hardly any time left the engine still gets a moment for its shallowest search.
Milliseconds shortest(Milliseconds time) {
  return std::clamp(time / 4, Milliseconds(1), Milliseconds(10));
}

// Time that must stay on the clock when a move is answered.
Milliseconds reserve(Milliseconds time, Milliseconds overhead) {
  return overhead + time / 50;
}

// The most that a move may take: the last one before the control all but the reserve, any other a
// safe share.
Milliseconds most(const Clock& clock, std::optional<int> moves_to_go, Milliseconds overhead) {
  constexpr int share = 6;
  const Milliseconds usable = *clock.left - reserve(*clock.left, overhead);
  const int parts = std::min(moves_to_go.value_or(share), share);
  if (parts <= 1) return std::max(usable, shortest(*clock.left));
  return std::max(std::min(*clock.left / parts + clock.increment / 2, usable),
                  shortest(*clock.left));
}

// Setting k of "Deep" reaches depth 2k, and 0 depth 1: no depth between is to be had, and a search
// goes no deeper than it is asked to. For a mate in n one setting more tells that it is mate.
int deepest(const GoLimits& go, int deep) {
  if (go.depth) return std::clamp(*go.depth / 2, 0, 9);
  if (go.mate) return std::clamp(*go.mate, 1, 8) + 1;
  return deep;
}

// What a move is to take on the average: by a clock without a control the time lasts for ever.
Milliseconds fair_share(const Clock& clock, std::optional<int> moves_to_go) {
  constexpr int usual = 25;
  return *clock.left / std::min(moves_to_go.value_or(usual), usual) + clock.increment * 3 / 4;
}

// The engine divides a clock of this length, or a longer one, by itself; a shorter one limits its
// depth alone, mostly to what takes it a small part of the time.
constexpr Milliseconds divided_by_the_engine{100000};

// By a clock shorter than this it is through at once, which is all that there is time for.
constexpr Milliseconds hardly_any{1000};

Stage without_limits(int deep) {
  return {deep, true, go_line(no_clock)};
}

// Setting 1 takes milliseconds and has looked at every move: it is the first in all searches.
std::vector<Stage> stages_to(int deep, bool exact) {
  constexpr int shallow[] = {1, 2, 3, 4};
  const int first_alone = exact && deep <= 4 ? 1 : 4;
  std::vector<Stage> stages;
  for (const int k : shallow)
    if (k < deep && k <= first_alone) stages.push_back(without_limits(k));
  stages.push_back(without_limits(deep));
  return stages;
}

// The engine trusts its clock, and can be stopped in the middle of its only pass, when it has not
// looked at all moves yet or told nothing. So shallow searches have done so before. Setting 3 can
// take tenths of a second: it is for those who have the time, and for those who are likely to cut
// the engine short.
std::vector<Stage> stages_by(Milliseconds clock, std::optional<Milliseconds> patience) {
  constexpr Milliseconds short_patience{2000}, long_patience{10000};
  const Milliseconds time = patience.value_or(long_patience);
  std::vector<Stage> stages;
  if (clock >= hardly_any) {
    stages = {without_limits(1), without_limits(2)};
    if (time < short_patience || time >= long_patience) stages.push_back(without_limits(3));
  }
  stages.push_back({std::nullopt, false, go_line(clock)});
  return stages;
}

// One setting after the other, as long as there is time for another one.
std::vector<Stage> one_by_one(int deep) {
  std::vector<Stage> stages;
  for (int k = std::min(deep, 1); k <= deep; ++k) stages.push_back(without_limits(k));
  return stages;
}

// A setting takes some five times as long as the one before. So it is begun when less than two
// fifths of the share are spent, and cut short at two and a half shares, or when the move must be
// answered for anyway.
void divide_the_clock(const Clock& clock, std::optional<int> moves_to_go, int deep,
                      SearchPlan& plan) {
  const Milliseconds share = std::max(fair_share(clock, moves_to_go), Milliseconds(1));
  plan.enough = share * 2 / 5;
  const Milliseconds told = clock_for_the_engine(clock, moves_to_go);
  if (told < hardly_any || told >= divided_by_the_engine) {
    plan.stages = stages_by(told, plan.patience);
    return;
  }
  plan.stages = one_by_one(deep);
  plan.patience = std::min(*plan.patience, share * 5 / 2);
}

}  // namespace

SearchPlan plan_search(const GoLimits& go, bool white_moves, int deep, Milliseconds overhead) {
  SearchPlan plan;
  const auto clock = clock_of(go, white_moves);
  const auto moves_to_go = moves_to_the_control(go);
  plan.nodes = go.nodes;
  plan.mate = go.mate;
  if (clock) plan.patience = most(*clock, moves_to_go, overhead);
  if (go.move_time) {
    const Milliseconds due =
        std::max(*go.move_time - reserve(*go.move_time, overhead), shortest(*go.move_time));
    plan.patience = std::min(plan.patience.value_or(due), due);
  }
  if (go.infinite) plan.patience.reset();
  const bool by_the_clock = !go.infinite && !go.move_time && !go.depth && !go.nodes && !go.mate;
  if (by_the_clock && clock) {
    divide_the_clock(*clock, moves_to_go, deep, plan);
    return plan;
  }
  if (by_the_clock) {
    plan.stages = stages_by(no_clock, std::nullopt);
    return plan;
  }
  const int last = deepest(go, deep);
  plan.stages = stages_to(last, go.depth.has_value());
  plan.depth = go.depth;
  return plan;
}

}  // namespace companion
