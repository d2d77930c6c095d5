#pragma once

// The hyperlinks of an entity, and one of them, as automation objects.
//
// Both know the entity by its id and read the drawing at each call, so they are never out of date.

#include "embedded/automation/objects/Hyperlinks.h"
#include "embedded/automation/objects/TableDispatch.h"
#include "host/database/VkDbObjectId.h"

namespace velt::automation {

class HyperlinkObject final : public TableDispatch<HyperlinkObject, IVeltHyperlink> {
 public:
  static constexpr const wchar_t* typeName = L"VeltHyperlink";
  static constexpr const wchar_t* typeHelp = L"A hyperlink of an entity.";
  static constexpr const char* accountName = "VeltHyperlink";
  static const MemberRow<HyperlinkObject> members[3];

  HyperlinkObject(VkDbObjectId entity, std::size_t index) : entity_(entity), index_(index) {}

  // Throws Refusal when the entity, or this link of it, is no longer there.
  [[nodiscard]] Hyperlink read() const;

  // E_NOTIMPL: links are read here, and written where they are made.
  HRESULT put_URL(BSTR url) override;
  HRESULT get_URL(BSTR* url) override;
  HRESULT put_URLDescription(BSTR description) override;
  HRESULT get_URLDescription(BSTR* description) override;

 private:
  VkDbObjectId entity_;
  std::size_t index_;
};

class HyperlinksObject final : public TableDispatch<HyperlinksObject, IVeltHyperlinks> {
 public:
  static constexpr const wchar_t* typeName = L"VeltHyperlinks";
  static constexpr const wchar_t* typeHelp = L"The hyperlinks of an entity.";
  static constexpr const char* accountName = "VeltHyperlinks";
  static const MemberRow<HyperlinksObject> members[2];

  explicit HyperlinksObject(VkDbObjectId entity) : entity_(entity) {}
  // A new object with one reference. Throws Refusal when memory is exhausted.
  [[nodiscard]] static OwnedDispatch make(VkDbObjectId entity);

  // Throws Refusal when the entity is no longer there.
  [[nodiscard]] std::size_t count() const;

  // DISP_E_BADINDEX, and null, when there is no such link.
  HRESULT Item(LONG index, IVeltHyperlink** hyperlink) override;
  HRESULT get_Count(LONG* count) override;

 private:
  VkDbObjectId entity_;
};

}  // namespace velt::automation
