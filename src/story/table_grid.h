#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "base/byte_view.h"
#include "story/table_rows.h"
#include "story/work_limits.h"
#include "wordreader/sprm_list.h"

namespace pagerex {

/// The column edges of a table: the boundaries of all its rows in twips, ascending, each value once.
class KColumnEdges {
 public:
  void Clear();
  /// Notes an edge of row `row`. Rows come in ascending order.
  void Add(int16_t twips, uint32_t row);
  /// Brings all that was added into order; before that nothing can be looked up.
  void Finish();
  /// True if no row from `row` on has the edge.
  bool EndsBefore(int16_t twips, uint32_t row) const;
  /// Forgets those edges.
  void DropBefore(uint32_t row);

  uint32_t Count() const { return static_cast<uint32_t>(edges_.size()); }
  int16_t operator[](uint32_t i) const { return edges_[i].twips; }
  /// Index of an edge, -1 if there is none. A binary search.
  int32_t IndexOf(int16_t twips) const;
  /// How many edges were brought into order so far, again and again where they were merged with others.
  uint64_t ordered() const { return ordered_; }

 private:
  struct Edge {
    int16_t twips;
    uint32_t lastRow;
  };
  static bool Before(const Edge& a, const Edge& b) { return a.twips < b.twips; }

  std::vector<Edge> edges_;    ///< ascending
  size_t next_ = 0;            ///< the edge behind the one that was added last, or 0
  std::vector<Edge> pending_;  ///< as they came; merged in bulk, since a table may have 65,536 of them
  uint64_t ordered_ = 0;
};

/// Where the definition of one row lies. All there is of a row until its cells are written.
class KTableRowSource {
 public:
  KTableRowSource(uint32_t paragraph, ByteView sprms, const TABLE_ROW& row);

  uint32_t paragraph() const { return paragraph_; }
  KDWSprmList sprms() const { return KDWSprmList(ByteView(sprms_, size_)); }
  KRowDefinition definition() const {
    return KRowDefinition(ByteView(sprms_, size_).part(definitionOffset_, definitionSize_));
  }
  /// Twips, a signed value.
  uint16_t height() const { return height_; }

 private:
  const uint8_t* sprms_;
  uint32_t paragraph_;
  uint16_t size_;
  uint16_t definitionOffset_;
  uint16_t definitionSize_;
  uint16_t height_;
};

/// The rows of one table, as the scan ahead finds them, and what they make together. Of a scan that reached
/// beyond its table (into the next note, or over a paragraph that closes all tables) the rest serves the
/// table that begins there.
class KTableScan {
 public:
  /// Begins a scan at a paragraph.
  void Start(uint32_t paragraph);
  /// Adds a row that a paragraph's list defines.
  void CollectRow(uint32_t paragraph, ByteView sprms, int32_t leftMargin);
  /// Ends it at the first paragraph that was not looked at any more.
  void Finish(uint32_t endParagraph);

  /// True if a scan that starts at `paragraph` would find just the rest of this one.
  bool Covers(uint32_t paragraph) const { return paragraph >= start_ && paragraph < end_; }
  /// Makes this the scan that starts at `paragraph`, which it covers.
  void StartAt(uint32_t paragraph, int32_t leftMargin);

  /// Rows are numbered from `FirstRow()` up to, not including, `EndRow()`.
  uint32_t FirstRow() const { return firstRow_; }
  uint32_t EndRow() const { return static_cast<uint32_t>(rows_.size()); }
  const KTableRowSource& Row(uint32_t i) const { return rows_[i]; }
  const KColumnEdges& edges() const { return edges_; }
  const TableStyle& style() const { return style_; }

 private:
  static constexpr uint32_t kNoRow = UINT32_MAX;
  /// The rows that decided the words of `style_`, and the one whose cell spacing its indent was made with.
  static constexpr unsigned kSpacingOfIndent = kStyleWords;

  void NoteDeciders(unsigned words, uint32_t row);
  void DropRowsBefore(uint32_t row);
  void RedoStyle(int32_t leftMargin);

  uint32_t start_ = 0;
  uint32_t end_ = 0;
  /// Bytes of lists that may be read again for the tables that one scan serves: few rows decide the style,
  /// but the tables may be many and those rows' lists long.
  static constexpr uint64_t kMostRedone = 64;  ///< for each byte that was scanned
  static constexpr uint64_t kSpareRedone = 1 << 16;

  uint32_t firstRow_ = 0;
  KBudget redone_{kSpareRedone};
  std::vector<KTableRowSource> rows_;
  KColumnEdges edges_;
  TableStyle style_;
  uint32_t deciders_[kStyleWords + 1] = {};
  TABLE_ROW scratch_;   ///< of `collected_`, until rows are read again
  ByteView collected_;  ///< the list of the row that was added last
  int32_t collectedMargin_ = 0;
  unsigned collectedWords_ = 0;
};

/// Count of column edges in [left, right): 0 if `left` is above `right` or is no edge.
uint32_t SearchColSpan(const KColumnEdges& edges, int16_t left, int16_t right);

/// Remembers, by edge, the last run of rows that continue a merge, so that many merges that end together cost
/// one walk.
class KMergeRuns {
 public:
  void Clear() { runs_.clear(); }
  /// The first row from `row` on whose cell at the edge `left` does not continue a merge.
  uint32_t EndOfRun(const KTableScan& scan, uint32_t row, int16_t left);
  /// How many rows were looked at so far.
  uint64_t looks() const { return looks_; }

 private:
  /// Rows [first, end) continue, row `end` does not.
  struct Run {
    uint32_t first = 1;
    uint32_t end = 0;
  };
  std::map<int16_t, Run> runs_;  ///< by edge
  uint64_t looks_ = 0;
};

/// How many rows a merge covers that starts in row `row` at the edge `left`: itself and the rows below whose
/// cell at exactly that edge continues a merge. kInvalidArgument, as a number, for a negative row.
uint32_t SearchRowSpan(const KTableScan& scan, int64_t row, int16_t left, KMergeRuns& runs);

}  // namespace pagerex
