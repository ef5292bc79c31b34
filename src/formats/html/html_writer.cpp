#include "formats/html/html_writer.h"

#include <algorithm>

#include "base/file_time.h"
#include "base/language_tag.h"
#include "base/utf8.h"
#include "formats/html/run_css.h"
#include "formats/html/section_css.h"

namespace pagerex {
namespace {

constexpr uint8_t kDeepestHeading = 6;
constexpr size_t kPart = 0x10000;  ///< bytes that are held before they are given on

constexpr std::string_view kHeadings[] = {"p", "h1", "h2", "h3", "h4", "h5", "h6"};
constexpr std::string_view kColumnBreak = "<div class=cb></div>\n";
constexpr std::string_view kPageBreak = "<hr class=pb role=doc-pagebreak>\n";

/// "toc 1" to "toc 9".
bool isOfContents(std::u16string_view style) {
  return style.size() == 5 && style.starts_with(u"toc ") && style[4] >= '1' && style[4] <= '9';
}

bool beginsPage(const SectionProperties& section) {
  using Start = SectionProperties::Start;
  return section.start == Start::kNewPage || section.start == Start::kEvenPage ||
         section.start == Start::kOddPage;
}

void appendMetadata(const DocumentSummary& summary, std::string& out) {
  const struct {
    std::string_view name;
    const std::u16string& content;
  } rows[] = {{"author", summary.author}, {"description", summary.subject}, {"keywords", summary.keywords}};
  for (const auto& row : rows) {
    if (row.content.empty()) continue;
    PageText content;
    content.PutAttribute(row.content);
    out.append("<meta name=").append(row.name).append(" content=\"").append(content.view()).append("\">\n");
  }
}

bool dependsOnNext(const ParagraphProperties& paragraph) {
  return paragraph.spacesOnlyBetweenStyles || isBoxed(paragraph);
}

}  // namespace

HtmlWriter::HtmlWriter(BlockSink& sink, StyleSheet& sheet, const HtmlOptions& options,
                       PictureOutput& pictures, Warnings* warnings)
    : sink_(sink), sheet_(sheet), options_(options), pictures_(pictures), warnings_(warnings) {}

HtmlWriter::~HtmlWriter() = default;

std::string HtmlWriter::BaseRules(bool followsDarkScheme) {
  return baseRules(*looks_, *facts_, *paper_, followsDarkScheme);
}

// The document

void HtmlWriter::BeginDocument(const DocumentFacts& facts) {
  facts_ = std::make_unique<DocumentFacts>(facts);
  looks_ = std::make_unique<LookBook>(facts, sheet_);
  paragraph_ = std::make_unique<ParagraphWriter>(*looks_, sheet_);
  tables_ = std::make_unique<TableWriter>(out_, sheet_);
  paper_ = std::make_unique<SectionProperties>();
  section_ = std::make_unique<SectionProperties>();
  const std::u16string& title = facts.summary.title;
  if (std::any_of(title.begin(), title.end(), [](char16_t unit) { return unit > u' ' && unit != 0xA0; })) {
    PageText markup;
    markup.PutText(title);
    frame_.title = markup.view();
  }
  appendMetadata(facts.summary, frame_.metadata);
  frame_.language = languageTag(facts.language);
  frame_.isRightToLeft = facts.styles && facts.styles->ParagraphOf(0).isRightToLeft;
  BeginFlow({});
}

void HtmlWriter::EndDocument() {
  if (!part_.empty()) {
    EndLast();
    out_.Put("</section>\n");
  }
  EndFlow();
  Give();
}

void HtmlWriter::BeginSection(const SectionFacts& facts) {
  const SectionProperties& section = facts.properties;
  if (sink_.WantsEnd(characters_ - pieceStart_)) EndPiece();
  if (facts.index == 0) {
    *paper_ = section;
  } else if (beginsPage(section)) {
    out_.Put(kPageBreak);
    isOnFirstPage_ = false;
  }
  *section_ = section;
  std::string css;
  appendSectionCss(css, section);
  if (section.pageWidth != paper_->pageWidth || section.pageHeight != paper_->pageHeight) {
    const std::string name = "page" + std::to_string(facts.index + 1);
    std::string rule;
    appendPageRule(rule, name, section);
    sheet_.AddRule(rule + "\n");
    css += "page:" + name + ";";
  }
  const std::string_view name = sheet_.ClassOf('s', css);
  hasSectionElement_ = !name.empty();
  if (hasSectionElement_) {
    out_.Put("<div class=");
    out_.Put(name);
    out_.Put(">\n");
  }
}

void HtmlWriter::EndSection() {
  EndLast();
  EndLists(0);
  EndFrame();
  EndContents();
  if (hasSectionElement_) out_.Put("</div>\n");
  hasSectionElement_ = false;
  out_.Put(footers_);
  footers_.clear();
  flow().hasLast = false;
}

void HtmlWriter::BeginHeader(const HeaderFacts& facts) {
  isFooter_ = facts.isFooter;
  hasContent_ = false;
  Swap(beside_);
  ++aside_;
  BeginFlow({});
}

/// One that shows nothing is none.
void HtmlWriter::EndHeader() {
  EndFlow();
  --aside_;
  Swap(beside_);
  const std::string_view name = isFooter_ ? "footer" : "header";
  if (hasContent_) {
    std::string whole("<");
    whole.append(name).append(">\n").append(beside_.view()).append("</").append(name).append(">\n");
    isFooter_ ? static_cast<void>(footers_ += whole) : out_.Put(whole);
  }
  beside_.Clear();
}

/// Exchanges what is written to; who holds a reference to it goes on there.
void HtmlWriter::Swap(PageText& other) {
  std::swap(out_, other);
}

/// Gives on what is done.
void HtmlWriter::Give() {
  sink_.Take(out_.view());
  out_.Clear();
  tables_->Given();
}

void HtmlWriter::EndPiece() {
  Give();
  sink_.EndPiece();
  pieceStart_ = characters_;
}

// Blocks

void HtmlWriter::BeginFlow(const Colour& ground) {
  if (flowCount_ == flows_.size()) flows_.emplace_back();
  ++flowCount_;
  Flow& opened = flow();
  opened.lists.clear();
  opened.ground = ground;
  opened.hasLast = opened.isWrapped = opened.isContents = opened.isFigure = opened.isCaptionOpen =
      opened.isPending = false;
  opened.last = Flow::Last::kNone;
  opened.frame = {};
}

void HtmlWriter::EndFlow() {
  EndLast();
  EndLists(0);
  EndFrame();
  EndContents();
  --flowCount_;
}

/// The last paragraph is done: nothing hangs at it any more, and it is known what follows.
void HtmlWriter::EndLast() {
  BeginBlock(nullptr);
  EndFigure();
  flow().last = Flow::Last::kNone;
}

/// `next` null for anything but a paragraph.
void HtmlWriter::BeginBlock(const ParagraphProperties* next) {
  Flow& here = flow();
  if (here.isPending) {
    here.isPending = false;
    here.neighbours.isStyleBelow = next && next->style == here.pending.style;
    here.neighbours.joinsBelow = next && boxesJoin(here.pending, *next);
    const BlockMarkup& block = looks_->Block(here.pending, here.neighbours, here.pendingLook, here.ground);
    out_.Insert(here.pendingAt, block.attributes);
  }
  if (here.isWrapped) out_.Put("</div>\n");
  here.isWrapped = false;
  if (aside_ == 0 && out_.size() > kPart && !here.isFigure && here.last != Flow::Last::kPicture &&
      here.last != Flow::Last::kCaption)
    Give();
}

void HtmlWriter::EndContents() {
  if (!flow().isContents) return;
  flow().isContents = false;
  out_.Put("</section>\n");
}

void HtmlWriter::EndFigure() {
  if (!flow().isFigure) return;
  out_.Put(flow().isCaptionOpen ? "</figcaption></figure>\n" : "</figure>\n");
  flow().isFigure = flow().isCaptionOpen = false;
}

/// Paragraphs of one frame stand in one element.
void HtmlWriter::BeginFrame(const ParagraphProperties& properties) {
  std::string css = frameCss(properties.frame, *section_);
  appendFrameSizeCss(css, properties.frame);
  out_.Put("<div class=\"frame fl ");
  out_.Put(sheet_.ClassOf('f', css));
  out_.Put("\">\n");
  flow().frame = properties.frame;
}

void HtmlWriter::EndFrame() {
  if (!flow().frame.isThere) return;
  EndLists(0);
  EndContents();
  flow().frame = {};
  out_.Put("</div>\n");
}

void HtmlWriter::EndLists(size_t depth) {
  std::vector<Flow::List>& lists = flow().lists;
  while (lists.size() > depth) {
    if (lists.back().isItemOpen) out_.Put("</li>\n");
    out_.Put("</");
    out_.Put(lists.back().name);
    out_.Put(">\n");
    lists.pop_back();
  }
}

/// Of a deeper level than the last item by more than one, there are items without text between them.
void HtmlWriter::BeginItem(const ParagraphFacts& facts) {
  std::vector<Flow::List>& lists = flow().lists;
  const std::string_view name = facts.isBullet || facts.label.empty() ? "ul" : "ol";
  const size_t depth = size_t{facts.properties.listLevel} + 1;
  EndLists(depth);
  if (lists.size() == depth && lists.back().name != name) EndLists(depth - 1);
  while (lists.size() < depth) {
    if (!lists.empty() && !lists.back().isItemOpen) {
      out_.Put("<li>");
      lists.back().isItemOpen = true;
    }
    out_.Put("<");
    out_.Put(name);
    out_.Put(" role=list>\n");
    lists.push_back({name});
  }
  if (lists.back().isItemOpen) out_.Put("</li>\n");
  out_.Put("<li>");
  lists.back().isItemOpen = true;
}

/// Where there are columns; elsewhere the next one is on the next page.
bool HtmlWriter::BreaksColumn(Mark mark) const {
  return mark == Mark::kColumnBreak && section_->columnCount > 1;
}

void HtmlWriter::PutPageBreak() {
  isOnFirstPage_ = false;
  if (aside_ == 0) out_.Put(kPageBreak);
}

// Paragraphs

void HtmlWriter::BeginParagraph(const ParagraphFacts& facts) {
  if (muted_) return;
  Flow& here = flow();
  const ParagraphProperties& properties = facts.properties;
  const bool follows = here.hasLast;
  // What the one above leaves to this one, before its own copy is given up.
  Neighbours neighbours;
  if (follows && dependsOnNext(properties)) {
    neighbours.isStyleAbove = here.lastStyle == properties.style;
    neighbours.joinsAbove = here.isPending && boxesJoin(here.pending, properties);
  }
  BeginBlock(&properties);
  isCaption_ = facts.styleName == u"caption" && aside_ == 0 && !facts.isListItem;
  const bool isCaptionBelow =
      isCaption_ && here.last == Flow::Last::kPicture && here.lists.empty() && !here.isContents &&
      (here.frame.isThere ? here.frame == properties.frame : !properties.frame.isThere);
  if (!isCaptionBelow) EndFigure();
  if (!isCaptionBelow && IsBetweenBlocks() && sink_.WantsEnd(characters_ - pieceStart_)) EndPiece();
  looks_->MayForget();
  BeginAround(facts, isCaptionBelow);
  here.neighbours = neighbours;
  Take(facts);
  here.lastStart = out_.size();
}

/// Whether what was put so far is complete blocks of the page.
bool HtmlWriter::IsBetweenBlocks() const {
  const Flow& here = flows_[flowCount_ - 1];
  return flowCount_ == 1 && aside_ == 0 && part_.empty() && !hasSectionElement_ && here.lists.empty() &&
         !here.isContents && !here.frame.isThere;
}

/// Ends and begins the elements that a paragraph stands in.
void HtmlWriter::BeginAround(const ParagraphFacts& facts, bool isCaptionBelow) {
  Flow& here = flow();
  const ParagraphProperties& properties = facts.properties;
  const bool isContents = flowCount_ == 1 && isOfContents(facts.styleName);
  if (here.isContents && !isContents) EndContents();
  if (here.frame.isThere && !(here.frame == properties.frame)) EndFrame();
  if (properties.frame.isThere && properties.frame.dropCapLines == 0 && !here.frame.isThere &&
      tables_->empty()) {
    EndLists(0);
    EndContents();
    BeginFrame(properties);
  }
  if (facts.isListItem && !isContents) {
    BeginItem(facts);
  } else if (!here.lists.empty()) {
    EndLists(0);
  }
  if (isContents && !here.isContents) {
    out_.Put("<section role=doc-toc>\n");
    here.isContents = true;
  }
  if (isCaptionBelow) {
    out_.Insert(here.lastStart, "<figure>");
    out_.Put("<figcaption>");
    here.isFigure = here.isCaptionOpen = true;
  }
}

/// What is known of the paragraph before its content.
void HtmlWriter::Take(const ParagraphFacts& facts) {
  properties_ = &facts.properties;
  headingLevel_ = facts.headingLevel;
  isInParagraph_ = true;
  isOpen_ = false;
  label_ = facts.label;
  isBulletLabel_ = facts.isBullet;
  labelFollow_ = facts.labelFollow;
  labelPicture_.clear();
  if (facts.labelPicture) TakeLabelPicture(*facts.labelPicture);
  hasLabel_ = !label_.empty() || !labelPicture_.empty();
  markLook_ = looks_->LookOf(facts.markProperties);
  labelLook_ = facts.labelProperties ? looks_->LookOf(*facts.labelProperties) : markLook_;
  waiting_.clear();
  waitingMakesLine_ = false;
  id_.clear();
  before_.clear();
  over_.clear();
  isBreakDue_ = hasText_ = hasPicture_ = false;
  openLinks_ = openElements_ = 0;
  linksWritten_.clear();
}

/// Where browsers cannot show it, the label stays text.
void HtmlWriter::TakeLabelPicture(const PictureFacts& picture) {
  const PictureAddress address = pictures_.AddressOf(picture);
  if (!address.isShown) return;
  labelPicture_.append("<img class=lb alt=\"\" src=\"");
  appendAttribute(labelPicture_, address.uri);
  labelPicture_ += "\">";
  label_.clear();
}

/// With its first text, whose look it has.
void HtmlWriter::Open(LookBook::Look look) {
  isOpen_ = true;
  Flow& here = flow();
  const bool isEmpty = !hasText_ && !waitingMakesLine_;
  const uint8_t level = isEmpty && !hasLabel_ ? 0 : std::min(headingLevel_, kDeepestHeading);
  name_ = kHeadings[level];
  here.lastStart = out_.size();
  out_.Put('<');
  out_.Put(name_);
  const bool isPending = dependsOnNext(*properties_);
  const size_t attributesAt = out_.size();
  const BlockMarkup& block = looks_->Block(*properties_, here.neighbours, look, here.ground);
  if (!isPending) out_.Put(block.attributes);
  if (headingLevel_ > kDeepestHeading && level > 0) out_.Put(" aria-level=" + std::to_string(headingLevel_));
  if (!id_.empty()) {
    std::string attribute = " id=";
    appendValue(attribute, id_);
    out_.Put(attribute);
  }
  out_.Put('>');
  if (isPending) {
    here.isPending = true;
    here.pendingAt = attributesAt;
    here.pending = *properties_;
    here.pendingLook = look;
  }
  const bool isInText = flowCount_ == 1 || (flowCount_ == 2 && !beside_.empty());
  const int32_t lineEnd = isInText && section_->columnCount <= 1
                              ? int32_t{section_->pageWidth} - section_->marginLeft - section_->marginRight -
                                    properties_->indentEnd
                              : 0;
  paragraph_->Begin(out_, *properties_, block.context,
                    {facts_->defaultTabStop, lineEnd, looks_->Properties(look).sizeHalfPoints});
  if (hasLabel_) {
    if (isBulletLabel_) {
      RunProperties bullet = looks_->Properties(labelLook_);
      bullet.fonts = looks_->Properties(look).fonts;
      bullet.serial = {};
      labelLook_ = looks_->LookOf(bullet);
    }
    paragraph_->PutLabel(label_, labelLook_, labelFollow_, labelPicture_);
  }
  for (const Waiting& each : waiting_) {
    if (each.kind == Waiting::kMarkup) paragraph_->PutInline(each.markup);
    if (each.kind == Waiting::kLink) paragraph_->PutLink(each.markup);
    if (each.kind == Waiting::kBegin) paragraph_->BeginElement(each.markup, each.close);
    if (each.kind == Waiting::kEnd) paragraph_->EndElement();
  }
  waiting_.clear();
}

void HtmlWriter::EndParagraph() {
  if (muted_ || !isInParagraph_) return;
  isInParagraph_ = false;
  Flow& here = flow();
  if (!isOpen_) Open(markLook_);
  const bool hasLine = paragraph_->End() || waitingMakesLine_;
  if (!hasLine) out_.Put("<br>");
  out_.Put("</");
  out_.Put(name_);
  out_.Put(">\n");
  if (isBreakDue_ && isColumnBreak_) {
    out_.Put(kColumnBreak);
  } else if (isBreakDue_) {
    PutPageBreak();
  }
  if (hasText_ || hasPicture_ || hasLabel_) hasContent_ = true;
  here.hasLast = true;
  here.lastStyle = properties_->style;
  here.last = isBreakDue_ || isCaption_  ? Flow::Last::kOther
              : hasPicture_ && !hasText_ ? Flow::Last::kPicture
                                         : Flow::Last::kOther;
  if (isCaption_ && !isBreakDue_ && !here.isFigure) here.last = Flow::Last::kCaption;
  HangShapes();
  properties_ = nullptr;
}

/// An element around the last paragraph, from whose corner the places of what hangs at it count.
void HtmlWriter::Wrap() {
  constexpr std::string_view kWrapper = "<div class=a>";
  Flow& here = flow();
  if (here.isWrapped) return;
  out_.Insert(here.lastStart, kWrapper);
  if (here.isPending) here.pendingAt += kWrapper.size();
  here.isWrapped = true;
}

void HtmlWriter::Text(std::u16string_view text, const RunProperties& properties) {
  if (muted_ || !isInParagraph_ || text.empty()) return;
  hasText_ = true;
  characters_ += text.size();
  if (!isOpen_) Open(looks_->LookOf(properties));
  if (isBreakDue_) {
    paragraph_->PutInline(isColumnBreak_ ? "<span class=cb></span>"
                                         : "<span class=pb role=doc-pagebreak></span>");
    isBreakDue_ = false;
  }
  paragraph_->Text(text, properties);
}

void HtmlWriter::MarkHere(Mark mark, const RunProperties& properties) {
  if (muted_ || !isInParagraph_) return;
  if (mark == Mark::kPageBreak || mark == Mark::kColumnBreak) {
    if (isOpen_ || !waiting_.empty()) {
      isBreakDue_ = true;
      isColumnBreak_ = BreaksColumn(mark);
    } else if (BreaksColumn(mark)) {
      out_.Put(kColumnBreak);
    } else {
      PutPageBreak();
    }
    return;
  }
  if (!isOpen_) {
    hasText_ = true;
    Open(looks_->LookOf(properties));
  }
  if (mark == Mark::kTab) return paragraph_->PutTab();
  if (mark == Mark::kRule)
    return paragraph_->PutInline("<span class=rule role=separator></span>", &properties);
  paragraph_->PutLineBreak();
}

void HtmlWriter::PutInline(std::string_view markup, bool makesLine) {
  if (isOpen_) {
    paragraph_->PutInline(markup);
    waitingMakesLine_ |= makesLine;
  } else {
    waiting_.push_back({Waiting::kMarkup, std::string(markup), {}});
    waitingMakesLine_ |= makesLine;
  }
}

void HtmlWriter::PutInRun(std::string_view markup, const RunProperties& properties) {
  hasText_ = true;
  if (!isOpen_) Open(looks_->LookOf(properties));
  paragraph_->PutInline(markup, &properties);
}

void HtmlWriter::BeginElement(std::string open, std::string_view close) {
  ++openElements_;
  if (isOpen_) return paragraph_->BeginElement(open, close);
  waiting_.push_back({Waiting::kBegin, std::move(open), std::string(close)});
}

void HtmlWriter::EndElement() {
  if (openElements_ == 0) return;
  --openElements_;
  if (isOpen_) return paragraph_->EndElement();
  waiting_.push_back({Waiting::kEnd, {}, {}});
}

}  // namespace pagerex
