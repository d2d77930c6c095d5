#pragma once

// A dynamic property of the host's own: what it is called stands here, what an entity has for it is asked and set
// through three functions.
//
// Lifetime: a property says what it stands for (the attribute of that tag, the first value of that application) and
// nothing of an entity, so that one object serves all entities that have such a thing, in all drawings. It is made when
// it is first met and lives as long as the process, which is what rows rely on: they keep its pointer without a
// reference. There are as many as there are different tags and applications, however many entities a drawing has.
// Threads: those of the drawing whose entity is asked.
// Failure: exceptions become results at the edge; out-parameters stay untouched.

#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>

#include "embedded/com/ComObject.h"
#include "embedded/com/InterfaceHolder.h"
#include "embedded/database/Drawing.h"

namespace velt::sources {

// An entity of an open drawing, as found behind an automation object.
struct AskedEntity {
  VkDbObjectId id;
  database::ObjectRef object;
};

// Nothing for null, for an object that stands for no entity, and for one whose drawing is closed.
[[nodiscard]] std::optional<AskedEntity> entityBehind(IUnknown* automationObject);

class EntityProperty : public com::ComObject<IDynamicProperty2, ICategorizeProperties> {
 public:
  struct Description {
    std::wstring name;
    std::wstring help;
    VARTYPE type = VT_BSTR;
    bool isReadOnly = false;
    // Positive: the negative ones are predefined.
    PROPCAT category = 0;
    // Of that category.
    const wchar_t* heading = L"";
  };

  explicit EntityProperty(Description description);

  // Made of the heading, the name and the type, so it is the same in every process.
  HRESULT GetGUID(GUID* guid) final;
  HRESULT GetDisplayName(BSTR* name) final;
  HRESULT IsPropertyEnabled(IDispatch* entity, BOOL* enabled) final;
  HRESULT IsPropertyReadOnly(BOOL* readOnly) final;
  HRESULT GetDescription(BSTR* description) final;
  // E_NOTIMPL: none has a custom type.
  HRESULT GetCurrentValueName(BSTR* typeName) final;
  HRESULT GetCurrentValueType(VARTYPE* type) final;
  // E_INVALIDARG for an object that stands for no entity, or for one that has no such value.
  HRESULT GetCurrentValueData(IDispatch* entity, VARIANT* value) final;
  // As above, and E_ACCESSDENIED for a read-only property and for an entity on a locked layer, DISP_E_TYPEMISMATCH for a
  // value of another kind than the property's, DISP_E_OVERFLOW for a number that is too large for it.
  HRESULT SetCurrentValueData(IDispatch* entity, VARIANT value) final;

  HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) final;
  HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) final;

  [[nodiscard]] const Description& description() const { return description_; }

 protected:
  // These may throw automation::Refusal. `read` and `write` are called for entities that have the value only.
  [[nodiscard]] virtual bool has(const AskedEntity& entity) const = 0;
  [[nodiscard]] virtual VARIANT read(const AskedEntity& entity) const = 0;
  virtual void write(const AskedEntity& entity, const VARIANT& value) const = 0;

 private:
  Description description_;
};

// Texts are taken from texts and numbers from numbers only: a merged row is written to further properties than the one
// that it shows, and what is of another kind must not end there. Each throws Refusal for anything else.
[[nodiscard]] std::wstring textIn(const VARIANT& value);
[[nodiscard]] double realIn(const VARIANT& value);
[[nodiscard]] std::int64_t integerIn(const VARIANT& value, std::int64_t lowest, std::int64_t highest);

// For the caller, who clears it. Throws Refusal when memory is exhausted.
[[nodiscard]] VARIANT textVariant(const std::wstring& text);

// Throws Refusal when the record stands on a locked layer.
void requireUnlockedLayer(const database::Drawing& drawing, std::uint32_t record);

// What GetProperties answers: the properties in order, or VT_EMPTY for none. E_OUTOFMEMORY leaves it untouched.
HRESULT givePropertyArray(std::span<IDynamicProperty2* const> properties, VARIANT* out);

// The properties that were made so far, by a key of the source's choice.
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

// Keeps what was last worked out of an entity, because an entity is asked for all its values in a row. One per thread.
template <class Facts>
class LastAsked {
 public:
  template <class WorkOut>
  Facts& of(const AskedEntity& entity, WorkOut&& workOut) {
    const std::uint64_t revision = entity.object.drawing->revision();
    if (id_ != entity.id || revision_ != revision) {
      id_ = VkDbObjectId::kNull;
      facts_ = workOut();
      id_ = entity.id;
      revision_ = revision;
    }
    return facts_;
  }

 private:
  VkDbObjectId id_;
  std::uint64_t revision_ = 0;
  Facts facts_{};
};

}  // namespace velt::sources
