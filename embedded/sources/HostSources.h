#pragma once

// The property sources of the host itself: dynamic rows that need no plug-in.

namespace velt::sources {

class SourceRegistry;

inline constexpr const wchar_t* blockAttributesSource = L"Velt.BlockAttributes";
inline constexpr const wchar_t* extendedDataSource = L"Velt.ExtendedData";

// Attaches both to their classes.
void attachHostSources(SourceRegistry& registry);

}  // namespace velt::sources
