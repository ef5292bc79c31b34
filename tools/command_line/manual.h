#pragma once

namespace cli {

/// The manual page, and what shells complete, to standard output.
void printManPage();
void printBashCompletion();
void printZshCompletion();
void printFishCompletion();

}  // namespace cli
