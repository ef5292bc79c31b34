#include "wordreader/document.h"

#include <memory>

#include "storage/com_interfaces.h"
#include "storage/compound_file.h"
#include "wordreader/annotations.h"
#include "wordreader/bookmarks.h"
#include "wordreader/fields.h"
#include "wordreader/font_table.h"
#include "wordreader/list_table.h"
#include "wordreader/notes.h"
#include "wordreader/sections.h"
#include "wordreader/style_sheet.h"

namespace {

/// Gives the reference back also when reading a damaged file throws.
struct StorageReleaser {
  void operator()(IStorage* storage) const { storage->Release(); }
};

}  // namespace

Status KDRDocument::OpenDocument(const char* path, unsigned int /*flags*/) {
  IStorage* opened = nullptr;
  const Status status = FreeOleOpenStorage(path, &opened);
  if (failed(status)) return status;
  const std::unique_ptr<IStorage, StorageReleaser> storage(opened);
  return OpenDocument(storage.get());
}

Status KDRDocument::OpenDocument(IStorage* storage) {
  Status status = docFile_.open(storage, allocator_);
  if (!failed(status)) {
    KDRTableRecord pieceTable;
    status = GetTableRecord(&pieceTable, mso_word::FCLCB_CLX);
    if (!failed(status)) status = KDRClx::Read(pieceTable);
  }
  if (failed(status)) Close();
  return status;
}

void KDRDocument::Close() {
  docFile_.close();
}

uint64_t KDRDocument::GetStreamBytes() const {
  return uint64_t{docFile_.getWordDocumentStrm().bytesHeld()} + docFile_.getTableStrm().bytes() +
         docFile_.getDataStrm().bytesHeld();
}

Status KDRDocument::GetRecInfo(uint32_t fibIndex, mso_word::FCLCB* out) const {
  return docFile_.getTableStrm().getRecInfo(fibIndex, out);
}

Status KDRDocument::GetTableRecord(KDRTableRecord* out, uint32_t fibIndex) const {
  return docFile_.getTableStrm().getRecord(out, fibIndex, allocator_);
}

Status KDRDocument::GetRecord(const mso_word::FCLCB& record, void* buffer) const {
  return docFile_.getTableStrm().getRecord(record, buffer);
}

const KTextPool& KDRDocument::GetTextPool(mso_word::SUBDOC_TYPE type) const {
  return textStream_.ref(*this).GetTextPool(type);
}

const KPropxTable& KDRDocument::GetPlcfPap(mso_word::SUBDOC_TYPE type) const {
  return textStream_.ref(*this).GetPlcfPap(type);
}

const KPropxTable& KDRDocument::GetPlcfChp(mso_word::SUBDOC_TYPE type) const {
  return textStream_.ref(*this).GetPlcfChp(type);
}

const KDRFieldContext& KDRDocument::GetFields(mso_word::SUBDOC_TYPE type) const {
  return fields_.ref(*this).GetFields(type);
}

const KDRPlcfsed& KDRDocument::GetPlcfsed() const {
  return sections_.ref(*this);
}

const KDRBookMarks& KDRDocument::GetBookMarks() const {
  return bookmarks_.ref(*this);
}

const KDRAnnotations& KDRDocument::GetAnnotations() const {
  return annotations_.ref(*this);
}

const KDRFootnotes& KDRDocument::GetFootnotes() const {
  return footnotes_.ref(*this);
}

const KDREndnotes& KDRDocument::GetEndnotes() const {
  return endnotes_.ref(*this);
}

const KDRFontTable& KDRDocument::GetFontTable() const {
  return fonts_.ref(*this);
}

const KDRStyleSheet& KDRDocument::GetStyleSheet() const {
  return styleSheet_.ref(*this);
}

const KDRListTable& KDRDocument::GetListTable() const {
  return lists_.ref(*this);
}
