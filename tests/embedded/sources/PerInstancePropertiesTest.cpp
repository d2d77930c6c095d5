#include "host/palette/PerInstanceProperties.h"

#include <gtest/gtest.h>

#include "host/database/VkDbObject.h"

namespace {

struct Factory final : OPMPerInstancePropertyExtensionFactory {
  OPMPerInstancePropertyExtension* CreateOPMInstancePropertyExtension(VkRxClass*) override { return nullptr; }
};

struct Sources final : OPMPerInstancePropertySources {
  BOOL GetPropertySourceAt(BSTR, IPropertySource**) override { return 0; }
};

struct Names final : OPMPerInstancePropertyExtension {
  BOOL GetObjectPropertySourceNames(VkDbObjectId, VARIANT*) override { return 0; }
};

TEST(PerInstanceProperties, EachObjectIsOfItsOwnClass) {
  Factory factory;
  Sources sources;
  Names names;
  EXPECT_EQ(OPMPerInstancePropertyExtensionFactory::desc(), factory.isA());
  EXPECT_EQ(OPMPerInstancePropertySources::desc(), sources.isA());
  EXPECT_EQ(OPMPerInstancePropertyExtension::desc(), names.isA());
}

TEST(PerInstanceProperties, TheThreeClassesAreDistinctAndDeriveFromTheRoot) {
  VkRxClass* const classes[] = {OPMPerInstancePropertyExtensionFactory::desc(),
                                OPMPerInstancePropertySources::desc(),
                                OPMPerInstancePropertyExtension::desc()};
  for (VkRxClass* one : classes) {
    EXPECT_EQ(VkRxObject::desc(), one->myParent());
    for (VkRxClass* other : classes)
      EXPECT_EQ(one == other, one->isDerivedFrom(other));
  }
}

TEST(PerInstanceProperties, ACastGivesTheObjectOrNull) {
  Factory factory;
  Sources sources;
  EXPECT_EQ(&factory, OPMPerInstancePropertyExtensionFactory::cast(&factory));
  EXPECT_EQ(&sources, OPMPerInstancePropertySources::cast(&sources));
  EXPECT_EQ(nullptr, OPMPerInstancePropertyExtensionFactory::cast(&sources));
  EXPECT_EQ(nullptr, OPMPerInstancePropertySources::cast(&factory));
  EXPECT_EQ(nullptr, OPMPerInstancePropertyExtensionFactory::cast(nullptr));
  EXPECT_EQ(nullptr, OPMPerInstancePropertySources::cast(nullptr));
}

TEST(PerInstanceProperties, AFactoryRegisteredOnTheDatabaseTakesThePlaceOfTheHosts) {
  Factory factory;
  VkRxClass* const protocol = OPMPerInstancePropertyExtensionFactory::desc();
  const auto registered = [&] {
    return OPMPerInstancePropertyExtensionFactory::cast(VkDbDatabase::desc()->queryX(protocol));
  };
  VkRxObject* const ofHost = VkDbDatabase::desc()->addX(protocol, &factory);
  EXPECT_NE(nullptr, ofHost);
  EXPECT_EQ(&factory, registered());
  EXPECT_EQ(&factory, VkDbDatabase::desc()->delX(protocol));
  EXPECT_EQ(nullptr, registered());
  VkDbDatabase::desc()->addX(protocol, ofHost);
  EXPECT_EQ(ofHost, registered());
}

}  // namespace
