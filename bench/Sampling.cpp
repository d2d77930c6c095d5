#include "bench/Sampling.h"

#include <time.h>

#include <algorithm>
#include <cmath>

namespace velt::bench {

namespace {

double processorTime() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

// Calls `once`, which returns the nanoseconds that it took.
void repeat(const Repetitions& repetitions, const std::function<double()>& once) {
  double used = 0.0;
  for (std::size_t done = 0; done < repetitions.atMost; ++done) {
    if (done >= repetitions.atLeast && used >= repetitions.nanoseconds) return;
    used += once();
  }
}

}  // namespace

Spread spreadOf(Samples samples) {
  if (samples.empty()) return {};
  std::sort(samples.begin(), samples.end());
  const std::size_t middle = samples.size() / 2;
  const double median =
      samples.size() % 2 == 1 ? samples[middle] : (samples[middle - 1] + samples[middle]) / 2.0;
  return {samples.front(), median, samples.back()};
}

double timeOf(const std::function<void()>& work) {
  const double start = processorTime();
  work();
  return processorTime() - start;
}

Samples sample(const Repetitions& repetitions, const std::function<void()>& work,
               const std::function<void()>& before) {
  Samples samples;
  repeat(repetitions, [&] {
    if (before) before();
    return samples.emplace_back(timeOf(work));
  });
  return samples;
}

Pairs samplePairs(const Repetitions& repetitions, const std::function<void()>& first,
                  const std::function<void()>& second, const std::function<void()>& before) {
  Pairs pairs;
  repeat(repetitions, [&] {
    if (before) before();
    const double ofFirst = timeOf(first);
    if (before) before();
    const double ofSecond = timeOf(second);
    pairs.first.push_back(ofFirst);
    pairs.second.push_back(ofSecond);
    pairs.ratio.push_back(ofFirst / ofSecond);
    return ofFirst + ofSecond;
  });
  return pairs;
}

double growthExponent(std::span<const Point> points) {
  double sumX = 0.0;
  double sumY = 0.0;
  double sumXX = 0.0;
  double sumXY = 0.0;
  for (const Point& point : points) {
    const double x = std::log(point.size);
    const double y = std::log(point.time);
    sumX += x;
    sumY += y;
    sumXX += x * x;
    sumXY += x * y;
  }
  const auto count = static_cast<double>(points.size());
  return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
}

}  // namespace velt::bench
