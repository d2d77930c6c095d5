#pragma once

// The property sources that the host brings along.

namespace velt::sources {

class SourceRegistry;

inline constexpr const wchar_t* blockAttributesSource = L"Velt.BlockAttributes";
inline constexpr const wchar_t* extendedDataSource = L"Velt.ExtendedData";

void attachHostSources(SourceRegistry& registry);

}  // namespace velt::sources
