#include "tests/palette/Stage.h"

namespace velt::palette {
namespace {

using toys::print;

TEST(Value, IsNothingAtFirst) {
  EXPECT_EQ(Value().variant().vt, VT_EMPTY);
  EXPECT_EQ(Value().plain(), PlainValue());
}

TEST(Value, IsMadeOfWhatItIsToHold) {
  EXPECT_EQ(print(Value::ofReal(1.5).variant()), print(toys::r8(1.5)));
  EXPECT_EQ(print(Value::ofInteger(-7).variant()), print(toys::i4(-7)));
  EXPECT_EQ(print(Value::ofFlag(true).variant()), print(toys::boolean(true)));
  EXPECT_EQ(print(Value::ofFlag(false).variant()), print(toys::boolean(false)));
  EXPECT_EQ(Value::ofText("\xE2\x82\xAC 5").plain(), PlainValue(std::string("\xE2\x82\xAC 5")));
}

TEST(Value, ATextWithANulIsRefusedInsteadOfCut) {
  using namespace std::string_view_literals;
  EXPECT_EQ(errorOf([] { Value::ofText("a\0b"sv); }), "a text cannot hold the character NUL");
}

TEST(Value, BytesThatAreNotUtf8AreRefusedInsteadOfReplaced) {
  for (const char* const bytes : {"\xFF", "a\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80"})
    EXPECT_EQ(errorOf([bytes] { Value::ofText(bytes); }), "the text is not UTF-8");
}

TEST(Value, TheReplacementCharacterItselfIsAText) {
  toys::ToyHost host;
  EXPECT_EQ(Value::ofText("\xEF\xBF\xBD").plain(), PlainValue(std::string("\xEF\xBF\xBD")));
}

TEST(Value, GivesBackOnceWhatItHolds) {
  toys::ToyHost host;
  {
    Value first = Value::ofText("text");
    Value second(std::move(first));
    EXPECT_EQ(second.plain(), PlainValue(std::string("text")));
    second = Value::ofText("other");
  }
  EXPECT_EQ(host.balance(), "balanced");
}

}  // namespace
}  // namespace velt::palette
