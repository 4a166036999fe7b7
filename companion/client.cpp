#include "companion/client.h"

#include <poll.h>
#include <unistd.h>

#include <boost/asio/read_until.hpp>
#include <cerrno>
#include <istream>
#include <utility>

namespace companion {

Client::Client(boost::asio::io_context& io, std::function<void(const std::string&)> on_line,
               std::function<void()> on_end)
    : input_(io, STDIN_FILENO), on_line_(std::move(on_line)), on_end_(std::move(on_end)) {}

void Client::listen() {
  boost::asio::async_read_until(input_, read_, '\n', [this](auto error, std::size_t) {
    std::istream in(&read_);
    std::string line;
    // A last line may lack its ending.
    if (std::getline(in, line)) on_line_(line);
    if (error)
      on_end_();
    else
      listen();
  });
}

// Input and output may be one terminal or socket, which does not block since the input must not.
bool print(const std::string& line) {
  const std::string text = line + '\n';
  for (std::size_t at = 0; at < text.size();) {
    const ssize_t n = ::write(STDOUT_FILENO, text.data() + at, text.size() - at);
    if (n >= 0) {
      at += static_cast<std::size_t>(n);
    } else if (errno == EAGAIN) {
      pollfd output = {STDOUT_FILENO, POLLOUT, 0};
      ::poll(&output, 1, -1);
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace companion
