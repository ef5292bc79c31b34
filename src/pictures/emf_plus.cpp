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

}  // namespace

/// What a record does.
struct PlusState::Step {
  enum Kind : uint8_t {
    kDo,    ///< just that
    kFill,  ///< makes an outline that is filled with the brush told first
    kDraw   ///< or drawn with the pen of the record
  };
  Kind kind;
  void (PlusState::*step)(Record&);
};

constexpr PlusState::Step PlusState::kSteps[] = {
    {Step::kDo, &PlusState::Header},
    {Step::kDo, &PlusState::Skip},  // end of file
    {Step::kDo, &PlusState::Skip},  // comment
    {Step::kDo, &PlusState::LendDevice},
    {Step::kDo, &PlusState::Miss},  // formats of which one is to be chosen
    {Step::kDo, &PlusState::Miss},
    {Step::kDo, &PlusState::Miss},
    {Step::kDo, &PlusState::Object},
    {Step::kDo, &PlusState::Clear},
    {Step::kFill, &PlusState::Rectangles},
    {Step::kDraw, &PlusState::Rectangles},
    {Step::kFill, &PlusState::Polygon},
    {Step::kDraw, &PlusState::Lines},
    {Step::kFill, &PlusState::Ellipse},
    {Step::kDraw, &PlusState::Ellipse},
    {Step::kFill, &PlusState::Pie},
    {Step::kDraw, &PlusState::Pie},
    {Step::kDraw, &PlusState::Arc},
    {Step::kDo, &PlusState::FillRegion},
    {Step::kDo, &PlusState::FillPath},
    {Step::kDo, &PlusState::DrawPath},
    {Step::kFill, &PlusState::ClosedCurve},
    {Step::kDraw, &PlusState::ClosedCurve},
    {Step::kDraw, &PlusState::Curve},
    {Step::kDraw, &PlusState::Beziers},
    {Step::kDo, &PlusState::DrawImage},
    {Step::kDo, &PlusState::DrawImagePoints},
    {Step::kDo, &PlusState::DrawString},
    {Step::kDo, &PlusState::Skip},  // origin of hatches
    {Step::kDo, &PlusState::Skip},  // smooth lines
    {Step::kDo, &PlusState::Skip},  // smooth text
    {Step::kDo, &PlusState::Skip},  // contrast of text
    {Step::kDo, &PlusState::SetInterpolation},
    {Step::kDo, &PlusState::Skip},  // where in a pixel its point is
    {Step::kDo, &PlusState::Skip},  // compositing
    {Step::kDo, &PlusState::Skip},  // its quality
    {Step::kDo, &PlusState::Save},
    {Step::kDo, &PlusState::Restore},
    {Step::kDo, &PlusState::BeginContainer},
    {Step::kDo, &PlusState::BeginBareContainer},
    {Step::kDo, &PlusState::Restore},
    {Step::kDo, &PlusState::SetWorld},
    {Step::kDo, &PlusState::ResetWorld},
    {Step::kDo, &PlusState::MultiplyWorld},
    {Step::kDo, &PlusState::TranslateWorld},
    {Step::kDo, &PlusState::ScaleWorld},
    {Step::kDo, &PlusState::RotateWorld},
    {Step::kDo, &PlusState::SetPage},
    {Step::kDo, &PlusState::ResetClip},
    {Step::kDo, &PlusState::ClipBox},
    {Step::kDo, &PlusState::ClipPath},
    {Step::kDo, &PlusState::ClipRegion},
    {Step::kDo, &PlusState::OffsetClip},
    {Step::kDo, &PlusState::DrawDriverString},
    {Step::kDo, &PlusState::Miss},  // stroke and fill
    {Step::kDo, &PlusState::Skip},  // an effect
    {Step::kDo, &PlusState::SetServerGraphics},
    {Step::kDo, &PlusState::SetServerClip},
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
  if (!waiting_.empty()) {
    // A record is looked at once it is there, however many comments it takes.
    waiting_.append(reinterpret_cast<const char*>(records.data()), records.size());
    const ByteView all(waiting_.data(), waiting_.size());
    if (all.size() < kRecordHeader || all.size() < all.u32(4)) return true;
    records = all;
  }
  std::string held;
  held.swap(waiting_);
  while (records.size() > 0 && canvas_.goesOn()) {
    const uint32_t size = records.u32(4);
    if (records.size() < kRecordHeader || size > records.size()) {
      waiting_.assign(reinterpret_cast<const char*>(records.data()), records.size());
      break;
    }
    if (size < kRecordHeader) return false;
    const ByteView data = records.part(kRecordHeader, std::min<size_t>(records.u32(8), size - kRecordHeader));
    PlayRecord(records.u16(0), {records.u16(2), PlusReader(data)});
    records = records.part(size);
  }
  return isWhole_;
}

void PlusState::PlayRecord(uint16_t type, Record record) {
  const auto number = static_cast<size_t>(type) - kFirstRecord;
  if (number >= std::size(kSteps)) {
    isWhole_ = false;
    return;
  }
  isDeviceLent_ = false;
  const Step& step = kSteps[number];
  if (step.step != &PlusState::Object) part_.size = 0;  // what goes on does so at once
  outline_.clear();
  uint32_t brush = 0;
  if (step.kind == Step::kFill) brush = record.data.U32();
  (this->*step.step)(record);
  if (step.kind == Step::kFill) FillOutline(FillPaint(record, brush));
  if (step.kind == Step::kDraw) DrawOutline(record.id());
}

void PlusState::Header(Record& record) {
  record.data.U32();  // version
  record.data.U32();  // whether it is of a screen
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
  const auto type = static_cast<PlusType>(id >> 8);
  const bool goesOn = record.flags & kGoesOn;
  const bool isFurther = part_.size > 0 && part_.id == id;
  if (!goesOn && !isFurther) return PutObject(record.id(), type, record.data.rest());
  if (!isFurther) part_.bytes.clear();
  if (goesOn) part_.size = record.data.U32();
  part_.id = id;
  const ByteView bytes = record.data.rest();
  part_.bytes.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (goesOn && part_.bytes.size() < part_.size) return;
  part_.size = 0;
  PutObject(record.id(), type, {part_.bytes.data(), part_.bytes.size()});
  part_.bytes = {};
}

void PlusState::PutObject(uint8_t id, PlusType type, ByteView bytes) {
  if (id >= objects_.size()) {
    isWhole_ = false;
    return;
  }
  PlusObject& object = objects_[id];
  object.type = type;
  object.bytes.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  object.hasPaint = false;
}

ByteView PlusState::Find(uint32_t id, PlusType type) {
  if (id < objects_.size() && objects_[id].type == type && Afford(objects_[id].bytes.size()))
    return objects_[id].view();
  isWhole_ = false;
  return {};
}

bool PlusState::Afford(size_t work) {
  if (work_ < 0) return false;
  work_ -= static_cast<int64_t>(work);
  return true;
}

// Coordinates

Matrix PlusState::WorldToPixels() const {
  return graphics_.world * Matrix{graphics_.pageX, 0, 0, graphics_.pageY, 0, 0} * graphics_.container;
}

/// Of one unit; across, as far as that differs from down.
double PlusState::PixelsOf(uint32_t unit) const {
  // World, display and pixel; a point, an inch, a unit of documents, a millimetre.
  constexpr double kOfInch[] = {0, 0, 0, 1.0 / 72, 1, 1.0 / 300, 1 / 25.4};
  return unit < std::size(kOfInch) && kOfInch[unit] > 0 ? kOfInch[unit] * dpiX_ : 1;
}

void PlusState::SetPage(Record& record) {
  const double scale = record.data.Real();
  graphics_.pageX = PixelsOf(record.id()) * (scale > 0 ? scale : 1);
  graphics_.pageY = graphics_.pageX;
  if (record.id() > 2) graphics_.pageY *= dpiY_ / dpiX_;
}

void PlusState::ChangeWorld(const Record& record, const Matrix& change) {
  Matrix& world = graphics_.world;
  world = record.flags & kPlusOption ? world * change : change * world;
}

void PlusState::SetWorld(Record& record) {
  graphics_.world = record.data.RealMatrix();
}

void PlusState::ResetWorld(Record&) {
  graphics_.world = {};
}

void PlusState::MultiplyWorld(Record& record) {
  ChangeWorld(record, record.data.RealMatrix());
}

void PlusState::TranslateWorld(Record& record) {
  const Point by = record.data.RealPoint();
  ChangeWorld(record, {1, 0, 0, 1, by.x, by.y});
}

void PlusState::ScaleWorld(Record& record) {
  const Point by = record.data.RealPoint();
  ChangeWorld(record, {by.x, 0, 0, by.y, 0, 0});
}

void PlusState::RotateWorld(Record& record) {
  const double angle = record.data.Real() * 3.14159265358979323846 / 180;
  const double cosine = std::cos(angle), sine = std::sin(angle);
  ChangeWorld(record, {cosine, sine, -sine, cosine, 0, 0});
}

void PlusState::Push(uint32_t index) {
  if (saved_.size() < kMostSaved) saved_.push_back({index, graphics_});
}

void PlusState::Save(Record& record) {
  Push(record.data.U32());
}

/// Of a save or of a container; those within are left with it.
void PlusState::Restore(Record& record) {
  const uint32_t index = record.data.U32();
  for (size_t i = saved_.size(); i-- > 0;) {
    if (saved_[i].index != index) continue;
    graphics_ = saved_[i].graphics;
    saved_.resize(i, Saved{0, {}});
    return;
  }
}

void PlusState::BeginContainer(Record& record) {
  const Box to = record.data.Rectangle(false), from = record.data.Rectangle(false);
  Matrix inner;
  if (from.width() != 0 && from.height() != 0) {
    const double unit = PixelsOf(record.id());
    const double x = to.width() / (from.width() * unit), y = to.height() / (from.height() * unit);
    inner = {x, 0, 0, y, to.left - from.left * unit * x, to.top - from.top * unit * y};
  }
  Enter(record.data.U32(), inner);
}

void PlusState::BeginBareContainer(Record& record) {
  Enter(record.data.U32(), {});
}

void PlusState::Enter(uint32_t index, const Matrix& inner) {
  Push(index);
  graphics_.container = inner * WorldToPixels();
  graphics_.world = {};
  graphics_.pageX = graphics_.pageY = 1;
  graphics_.outerClip = graphics_.clip;
  graphics_.isClipBox = false;
}

// Shapes

/// So many points, as the record has them.
void PlusState::Read(Record& record, uint32_t count) {
  points_.clear();
  record.data.Points(count, pointForm(record.flags), points_);
}

void PlusState::Rectangles(Record& record) {
  outline_.rule = FillRule::kNonZero;
  const bool isCompressed = record.isCompressed();
  for (uint32_t left = record.data.Count(isCompressed ? 8 : 16); left > 0; --left)
    outline_.AddBox(record.data.Rectangle(isCompressed));
}

void PlusState::Polygon(Record& record) {
  Read(record, record.data.U32());
  outline_.AddLines(points_, true);
}

void PlusState::Lines(Record& record) {
  Read(record, record.data.U32());
  outline_.AddLines(points_, record.flags & kPlusOption);
}

void PlusState::Ellipse(Record& record) {
  outline_.AddEllipse(record.data.Rectangle(record.isCompressed()));
}

void PlusState::Pie(Record& record) {
  const Point angles = record.data.RealPoint();
  outline_.AddArc(record.data.Rectangle(record.isCompressed()), angles.x, angles.y, true);
}

void PlusState::Arc(Record& record) {
  const Point angles = record.data.RealPoint();
  outline_.AddArc(record.data.Rectangle(record.isCompressed()), angles.x, angles.y, false);
}

void PlusState::ClosedCurve(Record& record) {
  const double tension = record.data.Real();
  Read(record, record.data.U32());
  outline_.AddCurve(points_, tension, true);
  if (record.flags & kPlusOption) outline_.rule = FillRule::kNonZero;
}

void PlusState::Curve(Record& record) {
  const double tension = record.data.Real();
  const uint32_t first = record.data.U32(), count = record.data.U32();
  Read(record, record.data.U32());
  outline_.AddCurve(points_, tension, false, first, count);
}

void PlusState::Beziers(Record& record) {
  Read(record, record.data.U32());
  outline_.AddBeziers(points_);
}

void PlusState::FillPath(Record& record) {
  outline_.AddPath(Find(record.id(), PlusType::kPath));
  FillOutline(FillPaint(record, record.data.U32()));
}

void PlusState::DrawPath(Record& record) {
  outline_.AddPath(Find(record.id(), PlusType::kPath));
  DrawOutline(record.data.U32());
}

void PlusState::FillOutline(const Paint& paint) {
  outline_.Move(WorldToCanvas());
  canvas_.SetClip(graphics_.clip);
  canvas_.Fill(outline_.Data(), paint, outline_.rule);
}

void PlusState::DrawOutline(uint32_t penId) {
  PlusPen pen;
  if (!MakePen(penId, pen)) return;
  outline_.Move(WorldToCanvas());
  canvas_.SetClip(graphics_.clip);
  DrawWithEnds(pen);
}

void PlusState::Clear(Record& record) {
  const uint32_t colour = record.data.U32();
  canvas_.SetClip(graphics_.clip);
  canvas_.Fill(Everything(), Paint::Colour(colour & 0xFFFFFF, static_cast<uint8_t>(colour >> 24)));
}

void PlusState::SetInterpolation(Record& record) {
  constexpr uint8_t kNearest = 5;
  graphics_.isSharp = record.id() == kNearest;
}

}  // namespace pagerex
