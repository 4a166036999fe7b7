// The opening book: exact position lines, each with one reply.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace korvu {

inline std::uint8_t OwnBook = 1;  // the option "Own book"

struct Entrada {
  std::string_view lances;    // the moves behind "position startpos moves "
  std::string_view resposta;  // the reply
};

inline constexpr std::string_view primeiro_lance_do_livro = "e2e4";

// First replies to a one-move line, and the two books of longer lines.
std::span<const Entrada> livro_de_um_lance();
std::span<const Entrada> livro_b();
std::span<const Entrada> livro_p();

// The reply of the book to the line `in`, compared as text with the whole line.
std::optional<std::string_view> procura_no_livro(std::span<const Entrada> livro);

}  // namespace korvu
