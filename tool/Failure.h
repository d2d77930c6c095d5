#pragma once

// The failures that end a command: each a message for people, and an exit code.

#include <stdexcept>
#include <string>

namespace velt::tool {

enum ExitCode : int {
  succeeded = 0,
  failed = 1,
  wrongUsage = 2,
  // Of `set`: no entity got another value.
  nothingToDo = 3,
  // Of `set`: some entities got the value, and others refused it or could not be opened.
  partlyDone = 4
};

// The command could not do what was asked. Ends the program with exit code 1.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The command line is incomplete or contradicts itself. Ends the program with exit code 2.
class UsageFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What the exception that is being handled says to people. Call it within a catch block.
std::string messageOfFailure();

}  // namespace velt::tool
