// The `info` lines and the text of the engine's move.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace korvu {

inline std::uint8_t FULL_inf = 1;      // the option "Full info"
inline std::ostream* saida = nullptr;  // where the engine prints; set before any search
inline std::string out;                // the reply: "bestmove " and four or five letters

// info_b and info_p: the closing line before a bestmove, with the score EP.
void info();

// info_b_deept and info_p_deept: the running line of a root move, with the score beta1, and the
// speed. One routine serves both colours, so that Black's lines too show the fill of the tables of
// White's searches.
void info_deept();

// Writes the move a, b, c, d (0 to 7; other values leave the letter) as text to A, B, C, D and,
// with the letter "q" when PR says so, to out; steps the columns o to r behind it. Any other
// promotion letter leaves everything as it was: the engine itself promotes to queens alone.
void convert_0000_to_a1a2();

}  // namespace korvu
