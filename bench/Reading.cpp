// Reading a drawing, and the memory that it takes: the document alone, and the database over it before anybody has asked
// it for an entity.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Groups.h"
#include "bench/Memory.h"
#include "dxf/Document.h"
#include "embedded/database/Drawing.h"

namespace velt::bench {

namespace {

struct Reader {
  const char* name;
  // Gives what was read, whole, to be kept.
  std::shared_ptr<void> (*read)(std::string bytes);
};

constexpr Reader readers[] = {
    {"read/document",
     [](std::string bytes) -> std::shared_ptr<void> {
       return std::make_shared<dxf::Document>(dxf::Document::parse(std::move(bytes), "benchmark"));
     }},
    {"read/drawing",
     [](std::string bytes) -> std::shared_ptr<void> {
       return database::Drawing::parse(std::move(bytes), "benchmark");
     }},
};

// Without the time to get the bytes, which is the disk's.
Samples sampleReading(const Repetitions& repetitions, const Reader& reader, const std::string& bytes) {
  Samples samples;
  while (samples.size() < repetitions.atLeast) {
    std::string own = bytes;
    std::shared_ptr<void> kept;
    samples.push_back(timeOf([&] { kept = reader.read(std::move(own)); }));
  }
  return samples;
}

}  // namespace

void measureReading(const Settings& settings, Report& report) {
  const std::vector<std::uint32_t> sizes = settings.quick
                                               ? std::vector<std::uint32_t>{10, 100}
                                               : std::vector<std::uint32_t>{10'000, 100'000, 1'000'000};
  const Repetitions repetitions{.atLeast = settings.quick ? std::size_t{2} : std::size_t{5}};
  // Memory is given out by pages, and the heap of a process that has worked before keeps some in reserve.
  constexpr std::size_t smallestForMemory = std::size_t{1} << 20;
  for (const Reader& reader : readers) {
    const std::string nameOfGrowth = fmt::format("growth/{}", reader.name);
    std::vector<Point> growth;
    for (const std::uint32_t entities : sizes) {
      const std::string name = fmt::format("{}/{}", reader.name, entities);
      if (!settings.wantsOneOf({nameOfGrowth, name})) continue;
      const std::string bytes = drawingOf(Content::Lines, entities);
      const auto size = static_cast<double>(bytes.size());
      const Spread time = spreadOf(sampleReading(repetitions, reader, bytes));
      growth.push_back({static_cast<double>(entities), time.median});
      // Bytes in a nanosecond are a thousand megabytes in a second.
      const auto speed = [size](double nanoseconds) { return size / nanoseconds * 1e3; };
      std::vector<Quantity> quantities{
          {"speed", "MB/s", {speed(time.max), speed(time.median), speed(time.min)}}};
      std::shared_ptr<void> kept;
      const std::optional<std::size_t> peak = peakMemoryOf([&] { kept = reader.read(bytes); });
      if (peak && bytes.size() >= smallestForMemory) {
        const double perByte = static_cast<double>(*peak) / size;
        quantities.push_back({"memory", "bytes per byte of the drawing", {perByte, perByte, perByte}});
      }
      report.add(
          {name, {{"entities", static_cast<double>(entities)}, {"bytes", size}}, std::move(quantities)});
    }
    if (!settings.wants(nameOfGrowth)) continue;
    const double exponent = growthExponent(growth);
    report.add({nameOfGrowth,
                {{"from", growth.front().size}, {"to", growth.back().size}},
                {{"exponent", "", {exponent, exponent, exponent}}}});
  }
}

}  // namespace velt::bench
