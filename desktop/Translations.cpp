#include "desktop/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <memory>

// Not inside of a namespace, because Qt declares a function of the resources here.
static void loadResources() {
  Q_INIT_RESOURCE(translations);
}

namespace {

void add(std::unique_ptr<QTranslator> translator, bool isLoaded, QCoreApplication& application) {
  if (!isLoaded) return;
  translator->setParent(&application);
  QCoreApplication::installTranslator(translator.release());
}

}  // namespace

namespace velt::desktop {

void speak(const QLocale& locale, QCoreApplication& application) {
  loadResources();
  const QString folder = ":/translations";
  // English has translations too: of texts with a number, which differ for one and for many.
  auto english = std::make_unique<QTranslator>();
  const bool hasEnglish = english->load("veltpalette_en", folder);
  add(std::move(english), hasEnglish, application);
  // The buttons of Qt's own dialogs.
  auto ofQt = std::make_unique<QTranslator>();
  const bool hasQt = ofQt->load(locale, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  add(std::move(ofQt), hasQt, application);
  auto own = std::make_unique<QTranslator>();
  const bool hasOwn = own->load(locale, "veltpalette", "_", folder);
  add(std::move(own), hasOwn, application);
}

}  // namespace velt::desktop
