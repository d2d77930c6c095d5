#pragma once

// The base of the host's own dynamic properties. It answers for name, type and category; a derived class has three
// functions that look up, read and write the value of one entity.
//
// Ownership: a property stands for a kind of value (the attribute with that tag, the first value of that
// application), so one object serves all entities that have such a value, in all drawings. It is made when it is
// first needed and lives as long as the process, because rows keep its pointer without a reference. There are as many
// as there are different tags and applications, however many entities a drawing has.
// Threads: one, the palette's.
// Failure: exceptions become results, and out-parameters stay untouched.

#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>

#include "embedded/com/ComObject.h"
#include "embedded/database/Drawing.h"
#include "holders/InterfaceHolder.h"

namespace velt::sources {

// An entity of an open drawing, for which an automation object speaks.
struct AskedEntity {
  VkDbObjectId id;
  database::ObjectRef object;
};

// Nothing for null, for an object that is not bound to an entity, and for an entity whose drawing is closed.
[[nodiscard]] std::optional<AskedEntity> entityBehind(IUnknown* automationObject);

class EntityProperty : public com::ComObject<IDynamicProperty2, ICategorizeProperties> {
 public:
  struct Description {
    std::wstring name;
    std::wstring help;
    VARTYPE type = VT_BSTR;
    bool isReadOnly = false;
    // A category of its own, so positive: negative numbers are predefined.
    PROPCAT category = 0;
    // The name of that category.
    const wchar_t* heading = L"";
  };

  explicit EntityProperty(Description description);

  // Computed from heading, name and type, so it is the same in every process.
  HRESULT GetGUID(GUID* guid) final;
  HRESULT GetDisplayName(BSTR* name) final;
  HRESULT IsPropertyEnabled(IDispatch* entity, BOOL* enabled) final;
  HRESULT IsPropertyReadOnly(BOOL* readOnly) final;
  HRESULT GetDescription(BSTR* description) final;
  // E_NOTIMPL: these properties have no custom types.
  HRESULT GetCurrentValueName(BSTR* typeName) final;
  HRESULT GetCurrentValueType(VARTYPE* type) final;
  // E_INVALIDARG for an object that is not bound to an entity, and for an entity without such a value.
  HRESULT GetCurrentValueData(IDispatch* entity, VARIANT* value) final;
  // A value that cannot be read back afterwards changes nothing. E_INVALIDARG as above; E_ACCESSDENIED for a read-only property and for an entity on a locked layer;
  // DISP_E_TYPEMISMATCH for a value of another kind than the property's; DISP_E_OVERFLOW for a number that does not
  // fit.
  HRESULT SetCurrentValueData(IDispatch* entity, VARIANT value) final;

  HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) final;
  HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) final;

  [[nodiscard]] const Description& description() const { return description_; }

 protected:
  // These may throw automation::Refusal. `read` and `write` are called only for entities that have the value.
  [[nodiscard]] virtual bool has(const AskedEntity& entity) const = 0;
  [[nodiscard]] virtual VARIANT read(const AskedEntity& entity) const = 0;
  virtual void write(const AskedEntity& entity, const VARIANT& value) const = 0;
  // Whether what is read after a write is what was written; texts exactly, numbers by their value.
  [[nodiscard]] virtual bool isSame(const AskedEntity& entity, const VARIANT& put, const VARIANT& got) const;

 private:
  Description description_;
};

// The value that is to be written. Texts are taken only from texts, and numbers only from numbers; each throws
// Refusal for anything else. The layer also writes a merged row to properties that stand before it, and a value of
// another kind must not end up in those.
[[nodiscard]] std::wstring textIn(const VARIANT& value);
[[nodiscard]] double realIn(const VARIANT& value);
[[nodiscard]] std::int64_t integerIn(const VARIANT& value, std::int64_t lowest, std::int64_t highest);

// The caller clears it. Throws Refusal when memory is exhausted.
[[nodiscard]] VARIANT textVariant(const std::wstring& text);

// Throws Refusal when the entity of that record is on a locked layer.
void requireUnlockedLayer(const database::Drawing& drawing, std::uint32_t record);

// Fills the answer of GetProperties: the properties in order, or VT_EMPTY for none. E_OUTOFMEMORY leaves it untouched.
HRESULT givePropertyArray(std::span<IDynamicProperty2* const> properties, VARIANT* out);

// The properties that a source has made so far, by a key of its choice.
template <class Property>
class PropertyPool {
 public:
  template <class Make>
  Property& find(const std::wstring& key, Make&& make) {
    const std::lock_guard lock(mutex_);
    if (const auto found = made_.find(key); found != made_.end()) return *found->second;
    Property* const property = make();
    if (property == nullptr) throw std::bad_alloc();
    return *made_.emplace(key, property).first->second;
  }

 private:
  std::mutex mutex_;
  std::unordered_map<std::wstring, Property*> made_;
};

}  // namespace velt::sources
