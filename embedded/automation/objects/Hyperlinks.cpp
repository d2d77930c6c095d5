#include "embedded/automation/objects/Hyperlinks.h"

#include "dxf/Tag.h"
#include "embedded/database/Lens.h"

namespace velt::automation {
namespace {

constexpr std::string_view application = "PE_URL";
constexpr int textCode = 1000;
constexpr int braceCode = 1002;

}  // namespace

std::vector<Hyperlink> hyperlinksOf(const database::ObjectRef& object) {
  const database::Lens lens(object);
  std::vector<Hyperlink> links;
  const std::optional<dxf::PairRange> range = lens.xdata(application);
  if (!range) return links;
  // Each link is its address, followed by a list in braces: the description, then the place within the target.
  int depth = 0;
  std::size_t textsInList = 0;
  for (std::size_t index = range->first; index < range->first + range->count; ++index) {
    const std::string_view value = lens.view().value(index);
    if (lens.view().code(index) == braceCode) {
      depth += dxf::trimmed(value) == "{" ? 1 : -1;
      if (depth == 1 && dxf::trimmed(value) == "{") textsInList = 0;
    } else if (lens.view().code(index) == textCode) {
      std::wstring text = lens.drawing().decode(value);
      if (depth <= 0) {
        links.push_back({std::move(text), {}, {}});
      } else if (depth == 1 && !links.empty()) {
        if (textsInList == 0) links.back().description = std::move(text);
        if (textsInList == 1) links.back().subLocation = std::move(text);
        ++textsInList;
      }
    }
  }
  return links;
}

}  // namespace velt::automation
