#pragma once

// What the layer asked of its host, one line per call, in order: "Editable(4) on line",
// "QueryInterface(IOPMPropertyExtension) on line", "CoInitialize(null)".
//
// A call is named by a prefix of its line: "Editable" means every such call, "Editable(4) on line" one in
// particular.

#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace velt::toys {

using Lines = std::vector<std::string>;

// One line out of its parts, as a stream would print them.
template <class... Parts>
std::string say(const Parts&... parts) {
  std::ostringstream stream;
  (stream << ... << parts);
  return stream.str();
}

class CallLog {
 public:
  void add(std::string line) { lines_.push_back(std::move(line)); }
  void clear() { lines_.clear(); }

  const Lines& all() const { return lines_; }
  // Without the frees of memory, which would stand between any two other calls.
  Lines lines() const {
    Lines kept;
    for (const std::string& line : lines_) {
      if (!startsWithOneOf(line, {"SysFreeString(", "CoTaskMemFree(", "VariantClear("})) kept.push_back(line);
    }
    return kept;
  }
  Lines only(std::initializer_list<std::string_view> calls) const {
    Lines kept;
    for (const std::string& line : lines_) {
      if (startsWithOneOf(line, calls)) kept.push_back(line);
    }
    return kept;
  }
  int count(std::string_view call) const { return static_cast<int>(only({call}).size()); }

 private:
  static bool startsWithOneOf(std::string_view line, std::initializer_list<std::string_view> calls) {
    for (const std::string_view call : calls) {
      if (line.starts_with(call)) return true;
    }
    return false;
  }

  Lines lines_;
};

}  // namespace velt::toys
