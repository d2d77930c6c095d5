#include "tests/support/ToyDynamicProperty.h"

#include "host/com/SafeArray.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"

namespace velt::toys {

namespace {

BSTR newString(const std::optional<std::wstring>& text) {
  return text.has_value() ? SysAllocString(text->c_str()) : nullptr;
}

// How the two generations name the entity.
std::string entityOf(const Toy& /*asked*/, long oldId) {
  return say("id ", oldId);
}
std::string entityOf(const Toy& asked, const IDispatch* entity) {
  return asked.host().nameOfOwner(entity);
}

}  // namespace

struct ToyDynamicProperty::Facets {
  // The two generations have the same methods and differ only in how they name the entity.
  template <class Interface, class Entity>
  struct Property final : Facet<Interface> {
    Property(ToyDynamicProperty& owner, REFIID iid) : Facet<Interface>(owner, iid), toy(owner) {}

    HRESULT GetGUID(GUID* guid) override {
      const tests::AllocationPause pause;
      return toy.call("GetGUID()", [&] {
        *guid = {0x11111111, 0x2222, 0x3333, {4, 4, 4, 4, 4, 4, 4, 4}};
        return S_OK;
      });
    }
    HRESULT GetDisplayName(BSTR* name) override { return string("GetDisplayName()", toy.displayName, name); }
    HRESULT IsPropertyEnabled(Entity entity, BOOL* out) override {
      const tests::AllocationPause pause;
      return flag(say("IsPropertyEnabled(", entityOf(toy, entity), ")"), toy.enabled, out);
    }
    HRESULT IsPropertyReadOnly(BOOL* out) override { return flag("IsPropertyReadOnly()", toy.readOnly, out); }
    HRESULT GetDescription(BSTR* text) override { return string("GetDescription()", toy.description, text); }
    HRESULT GetCurrentValueName(BSTR* typeName) override {
      const tests::AllocationPause pause;
      return toy.call(
          "GetCurrentValueName()",
          [&] {
            if (!toy.valueTypeName.has_value()) return E_NOTIMPL;
            *typeName = newString(toy.valueTypeName);
            return S_OK;
          },
          [&] { *typeName = nullptr; });
    }
    HRESULT GetCurrentValueType(VARTYPE* type) override {
      const tests::AllocationPause pause;
      return toy.call("GetCurrentValueType()", [&] {
        *type = VT_I2;  // not what the value has: nobody may rely on it
        return S_OK;
      });
    }
    HRESULT GetCurrentValueData(Entity entity, VARIANT* out) override {
      const tests::AllocationPause pause;
      return toy.call(
          say("GetCurrentValueData(", entityOf(toy, entity), ")"),
          [&] {
            if (!toy.value.has_value()) return E_FAIL;
            *out = toy.value->make();
            return S_OK;
          },
          [&] { *out = empty(); });
    }
    HRESULT SetCurrentValueData(Entity entity, VARIANT written) override {
      const tests::AllocationPause pause;
      return toy.call(say("SetCurrentValueData(", entityOf(toy, entity), ", ", print(written), ")"),
                      [] { return S_OK; });
    }

    HRESULT string(const char* line, const std::optional<std::wstring>& text, BSTR* out) {
      const tests::AllocationPause pause;
      return toy.call(
          line,
          [&] {
            *out = newString(text);
            return S_OK;
          },
          [&] { *out = nullptr; });
    }
    HRESULT flag(const std::string& line, std::optional<BOOL> byte, BOOL* out) {
      const tests::AllocationPause pause;
      return toy.call(
          line,
          [&] {
            if (byte.has_value()) *out = *byte;
            return S_OK;
          },
          [&] { *out = 0; });
    }
    ToyDynamicProperty& toy;
  };

  struct Enumeration final : Facet<IDynamicEnumProperty> {
    explicit Enumeration(ToyDynamicProperty& owner) : Facet(owner, IID_IDynamicEnumProperty), toy(owner) {}

    HRESULT GetNumPropertyValues(LONG* count) override {
      const tests::AllocationPause pause;
      return toy.call("GetNumPropertyValues()", [&] {
        *count = toy.valueCount.value_or(static_cast<LONG>(toy.items.size()));
        return S_OK;
      });
    }
    HRESULT GetPropValueName(LONG index, BSTR* name) override {
      const tests::AllocationPause pause;
      return toy.call(
          say("GetPropValueName(", index, ")"),
          [&] {
            const Item* const item = itemAt(index);
            if (item == nullptr) return DISP_E_BADINDEX;
            *name = newString(item->name);
            return S_OK;
          },
          [&] { *name = nullptr; });
    }
    HRESULT GetPropValueData(LONG index, VARIANT* out) override {
      const tests::AllocationPause pause;
      return toy.call(
          say("GetPropValueData(", index, ")"),
          [&] {
            const Item* const item = itemAt(index);
            if (item == nullptr || !item->value.has_value()) return DISP_E_BADINDEX;
            *out = item->value->make();
            return S_OK;
          },
          [&] { *out = empty(); });
    }
    const Item* itemAt(LONG index) const {
      const auto i = static_cast<std::size_t>(index);
      return index < 0 || i >= toy.items.size() ? nullptr : &toy.items[i];
    }
    ToyDynamicProperty& toy;
  };

  struct Categories final : Facet<ICategorizeProperties> {
    explicit Categories(ToyDynamicProperty& owner) : Facet(owner, IID_ICategorizeProperties), toy(owner) {}

    HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* out) override {
      const tests::AllocationPause pause;
      return toy.call(say("MapPropertyToCategory(", dispId, ")"), [&] {
        if (!toy.category.has_value()) return E_FAIL;
        *out = *toy.category;
        return S_OK;
      });
    }
    HRESULT GetCategoryName(PROPCAT number, LCID locale, BSTR* name) override {
      const tests::AllocationPause pause;
      return toy.call(
          say("GetCategoryName(", number, ", locale ", locale, ")"),
          [&] {
            if (!toy.categoryName.has_value()) return E_FAIL;
            *name = newString(toy.categoryName);
            return S_OK;
          },
          [&] { *name = nullptr; });
    }
    ToyDynamicProperty& toy;
  };

  explicit Facets(ToyDynamicProperty& toy)
      : newer(toy, IID_IDynamicProperty2),
        older(toy, IID_IDynamicProperty),
        enumeration(toy),
        categories(toy) {}

  Property<IDynamicProperty2, IDispatch*> newer;
  Property<IDynamicProperty, long> older;
  Enumeration enumeration;
  Categories categories;
};

ToyDynamicProperty::ToyDynamicProperty(ToyHost& host, std::string name)
    : Toy(host, std::move(name)), facets_(std::make_unique<Facets>(*this)) {}

ToyDynamicProperty::~ToyDynamicProperty() = default;

struct ToyPropertySource::SourceFacet final : Facet<IPropertySource> {
  explicit SourceFacet(ToyPropertySource& owner) : Facet(owner, IID_IPropertySource), toy(owner) {}

  HRESULT GetProperties(IDispatch* entity, VARIANT* out) override {
    const tests::AllocationPause pause;
    return toy.call(
        "GetProperties(" + entityOf(toy, entity) + ")",
        [&] {
          if (toy.answersEmpty) return S_OK;
          if (toy.answerWith.has_value()) {
            *out = toy.answerWith->make();
            return S_OK;
          }
          SAFEARRAY* const array = SafeArrayCreateVector(toy.elementType, toy.lowerBound,
                                                         static_cast<ULONG>(toy.properties.size()));
          for (std::size_t i = 0; i < toy.properties.size(); ++i) {
            const LONG index = toy.lowerBound + static_cast<LONG>(i);
            if (toy.properties[i] != nullptr) SafeArrayPutElement(array, &index, toy.properties[i]);
          }
          VARIANT made = ofType(static_cast<VARTYPE>(VT_ARRAY | toy.elementType));
          made.parray = array;
          *out = made;
          return S_OK;
        },
        [&] { *out = empty(); });
  }
  ToyPropertySource& toy;
};

ToyPropertySource::ToyPropertySource(ToyHost& host, std::string name)
    : Toy(host, std::move(name)), facet_(std::make_unique<SourceFacet>(*this)) {}

ToyPropertySource::~ToyPropertySource() = default;

}  // namespace velt::toys
