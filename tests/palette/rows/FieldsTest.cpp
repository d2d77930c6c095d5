#include <gmock/gmock.h>

#include <algorithm>

#include "tests/palette/Stage.h"
#include "tests/support/Row.h"

namespace velt::palette {
namespace {

class Fields : public Stage {
 protected:
  static Field::Data fieldOf(const PROPINFO& record, std::string_view name) {
    for (const Field& field : Row(record).fields()) {
      if (field.name == name) return field.data;
    }
    return PlainValue(std::string("no such field"));
  }
};

TEST_F(Fields, AreThoseOfTheRecordUnderItsOwnNamesAndInItsOrder) {
  const PROPINFO record = toys::Row(L"A");
  std::vector<std::string> names;
  for (const Field& field : Row(record).fields())
    names.emplace_back(field.name);
  EXPECT_THAT(names, testing::ElementsAre(
                         "clsid", "pDispatch", "dispId", "name", "description", "displayName", "value",
                         "categoryId", "categoryName", "isElement", "elementCookie", "hasChoices",
                         "choiceNames", "choiceValues", "isWritable", "isEditable", "isVaries", "customType",
                         "groupCount", "elementGrouping", "weight", "sortByCookie", "objectId", "valueType",
                         "hasValue", "pDynamicProperty", "dynSources", "choiceReals"));
}

TEST_F(Fields, EachHasItsOwnContent) {
  toys::ToyObject& object = add();
  object.objectId = entity(0).data.objectId();
  PROPINFO record = toys::Row(L"Name")
                        .label(L"Two\nlines")
                        .dispId(4)
                        .inCategory(-3, L"Category")
                        .of(object, 42)
                        .value(toys::r8(1.5))
                        .customType(542)
                        .element(7, true)
                        .grouping(2)
                        .weight(9)
                        .choice(L"solid", 10);
  record.clsid = GUID{0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
  record.description = L"Help";
  record.groupCount = 3;
  record.choiceReals.push_back(2.5);
  const auto number = [](std::int64_t value) { return Field::Data(PlainValue(value)); };
  const auto text = [](const char* value) { return Field::Data(PlainValue(std::string(value))); };
  const auto flag = [](bool value) { return Field::Data(PlainValue(value)); };
  EXPECT_EQ(fieldOf(record, "clsid"), text("01020304-0506-0708-090A-0B0C0D0E0F10"));
  EXPECT_EQ(fieldOf(record, "pDispatch"), Field::Data(entity(0).data.objectId()));
  EXPECT_EQ(fieldOf(record, "dispId"), number(4));
  EXPECT_EQ(fieldOf(record, "name"), text("Name"));
  EXPECT_EQ(fieldOf(record, "description"), text("Help"));
  EXPECT_EQ(fieldOf(record, "displayName"), text("Two\nlines")) << "as it is";
  EXPECT_EQ(fieldOf(record, "value"), Field::Data(PlainValue(1.5)));
  EXPECT_EQ(fieldOf(record, "categoryId"), number(-3));
  EXPECT_EQ(fieldOf(record, "categoryName"), text("Category"));
  EXPECT_EQ(fieldOf(record, "isElement"), flag(true));
  EXPECT_EQ(fieldOf(record, "elementCookie"), number(7));
  EXPECT_EQ(fieldOf(record, "hasChoices"), flag(true));
  EXPECT_EQ(fieldOf(record, "choiceNames"), Field::Data(std::vector<std::string>{"solid"}));
  EXPECT_EQ(fieldOf(record, "choiceValues"), Field::Data(std::vector<std::int64_t>{10}));
  EXPECT_EQ(fieldOf(record, "isWritable"), flag(true));
  EXPECT_EQ(fieldOf(record, "isEditable"), flag(true));
  EXPECT_EQ(fieldOf(record, "isVaries"), flag(false));
  EXPECT_EQ(fieldOf(record, "customType"), number(542));
  EXPECT_EQ(fieldOf(record, "groupCount"), number(3));
  EXPECT_EQ(fieldOf(record, "elementGrouping"), number(2));
  EXPECT_EQ(fieldOf(record, "weight"), number(9));
  EXPECT_EQ(fieldOf(record, "sortByCookie"), flag(true));
  EXPECT_EQ(fieldOf(record, "objectId"), Field::Data(VkDbObjectId().setFromOldId(42)));
  EXPECT_EQ(fieldOf(record, "valueType"), number(VT_R8));
  EXPECT_EQ(fieldOf(record, "hasValue"), flag(true));
  EXPECT_EQ(fieldOf(record, "pDynamicProperty"), flag(false));
  EXPECT_EQ(fieldOf(record, "choiceReals"), Field::Data(std::vector<double>{2.5}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(Fields, OfADynamicRowEachEntityIsTold) {
  toys::ToyObject& object = add();
  object.objectId = entity(0).data.objectId();
  const toys::ToyObject property(host, "property");
  const PROPINFO record = toys::Row(L"A")
                              .dynamic(property.unknown())
                              .source(object.unknown(), property.unknown())
                              .source(nullptr, nullptr);
  EXPECT_EQ(fieldOf(record, "pDynamicProperty"), Field::Data(PlainValue(true)));
  const auto sources = std::get<std::vector<DynamicSource>>(fieldOf(record, "dynSources"));
  ASSERT_EQ(sources.size(), 2U);
  EXPECT_EQ(sources[0].entity, entity(0).data.objectId());
  EXPECT_TRUE(sources[0].hasProperty);
  EXPECT_TRUE(sources[1].entity.isNull());
  EXPECT_FALSE(sources[1].hasProperty);
}

}  // namespace
}  // namespace velt::palette
