#include "mates/positions.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "mates/solver.h"
#include "support/lab.h"

namespace mates {
namespace {

using referee::Move;
using referee::Position;

Move legal(const Position& p, const std::string& text) {
  for (const Move& m : p.legal_moves())
    if (m.text() == text || (m.promo == 'q' && m.text() == text + 'q')) return m;
  throw std::runtime_error("the move " + text + " is not legal in " + p.fen());
}

Told read(const std::string& line) {
  std::istringstream in(line);
  int distance = 0;
  in >> distance >> std::ws;
  std::string rest;
  std::getline(in, rest);
  const std::size_t at = rest.find(" moves ");
  const Position before = Position::from_fen(rest.substr(0, at));
  return {distance, "position fen " + rest, before.after(legal(before, rest.substr(at + 7)))};
}

// The word behind another one, or nothing.
std::string behind(const std::string& line, const std::string& word) {
  std::istringstream in(line);
  for (std::string w; in >> w;)
    if (w == word && in >> w) return w;
  return "";
}

// As Answer has it; 0 for a line without a mate.
int announced(const std::string& line) {
  const std::string number = behind(line, "mate");
  if (number.empty()) return 0;
  const int n = std::stoi(number);
  return n > 0 ? n + 1 : n;
}

}  // namespace

std::vector<Told> told(const std::string& file) {
  std::ifstream in(file);
  std::vector<Told> all;
  for (std::string line; std::getline(in, line);)
    if (!line.empty() && line[0] != '#') all.push_back(read(line));
  if (all.empty()) throw std::runtime_error("no positions in " + file);
  return all;
}

Answer ask(const Told& t, std::string_view go) {
  lab::clock_at(0);
  Answer a;
  for (const std::string& line : lab::dialogue({t.line, std::string(go)})) {
    if (line.find(" currmove ") != std::string::npos) continue;
    if (const std::string best = behind(line, "bestmove"); !best.empty())
      a.best = legal(t.position, best);
    else
      a.moves = announced(line);
  }
  return a;
}

bool finds(const Told& t, const Answer& a) {
  return t.distance > 0 && keeps_mate_within(t.position, a.best, t.distance - 1);
}

bool is_true(const Told& t, const Answer& a) {
  if (a.moves > reach || -a.moves >= reach) return true;
  if (a.moves > 0) return keeps_mate_within(t.position, a.best, a.moves - 1);
  return a.moves == 0 || forced_within(t.position.after(a.best), -a.moves);
}

}  // namespace mates
