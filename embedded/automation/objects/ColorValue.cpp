#include "embedded/automation/objects/ColorValue.h"

#include <optional>
#include <string_view>

#include "embedded/automation/objects/ColorObject.h"
#include "embedded/database/Colors.h"
#include "embedded/database/NameFolding.h"
#include "host/automation/ColorNames.h"

namespace velt::automation {
namespace {

VkCmColor plainColor(std::uint32_t value) {
  VkCmColor color;
  color.setColor(value);
  return color;
}

VkCmColor colorOfNumber(std::int32_t index) {
  if (index < byBlockIndex || index > byLayerIndex) {
    throw Refusal(E_INVALIDARG, L"A color index lies between 0 and 256.");
  }
  if (index == byBlockIndex) return plainColor(database::colorByBlock);
  if (index == byLayerIndex) return plainColor(database::colorByLayer);
  return plainColor(database::colorOfIndex(static_cast<std::uint32_t>(index)));
}

std::wstring_view trimmedText(std::wstring_view text) {
  const std::size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

// From 0 to 255, in digits and nothing else.
std::optional<std::uint32_t> partFrom(std::wstring_view text) {
  text = trimmedText(text);
  if (text.empty() || text.size() > 3) return std::nullopt;
  std::uint32_t number = 0;
  for (const wchar_t digit : text) {
    if (digit < L'0' || digit > L'9') return std::nullopt;
    number = number * 10 + static_cast<std::uint32_t>(digit - L'0');
  }
  return number <= 255 ? std::optional(number) : std::nullopt;
}

std::optional<std::uint32_t> rgbFrom(std::wstring_view text) {
  constexpr int parts = 3;
  std::uint32_t rgb = 0;
  for (int part = 1; part <= parts; ++part) {
    const std::size_t comma = text.find(L',');
    const bool isLast = part == parts;
    if (isLast != (comma == std::wstring_view::npos)) return std::nullopt;
    const auto number = partFrom(text.substr(0, comma));
    if (!number) return std::nullopt;
    rgb = rgb << 8 | *number;
    if (!isLast) text.remove_prefix(comma + 1);
  }
  return rgb;
}

VkCmColor colorOfText(std::wstring_view text) {
  text = trimmedText(text);
  for (const NamedColor& named : colorNames) {
    if (database::sameName(named.name, text)) return colorOfNumber(named.index);
  }
  if (const auto index = partFrom(text)) return colorOfNumber(static_cast<std::int32_t>(*index));
  if (const auto rgb = rgbFrom(text)) return plainColor(database::colorOfRgb(*rgb));
  throw Refusal(E_INVALIDARG,
                L"There is no color of that name: a color is one such as red, a number from 0 to 256, "
                L"255,136,0, ByLayer or ByBlock.");
}

// No color at all can be the value of a color object, but not of an entity.
VkCmColor requireUsable(VkCmColor color) {
  const std::uint32_t value = color.color();
  const std::uint32_t method = value & database::colorMethodMask;
  const std::uint32_t index = value & ~database::colorMethodMask;
  const bool isIndex = method == database::colorOfIndex(0) && index > 0 && index < 256;
  const bool isUsable = isIndex || method == database::colorOfRgb(0) || method == database::colorByLayer
                        || method == database::colorByBlock;
  if (!isUsable) throw Refusal(E_INVALIDARG, L"An entity cannot have that color.");
  return color;
}

}  // namespace

VkCmColor colorFrom(const Value& value) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) return colorOfNumber(*number);
  if (const auto* text = std::get_if<std::wstring>(&value)) return colorOfText(*text);
  const auto& object = valueAs<OwnedDispatch>(value);
  if (!object) throw Refusal(E_INVALIDARG, L"The value is not a color.");
  return requireUsable(colorOf(*object.get()));
}

}  // namespace velt::automation
