#include "bench/Report.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace velt::bench {

namespace {

// Keys in the order in which they are written here.
using Json = nlohmann::ordered_json;

Json jsonOf(const Environment& environment) {
  return {
      {"processor", environment.processor}, {"cores", environment.cores},
      {"memoryGiB", environment.memoryGiB}, {"system", environment.system},
      {"compiler", environment.compiler},   {"build", environment.build},
      {"date", environment.date},
  };
}

Json jsonOf(const Measurement& measurement) {
  Json object{{"name", measurement.name}};
  for (const Fact& fact : measurement.facts)
    object[fact.name] = fact.value;
  for (const Quantity& quantity : measurement.quantities) {
    object[quantity.name] = {
        {"unit", quantity.unit},
        {"min", quantity.spread.min},
        {"median", quantity.spread.median},
        {"max", quantity.spread.max},
    };
  }
  return object;
}

std::string printed(const Quantity& quantity) {
  const Spread& spread = quantity.spread;
  const bool hasSpread = spread.min != spread.max;
  return fmt::format("{} {:.4g}{}{}{}", quantity.name, spread.median, quantity.unit.empty() ? "" : " ",
                     quantity.unit, hasSpread ? fmt::format(" [{:.4g} {:.4g}]", spread.min, spread.max) : "");
}

}  // namespace

Report::Report(Environment environment, std::string filter)
    : environment_(std::move(environment)), filter_(std::move(filter)) {
  fmt::print("{}, {} cores, {:.0f} GiB, {}\n{}, {} build, {}\n", environment_.processor, environment_.cores,
             environment_.memoryGiB, environment_.system, environment_.compiler, environment_.build,
             environment_.date);
  fmt::print("medians, in brackets the smallest and the largest of all repetitions\n\n");
}

void Report::add(Measurement measurement) {
  if (measurement.name.find(filter_) == std::string::npos) return;
  fmt::print("{:<28}", measurement.name);
  for (const Quantity& quantity : measurement.quantities)
    fmt::print("  {}", printed(quantity));
  fmt::print("\n");
  std::fflush(stdout);
  measurements_.push_back(std::move(measurement));
}

void Report::writeJson(const std::filesystem::path& file) const {
  Json list = Json::array();
  for (const Measurement& measurement : measurements_)
    list.push_back(jsonOf(measurement));
  std::ofstream out(file);
  out << Json{{"environment", jsonOf(environment_)}, {"measurements", list}}.dump(2) << '\n';
  out.close();
  if (!out) throw std::runtime_error(fmt::format("{} cannot be written", file.string()));
}

}  // namespace velt::bench
