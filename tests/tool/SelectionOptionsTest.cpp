#include "tool/SelectionOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velt::tool {
namespace {

using testing::ElementsAre;

SelectionRequest requestOf(const std::string& commandLine) {
  CLI::App app;
  SelectionRequest request;
  addSelection(app, request);
  app.parse(commandLine);
  return request;
}

TEST(SelectionOptions, NamesAreSeparatedByCommasAndOptionsMayBeRepeated) {
  const SelectionRequest request = requestOf("--layer Walls,Doors --layer Garden --type Line");
  EXPECT_THAT(request.layers, ElementsAre("Walls", "Doors", "Garden"));
  EXPECT_THAT(request.types, ElementsAre("Line"));
  EXPECT_FALSE(request.all);
}

TEST(SelectionOptions, NothingIsSelectedWithoutOne) {
  EXPECT_TRUE(requestOf("").isEmpty());
  EXPECT_FALSE(requestOf("--where Radius>5").isEmpty());
}

TEST(SelectionOptions, ThereIsNoLayoutWhereItIsChosenOtherwise) {
  CLI::App app;
  SelectionRequest request;
  addSelection(app, request, Layouts::AreChosenOtherwise);
  EXPECT_THROW(app.parse("--layout Model"), CLI::ExtrasError);
}

}  // namespace
}  // namespace velt::tool
