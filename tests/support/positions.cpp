#include "positions.h"

#include <array>
#include <cstdint>
#include <set>
#include <string_view>
#include <utility>

#include "dice.h"
#include "referee.h"

namespace referee {
namespace {

struct Source {
  std::string_view fen;
  int games;
  int plies;  // length of each game
  int every;  // a position is kept after each so many plies
};

constexpr std::array<Source, 10> sources = {{
    // Whole games.
    {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", 8, 120, 6},
    // All four castlings possible.
    {"r3k2r/pppq1ppp/2npbn2/2b1p3/2B1P3/2NPBN2/PPPQ1PPP/R3K2R w KQkq - 0 8", 10, 8, 1},
    {"r3k2r/8/8/3p4/3P4/8/8/R3K2R b KQkq - 0 1", 6, 10, 2},
    // Pawns about to meet in passing, for both sides.
    {"4k3/p1p1p1p1/8/1P1P1P1P/p1p1p1p1/8/1P1P1P1P/4K3 w - - 0 1", 8, 10, 1},
    {"4k3/p1p1p1p1/8/1P1P1P1P/p1p1p1p1/8/1P1P1P1P/4K3 b - - 0 1", 8, 10, 1},
    // Pawns about to promote, with and without captures.
    {"1n1n3k/P1P1P3/8/8/8/8/p1p1p3/1N1N3K w - - 0 1", 8, 8, 1},
    {"1n1n3k/P1P1P3/8/8/8/8/p1p1p3/1N1N3K b - - 0 1", 8, 8, 1},
    // Open lines: checks and pins.
    {"3qk3/2r1r3/1b6/8/8/6B1/3R1R2/3QK3 w - - 0 1", 8, 12, 2},
    // Endings.
    {"8/5k2/8/2p5/2P5/8/3K1R2/8 b - - 0 1", 5, 16, 3},
    {"8/1b3k2/8/8/8/5N2/2K5/8 w - - 0 1", 4, 16, 4},
}};

class Collection {
 public:
  // A random game, of which the positions asked for are kept that have a move and are new.
  void play(std::string_view from, int plies, int every) {
    Dice dice(seed_++);
    Position p = Position::from_fen(from);
    for (int ply = 1; ply <= plies; ++ply) {
      const std::vector<Move> moves = p.legal_moves();
      if (moves.empty()) break;
      p = p.after(moves[dice.below(moves.size())]);
      if (ply % every == 0 && !p.legal_moves().empty()) keep(p.fen());
    }
  }

  void keep(std::string fen) {
    if (seen_.insert(fen).second) fens_.push_back(std::move(fen));
  }

  std::vector<std::string> take() { return std::move(fens_); }

 private:
  std::uint64_t seed_ = 1;
  std::vector<std::string> fens_;
  std::set<std::string> seen_;
};

std::vector<std::string> make_varied() {
  Collection all;
  for (const Source& source : sources)
    for (int game = 0; game < source.games; ++game)
      all.play(source.fen, source.plies, source.every);
  return all.take();
}

std::vector<std::string> make_many() {
  Collection all;
  for (const std::string& fen : varied_fens()) all.keep(fen);
  for (const std::string& fen : varied_fens()) all.play(fen, 8, 1);
  return all.take();
}

}  // namespace

const std::vector<std::string>& varied_fens() {
  static const std::vector<std::string> fens = make_varied();
  return fens;
}

const std::vector<std::string>& many_fens() {
  static const std::vector<std::string> fens = make_many();
  return fens;
}

}  // namespace referee
