// A plug-in that answers as the input says: failures, exceptions, nulls, counts that are not true, values of other types,
// pointers in outputs that it does not hand over. Whatever it does costs nobody else a row, and in the end nobody holds a
// reference to it.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <list>
#include <memory>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/com/ComObject.h"
#include "embedded/database/Drawing.h"
#include "embedded/sources/GuardedSource.h"
#include "embedded/sources/SourceRegistry.h"
#include "fuzz/Answers.h"
#include "host/com/Bstr.h"
#include "host/com/ComError.h"
#include "host/com/SafeArray.h"
#include "host/database/VkDbEntity.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IPropertySource.h"
#include "palette/Palette.h"

namespace {

using namespace velt;
using fuzz::Answers;

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

// --- what it answers ------------------------------------------------------------------------------------------------------

BSTR someText(Answers& answers) {
  constexpr std::wstring_view texts[] = {
      L"Hostile",  L"",         L"\x1b[2J\x1b[31m", L"Layer", L"*VARIES*", L"\n\r\t",
      L"a\xD800z", L"\x110000", L"VELT_COLOR",      L"Good",  L"%s%n",     L"\x202E"};
  const std::size_t which = answers.below(std::size(texts) + 2);
  if (which == std::size(texts)) return nullptr;
  const std::wstring text = which > std::size(texts) ? std::wstring(5000, L'x') : std::wstring(texts[which]);
  return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

LONG someNumber(Answers& answers) {
  constexpr LONG numbers[] = {
      0, 1, -1, 2, 100, 40'000, std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::min()};
  return numbers[answers.below(std::size(numbers))];
}

VARIANT someValue(Answers& answers) {
  constexpr VARTYPE types[] = {VT_BSTR,    VT_I4,  VT_R8, VT_BOOL, VT_I2,    VT_EMPTY, VT_NULL, VT_DISPATCH,
                               VT_UNKNOWN, VT_UI1, VT_R4, VT_I8,   VT_ERROR, VT_DATE,  VT_CY};
  VARIANT value{};
  const std::size_t which = answers.below(std::size(types) + 2);
  if (which == std::size(types)) {
    value.vt = VT_ARRAY | VT_R8;
    value.parray = SafeArrayCreateVector(VT_R8, 0, 3);
  } else if (which > std::size(types)) {
    value.vt = VT_ARRAY | VT_UNKNOWN;
  } else {
    value.vt = types[which];
    if (value.vt == VT_BSTR) value.bstrVal = someText(answers);
    if (value.vt == VT_R8)
      value.dblVal =
          std::array{0.0, -1e308, 1e308, std::numeric_limits<double>::quiet_NaN()}[answers.below(4)];
    if (value.vt == VT_I4) value.lVal = someNumber(answers);
  }
  return value;
}

// What no receiver may touch.
void spoil(BSTR* text) {
  *text = reinterpret_cast<BSTR>(std::uintptr_t{8});
}
void spoil(VARIANT* value) {
  value->vt = VT_BSTR;
  spoil(&value->bstrVal);
}
template <class Plain>
void spoil(Plain* plain) {
  *plain = static_cast<Plain>(0x7F);
}

// One call: what it answers, or how it ends without an answer.
template <class Out, class Make>
HRESULT answer(Answers& answers, Out* out, const Make& make) {
  switch (answers.below(16)) {
    case 1:
      return E_FAIL;
    case 2:
      return S_OK;
    case 3:
      return *out = Out{}, S_OK;
    case 4:
      spoil(out);
      return E_FAIL;
    case 5:
      throw std::runtime_error("hostile \x1b[31m \xFF");
    case 6:
      throw 6;
    case 7:
      throw std::bad_alloc();
    case 8:
      _com_raise_error(E_ACCESSDENIED, L"no \x1b[31m");
    case 9:
      return *out = make(), S_FALSE;
    default:
      return *out = make(), S_OK;
  }
}

HRESULT answer(Answers& answers) {
  int ignored = 0;
  return answer(answers, &ignored, [] { return 0; });
}

// --- the plug-in ----------------------------------------------------------------------------------------------------------

// Counts its references; ended by whoever made it.
template <class... Interfaces>
class Counted : public Interfaces... {
 public:
  ULONG AddRef() override { return static_cast<ULONG>(++references_); }
  ULONG Release() override {
    require(references_ > 0, "nobody gives back what he does not have");
    return static_cast<ULONG>(--references_);
  }
  [[nodiscard]] long references() const { return references_; }

 protected:
  ~Counted() = default;
  template <class Interface>
  HRESULT give(Interface* found, void** object) {
    ++references_;
    return *object = found, S_OK;
  }

 private:
  long references_ = 0;
};

template <class Generation, class Entity, const IID& id>
class Property final : public Counted<Generation, IDynamicEnumProperty, ICategorizeProperties> {
 public:
  explicit Property(Answers& answers) : answers_(answers), has_(answers.byte()) {}

  HRESULT QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == id) return this->give(static_cast<Generation*>(this), object);
    if (iid == IID_IDynamicEnumProperty && (has_ & 1) == 0)
      return this->give(static_cast<IDynamicEnumProperty*>(this), object);
    if (iid == IID_ICategorizeProperties && (has_ & 2) == 0)
      return this->give(static_cast<ICategorizeProperties*>(this), object);
    return E_NOINTERFACE;
  }

  HRESULT GetGUID(GUID* guid) override {
    return answer(answers_, &guid->Data1, [&] { return 1U; });
  }
  HRESULT GetDisplayName(BSTR* name) override { return text(name); }
  HRESULT IsPropertyEnabled(Entity, BOOL* enabled) override { return flag(enabled, 1); }
  HRESULT IsPropertyReadOnly(BOOL* readOnly) override { return flag(readOnly, 0); }
  HRESULT GetDescription(BSTR* description) override { return text(description); }
  HRESULT GetCurrentValueName(BSTR* typeName) override { return text(typeName); }
  HRESULT GetCurrentValueType(VARTYPE* type) override {
    return answer(answers_, type, [&] {
      const VARTYPE any = answers_.byte();
      return answers_.below(4) == 0 ? VARTYPE{VT_BSTR} : any;
    });
  }
  HRESULT GetCurrentValueData(Entity, VARIANT* value) override { return this->value(value); }
  HRESULT SetCurrentValueData(Entity, VARIANT) override { return answer(answers_); }

  HRESULT GetNumPropertyValues(LONG* count) override {
    return answer(answers_, count, [&] { return someNumber(answers_); });
  }
  HRESULT GetPropValueName(LONG, BSTR* name) override { return text(name); }
  HRESULT GetPropValueData(LONG, VARIANT* value) override { return this->value(value); }
  HRESULT MapPropertyToCategory(DISPID, PROPCAT* category) override {
    return answer(answers_, category, [&]() -> PROPCAT { return someNumber(answers_); });
  }
  HRESULT GetCategoryName(PROPCAT, LCID, BSTR* name) override { return text(name); }

 private:
  HRESULT text(BSTR* out) {
    return answer(answers_, out, [&] { return someText(answers_); });
  }
  HRESULT value(VARIANT* out) {
    return answer(answers_, out, [&] { return someValue(answers_); });
  }
  HRESULT flag(BOOL* out, int honest) {
    return answer(answers_, out, [&]() -> BOOL {
      const std::uint8_t byte = answers_.byte();
      return static_cast<BOOL>(byte < 192 ? honest : byte);
    });
  }

  Answers& answers_;
  std::uint8_t has_;
};

using Newer = Property<IDynamicProperty2, IDispatch*, IID_IDynamicProperty2>;
using Older = Property<IDynamicProperty, long, IID_IDynamicProperty>;

class Source final : public Counted<IPropertySource> {
 public:
  explicit Source(Answers& answers) : answers_(answers) {
    const std::size_t count = answers.below(4);
    for (std::size_t i = 0; i < count; ++i) {
      if (answers.below(2) == 0) {
        newer_.emplace_back(answers);
      } else {
        older_.emplace_back(answers);
      }
    }
  }

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (iid == IID_IUnknown || iid == IID_IPropertySource)
      return give(static_cast<IPropertySource*>(this), object);
    return *object = nullptr, E_NOINTERFACE;
  }
  HRESULT GetProperties(IDispatch*, VARIANT* properties) override {
    return answer(answers_, properties,
                  [&] { return answers_.below(8) == 7 ? someValue(answers_) : listed(); });
  }

  [[nodiscard]] bool isFree() const {
    const auto isFreeOne = [](const auto& one) { return one.references() == 0; };
    return references() == 0 && std::all_of(newer_.begin(), newer_.end(), isFreeOne)
           && std::all_of(older_.begin(), older_.end(), isFreeOne);
  }

 private:
  VARIANT listed() {
    std::vector<IUnknown*> elements;
    for (Newer& one : newer_)
      elements.push_back(static_cast<IDynamicProperty2*>(&one));
    for (Older& one : older_)
      elements.push_back(static_cast<IDynamicProperty*>(&one));
    if (answers_.below(8) == 7) elements.insert(elements.begin(), nullptr);
    if (answers_.below(8) == 7) elements.push_back(this);
    VARIANT list{};
    list.vt = VT_ARRAY | VT_UNKNOWN;
    list.parray = SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(elements.size()));
    for (LONG index = 0; index < static_cast<LONG>(elements.size()); ++index)
      SafeArrayPutElement(list.parray, &index, elements[static_cast<std::size_t>(index)]);
    return list;
  }

  Answers& answers_;
  std::list<Newer> newer_;
  std::list<Older> older_;
};

// --- the host -------------------------------------------------------------------------------------------------------------

// A line with extended data, so that another source has a row of it too, and a second line.
constexpr const char* drawingText =
    "0\nSECTION\n2\nENTITIES\n"
    "0\nLINE\n5\n30\n100\nAcDbEntity\n8\n0\n100\nAcDbLine\n10\n0\n20\n0\n30\n0\n11\n1\n21\n1\n31\n0\n"
    "1001\nACME\n1071\n5\n"
    "0\nLINE\n5\n31\n100\nAcDbEntity\n8\n0\n100\nAcDbLine\n10\n0\n20\n0\n30\n0\n11\n2\n21\n1\n31\n0\n"
    "0\nENDSEC\n0\nEOF\n";

std::vector<std::string> linesOf(std::span<const VkDbObjectId> entities) {
  palette::Selection selection(entities);
  std::vector<std::string> lines;
  for (const palette::Row& row : selection.query())
    lines.push_back(row.label() + '\t' + row.text());
  return lines;
}

// Everything that a palette does with the rows; what they answer does not matter.
void workWith(std::span<const VkDbObjectId> entities, Answers& answers) {
  palette::Selection selection(entities);
  selection.query();
  for (const palette::Row& row : selection.rows()) {
    if (!row.isDynamic() || row.label() == "ACME 1") continue;
    static_cast<void>(row.choices());
    static_cast<void>(row.fields());
    static_cast<void>(selection.values(row));
    static_cast<void>(selection.valueGroups(row));
    if (!row.takesText()) continue;
    try {
      static_cast<void>(selection.write(row, row.parse("1"), {.keepGoing = answers.below(2) == 0}));
    } catch (const palette::Error&) {}
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::unique_ptr<database::Drawing> drawing = database::Drawing::parse(drawingText, "fuzz.dxf");
  const std::vector<VkDbObjectId> both(drawing->entities().begin(), drawing->entities().end());
  const std::vector<std::string> expected = linesOf({both.data(), 1});

  Answers answers({data, size});
  Source source(answers);
  const auto reports = std::make_shared<sources::PluginReports>("hostile", [](const std::string&) {});
  sources::SourceRegistry& registry = sources::SourceRegistry::ofProcess();
  {
    const auto guarded = sources::guard(&source, reports);
    require(SUCCEEDED(registry.attach(L"Hostile", VkDbEntity::desc(), guarded.get())), "the source is taken");
  }
  std::vector<std::string> shown = linesOf({both.data(), 1});
  for (const std::string& line : expected) {
    const auto found = std::find(shown.begin(), shown.end(), line);
    require(found != shown.end(), "nobody else loses a row");
    shown.erase(found);
  }
  workWith({both.data(), 1}, answers);
  workWith(both, answers);
  require(registry.remove(L"Hostile"), "the source can be taken out");
  require(source.isFree(), "nobody holds what the plug-in has handed out");
  require(linesOf({both.data(), 1}) == expected, "it is as if the plug-in had not been there");
  return 0;
}
