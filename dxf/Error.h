#pragma once

// Why a drawing could not be read, in words for the user.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace velt::dxf {

// Thrown when a file cannot be read as a drawing. `what()` is ready to be shown: `file:line: message`, or
// `file: message` where no single line is to blame.
class Error : public std::runtime_error {
 public:
  Error(std::string file, std::uint64_t line, std::string message)
      : std::runtime_error(line == 0 ? file + ": " + message
                                     : file + ":" + std::to_string(line) + ": " + message),
        file_(std::move(file)),
        line_(line),
        message_(std::move(message)) {}

  [[nodiscard]] const std::string& file() const noexcept { return file_; }
  // Counted from 1; 0 when no single line is to blame.
  [[nodiscard]] std::uint64_t line() const noexcept { return line_; }
  [[nodiscard]] const std::string& message() const noexcept { return message_; }

 private:
  std::string file_;
  std::uint64_t line_;
  std::string message_;
};

}  // namespace velt::dxf
