// The nodes of the tree, one per ply from 2 to 24 and per colour.
#pragma once

#include "board/types.h"

namespace korvu {

// no<N, b> is deep_bN, the node of ply N entered after a White move; no<N, p> is deep_pN. The move
// from (x1, y1) to (x2, y2) is still unplayed on the board of ply N - 1, and tab2 holds the
// position after it. The value is left in alfaN (even N) or betaN (odd N); a node that `deep` cuts
// short may leave that slot as it was. `deep`, HASHf and all bounds are as before on return.
template <int N, Cor cor>
void no(int x1, int y1, int x2, int y2);

// Each is compiled once, in the plies_*.cpp files.
extern template void no<2, Cor::b>(int, int, int, int);
extern template void no<2, Cor::p>(int, int, int, int);
extern template void no<3, Cor::b>(int, int, int, int);
extern template void no<3, Cor::p>(int, int, int, int);
extern template void no<4, Cor::b>(int, int, int, int);
extern template void no<4, Cor::p>(int, int, int, int);
extern template void no<5, Cor::b>(int, int, int, int);
extern template void no<5, Cor::p>(int, int, int, int);
extern template void no<6, Cor::b>(int, int, int, int);
extern template void no<6, Cor::p>(int, int, int, int);
extern template void no<7, Cor::b>(int, int, int, int);
extern template void no<7, Cor::p>(int, int, int, int);
extern template void no<8, Cor::b>(int, int, int, int);
extern template void no<8, Cor::p>(int, int, int, int);
extern template void no<9, Cor::b>(int, int, int, int);
extern template void no<9, Cor::p>(int, int, int, int);
extern template void no<10, Cor::b>(int, int, int, int);
extern template void no<10, Cor::p>(int, int, int, int);
extern template void no<11, Cor::b>(int, int, int, int);
extern template void no<11, Cor::p>(int, int, int, int);
extern template void no<12, Cor::b>(int, int, int, int);
extern template void no<12, Cor::p>(int, int, int, int);
extern template void no<13, Cor::b>(int, int, int, int);
extern template void no<13, Cor::p>(int, int, int, int);
extern template void no<14, Cor::b>(int, int, int, int);
extern template void no<14, Cor::p>(int, int, int, int);
extern template void no<15, Cor::b>(int, int, int, int);
extern template void no<15, Cor::p>(int, int, int, int);
extern template void no<16, Cor::b>(int, int, int, int);
extern template void no<16, Cor::p>(int, int, int, int);
extern template void no<17, Cor::b>(int, int, int, int);
extern template void no<17, Cor::p>(int, int, int, int);
extern template void no<18, Cor::b>(int, int, int, int);
extern template void no<18, Cor::p>(int, int, int, int);
extern template void no<19, Cor::b>(int, int, int, int);
extern template void no<19, Cor::p>(int, int, int, int);
extern template void no<20, Cor::b>(int, int, int, int);
extern template void no<20, Cor::p>(int, int, int, int);
extern template void no<21, Cor::b>(int, int, int, int);
extern template void no<21, Cor::p>(int, int, int, int);
extern template void no<22, Cor::b>(int, int, int, int);
extern template void no<22, Cor::p>(int, int, int, int);
extern template void no<23, Cor::b>(int, int, int, int);
extern template void no<23, Cor::p>(int, int, int, int);
extern template void no<24, Cor::b>(int, int, int, int);
extern template void no<24, Cor::p>(int, int, int, int);

}  // namespace korvu
