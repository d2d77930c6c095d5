#pragma once

// Cores of this folder that others call. Each does what its exported function promises, which is told in the public
// header, and throws where the function would catch (errors/Guard.h).

#include "propdata/VeltPropData.h"

namespace velt::propdata {

// Of fillPropComboBox.
void fillChoices(TqVector<PROPINFO>& properties);

// Of freePropInfoVariantValue.
void clearValues(TqVector<TqVector<PROPINFO>>& lists);

}  // namespace velt::propdata
