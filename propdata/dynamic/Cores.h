#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include "propdata/VeltPropData.h"

namespace velt::propdata {

// What the attempt to describe a property led to: the results of the exported functions.
enum Described : int { skipped = 0, described = 1, noNewerInterface = 2 };

// Of GetDynamicPropertyPropInfo and of GetDynamicPropertyPropInfoDefault.
Described describeByNewer(IDispatch* entity, IUnknown* property, PROPINFO& out);
Described describeByOlder(IDispatch* entity, IUnknown* property, PROPINFO& out);

// Of GetDynPropSourcesPropInfo: whether the entity has sources.
bool appendDynamicRows(IDispatch* entity, TqVector<PROPINFO>& out);

// Of isAllEntitiesSameDynProp.
bool showsDynamicRows(const TqVector<VeltPropData*>& selection);

// Of fillDynPropComboBox: whether the choices were rebuilt.
bool fillDynamicChoices(PROPINFO& property);

// Of the two writers together: writes by the newer generation, and all of it by the older one when a property lacks the
// newer.
void writeDynamic(const PROPINFO& property, const VARIANT& value);

}  // namespace velt::propdata
