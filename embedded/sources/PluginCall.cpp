#include "embedded/sources/PluginCall.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <utility>

namespace velt::sources {
namespace {

// A signal handler reads them on the thread that wrote them.
thread_local const char* volatile pluginCalled = nullptr;
thread_local const char* volatile methodCalled = nullptr;

constexpr std::array crashes{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
std::array<struct sigaction, crashes.size()> before{};
const char* program = "";

// An endless recursion leaves no stack for the handler.
constexpr std::size_t stackSize = std::size_t{64} * 1024;
std::array<char, stackSize> handlerStack;
stack_t stackBefore{};

// All that a signal handler may use.
void tell(const char* text) {
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, std::strlen(text));
}

void restore() {
  for (std::size_t i = 0; i < crashes.size(); ++i)
    sigaction(crashes[i], &before[i], nullptr);
}

void onCrash(int signal) {
  const char* const plugin = pluginCalled;
  const char* const method = methodCalled;
  if (plugin != nullptr) {
    tell(program);
    tell(": plug-in ");
    tell(plugin);
    tell(" crashed in ");
    tell(method);
    tell("\n");
  }
  // The signal is raised again when the handler is left, for whoever handled it before.
  restore();
  raise(signal);
}

}  // namespace

PluginCall::PluginCall(const char* plugin, const char* method)
    : outerPlugin_(pluginCalled), outerMethod_(methodCalled) {
  methodCalled = method;
  pluginCalled = plugin;
}

PluginCall::~PluginCall() {
  pluginCalled = outerPlugin_;
  methodCalled = outerMethod_;
}

CrashNotice::CrashNotice(const char* name) {
  program = name;
  stack_t own{};
  own.ss_sp = handlerStack.data();
  own.ss_size = handlerStack.size();
  sigaltstack(&own, &stackBefore);
  struct sigaction action {};
  action.sa_handler = onCrash;
  action.sa_flags = SA_ONSTACK;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < crashes.size(); ++i)
    sigaction(crashes[i], &action, &before[i]);
}

CrashNotice::~CrashNotice() {
  restore();
  sigaltstack(&stackBefore, nullptr);
}

}  // namespace velt::sources
