#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "pagerex/pagerex.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"

/// One conversion of a document through the exported functions, and what it left behind.
/// The main HTML file is "out.htm", the files folder "out.files".
class Converted {
 public:
  explicit Converted(const support::WordDocument& document, const std::vector<std::string>& options = {}) {
    document.save(source());
    std::vector<std::string> texts = options;
    std::vector<char*> argv;
    for (std::string& text : texts) argv.push_back(text.data());
    result = PageRex(source().c_str(), target().c_str(), static_cast<int>(argv.size()), argv.data());
  }
  /// With callbacks, in view mulpages.
  Converted(const support::WordDocument& document, int pageSize, IPageRexCallBack* callback) {
    document.save(source());
    result = pageRex(source().c_str(), target().c_str(), pageSize, callback);
  }

  std::string main() const { return folder.read("out.htm"); }
  std::string file(const std::string& name) const { return folder.read("out.files/" + name); }
  bool has(const std::string& name) const { return folder.exists("out.files/" + name); }
  std::string page(int number = 1) const { return file(std::to_string(number) + ".htm"); }
  int pageCount() const {
    int count = 0;
    while (has(std::to_string(count + 1) + ".htm")) ++count;
    return count;
  }

  /// Between the tags of the body.
  std::string body(int number = 1) const {
    return between(page(number), "<body style=\"background:#FFFFFF;\">\r\n", "\r\n</body>\r\n</html>");
  }
  /// What stands in the content block of the first section of a page.
  std::string text(int number = 1) const {
    const std::string inner =
        between(body(number), "<div style=\"position:relative;", "</div></div></div></center>");
    return inner.substr(inner.find('>') + 1);
  }

  support::TempFolder folder;
  int result = -1;

 private:
  std::string source() const { return folder.path("in.doc"); }
  std::string target() const { return folder.path("out.htm"); }

  static std::string between(const std::string& text, const std::string& from, const std::string& to) {
    const size_t begin = text.find(from);
    const size_t end = text.find(to, begin);
    if (begin == std::string::npos || end == std::string::npos)
      throw std::runtime_error("no " + from + " in " + text);
    return text.substr(begin + from.size(), end - begin - from.size());
  }
};

/// A paragraph and a run as they come out without properties, and the pieces they are made of.
inline std::string p(const std::string& content, const std::string& style = "std0") {
  return "<p class=\"" + style + "\" style=\"margin-top:0pt;\">" + content + "</p>\r\n";
}
inline std::string span(const std::string& content, const std::string& css = "line-height:10.5pt;") {
  return "<span style=\"" + css + "\">" + content + "</span>";
}
inline const std::string kEmpty = "<o:p>&nbsp;</o:p>";
