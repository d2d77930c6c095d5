#pragma once

// How the text of a dimension looks, and what stands around the measurement. For the puts see StyleName.h.

#include <string>

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

std::wstring getDimensionTextStyle(const Subject& subject);
void putDimensionTextStyle(const Subject& subject, const std::wstring& name);

// Stored negative for a text in a frame.
// As it is stored: less than 0 for a text with a frame around it.
double storedTextGap(const Subject& subject);
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

}  // namespace velt::automation
