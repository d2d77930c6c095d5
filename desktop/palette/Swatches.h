#pragma once

// Colors as people see them beside their names.

#include <QString>
#include <QVariant>

namespace velt::desktop {

// A square of the color that the text names as a palette shows colors ("Red", "12", "255,128,0"), as an icon; nothing for
// any other text, nor for ByLayer and ByBlock, which are no color of their own.
QVariant swatchOf(const QString& text);

}  // namespace velt::desktop
