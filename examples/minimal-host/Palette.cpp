// A palette over the layer and the host of this folder: selects all three parts, shows what they have in common, writes a
// value to all of them, and reads the row again.

#include <iostream>
#include <utility>

#include "Parts.h"
#include "propdata/VeltPropData.h"

namespace {

std::wstring textOf(const PROPINFO& row) {
  if (row.isVaries) return L"*VARIES*";
  if (row.hasChoices) return row.choiceNames[row.value.ulVal].str();
  if (row.value.vt == VT_BSTR) return row.value.bstrVal;
  std::wstring text = std::to_wstring(row.value.dblVal);
  return text.substr(0, text.find(L'.') + 2);
}

void show(const PROPINFO& row) {
  std::wcout << L"  " << row.categoryName.str() << L": " << row.displayName.str() << L" = " << textOf(row)
             << L'\n';
}

// A set-up that failed half way is torn down, too.
int fail(TqVector<VeltPropData*>& selection, const CStdStr<wchar_t>& message) {
  UnInitializePropData(selection);
  std::wcerr << L"minimal_host: " << message.str() << L'\n';
  return 1;
}

}  // namespace

int main() {
  // 1. Set-up. The selection and its entries are ours; one for each part, with its id.
  std::array<VeltPropData, parts.size()> entries{};
  TqVector<VeltPropData*> selection;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    entries[i].oldId = static_cast<long>(firstPartId + i);
    selection.append(&entries[i]);
  }
  CStdStr<wchar_t> message;
  bool mixedClasses = false;
  if (!InitializePropData(selection, message, mixedClasses)) return fail(selection, message);

  // 2. Query: what all of them have, with the values of the first one.
  TqVector<PROPINFO> rows;
  bool unused = false;
  if (!GetPropertiesInfo(selection, rows, message, unused, unused)) return fail(selection, message);

  // 3. Sort: by weight.
  SortByWeight(rows);
  std::wcout << selection.length() << (mixedClasses ? L" parts of several classes\n" : L" parts\n");
  for (const PROPINFO& row : rows) show(row);

  // 4. Write: the parts on locked layers are left out and counted.
  PROPINFO* diameter = nullptr;
  for (PROPINFO& row : rows) {
    if (row.name == CStdStr<wchar_t>(L"Diameter")) diameter = &row;
  }
  if (diameter == nullptr || !diameter->isEditable) return fail(selection, L"The diameter cannot be edited.");
  VARIANT value{};
  value.vt = VT_R8;
  value.dblVal = 65;
  int lockedCount = 0;
  VkArray<VkDbObjectId> touched;
  const bool isWhole = false;  // not an element of a point or the like
  if (SetPropertiesValue(selection, *diameter, value, isWhole, message, lockedCount, touched, 0) == 0)
    return fail(selection, L"A part refused the value.");
  std::wcout << L"Written to " << touched.length() << L" parts, " << lockedCount << L" on a locked layer\n";

  // 5. Refresh: one row, for its own entity. Its value is taken out and cleared: a read that fails leaves what stands there.
  VARIANT before = std::exchange(diameter->value, VARIANT{});
  VariantClear(&before);
  GetPropInfoValue(*diameter);
  show(*diameter);

  // 6. Teardown: the values of the rows are ours, and the rows must not be used after the end of the selection.
  for (PROPINFO& row : rows) VariantClear(&row.value);
  UnInitializePropData(selection);
  return 0;
}
