#pragma once

// Which property sources the host has, and for which entities it offers them.
//
// A source has a name and is attached to one or more entity classes. It is offered for the entities of such a class and
// of the classes derived from it: a source of VkDbEntity for everything, one of VkDbBlockReference for references only.
// For one entity the sources of its own class come first, then those of the parent classes, each in the order in which
// they were attached.
//
// The layer finds the registry through two protocol extensions that are registered on the class of the database when
// this library is loaded (see host/palette/PerInstanceProperties.h). Objects that are in no open drawing have no
// sources.
//
// Ownership: the registry holds one reference to each source, until the source is taken out.
// Threads: every function may be called on every thread; the sources themselves are called on the
// palette's.

#include <string>
#include <string_view>
#include <vector>

#include "holders/InterfaceHolder.h"
#include "host/database/VkRxObject.h"
#include "host/palette/IPropertySource.h"

namespace velt::sources {

class SourceRegistry {
 public:
  // It holds the sources of the host itself from the start: attributes of block references, then extended data of all
  // entities.
  [[nodiscard]] static SourceRegistry& ofProcess();

  SourceRegistry();
  ~SourceRegistry();
  SourceRegistry(const SourceRegistry&) = delete;
  SourceRegistry& operator=(const SourceRegistry&) = delete;

  // Attaches a source to a class. The same source may be attached to further classes under the same name.
  // S_FALSE when it is attached to the class already, E_POINTER for a null source, E_INVALIDARG for an empty name or a
  // class that is not one of entities, E_ACCESSDENIED for a name that another source has.
  HRESULT attach(std::wstring_view name, VkRxClass* entityClass, IPropertySource* source);

  // Takes a source out, from all its classes. False for an unknown name.
  bool remove(std::wstring_view name);

  // The names of the sources for entities of this class, those of its parent classes included.
  [[nodiscard]] std::vector<std::wstring> namesFor(const VkRxClass* entityClass) const;

  // The source of that name; an empty holder for an unknown one.
  [[nodiscard]] holders::InterfaceHolder<IPropertySource> find(std::wstring_view name) const;

 private:
  class Contents;
  Contents* contents_;
};

}  // namespace velt::sources
