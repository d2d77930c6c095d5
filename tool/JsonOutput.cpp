#include "tool/JsonOutput.h"

#include <fmt/format.h>

namespace velt::tool {

std::string jsonText(const nlohmann::ordered_json& json, int indent) {
  const std::string text = json.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
    if (byte == 0x7F) {
      escaped += "\\u007f";
    } else if (byte == 0xC2 && next < 0xA0) {
      // U+0080 to U+009F in UTF-8.
      escaped += fmt::format("\\u{:04x}", next);
      ++i;
    } else {
      escaped += text[i];
    }
  }
  return escaped;
}

void printJson(const nlohmann::ordered_json& json, std::ostream& out) {
  out << jsonText(json, 2) << '\n';
}

}  // namespace velt::tool
