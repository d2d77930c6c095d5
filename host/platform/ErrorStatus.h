#pragma once

// The host's status codes.

namespace Velt {

enum ErrorStatus : int {
  eOk = 0,
  eNotImplemented = 1,
  eNoElement = 2,
  eInvalidInput = 3,
  eOutOfMemory = 6,
  eInvalidIndex = 24,
  eNullObjectId = 40,
  eInvalidObjectId = 41,
  eWasErased = 42,
  eNotThatKindOfClass = 43,
  eNoAutomationClass = 44
};

}  // namespace Velt
