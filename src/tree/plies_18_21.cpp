// The nodes of plies 18 to 21.
#include "tree/node_search.h"

namespace korvu {

template void no<18, Cor::b>(int, int, int, int);
template void no<18, Cor::p>(int, int, int, int);
template void no<19, Cor::b>(int, int, int, int);
template void no<19, Cor::p>(int, int, int, int);
template void no<20, Cor::b>(int, int, int, int);
template void no<20, Cor::p>(int, int, int, int);
template void no<21, Cor::b>(int, int, int, int);
template void no<21, Cor::p>(int, int, int, int);

}  // namespace korvu
