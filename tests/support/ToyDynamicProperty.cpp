#include "tests/support/ToyDynamicProperty.h"

#include "host/com/SafeArray.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"

namespace velt::toys {

namespace {

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
      return toy.answer("GetGUID()", [&] {
        *guid = {0x11111111, 0x2222, 0x3333, {4, 4, 4, 4, 4, 4, 4, 4}};
        return S_OK;
      });
    }
    HRESULT GetDisplayName(BSTR* name) override {
      return toy.answerText("GetDisplayName()", toy.displayName, name);
    }
    HRESULT IsPropertyEnabled(Entity entity, BOOL* out) override {
      return toy.answerFlag([&] { return say("IsPropertyEnabled(", entityOf(toy, entity), ")"); },
                            toy.enabled, out);
    }
    HRESULT IsPropertyReadOnly(BOOL* out) override {
      return toy.answerFlag("IsPropertyReadOnly()", toy.readOnly, out);
    }
    HRESULT GetDescription(BSTR* text) override {
      return toy.answerText("GetDescription()", toy.description, text);
    }
    HRESULT GetCurrentValueName(BSTR* typeName) override {
      return toy.answerValue("GetCurrentValueName()", toy.valueTypeName, typeName, E_NOTIMPL);
    }
    HRESULT GetCurrentValueType(VARTYPE* type) override {
      // Not what the value has: nobody may rely on it.
      return toy.answer("GetCurrentValueType()", [&] { return *type = VT_I2, S_OK; });
    }
    HRESULT GetCurrentValueData(Entity entity, VARIANT* out) override {
      return toy.answerValue([&] { return say("GetCurrentValueData(", entityOf(toy, entity), ")"); },
                             toy.value, out);
    }
    HRESULT SetCurrentValueData(Entity entity, VARIANT written) override {
      return toy.answer(
          [&] { return say("SetCurrentValueData(", entityOf(toy, entity), ", ", print(written), ")"); },
          [] { return S_OK; });
    }
    ToyDynamicProperty& toy;
  };

  struct Enumeration final : Facet<IDynamicEnumProperty> {
    explicit Enumeration(ToyDynamicProperty& owner) : Facet(owner, IID_IDynamicEnumProperty), toy(owner) {}

    HRESULT GetNumPropertyValues(LONG* count) override {
      return toy.answer("GetNumPropertyValues()", [&] {
        return *count = toy.valueCount.value_or(static_cast<LONG>(toy.items.size())), S_OK;
      });
    }
    HRESULT GetPropValueName(LONG index, BSTR* name) override {
      const auto line = [&] { return say("GetPropValueName(", index, ")"); };
      const Item* const item = itemAt(index);
      if (item == nullptr)
        return toy.answer(
            line, [] { return DISP_E_BADINDEX; }, name);
      return toy.answerText(line, item->name, name);
    }
    HRESULT GetPropValueData(LONG index, VARIANT* out) override {
      const auto line = [&] { return say("GetPropValueData(", index, ")"); };
      const Item* const item = itemAt(index);
      if (item == nullptr)
        return toy.answer(
            line, [] { return DISP_E_BADINDEX; }, out);
      return toy.answerValue(line, item->value, out, DISP_E_BADINDEX);
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
      return toy.answerValue([&] { return say("MapPropertyToCategory(", dispId, ")"); }, toy.category, out);
    }
    HRESULT GetCategoryName(PROPCAT number, LCID locale, BSTR* name) override {
      return toy.answerValue([&] { return say("GetCategoryName(", number, ", locale ", locale, ")"); },
                             toy.categoryName, name);
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

SAFEARRAY* ToyPropertySource::arrayOfProperties() const {
  std::vector<SAFEARRAYBOUND> bounds(dimensions, SAFEARRAYBOUND{1, 0});
  bounds[0] = {static_cast<ULONG>(properties.size()), lowerBound};
  SAFEARRAY* const array = SafeArrayCreate(elementType, dimensions, bounds.data());
  std::vector<LONG> indexes(dimensions);
  indexes[0] = lowerBound;
  for (IUnknown* const property : properties) {
    if (property != nullptr) SafeArrayPutElement(array, indexes.data(), property);
    ++indexes[0];
  }
  return array;
}

struct ToyPropertySource::SourceFacet final : Facet<IPropertySource> {
  explicit SourceFacet(ToyPropertySource& owner) : Facet(owner, IID_IPropertySource), toy(owner) {}

  HRESULT GetProperties(IDispatch* entity, VARIANT* out) override {
    return toy.answer([&] { return say("GetProperties(", entityOf(toy, entity), ")"); },
                      [&] {
                        if (toy.answersEmpty) return S_OK;
                        if (toy.answerWith.has_value()) {
                          *out = toy.answerWith->make();
                          return S_OK;
                        }
                        *out = ofType(toy.tag.value_or(static_cast<VARTYPE>(VT_ARRAY | toy.elementType)));
                        out->parray = toy.arrayOfProperties();
                        return S_OK;
                      },
                      out);
  }
  ToyPropertySource& toy;
};

ToyPropertySource::ToyPropertySource(ToyHost& host, std::string name)
    : Toy(host, std::move(name)), facet_(std::make_unique<SourceFacet>(*this)) {}

ToyPropertySource::~ToyPropertySource() = default;

}  // namespace velt::toys
