#include "support/word_text_tables.h"

#include <algorithm>
#include <stdexcept>

namespace support {

using namespace mso_word;

uint32_t noteStoryOf(Anchor::Kind kind) {
  return kind == Anchor::Kind::kFootnote  ? SUBDOC_FOOTNOTE
         : kind == Anchor::Kind::kEndnote ? SUBDOC_ENDNOTE
                                          : SUBDOC_ANNOTATION;
}

namespace {

/// The marks of one kind in a story, with positions relative to its start.
struct Marks {
  std::vector<uint32_t> positions;
  std::vector<const Anchor*> anchors;
  bool empty() const { return anchors.empty(); }
};

/// One making of the tables: the text, and where they go.
class TextTables {
 public:
  TextTables(const FlatText& text, const ClosingMarks& closingMarks, bool withDates, TableSet& tables)
      : text_(text), closingMarks_(closingMarks), withDates_(withDates), tables_(tables) {}

  void make() {
    makeFieldTables();
    makeNoteTables();
    makeBookmarkTables();
  }

 private:
  // --- Fields ---

  void makeFieldTables() {
    constexpr uint32_t kTables[kSubDocCount] = {
        FCLCB_FIELDS_MAIN,       FCLCB_FIELDS_FOOTNOTE, FCLCB_FIELDS_HEADER,  FCLCB_FIELDS_MACRO,
        FCLCB_FIELDS_ANNOTATION, FCLCB_FIELDS_ENDNOTE,  FCLCB_FIELDS_TEXTBOX, FCLCB_FIELDS_HEADER_TEXTBOX};
    for (uint32_t type = 0; type < kSubDocCount; ++type) {
      Marks fields = marks(type, Anchor::Kind::kField);
      if (fields.empty()) continue;
      std::vector<Bytes> records;
      for (const Anchor* field : fields.anchors) records.push_back({field->fieldMark, field->fieldByte});
      fields.positions.push_back(text_.end() - text_.storyStarts[type]);
      tables_[kTables[type]].table = positionTable(fields.positions, records);
    }
  }

  Marks marks(uint32_t type, Anchor::Kind kind) const {
    Marks result;
    for (const auto& [cp, anchor] : text_.anchors[type]) {
      if (anchor->kind != kind) continue;
      result.positions.push_back(cp - text_.storyStarts[type]);
      result.anchors.push_back(anchor);
    }
    return result;
  }

  // --- Notes and annotations ---

  void makeNoteTables() {
    for (uint32_t type = SUBDOC_MAIN + 1; type < kSubDocCount; ++type) refuseNotes(type);
    makeNoteTables(Anchor::Kind::kFootnote, FCLCB_FOOTNOTE_REFS, FCLCB_FOOTNOTE_TEXT);
    makeNoteTables(Anchor::Kind::kEndnote, FCLCB_ENDNOTE_REFS, FCLCB_ENDNOTE_TEXT);
    makeAnnotationTables();
  }

  /// The format has notes of the main text only.
  void refuseNotes(uint32_t type) const {
    for (const PlacedAnchor& placed : text_.anchors[type]) {
      if (placed.anchor->content) throw std::invalid_argument("a note stands outside the main text");
    }
  }

  void makeNoteTables(Anchor::Kind kind, uint32_t references, uint32_t ranges) {
    const Marks notes = marks(SUBDOC_MAIN, kind);
    if (notes.empty()) return;
    std::vector<Bytes> records;
    for (const Anchor* note : notes.anchors) records.push_back(ByteWriter().u16(note->numbered).take());
    tables_[references].table = referenceTable(notes, records);
    tables_[ranges].table = noteRanges(kind, notes.anchors.size());
  }

  Bytes referenceTable(const Marks& references, const std::vector<Bytes>& records) const {
    std::vector<uint32_t> positions = references.positions;
    positions.push_back(text_.storyLength(SUBDOC_MAIN));
    return positionTable(positions, records);
  }

  /// Where each note begins in its story, the closing mark as one more range, and the end.
  Bytes noteRanges(Anchor::Kind kind, size_t count) const {
    const uint32_t type = noteStoryOf(kind);
    const std::vector<uint32_t>& parts = text_.partStarts[type];
    std::vector<uint32_t> positions(parts.end() - static_cast<ptrdiff_t>(count), parts.end());
    if (closingMarks_.ofStory[type]) positions.push_back(text_.storyLength(type) - 1);
    positions.push_back(text_.storyLength(type));
    return positionTable(positions);
  }

  void makeAnnotationTables() {
    const Marks annotations = marks(SUBDOC_MAIN, Anchor::Kind::kAnnotation);
    if (annotations.empty()) return;
    std::vector<std::u16string> owners;
    std::vector<Bytes> records;
    ByteWriter dates;
    for (const Anchor* anchor : annotations.anchors) {
      const Annotation& annotation = anchor->annotation;
      records.push_back(annotationRecord(annotation, ownerIndex(owners, annotation.author.units())));
      dates.u32(annotation.dttm).zeros(14);
    }
    tables_[FCLCB_ANNOTATION_REFS].table = referenceTable(annotations, records);
    tables_[FCLCB_ANNOTATION_TEXT].table = noteRanges(Anchor::Kind::kAnnotation, records.size());
    tables_[FCLCB_ANNOTATION_OWNERS].table = ownerTable(owners);
    if (withDates_) tables_[FCLCB_ANNOTATION_DATES].table = dates.take();
  }

  static size_t ownerIndex(std::vector<std::u16string>& owners, const std::u16string& name) {
    const auto found = std::find(owners.begin(), owners.end(), name);
    const auto index = static_cast<size_t>(found - owners.begin());
    if (found == owners.end()) owners.push_back(name);
    return index;
  }

  static Bytes annotationRecord(const Annotation& annotation, size_t owner) {
    constexpr size_t kMaxInitials = 9;
    const std::u16string initials = annotation.initials.units().substr(0, kMaxInitials);
    ByteWriter record;
    record.u16(initials.size()).text16(initials).zeros((kMaxInitials - initials.size()) * 2);
    return record.u16(owner).zeros(4).u32(annotation.rangeTag).take();
  }

  static Bytes ownerTable(const std::vector<std::u16string>& owners) {
    ByteWriter table;
    for (const std::u16string& owner : owners) table.u16(owner.size()).text16(owner);
    return table.take();
  }

  // --- Bookmarks ---

  void makeBookmarkTables() {
    const auto sameName = [](const Anchor& a, const Anchor& b) { return a.name == b.name; };
    const auto sameTag = [](const Anchor& a, const Anchor& b) { return a.tag == b.tag; };
    const auto bookmarks = makeRangeTables(Anchor::Kind::kBookmarkStart, Anchor::Kind::kBookmarkEnd, sameName,
                                           FCLCB_BOOKMARK_STARTS, FCLCB_BOOKMARK_ENDS);
    std::vector<std::u16string> names;
    for (const Anchor* bookmark : bookmarks) names.push_back(bookmark->name);
    if (!names.empty()) tables_[FCLCB_BOOKMARK_NAMES].table = stringTable(names);

    const auto ranges = makeRangeTables(Anchor::Kind::kAnnotationStart, Anchor::Kind::kAnnotationEnd, sameTag,
                                        FCLCB_ANNOTATION_RANGE_STARTS, FCLCB_ANNOTATION_RANGE_ENDS);
    std::vector<Bytes> tags;
    for (const Anchor* range : ranges) {
      tags.push_back(ByteWriter().u16(0x0100).u32(range->tag).u32(0xFFFFFFFF).take());
    }
    const std::vector<std::u16string> noNames(tags.size());
    if (!tags.empty()) tables_[FCLCB_ANNOTATION_RANGE_NAMES].table = stringTable(noNames, 10, tags);
  }

  /// Makes the tables of starts and ends, each in the order of the text; a start names the index of its end.
  /// Returns the starts.
  template <class Same>
  std::vector<const Anchor*> makeRangeTables(Anchor::Kind startKind, Anchor::Kind endKind, Same same,
                                             uint32_t startTable, uint32_t endTable) {
    Marks starts = marksOfAllStories(startKind);
    Marks ends = marksOfAllStories(endKind);
    if (starts.empty()) return {};
    std::vector<Bytes> records;
    for (const Anchor* start : starts.anchors) {
      const auto end = std::find_if(ends.anchors.begin(), ends.anchors.end(),
                                    [&](const Anchor* candidate) { return same(*start, *candidate); });
      if (end == ends.anchors.end()) throw std::invalid_argument("a bookmark or range has no end");
      records.push_back(ByteWriter().u16(end - ends.anchors.begin()).u16(0).take());
    }
    starts.positions.push_back(text_.end() + 1);
    ends.positions.push_back(text_.end() + 1);
    tables_[startTable].table = positionTable(starts.positions, records);
    tables_[endTable].table = positionTable(ends.positions);
    return starts.anchors;
  }

  Marks marksOfAllStories(Anchor::Kind kind) const {
    Marks all;
    for (uint32_t type = 0; type < kSubDocCount; ++type) {
      const Marks some = marks(type, kind);
      for (uint32_t position : some.positions) all.positions.push_back(position + text_.storyStarts[type]);
      all.anchors.insert(all.anchors.end(), some.anchors.begin(), some.anchors.end());
    }
    return all;
  }

  const FlatText& text_;
  const ClosingMarks& closingMarks_;
  const bool withDates_;
  TableSet& tables_;
};

}  // namespace

void addTextTables(const FlatText& text, const ClosingMarks& closingMarks, bool withDates, TableSet& tables) {
  TextTables(text, closingMarks, withDates, tables).make();
}

}  // namespace support
