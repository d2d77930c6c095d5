#pragma once

// A guard around a property source of a plug-in and its properties: what the plug-in does wrong has no effect beyond
// it.
//
//   an exception                                becomes E_UNEXPECTED, or the result that a _com_error carries
//   an answer that is not an array of objects   becomes no properties
//   null, or not a dynamic property             that element is left out, the others stay
//   a value of another type than declared       becomes DISP_E_TYPEMISMATCH and an empty value
//   more choices than mostChoices               only so many are there: a palette asks for each of them
//
// Each kind of trouble is told once (PluginReports.h). So is a value that the plug-in refuses, because the layer does
// not tell it to whoever sets the value.
//
// A guarded property has exactly the interfaces that the plug-in's own object has, so palettes see the same generation,
// choices and categories as without a guard.
// Ownership: a guard holds references to what it guards. The guarded properties live as long as their source, because
// rows keep pointers to them; so a plug-in should hand out the same objects again and again, and one that makes new
// ones at each call is told so.
// Threads: one, the palette's, as for the plug-in.

#include <memory>

#include "embedded/sources/PluginReports.h"
#include "holders/InterfaceHolder.h"
#include "host/palette/IPropertySource.h"

namespace velt::sources {

// When one source has handed out this many property objects, the plug-in is told.
inline constexpr std::size_t manyProperties = 10'000;

// A property has no more choices than this.
inline constexpr LONG mostChoices = 10'000;

// Throws std::bad_alloc without memory.
[[nodiscard]] holders::InterfaceHolder<IPropertySource> guard(IPropertySource* source,
                                                              std::shared_ptr<PluginReports> reports);

}  // namespace velt::sources
