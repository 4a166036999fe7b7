// Position lines: from the text to tab and the flags of the game.
#pragma once

#include <cstdint>

namespace korvu {

inline std::uint8_t joga_c_fen = 0;  // the position in work came as a FEN

// The kinds of position lines that reset the game.
enum class Caminho { primeiro_lance, um_lance, lista_ou_fen };

// Resets the state of the game for a position line of this kind. Options and the game memory stay.
void zera_jogo(Caminho caminho);

// Takes in the line `in`. None is validated: moves are trusted, letters out of range repeat the
// last numbers, a broken FEN leaves the board as far as it got. Nothing is written outside the
// board.
void recebe_um_lance();  // "position startpos moves x"
void recebe_lista();     // "position startpos moves x y ..."
void recebe_fen();       // "position fen ..." with or without moves

// After recebe_lista or recebe_fen: is White the side that plays?
bool brancas_jogam();

// Steps the columns o, p, q, r of the next move.
void avanca_colunas(int n);

}  // namespace korvu
