#include "flow/walk_document.h"

#include <algorithm>

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

const TextRun& WalkDocument::RunAt(uint32_t position, uint16_t istd, const TableStylePlace& place) {
  const TextPiece& piece = pieces.Find(position);
  const bool isThere = piece.start != piece.end;
  const uint32_t offset = isThere ? piece.OffsetOf(position) : 0;
  const bool isLast = isThere && piece.start == last_.pieceStart && offset >= last_.entry.start &&
                      offset < last_.entry.end && istd == last_.istd && place == last_.place;
  if (isLast) return run_;
  last_ = {isThere ? runs.At(offset) : PropertyPages::Entry(), isThere ? piece.start : UINT32_MAX, istd,
           place};
  const ByteView sprms = last_.entry.properties;
  if (const TextRun* const recent = recentRuns_.Find(sprms, piece.prm, istd, place)) {
    run_ = *recent;
  } else {
    Resolve(sprms, piece.prm, istd, place);
    recentRuns_.Keep(sprms, piece.prm, istd, place, run_);
  }
  run_.end = isThere ? piece.end : UINT32_MAX;
  // An entry that ends within a character ends behind it.
  if (isThere && last_.entry.end < piece.OffsetOf(piece.end))
    run_.end = std::max(piece.PositionOf(last_.entry.end + (piece.isWide ? 1 : 0)), position + 1);
  return run_;
}

void WalkDocument::Resolve(ByteView sprms, uint16_t prm, uint16_t istd, const TableStylePlace& place) {
  const RunProperties& properties =
      resolver->Run(sprms, prm != 0 ? pieces.Modifier(prm) : ByteView(), istd, place);
  run_ = {};
  run_.properties = &properties;
  run_.specials = specialsOf(sprms);
  run_.asciiSymbols =
      fonts.Symbols(run_.specials.symbol.isThere ? run_.specials.symbol.font : properties.fonts.ascii);
  run_.otherSymbols = fonts.Symbols(properties.fonts.other);
  run_.hasSymbols = run_.asciiSymbols != SymbolFont::kNone || run_.otherSymbols != SymbolFont::kNone;
  const bool isGone =
      (properties.hidden && !options.hiddenText) ||
      (options.revisions == RevisionView::kFinal && properties.deletion.kind != Revision::kNone) ||
      (options.revisions == RevisionView::kOriginal && properties.revision.kind != Revision::kNone);
  run_.isShown = !isGone;
}

ByteView WalkDocument::SprmsAt(uint32_t position) {
  const TextPiece& piece = pieces.Find(position);
  return piece.start != piece.end ? runs.At(piece.OffsetOf(position)).properties : ByteView();
}

const ParagraphProperties& WalkDocument::PropertiesOf(const FoundParagraph& paragraph,
                                                      const TableStylePlace& place) {
  RecentParagraph& recent = recentParagraphs_[paragraph.kind % recentParagraphs_.size()];
  if (paragraph.kind == 0 || recent.kind != paragraph.kind || !(recent.place == place)) {
    recent = {paragraph.kind, place,
              &resolver->Paragraph(paragraph.istd, paragraph.sprms, paragraph.pieceSprms, place)};
  }
  return *recent.properties;
}

void WalkDocument::MayForget() {
  if (!resolver->MayForget()) return;
  last_.pieceStart = UINT32_MAX;
  recentRuns_.Clear();
  recentParagraphs_.fill({});
}

std::u16string_view WalkDocument::AuthorOf(const Revision& revision) {
  author_ = authors.Text(revision.author);
  return author_;
}

/// Word keeps them in the text, one behind the other, under a bookmark of this name.
const FoundShape* WalkDocument::PictureBullet(int32_t number) {
  const auto [place, isNew] = pictureBullets_.try_emplace(number);
  std::optional<FoundShape>& found = place->second;
  if (isNew) {
    const auto name = std::find(bookmarkNames.begin(), bookmarkNames.end(), u"_PictureBullets");
    const auto range = static_cast<uint32_t>(name - bookmarkNames.begin());
    if (name != bookmarkNames.end() && range < bookmarks.Count() && number >= 0) {
      const uint64_t position = uint64_t{bookmarks.StartOf(range)} + static_cast<uint32_t>(number);
      const bool isInside = position < bookmarks.EndOf(range);
      const RunSpecials specials =
          isInside ? specialsOf(SprmsAt(static_cast<uint32_t>(position))) : RunSpecials();
      FoundShape shape;
      if (specials.hasPicture && drawings.Inline(specials.pictureOffset, shape)) found = std::move(shape);
    }
  }
  return found ? &*found : nullptr;
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
