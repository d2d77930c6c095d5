#pragma once

// A hyperlink collection and its items.

#include <memory>
#include <vector>

#include "host/automation/IVeltHyperlinks.h"
#include "tests/support/Toy.h"

namespace velt::toys {

class ToyHyperlink : public Toy {
 public:
  // Without a text get_URL answers the null string.
  ToyHyperlink(ToyHost& host, std::string name, std::optional<std::wstring> text)
      : Toy(host, std::move(name)), url(std::move(text)), dispatch_(*this, IID_IDispatch), link_(*this) {}

  std::optional<std::wstring> url;

 private:
  struct LinkFacet final : DualFacet<IVeltHyperlink> {
    explicit LinkFacet(ToyHyperlink& owner) : DualFacet(owner, IID_IVeltHyperlink), toy(owner) {}

    HRESULT put_URL(BSTR) override { return refuse("put_URL()"); }
    HRESULT get_URL(BSTR* out) override { return toy.answerText("get_URL()", toy.url, out); }
    HRESULT put_URLDescription(BSTR) override { return refuse("put_URLDescription()"); }
    HRESULT get_URLDescription(BSTR*) override { return refuse("get_URLDescription()"); }
    ToyHyperlink& toy;
  };

  DualFacet<IDispatch> dispatch_;
  LinkFacet link_;
};

class ToyHyperlinks : public Toy {
 public:
  ToyHyperlinks(ToyHost& host, std::string name)
      : Toy(host, std::move(name)), dispatch_(*this, IID_IDispatch), links_(*this) {}

  ToyHyperlink& add(std::optional<std::wstring> url) {
    items.push_back(
        std::make_unique<ToyHyperlink>(host(), say(name(), "[", items.size(), "]"), std::move(url)));
    return *items.back();
  }

  std::vector<std::unique_ptr<ToyHyperlink>> items;  // Item fails beyond them

 private:
  struct LinksFacet final : DualFacet<IVeltHyperlinks> {
    explicit LinksFacet(ToyHyperlinks& owner) : DualFacet(owner, IID_IVeltHyperlinks), toy(owner) {}

    HRESULT Item(LONG index, IVeltHyperlink** hyperlink) override {
      return toy.answer([&] { return say("Item(", index, ")"); },
                        [&] {
                          if (index < 0 || static_cast<std::size_t>(index) >= toy.items.size())
                            return DISP_E_BADINDEX;
                          ToyHyperlink& item = *toy.items[static_cast<std::size_t>(index)];
                          item.referenced(IID_IVeltHyperlink);
                          *hyperlink = item.as<IVeltHyperlink>(IID_IVeltHyperlink);
                          return S_OK;
                        },
                        hyperlink);
    }
    HRESULT get_Count(LONG*) override { return refuse("get_Count()"); }
    ToyHyperlinks& toy;
  };

  DualFacet<IDispatch> dispatch_;
  LinksFacet links_;
};

}  // namespace velt::toys
