#pragma once

// A scriptable automation object: what it answers is plain data, filled in by a small builder:
//
//   ToyObject line(host, "line");
//   line.property(4, L"StartX").returns(VT_R8).holds(r8(1.5)).inCategory(3, L"Geometry").editable(1);
//   line.readOnly(5, L"Length");
//   line.withhold(IID_IPerPropertyBrowsing);
//
// Member ids in the type information are the DISPID plus 1000, so that a mix-up of the two shows.

#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/automation/IVeltBaseObject.h"
#include "host/automation/IVeltHatch.h"
#include "host/automation/IVkPiPropertyDisplay.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/database/VkDbObjectId.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "tests/support/ToyTypeInfo.h"
#include "tests/support/ToyValue.h"

namespace velt::toys {

struct ToyChoice {
  std::wstring name;
  ToyValue value;
  HRESULT result = S_OK;  // of GetPredefinedValue
};

struct ToyElement {
  DWORD cookie;
  std::wstring name;
  ToyValue value;
};

// What Invoke writes into the exception record; it then answers DISP_E_EXCEPTION.
struct ToyException {
  std::wstring source, description, helpFile;
};

struct ToyProperty {
  ToyObject* object = nullptr;
  DISPID dispId = 0;
  std::wstring name;

  std::optional<std::wstring> label;  // GetDisplayName; null string when unset
  std::optional<BOOL> show;           // the byte that ShowProperty writes; unset: success, nothing written
  std::optional<BOOL> edit;           // the same of Editable
  std::optional<PROPCAT> category;    // unset: MapPropertyToCategory fails
  std::optional<long> displayWeight;  // unset: GetPropertyWeight fails
  std::optional<ToyValue> value;      // unset: Invoke fails
  std::optional<ToyException> exception;
  bool offersChoices = false;      // GetPredefinedStrings succeeds
  std::vector<ToyChoice> choices;  // the value for cookie i is the one of choice i
  bool expands = false;            // GetElementStrings succeeds
  std::vector<ToyElement> elements;
  std::vector<std::wstring> extraNames;  // element names beyond the cookies
  std::optional<SHORT> grouping;         // unset: GetElementGrouping fails
  std::optional<long> groups;            // unset: GetGroupCount fails

  ToyProperty& returns(VARTYPE type);  // of the get function
  ToyProperty& returns(ToyTypeInfo& userType);
  ToyProperty& flagged(WORD flags);  // of both functions
  ToyProperty& documented(std::wstring text);
  ToyProperty& holds(ToyValue content);
  ToyProperty& holds(VARIANT content) { return holds(ToyValue(content)); }
  ToyProperty& labelled(std::wstring text);
  ToyProperty& shown(BOOL flag);
  ToyProperty& editable(BOOL flag);
  ToyProperty& inCategory(PROPCAT number);
  ToyProperty& inCategory(PROPCAT number, std::wstring categoryName);
  ToyProperty& weighs(long weight);
  ToyProperty& raises(ToyException texts);
  ToyProperty& choice(std::wstring choiceName, ToyValue content, HRESULT result = S_OK);
  ToyProperty& choice(std::wstring choiceName, VARIANT content, HRESULT result = S_OK) {
    return choice(std::move(choiceName), ToyValue(content), result);
  }
  ToyProperty& noChoices();  // the strings are answered, none of them
  ToyProperty& element(DWORD cookie, std::wstring elementName, ToyValue content);
  ToyProperty& element(DWORD cookie, std::wstring elementName, VARIANT content) {
    return element(cookie, std::move(elementName), ToyValue(content));
  }
  ToyProperty& noElements();
  ToyProperty& grouped(SHORT number, std::optional<long> groupCount = std::nullopt);
};

class ToyObject : public Toy {
 public:
  ToyObject(ToyHost& host, std::string name);
  ~ToyObject() override;

  ToyProperty& property(DISPID dispId, std::wstring propertyName);   // get and put
  ToyProperty& readOnly(DISPID dispId, std::wstring propertyName);   // get
  ToyProperty& writeOnly(DISPID dispId, std::wstring propertyName);  // put
  // For a test in which a failing call handed out arrays that nobody may free.
  void freeLastArrays();
  void method(DISPID dispId, std::wstring methodName);
  ToyProperty& operator[](DISPID dispId) { return properties_.at(dispId); }

  ToyTypeInfo type;                            // its functions may be changed by hand
  std::map<std::wstring, DISPID> dispIds;      // what GetIDsOfNames knows
  std::map<PROPCAT, std::wstring> categories;  // names; one that is missing here fails
  VkDbObjectId objectId;  // IVeltBaseObject: written by SetObjectId, answered by GetObjectId
  INT hatchVariant = 1;
  CALPOLESTR lastStrings{};  // the arrays that were handed out last, of choices or of elements
  CADWORD lastCookies{};
  bool exceptionWasZeroed = false;  // the exception record of the last Invoke, on its way in

 private:
  struct Facets;

  ToyProperty& propertyOf(DISPID dispId, const std::wstring& propertyName);
  ToyProperty* find(DISPID dispId);
  void addFunction(DISPID dispId, const std::wstring& functionName, INVOKEKIND kind);

  std::map<DISPID, ToyProperty> properties_;
  std::unique_ptr<Facets> facets_;
};

}  // namespace velt::toys
