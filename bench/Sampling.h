#pragma once

// Timing: processor time of the calling thread, sampled several times and reported with its spread.
//
// Processor time and not the time of day, because the work runs on one thread and the machine may be doing other
// things. It includes the time in the kernel, mostly for page faults.

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace velt::bench {

struct Spread {
  double min = 0.0;
  double median = 0.0;
  double max = 0.0;

  [[nodiscard]] Spread over(double divisor) const { return {min / divisor, median / divisor, max / divisor}; }
};

using Samples = std::vector<double>;

[[nodiscard]] Spread spreadOf(Samples samples);

// Nanoseconds.
[[nodiscard]] double timeOf(const std::function<void()>& work);

// How often something is repeated: until the time is used up, but within the bounds.
struct Repetitions {
  std::size_t atLeast = 5;
  std::size_t atMost = 101;
  double nanoseconds = 1e9;
};

// `before`, if there is one, is done before each and not timed.
[[nodiscard]] Samples sample(const Repetitions& repetitions, const std::function<void()>& work,
                             const std::function<void()>& before = {});

struct Pairs {
  Samples first;
  Samples second;
  // first / second, of each pair.
  Samples ratio;
};

// Does the two kinds of work in turn. A ratio is that of two neighbours in time, so that whatever slows the machine
// down for a while slows both. `before`, if there is one, is done before each of them and not timed.
[[nodiscard]] Pairs samplePairs(const Repetitions& repetitions, const std::function<void()>& first,
                                const std::function<void()>& second,
                                const std::function<void()>& before = {});

struct Point {
  double size;
  double time;
};

// The slope of log(time) over log(size), by least squares: 1 is linear growth. Requires two different sizes.
[[nodiscard]] double growthExponent(std::span<const Point> points);

}  // namespace velt::bench
