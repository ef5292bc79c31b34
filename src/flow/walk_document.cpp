#include "flow/walk_document.h"

#include <algorithm>
#include <cstring>

namespace pagerex {
namespace {

std::vector<std::u16string> namesOf(ByteView table) {
  StringTable names;
  names.Read(table);
  std::vector<std::u16string> result(names.Count());
  for (uint32_t i = 0; i < names.Count(); ++i) result[i] = names.Text(i);
  return result;
}

}  // namespace

// DocumentSettings

void DocumentSettings::Read(ByteView dop) {
  constexpr size_t kFlags = 0, kFootnotes = 2, kTab = 10, kPages = 46, kEndnotes = 52, kFormats = 54;
  constexpr size_t kFootnoteFormat97 = 492, kEndnoteFormat97 = 494, kSize97 = 500;
  if (dop.empty()) return;
  const auto numbering = [&](size_t offset) {
    const uint16_t bits = dop.u16(offset);
    return Numbering{static_cast<uint8_t>(bits & 3), std::max<uint16_t>(bits >> 2, 1), 0};
  };
  hasOddAndEvenHeaders = (dop.u8(kFlags) & 1) != 0;
  defaultTabStop = dop.u16(kTab);
  pageCount = dop.u16(kPages);
  footnotes = numbering(kFootnotes);
  endnotes = numbering(kEndnotes);
  const bool is97 = dop.size() >= kSize97;
  footnotes.format = static_cast<uint8_t>(is97 ? dop.u16(kFootnoteFormat97) : dop.u16(kFormats) >> 2 & 0xF);
  endnotes.format = static_cast<uint8_t>(is97 ? dop.u16(kEndnoteFormat97) : dop.u16(kFormats) >> 6 & 0xF);
}

// WalkDocument

ByteView WalkDocument::LevelSprmsOf::ParagraphSprms(uint16_t ilfo, uint8_t level) {
  const UsedLevel used = lists.Level(ilfo, level);
  return used.level ? used.level->papx : ByteView();
}

WalkDocument::WalkDocument(WordFile& wordFile, const WalkOptions& walkOptions, RunControl& runControl,
                           ProgressListener* listener, FlowHandler& flowHandler)
    : file(wordFile), options(walkOptions), control(runControl), progress(listener), handler(flowHandler) {
  constexpr uint32_t kLevelBytes = 9 * 1024, kSpareLevels = 1 << 16;
  pieces.Read(file);
  text.Read(file, pieces);
  paragraphs.Read(file, pieces, text);
  runs.Read(file, PropertyPages::Kind::kRuns);
  styles.Read(file.Table(mso_word::FCLCB_STYLE_SHEET), file.warnings());
  resolver.emplace(styles, &levels);
  tableStyles.emplace(styles);
  fonts.Read(file.Table(mso_word::FCLCB_FONTS));
  const ByteView plfLst = file.Table(mso_word::FCLCB_LIST_DEFINITIONS);
  if (!plfLst.empty()) {
    const uint32_t most = plfLst.u16(0) * kLevelBytes + kSpareLevels;
    lists.Read(plfLst, file.BehindTable(mso_word::FCLCB_LIST_DEFINITIONS, most),
               file.Table(mso_word::FCLCB_LIST_OVERRIDES), file.warnings());
  }
  labels.emplace(lists, fonts);
  settings.Read(file.Table(mso_word::FCLCB_DOCUMENT_PROPERTIES));
  constexpr uint32_t kBookmarkBytes = 4;
  bookmarkNames = namesOf(file.Table(mso_word::FCLCB_BOOKMARK_NAMES));
  bookmarks.Read(file.Table(mso_word::FCLCB_BOOKMARK_STARTS), kBookmarkBytes,
                 file.Table(mso_word::FCLCB_BOOKMARK_ENDS));
  notes[0].Read(file, NoteKind::kFootnote);
  notes[1].Read(file, NoteKind::kEndnote);
  comments.Read(file);
  authors.Read(file.Table(mso_word::FCLCB_REVISION_AUTHORS));
}

TextRun WalkDocument::RunAt(uint32_t position, uint16_t istd, const TableStylePlace& place) {
  const TextPiece& piece = pieces.Find(position);
  ByteView sprms;
  uint32_t end = piece.start != piece.end ? piece.end : UINT32_MAX;
  if (piece.start != piece.end) {
    const PropertyPages::Entry entry = runs.At(piece.OffsetOf(position));
    sprms = entry.properties;
    // An entry that ends within a character ends behind it.
    if (entry.end < piece.OffsetOf(piece.end))
      end = std::max(piece.PositionOf(entry.end + (piece.isWide ? 1 : 0)), position + 1);
  }
  if (!IsLikeLast(sprms, piece.prm, istd, place)) Resolve(sprms, piece.prm, istd, place);
  last_.end = end;
  return last_;
}

bool WalkDocument::IsLikeLast(ByteView sprms, uint16_t prm, uint16_t istd,
                              const TableStylePlace& place) const {
  return last_.properties && memo_.istd == istd && memo_.prm == prm && memo_.place == place &&
         memo_.sprms.size() == sprms.size() &&
         (sprms.empty() || std::memcmp(memo_.sprms.data(), sprms.data(), sprms.size()) == 0);
}

void WalkDocument::Resolve(ByteView sprms, uint16_t prm, uint16_t istd, const TableStylePlace& place) {
  memo_.sprms.assign(sprms.data(), sprms.data() + sprms.size());
  memo_.prm = prm;
  memo_.istd = istd;
  memo_.place = place;
  const RunProperties& properties =
      resolver->Run(sprms, prm != 0 ? pieces.Modifier(prm) : ByteView(), istd, place);
  last_ = {};
  last_.properties = &properties;
  last_.specials = specialsOf(sprms);
  last_.asciiSymbols =
      fonts.Symbols(last_.specials.symbol.isThere ? last_.specials.symbol.font : properties.fonts.ascii);
  last_.otherSymbols = fonts.Symbols(properties.fonts.other);
  last_.hasSymbols = last_.asciiSymbols != SymbolFont::kNone || last_.otherSymbols != SymbolFont::kNone;
  const bool isGone =
      (properties.hidden && !options.hiddenText) ||
      (options.revisions == RevisionView::kFinal && properties.deletion.kind != Revision::kNone) ||
      (options.revisions == RevisionView::kOriginal && properties.revision.kind != Revision::kNone);
  last_.isShown = !isGone;
}

void WalkDocument::MayForget() {
  last_.properties = nullptr;
  resolver->MayForget();
}

std::u16string_view WalkDocument::AuthorOf(const Revision& revision) {
  author_ = authors.Text(revision.author);
  return author_;
}

bool WalkDocument::TakeBox(bool isInHeaders, uint32_t number) {
  std::vector<bool>& taken = takenBoxes_[isInHeaders];
  if (taken.empty()) taken.resize(drawings.BoxCount(isInHeaders));
  if (number >= taken.size() || taken[number]) return false;
  return taken[number] = true;
}

FieldMarks& WalkDocument::FieldsOf(mso_word::SUBDOC_TYPE story) {
  static constexpr mso_word::FIBFCLCB kTables[mso_word::kSubDocCount] = {
      mso_word::FCLCB_FIELDS_MAIN,    mso_word::FCLCB_FIELDS_FOOTNOTE,       mso_word::FCLCB_FIELDS_HEADER,
      mso_word::FCLCB_FIELDS_MACRO,   mso_word::FCLCB_FIELDS_ANNOTATION,     mso_word::FCLCB_FIELDS_ENDNOTE,
      mso_word::FCLCB_FIELDS_TEXTBOX, mso_word::FCLCB_FIELDS_HEADER_TEXTBOX,
  };
  std::optional<FieldMarks>& fields = fields_[story];
  if (!fields) fields.emplace().Read(file.Table(kTables[story]));
  return *fields;
}

ListLabels& WalkDocument::OtherLabels() {
  if (!otherLabels_) {
    otherLabels_.emplace(lists, fonts);
  } else {
    otherLabels_->Reset();
  }
  return *otherLabels_;
}

void WalkDocument::WarnOfDamage() {
  Warnings* const warnings = file.warnings();
  if (paragraphs.missed()) warn(warnings, WarningCode::kTableDamaged, "paragraph properties");
  if (runs.missed()) warn(warnings, WarningCode::kTableDamaged, "character properties");
  if (text.wentBeyondClaim() || file.wentBeyondClaim())
    warn(warnings, WarningCode::kTableDamaged, "length of a stream");
  if (text.missed()) warn(warnings, WarningCode::kOutside, "text");
  if (file.storyStarts().back() > pieces.end()) warn(warnings, WarningCode::kEndedEarly);
}

}  // namespace pagerex
