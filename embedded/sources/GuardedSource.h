#pragma once

// A property source of a plug-in, and its properties, behind a guard: what the plug-in does wrong ends here.
//
// An exception becomes E_UNEXPECTED, or the result that a _com_error carries; something else than an array of objects
// becomes no properties at all; null elements and objects that are no dynamic properties are left out, all others stay;
// a value of another type than the property has declared becomes DISP_E_TYPEMISMATCH and an empty value. Each kind is
// told once (PluginReports.h). A value that the plug-in does not want to take is told too, since whoever sets it hears
// nothing of it.
//
// A guarded property has the interfaces of the plug-in's own object, no more and no less, so that the generation of the
// interface, the choices and the categories stay what they are.
// Ownership: a guard holds references to what it guards. The guarded properties of a source live as long as their
// source, however long the plug-in itself wants to keep its objects: rows keep pointers to them. So a plug-in should
// hand out the same objects again and again; one that makes new ones at each call is told.
// Threads: as the plug-in.

#include <memory>

#include "embedded/com/InterfaceHolder.h"
#include "embedded/sources/PluginReports.h"
#include "host/palette/IPropertySource.h"

namespace velt::sources {

// So many property objects of one source are kept before the plug-in is told.
inline constexpr std::size_t manyProperties = 10'000;

// Throws std::bad_alloc.
[[nodiscard]] com::InterfaceHolder<IPropertySource> guard(IPropertySource* source,
                                                          std::shared_ptr<PluginReports> reports);

}  // namespace velt::sources
