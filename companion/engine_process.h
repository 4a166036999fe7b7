// The engine as a child process that is spoken to by lines.
#pragma once

#include <boost/asio/io_context.hpp>
#include <functional>
#include <memory>
#include <string>

namespace companion {

class EngineProcess {
 public:
  // `on_line` gets each line of the engine, `on_end` is called when it has closed its output by
  // itself. Neither is called for a process that was ended here.
  EngineProcess(boost::asio::io_context& io, std::string path,
                std::function<void(const std::string&)> on_line, std::function<void()> on_end);
  ~EngineProcess();

  EngineProcess(const EngineProcess&) = delete;
  EngineProcess& operator=(const EngineProcess&) = delete;

  // Starts a process, in place of the one before. Throws std::system_error when it cannot. The
  // process is killed when this one ends, in whatever way.
  void start();
  void send(const std::string& line);
  void end();

 private:
  struct Run;

  void listen(const std::shared_ptr<Run>& run);

  boost::asio::io_context& io_;
  std::string path_;
  std::function<void(const std::string&)> on_line_;
  std::function<void()> on_end_;
  std::shared_ptr<Run> run_;
};

}  // namespace companion
