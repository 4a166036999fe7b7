// The dialogue with the chess interface, from the first line to the end of the process.
#pragma once

#include <iosfwd>

namespace korvu {

// Reads lines from `entrada` and answers on `respostas` until `quit` or the end of input. One flow
// of control: a position line moves it on to a wait for `go`, a search and a wait for the next
// position, and each wait hears its own few lines; the others are dropped. Nothing is read during a
// search. The state of the engine is the process's: a second dialogue goes on where the first has
// left it.
void dialogo(std::istream& entrada, std::ostream& respostas);

}  // namespace korvu
