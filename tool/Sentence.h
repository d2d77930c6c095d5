#pragma once

#include <cstddef>
#include <string>

namespace velt::tool {

// A name or a sentence for the middle of a sentence: "millimeters" and "the layer is locked", but "US survey feet".
inline std::string inASentence(const std::string& text) {
  const auto isCapital = [&](std::size_t at) {
    return at < text.size() && text[at] >= 'A' && text[at] <= 'Z';
  };
  if (!isCapital(0) || isCapital(1)) return text;
  return static_cast<char>(text[0] - 'A' + 'a') + text.substr(1);
}

}  // namespace velt::tool
