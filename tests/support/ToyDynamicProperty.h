#pragma once

// A dynamic property of both generations, with its enumeration and categories; and a property source.
// Withhold IID_IDynamicProperty2 for a property of the older generation, IID_IDynamicEnumProperty for one
// without choices, IID_ICategorizeProperties for one without a category.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IPropertySource.h"
#include "tests/support/Toy.h"
#include "tests/support/ToyValue.h"

namespace velt::toys {

class ToyDynamicProperty : public Toy {
 public:
  ToyDynamicProperty(ToyHost& host, std::string name);
  ~ToyDynamicProperty() override;

  std::optional<std::wstring> displayName = L"Dynamic";
  std::optional<std::wstring> description = L"A dynamic property";
  std::optional<std::wstring> valueTypeName;  // unset: GetCurrentValueName fails
  std::optional<BOOL> enabled = BOOL{1};      // the byte written; unset: success, nothing written
  std::optional<BOOL> readOnly = BOOL{0};
  std::optional<ToyValue> value;   // unset: GetCurrentValueData fails
  std::optional<LONG> valueCount;  // told instead of the true one
  struct Item {
    std::optional<std::wstring> name;
    std::optional<ToyValue> value;  // unset: GetPropValueData fails
  };
  std::vector<Item> items;
  std::optional<PROPCAT> category = 1;
  std::optional<std::wstring> categoryName = L"General";

 private:
  struct Facets;
  std::unique_ptr<Facets> facets_;
};

class ToyPropertySource : public Toy {
 public:
  ToyPropertySource(ToyHost& host, std::string name);
  ~ToyPropertySource() override;

  std::vector<IUnknown*> properties;  // null elements are handed out as they are
  LONG lowerBound = 0;
  VARTYPE elementType = VT_UNKNOWN;
  UINT dimensions = 1;                 // each but the first of one element
  std::optional<VARTYPE> tag;          // of the answer, where it is not what the array holds
  bool answersEmpty = false;           // success with VT_EMPTY
  std::optional<ToyValue> answerWith;  // success with this instead of an array

 private:
  struct SourceFacet;
  SAFEARRAY* arrayOfProperties() const;
  std::unique_ptr<SourceFacet> facet_;
};

}  // namespace velt::toys
