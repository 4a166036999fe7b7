// The position in the words that the engine understands as they are meant.
#pragma once

#include <optional>
#include <string>

#include "companion/game.h"

namespace companion {

struct Question {
  std::string position;  // the position line

  // A line that the book answers at once, to be sent before with the book on: its colour becomes
  // the root colour that the engine holds while it replays the position line.
  std::optional<std::string> primer;

  bool white_root_after;  // the root colour that the engine holds once it has answered
};

// The book answers the position line when `with_book` is set, and no line otherwise; `white_root`
// is the root colour that the engine holds now.
//
// A game from the start position goes as it is. All else goes as a FEN with an even number of
// moves, since then alone the engine counts and reads the position for the side that is to move: it
// takes the root colour during the replay from the FEN's side field, and turns it with every move.
// Steps from one empty square to another fill the number up. They change nothing on the board, in
// the rights or among the passed squares, and stand where they leave the positions of the game
// where the test for repetitions looks.
Question question_for(const Game& game, bool with_book, bool white_root);

// Does the engine answer the game from its book?
bool in_the_book(const Game& game);

}  // namespace companion
