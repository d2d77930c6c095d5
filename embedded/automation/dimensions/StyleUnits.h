#pragma once

// How the measurement is written. For the puts see StyleName.h.

#include <cstdint>
#include <string>

#include "embedded/automation/dimensions/StyleVariables.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

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

// Of a variable of zeros: the lowest two bits, which tell feet and inches together.

bool suppressesZeroFeet(const Subject& subject, const StyleVariable& zeros);
bool suppressesZeroInches(const Subject& subject, const StyleVariable& zeros);
void suppressZeroFeet(const Subject& subject, const StyleVariable& zeros, bool isSuppressed);
void suppressZeroInches(const Subject& subject, const StyleVariable& zeros, bool isSuppressed);

template <const StyleVariable& Zeros>
bool getSuppressZeroFeet(const Subject& subject) {
  return suppressesZeroFeet(subject, Zeros);
}
template <const StyleVariable& Zeros>
bool getSuppressZeroInches(const Subject& subject) {
  return suppressesZeroInches(subject, Zeros);
}
template <const StyleVariable& Zeros>
void putSuppressZeroFeet(const Subject& subject, const bool& isSuppressed) {
  suppressZeroFeet(subject, Zeros, isSuppressed);
}
template <const StyleVariable& Zeros>
void putSuppressZeroInches(const Subject& subject, const bool& isSuppressed) {
  suppressZeroInches(subject, Zeros, isSuppressed);
}

}  // namespace velt::automation
