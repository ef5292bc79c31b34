#pragma once

#include <cstdint>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "base/status.h"
#include "wordreader/clx.h"
#include "wordreader/doc_file.h"
#include "wordreader/mso_word.h"
#include "wordreader/plcf.h"
#include "wordreader/table_record.h"
#include "wordreader/text_stream.h"

class KDRAnnotations;
class KDRDggInfo;
class KDREmbedShapes;
class _KDRShpPos;
class KDRBookMarks;
class KDREndnotes;
class KDRFieldContext;
class KDRFontTable;
class KDRFootnotes;
class KDRListTable;
class KDRPlcfsed;
class KDRStyleSheet;
class _KDRFields;
struct IStorage;
namespace mso_escher {
class MsoRODrawing;
class MsoRODrawingGroup;
}  // namespace mso_escher

/// A table that is built when it is first asked for, in the document's allocator. The result of its `Read` is
/// dropped: a table that could not be read stays empty, and no later call tries again.
template <class T>
class KDRPtr {
 public:
  const T& ref(const KDRDocument& document) const;

 private:
  mutable T* object_ = nullptr;
};

/// The read-only model of one Word 97-2003 document: the only thing the writers see of the file.
/// Opening reads the FIB and the piece table; every other table is made on first use and lives until the
/// document is destroyed. After `Close` no table may be asked for that was not made before. One thread only.
/// A seek beyond the end of a stream leaves any of the getters as an `int` that is thrown.
class KDRDocument : public KDRClx {
 public:
  KDRDocument() = default;
  KDRDocument(const KDRDocument&) = delete;
  KDRDocument& operator=(const KDRDocument&) = delete;

  /// Opens the compound file at `path`; `flags` is ignored. kCorruptCompoundFile, kStreamNotFound,
  /// kEncrypted, kReadFault or kMalformed tell why not.
  Status OpenDocument(const char* path, unsigned int flags);
  Status OpenDocument(IStorage* storage);
  void Close();

  /// What the document takes memory from; before it is opened. Not owned, may be null.
  void SetBudget(MemoryBudget* budget) { allocator_.SetBudget(budget); }
  /// Where is told what of the file cannot be read. Not owned, may be null.
  void SetWarnings(pagerex::Warnings* warnings) { docFile_.SetWarnings(warnings); }
  pagerex::Warnings* GetWarnings() const { return docFile_.GetWarnings(); }

  ChainAllocator& GetAllocator() const { return allocator_; }
  const KDRDocFile& GetDocFile() const { return docFile_; }
  /// Bytes that the document's three streams hold together: what limits are measured by. 0 once closed.
  uint64_t GetStreamBytes() const;

  /// Where a table lies: kOk, or kNothing if it is absent or empty.
  Status GetRecInfo(uint32_t fibIndex, mso_word::FCLCB* out) const;
  /// Reads a whole table into the document's allocator.
  Status GetTableRecord(KDRTableRecord* out, uint32_t fibIndex) const;
  /// Reads `record.lcb` bytes at `record.fc` of the table stream into `buffer`; kNothing on a short read.
  Status GetRecord(const mso_word::FCLCB& record, void* buffer) const;

  const KTextPool& GetTextPool(mso_word::SUBDOC_TYPE type) const;
  const KPropxTable& GetPlcfPap(mso_word::SUBDOC_TYPE type) const;
  const KPropxTable& GetPlcfChp(mso_word::SUBDOC_TYPE type) const;
  const KDRFieldContext& GetFields(mso_word::SUBDOC_TYPE type) const;
  const KDRPlcfsed& GetPlcfsed() const;
  const KDRBookMarks& GetBookMarks() const;
  const KDRAnnotations& GetAnnotations() const;
  const KDRFootnotes& GetFootnotes() const;
  const KDREndnotes& GetEndnotes() const;
  const KDRFontTable& GetFontTable() const;
  const KDRStyleSheet& GetStyleSheet() const;
  const KDRListTable& GetListTable() const;

  // Drawings. What cannot be read of them is absent: these do not throw.
  const mso_escher::MsoRODrawingGroup& GetDrawingGroup() const;
  /// 0 the main document's drawing, 1 that of the headers.
  const mso_escher::MsoRODrawing& GetDrawing(unsigned int i) const;
  const KDREmbedShapes& GetEmbedShapes() const;
  const KDRPlcf<mso_word::FSPA, mso_word::FCLCB_SHAPE_ANCHORS>& GetShapePositions(
      mso_word::SUBDOC_TYPE type) const;
  const KDRPlcf<mso_word::FTXBXS, mso_word::FCLCB_TEXTBOXES>& GetTxbxTxt() const;

 private:
  KDRDocFile docFile_;
  mutable ChainAllocator allocator_;
  KDRPtr<KDRPlcfsed> sections_;
  KDRPtr<_KDRTextStream> textStream_;
  KDRPtr<KDRBookMarks> bookmarks_;
  KDRPtr<KDRAnnotations> annotations_;
  KDRPtr<KDRFootnotes> footnotes_;
  KDRPtr<KDREndnotes> endnotes_;
  KDRPtr<_KDRFields> fields_;
  KDRPtr<KDRFontTable> fonts_;
  KDRPtr<KDRStyleSheet> styleSheet_;
  KDRPtr<KDRListTable> lists_;
  KDRPtr<KDRDggInfo> drawings_;
  KDRPtr<_KDRShpPos> shapePositions_;
  KDRPtr<KDREmbedShapes> embedShapes_;
  KDRPtr<KDRPlcf<mso_word::FTXBXS, mso_word::FCLCB_TEXTBOXES>> textBoxes_;
};

template <class T>
const T& KDRPtr<T>::ref(const KDRDocument& document) const {
  if (!object_) {
    // Kept before it is read: a table whose reading failed, or threw, is not read again.
    object_ = New<T>(document.GetAllocator());
    object_->Read(document);
  }
  return *object_;
}
