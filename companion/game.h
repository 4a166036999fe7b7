// The position line of a client: where the game began and what has been played.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "rules/position.h"

namespace companion {

struct Game {
  rules::Position start = rules::Position::start();
  bool from_the_start = true;  // `start` is the start position of chess
  std::vector<rules::Move> moves;
  rules::Position now = rules::Position::start();
};

// The legal move that the word names, or nothing. A move to the last rank without a letter is that
// of a queen.
std::optional<rules::Move> legal_move(const rules::Position& position, std::string_view word);

// The moves that the words name, up to the first that is not legal where it stands.
std::vector<rules::Move> legal_start(rules::Position position, std::span<const std::string> words);

struct ReadGame {
  std::optional<Game> game;  // nothing when the line names no position that can be searched
  std::string complaint;     // empty when all of the line was taken
  bool readable = true;      // it names some position, if only one that cannot be searched
};

// Reads the words behind `position`. Moves end at the first that is not legal. A FEN must have a
// king of both colours, no pawn on a first or last rank, no more than 32 men and no king that could
// be taken; rights to castle without king or rook at home, and passed squares that no double step
// has passed, are dropped.
ReadGame read_game(std::span<const std::string> words);

}  // namespace companion
