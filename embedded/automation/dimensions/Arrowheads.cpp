#include "embedded/automation/dimensions/Arrowheads.h"

#include <algorithm>
#include <array>
#include <cwctype>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

constexpr std::int32_t usual = 0;
constexpr std::int32_t userDefined = 20;
constexpr const wchar_t* tick = L"_Oblique";

// In the order of the enumeration.
constexpr std::array<std::wstring_view, 20> arrowheadNames = {
    L"",         L"CLOSEDBLANK", L"CLOSED",     L"DOT",         L"ARCHTICK", L"OBLIQUE",  L"OPEN",
    L"ORIGIN",   L"ORIGIN2",     L"OPEN90",     L"OPEN30",      L"DOTSMALL", L"DOTBLANK", L"SMALL",
    L"BOXBLANK", L"BOXFILLED",   L"DATUMBLANK", L"DATUMFILLED", L"INTEGRAL", L"NONE",
};

constexpr const StyleVariable& variableOfEnd(int end) {
  return end == 1 ? variables::firstArrowhead : variables::secondArrowhead;
}

std::wstring blockAtEnd(const Subject& subject, int end) {
  const DimensionStyle style(subject);
  if (style.real(variables::tickSize) > 0) return tick;
  if (!style.flag(variables::arrowheadsDiffer)) {
    return style.blockName(variables::arrowhead, variables::arrowheadName);
  }
  return style.blockName(variableOfEnd(end),
                         end == 1 ? variables::firstArrowheadName : variables::secondArrowheadName);
}

// 0 for the usual one, which needs no block.
std::uint64_t handleOfBlock(const database::Drawing& drawing, std::wstring_view name) {
  if (name.empty()) return 0;
  const database::TableEntry* const block = drawing.blocks().find(name);
  if (block == nullptr) {
    throw Refusal(E_INVALIDARG, L"The drawing has no block " + std::wstring(name) + L".");
  }
  if (block->name.starts_with(L'*') || drawing.layoutOf(*block) != nullptr) {
    throw Refusal(E_INVALIDARG, L"The block cannot be an arrowhead.");
  }
  return handleOfEntry(drawing, *block);
}

// The other end keeps its own.
void putBlockAtEnd(const Subject& subject, int end, const std::wstring& name) {
  if (database::sameName(blockAtEnd(subject, end), name)) return;
  const database::Drawing& drawing = subject.drawing();
  const int otherEnd = 3 - end;
  const std::wstring otherName = blockAtEnd(subject, otherEnd);
  const std::uint64_t block = handleOfBlock(drawing, name);
  const DimensionStyle style(subject);
  const bool hasTicks = style.real(variables::tickSize) > 0;
  const bool areDifferent = style.flag(variables::arrowheadsDiffer);
  StyleEditor editor(subject);
  if (hasTicks) editor.real(variables::tickSize, 0);
  if (hasTicks || !areDifferent) editor.handle(variableOfEnd(otherEnd), handleOfBlock(drawing, otherName));
  if (!areDifferent) editor.integer(variables::arrowheadsDiffer, 1);
  editor.handle(variableOfEnd(end), block);
}

// The name of the block that is the arrowhead.
std::wstring blockNameOf(const Subject& subject, std::int32_t arrowhead) {
  if (arrowhead == usual) return {};
  if (arrowhead == userDefined) {
    throw Refusal(E_INVALIDARG, L"An arrowhead of the user's is chosen by the name of its block.");
  }
  const database::TableEntry* const block = blockOfArrowhead(subject.drawing(), arrowhead);
  if (block == nullptr) throw Refusal(E_FAIL, L"The drawing has no block of that arrowhead.");
  return block->name;
}

}  // namespace

std::int32_t arrowheadOfBlock(std::wstring_view name) {
  if (name.starts_with(L'_')) name.remove_prefix(1);
  std::wstring upper(name);
  for (wchar_t& letter : upper)
    letter = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(letter)));
  const auto found = std::find(arrowheadNames.begin(), arrowheadNames.end(), upper);
  return found == arrowheadNames.end() ? userDefined
                                       : static_cast<std::int32_t>(found - arrowheadNames.begin());
}

const database::TableEntry* blockOfArrowhead(const database::Drawing& drawing, std::int32_t arrowhead) {
  const auto index = static_cast<std::size_t>(arrowhead);
  if (arrowhead < 1 || index >= arrowheadNames.size()) return nullptr;
  const std::wstring plain(arrowheadNames[index]);
  const database::TableEntry* const marked = drawing.blocks().find(L"_" + plain);
  return marked != nullptr ? marked : drawing.blocks().find(plain);
}

template <int End>
std::wstring getArrowheadBlock(const Subject& subject) {
  return blockAtEnd(subject, End);
}

template <int End>
std::int32_t getArrowhead(const Subject& subject) {
  return arrowheadOfBlock(blockAtEnd(subject, End));
}

template <int End>
void putArrowheadBlock(const Subject& subject, const std::wstring& name) {
  putBlockAtEnd(subject, End, name);
}

template <int End>
void putArrowhead(const Subject& subject, const std::int32_t& arrowhead) {
  if (getArrowhead<End>(subject) != arrowhead) putBlockAtEnd(subject, End, blockNameOf(subject, arrowhead));
}

template std::wstring getArrowheadBlock<1>(const Subject&);
template std::wstring getArrowheadBlock<2>(const Subject&);
template std::int32_t getArrowhead<1>(const Subject&);
template std::int32_t getArrowhead<2>(const Subject&);
template void putArrowheadBlock<1>(const Subject&, const std::wstring&);
template void putArrowheadBlock<2>(const Subject&, const std::wstring&);
template void putArrowhead<1>(const Subject&, const std::int32_t&);
template void putArrowhead<2>(const Subject&, const std::int32_t&);

std::wstring getLeaderArrowheadBlock(const Subject& subject) {
  return DimensionStyle(subject).blockName(variables::leaderArrowhead, variables::arrowheadName);
}

std::int32_t getLeaderArrowhead(const Subject& subject) {
  return arrowheadOfBlock(getLeaderArrowheadBlock(subject));
}

void putLeaderArrowheadBlock(const Subject& subject, const std::wstring& name) {
  if (database::sameName(getLeaderArrowheadBlock(subject), name)) return;
  StyleEditor(subject).handle(variables::leaderArrowhead, handleOfBlock(subject.drawing(), name));
}

void putLeaderArrowhead(const Subject& subject, const std::int32_t& arrowhead) {
  putLeaderArrowheadBlock(subject, blockNameOf(subject, arrowhead));
}

}  // namespace velt::automation
