#pragma once

// One application without a screen for all tests of windows.

#include <gtest/gtest.h>

#include <QApplication>

namespace velt::window {

class Application : public testing::Test {
 protected:
  Application() {
    if (QApplication::instance() != nullptr) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "veltpalette";
    static char* arguments[] = {name, nullptr};
    static QApplication application(count, arguments);
  }
};

}  // namespace velt::window
