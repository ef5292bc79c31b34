#include "safety/one_page_rules.h"

#include <functional>
#include <set>

#include "safety/page_reader.h"

namespace safety {
namespace {

using Report = std::function<void(const std::string& fault)>;

// --- Bytes ---

/// How many bytes of UTF-8 the character in front takes; 0 for what is none. Surrogates, characters beyond
/// Unicode and spellings that are too long are none.
size_t characterLength(std::string_view text, char32_t& character) {
  const auto byte = [text](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
  const unsigned first = byte(0);
  const size_t length = first < 0x80       ? 1
                        : first >> 5 == 6  ? 2
                        : first >> 4 == 14 ? 3
                        : first >> 3 == 30 ? 4
                                           : 0;
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  if (length == 0) return 0;
  character = length == 1 ? first : first & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    if (byte(i) >> 6 != 2) return 0;
    character = character << 6 | (byte(i) & 0x3F);
  }
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  return character < kLeast[length] || character > 0x10FFFF || isSurrogate ? 0 : length;
}

/// Controls, and what Unicode says is no character; that of further planes does no harm.
bool mayStandInPages(char32_t character) {
  if (character < 0x20) return character == '\t' || character == '\n';
  if (character >= 0x7F && character < 0xA0) return false;
  return !(character >= 0xFDD0 && character < 0xFDF0) && character != 0xFFFE && character != 0xFFFF;
}

std::string faultOfBytes(std::string_view page) {
  for (size_t at = 0; at < page.size();) {
    char32_t character = 0;
    const size_t length = characterLength(page.substr(at), character);
    if (length == 0) return "no UTF-8 at byte " + std::to_string(at);
    if (!mayStandInPages(character)) return "a control character at byte " + std::to_string(at);
    at += length;
  }
  return page.starts_with("<!doctype html>") ? "" : "no document type";
}

// --- Elements ---

constexpr std::string_view kForbidden[] = {
    "script",   "iframe", "frame", "frameset", "object",    "embed",         "applet",   "base", "form",
    "link",     "audio",  "video", "source",   "track",     "foreignobject", "noscript", "xml",  "math",
    "template", "dialog", "set",   "animate",  "animation", "handler",       "portal",   "area",
};
/// They have no end.
constexpr std::string_view kVoid[] = {"br", "col", "hr", "img", "input", "meta", "wbr"};
/// A parser adds these, which is no mending.
constexpr std::string_view kImplied[] = {"html", "head", "body", "tbody", "colgroup"};

constexpr unsigned kMended = GUMBO_INSERTION_CONVERTED_FROM_END_TAG | GUMBO_INSERTION_FROM_ISINDEX |
                             GUMBO_INSERTION_FROM_IMAGE | GUMBO_INSERTION_RECONSTRUCTED_FORMATTING_ELEMENT |
                             GUMBO_INSERTION_ADOPTION_AGENCY_CLONED | GUMBO_INSERTION_ADOPTION_AGENCY_MOVED |
                             GUMBO_INSERTION_FOSTER_PARENTED;

std::string_view textOf(const GumboStringPiece& piece) {
  return {piece.data ? piece.data : "", piece.length};
}

/// By its own tag, or in itself as foreign elements may. The parser's flag for this says nothing of them.
bool isEnded(const GumboNode& node, const std::string& name) {
  const GumboElement& element = node.v.element;
  const bool isForeign = element.tag_namespace != GUMBO_NAMESPACE_HTML;
  if (isForeign && textOf(element.original_tag).ends_with("/>")) return true;
  return lower(textOf(element.original_end_tag)).starts_with("</" + name);
}

/// A parser moves what may not stand in a table in front of it.
bool areChildrenInOrder(const GumboNode& node) {
  const GumboVector& children = node.v.element.children;
  unsigned last = 0;
  for (unsigned i = 0; i < children.length; ++i) {
    const auto& child = *static_cast<const GumboNode*>(children.data[i]);
    const bool isElement = child.type == GUMBO_NODE_ELEMENT;
    const unsigned begin = isElement ? child.v.element.start_pos.offset : child.v.text.start_pos.offset;
    if (begin < last) return false;
    last = begin;
  }
  return true;
}

/// The length of a string that a style begins with, quotes included; 0 if it does not end on its line.
size_t stringLength(std::string_view css) {
  for (size_t i = 1; i < css.size() && css[i] != '\n'; ++i) {
    if (css[i] == css[0]) return i + 1;
    if (css[i] == '\\') ++i;
  }
  return 0;
}

/// Strings, such as names of fonts, mean nothing by themselves.
std::string faultOfStyle(std::string_view css) {
  std::string rest;
  while (!css.empty()) {
    const bool isString = css[0] == '"' || css[0] == '\'';
    const size_t length = isString ? stringLength(css) : 1;
    if (length == 0) return "a style with a string that does not end";
    if (!isString) rest += css[0];
    css.remove_prefix(length);
  }
  return runningStyle(rest);
}

void judgeElement(const GumboNode& node, const std::string& name, const Report& report) {
  if (isIn(kForbidden, name)) report("an element " + name);
  if (node.parse_flags & kMended) report("an element " + name + " that was mended or moved");
  if (!areChildrenInOrder(node)) report("an element " + name + " into which something was moved");
  const std::string style = name == "style" ? faultOfStyle(textIn(node)) : "";
  if (!style.empty()) report(style);
  if (!isIn(kVoid, name) && !isIn(kImplied, name) && !isEnded(node, name))
    report("an element " + name + " that nothing ends");
}

// --- Attributes ---

const char* valueOf(const GumboNode& node, const char* name) {
  const GumboAttribute* const attribute = gumbo_get_attribute(&node.v.element.attributes, name);
  return attribute ? attribute->value : "";
}

bool isAddressThatMayStand(const std::string& element, std::string_view address) {
  const std::string scheme = schemeOf(address);
  if (scheme.empty() || isSafeScheme(scheme)) return true;
  return scheme == "data" && (element == "img" || element == "image") && address.starts_with("data:image/");
}

/// Colours of gradients and heads of arrows are places of the page itself.
bool refersToItselfOnly(std::string_view value) {
  constexpr std::string_view kReference = "url(";
  for (size_t at = 0; (at = value.find(kReference, at)) != std::string_view::npos; at += kReference.size()) {
    if (value.substr(at + kReference.size(), 1) != "#") return false;
  }
  return true;
}

void judgeAttribute(const std::string& element, const GumboAttribute& attribute, bool anyAddress,
                    const Report& report) {
  const std::string name = lower(attribute.name);
  const bool mayLeadAnywhere = anyAddress && element == "a";
  if (isHandler(name) || name == "srcdoc") report("a handler " + name);
  if (name == "style") report("an attribute style");
  if (isAddress(name) && !mayLeadAnywhere && !isAddressThatMayStand(element, attribute.value))
    report("an address " + std::string(attribute.value));
  if (name != "alt" && name != "title" && name != "content" && !name.starts_with("aria-") &&
      !refersToItselfOnly(lower(attribute.value)))
    report("a reference " + std::string(attribute.value));
}

/// The policy is the only thing that a page tells a browser to do.
void judgeOrder(const GumboNode& node, const Report& report) {
  if (!gumbo_get_attribute(&node.v.element.attributes, "http-equiv")) return;
  if (lower(valueOf(node, "http-equiv")) != "content-security-policy") report("an order to the browser");
  if (!std::string_view(valueOf(node, "content")).starts_with("default-src 'none'"))
    report("a policy that allows what it does not name");
}

}  // namespace

std::string faultOfOnePage(const std::string& page, bool anyAddress) {
  std::string first = faultOfBytes(page);
  std::set<std::string> places;
  bool hasPolicy = false;
  const Report report = [&first](const std::string& fault) {
    if (first.empty()) first = fault;
  };
  readPage(page, [&](const GumboNode& node) {
    const std::string name = nameOf(node);
    judgeElement(node, name, report);
    judgeOrder(node, report);
    hasPolicy = hasPolicy || gumbo_get_attribute(&node.v.element.attributes, "http-equiv");
    const GumboVector& attributes = node.v.element.attributes;
    for (unsigned i = 0; i < attributes.length; ++i)
      judgeAttribute(name, *static_cast<const GumboAttribute*>(attributes.data[i]), anyAddress, report);
    const std::string place = valueOf(node, "id");
    if (!place.empty() && !places.insert(place).second) report("a place twice: " + place);
  });
  if (!hasPolicy) report("no policy");
  return first;
}

}  // namespace safety
