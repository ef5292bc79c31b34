// Pictures, drawings and text boxes.

#include <algorithm>
#include <cmath>

#include "formats/html/css_values.h"
#include "formats/html/html_writer.h"

namespace pagerex {
namespace {

constexpr uint16_t kRectangle = 1, kTextBox = 202, kHostControl = 201, kPictureFrame = 75;
constexpr uint64_t kFirstPage = 4000;  ///< characters that a first page has about, without page breaks

int32_t twipsOf(int32_t emu) {
  return emu / 635;
}

void appendTurn(std::string& css, const ShapeGeometry& geometry) {
  if (geometry.rotation == 0 && !geometry.flipsX && !geometry.flipsY) return;
  css += "transform:";
  if (geometry.rotation != 0) {
    css += "rotate(";
    appendHundredths(css, std::lround(std::fmod(geometry.rotation, 360.0F) * 100), "deg");
    css += ")";
  }
  if (geometry.flipsX || geometry.flipsY) {
    if (css.back() == ')') css += ' ';
    css.append("scale(").append(geometry.flipsX ? "-1" : "1").append(geometry.flipsY ? ",-1)" : ",1)");
  }
  css += ';';
}

bool isCropped(const ShapePicture& picture) {
  return picture.cropLeft != 0 || picture.cropTop != 0 || picture.cropRight != 0 || picture.cropBottom != 0;
}

/// Thousandths of the whole picture that are shown: where they begin, and how many.
std::string viewBoxOf(const ShapePicture& picture) {
  const auto thousandths = [](float part) { return std::lround(std::clamp(part, -9.0F, 0.99F) * 1000); };
  const long left = thousandths(picture.cropLeft), top = thousandths(picture.cropTop);
  const long width = std::max(1000 - left - thousandths(picture.cropRight), 1L);
  const long height = std::max(1000 - top - thousandths(picture.cropBottom), 1L);
  return std::to_string(left) + " " + std::to_string(top) + " " + std::to_string(width) + " " +
         std::to_string(height);
}

void appendFilters(std::string& css, const ShapePicture& picture) {
  if (!picture.isGrey && !picture.isBlackAndWhite && picture.contrast == 1 && picture.brightness == 0) return;
  css += "filter:";
  if (picture.isGrey || picture.isBlackAndWhite) css += "grayscale(1)";
  const float contrast = picture.isBlackAndWhite ? 50.0F : std::clamp(picture.contrast, 0.0F, 50.0F);
  if (contrast != 1) {
    css += "contrast(";
    appendHundredths(css, std::lround(contrast * 100), "");
    css += ')';
  }
  if (picture.brightness != 0) {
    css += "brightness(";
    appendHundredths(css, std::lround(std::clamp(1 + picture.brightness, 0.0F, 2.0F) * 100), "");
    css += ')';
  }
  css += ';';
}

/// A filter that takes away what has this colour: 1 stands at the colour's place among the 256 of each part.
void appendKeyFilter(std::string& markup, std::string_view id, uint32_t rgb) {
  markup.append("<filter id=\"")
      .append(id)
      .append("\" color-interpolation-filters=\"sRGB\"><feComponentTransfer>");
  for (const char part : {'R', 'G', 'B'}) {
    const uint32_t place = rgb >> (part == 'R' ? 16 : part == 'G' ? 8 : 0) & 0xFF;
    markup.append("<feFunc").append(1, part).append(" type=\"discrete\" tableValues=\"");
    for (uint32_t i = 0; i < 256; ++i) markup += i == place ? "1 " : "0 ";
    markup.back() = '"';
    markup += "/>";
  }
  markup +=
      "</feComponentTransfer><feColorMatrix values=\"0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 -1 -1 -1 0 3\" "
      "result=\"k\"/>"
      "<feComposite in=\"SourceGraphic\" in2=\"k\" operator=\"in\"/></filter>";
}

std::string_view kindOfPlace(PlacedShape::Kind kind) {
  return kind == PlacedShape::Kind::kInline ? "" : "fl";
}

std::string classes(std::string_view first, std::string_view second, std::string_view third = {}) {
  std::string names;
  for (const std::string_view each : {first, second, third}) {
    if (each.empty()) continue;
    if (!names.empty()) names += ' ';
    names += each;
  }
  std::string attribute;
  if (names.empty()) return attribute;
  attribute = " class=";
  appendValue(attribute, names);
  return attribute;
}

/// What can be said without a drawing: a box of one colour with one line around it.
bool isPlainBox(const ShapeFacts& shape) {
  const bool isBox = shape.geometry.type == kTextBox || shape.geometry.type == kRectangle ||
                     shape.geometry.type == kHostControl || shape.geometry.type == kPictureFrame;
  const bool isPlainFill = shape.fill.kind == ShapeFill::Kind::kNone ||
                           (shape.fill.kind == ShapeFill::Kind::kSolid && shape.fill.opacity >= 1);
  return isBox && isPlainFill && !shape.shadow.isThere && shape.line.style == ShapeLine::Style::kSingle &&
         shape.geometry.rotation == 0;
}

void appendPlainBox(std::string& css, const ShapeFacts& shape) {
  if (shape.fill.kind == ShapeFill::Kind::kSolid) {
    css += "background-color:";
    appendColour(css, shape.fill.rgb);
    css += ';';
  }
  if (!shape.line.isThere) return;
  css += "border:";
  appendPoints(css, std::clamp(twipsOf(shape.line.width), 10, 1000));
  css += shape.line.dash == 0 ? " solid " : shape.line.dash == 2 ? " dotted " : " dashed ";
  appendColour(css, shape.line.rgb);
  css += ';';
}

void appendInsets(std::string& css, const ShapeFacts& shape, const ShapeBox& box) {
  ShapeTextBox inside{0, 0, box.width, box.height};
  if (!isPlainBox(shape)) inside = textRectangle(shape, box.width, box.height);
  const auto side = [&css](int64_t twips) { appendPoints(css, std::clamp<int64_t>(twips, 0, 14400)); };
  css += "padding:";
  side(int64_t{inside.top} + twipsOf(shape.text.top));
  css += ' ';
  side(int64_t{box.width} - inside.left - inside.width + twipsOf(shape.text.right));
  css += ' ';
  side(int64_t{box.height} - inside.top - inside.height + twipsOf(shape.text.bottom));
  css += ' ';
  side(int64_t{inside.left} + twipsOf(shape.text.left));
  css += ';';
  if (shape.text.anchor != ShapeText::Anchor::kTop) {
    css += "display:flex;flex-direction:column;justify-content:";
    css += shape.text.anchor == ShapeText::Anchor::kMiddle ? "center;" : "flex-end;";
  }
  if (!shape.text.wraps) css += "white-space:nowrap;--w:pre;";
  if (shape.text.flow == 1 || shape.text.flow == 3 || shape.text.flow == 5)
    css += "writing-mode:vertical-rl;";
  if (shape.text.flow == 2) css += "writing-mode:sideways-lr;";
}

}  // namespace

void HtmlWriter::Picture(const PictureFacts& picture) {
  if (muted_ || !isInParagraph_) return;
  hasPicture_ = true;
  const PlacedShape placed =
      placeOf(picture, *section_, isOnFirstPage_ && characters_ < kFirstPage && boxes_.empty());
  const std::string_view place = kindOfPlace(placed.kind);
  const bool isDrawing = !picture.source && picture.linkedAddress.empty() && picture.shape &&
                         picture.shape->geometry.type != kPictureFrame;
  const std::string markup =
      isDrawing ? DrawingMarkup(picture, place, placed.css) : PictureMarkup(picture, place, placed.css);
  if (markup.empty()) return;
  if (placed.kind == PlacedShape::Kind::kInline) return PutInline(markup, true);
  PutShape(markup, placed);
}

/// What hangs at the paragraph stands in front of it, or, where it counts from it, behind.
void HtmlWriter::PutShape(const std::string& markup, const PlacedShape& placed) {
  if (placed.kind == PlacedShape::Kind::kOver && !placed.isFromTop) {
    over_ += markup;
  } else {
    before_ += markup;
  }
}

void HtmlWriter::HangShapes() {
  Flow& here = flow();
  if (!before_.empty()) {
    out_.Insert(here.lastStart, before_);
    here.lastStart += before_.size();
    if (here.isPending) here.pendingAt += before_.size();
    before_.clear();
  }
  if (over_.empty()) return;
  Wrap();
  out_.Put(over_);
  over_.clear();
}

std::string HtmlWriter::PictureMarkup(const PictureFacts& picture, std::string_view place, std::string css) {
  const PictureAddress address = pictures_.AddressOf(picture);
  PageText description;
  description.PutAttribute(picture.description);
  const ShapeBox box = boxOf(picture);
  appendPictureSize(css, box.width, box.height);
  if (picture.shape) {
    appendTurn(css, picture.shape->geometry);
    appendFilters(css, picture.shape->picture);
    if (picture.shape->line.isThere && !picture.isInline) {
      css += "outline:";
      appendPoints(css, std::clamp(twipsOf(picture.shape->line.width), 10, 1000));
      css += " solid ";
      appendColour(css, picture.shape->line.rgb);
      css += ';';
    }
  }
  const std::string_view name = sheet_.ClassOf('i', css);
  std::string markup;
  if (!address.isShown) {
    // Without bytes and an address it only keeps room, for what is drawn over it.
    const bool isRoom = !picture.source && picture.linkedAddress.empty();
    markup = "<span" + classes(isRoom ? "sh" : "missing", place, name);
    if (!description.empty())
      markup.append(" role=img aria-label=\"").append(description.view()).append("\"");
    return markup + "></span>";
  }
  constexpr uint32_t kMostKeyFilters = 256;  // one takes 2 KB
  const bool hasKey = picture.shape && picture.shape->picture.hasClearColour && keyFilters_ < kMostKeyFilters;
  if (hasKey || (picture.shape && isCropped(picture.shape->picture))) {
    markup = "<svg" + classes(place, name) + " viewBox=\"" + viewBoxOf(picture.shape->picture) +
             "\" preserveAspectRatio=none";
    if (description.empty()) {
      markup += " aria-hidden=true";
    } else {
      markup.append(" role=img aria-label=\"").append(description.view()).append("\"");
    }
    markup += '>';
    std::string filter;
    if (hasKey) {
      ++keyFilters_;
      filter = "g-" + std::to_string(svgIds_.Take());
      appendKeyFilter(markup, filter, picture.shape->picture.clearRgb);
      filter = " filter=\"url(#" + filter + ")\"";
    }
    markup.append("<image width=1000 height=1000 preserveAspectRatio=none").append(filter).append(" href=\"");
    appendAttribute(markup, address.uri);
    return markup + "\"/></svg>";
  }
  markup = "<img" + classes(place, name);
  markup.append(" alt=\"").append(description.view()).append("\" src=\"");
  appendAttribute(markup, address.uri);
  return markup + "\">";
}

std::string HtmlWriter::DrawingMarkup(const PictureFacts& picture, std::string_view place, std::string css) {
  std::string drawing;
  PictureFacts fill = picture;
  fill.source = picture.shape->fill.picture;
  fill.identity = picture.shape->fill.pictureIdentity;
  const PictureAddress address = fill.source ? pictures_.AddressOf(fill) : PictureAddress();
  const ShapeBox box = boxOf(picture);
  if (!appendShapeSvg(drawing, *picture.shape, box.width, box.height, svgIds_,
                      address.isShown ? address.uri : std::string_view()) ||
      drawing.empty())
    return {};
  appendBoxSize(css, box.width, box.height, true);
  css += "height:";
  appendPoints(css, std::clamp(box.height, 0, 31680));
  css += ';';
  std::string markup = "<span" + classes("sh", place, sheet_.ClassOf('b', css));
  if (!picture.description.empty()) {
    PageText description;
    description.PutAttribute(picture.description);
    markup.append(" role=img aria-label=\"").append(description.view()).append("\"");
  }
  return markup + ">" + drawing + "</span>";
}

// Text boxes

void HtmlWriter::BeginTextBox(const TextBoxFacts& box) {
  if (muted_) return;
  boxes_.emplace_back();
  boxes_.back().shape = box.shape;
  Swap(boxes_.back().around);
  ++aside_;
  Colour ground;
  const ShapeFacts* const shape = box.shape.shape;
  if (shape && shape->fill.kind == ShapeFill::Kind::kSolid) ground = {shape->fill.rgb, false};
  BeginFlow(ground);
}

void HtmlWriter::EndTextBox() {
  if (muted_ || boxes_.empty()) return;
  EndFlow();
  --aside_;
  Part part = std::move(boxes_.back());
  boxes_.pop_back();
  Swap(part.around);
  PlacedShape placed =
      placeOf(part.shape, *section_, isOnFirstPage_ && characters_ < kFirstPage && boxes_.empty());
  PutShape(BoxMarkup(part.shape, part.around.view(), placed), placed);
  HangShapes();
}

std::string HtmlWriter::BoxMarkup(const PictureFacts& facts, std::string_view content, PlacedShape& placed) {
  std::string css = placed.css;
  std::string drawing;
  const ShapeBox box = boxOf(facts);
  appendBoxSize(css, box.width, box.height, facts.shape && facts.shape->text.growsShape);
  if (facts.shape) {
    appendInsets(css, *facts.shape, box);
    if (isPlainBox(*facts.shape) && facts.shape->art.text.empty()) {
      appendPlainBox(css, *facts.shape);
    } else {
      if (placed.kind != PlacedShape::Kind::kOver) css += "position:relative;";
      appendShapeSvg(drawing, *facts.shape, box.width, box.height, svgIds_);
    }
  }
  std::string markup = "<div" + classes("text-box", kindOfPlace(placed.kind), sheet_.ClassOf('b', css)) + ">";
  if (facts.shape && !drawing.empty() && !facts.shape->art.text.empty()) {
    // Lettering is its own text.
    PageText label;
    label.PutAttribute(facts.shape->art.text);
    markup.pop_back();
    markup.append(" role=img aria-label=\"").append(label.view()).append("\">");
    return markup.append(drawing).append("</div>\n");
  }
  markup += drawing;
  return markup.append("\n").append(content).append("</div>\n");
}

}  // namespace pagerex
