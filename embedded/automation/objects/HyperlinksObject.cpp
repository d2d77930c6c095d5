#include "embedded/automation/objects/HyperlinksObject.h"

#include "embedded/automation/model/Refusal.h"

namespace velt::automation {
namespace {

std::vector<Hyperlink> readLinks(VkDbObjectId entity) {
  const std::optional<database::ObjectRef> object = database::resolve(entity);
  if (!object || object->drawing->isErased(object->record))
    throw Refusal(E_FAIL, L"The entity is no longer there.");
  return hyperlinksOf(*object);
}

HRESULT giveText(const std::wstring& text, BSTR* out) {
  BSTR copy = SysAllocStringLen(text.c_str(), static_cast<UINT>(text.size()));
  if (copy == nullptr) return E_OUTOFMEMORY;
  *out = copy;
  return S_OK;
}

Value getUrl(HyperlinkObject& link, std::int32_t) {
  return link.read().url;
}
Value getDescription(HyperlinkObject& link, std::int32_t) {
  return link.read().description;
}
Value getSubLocation(HyperlinkObject& link, std::int32_t) {
  return link.read().subLocation;
}

Value getCount(HyperlinksObject& links, std::int32_t) {
  return static_cast<std::int32_t>(links.count());
}

Value getItem(HyperlinksObject& links, std::int32_t index) {
  IVeltHyperlink* link = nullptr;
  const HRESULT result = links.Item(index, &link);
  if (FAILED(result)) throw Refusal(result, L"There is no such hyperlink.");
  return OwnedDispatch::owning(link);
}

}  // namespace

// clang-format off
const MemberRow<HyperlinkObject> HyperlinkObject::members[3] = {
  // id  name                  help                                type     get             put      method
  {  1, L"URL",                L"Address of the target.",          VT_BSTR, getUrl,         nullptr, false},
  {  2, L"URLDescription",     L"What is shown for the link.",     VT_BSTR, getDescription, nullptr, false},
  {  3, L"URLNamedLocation",   L"A place within the target.",      VT_BSTR, getSubLocation, nullptr, false},
};

const MemberRow<HyperlinksObject> HyperlinksObject::members[2] = {
  // id            name      help                                  type         get       put      method
  {  DISPID_VALUE, L"Item",  L"The link of that number, from 0.",  VT_DISPATCH, getItem,  nullptr, true},
  {  1,            L"Count", L"How many links the entity has.",    VT_I4,       getCount, nullptr, false},
};
// clang-format on

Hyperlink HyperlinkObject::read() const {
  std::vector<Hyperlink> links = readLinks(entity_);
  if (index_ >= links.size()) throw Refusal(DISP_E_BADINDEX, L"The hyperlink is no longer there.");
  return std::move(links[index_]);
}

HRESULT HyperlinkObject::get_URL(BSTR* url) {
  if (url == nullptr) return E_POINTER;
  return guarded([&] { return giveText(read().url, url); });
}

HRESULT HyperlinkObject::get_URLDescription(BSTR* description) {
  if (description == nullptr) return E_POINTER;
  return guarded([&] { return giveText(read().description, description); });
}

HRESULT HyperlinkObject::put_URL(BSTR) {
  return E_NOTIMPL;
}

HRESULT HyperlinkObject::put_URLDescription(BSTR) {
  return E_NOTIMPL;
}

OwnedDispatch HyperlinksObject::make(VkDbObjectId entity) {
  OwnedDispatch made = OwnedDispatch::owning(com::makeObject<HyperlinksObject>(entity));
  if (!made) throw Refusal(E_OUTOFMEMORY, L"Memory is exhausted.");
  return made;
}

std::size_t HyperlinksObject::count() const {
  return readLinks(entity_).size();
}

HRESULT HyperlinksObject::Item(LONG index, IVeltHyperlink** hyperlink) {
  if (hyperlink == nullptr) return E_POINTER;
  *hyperlink = nullptr;
  return guarded([&] {
    if (index < 0 || static_cast<std::size_t>(index) >= count()) return DISP_E_BADINDEX;
    *hyperlink = com::makeObject<HyperlinkObject>(entity_, static_cast<std::size_t>(index));
    return *hyperlink == nullptr ? E_OUTOFMEMORY : S_OK;
  });
}

HRESULT HyperlinksObject::get_Count(LONG* count) {
  if (count == nullptr) return E_POINTER;
  return guarded([&] {
    *count = static_cast<LONG>(this->count());
    return S_OK;
  });
}

}  // namespace velt::automation
