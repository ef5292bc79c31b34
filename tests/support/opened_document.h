#pragma once

#include <string>

#include "support/temp_folder.h"
#include "support/word_document_writer.h"
#include "wordreader/document.h"

namespace support {

/// A document that was written to a temporary file and opened with the reader, for tests of what it holds:
///
///     OpenedDocument opened(doc);
///     EXPECT_EQ(opened.text(), u"Hello\r");
///     EXPECT_EQ(opened->GetFootnotes().GetPositions().Count(), 1u);
class OpenedDocument {
 public:
  explicit OpenedDocument(const WordDocument& document) : OpenedDocument(document.build()) {}
  /// Any bytes, damaged ones too: see `status`.
  explicit OpenedDocument(const Bytes& file) {
    status_ = document_.OpenDocument(folder_.write("test.doc", file).c_str(), 0x10000);
  }

  /// The result of the open.
  Status status() const { return status_; }
  const KDRDocument& operator*() const { return document_; }
  const KDRDocument* operator->() const { return &document_; }

  /// A story's text as its pool has it: without the closing mark that the reader drops.
  std::u16string text(mso_word::SUBDOC_TYPE type = mso_word::SUBDOC_MAIN) const {
    const KTextPool& pool = document_.GetTextPool(type);
    std::u16string text;
    for (uint32_t i = 0; i < pool.size(); ++i) text += static_cast<char16_t>(pool[i]);
    return text;
  }

 private:
  TempFolder folder_;
  KDRDocument document_;
  Status status_;
};

}  // namespace support
