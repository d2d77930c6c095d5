#include "desktop/Translations.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include "tests/desktop/Application.h"

namespace velt::desktop {
namespace {

QString said(const char* text, int number = -1) {
  return QCoreApplication::translate("velt::desktop::PalettePane", text, nullptr, number);
}

class Translations : public testing::Test {
 protected:
  void SetUp() override {
    if (said("Show these %n entities", 1) != "Show this entity")
      GTEST_SKIP() << "built without the tools for translations";
  }
  // For the tests that follow.
  void TearDown() override { speakOnly(QLocale::English); }

  static void speakOnly(QLocale::Language language) {
    qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator*>());
    speak(QLocale(language), *QCoreApplication::instance());
  }
};

TEST_F(Translations, EnglishTellsOneFromMany) {
  EXPECT_EQ(said("Show these %n entities", 3), "Show these 3 entities");
  EXPECT_EQ(said("Search properties"), "Search properties");
}

TEST_F(Translations, TheWindowSpeaksTheLanguageOfTheUser) {
  speakOnly(QLocale::German);
  EXPECT_EQ(said("Search properties"), "Eigenschaften suchen");
  EXPECT_EQ(said("Show these %n entities", 1), "Dieses Objekt zeigen");
  EXPECT_EQ(said("Show these %n entities", 3), "Diese 3 Objekte zeigen");
}

TEST_F(Translations, TheWindowSpeaksEnglishToEverybodyElse) {
  speakOnly(QLocale::Japanese);
  EXPECT_EQ(said("Search properties"), "Search properties");
  EXPECT_EQ(said("Show these %n entities", 1), "Show this entity");
}

}  // namespace
}  // namespace velt::desktop
