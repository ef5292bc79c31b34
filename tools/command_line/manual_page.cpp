#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

#include "manual.h"
#include "option_table.h"
#include "pagerex/convert.h"

namespace cli {

namespace {

/// Text as troff takes it: a minus that stays one, and no quotation mark that is bent.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\\')
      result += "\\e";
    else if (c == '-')
      result += "\\-";
    else if (c == '\'')
      result += "\\(aq";
    else
      result += c;
  }
  return result;
}

/// Lines of a width that a reader of the source likes, none of which begins as a request does.
void printText(std::string_view text) {
  constexpr size_t kWidth = 76;
  std::string line;
  while (!text.empty()) {
    const size_t end = std::min(text.find(' '), text.size());
    const std::string word = escaped(text.substr(0, end));
    if (!line.empty() && line.size() + 1 + word.size() > kWidth) {
      std::puts(line.c_str());
      line.clear();
    }
    line += (line.empty() ? (word[0] == '.' ? "\\&" : "") : " ") + word;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  std::puts(line.c_str());
}

/// Text in a line of a request, where a quotation mark would end it.
std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : escaped(text)) result += c == '"' ? std::string("\\(dq") : std::string(1, c);
  return result + "\"";
}

void printOption(const Option& option) {
  std::printf(".TP\n");
  if (option.letter) std::printf("\\fB\\-%c\\fR, ", option.letter);
  std::printf("\\fB\\-\\-%s\\fR", escaped(option.name).c_str());
  if (option.id == kHelp)
    std::printf("[\\fB=all\\fR]");
  else if (option.argument)
    std::printf(" \\fI%s\\fR", option.argument);
  std::string help = option.help;
  help[0] = static_cast<char>(help[0] & ~0x20);
  std::puts("");
  printText(help + ".");
  if (option.more) printText(option.more);
  if (option.choices) std::printf("Choices: %s.\n", escaped(option.choices).c_str());
}

void printOptions() {
  std::puts(".SH OPTIONS");
  for (const GroupText& group : kGroups) {
    std::printf(".SS %s\n", quoted(group.title).c_str());
    if (group.text) printText(group.text);
    for (const Option& option : kOptions) {
      if (option.group == group.group) printOption(option);
    }
  }
}

void printFormats() {
  std::puts(".SH FORMATS");
  for (int i = 0; const pagerex_format* format = pagerex_format_at(i); ++i) {
    std::printf(".TP\n.B %s\n", escaped(format->name).c_str());
    printText(std::string(format->sentence) + " Its main file ends in " + format->extension + ".");
  }
}

}  // namespace

void printManPage() {
  std::printf(".TH PAGEREX 1 \"%s\" \"pagerex %s\" \"User Commands\"\n", kManualDate, pagerex_version());
  std::puts(".SH NAME\npagerex \\- convert Word 97\\-2003 documents\n.SH SYNOPSIS\n.nf");
  for (const char* synopsis : kSynopses) std::printf("%s\n", escaped(synopsis).c_str());
  std::puts(
      ".fi\n.SH DESCRIPTION\nConverts Word 97\\-2003 documents (.doc): one to standard output or to a file,\n"
      "or many, with folders and all that is in them, into a folder.");
  printOptions();
  printFormats();
  std::puts(".SH EXIT STATUS");
  for (const ExitCode& code : kExitCodes)
    std::printf(".TP\n.B %d\n%s\n", code.code, escaped(code.meaning).c_str());
  std::puts(".SH EXAMPLES");
  for (const Example& example : kExamples)
    std::printf(".TP\n%s\n.EX\n%s\n.EE\n", escaped(example.what).c_str(), escaped(example.command).c_str());
}

}  // namespace cli
