#pragma once

// Runs the layer on a recording: each operation with what it took, each call of the layer compared with the recorded one
// and answered as the host did, and what the operation leaves compared with what it left.

#include <cstddef>
#include <functional>
#include <istream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "propdata/VeltPropData.h"
#include "recorder/Session.h"

namespace velt::recorder {

// One place where the layer did something else than what was recorded.
struct Departure {
  std::size_t line;
  std::string operation;
  std::string recorded;
  std::string now;
};

struct Outcome {
  std::size_t operations = 0;
  std::size_t calls = 0;
  std::vector<Departure> departures;
};

// A recording that cannot be replayed, or not further: the text says which line and why.
class DamagedRecording : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

class Replay final : public Session {
 public:
  // What happens when the layer makes a call that was not recorded, or the recording breaks off inside of an operation:
  // the layer is waiting, and nobody can answer it. Neither may return.
  struct Ends {
    std::function<void(const Outcome&)> departed;
    std::function<void(const std::string&)> damaged;
  };

  // Reads and checks the first line; throws DamagedRecording.
  Replay(std::istream& recording, Ends ends);

  // Throws DamagedRecording for what is wrong between two operations.
  Outcome run();
  // Called with each operation before it is run.
  std::function<void(std::size_t line, const std::string& operation)> onOperation;
  // The line that was read last.
  std::size_t line() const { return line_; }

  bool isReplay() const override { return true; }
  void write(const json&) override {}
  json answerOf(const json& call) override;
  [[noreturn]] void refuse(const std::string& why) override;

 private:
  // Null at the end.
  json read();
  [[noreturn]] void departed(const std::string& recorded, const std::string& now);
  std::string at(const std::string& why) const;
  void operate(const json& begin);
  json perform(const std::string& name, const json& in, json& result);
  void setSelection(const json& from, TqVector<VeltPropData*>& selection);

  std::istream& recording_;
  Ends ends_;
  Outcome outcome_;
  std::size_t line_ = 0;
  std::vector<std::string> running_;
  // By their numbers.
  std::map<std::uint64_t, std::unique_ptr<VeltPropData>> entries_;
};

}  // namespace velt::recorder
