#include "arguments.h"

#include <getopt.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <set>
#include <string_view>

#include "files.h"
#include "help.h"
#include "option_table.h"

namespace cli {

namespace {

// Values. Each reader returns what is wrong with its argument, or nothing.

template <typename Number>
bool readNumber(std::string_view text, Number& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc() && result.ptr == text.data() + text.size() && number > 0;
}

std::string readPageSize(const std::string& text, Request& request) {
  return readNumber(text, request.pageSize) ? "" : text + " is no number of characters";
}

std::string readWidth(const std::string& text, Request& request) {
  constexpr int kLeast = 20;
  return readNumber(text, request.width) && request.width >= kLeast
             ? ""
             : text + " is no number of columns from " + std::to_string(kLeast) + " on";
}

std::string readJobs(const std::string& text, Request& request) {
  constexpr int kMostJobs = 1000;
  return readNumber(text, request.jobs) && request.jobs <= kMostJobs ? ""
                                                                     : text + " is no number of documents";
}

/// Seconds, to thousandths.
std::string readTimeout(const std::string& text, Request& request) {
  constexpr uint64_t kMostSeconds = 10'000'000;
  const size_t dot = std::min(text.find('.'), text.size());
  std::string parts = text.substr(dot == text.size() ? dot : dot + 1);
  uint64_t seconds = 0, thousandths = 0;
  const bool hasSeconds = readNumber(text.substr(0, dot), seconds);
  parts.resize(3, '0');
  const bool hasParts = readNumber(parts, thousandths);
  const bool isNumber = text.size() > dot + 1 || dot == text.size();
  const bool digitsOnly = text.find_first_not_of("0123456789.") == std::string::npos;
  request.timeoutMs = seconds * 1000 + thousandths;
  return isNumber && digitsOnly && (hasSeconds || hasParts) && seconds <= kMostSeconds
             ? ""
             : text + " is no number of seconds";
}

std::string readMemory(const std::string& text, Request& request) {
  constexpr std::string_view kUnits = "KMG";
  std::string wrong = text + " is no number of bytes";
  if (text.empty()) return wrong;
  const size_t unit = kUnits.find(static_cast<char>(text.back() & ~0x20));
  const size_t shift = unit == std::string_view::npos ? 0 : 10 * (unit + 1);
  if (!readNumber(std::string_view(text).substr(0, text.size() - (shift ? 1 : 0)), request.memory))
    return wrong;
  if (request.memory > (std::numeric_limits<uint64_t>::max() >> shift)) return wrong;
  request.memory <<= shift;
  return "";
}

std::string readFormat(const std::string& text, Request& request) {
  request.format = text;
  std::string names;
  for (int i = 0; const pagerex_format* format = pagerex_format_at(i); ++i) {
    if (text == format->name) return "";
    names += (i ? ", " : "") + std::string(format->name);
  }
  return "no format " + text + "; there are " + names;
}

/// The place of a word among those of the table, which stand in the order of the library's numbers.
size_t placeAmong(std::string_view choices, const std::string& word) {
  for (size_t place = 0;; ++place) {
    const size_t end = std::min(choices.find('|'), choices.size());
    if (choices.substr(0, end) == word) return place;
    if (end == choices.size()) return std::string_view::npos;
    choices.remove_prefix(end + 1);
  }
}

struct Reader {
  OptionId id;
  bool Request::*flag;
  std::string Request::*text;
  std::string (*read)(const std::string&, Request&);
};
constexpr Reader kReaders[] = {
    {kOutput, nullptr, &Request::output, nullptr},
    {kFormat, nullptr, nullptr, readFormat},
    {kLinks, nullptr, &Request::linksWord, nullptr},
    {kPictures, nullptr, nullptr, nullptr},
    {kPageSize, nullptr, nullptr, readPageSize},
    {kRevisions, nullptr, &Request::revisionsWord, nullptr},
    {kHiddenText, &Request::hiddenText, nullptr, nullptr},
    {kNoComments, &Request::noComments, nullptr, nullptr},
    {kHeaders, &Request::headers, nullptr, nullptr},
    {kWidth, nullptr, nullptr, readWidth},
    {kFrontMatter, &Request::frontMatter, nullptr, nullptr},
    {kPageBreaks, &Request::pageBreaks, nullptr, nullptr},
    {kCommonMark, &Request::commonMark, nullptr, nullptr},
    {kDark, &Request::dark, nullptr, nullptr},
    {kInfo, &Request::info, nullptr, nullptr},
    {kFilesFrom, nullptr, &Request::filesFrom, nullptr},
    {kNul, &Request::endsWithNull, nullptr, nullptr},
    {kAll, &Request::all, nullptr, nullptr},
    {kJobs, nullptr, nullptr, readJobs},
    {kTimeout, nullptr, nullptr, readTimeout},
    {kMemory, nullptr, nullptr, readMemory},
    {kReport, nullptr, &Request::report, nullptr},
    {kResume, &Request::resume, nullptr, nullptr},
    {kView, nullptr, &Request::view, nullptr},
    {kSafe, &Request::safe, nullptr, nullptr},
    {kProgress, &Request::progress, nullptr, nullptr},
    {kHelp, nullptr, &Request::help, nullptr},
    {kVersion, &Request::version, nullptr, nullptr},
};

const Option& optionOf(int id) {
  return *std::find_if(std::begin(kOptions), std::end(kOptions),
                       [&](const Option& option) { return option.id == id; });
}

/// The argument of an option, by the tables. Returns what is wrong.
std::string take(const Option& option, const char* argument, Request& request) {
  const Reader& reader = *std::find_if(std::begin(kReaders), std::end(kReaders),
                                       [&](const Reader& one) { return one.id == option.id; });
  if (reader.flag) request.*reader.flag = true;
  if (!argument) return "";
  const std::string word = argument;
  if (reader.text) request.*reader.text = word;
  if (reader.read) return reader.read(word, request);
  if (!option.choices) return word.empty() ? "is empty" : "";
  const size_t place = placeAmong(option.choices, word);
  if (place == std::string_view::npos)
    return option.id == kView ? "no view " + word : "no such choice as " + word;
  if (option.id == kLinks) request.links = static_cast<int>(place);
  if (option.id == kPictures) request.pictures = static_cast<int>(place) + PAGEREX_PICTURES_FILES;
  if (option.id == kRevisions) request.revisions = static_cast<int>(place);
  return "";
}

// The options together.

using Given = std::set<int>;

/// The first option given that is of the group and is not `except`; null for none.
const Option* anyOf(const Given& given, Group group, std::initializer_list<int> except = {}) {
  for (const Option& option : kOptions) {
    const bool counts = std::find(except.begin(), except.end(), option.id) == except.end();
    if (counts && option.group == group && given.count(option.id)) return &option;
  }
  return nullptr;
}

bool checkTwoPaths(const Request& request, const Given& given) {
  if (request.progress && request.view != "mulpages")
    return twoPathsUsageError("--progress goes with --view mulpages only"), false;
  if (request.progress && request.safe) return twoPathsUsageError("--progress has no safe pages"), false;
  if (given.count(kLinks) && !request.safe) return twoPathsUsageError("--links goes with --safe only"), false;
  if (given.count(kPageSize) && (request.view.empty() || request.view == "normal")) {
    return twoPathsUsageError("--pagesize has no meaning in view normal, which is one page"), false;
  }
  if (request.files.size() != 2)
    return twoPathsUsageError("SOURCE and TARGET are needed, and nothing else"), false;
  return true;
}

bool namesFolder(const std::string& path) {
  return !path.empty() && (path.back() == '/' || isFolder(path));
}

bool checkManyFiles(const Request& request) {
  if (request.output.empty() || request.output == "-")
    return usageError("several files need a folder for what is written: -o FOLDER"), false;
  if (!isFolder(request.output) && access(request.output.c_str(), F_OK) == 0)
    return usageError(request.output + ": is no folder"), false;
  if (request.resume && request.report.empty()) return usageError("--resume needs a --report"), false;
  if (request.endsWithNull && request.filesFrom.empty())
    return usageError("-0 goes with --files-from only"), false;
  if (std::find(request.files.begin(), request.files.end(), "-") != request.files.end())
    return usageError("standard input is one document, and goes with no other"), false;
  return true;
}

/// An option that SOURCE and TARGET alone do not have.
const Option* optionOfOthers(const Given& given) {
  const Option* const ofOne = anyOf(given, Group::kOneDocument, {kPageSize, kLinks});
  return ofOne ? ofOne : anyOf(given, Group::kManyFiles);
}

bool isOfTwoPaths(const Request& request, const Given& given) {
  return anyOf(given, Group::kTwoPaths) || (request.files.size() == 2 && !optionOfOthers(given));
}

bool checkPicture(const Request& request, const Given& given) {
  for (const Option& option : kOptions) {
    const bool goesWithIt = option.id == kOutput || option.id == kTimeout || option.id == kMemory;
    if (given.count(option.id) && !goesWithIt)
      return usageError(std::string("--") + option.name + " does not go with a picture"), false;
  }
  return request.files.size() == 1 || (usageError("a picture is needed, and nothing else"), false);
}

bool checkForm(Request& request, const Given& given) {
  if (request.form == Form::kPicture) return checkPicture(request, given);
  const Option* const ofMany = anyOf(given, Group::kManyFiles);
  if (isOfTwoPaths(request, given)) {
    request.form = Form::kTwoPaths;
    const Option* const ofOthers = optionOfOthers(given);
    if (ofOthers)
      return twoPathsUsageError(std::string("--") + ofOthers->name + " does not go with SOURCE TARGET"),
             false;
    return checkTwoPaths(request, given);
  }
  if (request.files.empty() && request.filesFrom.empty()) return usageError("a FILE is needed"), false;
  if (request.info) {
    request.form = Form::kInfo;
    const Option* const other = given.count(kOutput) ? &optionOf(kOutput) : ofMany;
    return !other || (usageError(std::string("--info does not go with --") + other->name), false);
  }
  const bool hasFolder = std::any_of(request.files.begin(), request.files.end(), isFolder);
  if (request.files.size() > 1 || !request.filesFrom.empty() || hasFolder || namesFolder(request.output)) {
    request.form = Form::kManyFiles;
    return checkManyFiles(request);
  }
  const Option* const manyOnly = anyOf(given, Group::kManyFiles, {kTimeout, kMemory});
  return !manyOnly ||
         (usageError(std::string("--") + manyOnly->name + " is for many files: name a folder, -o FOLDER/"),
          false);
}

// The library that reads the arguments.

struct Getopt {
  std::string letters;
  std::vector<option> rows;
};

Getopt tableForGetopt() {
  Getopt table;
  for (const Option& one : kOptions) {
    const int argument = one.id == kHelp ? optional_argument : one.argument ? required_argument : no_argument;
    table.rows.push_back({one.name, argument, nullptr, one.id});
    if (!one.letter) continue;
    table.letters += one.letter;
    if (argument == required_argument) table.letters += ':';
  }
  table.rows.push_back({});
  return table;
}

int idOf(int found) {
  if (found == '?') return 0;
  for (const Option& one : kOptions) {
    if (one.letter && one.letter == found) return one.id;
  }
  return found;
}

}  // namespace

bool readArguments(int argc, char** argv, Request& request, int& exitCode) {
  if (argc > 1 && std::strcmp(argv[1], "picture") == 0) {
    request.form = Form::kPicture;
    argv[1] = argv[0];  // whose name getopt tells
    --argc;
    ++argv;
  }
  const Getopt table = tableForGetopt();
  Given given;
  bool isKnown = true;
  std::string wrong;
  exitCode = kUsageError;
  for (int found;
       (found = getopt_long(argc, argv, table.letters.c_str(), table.rows.data(), nullptr)) != -1;) {
    const int id = idOf(found);
    if (id == 0) {
      opterr = 0;  // getopt has said why
      isKnown = false;
      continue;
    }
    const Option& option = optionOf(id);
    given.insert(id);
    if (!wrong.empty() || !isKnown) continue;  // what else is there tells which uses to show
    if (const std::string what = take(option, optarg, request); !what.empty()) {
      wrong = std::string("--") + option.name + ": " + what;
      opterr = 0;  // the first mistake is told of, and no other
    } else if (id == kHelp || id == kVersion) {
      return id == kHelp ? printHelp(!request.help.empty()) : printVersion(), exitCode = kSuccess, false;
    }
  }
  request.files.assign(argv + optind, argv + argc);
  if (isKnown && wrong.empty()) return checkForm(request, given);
  const bool ofTwoPaths = request.form != Form::kPicture && isOfTwoPaths(request, given);
  if (wrong.empty()) return printUsage(ofTwoPaths), false;
  ofTwoPaths ? twoPathsUsageError(wrong) : usageError(wrong);
  return false;
}

}  // namespace cli
