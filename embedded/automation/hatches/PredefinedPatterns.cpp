#include "embedded/automation/hatches/PredefinedPatterns.h"

#include <algorithm>
#include <numbers>

#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

// The length on which the patterns are built.
constexpr double eighth = 0.125;
// From one of two lines at 45 degrees to the other along the x axis, when they are an eighth apart.
constexpr double acrossDiagonals = eighth * std::numbers::sqrt2;
// The height of a triangle whose sides are an eighth.
constexpr double triangleHeight = eighth * std::numbers::sqrt3 / 2;

// clang-format off
const std::vector<PredefinedPattern>& table() {
  static const std::vector<PredefinedPattern> patterns = {
    {solidPatternName},
    // name      angle, base                       step                                  dashes
    {L"ANGLE",   {{  0, {0, 0},                    {0, 0.275},                           {0.2, -0.075}},
                  { 90, {0, 0},                    {0, 0.275},                           {0.2, -0.075}}}},
    {L"ANSI31",  {{ 45, {0, 0},                    {0, eighth}}}},
    {L"ANSI32",  {{ 45, {0, 0},                    {0, 3 * eighth}},
                  { 45, {acrossDiagonals, 0},      {0, 3 * eighth}}}},
    {L"ANSI33",  {{ 45, {0, 0},                    {0, 2 * eighth}},
                  { 45, {acrossDiagonals, 0},      {0, 2 * eighth},                      {eighth, -eighth / 2}}}},
    {L"ANSI34",  {{ 45, {0, 0},                    {0, 6 * eighth}},
                  { 45, {acrossDiagonals, 0},      {0, 6 * eighth}},
                  { 45, {2 * acrossDiagonals, 0},  {0, 6 * eighth}},
                  { 45, {3 * acrossDiagonals, 0},  {0, 6 * eighth}}}},
    {L"ANSI35",  {{ 45, {0, 0},                    {0, 2 * eighth}},
                  { 45, {acrossDiagonals, 0},      {0, 2 * eighth},                      {2.5 * eighth, -eighth / 2, 0, -eighth / 2}}}},
    {L"ANSI36",  {{ 45, {0, 0},                    {1.75 * eighth, eighth},              {2.5 * eighth, -eighth / 2, 0, -eighth / 2}}}},
    {L"ANSI37",  {{ 45, {0, 0},                    {0, eighth}},
                  {135, {0, 0},                    {0, eighth}}}},
    {L"ANSI38",  {{ 45, {0, 0},                    {0, eighth}},
                  {135, {0, 0},                    {2 * eighth, eighth},                 {2.5 * eighth, -1.5 * eighth}}}},
    {L"BRICK",   {{  0, {0, 0},                    {0, 2 * eighth}},
                  { 90, {0, 0},                    {2 * eighth, 2 * eighth},             {2 * eighth, -2 * eighth}}}},
    {L"CROSS",   {{  0, {0, 0},                    {2 * eighth, 2 * eighth},             {eighth, -3 * eighth}},
                  { 90, {eighth / 2, -eighth / 2}, {2 * eighth, 2 * eighth},             {eighth, -3 * eighth}}}},
    {L"DASH",    {{  0, {0, 0},                    {eighth, eighth},                     {eighth, -eighth}}}},
    {L"DOTS",    {{  0, {0, 0},                    {eighth / 4, eighth / 2},             {0, -eighth / 2}}}},
    {L"HEX",     {{  0, {0, 0},                    {0, 2 * triangleHeight},              {eighth, -2 * eighth}},
                  {120, {0, 0},                    {0, 2 * triangleHeight},              {eighth, -2 * eighth}},
                  { 60, {eighth, 0},               {0, 2 * triangleHeight},              {eighth, -2 * eighth}}}},
    {L"HONEY",   {{  0, {0, 0},                    {1.5 * eighth, triangleHeight},       {eighth, -2 * eighth}},
                  {120, {0, 0},                    {1.5 * eighth, triangleHeight},       {eighth, -2 * eighth}},
                  { 60, {eighth, 0},               {1.5 * eighth, triangleHeight},       {eighth, -2 * eighth}}}},
    {L"LINE",    {{  0, {0, 0},                    {0, eighth}}}},
    {L"NET",     {{  0, {0, 0},                    {0, eighth}},
                  { 90, {0, 0},                    {0, eighth}}}},
    {L"NET3",    {{  0, {0, 0},                    {0, eighth}},
                  { 60, {0, 0},                    {0, eighth}},
                  {120, {0, 0},                    {0, eighth}}}},
    {L"PLAST",   {{  0, {0, 0},                    {0, 2 * eighth}},
                  {  0, {0, eighth / 4},           {0, 2 * eighth}},
                  {  0, {0, eighth / 2},           {0, 2 * eighth}}}},
    {L"SQUARE",  {{  0, {0, 0},                    {0, eighth},                          {eighth, -eighth}},
                  { 90, {0, 0},                    {0, eighth},                          {eighth, -eighth}}}},
    {L"STEEL",   {{ 45, {0, 0},                    {0, eighth}},
                  { 45, {0, eighth / 2},           {0, eighth}}}},
    {L"ZIGZAG",  {{  0, {0, 0},                    {eighth, eighth},                     {eighth, -eighth}},
                  { 90, {eighth, 0},               {eighth, eighth},                     {eighth, -eighth}}}},
  };
  return patterns;
}
// clang-format on

}  // namespace

std::span<const PredefinedPattern> predefinedPatterns() {
  return table();
}

const PredefinedPattern* predefinedPattern(std::wstring_view name) {
  const auto found = std::find_if(table().begin(), table().end(), [&](const PredefinedPattern& it) {
    return database::sameName(it.name, name);
  });
  return found == table().end() ? nullptr : &*found;
}

}  // namespace velt::automation
