#include "embedded/sources/EntityProperty.h"

#include <gtest/gtest.h>

#include "embedded/automation/model/Refusal.h"
#include "tests/embedded/sources/Properties.h"

namespace velt::sources {
namespace {

using namespace test;
using automation::Refusal;

// Every entity on layer "Walls" has it; what was written last is kept.
class Note final : public EntityProperty {
 public:
  explicit Note(Description description) : EntityProperty(std::move(description)) {}
  mutable std::wstring kept = L"first";
  bool fails = false;
  bool forgets = false;

 protected:
  bool has(const AskedEntity& entity) const override {
    if (fails) throw Refusal(E_UNEXPECTED, L"");
    return database::Entity(entity.object).layerName() == L"Walls";
  }
  VARIANT read(const AskedEntity&) const override { return textVariant(kept); }
  void write(const AskedEntity&, const VARIANT& value) const override {
    if (!forgets) kept = textIn(value);
  }
};

EntityProperty::Description described() {
  return {.name = L"NOTE", .help = L"A note.", .category = 9, .heading = L"Notes"};
}

class EntityPropertyTest : public testing::Test {
 protected:
  std::unique_ptr<Drawing> drawing_ = Sample()
                                          .layer("Walls")
                                          .layer("Axes", {{70, "4"}})
                                          .entity("LINE", {{8, "Walls"}})
                                          .entity("LINE", {{8, "0"}})
                                          .open();
  Bound wall_{*drawing_, 0};
  Bound other_{*drawing_, 1};
  InterfaceHolder<Note> note_ = InterfaceHolder<Note>::owning(com::makeObject<Note>(described()));
  Row row_{wall_.dispatch(), *static_cast<IDynamicProperty2*>(note_.get())};
};

TEST_F(EntityPropertyTest, TellsItsDescription) {
  EXPECT_EQ(L"NOTE", row_.name());
  EXPECT_EQ(L"A note.", row_.help());
  EXPECT_EQ(L"Notes", row_.heading());
  EXPECT_EQ(VT_BSTR, row_.type());
  EXPECT_FALSE(row_.isReadOnly());
  StringHolder text;
  EXPECT_EQ(E_NOTIMPL, row_.property().GetCurrentValueName(text.put()));
  EXPECT_EQ(E_INVALIDARG, note_->GetCategoryName(8, LOCALE_USER_DEFAULT, text.put()));
}

TEST_F(EntityPropertyTest, HasAnIdThatDependsOnWhatItIsCalled) {
  GUID one{};
  GUID again{};
  GUID other{};
  EXPECT_EQ(S_OK, note_->GetGUID(&one));
  EXPECT_EQ(S_OK, note_->GetGUID(&again));
  EntityProperty::Description different = described();
  different.name = L"NOTES";
  const auto notes = InterfaceHolder<Note>::owning(com::makeObject<Note>(different));
  EXPECT_EQ(S_OK, notes->GetGUID(&other));
  EXPECT_EQ(one, again);
  EXPECT_FALSE(one == other);
}

TEST_F(EntityPropertyTest, IsEnabledForEntitiesThatHaveIt) {
  EXPECT_TRUE(row_.isEnabledFor(wall_.dispatch()));
  EXPECT_FALSE(row_.isEnabledFor(other_.dispatch()));
  BOOL enabled = 77;
  EXPECT_EQ(S_OK, note_->IsPropertyEnabled(nullptr, &enabled));
  EXPECT_EQ(0, enabled);
}

TEST_F(EntityPropertyTest, ReadsAndWritesThroughTheEntity) {
  EXPECT_EQ(L"first", row_.text());
  EXPECT_EQ(S_OK, row_.set(L"second"));
  EXPECT_EQ(L"second", row_.text());
  const StringHolder held(L"third");
  VARIANT inner = variants::borrowed(held.get());
  VARIANT wrapped = variants::ofType(VT_BYREF | VT_VARIANT);
  wrapped.pvarVal = &inner;
  EXPECT_EQ(S_OK, row_.set(wrapped));
  EXPECT_EQ(L"third", note_->kept);
}

TEST_F(EntityPropertyTest, RefusesEntitiesWithoutItAndObjectsThatAreNotEntities) {
  VariantHolder value;
  EXPECT_EQ(E_INVALIDARG, note_->GetCurrentValueData(&other_.dispatch(), value.put()));
  EXPECT_EQ(E_INVALIDARG, note_->GetCurrentValueData(nullptr, value.put()));
  EXPECT_EQ(E_INVALIDARG, note_->SetCurrentValueData(&other_.dispatch(), VARIANT{}));
  drawing_.reset();
  EXPECT_EQ(E_INVALIDARG, note_->GetCurrentValueData(&wall_.dispatch(), value.put()));
  EXPECT_EQ(VT_EMPTY, value.get().vt);
}

TEST_F(EntityPropertyTest, RefusesToWriteWhatIsReadOnly) {
  EntityProperty::Description fixed = described();
  fixed.isReadOnly = true;
  const auto property = InterfaceHolder<Note>::owning(com::makeObject<Note>(fixed));
  EXPECT_EQ(E_ACCESSDENIED,
            Row(wall_.dispatch(), *static_cast<IDynamicProperty2*>(property.get())).set(L"x"));
  EXPECT_EQ(L"first", property->kept);
}

TEST_F(EntityPropertyTest, AValueThatDoesNotComeBackIsRefused) {
  note_->forgets = true;
  EXPECT_EQ(E_FAIL, row_.set(L"second"));
  EXPECT_EQ(S_OK, row_.set(L"first"));
}

TEST_F(EntityPropertyTest, RefusalsBecomeResults) {
  note_->fails = true;
  BOOL enabled = 77;
  EXPECT_EQ(E_UNEXPECTED, note_->IsPropertyEnabled(&wall_.dispatch(), &enabled));
  EXPECT_EQ(77, enabled) << "out-parameters stay as they are";
  EXPECT_EQ(DISP_E_TYPEMISMATCH, (note_->fails = false, row_.set(automation::test::number(1.5))));
}

TEST_F(EntityPropertyTest, NullOutParametersAreRefused) {
  EXPECT_EQ(E_POINTER, note_->GetGUID(nullptr));
  EXPECT_EQ(E_POINTER, note_->GetDisplayName(nullptr));
  EXPECT_EQ(E_POINTER, note_->IsPropertyEnabled(&wall_.dispatch(), nullptr));
  EXPECT_EQ(E_POINTER, note_->IsPropertyReadOnly(nullptr));
  EXPECT_EQ(E_POINTER, note_->GetDescription(nullptr));
  EXPECT_EQ(E_POINTER, note_->GetCurrentValueName(nullptr));
  EXPECT_EQ(E_POINTER, note_->GetCurrentValueType(nullptr));
  EXPECT_EQ(E_POINTER, note_->GetCurrentValueData(&wall_.dispatch(), nullptr));
  EXPECT_EQ(E_POINTER, note_->MapPropertyToCategory(-23, nullptr));
  EXPECT_EQ(E_POINTER, note_->GetCategoryName(9, LOCALE_USER_DEFAULT, nullptr));
}

template <class Function>
HRESULT refused(Function function) {
  try {
    function();
    return S_OK;
  } catch (const Refusal& refusal) {
    return refusal.result();
  }
}

TEST(ValuesOfProperties, AreTakenFromTheirOwnKindOnly) {
  const StringHolder held(L"12");
  const VARIANT text = variants::borrowed(held.get());
  EXPECT_EQ(L"12", textIn(text));
  EXPECT_EQ(2.5, realIn(automation::test::number(2.5)));
  EXPECT_EQ(7, integerIn(automation::test::number(7.0), 0, 9));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, refused([&] { static_cast<void>(realIn(text)); }));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, refused([&] { static_cast<void>(textIn(automation::test::integer(1))); }));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, refused([&] { static_cast<void>(realIn(automation::test::flag(true))); }));
  EXPECT_EQ(DISP_E_TYPEMISMATCH,
            refused([&] { static_cast<void>(integerIn(automation::test::number(1.5), 0, 9)); }));
  EXPECT_EQ(DISP_E_OVERFLOW,
            refused([&] { static_cast<void>(integerIn(automation::test::integer(10), 0, 9)); }));
  EXPECT_EQ(DISP_E_OVERFLOW,
            refused([&] { static_cast<void>(realIn(automation::test::number(1.0 / 0.0))); }));
}

TEST_F(EntityPropertyTest, ALockedLayerIsRefusedAndAnyOtherIsNot) {
  const auto locked = Sample().layer("Axes", {{70, "4"}}).entity("LINE", {{8, "axes"}}).open();
  const std::uint32_t line = database::test::entityRecord(*locked);
  EXPECT_EQ(E_ACCESSDENIED, refused([&] { requireUnlockedLayer(*locked, line); }));
  EXPECT_EQ(S_OK,
            refused([&] { requireUnlockedLayer(*drawing_, database::test::entityRecord(*drawing_, 0)); }));
  EXPECT_EQ(S_OK,
            refused([&] { requireUnlockedLayer(*drawing_, database::test::entityRecord(*drawing_, 1)); }))
      << "a layer that is not in the table";
}

TEST_F(EntityPropertyTest, AnArrayOfNoPropertiesIsEmpty) {
  VariantHolder none;
  EXPECT_EQ(S_OK, givePropertyArray({}, none.put()));
  EXPECT_EQ(VT_EMPTY, none.get().vt);
  IDynamicProperty2* const both[] = {note_.get(), note_.get()};
  VariantHolder two;
  EXPECT_EQ(S_OK, givePropertyArray(both, two.put()));
  EXPECT_EQ(2U, elementsOf(two.get()).size());
}

}  // namespace
}  // namespace velt::sources
