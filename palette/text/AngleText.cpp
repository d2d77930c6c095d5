#include "palette/text/AngleText.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <utility>

#include "palette/text/NumberText.h"

namespace velt::palette {

namespace {

constexpr std::string_view degreeSign = "\u00B0";
constexpr double degreesPerGrad = 0.9;

double inDegrees(double radians) {
  return radians * 180.0 / std::numbers::pi;
}

double inRadians(double degrees) {
  return degrees * std::numbers::pi / 180.0;
}

double withoutTurns(double degrees) {
  const double rest = std::fmod(degrees, 360.0);
  return rest < 0 ? rest + 360.0 : rest;
}

bool isTurned(const NumberStyle& style) {
  return style.isClockwise || style.angleBase != 0;
}

// From the x axis to the direction that the drawing counts from, and back.
double shownOf(double degrees, const NumberStyle& style) {
  return withoutTurns(style.isClockwise ? style.angleBase - degrees : degrees - style.angleBase);
}
double meantBy(double degrees, const NumberStyle& style) {
  return withoutTurns(style.isClockwise ? style.angleBase - degrees : degrees + style.angleBase);
}

// --- degrees, minutes and seconds --------------------------------------------------------------------------

// How many of the smallest shown parts make a degree. The first place shows minutes, the third one seconds, and only
// those from the fifth on are places of a number.
std::int64_t partsOfDegree(int places) {
  if (places == 0) return 1;
  if (places < 3) return 60;
  std::int64_t parts = 3600;
  for (int place = 4; place < places; ++place)
    parts *= 10;
  return parts;
}

std::string partsText(std::int64_t parts, int places) {
  const std::int64_t ofDegree = partsOfDegree(places);
  std::string text = fmt::format("{}{}", parts / ofDegree, degreeSign);
  if (places == 0) return text;
  const std::int64_t ofMinute = ofDegree / 60;
  const std::int64_t inMinutes = parts % ofDegree;
  text += fmt::format("{}'", inMinutes / ofMinute);
  if (places < 3) return text;
  const double seconds = static_cast<double>(inMinutes % ofMinute) / (static_cast<double>(ofMinute) / 60.0);
  return text + fmt::format("{:.{}f}\"", seconds, places > 4 ? places - 4 : 0);
}

std::int64_t partsIn(double degrees, int places) {
  constexpr double mostDegrees = 1e6;
  if (!(degrees < mostDegrees)) return 0;
  return std::llround(degrees * static_cast<double>(partsOfDegree(places)));
}

std::string sexagesimalText(double degrees, int places) {
  const std::int64_t parts = partsIn(std::fabs(degrees), places);
  if (parts == 0 && std::fabs(degrees) >= leastShown)
    return decimalText(degrees, places) + std::string(degreeSign);
  return (degrees < 0 && parts != 0 ? "-" : "") + partsText(parts, places);
}

std::string bearingText(double degrees, const NumberStyle& style) {
  const int places = style.anglePlaces;
  const double angle = withoutTurns(degrees);
  const bool isNorth = angle <= 180;
  const bool isEast = angle <= 90 || angle > 270;
  const char* const pole = isNorth ? "N" : "S";
  const char* const side = isEast ? "E" : "W";
  const std::int64_t parts = partsIn(std::fabs((isNorth ? 90 : 270) - angle), places);
  if (parts == 0) return pole;
  if (parts == 90 * partsOfDegree(places)) return side;
  std::string text = partsText(parts, places);
  if (!style.isAsTyped) return fmt::format("{} {} {}", pole, text, side);
  text.replace(text.find(degreeSign), degreeSign.size(), "d");
  return pole + text + side;
}

// --- texts as angles ---------------------------------------------------------------------------------------

// Takes what stands before the first of the marks off the text; nothing when there is no such mark or no number.
std::optional<double> partBefore(std::string_view& text, std::string_view mark) {
  const std::size_t place = text.find(mark);
  if (place == std::string_view::npos) return std::nullopt;
  const std::optional<double> number = unsignedIn(text.substr(0, place));
  if (number) text = trimmed(text.substr(place + mark.size()));
  return number;
}

// 45°30'15", with any of its parts, and without a sign. In degrees.
std::optional<double> sexagesimalIn(std::string_view text) {
  std::optional<double> degrees = partBefore(text, degreeSign);
  if (!degrees) degrees = partBefore(text, "d");
  if (!degrees) return std::nullopt;
  const double minutes = partBefore(text, "'").value_or(0.0);
  const double seconds = partBefore(text, "\"").value_or(0.0);
  if (!text.empty()) return std::nullopt;
  return *degrees + minutes / 60.0 + seconds / 3600.0;
}

bool takeEnd(std::string_view& text, std::string_view end) {
  if (text.size() <= end.size() || !equalIgnoringCase(text.substr(text.size() - end.size()), end))
    return false;
  text = trimmed(text.substr(0, text.size() - end.size()));
  return true;
}

// N 45° E, or one of the letters. In degrees from the east, counterclockwise.
std::optional<double> bearingIn(std::string_view text) {
  for (const auto& [letter, degrees] : {std::pair("E", 0.0), {"N", 90.0}, {"W", 180.0}, {"S", 270.0}}) {
    if (equalIgnoringCase(text, letter)) return degrees;
  }
  const bool isNorth = text.starts_with('N') || text.starts_with('n');
  if (!isNorth && !(text.starts_with('S') || text.starts_with('s'))) return std::nullopt;
  text.remove_prefix(1);
  const bool isEast = takeEnd(text, "E");
  if (!isEast && !takeEnd(text, "W")) return std::nullopt;
  text = trimmed(text);
  const std::optional<double> sexagesimal = sexagesimalIn(text);
  const std::optional<double> fromPole = sexagesimal ? sexagesimal : unsignedIn(text);
  if (!fromPole || *fromPole > 90) return std::nullopt;
  return (isNorth ? 90.0 : 270.0) + (isNorth == isEast ? -*fromPole : *fromPole);
}

// An angle without a sign that names its unit or has that of the format.
struct Written {
  double number;
  bool isRadians;
};

std::optional<Written> numberIn(std::string_view text, double degreesPerUnit, bool isRadians = false) {
  const std::optional<double> number = unsignedIn(text);
  if (!number) return std::nullopt;
  return Written{*number * degreesPerUnit, isRadians};
}

std::optional<Written> writtenIn(std::string_view text, const NumberStyle& style) {
  if (const std::optional<double> degrees = sexagesimalIn(text)) return Written{*degrees, false};
  for (const char* const unit : {"degrees", "degree", "deg"}) {
    if (takeEnd(text, unit)) return numberIn(text, 1);
  }
  for (const char* const unit : {"radians", "rad", "r"}) {
    if (takeEnd(text, unit)) return numberIn(text, 1, true);
  }
  for (const char* const unit : {"grads", "grad", "gon", "g"}) {
    if (takeEnd(text, unit)) return numberIn(text, degreesPerGrad);
  }
  if (style.isPrecise) return numberIn(text, 1);
  if (style.angleFormat == AngleFormat::radians) return numberIn(text, 1, true);
  return numberIn(text, style.angleFormat == AngleFormat::grads ? degreesPerGrad : 1);
}

// The fewest digits that give the angle in radians back.
std::string exactDegrees(double degrees, double radians) {
  constexpr int fewest = 15, most = 17;
  for (int digits = fewest; digits < most; ++digits) {
    std::string text = fmt::format("{:.{}g}", degrees, digits);
    const std::optional<double> back = decimalIn(text);
    if (back && inRadians(*back) == radians) return text;
  }
  return fmt::format("{:.{}g}", degrees, most);
}

}  // namespace

std::string angleText(double angle, bool isDirection, const NumberStyle& style) {
  if (!std::isfinite(angle)) return decimalText(angle, style.anglePlaces);
  const bool isTurning = isDirection && isTurned(style);
  const double degrees = isTurning ? shownOf(inDegrees(angle), style) : inDegrees(angle);
  const double radians = isTurning ? inRadians(degrees) : angle;
  if (style.isPrecise) return exactDegrees(degrees, radians) + std::string(degreeSign);
  switch (style.angleFormat) {
    case AngleFormat::degreesMinutesSeconds:
      return sexagesimalText(degrees, style.anglePlaces);
    case AngleFormat::grads:
      return decimalText(degrees / degreesPerGrad, style.anglePlaces) + "g";
    case AngleFormat::radians:
      return decimalText(radians, style.anglePlaces) + "r";
    case AngleFormat::surveyor:
      return isDirection ? bearingText(inDegrees(angle), style) : sexagesimalText(degrees, style.anglePlaces);
    default:
      return decimalText(degrees, style.anglePlaces) + std::string(degreeSign);
  }
}

std::optional<double> angleIn(std::string_view text, bool isDirection, const NumberStyle& style) {
  text = trimmed(text);
  if (isDirection) {
    if (const std::optional<double> bearing = bearingIn(text)) return inRadians(withoutTurns(*bearing));
  }
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  std::optional<Written> written = writtenIn(trimmed(text), style);
  if (!written) return std::nullopt;
  if (isNegative) written->number = -written->number;
  if (isDirection && isTurned(style)) {
    return inRadians(meantBy(written->isRadians ? inDegrees(written->number) : written->number, style));
  }
  return written->isRadians ? written->number : inRadians(written->number);
}

}  // namespace velt::palette
