#pragma once

// One application without a screen for all tests of windows.

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <memory>

#include "desktop/Translations.h"
#include "tests/support/Files.h"

namespace velt::desktop {

// Ends before the program does: Qt's own things are gone by then.
class ApplicationOfTests : public testing::Environment {
 public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application_ = std::make_unique<QApplication>(count_, arguments_);
    // What windows remember is not that of the user, nor that of another test program.
    QApplication::setOrganizationName("velt");
    QApplication::setApplicationName("veltpalette");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(settings_.path().string()));
    speak(QLocale(QLocale::English), *application_);
  }
  void TearDown() override { application_.reset(); }

 private:
  tests::TemporaryFolder settings_;
  int count_ = 1;
  char name_[12] = "veltpalette";
  char* arguments_[2] = {name_, nullptr};
  std::unique_ptr<QApplication> application_;
};

inline testing::Environment* const applicationOfTests =
    testing::AddGlobalTestEnvironment(new ApplicationOfTests);

}  // namespace velt::desktop
