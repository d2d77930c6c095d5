// The run-time classes, and the protocol extensions that are registered on them.

#include <map>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include "host/database/VkRxObject.h"

namespace {

// The extensions of the whole process: plug-ins and the host register on the same classes. Any thread may use it.
class Extensions {
 public:
  static Extensions& ofProcess() {
    // Never destroyed: plug-ins may take their extensions out until the process ends.
    static Extensions& extensions = *new Extensions;
    return extensions;
  }

  VkRxObject* find(const VkRxClass* on, const VkRxClass* protocol) {
    const std::shared_lock lock(mutex_);
    const auto found = registered_.find({on, protocol});
    return found != registered_.end() ? found->second : nullptr;
  }

  VkRxObject* add(const VkRxClass* on, const VkRxClass* protocol, VkRxObject* extension) {
    const std::unique_lock lock(mutex_);
    return std::exchange(registered_[{on, protocol}], extension);
  }

  VkRxObject* remove(const VkRxClass* on, const VkRxClass* protocol) {
    const std::unique_lock lock(mutex_);
    const auto taken = registered_.extract({on, protocol});
    return taken.empty() ? nullptr : taken.mapped();
  }

 private:
  std::shared_mutex mutex_;
  std::map<std::pair<const VkRxClass*, const VkRxClass*>, VkRxObject*> registered_;
};

}  // namespace

VkRxClass* VkRxObject::desc() {
  static VkRxClass description(L"VkRxObject", nullptr);
  return &description;
}

VkRxClass* VkRxObject::isA() const {
  return desc();
}

bool VkRxObject::isKindOf(const VkRxClass* wanted) const {
  const VkRxClass* own = isA();
  return own != nullptr && own->isDerivedFrom(wanted);
}

VkRxClass* VkRxClass::desc() {
  static VkRxClass description(L"VkRxClass", VkRxObject::desc());
  return &description;
}

VkRxClass* VkRxClass::isA() const {
  return desc();
}

VkRxClass::VkRxClass(const wchar_t* name, VkRxClass* parent) : name_(name), parent_(parent) {}

const wchar_t* VkRxClass::name() const {
  return name_;
}

VkRxClass* VkRxClass::myParent() const {
  return parent_;
}

bool VkRxClass::isDerivedFrom(const VkRxClass* wanted) const {
  if (wanted == nullptr) return false;
  for (const VkRxClass* here = this; here != nullptr; here = here->parent_) {
    if (here == wanted) return true;
  }
  return false;
}

VkRxObject* VkRxClass::queryX(const VkRxClass* protocol) const {
  for (const VkRxClass* here = this; here != nullptr; here = here->parent_) {
    if (VkRxObject* found = Extensions::ofProcess().find(here, protocol)) return found;
  }
  return nullptr;
}

VkRxObject* VkRxClass::addX(VkRxClass* protocol, VkRxObject* extension) {
  return Extensions::ofProcess().add(this, protocol, extension);
}

VkRxObject* VkRxClass::delX(VkRxClass* protocol) {
  return Extensions::ofProcess().remove(this, protocol);
}
