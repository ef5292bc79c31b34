#include "pictures/pict_player.h"

#include "pictures/metafile.h"
#include "pictures/metafile_canvas.h"

namespace pagerex {
namespace {

enum Opcode : uint32_t {
  kClip = 0x01,
  kGroundPattern = 0x02,
  kFont = 0x03,
  kFace = 0x04,
  kPenSize = 0x07,
  kPenMode = 0x08,
  kPenPattern = 0x09,
  kFillPattern = 0x0A,
  kCorner = 0x0B,
  kOrigin = 0x0C,
  kTextSize = 0x0D,
  kInk = 0x0E,
  kGround = 0x0F,
  kTextRatio = 0x10,
  kVersion = 0x11,
  kGroundImage = 0x12,
  kPenImage = 0x13,
  kFillImage = 0x14,
  kRgbInk = 0x1A,
  kRgbGround = 0x1B,
  kFirstLine = 0x20,
  kLastLine = 0x23,
  kFirstText = 0x28,
  kLastText = 0x2B,
  kFontName = 0x2C,
  kFirstShape = 0x30,
  kFirstBits = 0x90,
  kLongComment = 0xA1,
  kEnd = 0xFF,
  kHeader = 0x0C00,
  kQuickTime = 0x8200,
};

/// Bytes behind opcodes below those of shapes.
constexpr uint8_t kRead = 0xFF;   ///< as it is read
constexpr uint8_t kSized = 0xFE;  ///< two bytes tell
constexpr uint8_t kSizes[] = {
    0,     kRead, 8,     2,     1,      2,      4,      4,
    2,     8,     8,     4,     4,      2,      4,      4,  // 0x00
    8,     1,     kRead, kRead, kRead,  2,      2,      0,
    0,     0,     6,     6,     0,      6,      0,      6,  // 0x10
    8,     4,     6,     2,     kSized, kSized, kSized, kSized,
    kRead, kRead, kRead, kRead, kSized, kSized, kSized, kSized,  // 0x20
};

struct OldColour {
  uint16_t number;
  uint32_t rgb;
};
constexpr OldColour kOldColours[] = {
    {33, 0x000000},  {30, 0xFFFFFF},  {205, 0xDD0806}, {341, 0x007F0F},
    {409, 0x0000D3}, {273, 0x02ABEA}, {137, 0xF20884}, {69, 0xFCF305},
};

uint32_t oldColour(uint32_t number) {
  for (const OldColour& colour : kOldColours) {
    if (colour.number == number) return colour.rgb;
  }
  return 0;
}

/// What the first opcodes tell.
struct Front {
  size_t begin = 0;  ///< of opcodes; 0 for no PICT
  bool isWide = false;
  Box frame;  ///< of coordinates
  double widthPoints = 0, heightPoints = 0;
};

Front frontOf(ByteView bytes) {
  constexpr uint32_t kNarrowVersion = 0x1101, kWideVersion = 0x001102FF;
  constexpr size_t kFileHeader = 512;
  for (const size_t at : {size_t{0}, kFileHeader}) {
    PictBytes in(bytes, at);
    in.Skip(2);
    const Box frame = in.ReadBox();
    const size_t begin = in.at();
    const bool isNarrow = PictBytes(in).U16() == kNarrowVersion, isWide = in.U32() == kWideVersion;
    if ((!isNarrow && !isWide) || frame.width() <= 0 || frame.height() <= 0) continue;
    Front front{begin, isWide, frame, frame.width(), frame.height()};
    // One that knows its resolution has coordinates of that.
    constexpr uint16_t kKnowsResolution = 0xFFFE;
    if (isWide && in.U16() == kHeader && in.U16() == kKnowsResolution) {
      in.Skip(10);
      const Box pixels = in.ReadBox();
      if (pixels.width() > 0 && pixels.height() > 0) front.frame = pixels;
    }
    return front;
  }
  return {};
}

}  // namespace

PictureResult playPict(ByteView bytes, const PictureFrame&, PictureSink& sink) {
  const Front front = frontOf(bytes);
  if (front.begin == 0) return PictureResult::kNothing;
  SvgCanvas canvas(&sink, mostOutput(bytes.size()));
  const Matrix to = beginCanvas(canvas, front.frame, front.widthPoints, front.heightPoints);
  const bool isWhole = PictPlayer(canvas, to, front.frame, front.isWide).Play(PictBytes(bytes, front.begin));
  if (!canvas.End()) return canvas.isRefused() ? PictureResult::kRefused : PictureResult::kInPart;
  return isWhole ? PictureResult::kWhole : PictureResult::kInPart;
}

bool PictPlayer::Play(PictBytes in) {
  const size_t begin = in.at();
  while (canvas_.goesOn()) {
    if (isWide_ && (in.at() - begin) % 2) in.Skip(1);
    const uint32_t opcode = isWide_ ? in.U16() : in.U8();
    if (in.isBeyond() || opcode == kEnd) break;
    if (opcode < kFirstLine || opcode > kLastLine) FlushLines();
    if (!Do(opcode, in)) isWhole_ = false;
  }
  FlushLines();
  return isWhole_ && !in.isBeyond();
}

/// False when it could not be drawn.
bool PictPlayer::Do(uint32_t opcode, PictBytes& in) {
  if (opcode < kFirstShape) {
    const uint8_t size = opcode == kVersion && isWide_ ? uint8_t{2} : kSizes[opcode];
    const size_t begin = in.at();
    if (opcode == kFontName) {
      PictBytes name = in;
      name.Skip(2);
      FontName& font = fontNames_[fonts_++ % std::size(fontNames_)];
      font.number = name.U16();
      font.name = name.Take(name.U8());
    }
    if (size == kSized) {
      in.Skip(in.U16());
      return true;
    }
    SetState(opcode, in);
    // What was not read of it.
    if (size != kRead) in.Skip(begin + size - in.at());
  } else if (opcode < kFirstBits) {
    DrawShape(opcode, in);
  } else if (opcode < kFirstBits + 0x10) {
    const bool areBits = opcode < kFirstBits + 2 || (opcode >= kFirstBits + 8 && opcode < kFirstBits + 12);
    if (areBits) return DrawBits(opcode, in);
    in.Skip(in.U16());
  } else if (opcode < 0xB0) {
    if (opcode <= kLongComment) in.Skip(2);
    if (opcode >= kLongComment) in.Skip(in.U16());
  } else if (opcode >= 0x8100 || (opcode >= 0xD0 && opcode < kEnd)) {
    const ByteView data = in.Take(in.U32());
    if (opcode == kQuickTime) DrawQuickTime(data);
  } else if (opcode > kEnd && opcode < 0x8000) {
    in.Skip(size_t{opcode} / 0x100 * 2);
  }
  return true;
}

void PictPlayer::SetState(uint32_t opcode, PictBytes& in) {
  switch (opcode) {
    case kClip:
      return SetClip(in.TakeSized());
    case kGroundPattern:
      return ReadPattern(groundPattern_, in);
    case kPenPattern:
      return ReadPattern(penPattern_, in);
    case kFillPattern:
      return ReadPattern(fillPattern_, in);
    case kGroundImage:
      return ReadPatternImage(groundPattern_, in);
    case kPenImage:
      return ReadPatternImage(penPattern_, in);
    case kFillImage:
      return ReadPatternImage(fillPattern_, in);
    case kFont:
      font_ = in.U16();
      break;
    case kFace:
      face_ = in.U8();
      break;
    case kTextSize:
      textSize_ = in.U16();
      break;
    case kTextRatio: {
      const Point to = in.ReadPoint(), from = in.ReadPoint();
      const bool isRatio = to.x > 0 && to.y > 0 && from.x > 0 && from.y > 0;
      textScale_ = isRatio ? Point{to.x / from.x, to.y / from.y} : Point{1, 1};
      break;
    }
    case kPenSize:
      penSize_ = in.ReadPoint();
      break;
    case kPenMode:
      penMode_ = in.U16();
      break;
    case kCorner:
      corner_ = in.ReadPoint();
      break;
    case kOrigin: {
      const double right = in.I16(), down = in.I16();
      const Point by = to_.Turn(right, down);
      to_.e -= by.x;
      to_.f -= by.y;
      break;
    }
    case kInk:
      ink_ = oldColour(in.U32());
      break;
    case kGround:
      ground_ = oldColour(in.U32());
      break;
    case kRgbInk:
      ink_ = in.ReadColour();
      break;
    case kRgbGround:
      ground_ = in.ReadColour();
      break;
    default:
      if (opcode >= kFirstLine && opcode <= kLastLine) DrawLine(opcode, in);
      if (opcode >= kFirstText && opcode <= kLastText) DrawText(opcode, in);
  }
}

void PictPlayer::ReadPattern(Pattern& pattern, PictBytes& in) {
  pattern.bits = in.U32();
  pattern.bits = pattern.bits << 32 | in.U32();
  pattern.isImage = pattern.isColour = false;
  pattern.server = 0;
}

void PictPlayer::ReadPatternImage(Pattern& pattern, PictBytes& in) {
  enum : uint16_t { kImage = 1, kColour = 2 };
  const uint16_t kind = in.U16();
  ReadPattern(pattern, in);
  if (kind == kColour) {
    pattern.isColour = true;
    pattern.rgb = in.ReadColour();
  } else if (kind == kImage) {
    PictBits image;
    image.ReadHeader(in, false, ink_, ground_);
    if (!image.FindRows(in, true)) isWhole_ = false;
    Box all = image.bounds();
    image.Cut(all);
    if (!(all.width() > 0) || !(all.height() > 0)) return;
    pattern.server = canvas_.AddImageTile(to_, all.width(), all.height(),
                                          [&](PictureSink& sink) { return image.Write(all, sink); });
    pattern.isImage = true;
  }
}

}  // namespace pagerex
