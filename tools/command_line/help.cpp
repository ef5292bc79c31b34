#include "help.h"

#include <cstdio>
#include <cstring>

#include "option_table.h"
#include "pagerex/convert.h"
#include "request.h"

namespace cli {

namespace {

constexpr char kTwoPathsUsage[] =
    "Usage: pagerex [--view normal|phone|preview|mulpages] [--pagesize N] [--progress]\n"
    "               [--safe [--links safe|all|none]] SOURCE TARGET\n";

std::string usage() {
  std::string text;
  for (const char* synopsis : kSynopses)
    text += (text.empty() ? "Usage: " : "       ") + std::string(synopsis) + "\n";
  return text;
}

/// "-o, --output PATH".
std::string spelled(const Option& option) {
  std::string text = "    --";
  if (option.letter) text = std::string("-") + option.letter + ", --";
  text += option.name;
  if (option.id == kHelp) return text;
  if (option.argument) text += std::string(" ") + option.argument;
  return text;
}

void printRow(const std::string& left, const char* right) {
  std::printf("  %-22s %s\n", left.c_str(), right);
}

void printFormats() {
  std::puts("\nFormats:");
  for (int i = 0; const pagerex_format* format = pagerex_format_at(i); ++i)
    printRow(format->name, format->sentence);
}

/// The names alone, for a help that is to fit a screen.
void printFormatNames() {
  std::printf("FORMAT:");
  for (int i = 0; const pagerex_format* format = pagerex_format_at(i); ++i) std::printf(" %s", format->name);
  std::puts("");
}

void printShort() {
  std::printf("%sWord 97-2003 documents to HTML, text and Markdown. Folders are taken whole.\n\n",
              usage().c_str());
  for (const Option& option : kOptions) {
    if (option.isShown) printRow(spelled(option), option.help);
  }
  printFormatNames();
  for (const Example& example : kExamples) {
    if (example.isShown) std::printf("  %-49s %s\n", example.command, example.what);
  }
}

void printAll() {
  std::printf("%s\nConverts Word 97-2003 documents to HTML, text and Markdown.\n", usage().c_str());
  for (const GroupText& group : kGroups) {
    std::printf("\n%s:\n", group.title);
    for (const Option& option : kOptions) {
      if (option.group == group.group) printRow(spelled(option), option.help);
    }
  }
  printFormats();
  std::puts("\nExamples:");
  for (const Example& example : kExamples) std::printf("  # %s\n  %s\n", example.what, example.command);
  std::puts("\nExit codes:");
  for (const ExitCode& code : kExitCodes) printRow(std::to_string(code.code), code.meaning);
}

}  // namespace

void printHelp(bool all) {
  all ? printAll() : printShort();
}

void printVersion() {
  std::printf("pagerex %s\n", pagerex_version());
}

void printUsage(bool ofTwoPaths) {
  std::fputs(ofTwoPaths ? kTwoPathsUsage : usage().c_str(), stderr);
}

int usageError(const std::string& message) {
  std::fprintf(stderr, "pagerex: %s\n%sRun pagerex --help for more.\n", message.c_str(), usage().c_str());
  return kUsageError;
}

int twoPathsUsageError(const std::string& message) {
  std::fprintf(stderr, "pagerex: %s\n%sRun pagerex --help for more.\n", message.c_str(), kTwoPathsUsage);
  return kUsageError;
}

}  // namespace cli
