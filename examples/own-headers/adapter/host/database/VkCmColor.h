#pragma once

// Takes the place of the header of that name, with -DVELT_HOST_INCLUDE=examples/own-headers/adapter: the layer calls the
// program's own color, which does what the layer's header asks of one.

#include "examples/own-headers/DrawingColor.h"

using VkCmColor = drawing::Color;
