#include "embedded/automation/dimensions/StyleUnits.h"

#include <cmath>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/DimensionTypes.h"
#include "embedded/automation/dimensions/Measurement.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {
namespace {

// The lowest two bits: 0 neither, 1 both, 2 feet only, 3 inches only are shown when they are zero.
struct ZeroUnits {
  bool suppressFeet;
  bool suppressInches;
};

constexpr std::int64_t zeroUnitBits = 3;

ZeroUnits zeroUnitsOf(const Subject& subject, const StyleVariable& zeros) {
  const std::int64_t kind = DimensionStyle(subject).integer(zeros) & zeroUnitBits;
  return {kind == 0 || kind == 3, kind == 0 || kind == 2};
}

void putZeroUnits(const Subject& subject, const StyleVariable& zeros, const ZeroUnits& units) {
  const std::int64_t kind =
      units.suppressFeet ? (units.suppressInches ? 0 : 3) : (units.suppressInches ? 2 : 1);
  const std::int64_t before = DimensionStyle(subject).integer(zeros);
  const std::int64_t after = (before & ~zeroUnitBits) | kind;
  if (after != before) StyleEditor(subject).integer(zeros, after);
}

}  // namespace

std::int32_t getUnitsFormat(const Subject& subject) {
  constexpr std::int32_t decimal = 2;
  const DimensionStyle style(subject);
  // Older drawings have another variable.
  StyleVariable format = variables::lengthFormat;
  format.usual = static_cast<double>(style.integer(variables::oldLengthFormat));
  return memberOr(types::lengthFormat, style.integer(format), decimal);
}

void putUnitsFormat(const Subject& subject, const std::int32_t& format) {
  StyleEditor(subject).integer(variables::lengthFormat, format);
}

double getLinearScale(const Subject& subject) {
  return std::abs(DimensionStyle(subject).real(variables::linearScale));
}

void putLinearScale(const Subject& subject, const double& scale) {
  const bool isOfPaper = DimensionStyle(subject).real(variables::linearScale) < 0;
  keepingMeasurement(subject,
                     [&] { StyleEditor(subject).real(variables::linearScale, isOfPaper ? -scale : scale); });
}

std::int32_t getAnglePrecision(const Subject& subject) {
  const DimensionStyle style(subject);
  const std::int64_t own = style.integer(variables::anglePrecision);
  return memberOr(types::precision, own < 0 ? style.integer(variables::lengthPrecision) : own, 0);
}

void putAnglePrecision(const Subject& subject, const std::int32_t& places) {
  StyleEditor(subject).integer(variables::anglePrecision, places);
}

std::wstring getDecimalSeparator(const Subject& subject) {
  const std::int64_t character = DimensionStyle(subject).integer(variables::decimalSeparator);
  return std::wstring(1, character > 0 && character < 0x10000 ? static_cast<wchar_t>(character) : L'.');
}

void putDecimalSeparator(const Subject& subject, const std::wstring& separator) {
  requireLine(subject.drawing(), separator);
  if (separator.size() != 1) throw Refusal(E_INVALIDARG, L"The separator is a single character.");
  StyleEditor(subject).integer(variables::decimalSeparator, separator[0]);
}

bool suppressesZeroFeet(const Subject& subject, const StyleVariable& zeros) {
  return zeroUnitsOf(subject, zeros).suppressFeet;
}

bool suppressesZeroInches(const Subject& subject, const StyleVariable& zeros) {
  return zeroUnitsOf(subject, zeros).suppressInches;
}

void suppressZeroFeet(const Subject& subject, const StyleVariable& zeros, bool isSuppressed) {
  putZeroUnits(subject, zeros, {isSuppressed, suppressesZeroInches(subject, zeros)});
}

void suppressZeroInches(const Subject& subject, const StyleVariable& zeros, bool isSuppressed) {
  putZeroUnits(subject, zeros, {suppressesZeroFeet(subject, zeros), isSuppressed});
}

}  // namespace velt::automation
