// A session (see Session.h) on what the fuzzer makes. An input is a line "ENTITY ROW VALUE" and the drawing after it.

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "fuzz/Session.h"

namespace {

std::size_t takeNumber(std::string_view& text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  if (text.starts_with(' ')) text.remove_prefix(1);
  return error == std::errc() ? number : 0;
}

fuzz::SessionInput inputOf(std::string_view bytes) {
  const std::size_t end = std::min(bytes.find('\n'), bytes.size());
  std::string_view order = bytes.substr(0, end);
  fuzz::SessionInput input;
  input.entity = takeNumber(order);
  input.row = takeNumber(order);
  input.value = order;
  input.drawing = bytes.substr(std::min(end + 1, bytes.size()));
  return input;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t longest = 1 << 16;
  if (size <= longest) fuzz::runSession(inputOf({reinterpret_cast<const char*>(data), size}));
  return 0;
}
