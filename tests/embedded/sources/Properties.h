#pragma once

// The rows that a source offers for an entity, asked as a palette asks.

#include <string>
#include <vector>

#include "embedded/sources/EntityProperty.h"
#include "host/com/SafeArray.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IPropertySource.h"
#include "tests/embedded/automation/Automation.h"
#include "tests/support/Variants.h"

namespace velt::sources::test {

using automation::test::Bound;
using automation::test::textOf;
using database::Drawing;
using database::test::Pairs;
using database::test::record;
using database::test::Sample;
using holders::InterfaceHolder;
using holders::StringHolder;
using holders::VariantHolder;

inline std::vector<InterfaceHolder<IUnknown>> elementsOf(const VARIANT& array) {
  std::vector<InterfaceHolder<IUnknown>> elements;
  if (array.vt != (VT_ARRAY | VT_UNKNOWN)) return elements;
  LONG upper = -1;
  SafeArrayGetUBound(array.parray, 1, &upper);
  for (LONG index = 0; index <= upper; ++index) {
    InterfaceHolder<IUnknown> element;
    EXPECT_EQ(S_OK, SafeArrayGetElement(array.parray, &index, element.put()));
    elements.push_back(std::move(element));
  }
  return elements;
}

// One property of a source, with the entity that it was offered for.
class Row {
 public:
  Row(IDispatch& entity, IUnknown& property) : Row(&entity, property) {}
  Row(IDispatch* entity, IUnknown& property)
      : entity_(entity), property_(automation::test::ask<IDynamicProperty2>(property)) {}

  [[nodiscard]] IDynamicProperty2& property() const { return *property_.get(); }
  [[nodiscard]] std::wstring name() const {
    StringHolder text;
    EXPECT_EQ(S_OK, property_->GetDisplayName(text.put()));
    return std::wstring(text.view());
  }
  [[nodiscard]] std::wstring help() const {
    StringHolder text;
    EXPECT_EQ(S_OK, property_->GetDescription(text.put()));
    return std::wstring(text.view());
  }
  [[nodiscard]] std::wstring heading() const {
    const auto categories = automation::test::ask<ICategorizeProperties>(*property_.get());
    PROPCAT category = 0;
    StringHolder text;
    EXPECT_EQ(S_OK, categories->MapPropertyToCategory(-23, &category));
    EXPECT_EQ(S_OK, categories->GetCategoryName(category, LOCALE_USER_DEFAULT, text.put()));
    return std::wstring(text.view());
  }
  [[nodiscard]] bool isReadOnly() const {
    BOOL readOnly = 77;
    EXPECT_EQ(S_OK, property_->IsPropertyReadOnly(&readOnly));
    return readOnly == 1;
  }
  [[nodiscard]] VARTYPE type() const {
    VARTYPE type = VT_EMPTY;
    EXPECT_EQ(S_OK, property_->GetCurrentValueType(&type));
    return type;
  }
  [[nodiscard]] bool isEnabledFor(IDispatch& entity) const {
    BOOL enabled = 77;
    EXPECT_EQ(S_OK, property_->IsPropertyEnabled(&entity, &enabled));
    return enabled == 1;
  }
  [[nodiscard]] VariantHolder value() const {
    VariantHolder value;
    EXPECT_EQ(S_OK, property_->GetCurrentValueData(entity_, value.put()));
    EXPECT_EQ(type(), value.get().vt);
    return value;
  }
  [[nodiscard]] std::wstring text() const { return textOf(value().get()); }

  HRESULT set(const VARIANT& value) const { return property_->SetCurrentValueData(entity_, value); }
  HRESULT set(const std::wstring& text) const { return set(variants::borrowed(StringHolder(text).get())); }

 private:
  IDispatch* entity_;
  InterfaceHolder<IDynamicProperty2> property_;
};

inline std::vector<Row> rowsOf(IPropertySource& source, IDispatch& entity) {
  VariantHolder properties;
  EXPECT_EQ(S_OK, source.GetProperties(&entity, properties.put()));
  std::vector<Row> rows;
  for (const InterfaceHolder<IUnknown>& element : elementsOf(properties.get()))
    rows.emplace_back(entity, *element.get());
  return rows;
}

inline std::vector<std::wstring> namesOf(const std::vector<Row>& rows) {
  std::vector<std::wstring> names;
  for (const Row& row : rows)
    names.push_back(row.name());
  return names;
}

}  // namespace velt::sources::test
