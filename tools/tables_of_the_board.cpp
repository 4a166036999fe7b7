// Men and squares: codes, values, square tables.
#include <array>

#include "board/tables.h"
#include "board/types.h"
#include "tables.h"

namespace tables {
namespace {

using korvu::Cor;

Table men() {
  constexpr std::array<std::string_view, 6> names = {"peao",  "cavalo", "bispo",
                                                     "torre", "dama",   "rei"};
  Table t{{"Man", "Value", "White's byte", "Black's byte"}, {}};
  for (const korvu::Peca p : korvu::todas_as_pecas)
    t.rows.push_back({std::string(names[static_cast<std::size_t>(p)]), text(korvu::valor_de(p)),
                      text(korvu::codigo_de(p, Cor::b)), text(korvu::codigo_de(p, Cor::p))});
  return t;
}

struct SquareTable {
  std::string_view name;
  const korvu::TabelaInt& values;
};

constexpr std::array<SquareTable, 16> square_tables = {{
    {"posix_b_peao_inici", korvu::posix_b_peao_inici},
    {"posix_p_peao_inici", korvu::posix_p_peao_inici},
    {"posix_b_peao_medio", korvu::posix_b_peao_medio},
    {"posix_p_peao_medio", korvu::posix_p_peao_medio},
    {"posix_b_peao_final", korvu::posix_b_peao_final},
    {"posix_p_peao_final", korvu::posix_p_peao_final},
    {"posix_b_cavalo", korvu::posix_b_cavalo},
    {"posix_p_cavalo", korvu::posix_p_cavalo},
    {"posix_b_bispo", korvu::posix_b_bispo},
    {"posix_p_bispo", korvu::posix_p_bispo},
    {"posix_b_torre", korvu::posix_b_torre},
    {"posix_p_torre", korvu::posix_p_torre},
    {"posix_b_dama", korvu::posix_b_dama},
    {"posix_p_dama", korvu::posix_p_dama},
    {"posix_b_reifinal", korvu::posix_b_reifinal},
    {"posix_p_reifinal", korvu::posix_p_reifinal},
}};

// A file from rank 1 to 8.
std::string file(const korvu::TabelaInt& values, int x) {
  Row all;
  for (int y = 0; y < 8; ++y) all.push_back(text(values[korvu::casa(x, y)]));
  return join(all, " ");
}

Table squares() {
  Table t{{"Table", "a-file, ranks 1 to 8", "d-file", "e-file"}, {}};
  for (const SquareTable& s : square_tables)
    t.rows.push_back({code(s.name), file(s.values, 0), file(s.values, 3), file(s.values, 4)});
  return t;
}

// A hill by the squared distance from its top.
Table hills() {
  Table t{{"Squared distance"}, {}};
  constexpr std::array<std::array<int, 2>, 9> away = {
      {{0, 0}, {1, 0}, {1, 1}, {2, 0}, {2, 1}, {2, 2}, {3, 0}, {3, 1}, {4, 0}}};
  for (const auto& d : away) t.head.push_back(text(d[0] * d[0] + d[1] * d[1]));
  for (const int height : {15, 75, 375}) {
    const korvu::TabelaInt hill = korvu::colina(height, 0, 0);
    Row row = {"height " + text(height)};
    for (const auto& d : away) row.push_back(text(hill[korvu::casa(d[0], d[1])]));
    t.rows.push_back(row);
  }
  return t;
}

}  // namespace

std::vector<Entry> of_the_board() {
  return {{"men", men}, {"squares", squares}, {"hills", hills}};
}

}  // namespace tables
