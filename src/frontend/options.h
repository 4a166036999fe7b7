// The 33 options: one table from which the printed lines and the parsing come.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace korvu {

enum class Tipo { check, spin, combo, button };

struct Opcao {
  std::string_view nome;
  Tipo tipo;
  std::string_view padrao;   // the default as it is printed
  int minimo, maximo;        // spin
  std::string_view valores;  // combo: its settings, parted by blanks
  // Columns of the name and the word behind it, counted from the name's first, that tell the option
  // in a line. The letters there are its own.
  std::array<int, 4> marcas;
  int n_marcas;
  // Sets the option's variables from the first character of a setting; false when it knows no such
  // setting and has left them alone. A button's is called without one.
  bool (*aplica)(char);
  std::string_view ajuda;  // what it does, for people
};

std::span<const Opcao> opcoes();

// The option's line in the reply to `uci`, without a line ending.
std::string linha_da_opcao(const Opcao& o);

// Applies the line `in` to every option that it fits. A line that fits none does nothing.
void aplica_opcoes();

}  // namespace korvu
