// What an estimate needs to know of the pawns alone, kept for the pawns met lately.
#pragma once

#include "board/bits.h"

namespace korvu {

// Of one side: the number of its pawns, and the sum of the terms of their structure (eval/pawns.h),
// score units.
struct SomasDosPeoes {
  int quantos = 0, estrutura = 0;
};

// By colour, for pawns on ranks 1 to 6 only. The reference holds until the next call.
const std::array<SomasDosPeoes, 2>& somas_dos_peoes(Bits peoes_b, Bits peoes_p);

}  // namespace korvu
