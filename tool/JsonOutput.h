#pragma once

// JSON as it is printed: control characters of all kinds are escaped, since a terminal obeys some that JSON lets pass.

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace velt::tool {

// On one line when the indent is -1.
std::string jsonText(const nlohmann::ordered_json& json, int indent);
// Indented, and with a line end.
void printJson(const nlohmann::ordered_json& json, std::ostream& out);

}  // namespace velt::tool
