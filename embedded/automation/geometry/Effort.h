#pragma once

// How much work a value is worth. A palette asks for values by the thousand and waits for each, so none may take long
// because of a drawing that is uncommonly intricate, or made to be so.

#include <cstddef>
#include <exception>

namespace velt::automation {

// A value would take too long. Getters let it pass: at the edge of an automation object it becomes a refusal.
class NotComputed : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override {
    return "not computed: too many steps would be needed";
  }
};

// What one value may take: in proportion to what the entity stores for it, and a little for those that store next to
// nothing. A step is about ten nanoseconds.
class Effort {
 public:
  // `parts`: corners, control points, edges.
  explicit Effort(std::size_t parts) : left_(stepsForAny + stepsForEach * parts) {}

  // Throws NotComputed when it is used up.
  void spend(std::size_t steps = 1) {
    if (steps > left_) throw NotComputed();
    left_ -= steps;
  }
  [[nodiscard]] std::size_t left() const { return left_; }

 private:
  static constexpr std::size_t stepsForAny = 50'000;
  static constexpr std::size_t stepsForEach = 1'000;

  std::size_t left_;
};

}  // namespace velt::automation
