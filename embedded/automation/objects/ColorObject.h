#pragma once

// A color as an automation object.
//
// It is a value of its own: what a get of an entity's color gives is the color at that moment, and changing it
// changes no entity until it is put back.

#include "embedded/automation/objects/TableDispatch.h"
#include "host/database/VkCmColor.h"

namespace velt::automation {

class ColorObject final : public TableDispatch<ColorObject, IVeltVkCmColor> {
 public:
  static constexpr const wchar_t* typeName = L"VeltVkCmColor";
  static constexpr const wchar_t* typeHelp = L"A color.";
  static constexpr const char* accountName = "VeltVkCmColor";
  static const MemberRow<ColorObject> members[7];

  explicit ColorObject(const VkCmColor& color) : color_(color) {}
  // A new object with one reference. Throws Refusal when memory is exhausted.
  [[nodiscard]] static OwnedDispatch make(const VkCmColor& color);

  [[nodiscard]] const VkCmColor& color() const noexcept { return color_; }

  // E_INVALIDARG for a value whose top byte names no way of coloring.
  HRESULT put_EntityColor(LONG value) override;
  HRESULT get_EntityColor(LONG* value) override;
  // Empty for a color of no book.
  HRESULT get_ColorName(BSTR* name) override;
  HRESULT get_BookName(BSTR* name) override;
  HRESULT SetNames(BSTR colorName, BSTR bookName) override;

 private:
  VkCmColor color_;
};

// What any object that offers the interface says its color is. Throws Refusal when it offers none, or fails.
[[nodiscard]] VkCmColor colorOf(IUnknown& object);

}  // namespace velt::automation
