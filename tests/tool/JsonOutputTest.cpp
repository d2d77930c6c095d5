#include "tool/JsonOutput.h"

#include <gtest/gtest.h>

#include <sstream>

namespace velt::tool {
namespace {

std::string printed(const nlohmann::ordered_json& json) {
  std::ostringstream out;
  velt::tool::printJson(json, out);
  return out.str();
}

TEST(JsonOutput, ControlCharactersOfAllKindsAreEscapedAndReadBack) {
  const std::string text = "\x1B[31m \x7F \u009B \u00A0 \u00C2 \u8868";
  const std::string json = printed({{"name", text}});
  EXPECT_EQ(json, "{\n  \"name\": \"\\u001b[31m \\u007f \\u009b \u00A0 \u00C2 \u8868\"\n}\n");
  EXPECT_EQ(nlohmann::json::parse(json)["name"], text);
}

TEST(JsonOutput, BytesThatAreNotUtf8BecomeTheReplacementCharacter) {
  EXPECT_EQ(printed("a\xFF"), "\"a\xEF\xBF\xBD\"\n");
}

TEST(JsonOutput, OnlyControlCharactersAreEscaped) {
  EXPECT_EQ(jsonText("\u0080\u0081\u009F\u00A0\u00A1", -1), "\"\\u0080\\u0081\\u009f\u00A0\u00A1\"");
  EXPECT_EQ(jsonText("~\x7F\x7F", -1), "\"~\\u007f\\u007f\"");
  EXPECT_EQ(jsonText("\u0102 \u00C2", -1), "\"\u0102 \u00C2\"");
  EXPECT_EQ(jsonText("", -1), "\"\"");
}

TEST(JsonOutput, TheTextIsIndentedAsAsked) {
  const nlohmann::ordered_json json = {{"b", {1, 2}}, {"a", nullptr}};
  EXPECT_EQ(jsonText(json, -1), R"({"b":[1,2],"a":null})");
  EXPECT_EQ(jsonText(json, 1), "{\n \"b\": [\n  1,\n  2\n ],\n \"a\": null\n}");
  EXPECT_EQ(printed(json), "{\n  \"b\": [\n    1,\n    2\n  ],\n  \"a\": null\n}\n");
}

}  // namespace
}  // namespace velt::tool
