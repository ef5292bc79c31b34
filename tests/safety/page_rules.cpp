#include "safety/page_rules.h"

#include <gumbo.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <iterator>
#include <regex>
#include <vector>

#include "objectwriter/shape_script.h"

namespace safety {
namespace {

constexpr std::string_view kRunning[] = {"script", "style", "iframe", "frame", "object",  "embed",   "applet",
                                         "meta",   "base",  "link",   "form",  "svg",     "math",    "audio",
                                         "video",  "input", "button", "xml",   "isindex", "template"};
constexpr std::string_view kAddresses[] = {"href",       "src",      "action", "background", "data",
                                           "xlink:href", "o:href",   "cite",   "longdesc",   "formaction",
                                           "poster",     "codebase", "lowsrc", "dynsrc",     "ping",
                                           "usemap",     "profile",  "srcset", "manifest",   "datasrc"};
constexpr std::string_view kSchemes[] = {"http", "https", "mailto", "ftp", "ftps",
                                         "sftp", "tel",   "sms",    "news"};
constexpr std::string_view kRunningStyles[] = {
    "url(",        "expression(", "behavior:", "-moz-binding", "@import",
    "javascript:", "vbscript:",   "image(",    "image-set("};

constexpr std::string_view kPictures[] = {".png", ".jpg", ".wmf", ".dib", ".bmp", ".bin"};

template <class Table>
bool isIn(const Table& table, std::string_view text) {
  return std::find(std::begin(table), std::end(table), text) != std::end(table);
}

std::string lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

/// A script or a handler, whatever numbers and colours are in it.
std::string normal(std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size();) {
    const bool isNumber =
        std::isdigit(static_cast<unsigned char>(text[i])) != 0 ||
        (text[i] == '-' && i + 1 < text.size() && std::isdigit(static_cast<unsigned char>(text[i + 1])));
    size_t end = i + 1;
    if (isNumber) {
      while (end < text.size() && (std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == '.'))
        ++end;
      out += '0';
    } else if (text[i] == '#' && text.size() - i >= 7 &&
               std::all_of(text.begin() + static_cast<ptrdiff_t>(i) + 1,
                           text.begin() + static_cast<ptrdiff_t>(i) + 7,
                           [](unsigned char c) { return std::isxdigit(c); })) {
      end = i + 7;
      out += "#0";
    } else {
      out += text[i];
    }
    i = end;
  }
  return out;
}

/// The scheme by which a browser takes an address: controls and blanks in front do not count, nor do tabs and
/// line ends anywhere. "//" for one that goes to another host without a scheme; empty for none.
std::string schemeOf(std::string_view address) {
  // What the parser puts in the place of a control character.
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
  while (address.starts_with(kReplacement) ||
         (!address.empty() && static_cast<unsigned char>(address[0]) <= ' ')) {
    address.remove_prefix(address.starts_with(kReplacement) ? kReplacement.size() : 1);
  }
  std::string text;
  for (const char c : address) {
    if (c != '\t' && c != '\n' && c != '\r') text += c;
  }
  const auto isSlash = [&](size_t at) { return at < text.size() && (text[at] == '/' || text[at] == '\\'); };
  if (isSlash(0) && isSlash(1)) return "//";
  size_t end = 0;
  while (end < text.size() && (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '+' ||
                               text[end] == '-' || text[end] == '.')) {
    ++end;
  }
  return end > 0 && end < text.size() && text[end] == ':' ? lower(text.substr(0, end)) : "";
}

/// CSS without its escapes, comments and blanks; an escaped character other than a letter or digit is one of
/// a string, which means nothing.
std::string plainCss(std::string_view css) {
  std::string out;
  for (size_t i = 0; i < css.size();) {
    if (css.substr(i, 2) == "/*") {
      const size_t end = css.find("*/", i + 2);
      i = end == std::string_view::npos ? css.size() : end + 2;
    } else if (css[i] == '\\') {
      size_t end = i + 1;
      while (end < css.size() && end < i + 7 && std::isxdigit(static_cast<unsigned char>(css[end]))) ++end;
      const unsigned long code =
          end > i + 1 ? std::stoul(std::string(css.substr(i + 1, end - i - 1)), nullptr, 16) : 0;
      out += code < 0x80 && std::isalnum(static_cast<int>(code)) ? static_cast<char>(code) : '?';
      if (end == i + 1) ++end;
      i = end < css.size() && css[end] == ' ' ? end + 1 : end;
    } else if (!std::isspace(static_cast<unsigned char>(css[i]))) {
      out += css[i++];
    } else {
      ++i;
    }
  }
  return lower(out);
}

std::string runningStyle(std::string_view css) {
  const std::string plain = plainCss(css);
  for (const std::string_view word : kRunningStyles) {
    if (plain.find(word) != std::string::npos)
      return "style with " + std::string(word) + " in " + std::string(css);
  }
  return {};
}

/// Each function once at most, in any order.
bool isLibraryScript(std::string_view text) {
  for (const std::string_view script :
       {ObjectWriter::kDrawEllipseScript, ObjectWriter::kDrawLineScript, ObjectWriter::kDrawEllipseScript}) {
    if (text.starts_with(script)) text.remove_prefix(script.size());
  }
  return text.empty();
}

using Report = std::function<void(const std::string& thing)>;

std::string nameOf(const GumboNode& node) {
  if (node.v.element.tag != GUMBO_TAG_UNKNOWN) return gumbo_normalized_tagname(node.v.element.tag);
  GumboStringPiece piece = node.v.element.original_tag;
  gumbo_tag_from_original_text(&piece);
  return lower({piece.data, piece.data ? piece.length : 0});
}

/// Visits all elements without recursion: pages nest deeply where somebody wants them to.
void forEachElement(const GumboNode* root, const std::function<void(const GumboNode&)>& visit) {
  std::vector<const GumboNode*> open = {root};
  while (!open.empty()) {
    const GumboNode& node = *open.back();
    open.pop_back();
    if (node.type != GUMBO_NODE_ELEMENT && node.type != GUMBO_NODE_TEMPLATE) continue;
    visit(node);
    const GumboVector& children = node.v.element.children;
    for (unsigned i = children.length; i > 0; --i)
      open.push_back(static_cast<const GumboNode*>(children.data[i - 1]));
  }
}

/// VML has an attribute that is called "on".
bool isHandler(std::string_view name) {
  return name.size() > 2 && name.starts_with("on") && name[2] >= 'a' && name[2] <= 'z';
}

/// What must be known: elements that run something with their attributes and text, and handlers.
void reportRunning(const GumboNode& node, const Report& report) {
  const std::string name = nameOf(node);
  const GumboVector& attributes = node.v.element.attributes;
  std::string whole = "<" + name;
  for (unsigned i = 0; i < attributes.length; ++i) {
    const auto& each = *static_cast<const GumboAttribute*>(attributes.data[i]);
    const std::string text = lower(each.name) + "=" + normal(each.value);
    if (isHandler(lower(each.name)) || text.starts_with("srcdoc=")) report("handler " + text);
    whole += " " + text;
  }
  if (!isIn(kRunning, name)) return;
  const GumboVector& children = node.v.element.children;
  for (unsigned i = 0; i < children.length; ++i) {
    const auto& child = *static_cast<const GumboNode*>(children.data[i]);
    if (child.type == GUMBO_NODE_TEXT || child.type == GUMBO_NODE_WHITESPACE)
      whole += normal(child.v.text.text);
  }
  report(whole);
}

void judgeAttributes(const GumboNode& node, bool anyAddress, const Report& report) {
  const GumboVector& attributes = node.v.element.attributes;
  for (unsigned i = 0; i < attributes.length; ++i) {
    const auto& each = *static_cast<const GumboAttribute*>(attributes.data[i]);
    const std::string name = lower(each.name);
    if (name == "style") {
      const std::string found = runningStyle(each.value);
      if (!found.empty()) report(found);
    }
    const std::string scheme = isIn(kAddresses, name) ? schemeOf(each.value) : "";
    if (!anyAddress && !scheme.empty() && !isIn(kSchemes, scheme)) report(name + " " + each.value);
  }
}

/// The page as readers of conditional comments get it.
std::string withoutConditions(std::string_view page) {
  std::string text(page);
  for (const std::string_view mark :
       {"<!--[if gte vml 1]>", "<!--[if !mso]>", "<![endif]-->", "<![if !vml]>", "<![endif]>"}) {
    for (size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) text.erase(at, mark.size());
  }
  return text;
}

void readPage(const std::string& page, const std::function<void(const GumboNode&)>& visit) {
  GumboOptions options = kGumboDefaultOptions;
  GumboOutput* const output = gumbo_parse_with_options(&options, page.data(), page.size());
  forEachElement(output->root, visit);
  gumbo_destroy_output(&options, output);
}

}  // namespace

void PageRules::learn(std::string_view page) {
  const auto visit = [this](const GumboNode& node) {
    reportRunning(node, [this](const std::string& thing) { known_.insert(thing); });
  };
  readPage(std::string(page), visit);
  readPage(withoutConditions(page), visit);
}

std::string PageRules::violation(std::string_view page, bool anyAddress) const {
  std::string first;
  const auto note = [&first](const std::string& thing) {
    if (first.empty()) first = thing;
  };
  const auto visit = [&](const GumboNode& node) {
    reportRunning(node, [&](const std::string& thing) {
      if (!known_.contains(thing)) note(thing);
    });
    judgeAttributes(node, anyAddress, note);
  };
  readPage(std::string(page), visit);
  readPage(withoutConditions(page), visit);
  return first;
}

std::string PageRules::fileViolation(std::string_view name, std::string_view text) {
  const std::string_view extension = name.substr(std::min(name.rfind('.'), name.size()));
  if (extension == ".css")
    return text.find('<') == std::string_view::npos ? runningStyle(text) : "< in a style sheet";
  if (name.ends_with("shapejs.js")) return isLibraryScript(text) ? "" : "script of somebody else";
  return isIn(kPictures, extension) ? "" : "a file that may be a page: " + std::string(name);
}

}  // namespace safety
