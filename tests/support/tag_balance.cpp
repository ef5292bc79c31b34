#include "support/tag_balance.h"

#include <algorithm>
#include <cctype>

namespace support {

namespace {

constexpr std::string_view kConditional = "[if]";
constexpr std::string_view kVoidElements[] = {"base", "br", "col", "hr", "img", "input", "link", "meta"};
constexpr std::string_view kRawElements[] = {"script", "style"};

template <size_t N>
bool isOneOf(const std::string_view (&names)[N], std::string_view name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

class TagWalk {
 public:
  explicit TagWalk(std::string_view page) : rest_(page) {}

  std::vector<LoneTag> walk() {
    for (size_t at; (at = rest_.find('<')) != rest_.npos;) {
      rest_.remove_prefix(at);
      step();
    }
    closeDownTo(0);
    return std::move(lone_);
  }

 private:
  void step() {
    if (rest_.starts_with("<!--[if") || rest_.starts_with("<![if")) return openConditional();
    if (rest_.starts_with("<![endif]")) return closeConditional();
    if (rest_.starts_with("<!--")) return skipBehind("-->");
    if (rest_.starts_with("<!") || rest_.starts_with("<?")) return skipBehind(">");
    if (rest_.starts_with("</")) return endTag();
    if (rest_.size() > 1 && std::isalpha(static_cast<unsigned char>(rest_[1]))) return startTag();
    rest_.remove_prefix(1);
  }

  void openConditional() {
    skipBehind(">");
    open_.emplace_back(kConditional);
  }

  void closeConditional() {
    skipBehind(">");
    const auto start = std::find(open_.rbegin(), open_.rend(), kConditional);
    if (start == open_.rend()) return lone(LoneTag::kEnd, std::string(kConditional));
    closeDownTo(static_cast<size_t>(open_.rend() - start));
    open_.pop_back();
  }

  void startTag() {
    const std::string_view tag = takeTag();
    const std::string name = nameOf(tag.substr(1));
    if (tag.ends_with("/>") || isOneOf(kVoidElements, name)) return;
    if (isOneOf(kRawElements, name)) {
      const size_t end = rest_.find("</" + name);
      if (end == rest_.npos) lone(LoneTag::kStart, name);
      rest_.remove_prefix(std::min(end, rest_.size()));
      return skipBehind(">");
    }
    open_.push_back(name);
  }

  void endTag() {
    const std::string name = nameOf(takeTag().substr(2));
    if (isOneOf(kVoidElements, name)) return;
    const auto bound = std::find(open_.rbegin(), open_.rend(), kConditional);
    const auto start = std::find(open_.rbegin(), bound, name);
    if (start == bound) return lone(LoneTag::kEnd, name);
    closeDownTo(static_cast<size_t>(open_.rend() - start));
    open_.pop_back();
  }

  /// Up to the ">" that is in no quotes.
  std::string_view takeTag() {
    char quote = 0;
    size_t end = 0;
    for (; end < rest_.size() && (quote || rest_[end] != '>'); ++end) {
      const char c = rest_[end];
      if (quote) {
        if (c == quote) quote = 0;
      } else if (c == '"' || c == '\'') {
        quote = c;
      }
    }
    const std::string_view tag = rest_.substr(0, end + 1);
    rest_.remove_prefix(tag.size());
    return tag;
  }

  static std::string nameOf(std::string_view text) {
    std::string name;
    for (const char c : text) {
      if (!std::isalnum(static_cast<unsigned char>(c)) && c != ':') break;
      name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return name;
  }

  void skipBehind(std::string_view mark) {
    const size_t at = rest_.find(mark);
    rest_.remove_prefix(at == rest_.npos ? rest_.size() : at + mark.size());
  }

  void closeDownTo(size_t depth) {
    for (; open_.size() > depth; open_.pop_back()) lone(LoneTag::kStart, open_.back());
  }

  void lone(LoneTag::Kind kind, std::string element) { lone_.push_back({kind, std::move(element)}); }

  std::string_view rest_;
  std::vector<std::string> open_;
  std::vector<LoneTag> lone_;
};

}  // namespace

std::vector<LoneTag> loneTags(std::string_view page) {
  return TagWalk(page).walk();
}

}  // namespace support
