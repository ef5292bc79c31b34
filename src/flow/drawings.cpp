#include "flow/drawings.h"

#include <algorithm>
#include <utility>

#include "drawing/query_prop.h"
#include "flow/word_colour.h"

namespace pagerex {
namespace {

using mso_escher::MsoROBlip;

constexpr PID kTextId = 0x0080, kArtText = 0x00C0, kBlip = 0x0104, kBlipName = 0x0105, kBlipFlags = 0x0106,
              kRotation = 0x0004, kFillColour = 0x0181, kFillBlip = 0x0186, kMaster = 0x0301, kName = 0x0380,
              kDescription = 0x0381, kIsRule = 0x03B4, kIsHidden = 0x03BE;
constexpr int kBlipIsLink = 0x0A;  // of the flags: the name is an address and no bytes are stored
constexpr uint32_t kMostShapes = 1 << 16;
constexpr unsigned kDeepest = 64;

PictureData dataOf(const MsoROBlip& blip) {
  constexpr size_t kRawSize = 0, kCompression = 32;
  const uint32_t type = blip.type == mso_escher::kBlipTiff       ? static_cast<uint32_t>(PictureType::kTiff)
                        : blip.type == mso_escher::kBlipCmykJpeg ? mso_escher::kBlipJpeg
                                                                 : blip.type;
  if (type < mso_escher::kBlipEmf || blip.data.empty()) return {};
  PictureData data{static_cast<PictureType>(type), blip.data, false, 0};
  if (!blip.metafileHeader.empty()) {
    data.isDeflated = blip.metafileHeader.u8(kCompression) == 0;
    data.rawSize = blip.metafileHeader.u32(kRawSize);
  }
  return data;
}

/// A picture of the store that the floating shapes share.
class StoredPicture final : public PictureSource {
 public:
  StoredPicture(const mso_escher::MsoROBlipStore& store, uint32_t index, DsMemReadArchive& delayed)
      : store_(store), index_(index), delayed_(delayed) {}

  PictureData Read() override try {
    const MsoROBlip* blip = store_.GetBlipNoDelayStrm(index_);
    if (!blip) blip = store_.GetBlipWithDelayStrm(index_, &delayed_);
    return blip ? dataOf(*blip) : PictureData();
  } catch (int) {
    return {};
  }

 private:
  const mso_escher::MsoROBlipStore& store_;
  uint32_t index_;
  DsMemReadArchive& delayed_;
};

/// A picture of an inline shape: `index` counts from 0 in the list behind it. Many writers count on through
/// the document, though each list has one picture.
class InlinePicture final : public PictureSource {
 public:
  InlinePicture(const KDRBseTable& table, uint32_t index) : table_(table), index_(index) {}

  PictureData Read() override try {
    const KDRBseImage* const image = table_.ImageItem(index_ < table_.Count() ? index_ : 0);
    if (!image) return {};
    mso_escher::MsoRORecInfo record;
    MsoROBlip blip;
    mso_escher::MsoRORecords records(image->blipRecord);
    const bool isRead = records.Next(&record) == Status::kOk && ReadBlip(record, blip);
    return isRead ? dataOf(blip) : PictureData();
  } catch (int) {
    return {};
  }

 private:
  const KDRBseTable& table_;
  uint32_t index_;
};

/// The metafile that an object keeps of itself, behind what says how it is mapped.
class ObjectPicture final : public PictureSource {
 public:
  explicit ObjectPicture(ByteView metafile) : metafile_(metafile) {}

  PictureData Read() override { return {PictureType::kWmf, metafile_, false, 0}; }

 private:
  ByteView metafile_;
};

/// A length that a damaged group has made may be any number.
int32_t roundedDown(double length) {
  constexpr double kMost = 1 << 30;
  return length > -kMost && length < kMost ? static_cast<int32_t>(length) : 0;
}

/// Of a property that stands with the usual ones or apart from them.
bool has(const mso_escher::MsoROShape& shape, PID property) {
  bool value = false;
  return (KQueryProp::QueryBoolProp(&shape, property, value) ||
          KQueryProp::QueryBoolUDefProp(&shape, property, value)) &&
         value;
}

/// As the anchor tells it. The shape may tell it otherwise.
ShapePlace placeOf(uint16_t flags, const ShapeBox& box, const mso_escher::MsoROShape& shape) {
  constexpr unsigned kFroms = 3, kWraps = 4;
  ShapePlace place;
  const unsigned fromX = flags >> 1 & 3, fromY = flags >> 3 & 3, wrap = flags >> 9 & 0x0F;
  if (fromX < kFroms) place.fromX = static_cast<ShapePlace::From>(fromX);
  if (fromY < kFroms) place.fromY = static_cast<ShapePlace::From>(fromY);
  if (wrap < kWraps) place.wrapSide = static_cast<ShapePlace::Wrap>(wrap);
  place.anchor = box;
  place.order = shape.GetZOrder();
  place.isInGroup = shape.IsGroupShape();
  return place;
}

ShapeTurn turnOf(const mso_escher::MsoROShape& shape) {
  int rotation = 0;
  KQueryProp::QueryI4Prop(&shape, kRotation, rotation);
  const uint32_t flags = shape.GetGrfValue();
  return {rotation / 65536.0, (flags & mso_escher::kShapeFlippedX) != 0,
          (flags & mso_escher::kShapeFlippedY) != 0};
}

}  // namespace

PictureFacts FoundShape::Facts() const {
  PictureFacts facts = place;
  facts.description = description;
  facts.name = name;
  facts.linkedAddress = linkedAddress;
  facts.source = source.get();
  facts.shape = shape.get();
  return facts;
}

// Floating shapes

std::vector<FoundShape> Drawings::At(bool isInHeaders, uint32_t position) try {
  std::vector<FoundShape> found;
  std::optional<PositionTable>& anchors = anchors_[isInHeaders];
  if (!anchors) {
    anchors.emplace(
        file_.Table(isInHeaders ? mso_word::FCLCB_HEADER_SHAPE_ANCHORS : mso_word::FCLCB_SHAPE_ANCHORS),
        sizeof(mso_word::FSPA));
  }
  const uint32_t index = anchors->Find(position);
  if (index >= anchors->Count() || anchors->Position(index) != position) return found;
  constexpr uint16_t kBelowText = 0x4000;
  const auto anchor = anchors->Record(index).copyOf<mso_word::FSPA>(0);
  const Shape* const shape = ShapeWithId(isInHeaders, anchor.shapeId);
  if (!shape) return found;
  Placed placed;
  PictureFacts& facts = placed.facts;
  facts.isInline = false;
  facts.left = anchor.left;
  facts.top = anchor.top;
  facts.width = static_cast<int32_t>(int64_t{anchor.right} - anchor.left);
  facts.height = static_cast<int32_t>(int64_t{anchor.bottom} - anchor.top);
  facts.wrap = anchor.flags >> 5 & 0x0F;
  facts.isBehindText = (anchor.flags & kBelowText) != 0;
  isInHeaders_ = isInHeaders;
  place_ = placeOf(anchor.flags, {facts.left, facts.top, facts.width, facts.height}, *shape);
  placed.frame = ShapeFrame::OfAnchor(place_.anchor, turnOf(*shape));
  AddShape(*shape, placed, found);
  return found;
} catch (int) {
  return {};
}

const Drawings::Shape* Drawings::ShapeWithId(bool isInHeaders, uint32_t id) {
  ReadDrawings();
  const auto found = shapes_[isInHeaders].find(id);
  return found != shapes_[isInHeaders].end() ? &found->second : nullptr;
}

void Drawings::ReadDrawings() {
  if (drawings_) return;
  drawings_.emplace();
  const ByteView table = file_.Table(mso_word::FCLCB_DRAWINGS);
  constexpr uint64_t kTimes = 2, kLeastShapeBytes = 16, kSpare = 1024;
  shapesLeft_ = kTimes * table.size() / kLeastShapeBytes + kSpare;
  if (table.empty()) return;
  drawings_->ReadRecord(table, file_.allocator());
  for (unsigned i = 0; i < 2; ++i) CollectShapes(drawings_->GetDrawing(i).GetRootShape(), shapes_[i]);
}

/// Those that can be anchored: the ones at the top.
void Drawings::CollectShapes(const Shape& root, std::unordered_map<uint32_t, Shape>& shapes) {
  const unsigned count = std::min(root.GetChildCount(), kMostShapes);
  for (unsigned i = 0; i < count; ++i) {
    const Shape shape = root.GetChildShape(i);
    if (shape.Good()) shapes.emplace(shape.GetShapeID(), shape);
  }
}

void Drawings::AddShape(const Shape& shape, const Placed& placed, std::vector<FoundShape>& out) {
  if (!shape.Good() || placed.depth > kDeepest) return;
  if (shapesLeft_ == 0) return warn(file_.warnings(), WarningCode::kWorkLimit, "shapes");
  --shapesLeft_;
  if (shape.IsGroupShape()) return AddChildren(shape, placed, out);
  if (has(shape, kIsHidden)) return;
  FoundShape found;
  found.place = placed.facts;
  AddNames(shape, found);
  AddText(shape, found);
  AddPicture(shape, found);
  AddFacts(shape, placed, found);
  out.push_back(std::move(found));
}

void Drawings::AddChildren(const Shape& group, const Placed& placed, std::vector<FoundShape>& out) {
  if (placed.depth == 0) TakePlace(group);
  tagRECT space{};
  group.GetGroupCoordBounds(space);
  const double width = double{1} * space.right - space.left, height = double{1} * space.bottom - space.top;
  const PictureFacts& place = placed.facts;
  for (unsigned i = 0; i < group.GetChildCount(); ++i) {
    const Shape child = group.GetChildShape(i);
    if (!child.Good()) continue;
    tagRECT box{};
    child.GetChildAnchor(box);
    Placed inside{place, placed.frame.Child(space, box, turnOf(child)), placed.depth + 1};
    if (width > 0 && height > 0) {
      const double x = place.width / width, y = place.height / height;
      inside.facts.left = roundedDown(place.left + (double{1} * box.left - space.left) * x);
      inside.facts.top = roundedDown(place.top + (double{1} * box.top - space.top) * y);
      inside.facts.width = roundedDown((double{1} * box.right - box.left) * x);
      inside.facts.height = roundedDown((double{1} * box.bottom - box.top) * y);
    }
    AddShape(child, inside, out);
  }
}

// What a shape is

/// What is not told at a shape is that of its master, or of all shapes of the document. False when too much
/// has been read.
bool Drawings::ReadProperties(const Shape& shape, ShapeProperties& properties) {
  constexpr uint64_t kTimes = 8, kSpare = 1 << 20;
  constexpr unsigned kMostMasters = 4;
  if (!propertyBytesLeft_) propertyBytesLeft_ = kTimes * file_.bytesHeld() + kSpare;
  *propertyBytesLeft_ += kTimes * std::exchange(inlineBytes_, 0);
  const auto add = [&](const ShapeProperties::Table& table) {
    if (table.GetSize() > *propertyBytesLeft_) return false;
    *propertyBytesLeft_ -= table.GetSize();
    properties.Add(table);
    return true;
  };
  const Shape* each = &shape;
  for (unsigned i = 0; each && i < kMostMasters; ++i) {
    if (!add(each->GetProperties()) || !add(each->GetUDefProperties())) {
      warn(file_.warnings(), WarningCode::kWorkLimit, "shapes");
      return false;
    }
    int master = 0;
    const bool hasMaster = KQueryProp::QueryI4Prop(each, kMaster, master) && master != 0;
    each = hasMaster ? ShapeWithId(isInHeaders_, static_cast<uint32_t>(master)) : nullptr;
  }
  ReadDrawings();
  add(drawings_->GetDrawingGroup().GetDefaultProperties());
  properties.Sort();
  return true;
}

/// Of a group: where all that stands in it is.
void Drawings::TakePlace(const Shape& shape) {
  ShapeProperties properties;
  if (ReadProperties(shape, properties)) readShapePlace(properties, place_);
}

void Drawings::AddFacts(const Shape& shape, const Placed& placed, FoundShape& out) {
  ShapeProperties properties;
  if (!ReadProperties(shape, properties)) return;
  out.shape = std::make_unique<ShapeFacts>();
  ShapeFacts& facts = *out.shape;
  readShape(shape, properties, facts);
  facts.geometry.rotation = static_cast<float>(placed.frame.turn.rotation);
  facts.geometry.flipsX = placed.frame.turn.flipsX;
  facts.geometry.flipsY = placed.frame.turn.flipsY;
  facts.box = placed.frame.Box();
  facts.place = place_;
  if (placed.depth == 0) readShapePlace(properties, facts.place);
  const int32_t fillBlip = properties.Number(kFillBlip, 0);
  if (facts.fill.isPictured() && fillBlip > 0) AddFillPicture(static_cast<uint32_t>(fillBlip), out);
}

void Drawings::AddFillPicture(uint32_t index, FoundShape& out) {
  out.fillSource = StoredPictureAt(index);
  ShapeFill& fill = out.shape->fill;
  fill.picture = out.fillSource.get();
  fill.pictureIdentity = fill.picture ? index : 0;
  if (!fill.picture || fill.kind != ShapeFill::Kind::kPattern) return;
  const PictureData data = fill.picture->Read();
  if (data.type == PictureType::kDib) fill.pattern = patternOf(data.bytes);
}

std::unique_ptr<PictureSource> Drawings::StoredPictureAt(uint32_t index) {
  const auto& store = drawings_->GetDrawingGroup().GetBlipStore();
  if (index == 0 || index > store.GetCount()) return nullptr;
  if (!text_.good()) file_.ShareText(text_);
  return std::make_unique<StoredPicture>(store, index - 1, text_);
}

/// Writers that choose none leave a shape there, often without saying that it has no fill.
Shading Drawings::Background() try {
  ReadDrawings();
  const Shape& shape = drawings_->GetDrawing(0).GetBackgroundShape();
  ShapeProperties properties;
  if (!shape.Good() || !ReadProperties(shape, properties)) return {};
  ShapeFacts facts;
  readShape(shape, properties, facts);
  int colour = 0;
  const bool isChosen = KQueryProp::QueryI4Prop(&shape, kFillColour, colour);
  if (facts.fill.kind == ShapeFill::Kind::kNone || !isChosen) return {};
  return {true, {facts.fill.rgb, false}};
} catch (int) {
  return {};
}

// Names and texts

/// Many places may show one shape: all its texts together stay within what the file could hold.
void Drawings::AddNames(const Shape& shape, FoundShape& out) {
  if (hasTextLeft_ && textLeft_ == 0) return;
  KQueryProp::QueryBstrProp(&shape, kDescription, out.description);
  KQueryProp::QueryBstrProp(&shape, kName, out.name);
  int flags = 0;
  KQueryProp::QueryI4Prop(&shape, kBlipFlags, flags);
  if (flags & kBlipIsLink) KQueryProp::QueryBstrProp(&shape, kBlipName, out.linkedAddress);
  for (std::u16string* const text : {&out.description, &out.name, &out.linkedAddress}) Account(*text);
}

void Drawings::Account(std::u16string& text) {
  constexpr uint64_t kTimes = 8, kSpare = 1 << 16;
  if (!hasTextLeft_) textLeft_ = kTimes * file_.bytesHeld() + kSpare;
  hasTextLeft_ = true;
  if (text.size() > textLeft_) {
    warn(file_.warnings(), WarningCode::kWorkLimit, "shapes");
    text.clear();
    textLeft_ = 0;
  }
  textLeft_ -= text.size();
}

/// The number of its text box, unless it goes on with the text of another one; and text that is drawn.
void Drawings::AddText(const Shape& shape, FoundShape& out) {
  int id = 0;
  const ByteView record = shape.GetTextBox();
  if (!record.empty()) {
    id = record.i32(0);
  } else {
    KQueryProp::QueryI4Prop(&shape, kTextId, id);
  }
  const auto text = static_cast<uint32_t>(id);
  if (text >> 16 != 0 && (text & 0xFFFF) == 0) out.box = static_cast<int32_t>((text >> 16) - 1);
  if (!hasTextLeft_ || textLeft_ > 0) KQueryProp::QueryBstrProp(&shape, kArtText, out.artText);
  Account(out.artText);
}

void Drawings::AddPicture(const Shape& shape, FoundShape& out) {
  int index = 0;
  if (!KQueryProp::QueryI4Prop(&shape, kBlip, index) || index < 1) return;
  out.source = StoredPictureAt(static_cast<uint32_t>(index));
  if (out.source) out.place.identity = static_cast<uint32_t>(index);
}

PositionTable& Drawings::Boxes(bool isInHeaders) {
  std::optional<PositionTable>& boxes = boxes_[isInHeaders];
  if (!boxes) {
    boxes.emplace(file_.Table(isInHeaders ? mso_word::FCLCB_HEADER_TEXTBOXES : mso_word::FCLCB_TEXTBOXES),
                  sizeof(mso_word::FTXBXS));
  }
  return *boxes;
}

KDWRange Drawings::BoxText(bool isInHeaders, uint32_t number) {
  constexpr size_t kIsReusable = 8;
  const PositionTable& boxes = Boxes(isInHeaders);
  if (number >= boxes.Count() || boxes.Record(number).u16(kIsReusable) != 0) return {};
  return boxes.Range(number);
}

// Inline pictures

bool Drawings::Inline(uint32_t offset, FoundShape& out) try {
  const auto [place, isNew] = inline_.try_emplace(offset);
  if (isNew) {
    if (!data_.good()) {
      file_.ShareData(data_);
      if (data_.good()) dataPieces_.emplace(data_, file_.allocator());
    }
    KDREmbedShape read;
    if (data_.good() && read.Init(*dataPieces_, offset, 0, file_.allocator()) == Status::kOk && read.shape) {
      place->second = read;
      inlineBytes_ += read.shape->GetProperties().GetSize() + read.shape->GetUDefProperties().GetSize();
    }
  }
  if (!place->second) return false;
  const KDREmbedShape& shape = *place->second;
  const auto scaled = [&shape](size_t goal, size_t scale) {
    const uint32_t percent = shape.picture.u16(scale);
    return static_cast<int32_t>(uint64_t{shape.picture.u16(goal)} * (percent ? percent : 1000) / 1000);
  };
  out.place.width = scaled(PICF::kGoalWidth, PICF::kScaleX);
  out.place.height = scaled(PICF::kGoalHeight, PICF::kScaleY);
  AddNames(*shape.shape, out);
  out.isRule = has(*shape.shape, kIsRule);
  AddText(*shape.shape, out);
  int index = 0;
  const bool hasBlip = KQueryProp::QueryI4Prop(shape.shape, kBlip, index) && index > 0;
  if (hasBlip && shape.blips) {
    out.source = std::make_unique<InlinePicture>(*shape.blips, static_cast<uint32_t>(index) - 1);
    out.place.identity = offset | 0x80000000;
  }
  AddInlineFacts(shape, out);
  return true;
} catch (int) {
  return false;
}

bool Drawings::Object(uint32_t number, FoundShape& out) try {
  constexpr size_t kMapping = 8, kGoalWidth = 20, kGoalHeight = 24, kScaleX = 44, kScaleY = 48, kSize = 100;
  constexpr uint32_t kObjectIdentity = 0x40000000;
  const auto [place, isNew] = objects_.try_emplace(number);
  ObjectFace& face = place->second;
  if (isNew) {
    const ByteView size = file_.ObjectStream(number, L"\x03PIC", kSize);
    face.metafile = file_.ObjectStream(number, L"\x03META", objectBytesLeft_).part(kMapping);
    objectBytesLeft_ -= static_cast<uint32_t>(face.metafile.size());
    face.identity = kObjectIdentity | static_cast<uint32_t>(objects_.size());
    const auto scaled = [&size](size_t goal, size_t scale) {
      const uint32_t percent = size.u32(scale), most = 31680;  // the longest side that Word knows
      return static_cast<int32_t>(
          std::min<uint64_t>(uint64_t{size.u32(goal)} * (percent ? percent : 1000) / 1000, most));
    };
    face.width = scaled(kGoalWidth, kScaleX);
    face.height = scaled(kGoalHeight, kScaleY);
  }
  if (face.metafile.empty() || face.width == 0 || face.height == 0) return false;
  out.place.width = face.width;
  out.place.height = face.height;
  out.place.identity = face.identity;
  out.source = std::make_unique<ObjectPicture>(face.metafile);
  return true;
} catch (int) {
  return false;
}

void Drawings::AddInlineFacts(const KDREmbedShape& shape, FoundShape& out) {
  constexpr size_t kTop = 46, kLeft = 50, kBottom = 54, kRight = 58, kBorderSize = 4;
  ShapeProperties properties;
  if (!ReadProperties(*shape.shape, properties)) return;
  out.shape = std::make_unique<ShapeFacts>();
  ShapeFacts& facts = *out.shape;
  readShape(*shape.shape, properties, facts);
  readShapePlace(properties, facts.place);
  facts.box.width = out.place.width;
  facts.box.height = out.place.height;
  const auto border = [&shape](size_t at) { return border80Of(shape.picture.part(at, kBorderSize)); };
  facts.picture.top = border(kTop);
  facts.picture.left = border(kLeft);
  facts.picture.bottom = border(kBottom);
  facts.picture.right = border(kRight);
}

}  // namespace pagerex
