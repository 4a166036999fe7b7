// Setting the engine up for a test. The engine's state is the process's: every test begins with
// lab::position or lab::dialogue, and sets what it depends on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lab {

// Puts a FEN on the board as a position line does, then brings the root's counters and tables up to
// date (which a bare FEN line leaves alone), with the mate ladder as caps, the clock standing still
// and the game memory and the ply tables empty.
void position(std::string_view fen);

// Runs the lines through the engine's own dialogue in this process and gives the lines answered,
// with the reply to `uci` and the `info nps` lines left out and times masked as "time T". The
// engine keeps its state from one call to the next.
std::vector<std::string> dialogue(const std::vector<std::string>& lines);

// The clock stands at this many milliseconds until set again.
void clock_at(int ms);

// Square index of "e4".
std::size_t square(std::string_view name);

}  // namespace lab
