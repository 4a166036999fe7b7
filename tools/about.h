// What every tool tells about itself.
#pragma once

#include <iostream>
#include <string_view>

namespace tools {

// True when the first argument is --help or --version; then the answer is printed. `usage` is whole
// lines.
inline bool tells_about_itself(int argc, char** argv, std::string_view name,
                               std::string_view usage) {
  const std::string_view asked = argc > 1 ? argv[1] : "";
  if (asked == "--help") {
    std::cout << usage;
    return true;
  }
  if (asked == "--version") {
    std::cout << name << " " KORVU_VERSION "\n";
    return true;
  }
  return false;
}

}  // namespace tools
