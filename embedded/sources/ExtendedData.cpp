#include "embedded/sources/ExtendedData.h"

#include <array>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Guard.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/LastAsked.h"
#include "embedded/database/NameFolding.h"
#include "embedded/sources/EntityProperty.h"

namespace velt::sources {
namespace {

using automation::Refusal;
using database::Drawing;

constexpr PROPCAT extendedDataCategory = 102;
constexpr const wchar_t* extendedDataHeading = L"Extended Data";

constexpr int firstCode = 1000;
constexpr int applicationCode = 1001;
// Bytes, as written.
constexpr std::size_t longestText = 255;

enum class Kind { None, Text, Layer, Fixed, Point, Real, ShortInteger, Integer };

struct KindRow {
  int code;
  Kind kind;
  VARTYPE type;
  bool isReadOnly;
};

// clang-format off
constexpr KindRow kindTable[] = {
    // code  kind                type     read-only
    {1000,   Kind::Text,         VT_BSTR, false},
    {1003,   Kind::Layer,        VT_BSTR, false},
    {1004,   Kind::Fixed,        VT_BSTR, true},   // a chunk of bytes
    {1005,   Kind::Fixed,        VT_BSTR, true},   // a handle
    {1010,   Kind::Point,        VT_BSTR, true},
    {1011,   Kind::Point,        VT_BSTR, true},
    {1012,   Kind::Point,        VT_BSTR, true},
    {1013,   Kind::Point,        VT_BSTR, true},
    {1040,   Kind::Real,         VT_R8,   false},
    {1041,   Kind::Real,         VT_R8,   false},
    {1042,   Kind::Real,         VT_R8,   false},
    {1070,   Kind::ShortInteger, VT_I2,   false},
    {1071,   Kind::Integer,      VT_I4,   false},
};
// clang-format on

const KindRow* kindOf(int code) {
  for (const KindRow& row : kindTable) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

bool isOfTheProgramItself(std::wstring_view application) {
  constexpr std::array beginnings{L"ACAD", L"ACDB", L"GRADIENTCOLOR1ACI", L"GRADIENTCOLOR2ACI", L"PE_URL"};
  for (const std::wstring_view beginning : beginnings) {
    if (database::sameName(application.substr(0, beginning.size()), beginning)) return true;
  }
  return false;
}

struct StoredValue {
  std::wstring name;
  const KindRow* kind = nullptr;
  // In the view of the entity's record.
  std::size_t pair = 0;
};

struct StoredValues {
  std::vector<StoredValue> list;
  // Properties are asked in order: the search goes on where the last one ended.
  std::size_t next = 0;

  [[nodiscard]] const StoredValue* find(const EntityProperty::Description& property) {
    for (std::size_t tried = 0; tried < list.size(); ++tried) {
      const StoredValue& value = list[next];
      if (value.name == property.name && value.kind->type == property.type
          && value.kind->isReadOnly == property.isReadOnly) {
        return &value;
      }
      next = (next + 1) % list.size();
    }
    return nullptr;
  }
};

// Extended data are the end of a record; found from there, so that the vertices of a polyline are not walked over.
std::size_t beginOfExtendedData(const dxf::RecordView& view) {
  std::size_t begin = view.size();
  while (begin > 0 && view.code(begin - 1) >= firstCode)
    --begin;
  return begin;
}

StoredValues readValues(const Drawing& drawing, std::uint32_t record) {
  const dxf::RecordView view = drawing.view(record);
  StoredValues values;
  std::unordered_map<std::wstring, unsigned> counts;
  std::wstring application;
  bool isShown = false;
  for (std::size_t pair = beginOfExtendedData(view); pair < view.size(); ++pair) {
    if (view.code(pair) == applicationCode) {
      application = drawing.decode(dxf::trimmed(view.value(pair)));
      isShown = !application.empty() && !isOfTheProgramItself(application);
      continue;
    }
    const KindRow* const kind = kindOf(view.code(pair));
    if (!isShown || kind == nullptr) continue;
    const unsigned place = ++counts[application];
    values.list.push_back({application + L" " + std::to_wstring(place), kind, pair});
  }
  return values;
}

StoredValues& valuesOf(const AskedEntity& entity) {
  thread_local database::LastAsked<StoredValues> last;
  const Drawing& drawing = *entity.object.drawing;
  return last.of(entity.id, drawing, [&] { return readValues(drawing, entity.object.record); });
}

std::wstring widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

// "x,y,z": the y and z of a point stand in the pairs after its x.
std::wstring pointText(const dxf::RecordView& view, std::size_t pair) {
  std::wstring text;
  for (const int step : {0, 10, 20}) {
    const std::size_t here = pair + static_cast<std::size_t>(step / 10);
    const bool isThere = here < view.size() && view.code(here) == view.code(pair) + step;
    if (step != 0) text += L',';
    text += widened(dxf::trimmed(isThere ? view.value(here) : "0.0"));
  }
  return text;
}

template <class Integer>
Integer integerAt(const dxf::RecordView& view, std::size_t pair) {
  return dxf::parseInteger<Integer>(view.value(pair)).value_or(0);
}

class ValueProperty final : public EntityProperty {
 public:
  using EntityProperty::EntityProperty;

 protected:
  bool has(const AskedEntity& entity) const override { return find(entity) != nullptr; }

  VARIANT read(const AskedEntity& entity) const override {
    const Drawing& drawing = *entity.object.drawing;
    const dxf::RecordView view = drawing.view(entity.object.record);
    const StoredValue& value = *find(entity);
    VARIANT variant{};
    switch (value.kind->kind) {
      case Kind::Real:
        variant.vt = VT_R8;
        variant.dblVal = dxf::parseReal(view.value(value.pair)).value_or(0.0);
        return variant;
      case Kind::ShortInteger:
        variant.vt = VT_I2;
        variant.iVal = integerAt<SHORT>(view, value.pair);
        return variant;
      case Kind::Integer:
        variant.vt = VT_I4;
        variant.lVal = integerAt<LONG>(view, value.pair);
        return variant;
      case Kind::Point:
        return textVariant(pointText(view, value.pair));
      case Kind::Fixed:
      case Kind::Layer:
        return textVariant(drawing.decode(dxf::trimmed(view.value(value.pair))));
      case Kind::Text:
      case Kind::None:
        break;
    }
    return textVariant(drawing.decode(view.value(value.pair)));
  }

  // The drawing's table spells names of layers its own way.
  bool isSame(const AskedEntity& entity, const VARIANT& put, const VARIANT& got) const override {
    if (find(entity)->kind->kind != Kind::Layer) return EntityProperty::isSame(entity, put, got);
    return database::sameName(textIn(put), textIn(got));
  }

  void write(const AskedEntity& entity, const VARIANT& value) const override {
    Drawing& drawing = *entity.object.drawing;
    const std::uint32_t record = entity.object.record;
    const StoredValue stored = *find(entity);
    const std::string_view before = drawing.view(record).value(stored.pair);
    const std::optional<std::string> after = written(drawing, stored.kind->kind, before, value);
    if (!after) return;
    drawing.edit(record, [&](dxf::Document& document) { document.replace(record, stored.pair, *after); });
  }

 private:
  const StoredValue* find(const AskedEntity& entity) const { return valuesOf(entity).find(description()); }

  // What the drawing is to hold; nothing when it holds that already, in whatever spelling.
  static std::optional<std::string> written(const Drawing& drawing, Kind kind, std::string_view before,
                                            const VARIANT& value) {
    switch (kind) {
      case Kind::Real: {
        const double real = realIn(value);
        if (dxf::parseReal(before) == real) return std::nullopt;
        return dxf::formatReal(real);
      }
      case Kind::ShortInteger:
        return writtenInteger<SHORT>(before, value);
      case Kind::Integer:
        return writtenInteger<LONG>(before, value);
      case Kind::Layer:
        return writtenLayer(drawing, before, value);
      case Kind::Text: {
        const std::wstring text = textIn(value);
        if (drawing.decode(before) == text) return std::nullopt;
        automation::requireLine(drawing, text);
        std::string bytes = drawing.document().encode(text);
        if (bytes.size() > longestText) throw Refusal(E_INVALIDARG, L"The text is too long.");
        return bytes;
      }
      case Kind::Fixed:
      case Kind::Point:
      case Kind::None:
        break;
    }
    throw Refusal(E_ACCESSDENIED, L"The value cannot be set.");
  }

  template <class Integer>
  static std::optional<std::string> writtenInteger(std::string_view before, const VARIANT& value) {
    const std::int64_t integer =
        integerIn(value, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max());
    if (dxf::parseInteger<std::int64_t>(before) == integer) return std::nullopt;
    return dxf::formatInteger(integer);
  }

  static std::optional<std::string> writtenLayer(const Drawing& drawing, std::string_view before,
                                                 const VARIANT& value) {
    const std::wstring name = textIn(value);
    const database::TableEntry* const layer = drawing.layers().find(name);
    if (layer == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no such layer.");
    if (database::sameName(drawing.decode(dxf::trimmed(before)), name)) return std::nullopt;
    return drawing.document().encode(layer->name);
  }
};

IDynamicProperty2* propertyFor(const StoredValue& value) {
  // Never destroyed: rows keep pointers to the properties.
  static PropertyPool<ValueProperty>& pool = *new PropertyPool<ValueProperty>;
  std::wstring key = value.name;
  key += L'\0';
  key += static_cast<wchar_t>(value.kind->type);
  key += value.kind->isReadOnly ? L'\1' : L'\2';
  return &pool.find(key, [&] {
    return com::makeObject<ValueProperty>(
        EntityProperty::Description{.name = value.name,
                                    .help = L"Value that an application has attached to the entity.",
                                    .type = value.kind->type,
                                    .isReadOnly = value.kind->isReadOnly,
                                    .category = extendedDataCategory,
                                    .heading = extendedDataHeading});
  });
}

class ExtendedData final : public com::ComObject<IPropertySource> {
 public:
  ExtendedData() : ComObject(platform::Ledger::account("ExtendedData")) {}

  HRESULT GetProperties(IDispatch* entity, VARIANT* properties) override {
    if (properties == nullptr) return E_POINTER;
    return automation::guarded([&] {
      const std::optional<AskedEntity> asked = entityBehind(entity);
      if (!asked) return E_INVALIDARG;
      std::vector<IDynamicProperty2*> list;
      for (const StoredValue& value : valuesOf(*asked).list)
        list.push_back(propertyFor(value));
      return givePropertyArray(list, properties);
    });
  }
};

}  // namespace

IPropertySource* makeExtendedData() {
  return com::makeObject<ExtendedData>();
}

}  // namespace velt::sources
