#include "tests/hostcheck/Fakes.h"
#include "tests/hostcheck/Stage.h"

namespace velt::hostcheck {
namespace {

using namespace velt::tests;
using namespace velt::toys;

using TypeInformation = Stage;

TEST_F(TypeInformation, IsFoundWhenThereIsNone) {
  host.on("GetTypeInfo(").answerNull();
  EXPECT_EQ(found(), Names{"type-information"});
}

TEST_F(TypeInformation, IsFoundWhenItsAttributesCannotBeRead) {
  host.on("GetTypeAttr(").fail();
  EXPECT_EQ(found(), Names{"type-information"});
}

TEST_F(TypeInformation, IsFoundWhenItHasNoFunctionsOfItsOwn) {
  part.type.functionCount = 7;
  EXPECT_EQ(found(), Names{"type-information"});
}

TEST_F(TypeInformation, IsFoundWhenAPropertyStandsAmongTheBaseMethods) {
  Baseless type;
  Dispatch object(&type);
  EXPECT_EQ(foundBy([&](auto& findings) { velt::hostcheck::checkTypeInformation(findings, object); }),
            Names{"base-methods"});
  EXPECT_EQ(type.references, 1);
}

TEST_F(TypeInformation, IsFoundWhenAFunctionIsNotDescribed) {
  host.on("GetFuncDesc(8").fail();
  EXPECT_EQ(found(), Names{"function-described"});
}

TEST_F(TypeInformation, IsFoundWhenAFunctionHasNoName) {
  host.on("GetDocumentation(").nth(1).fail();
  EXPECT_EQ(found(), Names{"function-described"});
}

TEST_F(TypeInformation, IsFoundWhenANameDoesNotResolve) {
  part.method(9, L"Explode");
  part.dispIds.erase(L"Explode");
  EXPECT_EQ(found(), Names{"name-resolves"});
}

TEST_F(TypeInformation, IsFoundWhenAnyNameResolves) {
  host.on("GetIDsOfNames(NobodysName").answerNothing();
  EXPECT_EQ(found(), Names{"name-unknown"});
}

TEST_F(TypeInformation, IsFoundWhenAUserDefinedTypeHasANameThatNobodyKnows) {
  const auto type = ToyTypeInfo::named(host, L"velt_distance", TKIND_ALIAS);
  part[length].returns(*type);
  EXPECT_EQ(found(), Names{"type-name"});
}

TEST_F(TypeInformation, IsFoundWhenAUserDefinedTypeCannotBeHad) {
  const auto type = ToyTypeInfo::named(host, L"VELT_DISTANCE", TKIND_ALIAS);
  part[length].returns(*type);
  for (const char* call : {"GetRefTypeInfo(", "GetContainingTypeLib(", "GetDocumentation(3"}) {
    host.on(call).fail();
    EXPECT_EQ(found(), Names{"type-name"}) << call;
    host.on(call);
  }
}

TEST_F(TypeInformation, MayHaveUserDefinedTypesOfKnownNamesAndEnumerationsOfAny) {
  const auto distance = ToyTypeInfo::named(host, L"VELT_DISTANCE", TKIND_ALIAS);
  const auto kinds = ToyTypeInfo::named(host, L"KindsOfPipes", TKIND_ENUM);
  kinds->member(L"plain", i4(0));
  part[length].returns(*distance);
  part[material].returns(*kinds);
  host.mark();
  EXPECT_EQ(found(), Names{});
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(TypeInformation, IsFoundWhenAPropertyHasTheIdOfPlugIns) {
  part.readOnly(-23, L"Odd").returns(VT_R8).holds(r8(1)).inCategory(3, L"Geometry").shown(1);
  EXPECT_EQ(found(), Names{"property-id"});
}

TEST_F(TypeInformation, IsFoundWhenTwoEntitiesOfOneClassHaveDifferentProperties) {
  ToyObject other(host, "other");
  furnish(other);
  other.readOnly(9, L"Area").returns(VT_R8).holds(r8(1)).inCategory(3, L"Geometry").shown(1);
  ToyEntity second(host, "second", 78);
  second.classId = toyClass(1);
  second.layer = layer.objectId();
  int made = 0;
  host.createInstance = [&](REFCLSID clsid) -> ToyObject* {
    return clsid == toyClass(1) ? (++made == 1 ? &part : &other) : nullptr;
  };
  EXPECT_EQ(found({id, 78}), Names{"class-shares-list"});
}

}  // namespace
}  // namespace velt::hostcheck
