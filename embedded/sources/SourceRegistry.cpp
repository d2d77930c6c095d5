#include "embedded/sources/SourceRegistry.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <shared_mutex>

#include "embedded/database/Drawing.h"
#include "embedded/sources/HostSources.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/com/SafeArray.h"
#include "host/database/VkDbEntity.h"
#include "host/palette/PerInstanceProperties.h"

namespace velt::sources {
namespace {

struct Attachment {
  std::wstring name;
  VkRxClass* entityClass;
  holders::InterfaceHolder<IPropertySource> source;
};

// An array of strings; VT_EMPTY when memory is exhausted.
holders::VariantHolder arrayOf(const std::vector<std::wstring>& names) {
  holders::VariantHolder array;
  SAFEARRAY* const made = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(names.size()));
  if (made == nullptr) return array;
  array.put()->vt = VT_ARRAY | VT_BSTR;
  array.get().parray = made;
  LONG index = 0;
  for (const std::wstring& name : names) {
    const holders::StringHolder text(name);
    if (!text || FAILED(SafeArrayPutElement(made, &index, text.get()))) return {};
    ++index;
  }
  return array;
}

}  // namespace

class SourceRegistry::Contents {
 public:
  mutable std::shared_mutex mutex;
  std::vector<Attachment> attached;
};

SourceRegistry::SourceRegistry() : contents_(new Contents) {}

SourceRegistry::~SourceRegistry() {
  delete contents_;
}

SourceRegistry& SourceRegistry::ofProcess() {
  // Never destroyed: rows keep pointers to what sources handed out, and plug-ins may call it until the process ends.
  static SourceRegistry& registry = *[] {
    auto* const made = new SourceRegistry;
    attachHostSources(*made);
    return made;
  }();
  return registry;
}

HRESULT SourceRegistry::attach(std::wstring_view name, VkRxClass* entityClass, IPropertySource* source) {
  if (source == nullptr) return E_POINTER;
  if (name.empty() || entityClass == nullptr || !entityClass->isDerivedFrom(VkDbEntity::desc()))
    return E_INVALIDARG;
  const std::unique_lock lock(contents_->mutex);
  std::vector<Attachment>& attached = contents_->attached;
  for (const Attachment& known : attached) {
    if (known.name != name) continue;
    if (known.source.get() != source) return E_ACCESSDENIED;
    if (known.entityClass == entityClass) return S_FALSE;
  }
  attached.push_back(
      {std::wstring(name), entityClass, holders::InterfaceHolder<IPropertySource>::sharing(source)});
  return S_OK;
}

bool SourceRegistry::remove(std::wstring_view name) {
  // Declared before the lock, so released after it: a source that ends may call the registry.
  std::vector<Attachment> taken;
  const std::unique_lock lock(contents_->mutex);
  std::vector<Attachment>& attached = contents_->attached;
  const auto first = std::stable_partition(attached.begin(), attached.end(),
                                           [&](const Attachment& known) { return known.name != name; });
  std::move(first, attached.end(), std::back_inserter(taken));
  attached.erase(first, attached.end());
  return !taken.empty();
}

std::vector<std::wstring> SourceRegistry::namesFor(const VkRxClass* entityClass) const {
  std::vector<std::wstring> names;
  const std::shared_lock lock(contents_->mutex);
  for (const VkRxClass* here = entityClass; here != nullptr; here = here->myParent()) {
    for (const Attachment& known : contents_->attached) {
      if (known.entityClass != here || std::find(names.begin(), names.end(), known.name) != names.end())
        continue;
      names.push_back(known.name);
    }
  }
  return names;
}

holders::InterfaceHolder<IPropertySource> SourceRegistry::find(std::wstring_view name) const {
  const std::shared_lock lock(contents_->mutex);
  for (const Attachment& known : contents_->attached) {
    if (known.name == name) return holders::InterfaceHolder<IPropertySource>::sharing(known.source.get());
  }
  return {};
}

// --- what is published on the class of the database
// -------------------------------------------------------------------

namespace {

class NamesOfClass final : public OPMPerInstancePropertyExtension {
 public:
  explicit NamesOfClass(const VkRxClass* entityClass) : entityClass_(entityClass) {}

  BOOL GetObjectPropertySourceNames(VkDbObjectId object, VARIANT* names) override {
    if (names == nullptr || !database::resolve(object)) return 0;
    try {
      const std::vector<std::wstring> offered = SourceRegistry::ofProcess().namesFor(entityClass_);
      if (offered.empty()) return 0;
      holders::VariantHolder array = arrayOf(offered);
      if (array.get().vt == VT_EMPTY) return 0;
      *names = array.detach();
      return 1;
    } catch (const std::bad_alloc&) {
      return 0;
    }
  }

 private:
  const VkRxClass* entityClass_;
};

// Makes the extension of a class when it is first asked for. Extensions live as long as the process.
class Factory final : public OPMPerInstancePropertyExtensionFactory {
 public:
  OPMPerInstancePropertyExtension* CreateOPMInstancePropertyExtension(VkRxClass* entityClass) override {
    if (entityClass == nullptr) return nullptr;
    try {
      const std::lock_guard lock(mutex_);
      return &made_.try_emplace(entityClass, entityClass).first->second;
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
  }

 private:
  std::mutex mutex_;
  std::map<const VkRxClass*, NamesOfClass> made_;
};

class Sources final : public OPMPerInstancePropertySources {
 public:
  BOOL GetPropertySourceAt(BSTR name, IPropertySource** source) override {
    if (source == nullptr) return 0;
    *source = nullptr;
    if (name == nullptr) return 0;
    try {
      *source = SourceRegistry::ofProcess().find({name, SysStringLen(name)}).detach();
    } catch (const std::bad_alloc&) {
      return 0;
    }
    return *source != nullptr ? 1 : 0;
  }
};

// Never destroyed: the classes on which they are registered are not destroyed either.
[[maybe_unused]] const bool published = [] {
  VkDbDatabase::desc()->addX(OPMPerInstancePropertyExtensionFactory::desc(), new Factory);
  VkDbDatabase::desc()->addX(OPMPerInstancePropertySources::desc(), new Sources);
  return true;
}();

}  // namespace

}  // namespace velt::sources
