#include <iostream>

#include "frontend/dialogue.h"

int main() {
  std::cout << std::unitbuf;  // every insertion reaches the interface at once
  korvu::dialogo(std::cin, std::cout);
}
