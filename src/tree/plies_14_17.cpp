// The nodes of plies 14 to 17.
#include "tree/node_search.h"

namespace korvu {

template void no<14, Cor::b>(int, int, int, int);
template void no<14, Cor::p>(int, int, int, int);
template void no<15, Cor::b>(int, int, int, int);
template void no<15, Cor::p>(int, int, int, int);
template void no<16, Cor::b>(int, int, int, int);
template void no<16, Cor::p>(int, int, int, int);
template void no<17, Cor::b>(int, int, int, int);
template void no<17, Cor::p>(int, int, int, int);

}  // namespace korvu
