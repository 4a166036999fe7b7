// The positions of mates.txt, and what the engine says of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/referee.h"

namespace mates {

struct Told {
  int distance;      // moves to the forced mate, 0 when there is none within `reach`
  std::string line;  // the position line for the engine
  referee::Position position;
};

// Reads the file. Throws std::runtime_error when there is none.
std::vector<Told> told(const std::string& file);

// What the engine's last two lines say. (The lines before them show limits too: a root move that is
// no better than the best one appears with the best one's score, be it a mate.)
struct Answer {
  referee::Move best;
  // In how many moves the engine says that it mates, or is mated below 0; 0 for neither. It calls a
  // mate with the next move and one with the move after it both "mate 1", and one with move k + 1
  // "mate k". Here they are counted as they are, "mate 1" as the greater of the two.
  int moves = 0;
};

// Lets the engine answer the position, in this process, while its clock stands still.
Answer ask(const Told& t, std::string_view go);

// Brute force reaches so far in a moment.
inline constexpr int reach = 3;

// The move played keeps the mate at its distance.
bool finds(const Told& t, const Answer& a);

// What is announced is so, as far as brute force reaches.
bool is_true(const Told& t, const Answer& a);

}  // namespace mates
