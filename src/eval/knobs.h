// The evaluation's settings and the figures of the root that a leaf reads.
#pragma once

#include <cstdint>

namespace korvu {

inline float MQ = 5.0F;           // weight of the material quotient
inline float MOB = 5.0F;          // weight of the mobility quotient
inline float PM = 5.0F;           // weight of the positional quotient
inline float agres = 1.0F;        // value of what the pawns of the side to move attack
inline float agresprxrei = 1.0F;  // proximity of the root side's pieces to the enemy king
inline int agreschrei = 1;        // value of giving check, in the rating of root moves
inline int roque_v = 3;           // weight of the castling quotient
inline int matrix = 1;            // weight of the square value, in the rating of root moves
inline int piecesac = 50;  // budget of the correction and width of the lazy gate, score units
inline std::uint8_t extradef = 1;     // the quotient term of the material value
inline std::uint8_t EXTRA_EVAL = 1;   // the correction is in force for this search
inline std::uint8_t EXTRA_EVALL = 1;  // the option "Extra evaluation"

inline float shashinn = 0;     // assessment of the root position: weight of attack against defence
inline float extraevalll = 0;  // the root move's own assessment, added at every leaf below it
inline float extraeval = 0;    // correction of the last leaf scanned

// Sums of the last scan of a board: proximity of the reached squares to the enemy's and to the own
// king, and their nearness to the centre.
inline float atack_ksf_b = 0, atack_ksf_p = 0;
inline float defesa_ksf_b = 0, defesa_ksf_p = 0;
inline float centro_b = 0, centro_p = 0;

}  // namespace korvu
