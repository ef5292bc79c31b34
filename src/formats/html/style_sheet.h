#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "base/warnings.h"

namespace pagerex {

/// The classes of a page: each combination of declarations has one, in the order of first use. Rules come in
/// two cascade layers: the document's styles under names of their own, and over them what is set otherwise.
class StyleSheet {
 public:
  /// `warnings` (may be null) is not owned.
  explicit StyleSheet(Warnings* warnings) : warnings_(warnings) {}

  /// The name of the class with these declarations: `prefix` and a number. Empty for none, and where the
  /// sheet has as many as it may. Valid as long as this.
  std::string_view ClassOf(char prefix, std::string_view declarations);
  /// Adds a rule for a style of the document, and returns its class: from `name`, so that no other has it.
  std::string AddStyle(std::u16string_view name, std::string_view declarations);
  /// A rule that stands outside the layers' order: "@page ...".
  void AddRule(std::string_view rule) { other_ += rule; }

  /// The rules since this was asked last, in their layers; empty for none.
  std::string TakeRules();

 private:
  static constexpr size_t kMostClasses = 1 << 14;

  Warnings* const warnings_;
  std::unordered_map<std::string, std::string> classes_;  ///< by prefix and declarations
  std::unordered_map<char, uint32_t> counts_;
  std::unordered_set<std::string> styleNames_;
  std::string styles_, looks_, other_;
};

}  // namespace pagerex
