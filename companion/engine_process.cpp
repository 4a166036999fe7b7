#include "companion/engine_process.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <boost/asio/read_until.hpp>
#include <boost/asio/streambuf.hpp>
#include <boost/asio/write.hpp>
#include <boost/process/async_pipe.hpp>
#include <boost/process/child.hpp>
#include <boost/process/exe.hpp>
#include <boost/process/extend.hpp>
#include <boost/process/io.hpp>
#include <csignal>
#include <istream>
#include <utility>

namespace companion {
namespace {

namespace asio = boost::asio;
namespace process = boost::process;

// The engine does not read while it thinks, so the end of its input does not end it then. It is
// told to die with its parent, who may have died before it could say so.
struct DieWithParent : process::extend::handler {
  template <class Executor>
  void on_exec_setup(Executor& /*unused*/) const {
    std::signal(SIGPIPE, SIG_DFL);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(1);
  }
  pid_t parent = ::getpid();
};

}  // namespace

struct EngineProcess::Run {
  explicit Run(asio::io_context& io) : to(io), from(io) {}

  process::async_pipe to, from;
  asio::streambuf read;
  process::child child;
  bool over = false;
};

EngineProcess::EngineProcess(asio::io_context& io, std::string path,
                             std::function<void(const std::string&)> on_line,
                             std::function<void()> on_end)
    : io_(io), path_(std::move(path)), on_line_(std::move(on_line)), on_end_(std::move(on_end)) {}

EngineProcess::~EngineProcess() {
  end();
}

void EngineProcess::start() {
  end();
  const auto run = std::make_shared<Run>(io_);
  run->child = process::child(
      process::exe = path_, process::std_in<run->to, process::std_out> run->from, DieWithParent{});
  run_ = run;
  listen(run_);
}

void EngineProcess::listen(const std::shared_ptr<Run>& run) {
  asio::async_read_until(run->from, run->read, '\n', [this, run](auto error, std::size_t) {
    if (run->over) return;
    if (error) {
      run->over = true;
      on_end_();
      return;
    }
    std::istream in(&run->read);
    std::string line;
    std::getline(in, line);
    listen(run);
    on_line_(line);
  });
}

// A process that has ended is found out by the end of its output.
void EngineProcess::send(const std::string& line) {
  if (!run_) return;
  boost::system::error_code ignored;
  asio::write(run_->to, asio::buffer(line + '\n'), ignored);
}

void EngineProcess::end() {
  if (!run_) return;
  run_->over = true;
  // The library's own way to terminate may leave a dead process behind that nobody waits for.
  std::error_code ignored;
  if (run_->child.valid()) ::kill(run_->child.id(), SIGKILL);
  run_->child.wait(ignored);
  boost::system::error_code closing;
  run_->to.close(closing);
  run_->from.close(closing);
  run_.reset();
}

}  // namespace companion
