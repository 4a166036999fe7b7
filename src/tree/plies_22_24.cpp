// The nodes of plies 22 to 24.
#include "tree/node_search.h"

namespace korvu {

template void no<22, Cor::b>(int, int, int, int);
template void no<22, Cor::p>(int, int, int, int);
template void no<23, Cor::b>(int, int, int, int);
template void no<23, Cor::p>(int, int, int, int);
template void no<24, Cor::b>(int, int, int, int);
template void no<24, Cor::p>(int, int, int, int);

}  // namespace korvu
