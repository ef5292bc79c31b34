// The help, the manual page and the completions: each has all that the table has.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "../tools/command_line/option_table.h"
#include "command_line/program.h"
#include "pagerex/convert.h"

using testing::HasSubstr;

namespace {

const std::string kFolder = PAGEREX_MANUAL_FOLDER;

std::string read(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Runs a checker on a file, where it is installed: what it says.
Finished check(const std::string& command, const std::string& file) {
  return Program("/bin/sh", {"-c", "command -v " + command.substr(0, command.find(' ')) +
                                       " >/dev/null || exit 0; " + command + " " + kFolder + file})
      .finish();
}

void expectSilence(const std::string& command, const std::string& file) {
  const Finished finished = check(command, file);
  EXPECT_EQ(finished.exitCode, 0) << command;
  EXPECT_EQ(finished.output + finished.errors, "") << command;
}

std::string withMinus(const std::string& name) {
  std::string text;
  for (const char c : name) text += c == '-' ? std::string("\\-") : std::string(1, c);
  return text;
}

}  // namespace

TEST(Manual, HasEachOptionEverywhere) {
  const std::string help = pagerex({"--help=all"}).output;
  const std::string page = read(kFolder + "/man/pagerex.1"), bash = read(kFolder + "/bash/pagerex"),
                    zsh = read(kFolder + "/zsh/_pagerex"), fish = read(kFolder + "/fish/pagerex.fish");
  for (const cli::Option& option : cli::kOptions) {
    const std::string name = option.name;
    EXPECT_THAT(
        help,
        HasSubstr("--" + name +
                  (option.argument && option.id != cli::kHelp ? " " + std::string(option.argument) : "")));
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-" + withMinus(name) + "\\fR"));
    EXPECT_THAT(bash, HasSubstr("--" + name));
    EXPECT_THAT(zsh, HasSubstr("--" + name));
    EXPECT_THAT(fish, HasSubstr(" -l " + name));
    if (option.letter) {
      EXPECT_THAT(help, HasSubstr(std::string("-") + option.letter + ", --" + name));
    }
  }
}

TEST(Manual, HasEachFormat) {
  const std::string help = pagerex({"--help=all"}).output, page = read(kFolder + "/man/pagerex.1");
  for (int i = 0; const pagerex_format* format = pagerex_format_at(i); ++i) {
    EXPECT_THAT(help, HasSubstr(std::string("  ") + format->name + " "));
    EXPECT_THAT(page, HasSubstr(".B " + withMinus(format->name) + "\n"));
    for (const char* file : {"/bash/pagerex", "/zsh/_pagerex", "/fish/pagerex.fish"})
      EXPECT_THAT(read(kFolder + file), HasSubstr(format->name));
  }
}

TEST(Manual, ShortHelpFitsAScreen) {
  const std::vector<std::string> lines = linesOf(pagerex({"--help"}).output);
  EXPECT_LE(lines.size(), 23u);
  for (const std::string& line : lines) EXPECT_LE(line.size(), 79u) << line;
}

TEST(Manual, IsSoundForWhoReadsIt) {
  expectSilence("groff -man -ww -z", "/man/pagerex.1");
  expectSilence("mandoc -Tlint -Wwarning", "/man/pagerex.1");
  expectSilence("man --warnings -l -Tutf8 -E UTF-8 -P true", "/man/pagerex.1 >/dev/null");
  expectSilence("bash -n", "/bash/pagerex");
  expectSilence("zsh -n", "/zsh/_pagerex");
  expectSilence("fish -n", "/fish/pagerex.fish");
}

TEST(Manual, BashCompletesOptionsAndChoices) {
  // Where no file is called as the command is.
  const std::string script = "cd /; source " + kFolder +
                             "/bash/pagerex; try() { COMP_WORDS=(pagerex \"$@\"); COMP_CWORD=$#; _pagerex "
                             "2>/dev/null; echo \"${COMPREPLY[*]}\"; }; "
                             "try --res; try --links s; try -t pre; try pict; try --view=x";
  const Finished finished = Program("/bin/bash", {"-c", script}).finish();
  EXPECT_EQ(linesOf(finished.output).at(0), "--resume");
  EXPECT_EQ(linesOf(finished.output).at(1), "safe");
  EXPECT_EQ(linesOf(finished.output).at(2), "preview");
  EXPECT_EQ(linesOf(finished.output).at(3), "picture");
}
