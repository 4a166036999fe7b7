// Laying out the evaluation on the bench: a position with every slot that it reads in a known
// state.
#pragma once

#include <random>
#include <string>
#include <string_view>

#include "board/state.h"
#include "eval/leaf_scan.h"
#include "eval/plain_twin.h"

namespace bench {

// The knobs at their defaults, no root assessment, no castling on the line.
void rest_knobs();

// A FEN's board on tab and tab2, counters, king squares and tables to match, knobs at rest.
void lay(std::string_view fen);

// The root's counts, which the scans take from their slots and not from the board.
void men(int white, int black);
void officers_total(float white, float black);
// Both sides strong enough that kings stay at home.
inline void kings_at_home() {
  officers_total(320, 320);
}
// Neither side strong enough to keep the other king from fighting.
inline void kings_fight() {
  officers_total(90, 90);
}
void kings(std::string_view white, std::string_view black);

// The figures of one side in a scan of tab2.
template <korvu::Varredura V, korvu::Cor raiz, korvu::Cor ataca, korvu::Cor of>
korvu::Figuras figures() {
  return korvu::Varre<V, raiz, ataca>(korvu::tab2).template de<of>();
}

using korvu::Cor;

// A leaf of a White search: figures of one side when that side is to move, when it is not.
template <Cor of>
korvu::Figuras to_move() {
  return figures<korvu::Varredura::folha, Cor::b, of, of>();
}
template <Cor of>
korvu::Figuras waiting() {
  return figures<korvu::Varredura::folha, Cor::b, korvu::outra(of), of>();
}

// The position with colours exchanged and ranks flipped; castling rights and passing are dropped.
std::string mirrored(std::string_view fen);

// 1 / (squared distance + 2) between two squares by name.
double nearness(std::string_view a, std::string_view b);
// 1 / (squared distance from the middle of the board + 2).
double centrality(std::string_view square);

// All slots of the evaluation filled from the generator, over their whole ranges and at the
// thresholds: counts, knobs, castling marks, king squares right or stale.
void scatter(std::mt19937& dice);

// Men strewn over the board of tab2: both kings, and up to `most` others, pawns off the back ranks.
void strew(std::mt19937& dice, int most);

// Equal to the last bit.
bool same_bits(float a, float b);

// The same for a sum of logarithms. Where all its terms cancel, as between mirror images, nothing
// is left but the rounding of the extended sum, which depends on the order of the terms: two such
// remainders pass for equal.
bool same_sum(float a, float b);

// What a failed comparison prints: tab2 and the slots read.
std::string bench_state();

// Differences between figures of the two, as text; empty when there are none.
std::string differences(const korvu::Figuras& engine, const plain::Figures& twin);

}  // namespace bench
