#pragma once

#include <cstddef>
#include <string>

namespace velt::tool {

// A name or a sentence for the middle of a sentence: "millimeters" and "the layer is locked", but "US survey feet".
inline std::string inASentence(std::string text) {
  const auto isCapital = [&](std::size_t at) {
    return at < text.size() && text[at] >= 'A' && text[at] <= 'Z';
  };
  if (isCapital(0) && !isCapital(1)) text[0] = static_cast<char>(text[0] - 'A' + 'a');
  return text;
}

}  // namespace velt::tool
