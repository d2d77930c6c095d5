#pragma once

// The protocol extensions through which property sources are found, registered on the database class in
// place of whatever is there, for the life of the registry.

#include <map>
#include <vector>

#include "host/com/SafeArray.h"
#include "host/database/VkDbObject.h"
#include "host/palette/IPropertySource.h"
#include "host/palette/PerInstanceProperties.h"
#include "tests/support/ToyDynamicProperty.h"

namespace velt::toys {

class ToySourceRegistry {
 public:
  explicit ToySourceRegistry(ToyHost& host)
      : host_(host),
        factoryBefore_(VkDbDatabase::desc()->addX(OPMPerInstancePropertyExtensionFactory::desc(), &factory_)),
        sourcesBefore_(VkDbDatabase::desc()->addX(OPMPerInstancePropertySources::desc(), &sources_)) {}
  ~ToySourceRegistry() {
    restore(OPMPerInstancePropertyExtensionFactory::desc(), factoryBefore_);
    restore(OPMPerInstancePropertySources::desc(), sourcesBefore_);
  }
  ToySourceRegistry(const ToySourceRegistry&) = delete;
  ToySourceRegistry& operator=(const ToySourceRegistry&) = delete;

  // A name without a source is told too, and GetPropertySourceAt then answers false.
  void add(std::wstring name, ToyPropertySource* source) { named_.push_back({std::move(name), source}); }
  void withoutFactory() { VkDbDatabase::desc()->delX(OPMPerInstancePropertyExtensionFactory::desc()); }
  void withoutSources() { VkDbDatabase::desc()->delX(OPMPerInstancePropertySources::desc()); }

  LONG lowerBound = 0;               // of the array of names
  VARTYPE tag = VT_ARRAY | VT_BSTR;  // of the names, which are strings in any case
  bool answersFalse = false;         // GetObjectPropertySourceNames: false, and the names all the same
  bool answersEmpty = false;         // true, and VT_EMPTY
  int removesItselfAfter = 0;        // so many calls of GetPropertySourceAt take the sources away
  bool noExtension = false;          // CreateOPMInstancePropertyExtension: null
  VkRxClass* asked = nullptr;        // the class for which an extension was made last

 private:
  struct Named {
    std::wstring name;
    ToyPropertySource* source;
  };

  struct Extension final : OPMPerInstancePropertyExtension {
    explicit Extension(ToySourceRegistry& owner) : registry(owner) {}
    BOOL GetObjectPropertySourceNames(VkDbObjectId object, VARIANT* names) override {
      const tests::AllocationPause pause;
      registry.host_.log.add(say("GetObjectPropertySourceNames(", object.asOldId(), ")"));
      if (!registry.answersEmpty) {
        names->vt = registry.tag;
        names->parray =
            SafeArrayCreateVector(VT_BSTR, registry.lowerBound, static_cast<ULONG>(registry.named_.size()));
        LONG index = registry.lowerBound;
        for (const Named& named : registry.named_) {
          const BSTR text = SysAllocString(named.name.c_str());
          SafeArrayPutElement(names->parray, &index, text);
          SysFreeString(text);
          ++index;
        }
      }
      return registry.answersFalse ? BOOL{0} : BOOL{1};
    }
    ToySourceRegistry& registry;
  };

  struct Factory final : OPMPerInstancePropertyExtensionFactory {
    explicit Factory(ToySourceRegistry& owner) : registry(owner) {}
    OPMPerInstancePropertyExtension* CreateOPMInstancePropertyExtension(VkRxClass* entityClass) override {
      const tests::AllocationPause pause;
      registry.host_.log.add("CreateOPMInstancePropertyExtension(" + narrow(entityClass->name()) + ")");
      registry.asked = entityClass;
      return registry.noExtension ? nullptr : &registry.extension_;
    }
    ToySourceRegistry& registry;
  };

  struct Sources final : OPMPerInstancePropertySources {
    explicit Sources(ToySourceRegistry& owner) : registry(owner) {}
    BOOL GetPropertySourceAt(BSTR name, IPropertySource** source) override {
      const tests::AllocationPause pause;
      registry.host_.log.add("GetPropertySourceAt(" + narrow(name) + ")");
      if (--registry.removesItselfAfter == 0) registry.withoutSources();
      const std::wstring_view wanted = name != nullptr ? name : L"";  // the two are one text
      for (const Named& named : registry.named_) {
        if (named.name != wanted || named.source == nullptr) continue;
        named.source->referenced(IID_IPropertySource);
        *source = named.source->as<IPropertySource>(IID_IPropertySource);
        return 1;
      }
      return 0;
    }
    ToySourceRegistry& registry;
  };

  static void restore(VkRxClass* protocol, VkRxObject* before) {
    VkDbDatabase::desc()->delX(protocol);
    if (before != nullptr) VkDbDatabase::desc()->addX(protocol, before);
  }

  ToyHost& host_;
  std::vector<Named> named_;
  Extension extension_{*this};
  Factory factory_{*this};
  Sources sources_{*this};
  VkRxObject* factoryBefore_;
  VkRxObject* sourcesBefore_;
};

}  // namespace velt::toys
