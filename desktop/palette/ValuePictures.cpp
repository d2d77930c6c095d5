#include "desktop/palette/ValuePictures.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPen>
#include <QStringList>
#include <algorithm>
#include <numeric>
#include <optional>
#include <vector>

#include "embedded/database/Layer.h"
#include "view/Colors.h"

namespace velt::desktop {

namespace {

constexpr int height = 12;
constexpr int lineLength = 48;
// In pixels, on a screen of usual density.
constexpr double millimetre = 96 / 25.4;

QColor colorOf(const view::Ink& ink) {
  return ink.kind == view::Ink::Kind::Color ? QColor(ink.red, ink.green, ink.blue) : QColor(Qt::white);
}

// As palettes show colors: "Red", "12", "255,128,0". ByLayer and ByBlock are no color of their own.
std::optional<QColor> colorNamed(const QString& text) {
  // In the order of their indexes, from 1.
  static const QStringList names = {"red", "yellow", "green", "cyan", "blue", "magenta", "white"};
  if (const qsizetype place = names.indexOf(text.toLower()); place >= 0)
    return colorOf(view::inkOfIndex(static_cast<std::uint32_t>(place + 1)));
  const QStringList parts = text.split(',');
  std::vector<int> numbers;
  for (const QString& part : parts) {
    bool isNumber = false;
    numbers.push_back(part.toInt(&isNumber));
    if (!isNumber || numbers.back() < 0 || numbers.back() > 255) return std::nullopt;
  }
  if (numbers.size() == 1 && numbers[0] > 0)
    return colorOf(view::inkOfIndex(static_cast<std::uint32_t>(numbers[0])));
  if (numbers.size() == 3) return QColor(numbers[0], numbers[1], numbers[2]);
  return std::nullopt;
}

ValuePicture square(const QColor& color) {
  return {.shape = ValuePicture::Shape::square, .color = color};
}

ValuePicture line(double width) {
  return {.shape = ValuePicture::Shape::line, .width = width};
}

// The text has millimetres before their unit.
ValuePicture ofLineweight(const QString& text) {
  bool isNumber = false;
  const double millimetres = text.section(' ', 0, 0).toDouble(&isNumber);
  constexpr double thinnest = 0.5;
  return line(isNumber ? std::max(millimetres * millimetre, thinnest) : 0);
}

}  // namespace

ValuePictures::ValuePictures(const database::Drawing& drawing) : drawing_(&drawing), appearance_(drawing) {}

ValuePicture ValuePictures::of(PropertyKind::Code kind, const QString& text) const {
  switch (kind) {
    case PropertyKind::entityLayer:
    case PropertyKind::layer:
      return ofLayer(text);
    case PropertyKind::entityLinetype:
    case PropertyKind::linetype:
      return ofLinetype(text);
    case PropertyKind::entityLineweight:
    case PropertyKind::lineweight:
      return ofLineweight(text);
    case PropertyKind::colorObject:
    case PropertyKind::color: {
      const std::optional<QColor> color = colorNamed(text);
      return color ? square(*color) : ValuePicture();
    }
    default:
      return {};
  }
}

ValuePicture ValuePictures::ofLayer(const QString& name) const {
  const database::TableEntry* const entry = drawing_->layers().find(name.toStdWString());
  if (entry == nullptr) return {};
  const database::Layer layer(*drawing_, entry->record);
  ValuePicture picture = square(colorOf(appearance_.inkOfRaw(layer.color().color(), {})));
  QStringList states;
  if (layer.isOff()) states.append(QCoreApplication::translate("velt::desktop::ValuePictures", "off"));
  if (layer.isFrozen()) states.append(QCoreApplication::translate("velt::desktop::ValuePictures", "frozen"));
  if (layer.isLocked()) states.append(QCoreApplication::translate("velt::desktop::ValuePictures", "locked"));
  picture.states = states.join(", ");
  return picture;
}

// ByLayer and ByBlock are no line types of their own.
ValuePicture ValuePictures::ofLinetype(const QString& name) const {
  const database::TableEntry* const entry = drawing_->linetypes().find(name.toStdWString());
  if (entry == nullptr) return line(0);
  const bool isBy =
      name.compare("ByLayer", Qt::CaseInsensitive) == 0 || name.compare("ByBlock", Qt::CaseInsensitive) == 0;
  ValuePicture picture = line(isBy ? 0 : 1);
  const std::vector<double>& lengths = appearance_.dashesOf(drawing_->linetypes().indexOf(*entry));
  const double period = std::accumulate(lengths.begin(), lengths.end(), 0.0);
  if (!(period > 0)) return picture;
  // Long patterns get more room, and the end of each is to be seen.
  const double shown = std::clamp(7.0 * static_cast<double>(lengths.size()), 12.0, 0.75 * lineLength);
  for (const double length : lengths)
    picture.dashes.append(std::max(length * shown / period, 1.0));
  return picture;
}

QPixmap pixmapOf(const ValuePicture& picture, const QPalette& palette, qreal ratio) {
  if (picture.shape == ValuePicture::Shape::none) return {};
  const bool isSquare = picture.shape == ValuePicture::Shape::square;
  const QSize size(isSquare ? height : lineLength, height);
  QPixmap pixmap(size * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  const QColor ink = palette.color(QPalette::Active, QPalette::Text);
  if (isSquare) {
    painter.setPen(ink);
    painter.setBrush(picture.color);
    painter.drawRect(0, 0, height - 1, height - 1);
  } else if (picture.width > 0) {
    QPen pen(ink, picture.width);
    pen.setCapStyle(Qt::FlatCap);
    if (!picture.dashes.isEmpty()) pen.setDashPattern(picture.dashes);
    painter.setRenderHint(QPainter::Antialiasing, picture.width < 1 || picture.width > 1);
    painter.setPen(pen);
    painter.drawLine(QPointF(0, height / 2.0), QPointF(lineLength, height / 2.0));
  }
  return pixmap;
}

}  // namespace velt::desktop
