#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8_output.h"

namespace pagerex {

/// An item of a list, as Markdown can show it.
struct ListItem {
  int32_t list;   ///< its definition
  uint8_t level;  ///< from 0
  char kind;      ///< '-' for a bullet, else what stands behind its number: '.' or ')'
  int32_t number;
};

/// Puts blocks below each other, with the blank lines and the indents that keep them apart. A block begins by
/// one of the calls, gets its text by `Put`, and ends by `End`.
class BlockWriter {
 public:
  /// `out` is not owned.
  explicit BlockWriter(Utf8Output& out) : out_(out) {}

  /// A block that stands by itself, and ends all lists. Returns the indent of its lines.
  size_t Begin();
  size_t BeginItem(const ListItem& item, bool isEmpty);
  /// A paragraph in the item of a list that is open above this level, if there is one.
  size_t BeginInItem(uint8_t level);
  void Put(std::string_view text) { out_.Put(text); }
  void End() { out_.Put('\n'); }

  /// A block of several lines, each with its line feed; it stands by itself.
  void PutLines(std::string_view lines);

  /// What comes is the text of a note, below `marker`.
  void BeginNote(std::string_view marker);
  void EndNote();

  bool isAtBegin() const { return isAtBegin_; }

 private:
  struct Level {
    ListItem last;
    char marker = 0;     ///< what is written for `kind`
    size_t outside = 0;  ///< indent of the marker
    size_t inside = 0;   ///< and of what belongs to the item
  };

  static bool Continues(const ListItem& last, const ListItem& item);
  size_t Indent() const { return levels_.empty() ? noteIndent_ : levels_.back().inside; }
  void Pop(Level& before);
  void KeepApart(const Level& before);
  void StartItem(const ListItem& item, bool isEmpty, bool isBehindBlank);
  void StartLine(size_t indent, bool isBehindBlank);
  void PutIndent(size_t indent);

  Utf8Output& out_;
  std::vector<Level> levels_;  ///< lists that are open, one in the other
  std::string noteMarker_;     ///< owed to the first line of a note
  size_t noteIndent_ = 0;
  bool isAtBegin_ = true;
  bool isBehindItem_ = false;  ///< the last line that was written begins an item
  bool isBehindEmptyItem_ = false;
};

}  // namespace pagerex
