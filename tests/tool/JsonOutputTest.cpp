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

}  // namespace
}  // namespace velt::tool
