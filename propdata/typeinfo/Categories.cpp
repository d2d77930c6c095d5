// Categories of properties and their names.

#include "errors/Guard.h"
#include "errors/Messages.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "host/palette/ICategorizeProperties.h"
#include "propdata/VeltPropData.h"
#include "propdata/typeinfo/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::failWith;
using velt::errors::guarded;
namespace message = velt::errors::message;

namespace {

constexpr int firstPredefined = -32;
constexpr int lastPredefined = -1;

// Resource ids of the predefined categories, from -32 on.
constexpr int g_category[32] = {1032, 1031, 1030, 1029, 1028, 1027, 1026, 1025, 1024, 1023, 1022,
                                1021, 1020, 1019, 1018, 1017, 1016, 1015, 1014, 1013, 1012, 1011,
                                1010, 1009, 1008, 1007, 1006, 1005, 1004, 1003, 1002, 1001};

bool isPredefined(int category) {
  return category >= firstPredefined && category <= lastPredefined;
}

CStdStr<wchar_t> nameOfPredefined(int category) {
  using velt::errors::g_hPropRes;
  constexpr int capacity = 1024;

  // QUIRK(shared_resource_handle): the messages are read from this library too when it is loaded first.
  if (g_hPropRes == nullptr) g_hPropRes = loadResourceDll(L"PlxOPMRes.dll");
  wchar_t buffer[capacity];
  buffer[0] = 0;
  if (isPredefined(category)) {
    // QUIRK(message_result_unexamined): of names like of messages, what stands in the buffer counts.
    LoadStringW(g_hPropRes, static_cast<UINT>(g_category[category - firstPredefined]), buffer, capacity - 1);
  }
  return CStdStr<wchar_t>(buffer);
}

}  // namespace

namespace velt::propdata {

bool findCategory(const VeltPropData& data, DISPID dispId, int& categoryId, CStdStr<wchar_t>& categoryName,
                  CStdStr<wchar_t>& errorText) {
  InterfaceHolder<ICategorizeProperties> categories;
  if (FAILED(query(data.pUnknown, IID_ICategorizeProperties, categories)))
    return failWith(errorText, message::noCategories);
  PROPCAT category = categoryId;
  if (FAILED(categories->MapPropertyToCategory(dispId, &category)))
    return failWith(errorText, message::categoryNotFound);
  categoryId = category;
  if (isPredefined(category)) {
    categoryName = nameOfPredefined(category);
    return true;
  }
  StringHolder name;
  // QUIRK(dispid_as_category_locale): the DISPID is passed in the place of the locale; objects tell by it for which
  // property the name is asked.
  if (!handedOver(categories->GetCategoryName(category, static_cast<LCID>(dispId), name.put()), name))
    return failWith(errorText, message::categoryName);
  categoryName = CStdStr<wchar_t>(name.get());
  name.reset();
  // QUIRK(default_category_name): an empty name is replaced by a message's text, and the call succeeds.
  if (categoryName.empty()) categoryName = velt::errors::loadMessage(message::defaultCategory);
  return true;
}

}  // namespace velt::propdata

bool GetCategoryInfo(VeltPropData* data, int dispId, int& categoryId, CStdStr<wchar_t>& categoryName,
                     CStdStr<wchar_t>& errorText) {
  return guarded(false, errorText,
                 [&] { return findCategory(*data, dispId, categoryId, categoryName, errorText); });
}

int GetPredefinedCategoryName(int category, CStdStr<wchar_t>& name) {
  guarded([&] { name = nameOfPredefined(category); });
  return 0;
}
