#include "embedded/sources/GuardedSource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "embedded/com/ComObject.h"
#include "host/com/ComError.h"
#include "tests/embedded/sources/Properties.h"
#include "tests/plugins/Parts.h"

namespace velt::sources {
namespace {

using automation::test::ask;
using holders::InterfaceHolder;
using holders::StringHolder;
using holders::VariantHolder;
using test::elementsOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::giveArray;
using tests::NewerProperty;
using tests::OlderProperty;
using tests::ScriptedSource;
using tests::unknown;

class GuardedSourceTest : public testing::Test {
 protected:
  std::vector<InterfaceHolder<IUnknown>> properties() {
    VariantHolder answer;
    result_ = source().GetProperties(nullptr, answer.put());
    return elementsOf(answer.get());
  }
  IPropertySource& source() {
    if (!guarded_) guarded_ = guard(&scripted_, reports_);
    return *guarded_.get();
  }
  void offer(const std::vector<IUnknown*>& elements) {
    scripted_.properties = [elements](VARIANT* out) { return giveArray(elements, out); };
  }
  template <class Interface>
  InterfaceHolder<Interface> only() {
    const auto found = properties();
    EXPECT_EQ(1U, found.size());
    return found.empty() ? InterfaceHolder<Interface>() : ask<Interface>(*found[0].get());
  }

  std::vector<std::string> lines_;
  HRESULT result_ = S_OK;
  NewerProperty newer_{L"newer"};
  OlderProperty older_{L"older"};
  ScriptedSource scripted_;
  std::shared_ptr<PluginReports> reports_ =
      std::make_shared<PluginReports>("bad.so", [this](const std::string& line) { lines_.push_back(line); });
  InterfaceHolder<IPropertySource> guarded_;
};

TEST_F(GuardedSourceTest, PassesOnWhatIsRight) {
  offer({unknown(newer_)});
  newer_.choices = 2;
  const auto property = only<IDynamicProperty2>();
  ASSERT_TRUE(property);
  const test::Row row(static_cast<IDispatch*>(nullptr), *property.get());
  EXPECT_EQ(L"newer", row.name());
  EXPECT_EQ(L"described", row.help());
  EXPECT_EQ(L"Test", row.heading());
  EXPECT_EQ(L"fine", row.text());
  EXPECT_FALSE(row.isReadOnly());
  GUID guid{};
  EXPECT_EQ(S_OK, property->GetGUID(&guid));
  EXPECT_EQ(7U, guid.Data1);
  const auto choices = ask<IDynamicEnumProperty>(*property.get());
  LONG count = 0;
  StringHolder name;
  VariantHolder value;
  EXPECT_EQ(S_OK, choices->GetNumPropertyValues(&count));
  EXPECT_EQ(S_OK, choices->GetPropValueName(1, name.put()));
  EXPECT_EQ(S_OK, choices->GetPropValueData(1, value.put()));
  EXPECT_EQ(2, count);
  EXPECT_EQ(L"choice", name.view());
  EXPECT_EQ(1, value.get().lVal);
  std::wstring taken;
  newer_.set = [&](const VARIANT& given) { return taken = given.bstrVal, S_OK; };
  EXPECT_EQ(S_OK, row.set(L"new"));
  EXPECT_EQ(L"new", taken);
  EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(GuardedSourceTest, HasTheInterfacesOfThePropertyAndNoOthers) {
  offer({unknown(newer_)});
  EXPECT_TRUE(only<IDynamicProperty2>());
  EXPECT_FALSE(only<IDynamicProperty>());
  EXPECT_TRUE(only<IDynamicEnumProperty>());
  offer({unknown(older_)});
  EXPECT_FALSE(only<IDynamicProperty2>());
  EXPECT_TRUE(only<IDynamicProperty>());
  OlderProperty bare(L"bare");
  bare.isBare = true;
  offer({unknown(bare)});
  EXPECT_FALSE(only<IDynamicEnumProperty>());
  EXPECT_FALSE(only<ICategorizeProperties>());
  guarded_.reset();
  EXPECT_EQ(0, bare.references);
}

TEST_F(GuardedSourceTest, TheOlderGenerationIsAskedByTheOldId) {
  offer({unknown(older_)});
  const auto property = only<IDynamicProperty>();
  VariantHolder value;
  EXPECT_EQ(S_OK, property->GetCurrentValueData(77L, value.put()));
  EXPECT_EQ(L"fine", automation::test::textOf(value.get()));
  BOOL enabled = 0;
  EXPECT_EQ(S_OK, property->IsPropertyEnabled(77L, &enabled));
  EXPECT_EQ(1, enabled);
  older_.set = [](const VARIANT&) { return E_ACCESSDENIED; };
  EXPECT_EQ(E_ACCESSDENIED, property->SetCurrentValueData(77L, value.get()));
  EXPECT_THAT(lines_, ElementsAre("plug-in bad.so: SetCurrentValueData failed: Access is denied."));
}

TEST_F(GuardedSourceTest, OneObjectIsOneGuardedProperty) {
  offer({unknown(newer_), static_cast<IDynamicEnumProperty*>(&newer_)});
  const auto first = properties();
  const auto again = properties();
  ASSERT_EQ(2U, first.size());
  EXPECT_EQ(first[0].get(), first[1].get()) << "by whichever interface it is handed out";
  EXPECT_EQ(first[0].get(), again.at(0).get()) << "at each call";
}

TEST_F(GuardedSourceTest, AGuardedPropertyLivesAsLongAsItsSource) {
  offer({unknown(newer_)});
  IUnknown* const borrowed = properties().at(0).get();
  EXPECT_TRUE(ask<IDynamicProperty2>(*borrowed)) << "nobody holds a reference any more";
  EXPECT_GT(newer_.references, 0);
  guarded_.reset();
  EXPECT_EQ(0, newer_.references);
  EXPECT_EQ(0, scripted_.references);
}

TEST_F(GuardedSourceTest, AnExceptionOfTheSourceIsAResult) {
  scripted_.properties = [](VARIANT*) -> HRESULT { throw std::runtime_error("down"); };
  EXPECT_TRUE(properties().empty());
  EXPECT_EQ(E_UNEXPECTED, result_);
  scripted_.properties = [](VARIANT*) -> HRESULT { _com_raise_error(E_ACCESSDENIED); };
  EXPECT_TRUE(properties().empty());
  EXPECT_EQ(E_ACCESSDENIED, result_);
  scripted_.properties = [](VARIANT*) -> HRESULT { _com_raise_error(S_OK); };
  EXPECT_TRUE(properties().empty());
  EXPECT_EQ(E_UNEXPECTED, result_) << "no success";
  EXPECT_THAT(lines_, ElementsAre("plug-in bad.so: GetProperties threw: down"));
}

TEST_F(GuardedSourceTest, AReferenceThatThrowsWhenItIsGivenBackIsGivenBack) {
  offer({unknown(newer_)});
  const auto refuse = [] { throw std::runtime_error("not yet"); };
  newer_.released = refuse;
  scripted_.released = refuse;
  EXPECT_EQ(1U, properties().size());
  guarded_.reset();
  EXPECT_EQ(0, newer_.references);
  EXPECT_EQ(0, scripted_.references);
  EXPECT_THAT(lines_, ElementsAre("plug-in bad.so: Release threw: not yet"));
}

TEST_F(GuardedSourceTest, APropertyWhoseReferenceCannotBeAddedIsLeftOut) {
  VARIANT array{};
  ASSERT_EQ(S_OK, giveArray({unknown(newer_), unknown(older_)}, &array));
  scripted_.properties = [&](VARIANT* out) { return *out = array, S_OK; };
  newer_.added = [] { throw std::runtime_error("enough"); };
  EXPECT_EQ(1U, properties().size());
  EXPECT_THAT(lines_, ElementsAre("plug-in bad.so: AddRef threw"));
}

TEST_F(GuardedSourceTest, ASourceWhoseReferenceCannotBeAddedIsNotGuarded) {
  scripted_.added = [] { throw std::runtime_error("enough"); };
  EXPECT_FALSE(guard(&scripted_, reports_));
  EXPECT_THAT(lines_, ElementsAre("plug-in bad.so: AddRef threw: enough"));
}

TEST_F(GuardedSourceTest, AFailingSourceIsToldOnce) {
  scripted_.properties = [](VARIANT*) { return E_FAIL; };
  EXPECT_TRUE(properties().empty());
  EXPECT_TRUE(properties().empty());
  EXPECT_EQ(E_FAIL, result_);
  EXPECT_THAT(lines_, ElementsAre("plug-in bad.so: GetProperties failed: The operation failed."));
}

TEST_F(GuardedSourceTest, AnAnswerThatIsNotAnArrayOfObjectsHoldsNoProperties) {
  const com::Balance balance;
  scripted_.properties = [](VARIANT* out) { return *out = variants::ownedText(L"x"), S_OK; };
  EXPECT_TRUE(properties().empty());
  scripted_.properties = [](VARIANT* out) {
    out->vt = VT_ARRAY | VT_UNKNOWN;
    out->parray = SafeArrayCreateVector(VT_BSTR, 0, 2);
    return S_OK;
  };
  EXPECT_TRUE(properties().empty());
  scripted_.properties = [](VARIANT* out) {
    out->vt = VT_ARRAY | VT_UNKNOWN;
    out->parray = nullptr;
    return S_OK;
  };
  EXPECT_TRUE(properties().empty());
  scripted_.properties = [](VARIANT* out) {
    const SAFEARRAYBOUND bounds[] = {{1, 0}, {1, 0}};
    out->vt = VT_ARRAY | VT_UNKNOWN;
    out->parray = SafeArrayCreate(VT_UNKNOWN, 2, bounds);
    return S_OK;
  };
  EXPECT_TRUE(properties().empty());
  EXPECT_EQ(S_OK, result_);
  EXPECT_THAT(lines_, ElementsAre(HasSubstr("something other than a one-dimensional array of objects")));
  guarded_.reset();
}

TEST_F(GuardedSourceTest, NullElementsAndOtherObjectsAreLeftOut) {
  offer({nullptr, unknown(newer_), &scripted_, unknown(older_)});
  EXPECT_EQ(2U, properties().size());
  EXPECT_THAT(
      lines_,
      ElementsAre("plug-in bad.so: GetProperties handed out a null property",
                  "plug-in bad.so: GetProperties handed out an object that is not a dynamic property"));
}

TEST_F(GuardedSourceTest, AnArrayMayBeginAnywhere) {
  scripted_.properties = [this](VARIANT* out) {
    out->vt = VT_ARRAY | VT_UNKNOWN;
    out->parray = SafeArrayCreateVector(VT_UNKNOWN, 5, 1);
    const LONG index = 5;
    return SafeArrayPutElement(out->parray, &index, unknown(newer_));
  };
  EXPECT_EQ(1U, properties().size());
}

TEST_F(GuardedSourceTest, AValueOfAnotherTypeThanDeclaredIsRefused) {
  const com::Balance balance;
  offer({unknown(newer_)});
  newer_.declared = VT_I4;
  {
    const auto property = only<IDynamicProperty2>();
    VariantHolder value;
    EXPECT_EQ(DISP_E_TYPEMISMATCH, property->GetCurrentValueData(nullptr, value.put()));
    EXPECT_EQ(VT_EMPTY, value.get().vt);
    newer_.declared = VT_EMPTY;
    EXPECT_EQ(S_OK, property->GetCurrentValueData(nullptr, value.put())) << "none was declared";
  }
  EXPECT_THAT(lines_, ElementsAre(HasSubstr("answered a value of type 8, but the property has declared 3")));
  guarded_.reset();
}

TEST_F(GuardedSourceTest, ExceptionsAndFailuresOfPropertiesAreResults) {
  const com::Balance balance;
  offer({unknown(newer_)});
  {
    const auto property = only<IDynamicProperty2>();
    // A failing call hands nothing over: what it leaves stays the plug-in's.
    const StringHolder own(L"left behind");
    newer_.displayName = [&](BSTR* out) -> HRESULT {
      *out = own.get();
      return E_FAIL;
    };
    StringHolder name;
    EXPECT_EQ(E_FAIL, property->GetDisplayName(name.put()));
    EXPECT_FALSE(name);
    newer_.enabled = [](BOOL* out) -> HRESULT {
      *out = 1;
      throw 5;
    };
    BOOL enabled = 77;
    EXPECT_EQ(E_UNEXPECTED, property->IsPropertyEnabled(nullptr, &enabled));
    EXPECT_EQ(77, enabled);
    EXPECT_EQ(E_POINTER, property->GetDisplayName(nullptr));
    EXPECT_EQ(E_POINTER, property->GetCurrentValueData(nullptr, nullptr));
  }
  EXPECT_THAT(lines_,
              ElementsAre("plug-in bad.so: GetDisplayName failed: The operation failed.",
                          "plug-in bad.so: IsPropertyEnabled threw: an exception of an unknown type"));
  guarded_.reset();
}

TEST_F(GuardedSourceTest, EverNewPropertiesAreToldWhenThereAreMany) {
  std::vector<std::unique_ptr<NewerProperty>> made;
  scripted_.properties = [&](VARIANT* out) {
    made.push_back(std::make_unique<NewerProperty>(L"new"));
    return giveArray({unknown(*made.back())}, out);
  };
  for (std::size_t i = 0; i < manyProperties; ++i)
    static_cast<void>(properties());
  EXPECT_THAT(lines_, IsEmpty());
  static_cast<void>(properties());
  EXPECT_THAT(lines_, ElementsAre(HasSubstr("new property objects")));
  guarded_.reset();
}

TEST_F(GuardedSourceTest, APropertyHasNoMoreChoicesThanAnybodyCanChooseFrom) {
  offer({unknown(newer_)});
  {
    const auto choices = only<IDynamicEnumProperty>();
    LONG count = 0;
    newer_.choices = mostChoices;
    EXPECT_EQ(S_OK, choices->GetNumPropertyValues(&count));
    EXPECT_EQ(mostChoices, count);
    EXPECT_THAT(lines_, IsEmpty());
    newer_.choices = 2'000'000'000;
    EXPECT_EQ(S_OK, choices->GetNumPropertyValues(&count));
    EXPECT_EQ(mostChoices, count);
  }
  EXPECT_THAT(lines_,
              ElementsAre("plug-in bad.so: GetNumPropertyValues answered 2000000000 choices; only the "
                          "first 10000 are there"));
  guarded_.reset();
}

}  // namespace
}  // namespace velt::sources
