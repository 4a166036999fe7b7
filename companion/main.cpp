// korvu-uci: full UCI on one side, the engine's own dialogue on the other.
#include <fcntl.h>
#include <unistd.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <csignal>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

#include "companion/client.h"
#include "companion/session.h"
#include "tools/about.h"

namespace {

constexpr std::string_view usage =
    "usage: korvu-uci [--help | --version | ENGINE]\n"
    "\n"
    "Speaks the Universal Chess Interface on standard input and output for the chess engine "
    "Korvu,\n"
    "which it starts as its child. ENGINE is the path of the engine; without it the program korvu\n"
    "beside this one is started.\n";

std::string engine_beside() {
  std::error_code error;
  return (std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / "korvu").string();
}

bool is_open(int file) {
  return ::fcntl(file, F_GETFD) >= 0;
}

bool lacks(int file, std::string_view name) {
  if (is_open(file)) return false;
  std::cerr << "korvu-uci: standard " << name << " is closed\n";
  return true;
}

// The number of a closed file would be that of the next one opened, which is meant for something
// else. For lack of a file for errors alone nobody is turned away.
bool lacks_input_or_output() {
  if (lacks(STDIN_FILENO, "input") || lacks(STDOUT_FILENO, "output")) return true;
  if (!is_open(STDERR_FILENO)) ::open("/dev/null", O_WRONLY);
  return false;
}

int run(const std::string& engine) {
  boost::asio::io_context io;
  int status = 0;
  const auto fail = [&](const std::string& reason) {
    std::cerr << "korvu-uci: " << reason << " (" << engine << ")\n";
    companion::print("info string " + reason);
    status = 1;
    io.stop();
  };
  const auto say = [&](const std::string& line) {
    if (!companion::print(line)) io.stop();
  };
  companion::Session session(io, engine, {say, fail, [&] { io.stop(); }});
  companion::Client client(
      io, [&](const std::string& line) { session.hear(line); }, [&] { session.end_of_input(); });
  boost::asio::post(io, [&] {
    session.start();
    client.listen();
  });
  io.run();
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  if (tools::tells_about_itself(argc, argv, "korvu-uci", usage)) return 0;
  const std::string argument = argc > 1 ? argv[1] : "";
  if (argc > 2 || argument.starts_with("-")) {
    std::cerr << usage;
    return 2;
  }
  if (lacks_input_or_output()) return 1;
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return run(argument.empty() ? engine_beside() : argument);
  } catch (const std::exception& e) {
    std::cerr << "korvu-uci: " << e.what() << '\n';
    return 1;
  }
}
