#include "embedded/automation/model/ClassRegistry.h"

#include <new>
#include <utility>

namespace velt::automation {

ClassRegistry::ClassRegistry(const wchar_t* libraryName, std::span<const AutomationClass* const> classes,
                             std::vector<DispatchType> further) {
  std::vector<DispatchType> types;
  for (const AutomationClass* kind : classes) {
    classes_.emplace_back(*kind);
    types.push_back(dispatchTypeOf(classes_.back().index));
  }
  for (DispatchType& type : further)
    types.push_back(std::move(type));
  library_ = com::makeObject<TypeLibrary>(libraryName, L"Automation classes of the embedded host.",
                                          std::move(types));
  if (library_ == nullptr) throw std::bad_alloc();
  // The registry's own reference was never handed out to anybody.
  platform::Ledger::account("type library").giveBack();
  for (std::size_t i = 0; i < classes_.size(); ++i)
    classes_[i].typeInfo = library_->at(static_cast<UINT>(i));
}

ClassRegistry::~ClassRegistry() {
  platform::Ledger::account("type library").handOut();
  library_->Release();
}

const RegisteredClass* ClassRegistry::find(REFCLSID clsid) const noexcept {
  for (const RegisteredClass& registered : classes_) {
    if (registered.index.kind().clsid == clsid) return &registered;
  }
  return nullptr;
}

}  // namespace velt::automation
