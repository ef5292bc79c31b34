// Reads an SVG as XML, without a tree.

#include <algorithm>
#include <array>
#include <vector>

#include "picture_check.h"

namespace fuzz {
namespace {

constexpr std::string_view kElements[] = {
    "svg",     "g",    "path",           "image",          "text", "tspan", "defs", "clipPath",
    "pattern", "stop", "linearGradient", "radialGradient", "mask", "rect",  "title"};

bool isNameCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == ':';
}

/// The length of one character of UTF-8 that XML has; 0 for none.
size_t characterLength(std::string_view text) {
  const auto byte = [&](size_t at) { return at < text.size() ? static_cast<uint8_t>(text[at]) : uint8_t{0}; };
  const uint8_t first = byte(0);
  if (first < 0x80) return first >= 0x20 || first == '\n' || first == '\t' || first == '\r' ? 1 : 0;
  const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4) return 0;
  uint32_t code = first & (0xFFU >> (length + 1));
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    code = code << 6 | (byte(i) & 0x3F);
  }
  constexpr std::array<uint32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
  const bool isCharacter = code >= kLeast[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF) &&
                           code != 0xFFFE && code != 0xFFFF;
  return isCharacter ? length : 0;
}

class SvgReader {
 public:
  explicit SvgReader(std::string_view text) : rest_(text) {}

  std::string Read() {
    if (rest_.substr(0, 5) != "<svg ") Fail("it does not begin with <svg>");
    while (wrong_.empty() && !rest_.empty()) {
      if (rest_.front() == '<') {
        ReadTag();
      } else {
        ReadCharacter("");
      }
    }
    if (wrong_.empty() && !open_.empty()) Fail("<" + std::string(open_.back()) + "> has no end");
    return wrong_;
  }

 private:
  void Fail(std::string why) {
    if (wrong_.empty()) wrong_ = std::move(why) + ", before: " + std::string(rest_.substr(0, 80));
  }

  void ReadTag() {
    rest_.remove_prefix(1);
    const bool isEnd = TakeIf('/');
    const std::string_view name = ReadName();
    if (isEnd) return EndElement(name);
    if (std::find(std::begin(kElements), std::end(kElements), name) == std::end(kElements))
      return Fail("<" + std::string(name) + "> is no element of pictures");
    if (open_.empty() && hasRoot_) return Fail("a second root");
    hasRoot_ = true;
    ReadAttributes();
    const bool isEmpty = TakeIf('/');
    if (!TakeIf('>')) return Fail("a tag has no end");
    if (!isEmpty) open_.push_back(name);
  }

  void EndElement(std::string_view name) {
    if (!TakeIf('>')) return Fail("an end tag has no end");
    if (open_.empty() || open_.back() != name) return Fail("</" + std::string(name) + "> ends nothing");
    open_.pop_back();
  }

  void ReadAttributes() {
    std::vector<std::string_view> names;
    while (wrong_.empty() && TakeIf(' ')) {
      const std::string_view name = ReadName();
      if (name.empty() || !TakeIf('=') || !TakeIf('"')) return Fail("an attribute without a value");
      if (std::find(names.begin(), names.end(), name) != names.end())
        return Fail(std::string(name) + " stands twice");
      names.push_back(name);
      const std::string_view before = rest_;
      while (wrong_.empty() && !rest_.empty() && rest_.front() != '"') ReadCharacter("<");
      const std::string_view value = before.substr(0, before.size() - rest_.size());
      if (!TakeIf('"')) return Fail("a value without an end");
      CheckAttribute(name, value);
    }
  }

  void CheckAttribute(std::string_view name, std::string_view value) {
    if (name.substr(0, 2) == "on") return Fail(std::string(name) + " runs");
    if (name == "href" || name == "xlink:href") {
      const bool isOwn = value.substr(0, 1) == "#";
      const bool isImage =
          value.substr(0, 11) == "data:image/" && value.find(";base64,") != std::string_view::npos;
      if (!isOwn && !isImage) return Fail("refers to " + std::string(value.substr(0, 60)));
      if (isImage) CheckBase64(value.substr(value.find(";base64,") + 8));
      return;
    }
    for (size_t at = value.find("url("); at != std::string_view::npos; at = value.find("url(", at + 1)) {
      if (value.substr(at + 4, 1) != "#") return Fail("refers to " + std::string(value.substr(0, 60)));
    }
    if (value.find("nan") != std::string_view::npos && name != "font-family") Fail("a number that is none");
    if ((name == "style") && value.substr(0, 15) != "mix-blend-mode:" &&
        value.substr(0, 12) != "white-space:")
      Fail("a style of " + std::string(value.substr(0, 60)));
  }

  void CheckBase64(std::string_view data) {
    const size_t end = data.find('=');
    const std::string_view body = data.substr(0, end),
                           pad = end == std::string_view::npos ? "" : data.substr(end);
    const bool isGood = data.size() % 4 == 0 && pad.size() <= 2 &&
                        pad.find_first_not_of('=') == std::string_view::npos &&
                        std::all_of(body.begin(), body.end(), [](char c) {
                          return (isNameCharacter(c) && c != '-' && c != ':') || c == '+' || c == '/';
                        });
    if (!isGood) Fail("an image that is not in base64");
  }

  void ReadCharacter(std::string_view others) {
    if (others.find(rest_.front()) != std::string_view::npos)
      return Fail("a character that must not stand there");
    if (rest_.front() == '&') return ReadEntity();
    const size_t length = characterLength(rest_);
    if (length == 0) return Fail("no character of XML");
    const bool isSpace = rest_.front() == '\n' || rest_.front() == ' ';
    if (open_.empty() && hasRoot_ && !isSpace && others.empty()) return Fail("text outside of the root");
    rest_.remove_prefix(length);
  }

  void ReadEntity() {
    constexpr std::string_view kEntities[] = {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;", "&#39;"};
    for (const std::string_view each : kEntities) {
      if (rest_.substr(0, each.size()) == each) return rest_.remove_prefix(each.size());
    }
    Fail("an unknown entity");
  }

  std::string_view ReadName() {
    size_t length = 0;
    while (length < rest_.size() && isNameCharacter(rest_[length])) ++length;
    const std::string_view name = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return name;
  }

  bool TakeIf(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::string_view rest_;
  std::vector<std::string_view> open_;
  bool hasRoot_ = false;
  std::string wrong_;
};

}  // namespace

std::string whatIsWrongWithSvg(std::string_view svg) {
  return SvgReader(svg).Read();
}

}  // namespace fuzz
