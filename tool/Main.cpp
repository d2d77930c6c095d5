#include <iostream>

#include "tool/CommandLine.h"
#include "tool/Interruption.h"

int main(int argumentCount, char** arguments) {
  velt::tool::endCleanlyWhenInterrupted();
  return velt::tool::run(argumentCount, arguments, std::cout, std::cerr);
}
