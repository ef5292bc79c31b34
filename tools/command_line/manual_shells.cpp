#include <cstdio>
#include <string>
#include <string_view>

#include "manual.h"
#include "option_table.h"
#include "pagerex/convert.h"

namespace cli {

namespace {

std::string replaced(std::string_view text, char from, std::string_view to) {
  std::string result;
  for (const char c : text) result += c == from ? std::string(to) : std::string(1, c);
  return result;
}

/// What may stand for the option's argument: "safe all none"; empty if it is no choice.
std::string choicesOf(const Option& option) {
  if (option.takes == Takes::kChoice) return replaced(option.choices, '|', " ");
  std::string names;
  if (option.takes != Takes::kFormatName) return names;
  for (int i = 0; const pagerex_format* format = pagerex_format_at(i); ++i)
    names += (i ? " " : "") + std::string(format->name);
  return names;
}

bool isPath(const Option& option) {
  return option.takes == Takes::kPath || option.takes == Takes::kFile;
}

/// "--output" and, if there is one, "|-o".
std::string spellings(const Option& option, const char* separator) {
  std::string text = std::string("--") + option.name;
  if (option.letter) text += std::string(separator) + "-" + option.letter;
  return text;
}

}  // namespace

void printBashCompletion() {
  std::string all;
  for (const Option& option : kOptions) all += (all.empty() ? "" : " ") + spellings(option, " ");
  std::puts(
      "# Completions of bash for pagerex.\n_pagerex() {\n  local word=${COMP_WORDS[COMP_CWORD]} "
      "before=${COMP_WORDS[COMP_CWORD-1]}\n  COMPREPLY=()\n  case $before in");
  for (const Option& option : kOptions) {
    if (option.id == kHelp || option.takes == Takes::kNothing) continue;
    std::printf("    %s)\n", spellings(option, "|").c_str());
    const std::string choices = choicesOf(option);
    if (!choices.empty())
      std::printf("      mapfile -t COMPREPLY < <(compgen -W '%s' -- \"$word\")\n", choices.c_str());
    if (isPath(option))
      std::puts("      compopt -o filenames\n      mapfile -t COMPREPLY < <(compgen -f -- \"$word\")");
    std::puts("      return\n      ;;");
  }
  std::printf(
      "  esac\n  if [[ $word == -* ]]; then\n    mapfile -t COMPREPLY < <(compgen -W '%s' -- \"$word\")\n",
      all.c_str());
  std::puts(
      "  else\n    local first=\n    if [[ $COMP_CWORD == 1 ]]; then first=picture; fi\n    compopt -o "
      "filenames\n"
      "    mapfile -t COMPREPLY < <(compgen -f -W \"$first\" -- \"$word\")\n  fi\n}\n"
      "complete -F _pagerex pagerex");
}

namespace {

/// ":NAME:(choices)" for what an option takes, as zsh has it.
std::string zshArgument(const Option& option) {
  if (!option.argument) return "";
  const std::string choices = choicesOf(option);
  std::string text = ":";
  text += replaced(option.argument, ':', "\\:") + ":";
  if (!choices.empty()) text += "(" + choices + ")";
  if (isPath(option)) text += "_files";
  return text;
}

void printZshOption(const Option& option) {
  const bool isOptional = option.id == kHelp;  // its argument stands behind a "=" or not at all
  const std::string help = replaced(replaced(replaced(option.help, '\'', "'\\''"), ':', "\\:"), ']', "\\]");
  const std::string argument = isOptional ? "" : zshArgument(option);
  const char* const joint = isOptional ? "=-" : option.argument ? "=" : "";
  if (option.letter) {
    const char* const behindLetter = option.argument && !isOptional ? "+" : "";
    std::printf("  '(-%c --%s)'{-%c%s,--%s%s}'[%s]%s' \\\n", option.letter, option.name, option.letter,
                behindLetter, option.name, joint, help.c_str(), argument.c_str());
  } else {
    std::printf("  '--%s%s[%s]%s' \\\n", option.name, joint, help.c_str(), argument.c_str());
  }
}

}  // namespace

void printZshCompletion() {
  std::puts("#compdef pagerex\n# Completions of zsh for pagerex.\n_arguments -s -S \\");
  for (const Option& option : kOptions) printZshOption(option);
  std::puts(
      "  '1:file:{_alternative \"commands:command:(picture)\" \"files:file:_files\"}' \\\n  '*:file:_files'");
}

void printFishCompletion() {
  std::puts(
      "# Completions of fish for pagerex.\n"
      "complete -c pagerex -n __fish_is_first_arg -a picture -d 'make a picture one that browsers show'");
  for (const Option& option : kOptions) {
    std::printf("complete -c pagerex -l %s", option.name);
    if (option.letter) std::printf(" -s %c", option.letter);
    const std::string choices = choicesOf(option);
    if (option.takes == Takes::kNothing || option.id == kHelp)
      std::printf(" -f");
    else
      std::printf(isPath(option) ? " -rF" : " -x");
    if (!choices.empty()) std::printf(" -a '%s'", choices.c_str());
    std::printf(" -d '%s'\n", replaced(option.help, '\'', "\\'").c_str());
  }
}

}  // namespace cli
