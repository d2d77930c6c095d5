#pragma once

// A color object: offers IVeltVkCmColor (and IDispatch) and nothing else.

#include "host/automation/IVeltVkCmColor.h"
#include "tests/support/Toy.h"

namespace velt::toys {

class ToyColor : public Toy {
 public:
  static constexpr std::uint32_t byLayer = 0xC0000000U;
  static constexpr std::uint32_t indexed(std::uint32_t index) { return 0xC3000000U | index; }

  ToyColor(ToyHost& host, std::string name, std::uint32_t color)
      : Toy(host, std::move(name)), value(color), dispatch_(*this, IID_IDispatch), color_(*this) {}

  std::uint32_t value;
  std::optional<std::wstring> colorName, bookName;  // null string when unset

 private:
  struct ColorFacet final : DualFacet<IVeltVkCmColor> {
    explicit ColorFacet(ToyColor& owner) : DualFacet(owner, IID_IVeltVkCmColor), toy(owner) {}

    HRESULT put_EntityColor(LONG) override { return refuse("put_EntityColor()"); }
    HRESULT get_EntityColor(LONG* out) override {
      return toy.answer(
          "get_EntityColor()", [&] { return *out = static_cast<LONG>(toy.value), S_OK; }, out);
    }
    HRESULT get_ColorName(BSTR* name) override {
      return toy.answerText("get_ColorName()", toy.colorName, name);
    }
    HRESULT get_BookName(BSTR* name) override { return toy.answerText("get_BookName()", toy.bookName, name); }
    HRESULT SetNames(BSTR, BSTR) override { return refuse("SetNames()"); }
    ToyColor& toy;
  };

  DualFacet<IDispatch> dispatch_;
  ColorFacet color_;
};

}  // namespace velt::toys
