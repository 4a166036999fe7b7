#include "board_kit.h"

#include <algorithm>
#include <stdexcept>

#include "board/root_tables.h"
#include "eval/knobs.h"
#include "memory/ply_tables.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace kit {

std::uint8_t code_of(char man) {
  switch (man) {
    case 'P':
      return 10;
    case 'N':
      return 32;
    case 'B':
      return 33;
    case 'R':
      return 50;
    case 'Q':
      return 90;
    case 'K':
      return 110;
    case 'p':
      return 246;
    case 'n':
      return 224;
    case 'b':
      return 223;
    case 'r':
      return 206;
    case 'q':
      return 166;
    case 'k':
      return 146;
    case ' ':
      return 0;
    default:
      throw std::invalid_argument("no man: " + std::string(1, man));
  }
}

korvu::Tabuleiro board_of(const referee::Position& p) {
  korvu::Tabuleiro t{};
  for (int s = 0; s < 64; ++s) t[static_cast<std::size_t>(s)] = code_of(p.at(s));
  return t;
}

korvu::Tabuleiro board_of(std::string_view fen) {
  return board_of(referee::Position::from_fen(fen));
}

referee::Position other_to_move(const referee::Position& p) {
  std::string fen = p.fen();
  const std::size_t side = fen.find(' ') + 1;
  fen[side] = fen[side] == 'w' ? 'b' : 'w';
  const std::size_t passed = fen.find(' ', side + 2) + 1;
  fen.replace(passed, fen.find(' ', passed) - passed, "-");
  return referee::Position::from_fen(fen);
}

namespace {

char other_colour(char c) {
  if (c >= 'a' && c <= 'z') return static_cast<char>(c - 'a' + 'A');
  if (c >= 'A' && c <= 'Z') return static_cast<char>(c - 'A' + 'a');
  return c;
}

std::string swapped(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = other_colour(c);
  return s;
}

}  // namespace

std::string mirrored(std::string_view fen) {
  std::vector<std::string_view> fields;
  for (std::size_t at = 0; at <= fen.size();) {
    const std::size_t end = std::min(fen.find(' ', at), fen.size());
    fields.push_back(fen.substr(at, end - at));
    at = end + 1;
  }
  std::string board;
  for (std::string_view rest = fields[0];;) {
    const std::size_t slash = rest.find('/');
    board = swapped(rest.substr(0, slash)) + (board.empty() ? "" : "/") + board;
    if (slash == std::string_view::npos) break;
    rest.remove_prefix(slash + 1);
  }
  std::string passed(fields[3]);
  if (passed != "-") passed[1] = passed[1] == '3' ? '6' : '3';
  return board + (fields[1] == "w" ? " b " : " w ") + swapped(fields[2]) + ' ' + passed + " 0 1";
}

std::string difference(const korvu::Tabuleiro& is, const korvu::Tabuleiro& should) {
  for (int s = 0; s < 64; ++s) {
    const auto i = static_cast<std::size_t>(s);
    if (is[i] != should[i])
      return referee::square_name(s) + " holds " + std::to_string(is[i]) + " instead of " +
             std::to_string(should[i]);
  }
  return "";
}

Squares squares_of(const referee::Move& m) {
  return {referee::file_of(m.from), referee::rank_of(m.from), referee::file_of(m.to),
          referee::rank_of(m.to)};
}

Squares squares_of(std::string_view move) {
  return squares_of(move_of(move));
}

referee::Move move_of(std::string_view move) {
  const auto square = [&](std::size_t at) {
    return referee::square(move[at] - 'a', move[at + 1] - '1');
  };
  return {square(0), square(2), move.size() > 4 ? move[4] : char{0}};
}

std::vector<referee::Move> searched_moves(const referee::Position& p) {
  std::vector<referee::Move> moves = p.legal_moves();
  std::erase_if(moves, [](const referee::Move& m) { return m.promo != 0 && m.promo != 'q'; });
  return moves;
}

bool has_promotion_loop(int n) {
  return n % 2 == 1 && n >= 7;
}

bool is_capture(const referee::Position& p, const referee::Move& m) {
  return p.at(m.to) != ' ';
}

std::size_t kind_of(char man) {
  return std::string_view("PNBRQKpnbrqk").find(man) % 6;
}

void store(int n, const referee::Move& m, bool capture) {
  using namespace korvu;
  const auto [x1, y1, x2, y2] = squares_of(m);
  const auto i = static_cast<std::size_t>(n);
  guardado[i] = guardado_g[i] = sem_lance;
  if (!capture)
    guardado[i] = {x1, y1, x2, y2};
  else
    guardado_g[i] = n == 1 ? Lance{x1, y1, x2, y2} : Lance{x2, y2, x1, y1};
}

void place(std::string_view fen) {
  using namespace korvu;
  CHESS_960 = 0;
  lab::position(fen);
  analisa_tabuleiro();
  SCAN1 = SCANT = 0;
  PVSm = PVSm2 = LMRtest = 0;
  pempatee = 0;
  Temperamento = 3;
  LMR = PVS = VERTICAL_filt = SEARCH_E = 1;
  NULL_MOVE = 2;
  HASHf = 1;
  EXTRA_EVAL = extradef = TC = 1;
  matrix = agreschrei = 1;
  MOB = MQ = PM = 5;
  roque_v = 3;
  piecesac = 50;
  empp = -5;
  emp = -15;
  tempo = 1000000;
  Tu = 3;
  deep = DEEP = 0;
  melhor = sem_lance;
  guardado.fill(sem_lance);
  guardado_g.fill(sem_lance);
  relata_linha = [] {};
}

void copy_root_to(int n) {
  const auto i = static_cast<std::size_t>(n);
  korvu::tabd[i] = korvu::tabd[0];
  korvu::jm_D[i] = korvu::jm_D[0];
  korvu::duplos_D[i] = korvu::duplos_D[0];
  korvu::materialb[i] = korvu::materialba;
  korvu::materialp[i] = korvu::materialpa;
}

void open_ply(int n) {
  using namespace korvu;
  copy_root_to(n);
  alfa.fill(-16500);
  beta.fill(16500);
  MAXcut.fill(20000);
  corte_alfa.fill(0);
  corte_beta.fill(0);
  X_D.fill(1);
  XEQUE_MATE.fill(1);
  guardado.fill(sem_lance);
  guardado_g.fill(sem_lance);
  HASHf = 0;
  deep = 0;
  DEEP = 99;
  nd = n;
  nodes = 0;
  corte_MAXcut = 0;
  // A child without depth leaves its slot alone; the loops read what stands there.
  value(n + 1) = 0;
}

float& value(int n) {
  return (n % 2 == 0 ? korvu::alfa : korvu::beta)[static_cast<std::size_t>(n)];
}

std::uint8_t& cut_flag(int n) {
  return (n % 2 == 0 ? korvu::corte_beta : korvu::corte_alfa)[static_cast<std::size_t>(n - 1)];
}

const std::vector<Case>& cases() {
  static const std::vector<Case> all = [] {
    std::vector<Case> v;
    for (const std::string& fen : referee::varied_fens()) {
      referee::Position p = referee::Position::from_fen(fen);
      v.push_back({fen, p, searched_moves(p)});
    }
    return v;
  }();
  return all;
}

}  // namespace kit
