// A palette over the embedded host that calls every operation of the layer that is recorded, for all entities of a drawing,
// and prints what it gets. It is run with the recorder and without.
//
//   recorded_palette DRAWING

#include <cstdio>
#include <exception>
#include <memory>
#include <span>
#include <vector>

#include "embedded/database/Drawing.h"
#include "propdata/VeltPropData.h"

namespace {

constexpr DISPID layerDispId = 1281;

class Palette {
 public:
  explicit Palette(std::span<const VkDbObjectId> entities) {
    for (const VkDbObjectId id : entities) {
      entries_.push_back(std::make_unique<VeltPropData>());
      entries_.back()->oldId = id.asOldId();
      selection_.push_back(entries_.back().get());
    }
  }

  void run() {
    bool mixedClasses = false;
    CStdStr<wchar_t> errorText;
    const bool isSetUp = InitializePropData(selection_, errorText, mixedClasses);
    std::printf("set up %d, %d: %ls\n", isSetUp, mixedClasses, errorText.c_str());
    query();
    compareColors();
    write();
    refresh();
    for (PROPINFO& row : rows_)
      VariantClear(&row.value);
    UnInitializePropData(selection_);
  }

 private:
  void query() {
    CStdStr<wchar_t> errorText;
    bool mergeFlag = false;
    bool typeFlag = false;
    const bool isAnswered = GetPropertiesInfo(selection_, rows_, errorText, mergeFlag, typeFlag);
    std::printf("query %d: %ls\n", isAnswered, errorText.c_str());
    SortByWeight(rows_);
    print();
  }

  void print() const {
    for (const PROPINFO& row : rows_) {
      std::printf("%ls %d %d %d", row.displayName.c_str(), row.isVaries, row.isEditable, row.value.vt);
      if (row.value.vt == VT_BSTR) std::printf(" %ls", row.value.bstrVal);
      if (row.value.vt == VT_R8) std::printf(" %.17g", row.value.dblVal);
      std::printf("\n");
    }
  }

  void compareColors() {
    for (PROPINFO& row : rows_) {
      if (row.value.vt == VT_DISPATCH)
        std::printf("%ls by layer: %d\n", row.name.c_str(),
                    IsDifferentByLayerColors(row.value, rows_, rows_));
    }
  }

  void write() {
    for (const PROPINFO& row : rows_) {
      if (row.dispId != layerDispId && !row.isElement) continue;
      VARIANT value{};
      value.vt = row.isElement ? VT_R8 : VT_BSTR;
      if (row.isElement)
        value.dblVal = 12.5;
      else
        value.bstrVal = SysAllocString(L"0");
      CStdStr<wchar_t> errorText;
      int lockedCount = 0;
      VkArray<VkDbObjectId> touchedIds;
      const int isWritten = SetPropertiesValue(selection_, row, value, row.isElement, errorText, lockedCount,
                                               touchedIds, row.elementCookie);
      std::printf("write %d, %d locked, %d touched: %ls\n", isWritten, lockedCount, touchedIds.length(),
                  errorText.c_str());
      VariantClear(&value);
    }
  }

  void refresh() {
    for (PROPINFO& row : rows_) {
      VariantClear(&row.value);
      // A failing get leaves what was there under the row's type.
      row.value = VARIANT{};
      GetPropInfoValue(row);
    }
    print();
  }

  std::vector<std::unique_ptr<VeltPropData>> entries_;
  TqVector<VeltPropData*> selection_;
  TqVector<PROPINFO> rows_;
};

}  // namespace

int main(int argumentCount, char** arguments) {
  try {
    const auto drawing = velt::database::Drawing::open(argumentCount > 1 ? arguments[1] : "");
    const std::span<const VkDbObjectId> entities = drawing->entities();
    // Each by itself, where rows are not dropped and elements are there, and then all together.
    for (std::size_t i = 0; i < entities.size(); i += 10)
      Palette(entities.subspan(i, 1)).run();
    Palette(entities).run();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "recorded_palette: %s\n", error.what());
    return 1;
  }
}
