#include "embedded/automation/dimensions/StyleOverrides.h"

#include "dxf/Numbers.h"

namespace velt::automation {

// The data of the application may hold other lists beside this one.
std::optional<StyleOverrides> findOverrides(const database::Lens& entity) {
  constexpr int textCode = 1000;
  constexpr int braceCode = 1002;
  constexpr int nameOfVariable = 1070;
  const std::optional<dxf::PairRange> range = entity.xdata(overridesApplication);
  if (!range) return std::nullopt;
  const dxf::RecordView& view = entity.view();
  const std::size_t end = range->first + range->count;
  std::size_t index = range->first;
  bool isNamed = false;
  for (; index < end; ++index) {
    const std::string_view value = dxf::trimmed(view.value(index));
    if (view.code(index) == textCode) isNamed = value == overridesList;
    if (isNamed && view.code(index) == braceCode && value == "{") break;
  }
  if (index == end) return isNamed ? std::optional(StyleOverrides{end, end, false}) : std::nullopt;
  StyleOverrides list{index + 1, index + 1, false};
  const auto isPair = [&](std::size_t name) {
    return name + 1 < end && view.code(name) == nameOfVariable && view.code(name + 1) != braceCode;
  };
  while (isPair(list.end))
    list.end += 2;
  list.isWhole =
      list.end < end && view.code(list.end) == braceCode && dxf::trimmed(view.value(list.end)) == "}";
  return list;
}

}  // namespace velt::automation
