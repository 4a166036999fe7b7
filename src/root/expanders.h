// The root moves: 144 expanders, each of which knows one kind of man, one colour and one class of
// move. They generate the moves of one square anew at every call and search those whose rating is
// the one that is being served (`ataque`).
#pragma once

#include "board/types.h"

namespace korvu {

// What the target square holds. The knight's class stands above the bishop's, unlike
// their values.
enum class Classe { livre, positive1, positive2, positive3, positive4, positive5 };
enum class Xeque { ch, sh };  // the move gives check, gives none

struct Expansor {
  Classe classe;
  Xeque xeque;
  Peca peca;
};

// Runs the expander analise100<classe><xeque>_<peca>_b or _p for the man on (x, y), both 0 to 7.
// The caller has found that man there. Results: alfa0, E, EP, the best move, corte_MAXcut; `tab`
// stays.
template <Cor cor>
void analise100(const Expansor& e, int x, int y);

// Makes the marks of the last move met, where they are pending (root/pass_memory.h).
template <Cor cor>
void poe_em_dia();

extern template void poe_em_dia<Cor::b>();
extern template void poe_em_dia<Cor::p>();
extern template void analise100<Cor::b>(const Expansor&, int, int);
extern template void analise100<Cor::p>(const Expansor&, int, int);

}  // namespace korvu
