#pragma once

// Values of the host's types as JSON, and back. Writing looks at memory alone and calls nothing of the host; reading,
// which only a replay does, makes strings, arrays and blocks with the host's functions, for the layer to free.
//
// Texts stand as {"text": "..."}, so that they can be told from everything else in a recording and replaced. What is
// damaged throws std::runtime_error or one of JSON's own exceptions.

#include <nlohmann/json.hpp>
#include <string>

#include "host/com/CountedArrays.h"
#include "host/com/IDispatch.h"
#include "host/com/TypeInfo.h"
#include "host/database/VkCmColor.h"
#include "host/database/VkDbObjectId.h"

class VkRxClass;

namespace velt::recorder {

using nlohmann::json;

// --- texts ---------------------------------------------------------------------------------------------------------
json textJson(const wchar_t* text, std::size_t length);
// Null for null.
json textJson(const wchar_t* text);
// A string with its own length; null for null.
json stringJson(BSTR string);
std::wstring textFrom(const json& text);
BSTR stringFrom(const json& text);

// --- numbers and records ---------------------------------------------------------------------------------------------
json guidJson(const GUID& guid);
GUID guidFrom(const json& text);
json idJson(VkDbObjectId id);
VkDbObjectId idFrom(const json& number);
// Numbers that JSON does not have are kept by their bits.
json realJson(double value);
double realFrom(const json& value);
json colorJson(const VkCmColor& color);
VkCmColor colorFrom(const json& color);

// A value with what it refers to; `deep` false for one that somebody else may have given back already: of such, what it
// refers to is not looked at.
json valueJson(const VARIANT& value, bool deep = true);
VARIANT valueFrom(const json& value);

json textsJson(const CALPOLESTR& texts);
CALPOLESTR textsFrom(const json& texts);
json cookiesJson(const CADWORD& cookies);
CADWORD cookiesFrom(const json& cookies);

// --- classes of the database -------------------------------------------------------------------------------------------
// By the names that the host's headers give them; others by a number.
void nameClass(const VkRxClass* rxClass, const std::string& name);
json classJson(const VkRxClass* rxClass);
VkRxClass* classFrom(const json& name);

}  // namespace velt::recorder
