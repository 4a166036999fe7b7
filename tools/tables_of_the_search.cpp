// The schedule of the plies, their constants, and the score caps.
#include <algorithm>
#include <array>

#include "board/state.h"
#include "root/caps.h"
#include "tables.h"
#include "tree/schedule.h"

namespace tables {
namespace {

std::string when(bool yes) {
  return yes ? "yes" : "";
}

std::string above(int depth) {
  return depth == korvu::nunca ? "" : "> " + text(depth);
}

std::string between(const korvu::Intervalo& depths) {
  if (!depths.existe()) return "";
  if (depths.de == depths.ate) return text(depths.de);
  if (depths.de == korvu::ate(0).de) return "up to " + text(depths.ate);
  return text(depths.de) + " to " + text(depths.ate);
}

std::string form(korvu::Filtro f) {
  switch (f) {
    case korvu::Filtro::sete:
      return "sete";
    case korvu::Filtro::geral:
      return "geral";
    case korvu::Filtro::ultimo:
      return "ultimo";
    case korvu::Filtro::nao:
      break;
  }
  return "";
}

constexpr int first_node = 2;

Table schedule() {
  Table t{{"N", "Table", "Null move", "Pre-search", "Late", "Early", "Vertical", "Extension",
           "Clock", "Quiet stop", "Leaf term", "Extra", "Promotions", "Forgets"},
          {}};
  for (const korvu::LinhaDoCronograma& row : korvu::cronograma) {
    if (row.N < first_node) continue;
    t.rows.push_back({text(row.N), when(row.tabela), above(row.nulo), above(row.pre_busca),
                      above(row.tarde), above(row.cedo), form(row.filtro), between(row.extensao),
                      when(row.relogio), between(row.quieto),
                      row.termo == korvu::Termo::logaritmo ? "logarithm" : "quotient",
                      when(row.extra), when(row.promocoes), when(row.esquece)});
  }
  return t;
}

Table plies() {
  Table t{{"N", "To move", "Value slot", "Mate at this node", "Mate cap", "Castling mark"}, {}};
  for (int n = 0; n <= korvu::ultimo_no; ++n) {
    const bool even = n % 2 == 0, moves = n <= korvu::ultimo_lance;
    const float mate = korvu::valor_do_mate(n);
    t.rows.push_back({text(n), even ? "root side" : "opponent",
                      code((even ? "alfa[" : "beta[") + text(n) + "]"),
                      n == 0 || !moves ? "" : text(even ? -mate : mate),
                      moves ? text(korvu::degrau_do_mate(n)) : "",
                      moves ? text(korvu::valor_do_roque_em(n)) : ""});
  }
  return t;
}

// --- Caps ---

struct Root {
  std::string_view what;
  float own, other;        // totals
  int own_men, other_men;  // without kings
};

constexpr int just_taken = 10;  // the last move of the game took a pawn of White's

// One cap of White's search of this root.
float cap(int positive, int negative, const Root& root, std::size_t ply) {
  using namespace korvu;
  Positive_filter = positive;
  Negative_filter = negative;
  materialba = root.own;
  materialpa = root.other;
  npecasb = root.own_men;
  npecasp = root.other_men;
  materialflot0 = root.own - root.other;
  peca = just_taken;
  define_caps<Cor::b>();
  return MAXcut[ply];
}

bool equal(float a, float b) {
  return a - b < 0.01F && b - a < 0.01F;
}

// A cap as text: "33 + g" when it is a margin on what the root side may expect, "33 - b" when on
// what the other may; a plain number else.
std::string cap_text(int scheme, const Root& root, std::size_t ply) {
  const bool even = ply % 2 == 0;
  const float value = even ? cap(scheme, 0, root, ply) : cap(0, scheme, root, ply);
  const float b =
      root.own - root.other + static_cast<float>(korvu::quociente_da_raiz<korvu::Cor::b>());
  const float g = b + just_taken;
  if (equal(value, korvu::degrau_do_mate(static_cast<int>(ply)))) return "mate";
  const float margin = even ? value - g : value + b;
  for (int whole = 0; whole <= 110; ++whole)
    if (equal(margin, static_cast<float>(whole))) return text(whole) + (even ? " + g" : " - b");
  return text(value);
}

// Enough material on both sides that neither counts as lone, but for the last rows.
constexpr std::array<Root, 10> roots = {{
    {"balance -40", 460, 500, 14, 14},
    {"balance -33", 467, 500, 14, 14},
    {"balance -32", 468, 500, 14, 14},
    {"balance 49", 549, 500, 14, 14},
    {"balance 50", 550, 500, 14, 14},
    {"balance 90", 590, 500, 14, 14},
    {"balance 0, 20 men", 400, 400, 10, 10},
    {"other king bare, own total 160", 160, 110, 1, 0},
    {"other king with a knight, own total 400", 400, 142, 8, 1},
    {"own king bare", 110, 400, 0, 8},
}};

Row caps_of(int scheme, const Root& root) {
  Row row;
  for (const std::size_t ply : {0U, 2U, 6U, 1U, 5U}) row.push_back(cap_text(scheme, root, ply));
  return row;
}

Table caps() {
  Table t{{"Filter", "Root", "Ply 0", "2, 4", "6 to 16", "1, 3", "5 to 17"}, {}};
  constexpr std::array<std::string_view, 4> names = {"0 off", "1 manual", "2 auto", "3 full"};
  for (int scheme = 0; scheme < 4; ++scheme) {
    const std::string name(names[static_cast<std::size_t>(scheme)]);
    const auto row_of = [&](std::string_view what, const Row& caps) {
      Row row = {name, std::string(what)};
      row.insert(row.end(), caps.begin(), caps.end());
      t.rows.push_back(row);
    };
    const Row first = caps_of(scheme, roots[0]);
    const bool all_equal = std::ranges::all_of(
        roots, [&](const Root& root) { return caps_of(scheme, root) == first; });
    if (all_equal)
      row_of("any", first);
    else
      for (const Root& root : roots) row_of(root.what, caps_of(scheme, root));
  }
  return t;
}

}  // namespace

std::vector<Entry> of_the_search() {
  return {{"schedule", schedule}, {"plies", plies}, {"caps", caps}};
}

}  // namespace tables
