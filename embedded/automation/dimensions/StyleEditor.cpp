#include "embedded/automation/dimensions/StyleEditor.h"

#include <cmath>
#include <limits>
#include <optional>

#include "dxf/Numbers.h"
#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/StyleOverrides.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {
namespace {

constexpr int textCode = 1000;
constexpr int applicationCode = 1001;
constexpr int braceCode = 1002;
constexpr int handleCode = 1005;
constexpr int realCode = 1040;
constexpr int lastRealCode = 1042;
constexpr int shortIntegerCode = 1070;
constexpr int integerCode = 1071;
// Bytes, as written.
constexpr std::size_t longestText = 255;

struct Pair {
  int code;
  std::string value;
};

// Distances and factors are reals, too.
bool isOfKind(int code, int kind) {
  if (kind == realCode) return code >= realCode && code <= lastRealCode;
  if (kind == shortIntegerCode) return code == shortIntegerCode || code == integerCode;
  return code == kind;
}

void insertAll(dxf::Document& document, std::uint32_t record, std::size_t at,
               const std::vector<Pair>& pairs) {
  for (const Pair& pair : pairs)
    document.insert(record, at++, pair.code, pair.value);
}

// Where in the view the values of the variable stand. Some writers repeat one.
std::vector<std::size_t> valuesOf(const dxf::RecordView& view, const StyleOverrides& list, int variable) {
  std::vector<std::size_t> found;
  for (std::size_t name = list.begin; name < list.end; name += 2) {
    if (dxf::parseInteger<int>(view.value(name)) == variable) found.push_back(name + 1);
  }
  return found;
}

void requireRegistered(const database::Drawing& drawing) {
  if (drawing.appIds().find(L"ACAD") != nullptr) return;
  throw Refusal(E_FAIL,
                L"The drawing does not know the application that keeps overrides of dimension styles.");
}

}  // namespace

std::uint64_t handleOfEntry(const database::Drawing& drawing, const database::TableEntry& entry) {
  const std::uint64_t handle =
      entry.isImplied() ? 0 : dxf::parseHandle(drawing.view(entry.record).handle()).value_or(0);
  if (handle == 0) throw Refusal(E_FAIL, L"The drawing has no handle for " + entry.name + L".");
  return handle;
}

void StyleEditor::real(const StyleVariable& variable, double value) {
  if (!std::isfinite(value)) {
    throw Refusal(DISP_E_OVERFLOW, L"The value is too large for what follows from it.");
  }
  put(variable.code, realCode, dxf::formatReal(value));
}

void StyleEditor::integer(const StyleVariable& variable, std::int64_t value) {
  if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
    throw Refusal(DISP_E_OVERFLOW, L"The value is too large for an override.");
  }
  put(variable.code, shortIntegerCode, dxf::formatInteger(value));
}

void StyleEditor::text(const StyleVariable& variable, std::wstring_view value) {
  requireLine(*drawing_, value);
  const std::string bytes = drawing_->document().encode(value);
  if (bytes.size() > longestText) throw Refusal(E_INVALIDARG, L"The text is too long.");
  put(variable.code, textCode, bytes);
}

void StyleEditor::handle(const StyleVariable& variable, std::uint64_t value) {
  put(variable.code, handleCode, dxf::formatHandle(value));
}

void StyleEditor::put(int variable, int code, const std::string& value) {
  const database::Lens lens(*drawing_, record_);
  const std::optional<StyleOverrides> list = findOverrides(lens);
  if (!list) return beginList(variable, code, value);
  if (!list->isWhole) throw Refusal(E_FAIL, L"The overrides of the entity's dimension style are damaged.");
  const std::vector<std::size_t> values = valuesOf(lens.view(), *list, variable);
  if (!values.empty()) return replace(values, code, value);
  drawing_->edit(record_, [&](dxf::Document& document) {
    insertAll(document, record_, list->end,
              {{shortIntegerCode, dxf::formatInteger(variable)}, {code, value}});
  });
}

void StyleEditor::replace(const std::vector<std::size_t>& pairs, int code, const std::string& value) {
  drawing_->edit(record_, [&](dxf::Document& document) {
    for (const std::size_t pair : pairs) {
      if (isOfKind(document.view(record_).code(pair), code)) {
        document.replace(record_, pair, value);
      } else {
        document.erase(record_, pair);
        document.insert(record_, pair, code, value);
      }
    }
  });
}

void StyleEditor::beginList(int variable, int code, const std::string& value) {
  const database::Lens lens(*drawing_, record_);
  const std::optional<dxf::PairRange> range = lens.xdata(overridesApplication);
  if (!range) requireRegistered(*drawing_);
  const std::size_t end = range ? range->first + range->count : lens.view().size();
  std::vector<Pair> pairs = {{textCode, std::string(overridesList)},
                             {braceCode, "{"},
                             {shortIntegerCode, dxf::formatInteger(variable)},
                             {code, value},
                             {braceCode, "}"}};
  if (!range) pairs.insert(pairs.begin(), {applicationCode, std::string(overridesApplication)});
  drawing_->edit(record_, [&](dxf::Document& document) { insertAll(document, record_, end, pairs); });
}

void overrideFlag(const Subject& subject, const StyleVariable& variable, bool flag) {
  if (DimensionStyle(subject).flag(variable) != flag) StyleEditor(subject).integer(variable, flag ? 1 : 0);
}

}  // namespace velt::automation
