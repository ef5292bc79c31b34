#pragma once

#include <cstdlib>
#include <initializer_list>
#include <string>
#include <vector>

#include "pagerex/pagerex.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"

/// A document in a folder of its own, to be converted to "x.htm" there.
class Conversion {
 public:
  Conversion() = default;
  explicit Conversion(const support::WordDocument& document) { document.save(source()); }

  const support::TempFolder& folder() const { return folder_; }
  std::string source() const { return folder_.path("source.doc"); }
  std::string target() const { return folder_.path("x.htm"); }

  /// PageRex with these options.
  int run(std::initializer_list<const char*> options = {}) const { return runTo(target(), options); }
  int runTo(const std::string& path, std::initializer_list<const char*> options = {}) const {
    std::vector<char*> argv;
    for (const char* option : options) argv.push_back(const_cast<char*>(option));
    return PageRex(source().c_str(), path.c_str(), static_cast<int>(argv.size()), argv.data());
  }

  /// Names of all files but the source, relative to the folder.
  std::vector<std::string> output() const {
    std::vector<std::string> names;
    for (const std::string& name : folder_.files()) {
      if (name != "source.doc") names.push_back(name);
    }
    return names;
  }
  std::string main() const { return folder_.read("x.htm"); }
  std::string page(int number) const { return folder_.read("x.files/" + std::to_string(number) + ".htm"); }

 private:
  support::TempFolder folder_;
};

/// One paragraph of one run a text.
inline support::WordDocument documentOf(std::initializer_list<const char*> paragraphs) {
  support::WordDocument document;
  for (const char* text : paragraphs) document.paragraph(text);
  return document;
}

/// One paragraph with a run of its own for each text; its mark belongs to the last and counts as a character.
inline support::WordDocument documentOfRuns(std::initializer_list<const char*> runs) {
  support::WordDocument document;
  support::Paragraph& paragraph = document.paragraph();
  for (const char* text : runs) paragraph.breakRun().run(text);
  return document;
}
