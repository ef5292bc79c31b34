#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pictures/geometry.h"
#include "pictures/paint.h"
#include "pictures/path_data.h"
#include "pictures/picture_sink.h"

namespace pagerex {

/// Writes an image of its own, PNG or JPEG, to a sink; false where there is none to write.
using WriteImage = std::function<bool(PictureSink&)>;

struct GradientStop {
  float offset = 0;  ///< 0 to 1
  uint32_t rgb = 0;
  uint8_t alpha = 255;
};

enum class Spread : uint8_t { kPad, kReflect, kRepeat };

/// A font and a colour.
struct TextLook {
  std::string_view family;  ///< UTF-8, as the file names it; any characters
  double size = 0;          ///< of the em square, in the text's own coordinates
  int weight = 400;         ///< 100 to 900
  bool isItalic = false, isUnderlined = false, isStruckOut = false;
  Paint paint;
};

struct TextPlace {
  enum class Anchor : uint8_t { kStart, kMiddle, kEnd };

  Matrix matrix;  ///< from the text's own coordinates, whose y points down, to the canvas
  Point at;       ///< in the text's own coordinates: on the base line
  Anchor anchor = Anchor::kStart;
  bool isRightToLeft = false;
  /// The way from each UTF-16 unit to the next one, in the text's own coordinates; empty for the font's own.
  std::span<const double> advances;
};

/// What a picture is drawn on: writes SVG as it goes, to a sink that it does not own. Its units are whole
/// numbers; who draws chooses how many make a picture. Knows nothing of any format. Nothing that it writes
/// refers to anything outside, or runs.
///
/// Numbers that it gives, of clips and of paint servers, count up from 1; 0 stands for none.
class SvgCanvas {
 public:
  /// Without a sink nothing is written, and only `drawn` is of interest.
  explicit SvgCanvas(PictureSink* sink, uint64_t mostBytes = UINT64_MAX);
  SvgCanvas(const SvgCanvas&) = delete;
  SvgCanvas& operator=(const SvgCanvas&) = delete;

  /// Units, and the size in points that they are shown at.
  void Begin(double width, double height, double widthPoints, double heightPoints);
  /// False when the sink, or the limit, ended it.
  bool End();
  /// False when what follows is of no use.
  bool goesOn() const { return goesOn_; }
  bool isRefused() const { return isRefused_; }

  double width() const { return width_; }
  double height() const { return height_; }
  /// Units of a CSS pixel, at the size that the picture is shown at.
  double pixel() const { return pixel_; }

  // Clips. Each stays as it is; a clip that was given can be set again at any time.

  /// The part of the clip `within` that lies in the path, or, with `isOutside`, that does not.
  uint32_t AddClip(std::string_view path, FillRule rule, uint32_t within, bool isOutside = false);
  /// The clip `first` and the path together.
  uint32_t AddUnion(std::string_view path, FillRule rule, uint32_t first);
  /// Two clips together.
  uint32_t AddUnion(uint32_t first, uint32_t second);
  /// The clip as it stands elsewhere; where clips lie too deep in each other, as it is.
  uint32_t AddMoved(uint32_t clip, Point by);
  void SetClip(uint32_t clip) { clip_ = clip; }
  uint32_t clip() const { return clip_; }

  // Paint servers.

  /// A tile of `width` x `height` units that repeats from `matrix`'s origin on, and turns with it.
  uint32_t AddTile(const Matrix& matrix, double width, double height, std::string_view content);
  /// As above, with an image in the tile.
  uint32_t AddImageTile(const Matrix& matrix, double width, double height, const WriteImage& image,
                        std::string_view mediaType = "image/png");
  uint32_t AddLinearGradient(const Matrix& matrix, Point from, Point to, std::span<const GradientStop> stops,
                             Spread spread);
  uint32_t AddRadialGradient(const Matrix& matrix, Point centre, double radius, Point focus,
                             std::span<const GradientStop> stops, Spread spread);

  // What is seen, with the clip that is set.

  void Draw(const PathData& path, const Paint& fill, FillRule rule, const Stroke& stroke,
            Blend blend = Blend::kNormal);
  void Fill(const PathData& path, const Paint& fill, FillRule rule = FillRule::kNonZero,
            Blend blend = Blend::kNormal) {
    Draw(path, fill, rule, {}, blend);
  }
  /// An image whose corners (0,0), (1,0) and (0,1) are put at those of `place`. False without an image.
  bool Image(const Matrix& place, std::string_view mediaType, const WriteImage& image,
             Blend blend = Blend::kNormal, uint8_t alpha = 255, bool isSharp = false);
  void Text(const TextLook& look, const TextPlace& place, std::u16string_view text,
            Blend blend = Blend::kNormal);
  /// Bounds of all that was drawn, in units; right below left for nothing.
  const Box& drawn() const { return drawn_; }

 private:
  class Base64Sink;
  static constexpr size_t kPart = 0x4000;  ///< bytes that go to the sink at once

  void OpenClip();
  void CloseClip();
  void PutPaint(std::string_view attribute, const Paint& paint);
  void PutStroke(const Stroke& stroke);
  void PutBlend(Blend blend);
  void PutMatrix(std::string_view attribute, const Matrix& matrix);
  void PutAttribute(std::string_view name, double value);
  void PutBox(const Box& box);
  void PutStops(std::span<const GradientStop> stops, Spread spread);
  bool PutImage(std::string_view mediaType, const WriteImage& image);
  void PutFont(const TextLook& look, double size);
  void PutWords(std::u16string_view text, std::span<const double> advances, double left, double scale,
                double size);
  void BeginServer(std::string_view element, const Matrix& matrix);
  uint32_t BeginClip(uint32_t within);
  uint32_t BeginUnion(uint32_t first, uint32_t second);
  void PutClipPart(uint32_t clip, Point movedBy = {});
  void Cover(const Box& box);
  void Flush();

  PictureSink* const sink_;
  uint64_t left_;  ///< bytes that may still be written
  bool goesOn_ = true, isRefused_ = false;
  double width_ = 0, height_ = 0, pixel_ = 1;
  uint32_t clip_ = 0, openClip_ = 0;
  std::vector<uint8_t> clipDepths_;  ///< how many others each refers to
  uint32_t servers_ = 0;
  Box drawn_{1, 1, 0, 0};
  std::string out_;     ///< what waits for the sink
  std::string ending_;  ///< of all that the sink was given, were it to end there
  bool isInImage_ = false, isInTile_ = false;
};

}  // namespace pagerex
