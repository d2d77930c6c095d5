#pragma once

// The predefined categories, under whose headings palettes show properties. An object answers only their numbers
// (ICategorizeProperties::MapPropertyToCategory); the names stand in the resource library "PlxOPMRes.dll", that of -12
// as string 1012.

#include "host/com/Types.h"

namespace velt::platform {

// Down to -11 the numbers mean what they mean to every automation client; the others are for drawings.
enum class Category : PROPCAT {
  None = -1,
  Misc = -2,
  Font = -3,
  Position = -4,
  Appearance = -5,
  Behavior = -6,
  Data = -7,
  List = -8,
  Text = -9,
  Scale = -10,
  DataExchange = -11,
  General = -12,
  Geometry = -13,
  Visualization3D = -14,
  Pattern = -15,
  LinesAndArrows = -16,
  Fit = -17,
  PrimaryUnits = -18,
  AlternateUnits = -19,
  Tolerances = -20,
  Leaders = -21,
  Attributes = -22,
  Table = -23,
  Cell = -24,
  PlotStyle = -25,
  View = -26,
  ImageAdjust = -27,
  Mesh = -28,
  Block = -29,
  Layers = -30,
  Links = -31,
  Custom = -32,
};

inline constexpr PROPCAT lastPredefinedCategory = -32;

constexpr PROPCAT number(Category category) {
  return static_cast<PROPCAT>(category);
}

struct CategoryName {
  Category category;
  const wchar_t* name;
};

// clang-format off
inline constexpr CategoryName categoryNames[] = {
    // category                  heading
    {Category::None,             L"Uncategorized"},
    {Category::Misc,             L"Misc"},
    {Category::Font,             L"Font"},
    {Category::Position,         L"Position"},
    {Category::Appearance,       L"Appearance"},
    {Category::Behavior,         L"Behavior"},
    {Category::Data,             L"Data"},
    {Category::List,             L"List"},
    {Category::Text,             L"Text"},
    {Category::Scale,            L"Scale"},
    {Category::DataExchange,     L"Data Exchange"},
    {Category::General,          L"General"},
    {Category::Geometry,         L"Geometry"},
    {Category::Visualization3D,  L"3D Visualization"},
    {Category::Pattern,          L"Pattern"},
    {Category::LinesAndArrows,   L"Lines & Arrows"},
    {Category::Fit,              L"Fit"},
    {Category::PrimaryUnits,     L"Primary Units"},
    {Category::AlternateUnits,   L"Alternate Units"},
    {Category::Tolerances,       L"Tolerances"},
    {Category::Leaders,          L"Leaders"},
    {Category::Attributes,       L"Attributes"},
    {Category::Table,            L"Table"},
    {Category::Cell,             L"Cell"},
    {Category::PlotStyle,        L"Plot Style"},
    {Category::View,             L"View"},
    {Category::ImageAdjust,      L"Image Adjust"},
    {Category::Mesh,             L"Mesh"},
    {Category::Block,            L"Block"},
    {Category::Layers,           L"Layers"},
    {Category::Links,            L"Links"},
    {Category::Custom,           L"Custom"},
};
// clang-format on

}  // namespace velt::platform
