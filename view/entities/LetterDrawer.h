#pragma once

// Draws the letters of texts: what the kinds of entities with texts share.

#include <string>

#include "view/FormattedText.h"
#include "view/Painter.h"
#include "view/Transform.h"

namespace velt::view::entities {

// One line. `plane` leads from where the text hangs, x along its baseline, to the space; `anchor` as in Text.
void drawLetters(Painter& painter, const Pen& pen, const Transform& plane, const std::wstring& wording,
                 const TextFormat& format, double anchor);

// A text with codes in it. The plane as above, from where the text is attached.
void drawFormatted(Painter& painter, const Pen& pen, const Transform& plane, const LaidOutText& text);

}  // namespace velt::view::entities
