#include "objectwriter/attribute_text.h"
#include "objectwriter/object_writer.h"

// The "imagedata" element, and the attributes that name a picture.

namespace ObjectWriter {
namespace {

constexpr AttributeRow kCropAndContrast[] = {
    {"croptop", 0x0100, Form::kFraction},  {"cropbottom", 0x0101, Form::kFraction},
    {"cropleft", 0x0102, Form::kFraction}, {"cropright", 0x0103, Form::kFraction},
    {"gain", 0x0108, Form::kFraction},     {"blacklevel", 0x0109, Form::kFraction},
};

/// Whether the name of a picture, by its flags, tells where on the web or outside the document it lies.
bool isAddress(int flags) {
  constexpr int kUrl = 2;
  constexpr int kLinked = 8;
  return (flags & (kUrl | kLinked)) != 0;
}

}  // namespace

Status KHtmlObjectWriter::WriteImageProp(const MsoROShape& shape, PID blip, PID name, PID flags) {
  const ShapeProps props(shape);
  const std::optional<int> index = props.number(blip);
  std::string file;
  if (index && WriteImage(blip, *index, file) == Status::kOk) archive()->AddAttribute("src", file.c_str());
  const std::string title = props.text(name);
  if (title.empty()) return Status::kOk;
  if (safety().on && isAddress(props.number(flags, 0))) {
    safety().AddAddress(*archive(), "title", title, "o");
  } else {
    archive()->AddAttribute("title", safety().Text(title).c_str(), "o");
  }
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteShapeImage(const MsoROShape& shape) {
  const ShapeProps props(shape);
  IWriteArchive* const out = archive();
  out->BeginElement("imagedata", "v");
  WriteImageProp(shape, pid::kBlip, pid::kBlipName, pid::kBlipFlags);
  writeAttributes(out, props, kCropAndContrast);
  const std::optional<int> gamma = props.wholeFixed(pid::kPictureGamma);
  if (gamma) out->AddAttribute("gamma", fractionText(static_cast<int>(*gamma * 50 + 0.5 + 50)).c_str());
  if (props.isSet(pid::kPictureGray)) {
    out->AddAttribute("grayscale", "t");
    if (props.isSet(pid::kPictureBiLevel)) out->AddAttribute("bilevel", "t");
  }
  EndVml("imagedata");
  return Status::kOk;
}

}  // namespace ObjectWriter
