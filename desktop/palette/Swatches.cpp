#include "desktop/palette/Swatches.h"

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStringList>
#include <optional>

namespace velt::desktop {

namespace {

struct NamedColor {
  const char* name;
  QRgb rgb;
};
constexpr NamedColor namedColors[] = {{"Red", 0xFFFF0000},  {"Yellow", 0xFFFFFF00}, {"Green", 0xFF00FF00},
                                      {"Cyan", 0xFF00FFFF}, {"Blue", 0xFF0000FF},   {"Magenta", 0xFFFF00FF},
                                      {"White", 0xFFFFFFFF}};

std::optional<QColor> colorOf(const QString& text) {
  for (const NamedColor& named : namedColors) {
    if (text.compare(QLatin1String(named.name), Qt::CaseInsensitive) == 0) return QColor(named.rgb);
  }
  const QStringList parts = text.split(',');
  if (parts.size() != 3) return std::nullopt;
  int values[3] = {};
  for (int i = 0; i < 3; ++i) {
    bool isNumber = false;
    values[i] = parts[i].toInt(&isNumber);
    if (!isNumber || values[i] < 0 || values[i] > 255) return std::nullopt;
  }
  return QColor(values[0], values[1], values[2]);
}

}  // namespace

QVariant swatchOf(const QString& text) {
  constexpr int size = 12;
  const std::optional<QColor> color = colorOf(text);
  if (!color) return {};
  QPixmap picture(size, size);
  picture.fill(*color);
  QPainter(&picture).drawRect(0, 0, size - 1, size - 1);
  return QIcon(picture);
}

}  // namespace velt::desktop
