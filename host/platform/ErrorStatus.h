#pragma once

// The host's status codes: answers of the drawing database, and reports to the crash recorder.

namespace Velt {

enum ErrorStatus : int {
  eOk = 0,              // done
  eNotImplemented = 1,  // the host does not do that
  // The last element of an empty vector.
  eNoElement = 2,
  eInvalidInput = 3,  // an argument makes no sense
  eOutOfMemory = 6,   // no memory
  // Outside of a vector's length.
  eInvalidIndex = 24,
  eNullObjectId = 40,  // the id that names nothing was opened
  // Names no object of an open drawing.
  eInvalidObjectId = 41,
  eWasErased = 42,           // the object was erased, and erased ones were not asked for
  eNotThatKindOfClass = 43,  // the object is of another class
  // No automation class speaks for the object.
  eNoAutomationClass = 44
};

}  // namespace Velt
