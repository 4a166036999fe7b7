// The nodes of plies 6 to 9.
#include "tree/node_search.h"

namespace korvu {

template void no<6, Cor::b>(int, int, int, int);
template void no<6, Cor::p>(int, int, int, int);
template void no<7, Cor::b>(int, int, int, int);
template void no<7, Cor::p>(int, int, int, int);
template void no<8, Cor::b>(int, int, int, int);
template void no<8, Cor::p>(int, int, int, int);
template void no<9, Cor::b>(int, int, int, int);
template void no<9, Cor::p>(int, int, int, int);

}  // namespace korvu
