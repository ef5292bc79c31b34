#include "objectwriter/doc_object_writer.h"

#include "drawing/unit_switch.h"
#include "objectwriter/attribute_text.h"
#include "objectwriter/object_attr.h"
#include "story/work_limits.h"
#include "wordreader/document.h"

namespace ObjectWriter {
namespace {

constexpr char kVmlStart[] = "<!--[if gte vml 1]>";
constexpr char kVmlEnd[] = "<![endif]-->";
constexpr char kNoVmlStart[] = "<![if !vml]>";
constexpr char kNoVmlEnd[] = "<![endif]>";

constexpr unsigned int kWrapTopAndBottom = 1;
constexpr unsigned int kWrapNone = 3;

constexpr unsigned int wrapOf(const mso_word::FSPA& anchor) {
  return anchor.flags >> 5 & 15;
}

/// A goal length of an inline picture, scaled.
int scaled(uint16_t goalTwips, uint16_t perThousand) {
  return static_cast<int>(uint32_t{goalTwips} * perThousand / 1000);
}

/// A child without an anchor has an empty one.
tagRECT childAnchor(const MsoROShape& shape) {
  tagRECT rect{};
  shape.GetChildAnchor(rect);
  return rect;
}

float scaleOf(float length, int units) {
  return units == 0 ? 0 : length / static_cast<float>(units);
}

}  // namespace

std::unique_ptr<IObjectWriter> CreateDocHtmlObjectWriter() {
  return std::make_unique<KDocHtmlObjectWriter>();
}

Status KDocHtmlObjectWriter::Init(IEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  lookup_.reset();
  pictures_.emplace(*docEnv());
  return Status::kOk;
}

const ShapeLookup& KDocHtmlObjectWriter::lookup() {
  if (!lookup_) lookup_ = std::make_unique<ShapeLookup>(*docEnv()->conversion.document);
  return *lookup_;
}

pagerex::KWorkLimits& KDocHtmlObjectWriter::limits() const {
  return docEnv()->conversion.Limits();
}

/// What a shape costs grows with its properties, whether or not they come out.
bool KDocHtmlObjectWriter::MayWrite(const MsoROShape& shape) {
  constexpr uint64_t kShape = 128;
  const uint64_t bytes = uint64_t{shape.GetProperties().GetSize()} + shape.GetUDefProperties().GetSize();
  const uint64_t cost = kShape + bytes / 2;
  return limits().WriteShape(cost) && !limits().OutputFull(*archive());
}

/// The wrapping element does not pair up with the comments, nor always with itself: readers of these pages
/// rely on where its tags stand.
Status KDocHtmlObjectWriter::WriteObject(unsigned int cp, bool pageBreakFollows) {
  const ShapeLookup::Floating found = lookup().FindFloating(cp);
  if (!found.shape.Good() || !objects_.Enter(found.index)) return Status::kNothing;
  anchor_ = {found.anchor.left, found.anchor.top, found.anchor.right, found.anchor.bottom};
  wrap_ = wrapOf(found.anchor);
  IWriteArchive* const out = archive();
  out->AddContent("");
  out->Put(kVmlStart);
  if (wrap_ == kWrapTopAndBottom || pageBreakFollows) out->BeginElement("wrapblock", "o");
  const Status status = WriteObject(found.shape, true);
  if (pageBreakFollows) out->EndElement("wrapblock", "o");
  out->Put(kVmlEnd);
  out->Put(kNoVmlStart);
  WriteObject_NV(found.shape);
  out->Put(kNoVmlEnd);
  if (wrap_ == kWrapTopAndBottom) out->EndElement("wrapblock", "o");
  return status;
}

Status KDocHtmlObjectWriter::WriteEmbedShape(unsigned int cp) {
  constexpr int16_t kVmlOnly = 2;
  const KDREmbedShape* const found = lookup().FindEmbedded(cp);
  if (!found || picturesLeft_ == 0) return Status::kNothing;
  --picturesLeft_;
  const ByteView picture = found->picture;
  anchor_ = {0, 0, scaled(picture.u16(PICF::kGoalWidth), picture.u16(PICF::kScaleX)),
             scaled(picture.u16(PICF::kGoalHeight), picture.u16(PICF::kScaleY))};
  embedShape_ = found;
  IWriteArchive* const out = archive();
  out->AddContent("");
  out->Put(kVmlStart);
  Status status = WriteObject(*found->shape, false);
  out->Put(kVmlEnd);
  if (picture.i16(PICF::kMode) != kVmlOnly) {
    out->Put(kNoVmlStart);
    status = WriteObject_NV(*found->shape);
    out->Put(kNoVmlEnd);
  }
  embedShape_ = nullptr;
  return status;
}

Status KDocHtmlObjectWriter::WriteObject(const MsoROShape& shape, bool wrapInside) {
  if (!MayWrite(shape)) return Status::kNothing;
  const PropertyMap map(shape);
  if (!shape.IsGroupShape()) return WriteShape(shape, wrapInside);
  const GroupLevel level(groupDepth_);
  if (!level.allowed()) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("group", "v");
  WriteGuoup(shape);
  out->EndElement(false);
  Status status = Status::kNothing;
  for (unsigned int i = 0; i < shape.GetChildCount(); ++i) {
    const MsoROShape child = shape.GetChildShape(i);
    if (child.Good()) status = WriteObject(child, false);
  }
  if (wrapInside) WriteWrap();
  out->EndElement("group", "v");
  return status;
}

Status KDocHtmlObjectWriter::WriteShape(const MsoROShape& shape, bool wrapInside) {
  const char* const preset = objectAttr::GetShapeName(shape.GetShapeType());
  const char* const name = preset ? preset : "shape";
  IWriteArchive* const out = archive();
  out->PutNewLine();
  out->BeginElement(name, "v");
  if (!preset) out->AddAttribute("spt", static_cast<int>(shape.GetShapeType()), "o");
  WriteShapeFlag(shape, false);
  WriteGeometry(shape);
  out->EndElement(false);
  out->PutNewLine();
  WriteShapeStyle(shape);
  WriteTextBoxProp(shape);
  WriteInkData(shape);
  WriteClientData(shape);
  WriteShapeImage(shape);
  if (wrapInside) WriteWrap();
  out->EndElement(name, "v");
  return Status::kOk;
}

void KDocHtmlObjectWriter::WriteWrap() {
  if (embedShape_) return;
  const char* const type = GetTextWrap(wrap_);
  if (!type) return;
  IWriteArchive* const out = archive();
  out->BeginElement("wrap", "w");
  out->AddAttribute("type", type);
  out->EndElement("wrap", "w");
  out->PutNewLine();
}

// Place and size.

float KDocHtmlObjectWriter::GetOBJLeft(const MsoROShape& shape) {
  if (!shape.IsChildShape()) return static_cast<float>(UnitSwitch::Twip2Pt(anchor_.left));
  return static_cast<float>(childAnchor(shape).left);
}

float KDocHtmlObjectWriter::GetOBJTop(const MsoROShape& shape) {
  if (!shape.IsChildShape()) return static_cast<float>(UnitSwitch::Twip2Pt(anchor_.top));
  return static_cast<float>(childAnchor(shape).top);
}

float KDocHtmlObjectWriter::GetOBJWidth(const MsoROShape& shape) {
  if (!shape.IsChildShape()) {
    return static_cast<float>(UnitSwitch::Twip2Pt(wrappedDifference(anchor_.right, anchor_.left)));
  }
  const tagRECT rect = childAnchor(shape);
  return static_cast<float>(wrappedDifference(rect.right, rect.left));
}

float KDocHtmlObjectWriter::GetOBJHeight(const MsoROShape& shape) {
  if (!shape.IsChildShape()) {
    return static_cast<float>(UnitSwitch::Twip2Pt(wrappedDifference(anchor_.bottom, anchor_.top)));
  }
  const tagRECT rect = childAnchor(shape);
  return static_cast<float>(wrappedDifference(rect.bottom, rect.top));
}

int KDocHtmlObjectWriter::ZIndexOf(const MsoROShape& shape) const {
  const bool isBehind = !embedShape_ && wrap_ == kWrapNone && ShapeProps(shape).isSet(pid::kBehindText);
  return isBehind ? -1 : static_cast<int>(shape.GetZOrder());
}

Status KDocHtmlObjectWriter::GetShapePos(const MsoROShape& shape, std::string& style) {
  GetShapeFrect(shape, shapeRect_);
  if (!embedShape_) style += "position:absolute;";
  if (docEnv()->inTable == 0) style += "left:0;";
  style += "text-align:left;";
  AppendBox(shape, !embedShape_ || shape.IsChildShape(), style);
  AppendRotation(shape, style);
  AppendZIndex(ZIndexOf(shape), style);
  return Status::kOk;
}

/// The scale of children comes from the outermost group, their origin from the group around them.
Status KDocHtmlObjectWriter::WriteShapePos_NV(const MsoROShape& shape) {
  IWriteArchive* const out = archive();
  FRECT& rect = shapeRect_;
  GetShapeFrect(shape, rect);
  if (!embedShape_) out->AddCssProp("position", "absolute");
  if (docEnv()->inTable == 0) out->AddCssProp("left", "0");
  out->AddCssProp("text-align", "left");
  const bool isChild = shape.IsChildShape();
  if (isChild) {
    const float scaleX = scaleOf(groupRect_.width, wrappedDifference(groupBounds_.right, groupBounds_.left));
    const float scaleY = scaleOf(groupRect_.height, wrappedDifference(groupBounds_.bottom, groupBounds_.top));
    rect.left = (rect.left - static_cast<float>(parentBounds_.left)) * scaleX;
    rect.top = (rect.top - static_cast<float>(parentBounds_.top)) * scaleY;
    rect.width = rect.width * scaleX;
    rect.height = rect.height * scaleY;
  }
  if (isChild || !embedShape_) {
    out->AddCssProp("margin-left", pointText(rect.left).c_str());
    out->AddCssProp("margin-top", pointText(rect.top).c_str());
  }
  if (shape.GetShapeType() != kLine) {
    out->AddCssProp("width", pointText(rect.width).c_str());
    out->AddCssProp("height", pointText(rect.height).c_str());
  }
  out->AddCssProp("z-index", number(ZIndexOf(shape)).c_str());
  return Status::kOk;
}

/// Of an inline picture, what the property holds plays no part: its number alone says which picture of the
/// list it means.
Status KDocHtmlObjectWriter::WriteImage(PID property, int index, std::string& name) {
  if (!embedShape_) return pictures_->WriteStored(index, name);
  return pictures_->WriteListed(embedShape_->blips, objectAttr::GetImageBase(property), name);
}

// Text.

bool KDocHtmlObjectWriter::HasTextBox(const MsoROShape& shape) {
  return shape.GetTextBox().data() != nullptr;
}

/// The text is the same in every view: written as in the normal one, into the same page.
Status KDocHtmlObjectWriter::WriteDiv(const MsoROShape& shape) {
  constexpr size_t kNumber = 2;
  IWriteArchive* const out = archive();
  out->BeginElement("div");
  const uint32_t index = shape.GetTextBox().u16(kNumber) - 1u;
  const auto& stories = docEnv()->conversion.document->GetTxbxTxt();
  if (index < stories.Count()) {
    const OpenTextBoxes::Entry entry(textBoxes_, index);
    if (entry.entered()) {
      docEnv()->stories.WriteStory(mso_word::SUBDOC_TEXTBOX, stories.Range(index));
    }
  }
  out->EndElement("div");
  out->PutNewLine();
  return Status::kOk;
}

}  // namespace ObjectWriter
