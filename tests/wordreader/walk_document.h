#pragma once

#include <cstdint>

#include "wordreader/annotations.h"
#include "wordreader/bookmarks.h"
#include "wordreader/document.h"
#include "wordreader/fields.h"
#include "wordreader/font_table.h"
#include "wordreader/list_table.h"
#include "wordreader/notes.h"
#include "wordreader/sections.h"
#include "wordreader/style_sheet.h"

/// Asks for everything that a document has and touches every byte of it, so that a sanitizer sees any access
/// outside of what was read. The sum keeps the reads from being optimised away. Throws as the document does.
class DocumentWalk {
 public:
  explicit DocumentWalk(const KDRDocument& document) : document_(document) {}

  uint64_t walk() {
    for (uint32_t type = 0; type < mso_word::kSubDocCount; ++type) {
      walkSubDoc(static_cast<mso_word::SUBDOC_TYPE>(type));
    }
    walkSections();
    walkNotes();
    walkAnnotations();
    walkFonts();
    sum_ += document_.GetStyleSheet().Count() + document_.GetListTable().Count();
    document_.GetDocFile().getDataStrm();
    return sum_;
  }
  uint64_t characters() const { return characters_; }
  uint64_t paragraphs() const { return paragraphs_; }

 private:
  void walkSubDoc(mso_word::SUBDOC_TYPE type) {
    const KTextPool& pool = document_.GetTextPool(type);
    for (uint32_t i = 0; i < pool.size(); ++i) sum_ += pool[i];
    characters_ += pool.size();
    paragraphs_ += document_.GetPlcfPap(type).Count();
    walkTable(document_.GetPlcfPap(type));
    walkTable(document_.GetPlcfChp(type));
    walkFields(document_.GetFields(type));
    walkBookmarks(document_.GetBookMarks().GetStarts(type));
    for (const auto& [cp, index] : document_.GetBookMarks().GetCPStarts(type)) sum_ += cp + index;
  }

  void walkTable(const KPropxTable& table) {
    for (uint32_t i = 0; i < table.Count(); ++i) {
      const auto item = table.Item(i);
      sum_ += item.range.start + item.range.end;
      add(item.data.fkp());
      add(ByteView(item.data.pieceData, item.data.pieceSize));
    }
  }

  void walkFields(const KDRFieldContext& fields) {
    for (uint32_t i = 0; i < fields.Count(); ++i) {
      sum_ += fields.Item(i).GetFieldType() + fields.Find(fields.GetCP(i));
    }
  }

  void walkBookmarks(const KDRPlcfBkf& bookmarks) {
    for (uint32_t i = 0; i < bookmarks.Count(); ++i) {
      const auto item = bookmarks.Item(static_cast<int>(i));
      sum_ += item.range.start + item.bkf.ibkl;
      add(item.name.text);
      add(item.name.extra);
    }
  }

  void walkSections() {
    const KDRPlcfsed& sections = document_.GetPlcfsed();
    for (uint32_t i = 0; i < sections.Count(); ++i) add(sections.Item(i, document_).sprms);
  }

  void walkNotes() {
    walkPositions(document_.GetFootnotes().GetPositions());
    walkPositions(document_.GetFootnotes().GetTextRanges());
    walkPositions(document_.GetEndnotes().GetPositions());
    walkPositions(document_.GetEndnotes().GetTextRanges());
  }

  void walkPositions(const KDRPlcfBase& table) {
    for (uint32_t i = 0; i < table.Count(); ++i) sum_ += table.Range(i).end;
  }

  void walkAnnotations() {
    const KDRAnnotations& annotations = document_.GetAnnotations();
    walkPositions(annotations.GetTextRanges());
    for (uint32_t i = 0; i < annotations.GetRefs().Count(); ++i) {
      const AtnRef ref = annotations.GetRefs().Item(i);
      sum_ += ref.rangeLength;
      add(annotations.GetAuthor(ref).name);
      add(annotations.GetAuthor(ref).initials);
      if (const auto* date = annotations.GetDTTMs().Item(i)) sum_ += date->value;
    }
  }

  void walkFonts() {
    const KDRFontTable& fonts = document_.GetFontTable();
    for (uint32_t i = 0; i < fonts.Count(); ++i) {
      KFontX font;
      fonts.Item(i, &font);
      add(font.name);
      if (font.alternateName) add(font.alternateName);
    }
  }

  void add(ByteView bytes) {
    for (size_t i = 0; i < bytes.size(); ++i) sum_ += bytes.data()[i];
  }
  void add(const unsigned short* text) {
    while (*text) sum_ += *text++;
  }

  const KDRDocument& document_;
  uint64_t sum_ = 0;
  uint64_t characters_ = 0;
  uint64_t paragraphs_ = 0;
};
