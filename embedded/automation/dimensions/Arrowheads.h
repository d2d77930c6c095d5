#pragma once

// What stands at the ends of dimension lines and leaders.
//
// An arrowhead is a block; the usual one needs none. Most have a number in types::arrowhead, and one that is drawn as a
// block of the user's is chosen by the name of the block. For the puts see StyleName.h.

#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// A member of types::arrowhead for the name of a block.
[[nodiscard]] std::int32_t arrowheadOfBlock(std::wstring_view name);

// The drawing's block for a member of types::arrowhead; null when it has none. Not for the usual one, which needs none,
// and not for one of the user's.
[[nodiscard]] const database::TableEntry* blockOfArrowhead(const database::Drawing& drawing,
                                                           std::int32_t arrowhead);

// Of a dimension, the end being 1 or 2: a variable of its own where the ends differ, else one for both. Ticks stand for
// all arrowheads, and end with the choice of another.
template <int End>
std::wstring getArrowheadBlock(const Subject& subject);
template <int End>
std::int32_t getArrowhead(const Subject& subject);
template <int End>
void putArrowheadBlock(const Subject& subject, const std::wstring& name);
template <int End>
void putArrowhead(const Subject& subject, const std::int32_t& arrowhead);

std::wstring getLeaderArrowheadBlock(const Subject& subject);
std::int32_t getLeaderArrowhead(const Subject& subject);
void putLeaderArrowheadBlock(const Subject& subject, const std::wstring& name);
void putLeaderArrowhead(const Subject& subject, const std::int32_t& arrowhead);

}  // namespace velt::automation
