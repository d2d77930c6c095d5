#include <iostream>

#include "tool/CommandLine.h"

int main(int argumentCount, char** arguments) {
  return velt::tool::run(argumentCount, arguments, std::cout, std::cerr);
}
