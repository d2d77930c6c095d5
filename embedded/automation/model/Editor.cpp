#include "embedded/automation/model/Editor.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <span>
#include <string>
#include <utility>

#include "embedded/automation/model/Followers.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/Layer.h"

namespace velt::automation {
namespace {

// --- where missing values go ---

struct CodeOrder {
  std::string_view subclass;
  std::span<const int> codes;
};

// clang-format off
constexpr int lineOrder[]      = {39, 10, 20, 30, 11, 21, 31};
constexpr int pointOrder[]     = {10, 20, 30, 39};
constexpr int circleOrder[]    = {39, 10, 20, 30, 40};
constexpr int arcOrder[]       = {50, 51};
constexpr int ellipseOrder[]   = {10, 20, 30, 11, 21, 31, 210, 220, 230, 40, 41, 42};
constexpr int polylineOrder[]  = {90, 70, 43, 38, 39};
constexpr int textOrder[]      = {39, 10, 20, 30, 40, 1, 50, 41, 51, 7, 71, 72, 11, 21, 31};
constexpr int mTextOrder[]     = {10, 20, 30, 40, 41, 46, 71, 72, 3, 1, 7, 210, 220, 230, 11, 21, 31, 42, 43, 50, 73, 44};
constexpr int gradientOrder[]  = {450, 451, 460};

constexpr CodeOrder orders[] = {
    {database::commonSubclass, database::commonOrder},
    {"AcDbLine",               lineOrder},
    {"AcDbPoint",              pointOrder},
    {"AcDbCircle",             circleOrder},
    {"AcDbArc",                arcOrder},
    {"AcDbEllipse",            ellipseOrder},
    {"AcDbPolyline",           polylineOrder},
    {"AcDbText",               textOrder},
    {"AcDbMText",              mTextOrder},
    {"AcDbHatch",              gradientOrder},
};
// A block reference has one of two markers, and is looked up by any.
constexpr int insertOrder[]    = {66, 2, 10, 20, 30, 41, 42, 43, 50, 70, 71, 44, 45};
// clang-format on

// The codes that stand before it; none for a code without a place of its own.
std::span<const int> codesBefore(int code, std::string_view subclass) {
  if (subclass == dxf::anySubclass) return database::codesBefore(code, insertOrder);
  const auto* const found = std::find_if(std::begin(orders), std::end(orders),
                                         [&](const CodeOrder& it) { return it.subclass == subclass; });
  return found == std::end(orders) ? std::span<const int>() : database::codesBefore(code, found->codes);
}

void requirePlace(bool wasWritten) {
  if (!wasWritten) throw Refusal(E_FAIL, L"The entity lacks the part of its data that the value belongs in.");
}

void requireFinite(std::initializer_list<double> numbers) {
  const bool fit =
      std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); });
  if (!fit) throw Refusal(DISP_E_OVERFLOW, L"The value is too large for what follows from it.");
}

bool isVersion(std::string_view name) {
  return name.size() == 6 && name.starts_with("AC")
         && std::all_of(name.begin() + 2, name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::wstring widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

// As people know the formats; the version itself for one without a name.
std::wstring formatName(std::string_view version) {
  constexpr std::pair<std::string_view, const wchar_t*> names[] = {
      {"AC1006", L"DXF R10"},  {"AC1009", L"DXF R12"},  {"AC1012", L"DXF R13"},  {"AC1014", L"DXF R14"},
      {"AC1015", L"DXF 2000"}, {"AC1018", L"DXF 2004"}, {"AC1021", L"DXF 2007"}, {"AC1024", L"DXF 2010"},
      {"AC1027", L"DXF 2013"}, {"AC1032", L"DXF 2018"},
  };
  const auto known = std::find_if(std::begin(names), std::end(names),
                                  [&](const auto& name) { return name.first == version; });
  if (known != std::end(names)) return known->second;
  return version.empty() ? L"DXF without a version" : widened(version);
}

}  // namespace

bool isOfFormat(const database::Drawing& drawing, std::string_view version) {
  const std::string_view own = dxf::trimmed(drawing.document().headerValue("$ACADVER", 1).value_or(""));
  // The versions are numbered upwards, so their names order as texts do; those before the numbers are older than all.
  return isVersion(own) && own >= version;
}

void requireChangeable(const Subject& subject, const PropertyRow& row) {
  const database::TableEntry* const layer = subject.entity().layer();
  if (layer != nullptr && database::Layer(subject.drawing(), layer->record).isLocked()) {
    throw Refusal(E_ACCESSDENIED, L"The layer " + layer->name + L" is locked.");
  }
  const std::string_view since = row.access.since;
  if (!since.empty() && !isOfFormat(subject.drawing(), since)) {
    const std::string_view version = subject.drawing().document().headerValue("$ACADVER", 1).value_or("");
    throw Refusal(E_FAIL, formatName(dxf::trimmed(version)) + L" cannot store this property; "
                              + formatName(since) + L" and later can.");
  }
  if (changesShape(subject, row)) requireFreeShape(subject.drawing(), subject.record());
  const Obstacle* const obstacle = row.writability.obstacle;
  if (obstacle == nullptr) return;
  if (const Reason* const why = obstacle->reasonFor(subject)) throw Refusal(*why);
}

bool changesShape(const Subject& subject, const PropertyRow& row) {
  if (row.access.keepsShape) return false;
  // What all entities have in common has nothing to do with their shape.
  const std::span<const PropertyRow>* const general = subject.kind().general;
  return general == nullptr || std::none_of(general->begin(), general->end(), [&](const PropertyRow& shared) {
           return &shared == &row;
         });
}

void requireWithin(Limit limit, double number) {
  if (limit == Limit::Positive && !(number > 0)) {
    throw Refusal(E_INVALIDARG, L"The value must be greater than 0.");
  }
  if (limit == Limit::NotNegative && !(number >= 0)) {
    throw Refusal(E_INVALIDARG, L"The value must not be less than 0.");
  }
  if (limit == Limit::NotZero && (number >= 0 && number <= 0)) {
    throw Refusal(E_INVALIDARG, L"The value must not be 0.");
  }
}

void requireMember(const ValueType& type, const Value& value) {
  if (type.user == nullptr || !type.user->isEnumeration()) return;
  const auto* const number = std::get_if<std::int32_t>(&value);
  if (number == nullptr || findMember(*type.user, *number) == nullptr) {
    throw Refusal(E_INVALIDARG, L"The value is none of the choices.");
  }
}

void requireLine(const database::Drawing& drawing, std::wstring_view text) {
  const dxf::Encoding& encoding = drawing.document().encoding();
  const dxf::Encoding every = dxf::Encoding::utf8();
  for (const wchar_t character : text) {
    if (encoding.canHold(character)) continue;
    if (every.canHold(character)) {
      throw Refusal(E_INVALIDARG, std::wstring(L"The drawing's texts are written in ")
                                      + widened(encoding.name()) + L", which has no place for the character "
                                      + character + L".");
    }
    throw Refusal(E_INVALIDARG, L"A text of one line cannot hold line breaks or control characters.");
  }
}

void Editor::real(int code, const char* subclass, double value) {
  requireFinite({value});
  requirePlace(editor_.setReal(code, subclass, value, codesBefore(code, subclass)));
}

void Editor::integer(int code, const char* subclass, std::int64_t value) {
  requirePlace(editor_.setInteger(code, subclass, value, codesBefore(code, subclass)));
}

void Editor::integer(int code, const char* subclass, std::int64_t value, std::int64_t otherwise) {
  if (value != otherwise || lens().has(code, subclass)) integer(code, subclass, value);
}

void Editor::text(int code, const char* subclass, std::wstring_view value) {
  requirePlace(editor_.setText(code, subclass, value, codesBefore(code, subclass)));
}

void Editor::name(int code, const char* subclass, const database::TableEntry& entry) {
  if (entry.isImplied()) return text(code, subclass, entry.name);
  const std::string spelling(
      dxf::trimmed(database::Lens(*drawing_, entry.record).value(2, dxf::anySubclass).value_or("")));
  requirePlace(editor_.setBytes(code, subclass, spelling, codesBefore(code, subclass)));
}

void Editor::point(int code, const char* subclass, const Vector3& value) {
  requireFinite({value.x, value.y, value.z});
  requirePlace(editor_.setPoint(code, subclass, {value.x, value.y, value.z}, codesBefore(code, subclass)));
}

}  // namespace velt::automation
