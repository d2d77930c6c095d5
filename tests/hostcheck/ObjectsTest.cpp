#include "host/automation/IdValues.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "tests/hostcheck/Fakes.h"
#include "tests/hostcheck/Stage.h"

namespace velt::hostcheck {
namespace {

using namespace velt::tests;
using namespace velt::toys;

using Objects = Stage;

TEST_F(Objects, AreFoundWhenTheyAreNotMade) {
  host.createInstance = [](REFCLSID) -> ToyObject* { return nullptr; };
  EXPECT_EQ(found(), Names{"object-made"});
}

TEST_F(Objects, AreFoundWhenTheyAreMadeOfAClassThatNobodyKnows) {
  host.createInstance = [this](REFCLSID) { return &part; };
  EXPECT_EQ(found(), Names{"object-unknown-class"});
}

TEST_F(Objects, AreFoundWhenTheyLackAnInterface) {
  for (const IID& iid : {IID_IOPMPropertyExtension, IID_ICategorizeProperties}) {
    ToyObject other(host, "other");
    furnish(other);
    other.withhold(iid);
    host.createInstance = [&](REFCLSID clsid) { return clsid == toyClass(1) ? &other : nullptr; };
    EXPECT_EQ(found(), Names{"object-interfaces"});
  }
}

TEST_F(Objects, AreFoundWhenAnInterfaceLeadsToAnotherObject) {
  ToyObject other(host, "other");
  furnish(other);
  part.handOut(IID_ICategorizeProperties, other);
  EXPECT_EQ(found(), Names{"object-identity"});
}

TEST_F(Objects, AreFoundWhenTheyAnswerAnInterfaceThatTheyDoNotHave) {
  host.on("QueryInterface(GUID 0x7E57C4EC").answerNothing();
  EXPECT_EQ(found(), Names{"object-refuses"});
}

TEST_F(Objects, AreFoundWhenTheyRefuseTheEntityOfTheirClassAndAreAskedNothingMore) {
  host.on("SetObjectId").fail(E_INVALIDARG);
  host.mark();
  EXPECT_EQ(found(), Names{"object-binds"});
  EXPECT_EQ(host.log.count("GetTypeInfo("), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(Objects, AreFoundWhenTheyForgetTheirEntity) {
  host.on("SetObjectId").answerNothing();
  EXPECT_EQ(found(), Names{"object-id"});
}

TEST_F(Objects, AreFoundWhenAQueryAddsNoReference) {
  Dispatch object;
  const auto check = [&](auto& findings) { velt::hostcheck::checkCounting(findings, object); };
  EXPECT_EQ(foundBy(check), Names{});
  EXPECT_EQ(object.references, 1);
  object.addsReferences = false;
  object.references = 5;
  EXPECT_EQ(foundBy(check), Names{"object-counting"});
}

TEST_F(Objects, AreGivenBack) {
  host.mark();
  found();
  EXPECT_EQ(host.balance(), "balanced");
}

}  // namespace
}  // namespace velt::hostcheck
