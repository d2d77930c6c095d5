#include "embedded/database/Layer.h"

#include "embedded/database/Colors.h"

namespace velt::database {
namespace {

constexpr std::int64_t frozen = 1;
constexpr std::int64_t locked = 4;

}  // namespace

std::wstring Layer::name() const {
  return lens().name(2, dxf::anySubclass);
}

VkCmColor Layer::color() const {
  return hasRecord() ? layerColor(lens()) : defaultLayerColor();
}

std::wstring Layer::linetypeName() const {
  constexpr const wchar_t* otherwise = L"Continuous";
  return hasRecord() ? lens().name(6, dxf::anySubclass, otherwise) : otherwise;
}

bool Layer::isOff() const {
  return hasRecord() && lens().integer(62, dxf::anySubclass, 0) < 0;
}

bool Layer::isFrozen() const {
  return hasFlag(frozen);
}

bool Layer::isLocked() const {
  return hasFlag(locked);
}

bool Layer::hasFlag(std::int64_t flag) const {
  return hasRecord() && (lens().integer(70, dxf::anySubclass, 0) & flag) != 0;
}

}  // namespace velt::database
