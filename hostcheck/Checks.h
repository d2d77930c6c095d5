#pragma once

// The groups of checks. Each takes what it looks at, and leaves what it finds.

#include <set>
#include <span>
#include <string>
#include <vector>

#include "host/com/IDispatch.h"
#include "hostcheck/Findings.h"
#include "hostcheck/HostFunctions.h"

namespace velt::hostcheck {

// Strings, values, arrays, heap, messages, COM.
void checkFunctions(Findings& findings, const HostFunctions& host);

// What the database says of one entity.
struct EntityClass {
  long oldId;
  CLSID clsid = GUID_NULL;
  bool hasLayer = false;
};

// Ids that name nothing.
void checkMadeUpIds(Findings& findings, std::span<const long> oldIds);
// False when there is nothing to go on with.
bool checkEntity(Findings& findings, EntityClass& entity);
// All entities together. One of them may be on a layer that does not exist, as drawings have it; if all are, the host has
// no layers.
void checkLayers(Findings& findings, std::span<const EntityClass> entities);
void checkClassIds(Findings& findings, std::span<const EntityClass> entities);

// The automation object of one entity, with one reference for the caller; null when it cannot be had, or speaks for
// somebody else.
IUnknown* checkObject(Findings& findings, const EntityClass& entity);
void checkCounting(Findings& findings, IUnknown& object);
void checkUnknownClass(Findings& findings);

// One property, as the type information tells of it.
struct Property {
  std::wstring name;
  DISPID dispId;
  VARTYPE type;
  bool isWritable;

  friend bool operator==(const Property&, const Property&) = default;
};

// The visible properties of an object, in the order of its type information.
std::vector<Property> checkTypeInformation(Findings& findings, IDispatch& object);
// Labels, flags, categories and values; choices and elements. `subject` is the entity.
void checkProperty(Findings& findings, IUnknown& unknown, IDispatch& object, const Property& property);
void checkChoices(Findings& findings, IUnknown& unknown, const Property& property);
void checkElements(Findings& findings, IUnknown& unknown, const Property& property);
// Calls that have to fail.
void checkFailures(Findings& findings, IUnknown& unknown, IDispatch& object);

// Everything, in this order.
void checkAll(Report& report, const HostFunctions& host, std::span<const long> oldIds);

}  // namespace velt::hostcheck
