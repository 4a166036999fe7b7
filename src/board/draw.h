// Draw by repetition of a position of the game.
#pragma once

namespace korvu {

// verifica_empate: does the position on tab2 repeat one of the game (tabr1)? Clears pempate and, if
// pempatee is set, writes the answer there. At the root (deeppromo 0) one equal position is enough;
// below (deeppromo 1) two are needed: the engine shuns the first repetition itself, but believes in
// a draw by the opponent only at the third occurrence. Only positions with the right side to move
// are compared, by the root colour joga_com_b. Beyond 1000 plies the test is off.
void verifica_empate();

// Writes the present tab into tabr1 as the position after game move nb; dropped beyond the table.
void guarda_posicao_do_jogo();

}  // namespace korvu
