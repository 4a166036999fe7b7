#include "kit.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "frontend/dialogue.h"
#include "frontend/options.h"
#include "tree/clock.h"

namespace fuzz {
namespace {

int now = 0;

// Does a clock of five to seven columns begin at one of the columns where a clock may stand? Then
// the level ladder may set a depth of up to nine, whatever the option "Deep" says.
bool orders_a_depth(std::string_view line) {
  if (!line.starts_with("go")) return false;
  const auto columns = [&](std::size_t k) {
    return std::min(line.find(' ', std::min(k + 1, line.size())), line.size()) - k;
  };
  return std::ranges::any_of(std::initializer_list<std::size_t>{9, 21, 22, 23}, [&](std::size_t k) {
    return k < line.size() && columns(k) >= 5 && columns(k) <= 7;
  });
}

// The men on the board of a FEN line, as the engine reads it: a blank ends the last rank alone, and
// squares that the line does not name keep what stands there, which may be anything.
int men_of(std::string_view line) {
  constexpr int any = 64;
  int men = 0, files = 0, rank = 8;
  for (const char c : line.substr(13)) {
    if (c == '\0') return any;
    if (c == (rank > 1 ? '/' : ' ')) {
      if (files < 8) return any;
      if (rank == 1) return men;
      files = 0;
      --rank;
    } else if (c >= '1' && c <= '8') {
      files += c - '0';
    } else if (std::string_view("PNBRQKpnbrqk").find(c) != std::string_view::npos) {
      ++men;
      ++files;
    }
  }
  return any;
}

// A setting of "Deep" with which a search of this position line takes a few milliseconds.
std::string_view deep_for(std::string_view line) {
  if (line.size() < 13 || !line.starts_with("position f")) return "1";
  const int men = men_of(line);
  return men <= 4 ? "3" : men <= 8 ? "2" : "1";
}

bool is_known(std::string_view line) {
  constexpr std::string_view beginnings[] = {"info score cp ", "info score mate ", "info nps ",
                                             "bestmove ",      "option name ",     "id name ",
                                             "id author "};
  if (line == "readyok" || line == "uciok") return true;
  return std::ranges::any_of(beginnings, [&](auto b) { return line.starts_with(b); }) &&
         std::ranges::all_of(line, [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::string_view text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

std::vector<std::string> lines(std::string_view text) {
  std::vector<std::string> all;
  std::istringstream in{std::string(text)};
  for (std::string line; std::getline(in, line);) all.push_back(line);
  return all;
}

std::vector<std::string> defaults() {
  std::vector<std::string> all;
  for (const korvu::Opcao& o : korvu::opcoes()) {
    all.push_back("setoption name " + std::string(o.nome));
    if (o.tipo != korvu::Tipo::button) all.back() += " value " + std::string(o.padrao);
  }
  return all;
}

std::vector<std::string> short_searches(const std::vector<std::string>& lines) {
  std::vector<std::string> all;
  for (const std::string& line : lines) {
    if (orders_a_depth(line)) continue;
    all.push_back("setoption name Deep value " + std::string(deep_for(line)));
    all.insert(all.end(), {"setoption name Time control value true", line});
  }
  return all;
}

std::string answers(const std::vector<std::string>& lines) {
  now = 0;
  korvu::relogio = [] { return now += 7; };
  std::stringstream asked;
  std::ostringstream said;
  for (const std::string& line : lines) asked << line << '\n';
  korvu::dialogo(asked, said);
  for (const std::string& line : fuzz::lines(said.str())) demand(is_known(line), line);
  return said.str();
}

void demand(bool holds, std::string_view what) {
  if (holds) return;
  std::cerr << "not as it should be: " << what << std::endl;
  std::abort();
}

}  // namespace fuzz
