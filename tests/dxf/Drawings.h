#pragma once

// Small drawings for the tests of this folder.

#include <initializer_list>
#include <string>
#include <string_view>

namespace velt::dxf::testing {

// Each pair as "code|value", in the padding and line ends that most writers use.
inline std::string pairs(std::initializer_list<std::string_view> list, std::string_view lineEnd = "\n") {
  std::string bytes;
  for (const std::string_view pair : list) {
    const auto bar = pair.find('|');
    std::string code(pair.substr(0, bar));
    if (code.size() < 3) code.insert(0, 3 - code.size(), ' ');
    bytes.append(code).append(lineEnd).append(pair.substr(bar + 1)).append(lineEnd);
  }
  return bytes;
}

inline std::string headerOf(std::string_view version, std::string_view codePage) {
  return "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\n" + std::string(version)
         + "\n  9\n$DWGCODEPAGE\n  3\n" + std::string(codePage) + "\n  0\nENDSEC\n";
}

// An ENTITIES section with these pairs, and EOF.
inline std::string entities(std::initializer_list<std::string_view> list) {
  return pairs({"0|SECTION", "2|ENTITIES"}) + pairs(list) + pairs({"0|ENDSEC", "0|EOF"});
}

}  // namespace velt::dxf::testing
