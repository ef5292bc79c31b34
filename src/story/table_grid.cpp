#include "story/table_grid.h"

#include <algorithm>
#include <iterator>

#include "base/status.h"

namespace pagerex {

void KColumnEdges::Clear() {
  edges_.clear();
  pending_.clear();
}

void KColumnEdges::Add(int16_t twips, uint32_t row) {
  // The edges of a row come from left to right.
  const bool isNext = next_ < edges_.size() && edges_[next_].twips == twips;
  const int32_t known = isNext ? static_cast<int32_t>(next_) : IndexOf(twips);
  if (known >= 0) {
    edges_[static_cast<size_t>(known)].lastRow = row;
    next_ = static_cast<size_t>(known) + 1;
    if (next_ == edges_.size()) next_ = 0;
    return;
  }
  pending_.push_back({twips, row});
  constexpr size_t kFewEdges = 32;
  if (pending_.size() > kFewEdges + edges_.size() / 2) Finish();
}

void KColumnEdges::Finish() {
  if (pending_.empty()) return;
  // The newest of equal edges comes first and stays.
  std::sort(pending_.begin(), pending_.end(), [](const Edge& a, const Edge& b) {
    return a.twips != b.twips ? a.twips < b.twips : a.lastRow > b.lastRow;
  });
  const auto same = [](const Edge& a, const Edge& b) { return a.twips == b.twips; };
  pending_.erase(std::unique(pending_.begin(), pending_.end(), same), pending_.end());
  const auto middle = static_cast<ptrdiff_t>(edges_.size());
  edges_.insert(edges_.end(), pending_.begin(), pending_.end());
  std::inplace_merge(edges_.begin(), edges_.begin() + middle, edges_.end(), Before);
  pending_.clear();
  ordered_ += edges_.size();
}

bool KColumnEdges::EndsBefore(int16_t twips, uint32_t row) const {
  const int32_t known = IndexOf(twips);
  return known < 0 || edges_[static_cast<size_t>(known)].lastRow < row;
}

void KColumnEdges::DropBefore(uint32_t row) {
  std::erase_if(edges_, [row](const Edge& edge) { return edge.lastRow < row; });
}

int32_t KColumnEdges::IndexOf(int16_t twips) const {
  const auto place = std::lower_bound(edges_.begin(), edges_.end(), Edge{twips, 0}, Before);
  if (place == edges_.end() || place->twips != twips) return -1;
  return static_cast<int32_t>(place - edges_.begin());
}

KTableRowSource::KTableRowSource(uint32_t paragraph, ByteView sprms, const TABLE_ROW& row)
    : sprms_(sprms.data()),
      paragraph_(paragraph),
      size_(static_cast<uint16_t>(sprms.size())),
      definitionOffset_(0),
      definitionSize_(static_cast<uint16_t>(row.definition.bytes().size())),
      height_(row.height) {
  if (definitionSize_) definitionOffset_ = static_cast<uint16_t>(row.definition.bytes().data() - sprms_);
}

void KTableScan::Start(uint32_t paragraph) {
  start_ = end_ = paragraph;
  firstRow_ = 0;
  rows_.clear();
  collected_ = {};
  redone_ = KBudget(kSpareRedone);
  edges_.Clear();
  style_.Clear();
  std::fill(std::begin(deciders_), std::end(deciders_), kNoRow);
}

void KTableScan::CollectRow(uint32_t paragraph, ByteView sprms, int32_t leftMargin) {
  const uint32_t number = EndRow();
  // A row like the one before says nothing new of the table.
  const bool isRepeated = collected_.data() == sprms.data() && collected_.size() == sprms.size() &&
                          collectedMargin_ == leftMargin && number > firstRow_;
  if (!isRepeated) {
    collectedWords_ = ReadTableRow(KDWSprmList(sprms), leftMargin, scratch_, style_);
    collected_ = sprms;
    collectedMargin_ = leftMargin;
  }
  NoteDeciders(collectedWords_, number);
  rows_.emplace_back(paragraph, sprms, scratch_);
  redone_.Add(kMostRedone * sprms.size());
  const KRowDefinition& definition = scratch_.definition;
  for (uint32_t i = 0; i <= definition.CellCount(); ++i) edges_.Add(definition.Edge(i), number);
}

void KTableScan::Finish(uint32_t endParagraph) {
  edges_.Finish();
  end_ = endParagraph;
}

void KTableScan::NoteDeciders(unsigned words, uint32_t row) {
  for (unsigned word = 0; word < kStyleWords; ++word) {
    if (words & 1u << word) deciders_[word] = row;
  }
  if (words & 1u << STYLE_INDENT) deciders_[kSpacingOfIndent] = deciders_[STYLE_CELL_SPACING];
}

void KTableScan::StartAt(uint32_t paragraph, int32_t leftMargin) {
  const auto first =
      std::partition_point(rows_.begin() + firstRow_, rows_.end(),
                           [&](const KTableRowSource& row) { return row.paragraph() < paragraph; });
  start_ = paragraph;
  DropRowsBefore(static_cast<uint32_t>(first - rows_.begin()));
  RedoStyle(leftMargin);
}

void KTableScan::DropRowsBefore(uint32_t row) {
  bool edgeEnds = false;
  for (; firstRow_ < row; ++firstRow_) {
    const KRowDefinition definition = rows_[firstRow_].definition();
    for (uint32_t i = 0; i <= definition.CellCount() && !edgeEnds; ++i) {
      edgeEnds = edges_.EndsBefore(definition.Edge(i), row);
    }
  }
  if (edgeEnds) edges_.DropBefore(row);
}

/// Only the deciding rows need be read again. All that one of them says besides was replaced by a later one.
void KTableScan::RedoStyle(int32_t leftMargin) {
  uint32_t rows[kStyleWords + 1];
  std::copy(std::begin(deciders_), std::end(deciders_), rows);
  std::sort(std::begin(rows), std::end(rows));
  const auto* end = std::unique(std::begin(rows), std::end(rows));
  style_.Clear();
  for (const uint32_t* row = rows; row != end && *row != kNoRow; ++row) {
    if (*row < firstRow_) continue;
    const KDWSprmList sprms = rows_[*row].sprms();
    if (redone_.Take(sprms.bytes().size())) ReadTableRow(sprms, leftMargin, scratch_, style_);
  }
}

uint32_t SearchColSpan(const KColumnEdges& edges, int16_t left, int16_t right) {
  if (left > right) return 0;
  const int32_t first = edges.IndexOf(left);
  if (first < 0) return 0;
  const int32_t last = edges.IndexOf(right);
  return static_cast<uint32_t>(last < 0 ? static_cast<int32_t>(edges.Count()) : last) -
         static_cast<uint32_t>(first);
}

namespace {

/// True if the first cell of the row that begins at `left` continues a merge.
bool continuesMerge(const KRowDefinition& definition, int16_t left) {
  const uint32_t records = definition.CellRecordCount();
  if (records == 0) return false;
  const uint32_t cells = definition.CellCount();
  uint32_t cell = 0;
  while (cell < cells && definition.Edge(cell) != left) ++cell;
  if (cell == cells || cell >= records) return false;
  return (definition.CellRecord(cell)->flags0 & mso_word::TC::kVerticalMerge) ==
         mso_word::TC::kMergeContinued;
}

}  // namespace

uint32_t KMergeRuns::EndOfRun(const KTableScan& scan, uint32_t row, int16_t left) {
  Run& run = runs_[left];
  if (row < run.first || row > run.end) {
    run = {row, row};
    while (run.end < scan.EndRow() && continuesMerge(scan.Row(run.end).definition(), left)) ++run.end;
    looks_ += run.end - row + 1;
  }
  return run.end;
}

uint32_t SearchRowSpan(const KTableScan& scan, int64_t row, int16_t left, KMergeRuns& runs) {
  if (row < 0) return static_cast<uint32_t>(Status::kInvalidArgument);
  const auto below = static_cast<uint32_t>(row) + 1;
  return runs.EndOfRun(scan, below, left) - static_cast<uint32_t>(row);
}

}  // namespace pagerex
