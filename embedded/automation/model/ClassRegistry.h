#pragma once

// The automation classes of a host, ready for objects, by class id. Which classes there are says their directory.
//
// Ownership: a registry owns the library of its classes' types and the prepared tables; objects and type informations
// that it gave out keep the library, and must not outlive the registry otherwise.
// Threads: never changes once it is made.

#include <deque>
#include <span>
#include <string_view>
#include <vector>

#include "embedded/automation/model/ClassIndex.h"
#include "embedded/automation/model/TypeLibrary.h"

namespace velt::automation {

// A class that is ready for objects.
struct RegisteredClass {
  explicit RegisteredClass(const AutomationClass& kind) : index(kind) {}

  ClassIndex index;
  // Without a reference; lives as long as the registry.
  ITypeInfo* typeInfo = nullptr;
};

class ClassRegistry {
 public:
  // The classes of the host, one for each class id. Lives as long as the process.
  [[nodiscard]] static const ClassRegistry& ofHost();

  // `further` are types of objects that are not entities, such as colors; in the library they come after the classes.
  ClassRegistry(const wchar_t* libraryName, std::span<const AutomationClass* const> classes,
                std::vector<DispatchType> further = {});
  ~ClassRegistry();
  ClassRegistry(const ClassRegistry&) = delete;
  ClassRegistry& operator=(const ClassRegistry&) = delete;

  [[nodiscard]] const std::deque<RegisteredClass>& classes() const noexcept { return classes_; }
  // Null for an id that none of the classes has.
  [[nodiscard]] const RegisteredClass* find(REFCLSID clsid) const noexcept;
  [[nodiscard]] TypeLibrary& library() const noexcept { return *library_; }

 private:
  std::deque<RegisteredClass> classes_;
  TypeLibrary* library_;
};

}  // namespace velt::automation
