#pragma once

#include "propdata/support/Lists.h"
