#pragma once

// The properties of dimensions, leaders and tolerances that are no single variable of the style: a part of one, several
// together, or several that one entity shows as one.
//
// A put keeps what the other properties read, but for those that its comment names; where that is impossible it throws
// Refusal. A put of what is there already changes nothing. Tables name these functions as getters and setters.

#include <cstdint>
#include <string>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// --- the style ---

std::wstring getDimStyle(const Subject& subject);
// What the entity overrides stays overridden; all else follows. Refused for a leader whose text would have to move.
void putDimStyle(const Subject& subject, const std::wstring& name);

// The text is an entity of its own, whose place follows from the style.
[[nodiscard]] bool leaderLeadsToText(const Subject& subject);

// --- arrowheads ---
//
// One that is drawn as a block of the user's is chosen by the name of the block.

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

// --- lines ---

// Stored as what is left out.
bool getDimLineInside(const Subject& subject);
void putDimLineInside(const Subject& subject, const bool& isInside);

// The sign of the size. No mark has no size; a new one has that of the style, else the usual one.
std::int32_t getCenterType(const Subject& subject);
void putCenterType(const Subject& subject, const std::int32_t& type);
double getCenterMarkSize(const Subject& subject);
void putCenterMarkSize(const Subject& subject, const double& size);

// --- text ---

std::wstring getDimensionTextStyle(const Subject& subject);
void putDimensionTextStyle(const Subject& subject, const std::wstring& name);

// Stored negative for a text in a frame.
double getTextGap(const Subject& subject);
void putTextGap(const Subject& subject, const double& gap);

// The variable holds both, around a mark that stands for the measurement.
std::wstring getPrefix(const Subject& subject);
std::wstring getSuffix(const Subject& subject);
std::wstring getAlternatePrefix(const Subject& subject);
std::wstring getAlternateSuffix(const Subject& subject);
void putPrefix(const Subject& subject, const std::wstring& prefix);
void putSuffix(const Subject& subject, const std::wstring& suffix);
void putAlternatePrefix(const Subject& subject, const std::wstring& prefix);
void putAlternateSuffix(const Subject& subject, const std::wstring& suffix);

// --- units ---

// Older drawings have it under another code.
std::int32_t getUnitsFormat(const Subject& subject);
void putUnitsFormat(const Subject& subject, const std::int32_t& format);

// Stored negative for one that counts on sheets of paper only. The measurement follows, also where it is stored.
double getLinearScale(const Subject& subject);
void putLinearScale(const Subject& subject, const double& scale);

// Where a dimension says nothing of angles, that of lengths.
std::int32_t getAnglePrecision(const Subject& subject);
void putAnglePrecision(const Subject& subject, const std::int32_t& places);

std::wstring getDecimalSeparator(const Subject& subject);
void putDecimalSeparator(const Subject& subject, const std::wstring& separator);

// Of the variable with that code: the lowest two bits, which tell feet and inches together.
template <int Code>
bool getSuppressZeroFeet(const Subject& subject);
template <int Code>
bool getSuppressZeroInches(const Subject& subject);
template <int Code>
void putSuppressZeroFeet(const Subject& subject, const bool& isSuppressed);
template <int Code>
void putSuppressZeroInches(const Subject& subject, const bool& isSuppressed);

// --- tolerances ---

// A member of types::tolerance, from several variables: equal limits are symmetrical, and a frame alone is basic.
std::int32_t getTolerance(const Subject& subject);
void putTolerance(const Subject& subject, const std::int32_t& tolerance);

// While the tolerance is symmetrical they are one number, and a put of either writes both.
double getLowerLimit(const Subject& subject);
double getUpperLimit(const Subject& subject);
void putLowerLimit(const Subject& subject, const double& limit);
void putUpperLimit(const Subject& subject, const double& limit);

}  // namespace velt::automation
