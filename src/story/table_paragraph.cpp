#include "story/table_paragraph.h"

#include <algorithm>

#include "storage/byte_archives.h"
#include "wordreader/sprm_opcodes.h"

namespace pagerex {

namespace {

enum TableParagraphSprm : uint16_t {
  sprmPFInTable = sprm_opcode::kPFInTable,
  sprmPFTtp = sprm_opcode::kPFTtp,
  sprmPFInnerTableCell = 0x244B,
  sprmPFInnerTtp = 0x244C,
  sprmPItap = sprm_opcode::kPItap,
  sprmPHugePapx80 = 0x6645,
  sprmPHugePapx = 0x6646,
  sprmTDefTable = sprm_opcode::kTDefTable,
};

/// Where the real property list of a paragraph lies.
struct HugeReference {
  bool found = false;
  ByteView offset;
};

/// Looks at a list once. Of a sprm that stands in it twice the first counts.
TableParagraph lookAtList(ByteView sprms, HugeReference& reference) {
  TableParagraph paragraph;
  paragraph.sprms = sprms;
  bool hasDepth = false;
  HugeReference older;
  KDWSprm sprm;
  KDWSprmList::Enumerator enumerator{KDWSprmList(sprms)};
  while (!failed(enumerator.Next(&sprm))) {
    switch (sprm.GetOpcode()) {
      case sprmPFInTable:
        if (paragraph.kind == TableParagraph::INSIDE) break;
        paragraph.kind = TableParagraph::INSIDE;
        paragraph.inTable = sprm.GetArgument().u8(0);
        break;
      case sprmPItap:
        if (hasDepth) break;
        hasDepth = true;
        paragraph.depth = static_cast<uint8_t>(std::min(sprm.GetArgument().u32(0), kDeepestTable));
        break;
      case sprmPFTtp:
      case sprmPFInnerTtp:
        paragraph.rowEnd = true;
        break;
      case sprmPFInnerTableCell:
        paragraph.innerCellEnd = true;
        break;
      case sprmTDefTable:
        paragraph.definesRow = true;
        break;
      case sprmPHugePapx:
        if (!reference.found) reference = {true, sprm.GetArgument()};
        break;
      case sprmPHugePapx80:
        if (!older.found) older = {true, sprm.GetArgument()};
        break;
    }
  }
  if (!reference.found) reference = older;
  return paragraph;
}

}  // namespace

KTableParagraphs::KTableParagraphs(const KDRDocument* document) : document_(document) {
  // A list is walked a few times for each paragraph that uses it: when its table is scanned, and when it is
  // written.
  constexpr uint64_t kMostUses = 64;
  constexpr uint64_t kSpareBytes = 1 << 20;
  if (!document) return;
  const DsMemReadArchive& data = document->GetDocFile().getDataStrm();
  uses_ = KBudget(kMostUses * (uint64_t{data.tell()} + data.bytesLeft()) + kSpareBytes);
}

TableParagraph KTableParagraphs::Look(ByteView sprms) {
  TableParagraph& known = known_[(reinterpret_cast<uintptr_t>(sprms.data()) >> 1) % known_.size()];
  if (known.sprms.data() == sprms.data() && known.sprms.size() == sprms.size()) return known;
  HugeReference reference;
  TableParagraph paragraph = lookAtList(sprms, reference);
  if (paragraph.kind == TableParagraph::INSIDE || !reference.found) {
    known = paragraph;
    return paragraph;
  }
  if (reference.offset.size() == 4) return LookAtHuge(reference.offset.u32(0));
  TableParagraph unreadable;
  unreadable.kind = TableParagraph::UNREADABLE;
  return unreadable;
}

const TableParagraph& KTableParagraphs::LookAtHuge(uint32_t offset) {
  static const TableParagraph unreadable = [] {
    TableParagraph paragraph;
    paragraph.kind = TableParagraph::UNREADABLE;
    return paragraph;
  }();
  const auto [entry, isNew] = huge_.try_emplace(offset, unreadable);
  TableParagraph& paragraph = entry->second;
  const ByteView list = isNew ? ReadHuge(offset) : paragraph.sprms;
  // Whoever gets a row's list walks it.
  if (!uses_.Take(list.size())) return unreadable;
  if (!isNew) return paragraph;
  HugeReference ignored;
  paragraph = lookAtList(list, ignored);
  if (paragraph.kind == TableParagraph::INSIDE) {
    paragraph.inTable = 1;  // whatever the flag says in there
  } else {
    paragraph.kind = TableParagraph::UNREADABLE;
  }
  return paragraph;
}

namespace {

/// A 16-bit length, then so many bytes, as far as there are.
ByteView listAt(ByteView data, uint32_t offset) {
  return data.part(offset).part(2, data.u16(offset));
}

}  // namespace

/// Lists that overlap could ask for far more bytes than the stream has. When they have, all of it is read,
/// and every further list is a part of that.
ByteView KTableParagraphs::ReadHuge(uint32_t offset) {
  if (!wholeData_.empty()) return listAt(wholeData_, offset);
  if (!document_) return {};
  DsMemReadArchive& data = document_->GetDocFile().getDataStrm();
  if (!data.good() || offset >= data.size()) return {};
  try {
    data.seek(0, 0);
    if (bytesRead_ > data.bytesLeft()) {
      wholeData_ = ReadBytes(data, data.size(), document_->GetAllocator());
      return listAt(wholeData_, offset);
    }
    data.seek(offset, 0);
    unsigned short length = 0;
    data.get16u(length);
    const ByteView list = ReadBytes(data, length, document_->GetAllocator());
    bytesRead_ += list.size();
    return list;
  } catch (int) {
    return {};  // a broken chain of pages: the list is absent
  }
}

}  // namespace pagerex
