// The settings that steer the tree.
#pragma once

#include <cstdint>

namespace korvu {

inline std::uint8_t SEARCH_E = 1;       // extensions are in force for this search
inline std::uint8_t SEARCH_EE = 1;      // the option "Search extension"
inline std::uint8_t PVS = 1;            // capped search at ply 1, null window at ply 2
inline std::uint8_t VERTICAL_filt = 1;  // vertical filter
inline std::uint8_t LMR = 1;            // late and early reductions
inline int NULL_MOVE = 2;               // 0 off, 1 normal (plies 1, 2), 2 plus (to ply 5)

}  // namespace korvu
