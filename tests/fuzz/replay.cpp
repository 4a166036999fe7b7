// Hands each file of the given folders to the target, in the order of their names.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "kit.h"

int main(int argc, char** argv) {
  std::vector<std::filesystem::path> files;
  for (const std::string& folder : std::vector<std::string>(argv + 1, argv + argc))
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      files.push_back(entry.path());
  std::ranges::sort(files);
  for (const auto& file : files) {
    std::ifstream in(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    std::cout << file.filename().string() << ", " << bytes.size() << " bytes" << std::endl;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  if (files.empty()) std::cerr << "no files\n";
  return files.empty() ? 1 : 0;
}
