// Stands in front of the library's pagerex_convert in the program that is made of the command line's objects,
// and fails where the file says so: what no sound document brings about.

#include <dlfcn.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "pagerex/convert.h"

namespace {

using Convert = int (*)(const pagerex_input*, const pagerex_limits*, const pagerex_options*,
                        const pagerex_output*, pagerex_result*);

[[noreturn]] void crash() {
  std::signal(SIGSEGV, SIG_DFL);
  raise(SIGSEGV);
  _exit(0);
}

/// Deaf to what the host asks for.
[[noreturn]] void hang() {
  for (;;) pause();
}

/// Asks the system for more and more, past any count of the library.
int eat(pagerex_result* result) {
  constexpr size_t kStep = size_t{1} << 20;
  constexpr int kMostSteps = 2000;
  for (int step = 0; step < kMostSteps; ++step) {
    if (std::malloc(kStep)) continue;
    result->code = PAGEREX_RESULT_OUT_OF_MEMORY;
    std::strcpy(result->sentence, "No memory is left.");
    return result->code;
  }
  crash();
}

void wait(const pagerex_limits* limits) {
  std::fputs("waiting\n", stderr);
  while (!*static_cast<const volatile int*>(limits->cancel)) usleep(1000);
}

}  // namespace

int pagerex_convert(const pagerex_input* input, const pagerex_limits* limits, const pagerex_options* options,
                    const pagerex_output* output, pagerex_result* result) {
  const auto real = reinterpret_cast<Convert>(dlsym(RTLD_NEXT, "pagerex_convert"));
  const std::string content(static_cast<const char*>(input->data), input->length);
  const auto says = [&](const char* word) { return content.find(word) != std::string::npos; };
  pagerex_options changed = *options;
  if (says("CRASH AT ONCE")) crash();
  if (says("HANG")) hang();
  if (says("EAT")) return eat(result);
  if (says("WAIT")) wait(limits);
  // The first file of the result has been written by then.
  if (says("CRASH LATER")) changed.page_finished = [](void*, int, const char*) { crash(); };
  if (says("HANG LATER")) changed.page_finished = [](void*, int, const char*) { hang(); };
  return real(input, limits, &changed, output, result);
}
