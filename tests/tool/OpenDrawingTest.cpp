#include "tool/OpenDrawing.h"

#include <gtest/gtest.h>

#include "dxf/Error.h"
#include "tests/tool/Drawings.h"

using namespace velt::tests;

TEST(OpenDrawing, ADrawingIsOpened) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, line("2F", "0")));
  EXPECT_EQ(velt::tool::openDrawing(file)->entities().size(), 1U);
}

TEST(OpenDrawing, WhatCannotBeOpenedIsNamed) {
  const TemporaryFolder folder;
  try {
    velt::tool::openDrawing(folder.path("missing.dxf"));
    FAIL() << "a missing file was opened";
  } catch (const velt::dxf::Error& error) {
    EXPECT_EQ(error.file(), folder.path("missing.dxf"));
  }
}
