#pragma once

// A host of toys that keeps everything, for tests to break in one way each: two parts of one class on one layer, with a
// number, a text, a choice, and a point that is split up.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "hostcheck/Checks.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToyHost.h"
#include "tests/support/ToyObject.h"
#include "tests/support/ToySelection.h"
#include "tests/support/Variants.h"

namespace velt::tests {

using Names = std::set<std::string>;

class Stage : public ::testing::Test {
 protected:
  static constexpr long id = 77;
  static constexpr DISPID length = 4;
  static constexpr DISPID name = 5;
  static constexpr DISPID material = 6;
  static constexpr DISPID start = 7;

  Stage() {
    furnish(part);
    entity.classId = toys::toyClass(1);
    entity.layer = layer.objectId();
    host.createInstance = [this](REFCLSID clsid) { return clsid == toys::toyClass(1) ? &part : nullptr; };
  }

  static void furnish(toys::ToyObject& object) {
    object.property(length, L"Length")
        .returns(VT_R8)
        .holds(toys::r8(1.5))
        .inCategory(3, L"Geometry")
        .shown(1);
    object.property(name, L"Name")
        .returns(VT_BSTR)
        .holds(toys::text(L"P-1"))
        .inCategory(-12)
        .shown(1)
        .labelled(L"The name");
    object.property(material, L"Material")
        .returns(VT_I4)
        .holds(toys::i4(0))
        .inCategory(3, L"Geometry")
        .shown(1)
        .choice(L"Steel", toys::i4(0))
        .choice(L"Copper", toys::i4(1));
    object.property(start, L"Start")
        .returns(VT_VARIANT)
        .inCategory(3, L"Geometry")
        .shown(0)
        .element(1, L"X", toys::r8(0))
        .element(2, L"Y", toys::r8(0));
    for (const DISPID each : {length, name, material, start})
      object[each].editable(1);
  }

  hostcheck::Report check(std::vector<long> ids = {id}) const {
    hostcheck::Report report;
    hostcheck::checkAll(report, functions, ids);
    return report;
  }

  // The names of the checks that found something.
  Names found(std::vector<long> ids = {id}) const {
    Names names;
    for (const hostcheck::Finding& finding : check(std::move(ids)).findings)
      names.insert(finding.check);
    return names;
  }

  // What one group of checks finds, when it is given something else than toys.
  template <class Check>
  static Names foundBy(const Check& check) {
    hostcheck::Report report;
    hostcheck::Findings findings(report);
    check(findings);
    Names names;
    for (const hostcheck::Finding& finding : report.findings)
      names.insert(finding.check);
    return names;
  }

  toys::ToyHost host;
  toys::ToyObject part{host, "part"};
  toys::ToyEntity entity{host, "entity", id};
  toys::ToyLayer layer{host, "layer", 88, 0xC3000007};
  hostcheck::HostFunctions functions;
};

}  // namespace velt::tests
