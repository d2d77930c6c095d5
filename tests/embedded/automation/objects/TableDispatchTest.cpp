// What the type library says of the small objects, on which scripts and plug-ins depend.

#include "embedded/automation/objects/TableDispatch.h"

#include <gtest/gtest.h>

#include <string>

#include "embedded/automation/objects/ColorObject.h"
#include "embedded/automation/objects/HyperlinksObject.h"
#include "tests/support/Golden.h"
#include "tests/support/Narrow.h"

namespace velt::automation {
namespace {

using tests::narrow;

std::string listed(const DispatchType& type) {
  std::string text = narrow(type.name) + ": " + narrow(type.help) + "\n";
  for (const TypeFunction& function : type.functions) {
    const char* const kind = function.kind == INVOKE_PROPERTYGET   ? "get"
                             : function.kind == INVOKE_PROPERTYPUT ? "put"
                                                                   : "method";
    text += "  " + std::to_string(function.id) + " " + kind + " " + narrow(function.name) + ", type "
            + std::to_string(function.type.declared);
    if (function.parameter) text += ", of type " + std::to_string(function.parameter->declared);
    text += ". " + narrow(function.help) + "\n";
  }
  return text;
}

TEST(TableDispatch, ObjectsAreListedAsAccepted) {
  EXPECT_TRUE(tests::matchesGolden(
      "golden/objects.txt",
      listed(ColorObject::type()) + listed(HyperlinkObject::type()) + listed(HyperlinksObject::type())));
}

}  // namespace
}  // namespace velt::automation
