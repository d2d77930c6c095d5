#pragma once

// Output that a terminal can be trusted with.
//
// Names and messages come out of drawings and plug-ins, and may hold what a terminal obeys instead of showing it. All
// that the tool writes goes through here: control characters other than line ends and tabs, and bytes that are not UTF-8, become
// U+FFFD. Where the program's own text has colors, the sequences for them (Terminal.h) pass.
//
// Lines are passed on as they end, the rest with flush() or at the end. A failure of the stream behind shows in this one
// as in any other stream.

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace velt::tool {

class CleanOutput : private std::streambuf, public std::ostream {
 public:
  // The stream must outlive it.
  explicit CleanOutput(std::ostream& to, bool hasColor = false)
      : std::ostream(static_cast<std::streambuf*>(this)), to_(to), hasColor_(hasColor) {}
  ~CleanOutput() override { passOn(pending_.size()); }

 private:
  int overflow(int character) override;
  std::streamsize xsputn(const char* text, std::streamsize length) override;
  int sync() override;

  // The first `length` bytes of what is pending.
  bool passOn(std::size_t length);

  std::ostream& to_;
  const bool hasColor_;
  std::string pending_;
};

}  // namespace velt::tool
