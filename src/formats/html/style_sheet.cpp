#include "formats/html/style_sheet.h"

#include "base/number_text.h"
#include "base/utf8.h"

namespace pagerex {
namespace {

void appendRule(std::string& rules, std::string_view name, std::string_view declarations) {
  if (declarations.ends_with(';')) declarations.remove_suffix(1);
  rules.append(".").append(name).append("{").append(declarations).append("}\n");
}

bool isLetter(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || static_cast<signed char>(byte) < 0;
}

bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

/// Letters and digits of any script, with hyphens between its words. Begins with a capital or a letter of
/// another script, which no other class does.
std::string identifierOf(std::u16string_view name) {
  constexpr size_t kLongest = 40;
  std::string bytes, identifier;
  for (const char16_t unit : name.substr(0, kLongest)) {
    // Blanks and signs beyond ASCII would do no harm, but cannot be typed.
    const bool isSign = (unit >= 0x7F && unit < 0xC0) || (unit >= 0x2000 && unit < 0x2C00) || unit >= 0xD800;
    appendUtf8(bytes, isSign ? u" " : std::u16string_view(&unit, 1));
  }
  for (const char byte : bytes) {
    if (isLetter(byte) || isDigit(byte)) {
      identifier += byte;
    } else if (!identifier.empty() && identifier.back() != '-') {
      identifier += '-';
    }
  }
  while (!identifier.empty() && identifier.back() == '-') identifier.pop_back();
  if (identifier.empty() || isDigit(identifier[0])) identifier.insert(0, "Style-");
  if (identifier[0] >= 'a' && identifier[0] <= 'z') identifier[0] = static_cast<char>(identifier[0] - 0x20);
  return identifier;
}

}  // namespace

std::string_view StyleSheet::ClassOf(char prefix, std::string_view declarations) {
  if (declarations.empty()) return {};
  std::string key(1, prefix);
  key += declarations;
  const auto known = classes_.find(key);
  if (known != classes_.end()) return known->second;
  if (classes_.size() >= kMostClasses) {
    warn(warnings_, WarningCode::kWorkLimit, "styles");
    return {};
  }
  std::string name(1, prefix);
  name += std::to_string(++counts_[prefix]);
  appendRule(looks_, name, declarations);
  return classes_.emplace(std::move(key), std::move(name)).first->second;
}

std::string StyleSheet::AddStyle(std::u16string_view name, std::string_view declarations) {
  std::string base = identifierOf(name);
  std::string identifier = base;
  for (uint32_t count = 2; !styleNames_.insert(identifier).second; ++count)
    identifier = base + "-" + std::to_string(count);
  if (!declarations.empty()) appendRule(styles_, identifier, declarations);
  return identifier;
}

std::string StyleSheet::TakeRules() {
  std::string rules = std::move(other_);
  if (!styles_.empty()) rules += "@layer pagerex.styles{\n" + styles_ + "}\n";
  if (!looks_.empty()) rules += "@layer pagerex.looks{\n" + looks_ + "}\n";
  other_.clear();
  styles_.clear();
  looks_.clear();
  return rules;
}

}  // namespace pagerex
