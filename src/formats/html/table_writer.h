#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/properties.h"
#include "formats/html/page_text.h"
#include "formats/html/style_sheet.h"

namespace pagerex {

/// The markup of tables between their cells' blocks. Keeps a stack of those that are open.
class TableWriter {
 public:
  TableWriter(PageText& out, StyleSheet& sheet) : out_(out), sheet_(sheet) {}

  void BeginTable(const TableProperties& table);
  void EndTable();
  void BeginRow(const RowProperties& row);
  void EndRow();
  void BeginCell(const CellProperties& cell);
  void EndCell();
  bool empty() const { return open_.empty(); }
  /// What was put so far has been given away.
  void Given();

 private:
  enum class Group : uint8_t { kNone, kHead, kBody };
  struct Table {
    static constexpr size_t kGiven = SIZE_MAX;
    size_t roleAt = kGiven;  ///< where its role may be said when it is known; kGiven where that is gone
    uint64_t cells = 0;
    bool hasLook = false;   ///< a head, lines or grounds
    bool hasTable = false;  ///< in one of its cells
    bool isCellTurned = false;
    uint32_t rowsLeft = 0;  ///< of the head
    Group group = Group::kNone;
    uint16_t columnsAfter = 0;
    size_t cell = 0;
    RowProperties row;
    std::string rowTag;
  };

  /// A cell that stood here in a row above, or in the table before.
  struct KnownCell {
    CellProperties properties;
    std::string attributes;
    bool isTurned = false;  ///< its text is in an element of its own
    bool hasLook = false;
  };

  void PutGroup(Table& table, Group group);
  /// The rows of a table have few looks: some are kept for each place.
  struct KnownCells {
    std::array<KnownCell, 4> cells;
    size_t next = 0;
  };
  const KnownCell& KnownAs(const CellProperties& cell, KnownCells& known);

  PageText& out_;
  StyleSheet& sheet_;
  std::vector<Table> open_;
  std::vector<std::vector<KnownCells>> known_;  ///< by depth and place in the row
};

}  // namespace pagerex
