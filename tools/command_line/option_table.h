#pragma once

#include <cstddef>

/// What the command line understands. Its reader, its help, the manual and the completions of shells are all
/// made of these tables.
namespace cli {

enum OptionId {
  kOutput = 1,
  kFormat,
  kLinks,
  kPictures,
  kPageSize,
  kRevisions,
  kHiddenText,
  kNoComments,
  kHeaders,
  kWidth,
  kFrontMatter,
  kPageBreaks,
  kCommonMark,
  kDark,
  kInfo,
  kFilesFrom,
  kNul,
  kAll,
  kJobs,
  kTimeout,
  kMemory,
  kReport,
  kResume,
  kView,
  kSafe,
  kProgress,
  kHelp,
  kVersion,
};

enum class Group { kOneDocument, kManyFiles, kTwoPaths, kPicture, kOther };

/// What an option's argument is: how it is read, and what shells offer for it.
enum class Takes { kNothing, kPath, kFile, kChoice, kFormatName, kNumber };

struct Option {
  OptionId id;
  const char* name;      ///< without the dashes
  char letter;           ///< 0 for none
  const char* argument;  ///< as it is called in the help; null for none
  Takes takes;
  const char* choices;  ///< separated by "|"; null where anything goes, or nothing
  Group group;
  bool isShown;      ///< in the short help
  const char* help;  ///< begins a line of its own: no full stop at its end
  const char* more;  ///< sentences that only the manual has
};

constexpr Option kOptions[] = {
    {kOutput, "output", 'o', "PATH", Takes::kPath, nullptr, Group::kOneDocument, true,
     "file to write, or folder for many",
     "Without it, and as \"-\", the result goes to standard output, if the format is a single file. A folder "
     "is one that is there, or a path that ends in \"/\"."},
    {kFormat, "format", 't', "FORMAT", Takes::kFormatName, nullptr, Group::kOneDocument, true,
     "what to write: html, or what the ending of PATH tells",
     "Without it, html goes to standard output and into a folder."},
    {kLinks, "links", 0, "WHICH", Takes::kChoice, "safe|all|none", Group::kOneDocument, true,
     "addresses to keep: safe (the default), all, none",
     "Of the others the text stays. Safe ones are relative, or have a scheme that harms nobody. With SOURCE "
     "TARGET only beside --safe."},
    {kPictures, "pictures", 0, "WHERE", Takes::kChoice, "files|embedded|none|web", Group::kOneDocument, true,
     "files, embedded, none or web",
     "Not every format can do each of them. Html embeds them by itself, the others have files. With web, "
     "which "
     "is for normal, phone and mulpages, there are files beside the document's own that browsers show."},
    {kPageSize, "pagesize", 0, "N", Takes::kNumber, nullptr, Group::kOneDocument, false,
     "characters on a page, or in all in the format preview",
     "2000 by default; a preview on standard output takes the whole document. Html is one page, which comes "
     "in pieces of N characters or more if this is given: out.html, out.files/2.html and so on, to be put "
     "together as they are."},
    {kRevisions, "revisions", 0, "WHICH", Takes::kChoice, "final|original|all", Group::kOneDocument, false,
     "tracked changes: final (the default), original, all",
     "Of html, text and markdown, as the two options that follow. With all, what was inserted and what was "
     "deleted stand side by side; html and markdown mark each."},
    {kHiddenText, "hidden-text", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, false,
     "write text that Word hides too", nullptr},
    {kNoComments, "no-comments", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, false,
     "leave out comments", "Else they stand behind the text, with their authors."},
    {kHeaders, "headers", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, false,
     "write headers and footers too", "In the format text, in front of their section."},
    {kWidth, "width", 0, "N", Takes::kNumber, nullptr, Group::kOneDocument, false,
     "wrap the lines of the format text at N columns",
     "20 or more; tables are fitted to it. Without it, a paragraph or a row is one line."},
    {kFrontMatter, "front-matter", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, false,
     "begin markdown with the document's properties", "As YAML between lines of dashes."},
    {kPageBreaks, "page-breaks", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, false,
     "mark in markdown where pages were broken", "As comments of HTML."},
    {kCommonMark, "common-mark", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, false,
     "write markdown as CommonMark alone", "Without GitHub's additions: its tables and notes."},
    {kDark, "dark", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, false,
     "make html dark where the reader's screen is", "Else pages are as light as paper everywhere."},
    {kInfo, "info", 0, nullptr, Takes::kNothing, nullptr, Group::kOneDocument, true,
     "tell what each FILE is, as JSON", "Nothing is converted. Works for files of any kind."},
    {kFilesFrom, "files-from", 0, "LIST", Takes::kFile, nullptr, Group::kManyFiles, false,
     "take the names of more files from LIST, one a line",
     "\"-\" is standard input. A name that is a folder's stands for the files in it."},
    {kNul, "null", '0', nullptr, Takes::kNothing, nullptr, Group::kManyFiles, false,
     "names in LIST end with a null byte", "As find -print0 writes them."},
    {kAll, "all", 0, nullptr, Takes::kNothing, nullptr, Group::kManyFiles, false,
     "take every file of a folder, whatever its name",
     "Else those whose names end in .doc, .dot or .wbk. Symbolic links in a folder are not followed."},
    {kJobs, "jobs", 'j', "N", Takes::kNumber, nullptr, Group::kManyFiles, true,
     "documents at a time; one for each core by default",
     "Each in a process of its own, which a broken document may take down without harm to the others."},
    {kTimeout, "timeout", 0, "SECONDS", Takes::kNumber, nullptr, Group::kManyFiles, true,
     "give up a document that takes longer", "Parts of a second may be given: 0.5."},
    {kMemory, "memory", 0, "SIZE", Takes::kNumber, nullptr, Group::kManyFiles, false,
     "give up a document that takes more: 64M",
     "Bytes, or with K, M or G behind it KiB, MiB or GiB. A conversion takes some 700 KiB at least."},
    {kReport, "report", 0, "FILE", Takes::kFile, nullptr, Group::kManyFiles, true,
     "add a line of JSON for each document to FILE",
     "A line is written as its document ends, and stays if the run is broken off."},
    {kResume, "resume", 0, nullptr, Takes::kNothing, nullptr, Group::kManyFiles, true,
     "leave out what the report holds already",
     "With the same content, version and options, and if its result is still there."},
    {kView, "view", 0, "VIEW", Takes::kChoice, "normal|phone|preview|mulpages", Group::kTwoPaths, false,
     "view of TARGET; normal by default", nullptr},
    {kSafe, "safe", 0, nullptr, Takes::kNothing, nullptr, Group::kTwoPaths, false,
     "nothing of the document runs in the pages", "Without it, show them in a sandboxed frame."},
    {kProgress, "progress", 0, nullptr, Takes::kNothing, nullptr, Group::kTwoPaths, false,
     "print each finished page", "Only with --view mulpages, and not with --safe."},
    {kHelp, "help", 'h', "all", Takes::kChoice, "all", Group::kOther, true,
     "show this; --help=all shows more", nullptr},
    {kVersion, "version", 0, nullptr, Takes::kNothing, nullptr, Group::kOther, false, "show the version",
     nullptr},
};

constexpr char kManualDate[] = "2026-11-22";

constexpr const char* kSynopses[] = {
    "pagerex [--view normal|phone|preview|mulpages] [OPTIONS] SOURCE TARGET",
    "pagerex [OPTIONS] [-t FORMAT] [-o PATH] FILE",
    "pagerex [OPTIONS] [-t FORMAT] -o FOLDER FILES...",
    "pagerex picture [-o PATH] FILE",
};

struct GroupText {
  Group group;
  const char* title;
  const char* text;
};
constexpr GroupText kGroups[] = {
    {Group::kOneDocument, "One document",
     "FILE is a document to read, or \"-\" for standard input. Nothing of it runs in what is written."},
    {Group::kManyFiles, "Many files",
     "Files, and folders, whose files are taken with those in the folders below. Their results lie in FOLDER "
     "as they lie below the folder that is common to all. Each result is whole or not there; no file that "
     "was "
     "given is ever overwritten."},
    {Group::kTwoPaths, "SOURCE and TARGET",
     "Two paths and no other options than these, --pagesize and --links: the pages of the named view, as "
     "they "
     "always were. SOURCE must be writable, though nothing is written to it. TARGET is the main file; a "
     "folder "
     "beside it, out.files for out.html, takes the others."},
    {Group::kPicture, "A picture",
     "Behind the word picture, FILE is one for browsers to show, or \"-\" for standard input: a Windows "
     "metafile, an enhanced one or a Macintosh PICT becomes SVG, a bitmap or a TIFF becomes PNG; PNG, JPEG "
     "and "
     "GIF stay as they are. Kinds are told by the bytes, not by names. A PATH that ends in .svg, .png, .jpg "
     "or "
     ".gif must be what comes of FILE; in a folder it takes the name of FILE, and the ending. No other "
     "options "
     "but --timeout and --memory. A FILE that is called picture itself is ./picture."},
    {Group::kOther, "Other", nullptr},
};

struct Example {
  const char* command;
  const char* what;
  bool isShown;  ///< in the short help
};
constexpr Example kExamples[] = {
    {"pagerex -o letter.html letter.doc", "a page, pictures and all", true},
    {"pagerex -t text letter.doc", "the text, on the terminal", true},
    {"pagerex letter.doc > letter.html", "the same page", false},
    {"pagerex --pagesize 20000 -o novel.html novel.doc", "a long page, in pieces", false},
    {"pagerex --info unknown.bin", "what is this file?", false},
    {"pagerex -o out/ --report report.jsonl documents", "a whole folder", true},
    {"pagerex -o out/ --report report.jsonl --resume documents", "go on where it was broken off", false},
    {"find . -name '*.doc' -print0 | pagerex -o out/ --files-from - -0", "what another program finds", false},
    {"pagerex picture -o chart.svg chart.emf", "a metafile, for browsers", true},
    {"pagerex --view mulpages --pagesize 5000 letter.doc letter.html", "numbered pages of one view", false},
};

struct ExitCode {
  int code;
  const char* meaning;
};
constexpr ExitCode kExitCodes[] = {
    {0, "converted, all of them"},
    {1, "the arguments make no sense, or the output would destroy a document"},
    {2, "something was not converted, or not written to its end"},
    {3, "SOURCE cannot be opened"},
    {4, "TARGET cannot be created"},
};

}  // namespace cli
