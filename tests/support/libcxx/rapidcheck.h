#pragma once

// Stands in for RapidCheck where tests are built on libc++: that library is there as a binary alone, made with the other
// standard library. It has the parts that the tests of the layer use. Values are drawn as they are there, small ones first;
// after a failure they are not made smaller: the seed is told, and RC_PARAMS="seed=..." draws them again.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace rc {

inline constexpr int kNominalSize = 100;

namespace detail {

// What is drawn from, and how large what is drawn may be.
struct Drawing {
  std::mt19937_64 chance;
  int size = kNominalSize;
};

inline Drawing& drawing() {
  static Drawing one;
  return one;
}

inline std::uint64_t below(std::uint64_t limit) {
  return limit == 0 ? 0 : drawing().chance() % limit;
}

}  // namespace detail

template <class T>
class Gen {
 public:
  using Value = T;

  template <class Draw>
  requires std::is_invocable_r_v<T, Draw>
  explicit Gen(Draw draw) : draw_(std::move(draw)) {}
  T operator*() const { return draw_(); }

 private:
  std::function<T()> draw_;
};

namespace gen {

template <class T>
Gen<T> just(T value) {
  return Gen<T>([value] { return value; });
}

// From min up to, and without, max.
template <class T>
Gen<T> inRange(T min, T max) {
  return Gen<T>([min, max] {
    const auto width = static_cast<std::uint64_t>(max) - static_cast<std::uint64_t>(min);
    return static_cast<T>(static_cast<std::uint64_t>(min) + detail::below(width));
  });
}

// Numbers are as often small as they are large.
template <class T>
Gen<T> arbitrary() {
  return Gen<T>([] {
    if constexpr (std::is_same_v<T, bool>) {
      return detail::below(2) == 1;
    } else if constexpr (std::is_integral_v<T>) {
      const std::uint64_t bits = detail::below(std::numeric_limits<std::make_unsigned_t<T>>::digits + 1);
      const std::uint64_t mask = bits == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
      const std::uint64_t number = detail::drawing().chance() & mask;
      return static_cast<T>(std::is_signed_v<T> && detail::below(2) == 1 ? ~number + 1 : number);
    } else {
      static_assert(std::is_floating_point_v<T>);
      const auto fraction = static_cast<T>(detail::below(2000001)) / 1000000 - 1;
      return std::ldexp(fraction, static_cast<int>(detail::below(120)) - 60);
    }
  });
}

template <class T, class Function>
auto map(Gen<T> from, Function function) {
  return Gen<std::invoke_result_t<Function, T>>([from, function] { return function(*from); });
}

template <class T, class Function>
auto mapcat(Gen<T> from, Function function) {
  return Gen<typename std::invoke_result_t<Function, T>::Value>(
      [from, function] { return *function(*from); });
}

template <class T>
Gen<T> resize(int size, Gen<T> from) {
  return Gen<T>([size, from] {
    const int before = std::exchange(detail::drawing().size, size);
    T value = *from;
    detail::drawing().size = before;
    return value;
  });
}

template <class T, class... Others>
Gen<T> oneOf(Gen<T> first, Others... others) {
  return Gen<T>([all = std::vector<Gen<T>>{first, others...}] { return *all[detail::below(all.size())]; });
}

template <class Container>
auto elementOf(Container container) {
  using T = typename Container::value_type;
  return Gen<T>([container] {
    return *std::next(container.begin(), static_cast<std::ptrdiff_t>(detail::below(container.size())));
  });
}

template <class T, class... Others>
Gen<T> element(T first, Others... others) {
  return elementOf(std::vector<T>{first, static_cast<T>(others)...});
}

template <class T>
Gen<T> weightedElement(std::initializer_list<std::pair<std::size_t, T>> weighted) {
  return Gen<T>([all = std::vector<std::pair<std::size_t, T>>(weighted)] {
    std::size_t sum = 0;
    for (const auto& [weight, value] : all)
      sum += weight;
    std::uint64_t place = detail::below(sum);
    for (const auto& [weight, value] : all) {
      if (place < weight) return value;
      place -= weight;
    }
    return all.back().second;
  });
}

template <class Container, class T>
Gen<Container> container(std::size_t count, Gen<T> from) {
  return Gen<Container>([count, from] {
    Container drawn;
    for (std::size_t i = 0; i < count; ++i)
      drawn.push_back(*from);
    return drawn;
  });
}

template <class Container, class T>
Gen<Container> container(Gen<T> from) {
  return Gen<Container>([from] {
    const std::uint64_t most = static_cast<std::uint64_t>(detail::drawing().size);
    return *container<Container>(static_cast<std::size_t>(detail::below(most + 1)), from);
  });
}

template <class... T>
Gen<std::tuple<T...>> tuple(Gen<T>... from) {
  // In braces the values are drawn from the first to the last.
  return Gen<std::tuple<T...>>([from...] { return std::tuple<T...>{*from...}; });
}

template <class Object, class Member, class T>
auto set(Member Object::*member, Gen<T> from) {
  return [member, from](Object& object) { object.*member = *from; };
}

template <class Object, class... Set>
Gen<Object> build(Set... set) {
  return Gen<Object>([set...] {
    Object object{};
    (set(object), ...);
    return object;
  });
}

}  // namespace gen

namespace detail {

struct Failure {
  std::string text;
};

struct TestParams {
  std::uint64_t seed = 0;
  int maxSuccess = 100;
};

struct Configuration {
  TestParams testParams;
};

inline Configuration configuration() {
  Configuration configuration;
  const char* const told = std::getenv("RC_PARAMS");
  const std::string_view text = told != nullptr ? told : "";
  const auto valueOf = [&](std::string_view name) {
    const std::size_t at = text.find(name);
    return at != std::string_view::npos ? std::strtoull(told + at + name.size(), nullptr, 10) : 0ULL;
  };
  configuration.testParams.seed = valueOf("seed=");
  if (configuration.testParams.seed == 0) configuration.testParams.seed = std::random_device()();
  if (const auto most = valueOf("max_success="); most != 0)
    configuration.testParams.maxSuccess = static_cast<int>(most);
  return configuration;
}

struct SuccessResult {};
struct TestMetadata {};

struct TestResult {
  std::string failure;

  template <class Result>
  bool is() const {
    static_assert(std::is_same_v<Result, SuccessResult>);
    return failure.empty();
  }
};

inline void printResultMessage(const TestResult& result, std::ostream& to) {
  to << result.failure;
}

template <class Property>
std::function<void()> toProperty(const Property& property) {
  return property;
}

inline TestResult checkProperty(const std::function<void()>& property, const TestMetadata&,
                                const TestParams& params) {
  drawing().chance.seed(params.seed);
  for (int run = 0; run < params.maxSuccess; ++run) {
    drawing().size = run * kNominalSize / params.maxSuccess;
    try {
      property();
    } catch (const Failure& failure) {
      return {failure.text + "\nin run " + std::to_string(run + 1)
              + "; RC_PARAMS=\"seed=" + std::to_string(params.seed) + "\" runs it again"};
    }
  }
  return {};
}

}  // namespace detail
}  // namespace rc

#define RC_TEXT_OF_NUMBER(number) #number
#define RC_TEXT_OF(number) RC_TEXT_OF_NUMBER(number)
#define RC_ASSERT(...)                                                                                \
  do {                                                                                                \
    if (!(__VA_ARGS__))                                                                               \
      throw ::rc::detail::Failure{__FILE__ ":" RC_TEXT_OF(__LINE__) ": RC_ASSERT(" #__VA_ARGS__ ")"}; \
  } while (false)
