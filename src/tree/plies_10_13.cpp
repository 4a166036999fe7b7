// The nodes of plies 10 to 13.
#include "tree/node_search.h"

namespace korvu {

template void no<10, Cor::b>(int, int, int, int);
template void no<10, Cor::p>(int, int, int, int);
template void no<11, Cor::b>(int, int, int, int);
template void no<11, Cor::p>(int, int, int, int);
template void no<12, Cor::b>(int, int, int, int);
template void no<12, Cor::p>(int, int, int, int);
template void no<13, Cor::b>(int, int, int, int);
template void no<13, Cor::p>(int, int, int, int);

}  // namespace korvu
