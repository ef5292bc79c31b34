#pragma once

#include <cstdint>
#include <vector>

#include "flow/inline_walker.h"
#include "flow/table_scan.h"
#include "flow/walk_document.h"

namespace pagerex {

/// Tells a story, or a part of it: its paragraphs and tables, and the text boxes that are anchored in them.
class StoryWalker final : private InlineWalker::ParagraphBeginner {
 public:
  /// `labels` counts the lists of the story. `depth` is how many text boxes this is in.
  StoryWalker(WalkDocument& document, NoteCounters& counters, ListLabels& labels, FieldMarks& fields,
              unsigned depth = 0);

  /// Tells what stands in [story.start, end).
  void Tell(const StoryPlace& story, uint32_t end);

 private:
  /// What a row is told with, kept for rows of one kind.
  struct RowLook {
    RowDefinition definition;
    std::vector<CellProperties> cells;
    std::vector<uint16_t> conditions;
    bool isFirst = false, isLast = false;
    bool isThere = false;
    bool hasConditions = false;  ///< its table style says more of some rows or columns
  };
  /// Of a paragraph that is one with the next: its text, and its style.
  struct Part {
    uint32_t start, end;
    uint16_t istd;
    const ParagraphProperties* dropCap;  ///< its properties where it is one
  };
  using RowLooks = std::vector<RowLook>;  ///< by kind; the last is of all that have none

  uint32_t TellBlock(uint32_t start, uint32_t limit, unsigned depth, const TableStylePlace& place,
                     bool& endsCell);
  uint32_t TellParagraph(const FoundParagraph& found, uint32_t limit, const TableStylePlace& place,
                         bool mustEnd);
  bool LookAtMark(const FoundParagraph& paragraph);
  bool JoinHidden(FoundParagraph& paragraph, uint32_t limit);
  bool ShowsText(const Part& part);
  uint32_t TellTable(uint32_t start, uint32_t limit, unsigned depth);
  void TellRow(const TableScan& table, uint32_t index, RowLook& look, unsigned depth);
  RowLook& LookOf(const TableScan& table, uint32_t index, RowLooks& looks);
  void MakeCells(const TableScan& table, uint32_t index, RowLook& look);
  void TellCells(const TableScan& table, const ScannedRow& row, RowLook& look, unsigned depth);
  bool IsRowHidden(const ScannedRow& row);
  void TellBoxes();
  void TellBox(const FoundShape& shape);
  void TellArtText(const FoundShape& shape);
  void Begin() override;

  WalkDocument& document_;
  FlowHandler& handler_;
  NoteCounters& counters_;
  ListLabels& labels_;
  InlineWalker inline_;
  const unsigned depth_;
  StoryPlace story_;

  // The paragraph at hand.
  uint32_t paragraphStart_ = 0;
  uint16_t istd_ = 0;
  const ParagraphProperties* properties_ = nullptr;
  const RunProperties* markProperties_ = nullptr;
  uint32_t markPosition_ = 0;
  TableStylePlace place_;
};

}  // namespace pagerex
