// Instead of the handler of the C++ runtime, which would bring a demangler of 48 KB for a message that no
// host of a library sees. Only with the runtime linked in.

#include <cstdlib>
#include <exception>

namespace __cxxabiv1 {
// NOLINTNEXTLINE(bugprone-reserved-identifier): the runtime's own name for it
extern std::terminate_handler __terminate_handler;
// NOLINTNEXTLINE(bugprone-reserved-identifier)
std::terminate_handler __terminate_handler = std::abort;
}  // namespace __cxxabiv1
