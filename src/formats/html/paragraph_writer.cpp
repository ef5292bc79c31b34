#include "formats/html/paragraph_writer.h"

#include <algorithm>

#include "base/utf8.h"
#include "formats/html/css_values.h"

namespace pagerex {
namespace {

struct ScriptRow {
  char16_t first, last;
  FontScript script;
};
/// Characters that take other fonts than the letters around them. Between rows: as `other`.
constexpr ScriptRow kScripts[] = {
    {0x0590, 0x08FF, FontScript::kComplex},   {0x0900, 0x0DFF, FontScript::kComplex},
    {0x0E00, 0x0EFF, FontScript::kComplex},   {0x1100, 0x11FF, FontScript::kEastAsian},
    {0x1780, 0x17FF, FontScript::kComplex},   {0x2E80, 0x9FFF, FontScript::kEastAsian},
    {0xA000, 0xA4CF, FontScript::kEastAsian}, {0xAC00, 0xD7FF, FontScript::kEastAsian},
    {0xD800, 0xDFFF, FontScript::kEastAsian}, {0xF900, 0xFAFF, FontScript::kEastAsian},
    {0xFB1D, 0xFDFF, FontScript::kComplex},   {0xFE30, 0xFE4F, FontScript::kEastAsian},
    {0xFE70, 0xFEFC, FontScript::kComplex},   {0xFF00, 0xFFEF, FontScript::kEastAsian},
};

FontScript scriptOf(char16_t unit, FontScript before) {
  if (unit == ' ') return before;
  if (unit < 0x80) return FontScript::kAscii;
  for (const ScriptRow& row : kScripts) {
    if (unit >= row.first && unit <= row.last) return row.script;
  }
  return FontScript::kOther;
}

/// The scripts beyond ASCII that a text has: bits, 1 << FontScript.
unsigned scriptsOf(std::u16string_view text) {
  unsigned scripts = 0;
  for (const char16_t unit : text) {
    if (unit < 0x80) continue;
    const bool isUsual = unit < 0x0590 || (unit >= 0x2000 && unit < 0x2E80);
    scripts |= 1u << static_cast<unsigned>(isUsual ? FontScript::kOther : scriptOf(unit, FontScript::kOther));
  }
  return scripts;
}

constexpr unsigned kOtherFont = 1u << static_cast<unsigned>(FontScript::kOther);

constexpr uint8_t kDecimal = 3;

/// What fills the way to a stop: classes of the page's own rules.
constexpr std::string_view kLeaders[] = {"tl", "tl tl1", "tl tl2", "tl tl3", "tl tl4", "tl tl5"};

}  // namespace

void ParagraphWriter::Begin(PageText& out, const ParagraphProperties& properties, uint32_t context,
                            const TabLine& line) {
  out_ = &out;
  properties_ = &properties;
  context_ = context;
  line_ = line;
  isRunOpen_ = false;
  elements_.clear();
  hasLine_ = false;
  group_ = {};
  BeginSegment(properties.indentStart + properties.indentFirstLine);
}

void ParagraphWriter::BeginSegment(int32_t position) {
  segment_ = out_->size();
  position_ = position;
}

void ParagraphWriter::PutLabel(std::u16string_view label, LookBook::Look look, ParagraphFacts::Follow follow,
                               std::string_view picture) {
  const RunMarkup& markup = looks_.Run(look, context_, FontScript::kAscii);
  std::string css = "text-indent:0;";
  if (follow == ParagraphFacts::Follow::kTab) {
    const int32_t width =
        label.size() > 1 ? static_cast<int32_t>(label.size()) * line_.sizeHalfPoints * 5 : 100;
    const FoundStop stop = nextStop(*properties_, position_ + std::min(width, 1440), line_.distance);
    css += "display:inline-block;min-width:calc(";
    appendPoints(css, stop.position - position_);
    css += "*var(--i));";
    position_ = stop.position;
  }
  std::string open = "<span class=";
  appendValue(open, sheet_.ClassOf('m', css));
  out_->Put(open + ">");
  out_->Put(picture);
  if (!label.empty()) {
    out_->Put(markup.open);
    out_->PutText(label);
    out_->Put(markup.close);
  }
  if (follow != ParagraphFacts::Follow::kNothing) out_->Put(' ');
  out_->Put("</span>");
  hasLine_ = true;
  BeginSegment(position_);
}

// Runs

void ParagraphWriter::Text(std::u16string_view text, const RunProperties& properties) {
  const LookBook::Look look = looks_.LookOf(properties);
  hasLine_ = true;
  const bool isComplex = properties.isComplexScript || properties.isRightToLeft;
  const uint8_t others = looks_.OtherScripts(look);
  const bool isSimple = !isComplex && !(others & kOtherFont) && isSimpleText(text.data(), text.size());
  if (others != 0 && !isSimple && (isComplex || (others & scriptsOf(text)) != 0))
    return PutByScripts(text, look, isComplex);
  OpenRun(look, FontScript::kAscii);
  out_->PutText(text);
}

void ParagraphWriter::PutByScripts(std::u16string_view text, LookBook::Look look, bool isComplex) {
  if (isComplex) {
    OpenRun(look, FontScript::kComplex);
    return out_->PutText(text);
  }
  const FontNumbers& fonts = looks_.Properties(look).fonts;
  FontScript script = isRunOpen_ && runLook_ == look ? runScript_ : scriptOf(text[0], FontScript::kAscii);
  size_t start = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    FontScript next = i < text.size() ? scriptOf(text[i], script) : script;
    if (next == FontScript::kOther && fonts.other == fonts.ascii) next = FontScript::kAscii;
    if (i < text.size() && next == script) continue;
    if (i > start) {
      OpenRun(look, script);
      out_->PutText(text.substr(start, i - start));
    }
    start = i;
    script = next;
  }
}

void ParagraphWriter::OpenRun(LookBook::Look look, FontScript script) {
  if (isRunOpen_ && runLook_ == look && runScript_ == script) return;
  const RunMarkup& markup = looks_.Run(look, context_, script);
  const bool isSame = isRunOpen_ && markup.open == runOpen_;
  runLook_ = look;
  runScript_ = script;
  if (isSame) return;
  CloseRun();
  out_->Put(markup.open);
  isRunOpen_ = true;
  runOpen_ = markup.open;
  runClose_ = markup.close;
}

void ParagraphWriter::CloseRun() {
  if (!isRunOpen_) return;
  isRunOpen_ = false;
  out_->Put(runClose_);
}

void ParagraphWriter::PutInline(std::string_view markup, const RunProperties* look) {
  if (look) {
    OpenRun(looks_.LookOf(*look), FontScript::kAscii);
    hasLine_ = true;
  } else {
    CloseRun();
  }
  out_->Put(markup);
}

void ParagraphWriter::PutLink(std::string_view markup, const RunProperties* look) {
  const auto link = std::find_if(elements_.begin(), elements_.end(),
                                 [](const Element& element) { return element.open.starts_with("<a "); });
  const std::vector<Element> inner(link, elements_.end());
  for (size_t i = 0; i < inner.size(); ++i) EndElement();
  PutInline(markup, look);
  for (const Element& element : inner) BeginElement(element.open, element.close);
}

void ParagraphWriter::PutLineBreak() {
  CloseRun();
  EndGroup();
  out_->Put("<br>");
  hasLine_ = true;
  BeginSegment(properties_->indentStart);
}

void ParagraphWriter::BeginElement(std::string_view open, std::string_view close) {
  CloseRun();
  const bool wasEmpty = out_->size() == segment_;
  out_->Put(open);
  elements_.push_back({std::string(open), std::string(close), out_->size()});
  if (wasEmpty) segment_ = out_->size();
}

void ParagraphWriter::EndElement() {
  if (elements_.empty()) return;
  CloseRun();
  const Element& element = elements_.back();
  if (out_->size() == element.begin) {
    // Nothing stands in it.
    out_->Cut(element.begin - element.open.size());
    segment_ = std::min(segment_, out_->size());
    return elements_.pop_back();
  }
  if (group_.isOpen && group_.begin >= element.begin) EndGroup();
  NameLink(element);
  const bool isAround = segment_ >= element.begin;
  out_->Put(element.close);
  // What stood in it is no longer to be moved by itself.
  if (isAround) {
    const size_t opened = element.begin - element.open.size();
    if (segment_ == element.begin)
      segment_ = opened;
    else
      segment_ = out_->size();
  }
  elements_.pop_back();
}

/// A link without text goes by its address for those who do not see what it is around.
void ParagraphWriter::NameLink(const Element& link) {
  constexpr std::string_view kBegin = "<a href=\"";
  if (!link.open.starts_with(kBegin) || link.open.find(" aria-label=") != std::string::npos) return;
  const std::string_view content = out_->view().substr(link.begin);
  if (content.find(" alt=\"\"") == std::string_view::npos &&
      content.find("</span>") == std::string_view::npos)
    return;
  bool isInTag = false;
  for (const char byte : content) {
    if (byte == '<') isInTag = true;
    if (!isInTag && byte != ' ' && byte != '\t') return;
    if (byte == '>') isInTag = false;
  }
  const std::string_view address =
      std::string_view(link.open).substr(kBegin.size(), link.open.find('"', kBegin.size()) - kBegin.size());
  out_->Insert(link.begin - 1, " aria-label=\"" + std::string(address) + "\"");
  if (segment_ >= link.begin) segment_ = out_->size();
}

bool ParagraphWriter::End() {
  CloseRun();
  EndGroup();
  while (!elements_.empty()) EndElement();
  return hasLine_;
}

// Tabs

void ParagraphWriter::PutTab() {
  hasLine_ = true;
  if (!hasOwnStops(*properties_) && !group_.isOpen) {
    // Browsers know the stops that every paragraph has.
    out_->Put('\t');
    return;
  }
  CloseRun();
  EndGroup();
  const size_t first = CloseInner();
  const int32_t width = aboutWidth(out_->view().substr(segment_), line_.sizeHalfPoints);
  FoundStop stop = nextStop(*properties_, position_ + width, line_.distance);
  // Text that ends at a stop behind the line's end would go into the next line.
  if (stop.alignment != 0 && line_.end > 0) stop.position = std::min(stop.position, line_.end);
  PutInStop(stop, stop.position - position_);
  Reopen(first);
  // Of a group the text is still to come.
  if (!group_.isOpen) segment_ = out_->size();
  position_ = stop.position;
}

/// Of the elements around this place those that began behind the segment's begin.
size_t ParagraphWriter::CloseInner() {
  size_t first = elements_.size();
  while (first > 0 && elements_[first - 1].begin > segment_) out_->Put(elements_[--first].close);
  return first;
}

void ParagraphWriter::Reopen(size_t first) {
  for (size_t i = first; i < elements_.size(); ++i) {
    out_->Put(elements_[i].open);
    elements_[i].begin = out_->size();
  }
}

void ParagraphWriter::PutInStop(const FoundStop& stop, int32_t width) {
  std::string css = stop.alignment == 0 && stop.leader == 0 ? "min-width:" : "width:";
  appendPoints(css, std::max(width, 0));
  std::string open = "<span class=\"";
  const std::string_view name = sheet_.ClassOf('g', css);
  open += stop.alignment == 0 ? "t " : stop.alignment == 1 ? "tf tc " : "tf ";
  open.append(name).append("\">");
  if (stop.alignment == 0) {
    // The way to a stop may be filled as well.
    if (stop.leader != 0) open.replace(open.find("t "), 2, "tf ");
    out_->Insert(segment_, open);
    if (stop.leader == 0) {
      out_->Put("\t</span>");
    } else {
      out_->Put("<span class=\"");
      out_->Put(kLeaders[std::min<size_t>(stop.leader, std::size(kLeaders) - 1)]);
      out_->Put("\">\t</span></span>");
    }
    return;
  }
  group_ = {true, segment_ + open.size(), stop.alignment == kDecimal, 0};
  out_->Insert(segment_, open + "<span>");
  out_->Put("</span><span class=\"");
  out_->Put(kLeaders[std::min<size_t>(stop.leader, std::size(kLeaders) - 1)]);
  out_->Put("\">\t</span><span>");
  group_.text = out_->size();
}

/// What stands behind a number's point takes no room in front of the stop.
void ParagraphWriter::EndGroup() {
  if (!group_.isOpen) return;
  group_.isOpen = false;
  const std::string_view text = out_->view().substr(group_.text);
  const size_t point = text.find_first_of(".,");
  if (group_.isDecimal && point != std::string_view::npos && text.find('<') == std::string_view::npos) {
    out_->Insert(group_.text + point, "<span class=dp>");
    out_->Put("</span>");
  }
  const size_t first = [this] {
    size_t at = elements_.size();
    while (at > 0 && elements_[at - 1].begin > group_.begin) out_->Put(elements_[--at].close);
    return at;
  }();
  out_->Put("</span></span>");
  Reopen(first);
  segment_ = out_->size();
}

}  // namespace pagerex
