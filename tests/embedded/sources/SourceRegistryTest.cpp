#include "embedded/sources/SourceRegistry.h"

#include <gtest/gtest.h>

#include "embedded/com/ComObject.h"
#include "embedded/database/ObjectClass.h"
#include "embedded/sources/HostSources.h"
#include "host/database/VkDbEntity.h"
#include "host/palette/PerInstanceProperties.h"
#include "tests/embedded/sources/Properties.h"

namespace velt::sources {
namespace {

using namespace test;
using Names = std::vector<std::wstring>;

class EmptySource final : public com::ComObject<IPropertySource> {
 public:
  EmptySource() : ComObject(platform::Ledger::account("EmptySource")) {}
  HRESULT GetProperties(IDispatch*, VARIANT*) override { return S_OK; }
};

InterfaceHolder<IPropertySource> source() {
  return InterfaceHolder<IPropertySource>::owning(com::makeObject<EmptySource>());
}

VkRxClass* lines() {
  return database::runtimeClassNamed(L"VkDbLine");
}

TEST(SourceRegistry, OffersASourceForItsClassAndThoseDerivedFromIt) {
  SourceRegistry registry;
  const auto one = source();
  EXPECT_EQ(S_OK, registry.attach(L"references", VkDbBlockReference::desc(), one.get()));
  const auto other = source();
  EXPECT_EQ(S_OK, registry.attach(L"all", VkDbEntity::desc(), other.get()));
  EXPECT_EQ((Names{L"references", L"all"}), registry.namesFor(VkDbBlockReference::desc()));
  EXPECT_EQ((Names{L"all"}), registry.namesFor(lines()));
  EXPECT_EQ((Names{L"all"}), registry.namesFor(VkDbEntity::desc()));
  EXPECT_EQ(Names{}, registry.namesFor(VkDbLayerTableRecord::desc()));
  EXPECT_EQ(Names{}, registry.namesFor(nullptr));
}

TEST(SourceRegistry, NamesTheSourcesOfAClassBeforeThoseOfItsParentsAndElseInOrder) {
  SourceRegistry registry;
  const auto one = source();
  registry.attach(L"b", VkDbEntity::desc(), one.get());
  const auto two = source();
  registry.attach(L"a", VkDbEntity::desc(), two.get());
  const auto three = source();
  registry.attach(L"c", lines(), three.get());
  EXPECT_EQ((Names{L"c", L"b", L"a"}), registry.namesFor(lines()));
}

TEST(SourceRegistry, ASourceOfSeveralClassesIsNamedOnce) {
  SourceRegistry registry;
  const auto one = source();
  EXPECT_EQ(S_OK, registry.attach(L"x", VkDbEntity::desc(), one.get()));
  EXPECT_EQ(S_OK, registry.attach(L"x", lines(), one.get()));
  EXPECT_EQ(S_FALSE, registry.attach(L"x", lines(), one.get())) << "it was there already";
  EXPECT_EQ((Names{L"x"}), registry.namesFor(lines()));
}

TEST(SourceRegistry, RefusesWhatCannotBeOffered) {
  SourceRegistry registry;
  const auto one = source();
  const auto other = source();
  EXPECT_EQ(E_POINTER, registry.attach(L"x", VkDbEntity::desc(), nullptr));
  EXPECT_EQ(E_INVALIDARG, registry.attach(L"", VkDbEntity::desc(), one.get()));
  EXPECT_EQ(E_INVALIDARG, registry.attach(L"x", nullptr, one.get()));
  EXPECT_EQ(E_INVALIDARG, registry.attach(L"x", VkDbLayerTableRecord::desc(), one.get()));
  EXPECT_EQ(S_OK, registry.attach(L"x", VkDbEntity::desc(), one.get()));
  EXPECT_EQ(E_ACCESSDENIED, registry.attach(L"x", lines(), other.get())) << "the name is taken";
  EXPECT_EQ(one.get(), registry.find(L"x").get());
}

TEST(SourceRegistry, KeepsASourceUntilItIsTakenOut) {
  const com::Balance balance;
  SourceRegistry registry;
  {
    const auto one = source();
    registry.attach(L"x", VkDbEntity::desc(), one.get());
    registry.attach(L"x", lines(), one.get());
  }
  EXPECT_NE(nullptr, registry.find(L"x").get());
  EXPECT_FALSE(registry.remove(L"y"));
  EXPECT_TRUE(registry.remove(L"x"));
  EXPECT_EQ(nullptr, registry.find(L"x").get());
  EXPECT_EQ(Names{}, registry.namesFor(lines()));
}

// --- what is published --------------------------------------------------------------------------------------------------

OPMPerInstancePropertyExtensionFactory* factory() {
  return OPMPerInstancePropertyExtensionFactory::cast(
      VkDbDatabase::desc()->queryX(OPMPerInstancePropertyExtensionFactory::desc()));
}

OPMPerInstancePropertySources* sources() {
  return OPMPerInstancePropertySources::cast(
      VkDbDatabase::desc()->queryX(OPMPerInstancePropertySources::desc()));
}

Names namesFor(VkDbObjectId id, VkRxClass* entityClass) {
  VariantHolder names;
  if (factory()
          ->CreateOPMInstancePropertyExtension(entityClass)
          ->GetObjectPropertySourceNames(id, names.put())
      == 0) {
    EXPECT_EQ(VT_EMPTY, names.get().vt);
    return {};
  }
  EXPECT_EQ(VT_ARRAY | VT_BSTR, names.get().vt);
  LONG lower = 77;
  LONG upper = -1;
  SafeArrayGetLBound(names.get().parray, 1, &lower);
  SafeArrayGetUBound(names.get().parray, 1, &upper);
  EXPECT_EQ(0, lower);
  Names found;
  for (LONG index = lower; index <= upper; ++index) {
    StringHolder name;
    SafeArrayGetElement(names.get().parray, &index, name.put());
    found.emplace_back(name.view());
  }
  return found;
}

TEST(PublishedRegistry, StandsOnTheClassOfTheDatabase) {
  EXPECT_NE(nullptr, factory());
  EXPECT_NE(nullptr, sources());
  EXPECT_EQ(nullptr, factory()->CreateOPMInstancePropertyExtension(nullptr));
  EXPECT_EQ(factory()->CreateOPMInstancePropertyExtension(lines()),
            factory()->CreateOPMInstancePropertyExtension(lines()))
      << "one extension per class";
}

TEST(PublishedRegistry, TellsTheNamesForAnEntityInAnArrayFromZero) {
  const auto drawing = Sample().entity("LINE").entity("INSERT").open();
  EXPECT_EQ((Names{extendedDataSource}), namesFor(drawing->entities()[0], lines()));
  EXPECT_EQ((Names{blockAttributesSource, extendedDataSource}),
            namesFor(drawing->entities()[1], VkDbBlockReference::desc()));
}

TEST(PublishedRegistry, OffersNothingForWhatIsNotAnEntityOrNotThere) {
  VkDbObjectId gone;
  {
    const auto drawing = Sample().layer("Walls").entity("LINE").open();
    gone = drawing->entities()[0];
    const VkDbObjectId layer = drawing->layers().find(L"Walls")->id;
    EXPECT_EQ(Names{}, namesFor(layer, VkDbLayerTableRecord::desc()));
  }
  EXPECT_EQ(Names{}, namesFor(gone, lines()));
  EXPECT_EQ(Names{}, namesFor(VkDbObjectId::kNull, lines()));
  EXPECT_EQ(
      0, factory()->CreateOPMInstancePropertyExtension(lines())->GetObjectPropertySourceNames(gone, nullptr));
}

TEST(PublishedRegistry, GivesASourceByItsNameWithAReference) {
  static_cast<void>(SourceRegistry::ofProcess());  // makes the host's own sources, which stay
  const com::Balance balance;
  const StringHolder known(extendedDataSource);
  const StringHolder unknown(L"nobody's");
  IPropertySource* found = nullptr;
  EXPECT_EQ(1, sources()->GetPropertySourceAt(known.get(), &found));
  ASSERT_NE(nullptr, found);
  found->Release();
  EXPECT_EQ(0, sources()->GetPropertySourceAt(unknown.get(), &found));
  EXPECT_EQ(nullptr, found);
  EXPECT_EQ(0, sources()->GetPropertySourceAt(nullptr, &found));
  EXPECT_EQ(0, sources()->GetPropertySourceAt(known.get(), nullptr));
}

}  // namespace
}  // namespace velt::sources
