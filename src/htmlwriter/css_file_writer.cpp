#include "htmlwriter/css_file_writer.h"

#include "base/output_path.h"
#include "htmlwriter/css_props.h"
#include "story/work_limits.h"
#include "wordreader/font_table.h"
#include "wordreader/style_sheet.h"

namespace pagerex {
namespace {

struct CssProperty {
  const char* name;
  const char* value;
};

/// The font is SimSun under its own name.
constexpr CssProperty kDiv[] = {
    {"word-wrap", "break-word"},
    {"font-family", "\xE5\xAE\x8B\xE4\xBD\x93"},
    {"font-size", "10.00000pt"},
    {"text-align", "left"},
};

constexpr CssProperty kContent[] = {
    {"font-family", "Arial Black"},
    {"font-size", "9pt"},
    {"cursor", "pointer"},
    {"display", "none"},
    {"visibility", "hidden"},
    {"position", "absolute"},
    {"top", "-1000"},
    {"left", "-1000"},
    {"background", "infobackground"},
    {"color", "InfoText"},
    {"border-top", "1pt solid #f1efe2"},
    {"border-right", "2pt solid #aca899"},
    {"border-bottom", "2pt solid black"},
    {"border-left", "1pt solid black"},
    {"padding", "3pt 3pt 3pt 3pt"},
    {"z-index", "100"},
    {"text-indent", "0.0pt"},
    {"text-align", "left"},
};

constexpr CssProperty kAnnotationAnchor[] = {
    {"color", "red"},
    {"cursor", "pointer"},
    {"font-size", "20px"},
    {"font-family", "Times New Roman"},
};

constexpr CssProperty kNoteAnchor[] = {
    {"color", "red"},          {"cursor", "pointer"},          {"font-size", "5.5pt"},
    {"font-family", "Tahoma"}, {"vertical-align", "text-top"},
};

template <size_t N>
void writeBlock(IWriteArchive* archive, const char* selector, const CssProperty (&properties)[N]) {
  archive->StartCssBlock(selector);
  for (const CssProperty& property : properties) archive->AddCssProp(property.name, property.value);
  archive->EndCssBlock();
}

}  // namespace

Status KCssFileWriter::Write(const char* fileName, KEnv* env) {
  if (!fileName || !env) return Status::kInvalidArgument;
  const ArchivePtr archive =
      CreateOwnedArchive(env->conversion->files, outputPath(env->conversion->filesDir, fileName).c_str());
  if (!archive) return Status::kCannotCreate;

  writeBlock(archive.get(), "div", kDiv);
  WriteHtmlStyle(archive.get());
  const uint32_t count = env->conversion->document->GetStyleSheet().Count();
  const uint64_t mostBytes = KWorkLimits::MostOutputBytes(*env->conversion->document);
  for (uint32_t istd = 0; istd < count && archive->GetWrittenBytes() < mostBytes; ++istd) {
    WriteStyle(istd, archive.get(), env);
  }
  return Status::kOk;
}

void WriteHtmlStyle(IWriteArchive* archive) {
  writeBlock(archive, ".content", kContent);
  archive->PutNewLine();
  writeBlock(archive, ".anchor_annotation", kAnnotationAnchor);
  archive->PutNewLine();
  writeBlock(archive, ".anchor_footnote, .anchor_endnote", kNoteAnchor);
}

namespace {

void noteFontSize(KHtmlConversionEnv& conversion, unsigned int istd, float points) {
  constexpr float kNone = -1;
  std::vector<float>& sizes = conversion.styleFontSizes;
  if (istd >= sizes.size()) sizes.resize(size_t{istd} + 1, kNone);
  sizes[istd] = points;
}

}  // namespace

Status WriteStyle(unsigned int istd, IWriteArchive* archive, KEnv* env) {
  if (!archive || !env) return Status::kInvalidArgument;
  archive->StartCssBlock(numbered(".std", static_cast<int>(istd)).c_str());
  int lineSpacing = 0;
  WritePapProps(env->conversion->merger->GetMergedPapx(static_cast<int>(istd)), archive, lineSpacing);
  const KDRSpanProp* span = env->conversion->merger->GetMergedChpxAtPStyle(static_cast<int>(istd));
  if (span && span->has(span_mask::hps))
    noteFontSize(*env->conversion, istd, static_cast<float>(span->hps) / 2);
  WriteChProps(span, archive, &env->conversion->document->GetFontTable(), -1, 10.5f, env->conversion->safety);
  archive->EndCssBlock();
  archive->PutNewLine();
  return Status::kOk;
}

void GetChpStdName(unsigned short istd, std::string& name) {
  name.clear();
  if (istd > 9) name = number(istd).c_str();
}

}  // namespace pagerex
