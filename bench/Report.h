#pragma once

// What came out, for people (one line per measurement, printed at once) and for programs (JSON, written at the end).
//
// The JSON is one object: "environment", and "measurements", a list of objects. Each has a "name" that stays the same
// from run to run, plain numbers that say under which conditions it was measured, and its quantities: objects of
// "unit", "min", "median" and "max".

#include <filesystem>
#include <string>
#include <vector>

#include "bench/Environment.h"
#include "bench/Sampling.h"

namespace velt::bench {

struct Quantity {
  std::string name;
  std::string unit;
  Spread spread;
};

struct Fact {
  std::string name;
  double value;
};

struct Measurement {
  std::string name;
  std::vector<Fact> facts;
  std::vector<Quantity> quantities;
};

class Report {
 public:
  // Prints the environment.
  Report(Environment environment, std::string filter);

  // Prints the measurement and keeps it, when its name contains the filter.
  void add(Measurement measurement);

  // Throws std::runtime_error when the file cannot be written.
  void writeJson(const std::filesystem::path& file) const;

 private:
  Environment environment_;
  std::string filter_;
  std::vector<Measurement> measurements_;
};

}  // namespace velt::bench
