#pragma once

// The host's status codes: answers of the drawing database, and reports to the crash recorder.

namespace Velt {

enum ErrorStatus : int {
  eOk = 0,
  eNotImplemented = 1,
  // The last element of an empty vector.
  eNoElement = 2,
  eInvalidInput = 3,
  eOutOfMemory = 6,
  // Outside of a vector's length.
  eInvalidIndex = 24,
  eNullObjectId = 40,
  // Names no object of an open drawing.
  eInvalidObjectId = 41,
  eWasErased = 42,
  eNotThatKindOfClass = 43,
  // No automation class speaks for the object.
  eNoAutomationClass = 44
};

}  // namespace Velt
