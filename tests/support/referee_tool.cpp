// korvu-referee: judges the moves of one game.
#include <iostream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "referee.h"
#include "tools/about.h"

namespace {

constexpr std::string_view usage =
    "usage: korvu-referee [--fen FEN] [--san] < moves\n"
    "\n"
    "Reads moves from standard input, separated by white space: in coordinates (e2e4, e7e8q), or\n"
    "with --san in the notation of game records (Nf3, O-O, e8=Q+). Each must be legal in its "
    "turn.\n"
    "\n"
    "Prints the coordinates of the moves, the final position and what it is: checkmate, "
    "stalemate,\n"
    "material, repetition, fifty, or open. Ends with 1 at the first illegal move, with 2 when it "
    "is\n"
    "called wrongly.\n";

std::optional<referee::Move> find(const referee::Position& p, const std::string& text, bool san) {
  if (san) return p.move_from_san(text);
  for (const referee::Move& m : p.legal_moves()) {
    if (m.text() == text) return m;
  }
  return std::nullopt;
}

std::string_view verdict(const referee::Position& p, int times_seen) {
  if (p.legal_moves().empty()) return p.in_check() ? "checkmate" : "stalemate";
  if (p.insufficient_material()) return "material";
  if (times_seen >= 3) return "repetition";
  if (p.halfmove_clock() >= 100) return "fifty";
  return "open";
}

int judge(referee::Position p, bool san) {
  std::map<std::string, int> seen;
  int times_seen = ++seen[p.repetition_key()];
  std::string played;
  int count = 0;
  for (std::string text; std::cin >> text;) {
    ++count;
    const auto move = find(p, text, san);
    if (!move) {
      std::cout << "illegal: move " << count << ", " << text << ", in " << p.fen() << '\n';
      return 1;
    }
    p = p.after(*move);
    played += ' ' + move->text();
    times_seen = ++seen[p.repetition_key()];
  }
  std::cout << "moves:" << played << "\ncount: " << count << "\nposition: " << p.fen()
            << "\nverdict: " << verdict(p, times_seen) << '\n';
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (tools::tells_about_itself(argc, argv, "korvu-referee", usage)) return 0;
  const std::vector<std::string_view> args(argv + 1, argv + argc);
  referee::Position position = referee::Position::start();
  bool san = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--san") {
      san = true;
    } else if (args[i] == "--fen" && i + 1 < args.size()) {
      try {
        position = referee::Position::from_fen(args[++i]);
      } catch (const std::invalid_argument& e) {
        std::cerr << e.what() << '\n';
        return 2;
      }
    } else {
      std::cerr << usage;
      return 2;
    }
  }
  return judge(position, san);
}
