#pragma once

// The id of each interface, and the interface that it extends. A new interface needs a row here, or a specialisation of
// InterfaceTraits beside its own declaration; ComObject does the rest.

#include "host/automation/IVeltBaseObject.h"
#include "host/automation/IVeltHatch.h"
#include "host/automation/IVeltHyperlinks.h"
#include "host/automation/IVeltVkCmColor.h"
#include "host/automation/IVkPiPropertyDisplay.h"
#include "host/automation/IdValues.h"
#include "host/com/IDispatch.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/com/IUnknown.h"
#include "host/com/TypeInfo.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "host/palette/IPropertySource.h"

namespace velt::com {

template <const IID& Id, class Extended>
struct InterfaceRow {
  static constexpr const IID& iid = Id;
  using Base = Extended;
};

template <class Interface>
struct InterfaceTraits;

// clang-format off
//                interface                                id                            extends
template <> struct InterfaceTraits<IDispatch>             : InterfaceRow<IID_IDispatch,             IUnknown> {};
template <> struct InterfaceTraits<ITypeInfo>             : InterfaceRow<IID_ITypeInfo,             IUnknown> {};
template <> struct InterfaceTraits<ITypeLib>              : InterfaceRow<IID_ITypeLib,              IUnknown> {};
template <> struct InterfaceTraits<IPerPropertyBrowsing>  : InterfaceRow<IID_IPerPropertyBrowsing,  IUnknown> {};
template <> struct InterfaceTraits<ICategorizeProperties> : InterfaceRow<IID_ICategorizeProperties, IUnknown> {};
template <> struct InterfaceTraits<IDynamicEnumProperty>  : InterfaceRow<IID_IDynamicEnumProperty,  IUnknown> {};
template <> struct InterfaceTraits<IDynamicProperty>      : InterfaceRow<IID_IDynamicProperty,      IUnknown> {};
template <> struct InterfaceTraits<IDynamicProperty2>     : InterfaceRow<IID_IDynamicProperty2,     IUnknown> {};
template <> struct InterfaceTraits<IOPMPropertyExpander>  : InterfaceRow<IID_IOPMPropertyExpander,  IUnknown> {};
template <> struct InterfaceTraits<IOPMPropertyExtension> : InterfaceRow<IID_IOPMPropertyExtension, IUnknown> {};
template <> struct InterfaceTraits<IPropertySource>       : InterfaceRow<IID_IPropertySource,       IUnknown> {};
template <> struct InterfaceTraits<IVeltBaseObject>       : InterfaceRow<IID_IVeltBaseObject,       IUnknown> {};
template <> struct InterfaceTraits<IVeltVkCmColor>        : InterfaceRow<IID_IVeltVkCmColor,        IDispatch> {};
template <> struct InterfaceTraits<IVeltHyperlinks>       : InterfaceRow<IID_IVeltHyperlinks,       IDispatch> {};
template <> struct InterfaceTraits<IVeltHyperlink>        : InterfaceRow<IID_IVeltHyperlink,        IDispatch> {};
template <> struct InterfaceTraits<IVeltHatch>            : InterfaceRow<IID_IVeltHatch,            IDispatch> {};
template <> struct InterfaceTraits<IVkPiPropertyDisplay>  : InterfaceRow<IID_IVkPiPropertyDisplay,  IUnknown> {};
// clang-format on

}  // namespace velt::com
