#include "embedded/database/Colors.h"

#include <limits>
#include <optional>
#include <string>

#include "embedded/database/RecordEditor.h"

namespace velt::database {
namespace {

constexpr int indexCode = 62;
constexpr int rgbCode = 420;
constexpr int colorNameCode = 430;

constexpr std::int64_t byBlockIndex = 0;
constexpr std::int64_t byLayerIndex = 256;
constexpr std::int64_t foreground = 7;
constexpr std::int64_t noRgb = std::numeric_limits<std::int64_t>::min();

constexpr bool isPlainIndex(std::int64_t index) {
  return index > byBlockIndex && index < byLayerIndex;
}

VkCmColor colorOf(const Lens& lens, std::string_view subclass, std::uint32_t ofIndex) {
  VkCmColor color;
  const std::optional<std::uint32_t> rgb = colorNumber(lens.integer(rgbCode, subclass, noRgb));
  color.setColor(rgb ? colorOfRgb(*rgb) : ofIndex);

  const std::wstring name = lens.name(colorNameCode, subclass);
  if (name.empty()) return color;
  const std::size_t separator = name.find(L'$');
  if (separator == std::wstring::npos) {
    color.setNames(name.c_str(), nullptr);
  } else {
    color.setNames(name.substr(separator + 1).c_str(), name.substr(0, separator).c_str());
  }
  return color;
}

}  // namespace

VkCmColor entityColor(const Lens& entity) {
  const std::int64_t index = entity.integer(indexCode, commonSubclass, byLayerIndex);
  std::uint32_t value = colorByLayer;
  if (index == byBlockIndex) value = colorByBlock;
  if (isPlainIndex(index)) value = colorOfIndex(static_cast<std::uint32_t>(index));
  return colorOf(entity, commonSubclass, value);
}

bool setEntityColor(Drawing& drawing, std::uint32_t record, const VkCmColor& color) {
  const std::uint32_t value = color.color();
  const std::uint32_t method = value & 0xFF000000;
  std::optional<std::int64_t> index;
  if (method == colorByLayer) index = byLayerIndex;
  if (method == colorByBlock) index = byBlockIndex;
  if (method == colorOfIndex(0)) index = value & 0xFFFFFF;
  const bool isRgb = method == colorOfRgb(0);
  const bool isKnown =
      isRgb || method == colorByLayer || method == colorByBlock || (index && isPlainIndex(*index));
  if (!isKnown) return false;

  RecordEditor editor(drawing, record);
  // The new value is written first: when the record has no place for it, nothing has been changed yet.
  const auto setInteger = [&](int code, std::int64_t number) {
    return editor.setInteger(code, commonSubclass, number, codesBefore(code, commonOrder));
  };
  if (isRgb && !setInteger(rgbCode, value & 0xFFFFFF)) return false;
  if (index && *index != byLayerIndex && !setInteger(indexCode, *index)) return false;
  if (!isRgb) editor.remove(rgbCode, commonSubclass);
  if (!index || *index == byLayerIndex) editor.remove(indexCode, commonSubclass);

  const std::wstring book = color.bookName();
  const std::wstring name = (book.empty() ? L"" : book + L"$") + color.colorName();
  if (name.empty()) {
    editor.remove(colorNameCode, commonSubclass);
    return true;
  }
  return editor.setText(colorNameCode, commonSubclass, name, codesBefore(colorNameCode, commonOrder));
}

VkCmColor defaultLayerColor() {
  VkCmColor color;
  color.setColor(colorOfIndex(static_cast<std::uint32_t>(foreground)));
  return color;
}

VkCmColor layerColor(const Lens& layer) {
  std::int64_t index = layer.integer(indexCode, dxf::anySubclass, foreground);
  if (index < 0 && index > -byLayerIndex) index = -index;
  if (!isPlainIndex(index)) index = foreground;
  return colorOf(layer, dxf::anySubclass, colorOfIndex(static_cast<std::uint32_t>(index)));
}

}  // namespace velt::database
