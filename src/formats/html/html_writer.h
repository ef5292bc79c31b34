#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/link_policy.h"
#include "base/warnings.h"
#include "flow/handler.h"
#include "formats/html/look_book.h"
#include "formats/html/page_frame.h"
#include "formats/html/page_text.h"
#include "formats/html/paragraph_writer.h"
#include "formats/html/shape_place.h"
#include "formats/html/shape_svg.h"
#include "formats/html/style_sheet.h"
#include "formats/html/table_writer.h"
#include "formats/picture_output.h"

namespace pagerex {

/// Takes the blocks of a page as they are done.
class BlockSink {
 public:
  BlockSink() = default;
  BlockSink(const BlockSink&) = delete;
  BlockSink& operator=(const BlockSink&) = delete;
  virtual ~BlockSink() = default;

  /// A run of complete blocks, or of parts of a block; the page's own rules are known by now.
  virtual void Take(std::string_view markup) = 0;
  /// Whether a piece of the page that has so many characters should end before the next block.
  virtual bool WantsEnd(uint64_t /*characters*/) const { return false; }
  /// Ends a piece: what was taken so far is complete blocks.
  virtual void EndPiece() {}
};

struct HtmlOptions {
  bool comments = true;
  LinkPolicy links = LinkPolicy::kSafe;
};

/// Writes a document as the blocks of a page.
class HtmlWriter final : public FlowHandler {
 public:
  /// None is owned; `warnings` may be null.
  HtmlWriter(BlockSink& sink, StyleSheet& sheet, const HtmlOptions& options, PictureOutput& pictures,
             Warnings* warnings);
  ~HtmlWriter() override;

  /// What stands around the blocks; known from the first section on.
  const PageFrame& frame() const { return frame_; }
  /// Rules that all others build on.
  std::string BaseRules(bool followsDarkScheme);

  void BeginDocument(const DocumentFacts& facts) override;
  void EndDocument() override;
  void BeginSection(const SectionFacts& facts) override;
  void EndSection() override;
  void BeginHeader(const HeaderFacts& facts) override;
  void EndHeader() override;
  void BeginParagraph(const ParagraphFacts& facts) override;
  void EndParagraph() override;
  void Text(std::u16string_view text, const RunProperties& properties) override;
  void MarkHere(Mark mark, const RunProperties& properties) override;
  void Ruby(std::u16string_view base, std::u16string_view above, std::u16string_view both,
            const RunProperties& properties) override;
  void BeginDropCap(const ParagraphProperties& properties) override;
  void EndDropCap() override;
  void BeginLink(const LinkFacts& link) override;
  void EndLink() override;
  void BookmarkStart(std::u16string_view name) override;
  void NoteReference(const NoteFacts& note, const RunProperties& properties) override;
  void NoteMark(const NoteFacts& note, const RunProperties& properties) override;
  void CommentReference(const CommentFacts& comment) override;
  void BeginRevision(const RevisionFacts& revision) override;
  void EndRevision() override;
  void FormField(const FormFieldFacts& field, const RunProperties& properties) override;
  void Picture(const PictureFacts& picture) override;
  void BeginTable(const TableProperties& table) override;
  void EndTable() override;
  void BeginRow(const RowProperties& row) override;
  void EndRow() override;
  void BeginCell(const CellProperties& cell) override;
  void EndCell() override;
  void BeginTextBox(const TextBoxFacts& box) override;
  void EndTextBox() override;
  void BeginNote(const NoteFacts& note) override;
  void EndNote() override;
  void BeginComment(const CommentFacts& comment) override;
  void EndComment() override;

 private:
  /// A block that others go into: the page, a cell, a note, a box.
  struct Flow {
    struct List {
      std::string_view name;  ///< "ol" or "ul"
      bool isItemOpen = false;
    };
    std::vector<List> lists;
    Colour ground;         ///< under its paragraphs
    size_t lastStart = 0;  ///< of the last paragraph
    bool hasLast = false;
    bool isWrapped = false;   ///< the last paragraph has an element around it and what hangs at it
    bool isContents = false;  ///< in a table of contents
    bool isFigure = false;
    Frame frame;                 ///< of the paragraphs in the element that is open for one
    bool isCaptionOpen = false;  ///< of the figure, behind what it shows
    enum class Last : uint8_t { kNone, kOther, kPicture, kCaption } last = Last::kNone;
    uint16_t lastStyle = 0;
    // The last paragraph, where its class depends on what follows.
    bool isPending = false;
    size_t pendingAt = 0;
    ParagraphProperties pending;
    Neighbours neighbours;
    LookBook::Look pendingLook = 0;
  };
  /// What comes in front of the first text of a paragraph.
  struct Waiting {
    enum Kind : uint8_t { kMarkup, kLink, kBegin, kEnd } kind;
    std::string markup, close;
  };
  struct Part {
    PageText around;
    PictureFacts shape;
  };

  // Blocks
  Flow& flow() { return flows_[flowCount_ - 1]; }
  void BeginFlow(const Colour& ground);
  void EndFlow();
  void BeginBlock(const ParagraphProperties* next);
  void EndLast();
  void EndLists(size_t depth);
  void EndContents();
  void EndFigure();
  void BeginFrame(const ParagraphProperties& properties);
  void EndFrame();
  void BeginItem(const ParagraphFacts& facts);
  void Give();
  void EndPiece();
  void Swap(PageText& other);
  void PutPageBreak();
  bool BreaksColumn(Mark mark) const;
  // Paragraphs
  bool IsBetweenBlocks() const;
  void BeginAround(const ParagraphFacts& facts, bool isCaptionBelow);
  void Take(const ParagraphFacts& facts);
  void TakeLabelPicture(const PictureFacts& picture);
  void Open(LookBook::Look look);
  void Wrap();
  void HangShapes();
  void PutInline(std::string_view markup, bool makesLine);
  void PutInRun(std::string_view markup, const RunProperties& properties);
  void PutReference(const std::string& markup, const RunProperties* properties);
  void BeginElement(std::string open, std::string_view close);
  void EndElement();
  bool IsNewId(const std::string& id) { return ids_.insert(id).second; }
  // Pictures
  std::string PictureMarkup(const PictureFacts& picture, std::string_view place, std::string css);
  std::string DrawingMarkup(const PictureFacts& picture, std::string_view place, std::string css);
  void PutShape(const std::string& markup, const PlacedShape& placed);
  std::string BoxMarkup(const PictureFacts& facts, std::string_view content, PlacedShape& placed);
  // Parts
  void BeginPart(std::string_view kind, std::string_view role);
  void EndPart();

  BlockSink& sink_;
  StyleSheet& sheet_;
  const HtmlOptions options_;
  PictureOutput& pictures_;
  Warnings* const warnings_;
  PageFrame frame_;
  std::unique_ptr<DocumentFacts> facts_;
  std::unique_ptr<LookBook> looks_;
  std::unique_ptr<ParagraphWriter> paragraph_;
  std::unique_ptr<TableWriter> tables_;
  std::unique_ptr<SectionProperties> paper_, section_;  ///< the first one's, and that of the section at hand
  PageText out_;
  std::vector<Flow> flows_;
  size_t flowCount_ = 0;
  uint32_t muted_ = 0;
  uint64_t characters_ = 0;  ///< so far
  uint64_t pieceStart_ = 0;  ///< of these, those in front of the piece at hand
  uint32_t aside_ = 0;       ///< parts that are written elsewhere, around this place

  // The paragraph
  const ParagraphProperties* properties_ = nullptr;
  bool isInParagraph_ = false;
  bool isOpen_ = false;
  bool isHeadingEmpty_ = true;
  uint8_t headingLevel_ = 0;
  std::string_view name_;  ///< of its element
  std::u16string label_;
  bool hasLabel_ = false;
  bool isBulletLabel_ = false;
  std::string labelPicture_;
  LookBook::Look labelLook_ = 0, markLook_ = 0;
  ParagraphFacts::Follow labelFollow_ = ParagraphFacts::Follow::kTab;
  std::vector<Waiting> waiting_;
  bool waitingMakesLine_ = false;
  std::string id_;
  bool isBreakDue_ = false;
  bool isColumnBreak_ = false;  ///< that is due
  std::string before_, over_;   ///< shapes that hang at it
  bool isOnFirstPage_ = true;
  bool hasText_ = false, hasPicture_ = false;
  bool isCaption_ = false;
  uint32_t openLinks_ = 0;
  std::vector<bool> linksWritten_;
  uint32_t openElements_ = 0;

  std::unordered_set<std::string> ids_;
  SvgIds svgIds_;
  uint32_t keyFilters_ = 0;  ///< of pictures with a colour that is not seen
  std::string markup_;       ///< kept for its memory

  bool hasSectionElement_ = false;
  std::string footers_;
  PageText beside_;  ///< the page, while a header is written
  bool isFooter_ = false;
  bool hasContent_ = false;  ///< the header at hand shows something
  std::vector<Part> boxes_;
  std::string_view part_;  ///< "notes" or "comments" that is open
  NoteKind noteKind_ = NoteKind::kFootnote;
  bool isMarkDue_ = false;  ///< the note at hand has no link back yet
  std::string backLink_;
};

}  // namespace pagerex
