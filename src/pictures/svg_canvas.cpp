#include "pictures/svg_canvas.h"

#include <algorithm>
#include <cmath>

#include "base/base64.h"
#include "pictures/grid_number.h"

namespace pagerex {
namespace {

constexpr uint8_t kDeepestClip = 24;  ///< of clips that refer to clips: browsers follow them by recursion

void appendColour(std::string& out, uint32_t rgb) {
  constexpr char kDigits[] = "0123456789abcdef";
  out += '#';
  const bool isShort = ((rgb >> 4 ^ rgb) & 0x0F0F0F) == 0;
  for (int shift = 20; shift >= 0; shift -= isShort ? 8 : 4) out += kDigits[rgb >> shift & 15];
}

/// All that a picture can show, and more.
void appendEverything(std::string& path) {
  path += "M-4000000-4000000h8000000v8000000h-8000000z";
}

constexpr std::string_view kBlends[] = {"", "multiply", "screen", "difference", "darken", "lighten"};
constexpr std::string_view kSpreads[] = {"", "reflect", "repeat"};

}  // namespace

SvgCanvas::SvgCanvas(PictureSink* sink, uint64_t mostBytes) : sink_(sink), left_(mostBytes) {
  clipDepths_.push_back(0);
}

void SvgCanvas::Begin(double width, double height, double widthPoints, double heightPoints) {
  width_ = width;
  height_ = height;
  pixel_ = std::max(width / std::max(widthPoints / 0.75, 1e-3), 1e-3);
  out_ += "<svg xmlns=\"http://www.w3.org/2000/svg\"";
  PutAttribute("width", widthPoints);
  out_.insert(out_.size() - 1, "pt");
  PutAttribute("height", heightPoints);
  out_.insert(out_.size() - 1, "pt");
  out_ += " viewBox=\"0 0 ";
  appendNumber(out_, width);
  out_ += ' ';
  appendNumber(out_, height);
  out_ +=
      "\" preserveAspectRatio=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\""
      " stroke-miterlimit=\"10\">";
}

bool SvgCanvas::End() {
  CloseClip();
  out_ += "</svg>\n";
  Flush();
  if (goesOn_ || isRefused_ || !sink_) return goesOn_;
  // What came before the limit is a picture too.
  ending_ += "</svg>\n";
  sink_->Put(ByteView(ending_.data(), ending_.size()));
  return false;
}

void SvgCanvas::Flush() {
  if (!sink_ || !goesOn_) return out_.clear();
  if (out_.size() > left_) {
    goesOn_ = false;
    return out_.clear();
  }
  left_ -= out_.size();
  isRefused_ = !sink_->Put(ByteView(out_.data(), out_.size()));
  goesOn_ = !isRefused_;
  out_.clear();
  ending_ = isInImage_ ? "\"/>" : "";
  if (isInTile_) ending_ += "</pattern>";
  if (openClip_ != 0) ending_ += "</g>";
}

void SvgCanvas::Cover(const Box& box) {
  if (!(box.right >= box.left)) return;
  if (drawn_.right < drawn_.left) {
    drawn_ = box;
    return;
  }
  drawn_.left = std::min(drawn_.left, box.left);
  drawn_.top = std::min(drawn_.top, box.top);
  drawn_.right = std::max(drawn_.right, box.right);
  drawn_.bottom = std::max(drawn_.bottom, box.bottom);
}

void SvgCanvas::PutAttribute(std::string_view name, double value) {
  out_.append(1, ' ').append(name).append("=\"");
  appendNumber(out_, value);
  out_ += '"';
}

void SvgCanvas::PutMatrix(std::string_view attribute, const Matrix& matrix) {
  out_.append(1, ' ').append(attribute).append("=\"matrix(");
  const double values[] = {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f};
  for (const double value : values) {
    appendNumber(out_, value);
    out_ += ' ';
  }
  out_.back() = ')';
  out_ += '"';
}

void SvgCanvas::PutPaint(std::string_view attribute, const Paint& paint) {
  if (paint.kind == Paint::Kind::kColour && paint.rgb == 0 && paint.alpha == 255 && attribute == "fill")
    return;
  out_.append(1, ' ').append(attribute).append("=\"");
  switch (paint.kind) {
    case Paint::Kind::kNone:
      out_ += "none";
      break;
    case Paint::Kind::kColour:
      appendColour(out_, paint.rgb);
      break;
    case Paint::Kind::kServer:
      out_ += "url(#p";
      appendWhole(out_, paint.server);
      out_ += ')';
      break;
  }
  out_ += '"';
  if (paint.kind == Paint::Kind::kNone || paint.alpha == 255) return;
  out_.append(1, ' ').append(attribute).append("-opacity=\"");
  appendNumber(out_, paint.alpha / 255.0);
  out_ += '"';
}

void SvgCanvas::PutStroke(const Stroke& stroke) {
  if (stroke.paint.kind == Paint::Kind::kNone) return;
  PutPaint("stroke", stroke.paint);
  PutAttribute("stroke-width", stroke.width);
  if (stroke.cap != Stroke::Cap::kRound)
    out_.append(" stroke-linecap=\"").append(stroke.cap == Stroke::Cap::kButt ? "butt\"" : "square\"");
  if (stroke.join != Stroke::Join::kRound)
    out_.append(" stroke-linejoin=\"").append(stroke.join == Stroke::Join::kMiter ? "miter\"" : "bevel\"");
  if (stroke.join == Stroke::Join::kMiter && stroke.miterLimit != 10)
    PutAttribute("stroke-miterlimit", std::max(stroke.miterLimit, 1.0F));
  if (stroke.dashCount == 0) return;
  out_ += " stroke-dasharray=\"";
  for (size_t i = 0; i < stroke.dashCount && i < stroke.dashes.size(); ++i) {
    if (i > 0) out_ += ' ';
    appendNumber(out_, std::max(stroke.dashes[i], 0.0F));
  }
  out_ += '"';
  if (stroke.dashOffset != 0) PutAttribute("stroke-dashoffset", stroke.dashOffset);
}

void SvgCanvas::PutBlend(Blend blend) {
  if (blend == Blend::kNormal) return;
  out_.append(" style=\"mix-blend-mode:").append(kBlends[static_cast<size_t>(blend)]).append("\"");
}

// Clips

void SvgCanvas::OpenClip() {
  if (openClip_ == clip_) return;
  CloseClip();
  if (clip_ == 0) return;
  out_ += "<g clip-path=\"url(#c";
  appendWhole(out_, clip_);
  out_ += ")\">";
  openClip_ = clip_;
}

void SvgCanvas::CloseClip() {
  if (openClip_ != 0) out_ += "</g>";
  openClip_ = 0;
}

uint32_t SvgCanvas::BeginClip(uint32_t within) {
  uint8_t depth = 1;
  if (within >= clipDepths_.size() || clipDepths_[within] >= kDeepestClip) within = 0;
  if (within != 0) depth = static_cast<uint8_t>(clipDepths_[within] + 1);
  const auto number = static_cast<uint32_t>(clipDepths_.size());
  clipDepths_.push_back(depth);
  out_ += "<clipPath id=\"c";
  appendWhole(out_, number);
  out_ += '"';
  if (within != 0) {
    out_ += " clip-path=\"url(#c";
    appendWhole(out_, within);
    out_ += ")\"";
  }
  out_ += '>';
  return number;
}

uint32_t SvgCanvas::AddClip(std::string_view path, FillRule rule, uint32_t within, bool isOutside) {
  const uint32_t number = BeginClip(within);
  if (!sink_) {
    out_.clear();
    return number;
  }
  out_ += "<path d=\"";
  if (isOutside) appendEverything(out_);
  out_.append(path).append(1, '"');
  if (isOutside || rule == FillRule::kEvenOdd) out_ += " clip-rule=\"evenodd\"";
  out_ += "/></clipPath>";
  if (out_.size() > kPart) Flush();
  return number;
}

/// Begins a clip that is another one and what follows; 0 where that is everything.
uint32_t SvgCanvas::BeginUnion(uint32_t first, uint32_t second) {
  const auto isDeep = [&](uint32_t clip) {
    return clip >= clipDepths_.size() || clipDepths_[clip] >= kDeepestClip;
  };
  if (first == 0 || isDeep(first) || isDeep(second)) return 0;
  const uint32_t number = BeginClip(0);
  clipDepths_.back() = static_cast<uint8_t>(std::max(clipDepths_[first], clipDepths_[second]) + 1);
  PutClipPart(first);
  return number;
}

void SvgCanvas::PutClipPart(uint32_t clip, Point movedBy) {
  out_ += "<path d=\"";
  appendEverything(out_);
  out_ += "\" clip-path=\"url(#c";
  appendWhole(out_, clip);
  out_ += ")\"";
  if (movedBy.x != 0 || movedBy.y != 0) PutMatrix("transform", {1, 0, 0, 1, movedBy.x, movedBy.y});
  out_ += "/>";
}

uint32_t SvgCanvas::AddUnion(std::string_view path, FillRule rule, uint32_t first) {
  const uint32_t number = BeginUnion(first, 0);
  if (number == 0 || !sink_) return number;
  out_.append("<path d=\"").append(path).append(1, '"');
  if (rule == FillRule::kEvenOdd) out_ += " clip-rule=\"evenodd\"";
  out_ += "/></clipPath>";
  if (out_.size() > kPart) Flush();
  return number;
}

uint32_t SvgCanvas::AddUnion(uint32_t first, uint32_t second) {
  const uint32_t number = second == 0 ? 0 : BeginUnion(first, second);
  if (number == 0) return 0;
  PutClipPart(second);
  out_ += "</clipPath>";
  return number;
}

uint32_t SvgCanvas::AddMoved(uint32_t clip, Point by) {
  if (clip == 0 || clip >= clipDepths_.size() || clipDepths_[clip] >= kDeepestClip) return clip;
  const uint32_t number = BeginClip(0);
  clipDepths_.back() = static_cast<uint8_t>(clipDepths_[clip] + 1);
  PutClipPart(clip, by);
  out_ += "</clipPath>";
  return number;
}

// Paint servers

/// Of a pattern or of a gradient, whose attributes are named after it.
void SvgCanvas::BeginServer(std::string_view element, const Matrix& matrix) {
  const std::string kind(element == "pattern" ? element : "gradient");
  out_.append(1, '<').append(element).append(" id=\"p");
  appendWhole(out_, ++servers_);
  out_.append("\" ").append(kind).append("Units=\"userSpaceOnUse\"");
  PutMatrix(kind + "Transform", matrix);
}

uint32_t SvgCanvas::AddTile(const Matrix& matrix, double width, double height, std::string_view content) {
  BeginServer("pattern", matrix);
  PutAttribute("width", width);
  PutAttribute("height", height);
  out_.append(1, '>').append(content).append("</pattern>");
  return servers_;
}

uint32_t SvgCanvas::AddImageTile(const Matrix& matrix, double width, double height, const WriteImage& image,
                                 std::string_view mediaType) {
  if (!sink_) return ++servers_;
  const size_t begin = out_.size();
  AddTile(matrix, width, height, {});
  out_.resize(out_.size() - std::string_view("</pattern>").size());
  out_ += "<image";
  PutAttribute("width", width);
  PutAttribute("height", height);
  out_ += " preserveAspectRatio=\"none\"";
  isInTile_ = true;
  const bool isThere = PutImage(mediaType, image);
  isInTile_ = false;
  if (!isThere) {
    out_.resize(begin);
    --servers_;
    return 0;
  }
  out_ += "</pattern>";
  return servers_;
}

void SvgCanvas::PutStops(std::span<const GradientStop> stops, Spread spread) {
  if (spread != Spread::kPad)
    out_.append(" spreadMethod=\"").append(kSpreads[static_cast<size_t>(spread)]).append(1, '"');
  out_ += '>';
  for (const GradientStop& stop : stops) {
    out_ += "<stop";
    PutAttribute("offset", stop.offset);
    out_ += " stop-color=\"";
    appendColour(out_, stop.rgb);
    out_ += '"';
    if (stop.alpha != 255) PutAttribute("stop-opacity", stop.alpha / 255.0);
    out_ += "/>";
  }
}

uint32_t SvgCanvas::AddLinearGradient(const Matrix& matrix, Point from, Point to,
                                      std::span<const GradientStop> stops, Spread spread) {
  BeginServer("linearGradient", matrix);
  PutAttribute("x1", from.x);
  PutAttribute("y1", from.y);
  PutAttribute("x2", to.x);
  PutAttribute("y2", to.y);
  PutStops(stops, spread);
  out_ += "</linearGradient>";
  return servers_;
}

uint32_t SvgCanvas::AddRadialGradient(const Matrix& matrix, Point centre, double radius, Point focus,
                                      std::span<const GradientStop> stops, Spread spread) {
  BeginServer("radialGradient", matrix);
  PutAttribute("cx", centre.x);
  PutAttribute("cy", centre.y);
  PutAttribute("r", radius);
  PutAttribute("fx", focus.x);
  PutAttribute("fy", focus.y);
  PutStops(stops, spread);
  out_ += "</radialGradient>";
  return servers_;
}

// What is seen

void SvgCanvas::Draw(const PathData& path, const Paint& fill, FillRule rule, const Stroke& stroke,
                     Blend blend) {
  if (path.empty() || (fill.kind == Paint::Kind::kNone && stroke.paint.kind == Paint::Kind::kNone)) return;
  Cover(path.bounds());
  if (!goesOn_ || !sink_) return;
  OpenClip();
  out_ += "<path d=\"";
  out_.append(path.view()).append(1, '"');
  PutPaint("fill", fill);
  if (rule == FillRule::kEvenOdd && fill.kind != Paint::Kind::kNone) out_ += " fill-rule=\"evenodd\"";
  PutStroke(stroke);
  PutBlend(blend);
  out_ += "/>\n";
  if (out_.size() > kPart) Flush();
}

/// Bytes of an image on their way into an address.
class SvgCanvas::Base64Sink final : public PictureSink {
 public:
  explicit Base64Sink(SvgCanvas& canvas) : canvas_(canvas) {}

  bool Put(ByteView bytes) override {
    for (size_t at = 0; at < bytes.size(); at += kPart) {
      encoder_.Append(bytes.part(at, kPart), canvas_.out_);
      isEmpty_ = false;
      if (canvas_.out_.size() > kPart) canvas_.Flush();
    }
    return canvas_.goesOn_;
  }
  bool Finish() {
    encoder_.Finish(canvas_.out_);
    return !isEmpty_;
  }

 private:
  SvgCanvas& canvas_;
  Base64 encoder_;
  bool isEmpty_ = true;
};

/// An attribute and the element's end. False, and what is written so far has no end, where there is no image.
bool SvgCanvas::PutImage(std::string_view mediaType, const WriteImage& image) {
  out_.append(" href=\"data:").append(mediaType).append(";base64,");
  Base64Sink sink(*this);
  isInImage_ = true;
  image(sink);
  isInImage_ = false;
  if (!sink.Finish()) return false;
  out_ += "\"/>\n";
  return true;
}

bool SvgCanvas::Image(const Matrix& place, std::string_view mediaType, const WriteImage& image, Blend blend,
                      uint8_t alpha, bool isSharp) {
  const Point corners[] = {place(0, 0), place(1, 0), place(0, 1), place(1, 1)};
  for (const Point p : corners) Cover({p.x, p.y, p.x, p.y});
  if (!goesOn_ || !sink_) return goesOn_;
  OpenClip();
  const size_t begin = out_.size();
  out_ += "<image";
  if (place.isUpright() && place.a > 0 && place.d > 0) {
    PutAttribute("x", place.e);
    PutAttribute("y", place.f);
    PutAttribute("width", place.a);
    PutAttribute("height", place.d);
  } else {
    // A side of one unit would be too little for some browsers.
    constexpr double kSide = 1000;
    PutMatrix("transform", Matrix{1 / kSide, 0, 0, 1 / kSide, 0, 0} * place);
    out_ += " width=\"1000\" height=\"1000\"";
  }
  out_ += " preserveAspectRatio=\"none\"";
  if (alpha != 255) PutAttribute("opacity", alpha / 255.0);
  if (isSharp) out_ += " image-rendering=\"pixelated\"";
  PutBlend(blend);
  if (PutImage(mediaType, image)) return true;
  out_.resize(std::min(begin, out_.size()));
  return false;
}

}  // namespace pagerex
