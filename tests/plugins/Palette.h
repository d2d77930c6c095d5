#pragma once

// What a palette shows and sets of one selection, by the names of the rows.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/sources/LoadedPlugins.h"
#include "host/com/Bstr.h"
#include "tests/contract/Query.h"
#include "tests/embedded/database/Sample.h"
#include "tests/support/Places.h"

namespace velt::tests {

// The sample plug-in of that name, loaded for the length of a test. Its messages go into the list.
inline std::unique_ptr<sources::LoadedPlugins> loadSample(const std::string& name,
                                                          std::vector<std::string>& told) {
  auto plugins =
      std::make_unique<sources::LoadedPlugins>([&told](const std::string& line) { told.push_back(line); });
  EXPECT_TRUE(plugins->load(velt::tests::pluginFolder() / (name + ".so")));
  return plugins;
}

class PaletteOf {
 public:
  explicit PaletteOf(const Ids& ids) : query_(ids) { EXPECT_TRUE(query_.isSetUp && query_.ask()); }

  bool has(const std::wstring& name) const { return find(name) != nullptr; }
  const PROPINFO& row(const std::wstring& name) const {
    const PROPINFO* const found = find(name);
    if (found == nullptr) throw std::runtime_error("there is no such row");
    return *found;
  }
  std::wstring text(const std::wstring& name) const {
    const VARIANT& value = row(name).value;
    EXPECT_EQ(VT_BSTR, value.vt);
    return value.vt == VT_BSTR && value.bstrVal != nullptr ? value.bstrVal : L"";
  }

  // Nothing tells whether the property took the value: ask a new palette.
  void set(const std::wstring& name, VARIANT value) {
    CStdStr<wchar_t> errorText;
    int lockedCount = 0;
    VkArray<VkDbObjectId> touchedIds;
    EXPECT_EQ(1, SetPropertiesValue(query_.selection(), row(name), value, false, errorText, lockedCount,
                                    touchedIds, 0));
  }
  void set(const std::wstring& name, LONG number) {
    VARIANT value{};
    value.vt = VT_I4;
    value.lVal = number;
    set(name, value);
  }
  void set(const std::wstring& name, const wchar_t* text) {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(text);
    set(name, value);
    VariantClear(&value);
  }

 private:
  const PROPINFO* find(const std::wstring& name) const {
    for (const PROPINFO& row : query_.rows) {
      if (row.displayName == name.c_str()) return &row;
    }
    return nullptr;
  }

  Query query_;
};

}  // namespace velt::tests
