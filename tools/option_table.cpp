// Prints the options as the table that the README holds.
#include <iostream>
#include <string>

#include "frontend/options.h"

namespace {

std::string settings(const korvu::Opcao& o) {
  switch (o.tipo) {
    case korvu::Tipo::check:
      return "true, false";
    case korvu::Tipo::spin:
      return std::to_string(o.minimo) + " to " + std::to_string(o.maximo);
    case korvu::Tipo::combo: {
      std::string list;
      for (const char c : o.valores) c == ' ' ? list += ", " : list += c;
      return list;
    }
    case korvu::Tipo::button:
      break;
  }
  return "button";
}

}  // namespace

int main() {
  std::cout << "| Option | Settings | Default | What it does |\n|---|---|---|---|\n";
  for (const korvu::Opcao& o : korvu::opcoes())
    std::cout << "| " << o.nome << " | " << settings(o) << " | " << o.padrao << " | " << o.ajuda
              << " |\n";
}
