#pragma once

#include <deque>
#include <stdexcept>
#include <string>

#include "base/write_archive.h"
#include "htmlwriter/env.h"
#include "htmlwriter/table_writer.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"
#include "wordreader/document.h"

namespace pagerex {

/// An output archive on a file of its own, and what was written to it.
class RecordingArchive {
 public:
  RecordingArchive() {
    if (failed(CreateHtmlWriterArchive(&archive_, files_, folder_.path("out.htm").c_str()))) {
      throw std::runtime_error("no archive");
    }
  }
  RecordingArchive(const RecordingArchive&) = delete;
  RecordingArchive& operator=(const RecordingArchive&) = delete;
  ~RecordingArchive() { DeleteHtmlWriterArchive(archive_); }

  IWriteArchive* get() const { return archive_; }
  IWriteArchive* operator->() const { return archive_; }
  /// Ends the recording.
  std::string text() {
    archive_->Close();
    return folder_.read("out.htm");
  }

 private:
  support::TempFolder folder_;
  OutputFiles files_;
  IWriteArchive* archive_ = nullptr;
};

/// A document's main text with a table writer over it, and no other writer: of a paragraph that is not
/// skipped the bare text comes out.
class TableStory {
 public:
  explicit TableStory(const support::WordDocument& document) {
    document.save(folder_.path("in.doc"));
    if (failed(document_.OpenDocument(folder_.path("in.doc").c_str(), 0))) {
      throw std::runtime_error("the document does not open");
    }
    conversion_.document = &document_;
    conversion_.archive = archive.get();
    env.textPool = &document_.GetTextPool(mso_word::SUBDOC_MAIN);
    env.plcfPap = &document_.GetPlcfPap(mso_word::SUBDOC_MAIN);
    writer.Init(&env);
  }

  /// What the writer answers to a paragraph.
  Status Begin(uint32_t paragraph) {
    env.pap.papIndex = paragraph;
    env.pap.papx.AssignPapx(env.plcfPap->Data(paragraph)->fkp());
    return writer.Write();
  }

  void WriteParagraph(uint32_t paragraph) {
    if (env.plcfPap->Data(paragraph)->fkp().empty() || Begin(paragraph) == Status::kStopped) return;
    const KDWRange range = env.plcfPap->Range(paragraph);
    std::string text;
    for (uint32_t cp = range.start; cp < range.end; ++cp) {
      const unsigned short unit = (*env.textPool)[cp];
      if (unit >= ' ') text += static_cast<char>(unit);
    }
    archive->AddContent(text.c_str());
    writer.EnsureWriteEnd(range.end - 1);
  }

  /// All paragraphs, as they come out.
  std::string Html() {
    for (uint32_t i = 0; i < env.plcfPap->Count(); ++i) WriteParagraph(i);
    return archive.text();
  }

  RecordingArchive archive;

 private:
  OutputFiles files_;
  KHtmlConversionEnv conversion_{files_};

 public:
  KEnv env{conversion_};
  KHtmlTableWriter writer;

 private:
  support::TempFolder folder_;
  KDRDocument document_;
};

/// Paragraphs of one character each, without a document.
class ManyParagraphs {
 public:
  ManyParagraphs() {
    env.plcfPap = &paragraphs_;
    env.textPool = &text_;
    conversion_.archive = archive.get();
  }
  void Add(const support::Sprms& sprms, char character = 'x') {
    support::Bytes& papx = papxs_.emplace_back(support::Bytes{0, 0});
    papx.insert(papx.end(), sprms.bytes().begin(), sprms.bytes().end());
    AddAgain(papxs_.size() - 1, character);
  }
  /// One more paragraph with the properties of `Add` number `i`.
  void AddAgain(size_t i, char character = 'x') {
    KDRMergePropx propx;
    propx.fkpSize = static_cast<uint16_t>(papxs_[i].size());
    propx.fkpData = papxs_[i].data();
    paragraphs_.NewItem(count_++, propx);
    text_.append(static_cast<unsigned short>(character));
  }
  void Write(KHtmlTableWriter& writer, uint32_t paragraph) {
    env.pap.papIndex = paragraph;
    env.pap.papx.AssignPapx(paragraphs_.Data(paragraph)->fkp());
    if (writer.Write() == Status::kStopped) return;
    archive->AddContent(static_cast<int>(paragraph));
    writer.EnsureWriteEnd(paragraph);
  }
  /// The number of each paragraph comes out, where it does.
  void WriteAll() {
    KHtmlTableWriter writer;
    writer.Init(&env);
    for (uint32_t i = 0; i < count_; ++i) Write(writer, i);
  }
  uint32_t count() const { return count_; }

  RecordingArchive archive;

 private:
  OutputFiles files_;
  KHtmlConversionEnv conversion_{files_};

 public:
  KEnv env{conversion_};

 private:
  std::deque<support::Bytes> papxs_;
  KPropxTable paragraphs_;
  KTextPool text_;
  uint32_t count_ = 0;
};

/// The elements without the attributes that every table has: spans, and heights of rows, stay.
inline std::string Structure(std::string html) {
  for (const char* name : {"style", "cellspacing", "cellpadding", "align", "valign", "width"}) {
    const std::string opening = std::string(" ") + name + "=\"";
    for (size_t at = 0; (at = html.find(opening, at)) != std::string::npos;) {
      html.erase(at, html.find('"', at + opening.size()) + 1 - at);
    }
  }
  return html;
}

inline std::string StructureOf(const support::WordDocument& document) {
  return Structure(TableStory(document).Html());
}

}  // namespace pagerex
