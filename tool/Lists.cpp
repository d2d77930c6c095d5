#include "tool/Lists.h"

namespace velt::tool {

namespace {

void add(std::vector<std::string>& list, std::string& name) {
  const std::size_t first = name.find_first_not_of(" \t");
  if (first != std::string::npos)
    list.push_back(name.substr(first, name.find_last_not_of(" \t") - first + 1));
  name.clear();
}

}  // namespace

std::vector<std::string> splitList(std::string_view text) {
  std::vector<std::string> list;
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == ',') {
      name += text[++i];
    } else if (text[i] == ',') {
      add(list, name);
    } else {
      name += text[i];
    }
  }
  add(list, name);
  return list;
}

}  // namespace velt::tool
