// Three programs in one file, as OpenBench builds, copies and runs an engine: with the argument
// `bench` korvu-bench, without it the companion, which runs the engine. Each is unpacked into
// memory and started from there.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

// The linker names the contents of the files korvu, korvu-bench and korvu-uci so.
extern char _binary_korvu_start[], _binary_korvu_end[];
extern char _binary_korvu_bench_start[], _binary_korvu_bench_end[];
extern char _binary_korvu_uci_start[], _binary_korvu_uci_end[];

namespace {

struct Program {
  const char* name;
  const char *begin, *end;
};

[[noreturn]] void fail(const char* name) {
  std::cerr << "no room in memory for " << name << '\n';
  std::exit(EXIT_FAILURE);
}

int unpack(const Program& program) {
  const int file = memfd_create(program.name, 0);
  if (file < 0) fail(program.name);
  for (const char* at = program.begin; at != program.end;) {
    const ssize_t written = write(file, at, static_cast<std::size_t>(program.end - at));
    if (written <= 0) fail(program.name);
    at += written;
  }
  return file;
}

[[noreturn]] void run(const Program& program, std::string argument = {}) {
  char* arguments[] = {const_cast<char*>(program.name),
                       argument.empty() ? nullptr : argument.data(), nullptr};
  fexecve(unpack(program), arguments, environ);
  fail(program.name);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && argv[1] == std::string_view("bench"))
    run({"korvu-bench", _binary_korvu_bench_start, _binary_korvu_bench_end});
  // The companion is this same process, and keeps the engine's file open for its children.
  const int engine = unpack({"korvu", _binary_korvu_start, _binary_korvu_end});
  const auto path = "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(engine);
  run({"korvu-uci", _binary_korvu_uci_start, _binary_korvu_uci_end}, path);
}
