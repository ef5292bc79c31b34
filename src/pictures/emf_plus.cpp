#include "pictures/emf_plus.h"

#include <algorithm>
#include <cmath>

#include "pictures/emf_plus_state.h"

namespace pagerex {
namespace {

constexpr uint16_t kFirstRecord = 0x4001;
constexpr size_t kRecordHeader = 12;
constexpr uint16_t kGoesOn = 0x8000;  ///< of an object: its end is in a further record

/// Bytes that may be read of objects again and again: so many, and more with each byte of records.
constexpr int64_t kFreeWork = 64 << 20, kWorkOfByte = 64;

constexpr size_t kMostSaved = 1024;

// Records that share a step with others.
constexpr uint16_t kFillPie = 0x4010, kDrawArc = 0x4012, kBareContainer = 0x4028, kTranslate = 0x402D,
                   kScale = 0x402E, kRotate = 0x402F;

constexpr uint64_t bitsOf(std::initializer_list<uint16_t> types) {
  uint64_t bits = 0;
  for (const uint16_t type : types) bits |= uint64_t{1} << (type - kFirstRecord);
  return bits;
}
/// Records whose step makes an outline: what is filled with the brush told first, and what is drawn with the
/// pen of the record.
constexpr uint64_t kFills = bitsOf({0x400A, 0x400C, 0x400E, kFillPie, 0x4016});
constexpr uint64_t kDraws = bitsOf({0x400B, 0x400D, 0x400F, 0x4011, kDrawArc, 0x4017, 0x4018, 0x4019});

}  // namespace

constexpr PlusState::Step PlusState::kSteps[] = {
    &PlusState::Header,
    &PlusState::Skip,  // end of file
    &PlusState::Skip,  // comment
    &PlusState::LendDevice,
    &PlusState::Miss,  // formats of which one is to be chosen
    &PlusState::Miss,
    &PlusState::Miss,
    &PlusState::Object,
    &PlusState::Clear,
    &PlusState::Rectangles,
    &PlusState::Rectangles,
    &PlusState::Polygon,
    &PlusState::Lines,
    &PlusState::Ellipse,
    &PlusState::Ellipse,
    &PlusState::Pie,
    &PlusState::Pie,
    &PlusState::Pie,
    &PlusState::FillRegion,
    &PlusState::FillPath,
    &PlusState::DrawPath,
    &PlusState::ClosedCurve,
    &PlusState::ClosedCurve,
    &PlusState::Curve,
    &PlusState::Beziers,
    &PlusState::DrawImage,
    &PlusState::DrawImage,
    &PlusState::DrawString,
    &PlusState::Skip,  // origin of hatches
    &PlusState::Skip,  // smooth lines
    &PlusState::Skip,  // smooth text
    &PlusState::Skip,  // contrast of text
    &PlusState::SetInterpolation,
    &PlusState::Skip,  // where in a pixel its point is
    &PlusState::Skip,  // compositing
    &PlusState::Skip,  // its quality
    &PlusState::Save,
    &PlusState::Restore,
    &PlusState::BeginContainer,
    &PlusState::BeginContainer,
    &PlusState::Restore,
    &PlusState::SetWorld,
    &PlusState::SetWorld,
    &PlusState::ChangeWorld,
    &PlusState::ChangeWorld,
    &PlusState::ChangeWorld,
    &PlusState::ChangeWorld,
    &PlusState::SetPage,
    &PlusState::ResetClip,
    &PlusState::ClipBox,
    &PlusState::ClipShape,
    &PlusState::ClipShape,
    &PlusState::OffsetClip,
    &PlusState::DrawDriverString,
    &PlusState::Miss,  // stroke and fill
    &PlusState::Skip,  // an effect
    &PlusState::Miss,  // state of a terminal
    &PlusState::Miss,
};

struct EmfPlusPlayer::State : PlusState {
  using PlusState::PlusState;
};

EmfPlusPlayer::EmfPlusPlayer(SvgCanvas& canvas, const Matrix& device, double pixelsPerInch, bool isNested)
    : state_(std::make_unique<State>(canvas, device, pixelsPerInch, isNested)) {}

EmfPlusPlayer::~EmfPlusPlayer() = default;

bool EmfPlusPlayer::Play(ByteView records) {
  return state_->Play(records);
}

bool EmfPlusPlayer::isDeviceLent() const {
  return state_->isDeviceLent();
}

bool EmfPlusPlayer::isDual(ByteView records) {
  return records.u16(0) == kFirstRecord && (records.u16(2) & 1) != 0;
}

PlusState::PlusState(SvgCanvas& canvas, const Matrix& device, double pixelsPerInch, bool isNested)
    : canvas_(canvas),
      device_(device),
      dpiX_(pixelsPerInch > 0 ? pixelsPerInch : 96),
      dpiY_(dpiX_),
      isNested_(isNested),
      work_(kFreeWork) {}

bool PlusState::Play(ByteView records) {
  isWhole_ = true;
  isDeviceLent_ = false;
  work_ += static_cast<int64_t>(records.size()) * kWorkOfByte;
  std::string held;
  if (!waiting_.empty()) {
    // A record is looked at once it is there, however many comments it takes.
    waiting_.append(reinterpret_cast<const char*>(records.data()), records.size());
    records = {waiting_.data(), waiting_.size()};
    if (records.size() < kRecordHeader || records.size() < records.u32(4)) return true;
    held.swap(waiting_);
    records = {held.data(), held.size()};
  }
  while (!records.empty() && canvas_.goesOn()) {
    const uint32_t size = records.u32(4);
    if (records.size() < kRecordHeader || size > records.size()) {
      waiting_.assign(reinterpret_cast<const char*>(records.data()), records.size());
      break;
    }
    if (size < kRecordHeader) return false;
    const size_t most = std::min<size_t>(records.u32(8), size - kRecordHeader);
    Record record{records.u16(0), records.u16(2), PlusReader(records.part(kRecordHeader, most))};
    PlayRecord(record);
    records = records.part(size);
  }
  return isWhole_;
}

void PlusState::PlayRecord(Record& record) {
  const size_t number = record.type - size_t{kFirstRecord};
  if (number >= std::size(kSteps)) return Miss(record);
  isDeviceLent_ = false;
  if (kSteps[number] != &PlusState::Object) part_.size = 0;  // what goes on does so at once
  outline_.clear();
  other_.clear();
  const bool isFilled = kFills >> number & 1;
  const uint32_t brush = isFilled ? record.data.U32() : 0;
  (this->*kSteps[number])(record);
  if (isFilled) FillOutline(FillPaint(record, brush));
  if (kDraws >> number & 1) DrawOutline(record.id());
}

void PlusState::Header(Record& record) {
  record.data.Take(8);  // version, whether it is of a screen
  const uint32_t x = record.data.U32(), y = record.data.U32();
  if (x == 0 || y == 0 || x > 0xFFFF || y > 0xFFFF) return;
  dpiX_ = x;
  dpiY_ = y;
}

void PlusState::LendDevice(Record&) {
  isDeviceLent_ = true;
}

// Objects

void PlusState::Object(Record& record) {
  const uint16_t id = record.flags & 0x7FFF;
  const bool goesOn = record.flags & kGoesOn;
  if (record.id() >= objects_.size()) return Miss(record);
  if (part_.size == 0 || part_.id != id) {
    part_.bytes.clear();
    part_.id = id;
  }
  part_.size = goesOn ? record.data.U32() : 0;
  const ByteView bytes = record.data.rest();
  part_.bytes.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (part_.bytes.size() < part_.size) return;
  part_.size = 0;
  PlusObject& object = objects_[record.id()];
  object.type = static_cast<PlusType>(id >> 8);
  object.bytes.swap(part_.bytes);
  object.hasPaint = false;
}

/// The object's bytes, which none has that is of another type, or was used too often already.
ByteView PlusState::Find(uint32_t id, PlusType type) {
  if (id < objects_.size() && objects_[id].type == type && Afford(objects_[id].bytes.size()))
    return objects_[id].view();
  isWhole_ = false;
  return {};
}

bool PlusState::Afford(size_t work) {
  if (work_ >= 0) work_ -= static_cast<int64_t>(work);
  return work_ >= 0;
}

// Coordinates

/// Of the device.
Matrix PlusState::WorldToPixels() const {
  return graphics_.world * Matrix{graphics_.pageX, 0, 0, graphics_.pageY, 0, 0} * graphics_.container;
}

/// Of one unit, across.
double PlusState::PixelsOf(uint32_t unit) const {
  // World, display and pixel; a point, an inch, a unit of documents, a millimetre.
  constexpr float kOfInch[] = {72, 1, 300, 25.4F};
  return unit - 3 < std::size(kOfInch) ? dpiX_ / kOfInch[unit - 3] : 1;
}

void PlusState::SetPage(Record& record) {
  const double scale = record.data.Real();
  graphics_.pageX = graphics_.pageY = PixelsOf(record.id()) * (scale > 0 ? scale : 1);
  if (record.id() > 2) graphics_.pageY *= dpiY_ / dpiX_;
}

/// Set, or reset without a matrix.
void PlusState::SetWorld(Record& record) {
  graphics_.world = record.data.left() > 0 ? record.data.RealMatrix() : Matrix{};
}

void PlusState::ChangeWorld(Record& record) {
  Matrix change;
  if (record.type == kTranslate) {
    change.e = record.data.Real();
    change.f = record.data.Real();
  } else if (record.type == kScale) {
    change.a = record.data.Real();
    change.d = record.data.Real();
  } else if (record.type == kRotate) {
    const double angle = record.data.Real() * 3.14159265358979323846 / 180;
    change.a = change.d = std::cos(angle);
    change.b = std::sin(angle);
    change.c = -change.b;
  } else {
    change = record.data.RealMatrix();
  }
  Matrix& world = graphics_.world;
  world = record.hasOption() ? world * change : change * world;
}

void PlusState::Save(Record& record) {
  if (saved_.size() < kMostSaved) saved_.push_back({record.data.U32(), graphics_});
}

/// Of a save or of a container; those within are left with it.
void PlusState::Restore(Record& record) {
  const uint32_t index = record.data.U32();
  for (size_t i = saved_.size(); i-- > 0;) {
    if (saved_[i].index != index) continue;
    graphics_ = saved_[i].graphics;
    saved_.erase(saved_.begin() + static_cast<ptrdiff_t>(i), saved_.end());
    return;
  }
}

void PlusState::BeginContainer(Record& record) {
  Matrix inner;
  if (record.type != kBareContainer) {
    const Box to = record.data.Rectangle(), from = record.data.Rectangle();
    const double unit = PixelsOf(record.id());
    const double x = to.width() / from.width(), y = to.height() / from.height();
    if (from.width() != 0 && from.height() != 0)
      inner = {x / unit, 0, 0, y / unit, to.left - from.left * x, to.top - from.top * y};
  }
  Save(record);
  graphics_.container = inner * WorldToPixels();
  graphics_.world = {};
  graphics_.pageX = graphics_.pageY = 1;
  graphics_.outerClip = graphics_.clip;
  graphics_.isClipBox = false;
}

// Shapes

void PlusState::Rectangles(Record& record) {
  outline_.rule = FillRule::kNonZero;
  for (uint32_t left = record.data.Count(8); left > 0 && record.data.left() > 0; --left)
    outline_.AddBox(record.data.Rectangle(record.flags));
}

void PlusState::Polygon(Record& record) {
  record.data.Points(record.data.U32(), record.flags, outline_, PlusOutline::kLine);
  outline_.Close();
}

void PlusState::Lines(Record& record) {
  record.data.Points(record.data.U32(), record.flags, outline_, PlusOutline::kLine);
  if (record.hasOption()) outline_.Close();
}

void PlusState::Ellipse(Record& record) {
  outline_.AddEllipse(record.data.Rectangle(record.flags));
}

/// Or an arc.
void PlusState::Pie(Record& record) {
  const Point angles = record.data.RealPoint();
  outline_.AddArc(record.data.Rectangle(record.flags), angles.x, angles.y, record.type != kDrawArc);
}

void PlusState::ClosedCurve(Record& record) {
  const double tension = record.data.Real();
  record.data.Points(record.data.U32(), record.flags, other_, PlusOutline::kLine);
  outline_.AddCurve(other_, tension, true);
  if (record.hasOption()) outline_.rule = FillRule::kNonZero;
}

void PlusState::Curve(Record& record) {
  const double tension = record.data.Real();
  const uint32_t first = record.data.U32(), count = record.data.U32();
  record.data.Points(record.data.U32(), record.flags, other_, PlusOutline::kLine);
  outline_.AddCurve(other_, tension, false, first, count);
}

void PlusState::Beziers(Record& record) {
  record.data.Points(record.data.U32(), record.flags, outline_, PlusOutline::kCurve);
}

void PlusState::FillPath(Record& record) {
  outline_.AddPath(Find(record.id(), PlusType::kPath));
  FillOutline(FillPaint(record, record.data.U32()));
}

void PlusState::DrawPath(Record& record) {
  outline_.AddPath(Find(record.id(), PlusType::kPath));
  DrawOutline(record.data.U32());
}

const PathData& PlusState::CanvasPath() {
  canvas_.SetClip(graphics_.clip);
  path_.clear();
  outline_.Put(path_);
  return path_;
}

void PlusState::FillOutline(const Paint& paint) {
  outline_.Move(WorldToCanvas());
  canvas_.Fill(CanvasPath(), paint, outline_.rule);
}

void PlusState::FillAll(const Paint& paint) {
  path_.clear();
  path_.AddBox({0, 0, canvas_.width(), canvas_.height()});
  canvas_.Fill(path_, paint);
}

void PlusState::Clear(Record& record) {
  record.flags = kPlusColour;
  canvas_.SetClip(graphics_.clip);
  FillAll(FillPaint(record, record.data.U32()));
}

void PlusState::SetInterpolation(Record& record) {
  constexpr uint8_t kNearest = 5;
  graphics_.isSharp = record.id() == kNearest;
}

}  // namespace pagerex
