#pragma once

// What stands between the layer and its host: one that writes down, or one that answers from what was written.
//
// All that the layer calls goes through here, as one line of JSON for each call (docs/recording.md). libVeltRecorder.so
// takes the place of the host's functions, and calls them; velt-replay takes their place, too, and answers by itself.
//
// Threads: that of the palette alone. Other threads are outside of every operation, and go past the session.

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>

namespace velt::recorder {

using nlohmann::json;

// Of the format; the first line of a recording tells it.
inline constexpr int formatVersion = 1;

// Who is at work on this thread. Calls are the layer's only while the layer is; what a palette calls between two
// operations, or a host while it answers, is their own affair.
enum class Side { outside, layer, host };
Side& side();

// Whose turn it is for the length of a scope.
class Turn {
 public:
  explicit Turn(Side whose) : before_(side()) { side() = whose; }
  ~Turn() { side() = before_; }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  Side before_;
};

class Session {
 public:
  virtual bool isReplay() const = 0;
  // Recording: keeps a line. Replaying: never called.
  virtual void write(const json& line) = 0;
  // Replaying: the line that was recorded for this call. Does not return where another one was.
  virtual json answerOf(const json& call) = 0;
  // Replaying: ends, because the recording is damaged.
  [[noreturn]] virtual void refuse(const std::string& why) = 0;

 protected:
  ~Session() = default;
};

// The one of this program.
Session& session();

// Things that a recording names by numbers: objects, opened objects, modules, entries. The same pointer has the same
// number as long as the process runs; 0 is null.
std::uint64_t numberOf(const void* thing);
// Gives a thing that was made for a replay the number that the recorded one had.
void setNumber(const void* thing, std::uint64_t number);

// Whether a get succeeded since this was set to false. What a row's value refers to is looked at only then, after the
// value was read again: a failing get leaves what was there, which may have been given back long ago.
bool& aValueWasRead();

}  // namespace velt::recorder
