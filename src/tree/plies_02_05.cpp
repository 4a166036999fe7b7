// The nodes of plies 2 to 5, and the loops of ply 2 that the first ply's null move calls.
#include "tree/node_search.h"

namespace korvu {

template void fases<2, Cor::b>();
template void fases<2, Cor::p>();

template void no<2, Cor::b>(int, int, int, int);
template void no<2, Cor::p>(int, int, int, int);
template void no<3, Cor::b>(int, int, int, int);
template void no<3, Cor::p>(int, int, int, int);
template void no<4, Cor::b>(int, int, int, int);
template void no<4, Cor::p>(int, int, int, int);
template void no<5, Cor::b>(int, int, int, int);
template void no<5, Cor::p>(int, int, int, int);

}  // namespace korvu
