// What an object says of one property: label, flags, category, value.

#include <array>
#include <cstring>
#include <string>

#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/com/ComRuntime.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "hostcheck/Checks.h"

using namespace velt::holders;

namespace velt::hostcheck {

namespace {

// A flag among bytes that nobody may touch.
struct GuardedFlag {
  static constexpr BOOL guard = 0x5A;
  std::array<BOOL, 8> bytes{guard, guard, guard, 1, guard, guard, guard, guard};

  BOOL* put() { return &bytes[3]; }
  BOOL answer() const { return bytes[3]; }
  bool isAlone() const {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      if (i != 3 && bytes[i] != guard) return false;
    }
    return true;
  }
};

void checkFlags(Findings& findings, IOPMPropertyExtension& extension, const Property& property) {
  GuardedFlag show;
  findings.call("ShowProperty", [&] { return extension.ShowProperty(property.dispId, show.put()); });
  findings.expect(show.answer() == 0 || show.answer() == 1, "flag-shown",
                  "ShowProperty writes 1 to show the row, 0 to hide it", std::to_string(show.answer()));
  findings.expect(show.isAlone(), "flag-one-byte", "ShowProperty writes one byte", "it wrote beside it");
  if (!property.isWritable) return;
  GuardedFlag editable;
  findings.call("Editable", [&] { return extension.Editable(property.dispId, editable.put()); });
  findings.expect(editable.isAlone(), "flag-one-byte", "Editable writes one byte", "it wrote beside it");
}

void checkLabel(Findings& findings, IOPMPropertyExtension& extension, const Property& property) {
  StringHolder label;
  const HRESULT result =
      findings.call("GetDisplayName", [&] { return extension.GetDisplayName(property.dispId, label.put()); });
  // The layer takes the text after a failure, too, and gives it back.
  findings.expect(SUCCEEDED(result) || !label, "label", "GetDisplayName leaves no text when it fails",
                  "a text");
}

void checkCategory(Findings& findings, ICategorizeProperties& categories, const Property& property) {
  PROPCAT category = 0;
  const HRESULT mapped = findings.call(
      "MapPropertyToCategory", [&] { return categories.MapPropertyToCategory(property.dispId, &category); });
  if (!findings.expect(SUCCEEDED(mapped), "category", "MapPropertyToCategory knows the property",
                       hex(mapped)))
    return;
  constexpr PROPCAT firstPredefined = -32;
  constexpr PROPCAT lastPredefined = -1;
  if (category >= firstPredefined && category <= lastPredefined) {
    const HMODULE library = loadResourceDll(L"PlxOPMRes.dll");
    std::array<wchar_t, 1024> text{};
    LoadStringW(library, static_cast<UINT>(1000 - category), text.data(), 1023);
    findings.expect(text[0] != L'\0', "category-name",
                    "\"PlxOPMRes.dll\" has the string " + std::to_string(1000 - category)
                        + ", the name of category " + std::to_string(category),
                    library != nullptr ? "none" : "no library");
    return;
  }
  StringHolder name;
  // As the layer asks: with the DISPID where the locale belongs.
  const HRESULT named = findings.call("GetCategoryName", [&] {
    return categories.GetCategoryName(category, static_cast<LCID>(property.dispId), name.put());
  });
  const bool isNamed = handedOver(named, name);
  findings.expect(isNamed, "category-name",
                  "GetCategoryName names category " + std::to_string(category) + ", whatever the locale is",
                  hex(named));
}

bool isExpanded(IUnknown& unknown, const Property& property) {
  InterfaceHolder<IOPMPropertyExpander> expander;
  return property.type == VT_VARIANT && SUCCEEDED(query(&unknown, IID_IOPMPropertyExpander, expander));
}

// Whether zero of this type is shown as if it were the value; a null text or object is shown as nothing.
bool looksLikeAValue(VARTYPE type) {
  return type != VT_BSTR && type != VT_DISPATCH && type != VT_UNKNOWN && type != VT_EMPTY
         && type != VT_VARIANT;
}

// A VT_VARIANT property has no type of its own: what is shown are elements, or a value that has one.
void checkUnexpanded(Findings& findings, HRESULT got, VARTYPE type) {
  findings.expect(
      SUCCEEDED(got) && type != VT_VARIANT && type != VT_EMPTY, "value-expander",
      "elements of a VT_VARIANT property from IOPMPropertyExpander, or a value with a type of its own",
      "no IOPMPropertyExpander, and "
          + (FAILED(got) ? hex(got) : "a value of the type " + std::to_string(type)));
}

void checkValue(Findings& findings, IDispatch& object, const Property& property) {
  VARIANT value{};
  value.vt = property.type;
  DISPPARAMS noParameters{};
  EXCEPINFO exception{};
  UINT argumentError = 0;
  const HRESULT got = findings.call("Invoke", [&] {
    return object.Invoke(property.dispId, GUID_NULL, GetUserDefaultLangID(), DISPATCH_PROPERTYGET,
                         &noParameters, &value, &exception, &argumentError);
  });
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  if (property.type == VT_VARIANT) checkUnexpanded(findings, got, value.vt);
  if (FAILED(got)) {
    const bool isLeft = value.vt == property.type && value.llVal == 0;
    findings.expect(isLeft || value.vt == VT_EMPTY, "failed-outputs",
                    "a get that fails leaves the value, or makes it VT_EMPTY",
                    "the type " + std::to_string(value.vt));
    findings.expect(!isLeft || !looksLikeAValue(property.type), "value-got",
                    "Invoke answers the value, or fails and makes it VT_EMPTY", hex(got) + ", and 0 is left");
    return;
  }
  findings.tries("value-got");
  VariantHolder held;
  held.attach(value);
  const bool isDeclared =
      property.type == VT_USERDEFINED || property.type == VT_VARIANT || value.vt == property.type;
  findings.expect(isDeclared, "value-type", "a value of the declared type, " + std::to_string(property.type),
                  "one of the type " + std::to_string(value.vt));
  if (value.vt == VT_BSTR)
    findings.expect(value.bstrVal != nullptr, "value-text", "an empty text is a string without characters",
                    "null");
}

}  // namespace

void checkProperty(Findings& findings, IUnknown& unknown, IDispatch& object, const Property& property) {
  InterfaceHolder<IOPMPropertyExtension> extension;
  if (SUCCEEDED(query(&unknown, IID_IOPMPropertyExtension, extension))) {
    checkLabel(findings, *extension.get(), property);
    checkFlags(findings, *extension.get(), property);
  }
  InterfaceHolder<ICategorizeProperties> categories;
  if (SUCCEEDED(query(&unknown, IID_ICategorizeProperties, categories)))
    checkCategory(findings, *categories.get(), property);
  if (property.type == VT_VARIANT) findings.tries("value-expander");
  if (isExpanded(unknown, property)) return;
  checkValue(findings, object, property);
}

void checkFailures(Findings& findings, IUnknown& unknown, IDispatch& object) {
  constexpr DISPID nobodys = 0x7EDCBA98;
  constexpr PROPCAT untouched = 0x5A5A5A5A;
  findings.about(findings.subject() + ", a property that it does not have");
  InterfaceHolder<ICategorizeProperties> categories;
  if (SUCCEEDED(query(&unknown, IID_ICategorizeProperties, categories))) {
    PROPCAT category = untouched;
    const HRESULT mapped = findings.call(
        "MapPropertyToCategory", [&] { return categories->MapPropertyToCategory(nobodys, &category); });
    findings.expect(SUCCEEDED(mapped) || category == untouched, "failed-outputs",
                    "a MapPropertyToCategory that fails leaves its output", std::to_string(category));
  }
  InterfaceHolder<IOPMPropertyExtension> extension;
  if (SUCCEEDED(query(&unknown, IID_IOPMPropertyExtension, extension))) {
    GuardedFlag show;
    const HRESULT shown =
        findings.call("ShowProperty", [&] { return extension->ShowProperty(nobodys, show.put()); });
    findings.expect(SUCCEEDED(shown) || show.answer() == 1, "failed-outputs",
                    "a ShowProperty that fails leaves its output", std::to_string(show.answer()));
  }
  VARIANT value{};
  value.vt = VT_I4;
  DISPPARAMS noParameters{};
  const HRESULT got = findings.call("Invoke", [&] {
    return object.Invoke(nobodys, GUID_NULL, GetUserDefaultLangID(), DISPATCH_PROPERTYGET, &noParameters,
                         &value, nullptr, nullptr);
  });
  findings.expect(SUCCEEDED(got) || value.vt == VT_EMPTY || (value.vt == VT_I4 && value.llVal == 0),
                  "failed-outputs", "an Invoke that fails leaves the value, or makes it VT_EMPTY",
                  "the type " + std::to_string(value.vt));
}

}  // namespace velt::hostcheck
