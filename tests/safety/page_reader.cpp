#include "safety/page_reader.h"

#include <cctype>
#include <vector>

namespace safety {
namespace {

constexpr std::string_view kAddresses[] = {"href",       "src",      "action", "background", "data",
                                           "xlink:href", "o:href",   "cite",   "longdesc",   "formaction",
                                           "poster",     "codebase", "lowsrc", "dynsrc",     "ping",
                                           "usemap",     "profile",  "srcset", "manifest",   "datasrc"};
constexpr std::string_view kSchemes[] = {"http", "https", "mailto", "ftp", "ftps",
                                         "sftp", "tel",   "sms",    "news"};
constexpr std::string_view kRunningStyles[] = {
    "url(",        "expression(", "behavior:", "-moz-binding", "@import",
    "javascript:", "vbscript:",   "image(",    "image-set("};

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

}  // namespace

std::string lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

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

void readPage(const std::string& page, const std::function<void(const GumboNode&)>& visit) {
  GumboOptions options = kGumboDefaultOptions;
  GumboOutput* const output = gumbo_parse_with_options(&options, page.data(), page.size());
  forEachElement(output->root, visit);
  gumbo_destroy_output(&options, output);
}

std::string nameOf(const GumboNode& node) {
  if (node.v.element.tag != GUMBO_TAG_UNKNOWN) return gumbo_normalized_tagname(node.v.element.tag);
  GumboStringPiece piece = node.v.element.original_tag;
  gumbo_tag_from_original_text(&piece);
  return lower({piece.data, piece.data ? piece.length : 0});
}

std::string textIn(const GumboNode& node) {
  std::string text;
  const GumboVector& children = node.v.element.children;
  for (unsigned i = 0; i < children.length; ++i) {
    const auto& child = *static_cast<const GumboNode*>(children.data[i]);
    if (child.type == GUMBO_NODE_TEXT || child.type == GUMBO_NODE_WHITESPACE) text += child.v.text.text;
  }
  return text;
}

bool isHandler(std::string_view name) {
  return name.size() > 2 && name.starts_with("on") && name[2] >= 'a' && name[2] <= 'z';
}

bool isAddress(std::string_view name) {
  return isIn(kAddresses, name);
}

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

bool isSafeScheme(std::string_view scheme) {
  return isIn(kSchemes, scheme);
}

std::string runningStyle(std::string_view css) {
  const std::string plain = plainCss(css);
  for (const std::string_view word : kRunningStyles) {
    if (plain.find(word) != std::string::npos)
      return "style with " + std::string(word) + " in " + std::string(css);
  }
  return {};
}

}  // namespace safety
