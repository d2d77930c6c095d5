#pragma once

// The languages of the window: English, in which it is written, and those of desktop/translations.

class QCoreApplication;
class QLocale;

namespace velt::desktop {

// From now on the application speaks the language of the locale where there is a translation, and else English. To be
// called before there are windows. The application owns what is loaded.
void speak(const QLocale& locale, QCoreApplication& application);

}  // namespace velt::desktop
