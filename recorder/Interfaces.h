#pragma once

// Objects of our own in the place of the host's: each interface pointer that a host gives to the layer becomes one that
// hands every call on, and writes it down. The same pointer becomes the same one again, so that identity is kept, and a
// reference to ours is one to the host's. Ours are never freed: a recording is short.
//
// In a replay there is nothing to hand on to: the object is its number.

#include <nlohmann/json.hpp>

#include "host/com/IDispatch.h"

namespace velt::recorder {

using nlohmann::json;

// Ours for the host's; what is ours already, and null, stay.
template <class I>
I* wrap(I* object);
// The host's for ours; everything else as it is.
template <class I>
I* unwrap(I* object);
// The object of a replay that has this number.
template <class I>
I* objectFrom(const json& number);

// The objects that a value refers to, in place: references go over from one to the other.
void wrapContent(VARIANT& value);
// A copy for the host, which owns nothing.
VARIANT forHost(const VARIANT& value);

}  // namespace velt::recorder
