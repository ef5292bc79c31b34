#include "objectwriter/attribute_text.h"
#include "objectwriter/object_attr.h"
#include "objectwriter/object_writer.h"

// The "textpath" and "textbox" elements.

namespace ObjectWriter {
namespace {

struct FlagRow {
  const char* name;
  PID id;
};

/// Flags of WordArt that are part of its style: "t" or "f" if present.
constexpr FlagRow kGeoTextStyleFlags[] = {
    {"v-text-reverse", 0x00F0},      {"v-rotate-letters", 0x00F2},      {"v-text-kern", 0x00F3},
    {"v-text-spacing-mode", 0x00F4}, {"v-same-letter-heights", 0x00F8},
};
/// Words that are part of the style if the flag is true.
struct FlagWordRow {
  const char* name;
  PID id;
  const char* word;
};
constexpr FlagWordRow kGeoTextStyleWords[] = {
    {"font-weight", 0x00FA, "bold"},
    {"font-style", 0x00FB, "italic"},
    {"text-decoration", 0x00FC, "underline"},
};
/// Attributes, if present.
constexpr FlagRow kGeoTextFlags[] = {{"fitshape", 0x00F5}, {"fitpath", 0x00F6}, {"xscale", 0x00F9}};

/// One "name:value;" of the style; it is cut to 63 bytes, so that a long font name loses its end.
using StylePiece = FixedText<64>;

StylePiece piece(std::string_view name, std::string_view value, const char* quote = "") {
  return StylePiece().append(name).append(':').append(quote).append(value).append(quote).append(';');
}

/// In a safe page nothing is cut, so that what follows does not become a part of the name.
std::string fontPiece(const std::string& font, const pagerex::KPageSafety& safety) {
  if (safety.on) return "font-family:" + safety.FontName(font, "'") + ";";
  return std::string(std::string_view(piece("font-family", font, "'")));
}

std::string geoTextStyle(const ShapeProps& props, const pagerex::KPageSafety& safety) {
  std::string style;
  const std::string font = props.text(pid::kGeoTextFont);
  if (!font.empty()) style += fontPiece(font, safety);
  const std::optional<int> size = props.wholeFixed(pid::kGeoTextSize);
  if (size) style += piece("font-size", NumberText().appendInt(*size).append("pt"));
  const std::optional<int> align = props.number(pid::kGeoTextAlign);
  if (align) style += piece("v-text-align", objectAttr::GetGeoTextAlignType(*align), "'");
  const std::optional<int> spacing = props.number(pid::kGeoTextSpacing);
  if (spacing) style += piece("v-text-spacing", fractionText(*spacing));
  for (const FlagRow& row : kGeoTextStyleFlags) {
    const std::optional<bool> flag = props.flag(row.id);
    if (flag) style += piece(row.name, *flag ? "t" : "f");
  }
  for (const FlagWordRow& row : kGeoTextStyleWords) {
    if (props.isSet(row.id)) style += piece(row.name, row.word);
  }
  return style;
}

}  // namespace

Status KHtmlObjectWriter::WriteGeoTextProp(const MsoROShape& shape) {
  const ShapeProps props(shape);
  const std::string text = props.text(pid::kGeoText);
  if (text.empty()) return Status::kNothing;
  IWriteArchive* const out = archive();
  out->BeginElement("textpath", "v");
  const std::string style = geoTextStyle(props, safety());
  if (!style.empty()) out->AddAttribute("style", style.c_str());
  for (const FlagRow& row : kGeoTextFlags) {
    const std::optional<bool> flag = props.flag(row.id);
    if (flag) out->AddAttribute(row.name, *flag);
  }
  out->AddAttribute("string", safety().Text(text).c_str());
  EndVml("textpath");
  return Status::kOk;
}

Status KHtmlObjectWriter::WriteTextBoxProp(const MsoROShape& shape) {
  if (!HasTextBox(shape)) return Status::kNothing;
  const ShapeProps props(shape);
  IWriteArchive* const out = archive();
  out->BeginElement("textbox", "v");
  if (!props.isSet(pid::kAutoTextMargin)) {
    const TextMargins margins = props.textMargins();
    out->AddAttribute("inset",
                      joinedPoints({margins.left, margins.top, margins.right, margins.bottom}).c_str());
  }
  writeAttribute(out, props, {"v-text-anchor", pid::kTextAnchor, Form::kWord, objectAttr::GetAnchorTextType});
  if (props.number(pid::kTextFlow) == 1) out->AddAttribute("layout-flow", "vertical");
  out->EndElement(false);
  out->PutNewLine();
  WriteDiv(shape);
  EndVml("textbox");
  return Status::kOk;
}

}  // namespace ObjectWriter
