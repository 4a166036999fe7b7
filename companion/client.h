// The client's end: standard input and output.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/streambuf.hpp>
#include <functional>
#include <string>

namespace companion {

class Client {
 public:
  // Takes over standard input. `on_line` gets its lines, `on_end` is called at its end.
  Client(boost::asio::io_context& io, std::function<void(const std::string&)> on_line,
         std::function<void()> on_end);

  void listen();

 private:
  boost::asio::posix::stream_descriptor input_;
  boost::asio::streambuf read_;
  std::function<void(const std::string&)> on_line_;
  std::function<void()> on_end_;
};

// Writes the line to standard output, all of it and at once. False when nobody can read it any
// more.
bool print(const std::string& line);

}  // namespace companion
