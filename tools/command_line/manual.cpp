/// Writes what is installed beside the command line: its manual page, and what shells complete.
///
///     pagerex_manual man|bash|zsh|fish

#include "manual.h"

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
  constexpr struct {
    const char* name;
    void (*print)();
  } kOutputs[] = {
      {"man", cli::printManPage},
      {"bash", cli::printBashCompletion},
      {"zsh", cli::printZshCompletion},
      {"fish", cli::printFishCompletion},
  };
  for (const auto& output : kOutputs) {
    if (argc != 2 || std::strcmp(argv[1], output.name) != 0) continue;
    output.print();
    return std::fflush(stdout) == 0 ? 0 : 2;
  }
  std::fputs("Usage: pagerex_manual man|bash|zsh|fish\n", stderr);
  return 1;
}
