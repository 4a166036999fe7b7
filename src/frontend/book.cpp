#include "frontend/book.h"

#include <algorithm>

#include "frontend/line.h"

namespace korvu {
namespace {

// clang-format off
constexpr Entrada um_lance[] = {
    {"e2e4", "d7d5"},
    {"d2d4", "c7c5"},
    {"g1f3", "g8f6"},
    {"b1c3", "e7e5"},
    {"b2b3", "e7e5"},
    {"g2g3", "d7d5"},
};

constexpr Entrada brancas[] = {
    {"e2e4 e7e5", "g1f3"},
    {"e2e4 e7e5 g1f3 b8c6", "f1c4"},
    {"e2e4 e7e5 g1f3 b8c6 f1c4 f8c5", "c2c3"},
    {"e2e4 e7e5 g1f3 b8c6 f1c4 f8c5 c2c3 g8f6", "d2d4"},
    {"e2e4 e7e5 g1f3 b8c6 f1c4 g8f6", "f3g5"},
    {"e2e4 e7e5 g1f3 b8c6 f1c4 g8f6 f3g5 d7d5", "e4d5"},
    {"e2e4 e7e5 g1f3 b8c6 f1c4 g8f6 f3g5 d7d5 e4d5 f6d5", "g5f7"},
    {"e2e4 e7e5 g1f3 b8c6 f1c4 g8f6 f3g5 d7d5 e4d5 f6d5 g5f7 e8f7", "d1f3"},
    {"e2e4 e7e5 g1f3 b8c6 f1c4 g8f6 f3g5 d7d5 e4d5 f6d5 g5f7 e8f7 d1f3 f7e6", "b1c3"},
    {"e2e4 e7e5 g1f3 g8f6", "b1c3"},
    {"e2e4 d7d5", "e4d5"},
    {"e2e4 g8f6", "b1c3"},
    {"e2e4 b8c6", "d2d4"},
    {"e2e4 c7c5", "g1f3"},
    {"e2e4 c7c5 g1f3 b8c6", "f1c4"},
    {"e2e4 c7c6", "d2d4"},
    {"e2e4 c7c6 d2d4 d7d5", "e4d5"},
    {"e2e4 d7d6", "d2d4"},
    {"e2e4 e7e6", "d2d4"},
    {"e2e4 e7e6 d2d4 d7d5", "e4d5"},
    {"e2e4 b7b6", "d2d4"},
    {"e2e4 g7g6", "d2d4"},
};

constexpr Entrada pretas[] = {
    {"e2e4 d7d5 e4e5", "c8f5"},
    {"e2e4 d7d5 e4d5", "g8f6"},
    {"e2e4 d7d5 e4d5 g8f6 d2d4", "f6d5"},
    {"e2e4 d7d5 e4d5 g8f6 c2c4", "e7e6"},
    {"e2e4 d7d5 e4d5 g8f6 f1b5", "c8d7"},
    {"e2e4 d7d5 e4d5 g8f6 f1b5 c8d7 b5c4", "b7b5"},
    {"e2e4 d7d5 e4d5 g8f6 d2d4 f6d5 c2c4", "d5b4"},
    {"e2e4 d7d5 e4d5 g8f6 d2d4 f6d5 c2c4 d5b4 d1a4", "b8c6"},
    {"e2e4 d7d5 e4d5 g8f6 d2d4 f6d5 c2c4 d5b4 d1a4 b8c6 d4d5", "b7b5"},
    {"e2e4 d7d5 e4d5 g8f6 d2d4 f6d5 c2c4 d5b4 d1a4 b8c6 d4d5 b7b5 c4b5", "c8f5"},
    {"e2e4 d7d5 e4d5 g8f6 d2d4 f6d5 c2c4 d5b4 d1a4 b8c6 d4d5 b7b5 c4b5 c8f5 b1a3", "d8d5"},
    {"d2d4 c7c5 d4c5", "e7e6"},
    {"d2d4 c7c5 d4c5 e7e6 b2b4", "a7a5"},
    {"d2d4 c7c5 d4d5", "d7d6"},
};
// clang-format on

constexpr std::string_view antes_dos_lances = "position startpos moves ";

}  // namespace

std::span<const Entrada> livro_de_um_lance() {
  return um_lance;
}
std::span<const Entrada> livro_b() {
  return brancas;
}
std::span<const Entrada> livro_p() {
  return pretas;
}

std::optional<std::string_view> procura_no_livro(std::span<const Entrada> livro) {
  const std::string_view linha = in;
  if (!linha.starts_with(antes_dos_lances)) return std::nullopt;
  const std::string_view lances = linha.substr(antes_dos_lances.size());
  const auto e = std::ranges::find(livro, lances, &Entrada::lances);
  if (e == livro.end()) return std::nullopt;
  return e->resposta;
}

}  // namespace korvu
