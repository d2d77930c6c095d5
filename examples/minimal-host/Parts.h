#pragma once

// What this program is about: three parts of a pipeline on two layers. In your program the objects that you have take
// this place. All but the class ids at the end knows nothing of the property layer.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/com/Guid.h"

enum class Kind { pipe, valve };

struct Part {
  Kind kind;
  std::wstring name;
  double diameter;         // in millimetres
  double length;           // in millimetres; a valve has none
  std::uint32_t material;  // index into materials
  std::size_t layer;       // index into layers
};

struct Layer {
  const wchar_t* name;
  bool isLocked;
};

inline constexpr std::array materials = {L"Steel", L"Copper", L"Plastic"};
inline const std::array layers = {Layer{L"New", false}, Layer{L"Existing", true}};
inline std::array parts = {Part{Kind::pipe, L"P-1", 50, 2400, 0, 0}, Part{Kind::pipe, L"P-2", 50, 800, 0, 1},
                           Part{Kind::valve, L"V-1", 50, 0, 0, 0}};

// An id names a part or a layer by its place. 0 is the null id.
inline constexpr std::size_t firstPartId = 1;
inline constexpr std::size_t firstLayerId = 101;

// The automation classes. Take ids of your own, from uuidgen, and such without a zero byte: the layer keeps the list of
// properties of each class under its id, and cuts the id there.
inline constexpr CLSID CLSID_Pipe{
    0x5C1E7A21, 0x4B6D, 0x4F13, {0x9A, 0x35, 0xD2, 0x68, 0x17, 0xE4, 0x51, 0x31}};
inline constexpr CLSID CLSID_Valve{
    0x5C1E7A22, 0x4B6D, 0x4F13, {0x9A, 0x35, 0xD2, 0x68, 0x17, 0xE4, 0x51, 0x32}};
