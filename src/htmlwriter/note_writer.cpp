#include "htmlwriter/note_writer.h"

#include "base/encoding.h"
#include "base/number_text.h"
#include "htmlwriter/story_writer.h"

namespace pagerex {
namespace {

/// Words that tell the kinds of notes apart in the page.
struct NoteKind {
  const char* anchorClass;  ///< also the prefix of the anchor's id
  const char* contentId;
  mso_word::SUBDOC_TYPE subDoc;
};
constexpr NoteKind kFootnote = {"anchor_footnote", "content_footnote", mso_word::SUBDOC_FOOTNOTE};
constexpr NoteKind kEndnote = {"anchor_endnote", "content_endnote", mso_word::SUBDOC_ENDNOTE};
constexpr NoteKind kAnnotation = {"anchor_annotation", "content_annotation", mso_word::SUBDOC_ANNOTATION};

NumberText call(const char* function, const NumberText& id, const char* rest) {
  return NumberText().append(function).append('(').append(id).append(rest);
}

void writeAnchor(IWriteArchive* archive, const NoteKind& kind, unsigned int index, const char* text) {
  const NumberText content = NumberText().append(kind.contentId).appendUnsigned(index);
  archive->BeginElement("span");
  archive->AddAttribute("id", NumberText().append(kind.anchorClass).appendUnsigned(index).c_str());
  archive->AddAttribute("class", kind.anchorClass);
  archive->AddAttribute("onmouseover", call("onMouseOverAnchor", content, ", event)").c_str());
  archive->AddAttribute("onmouseout", call("onMouseOut", content, ")").c_str());
  archive->AddContent(text);
  archive->EndElement("span");
}

/// `header` stands in front of the note's text.
template <class TextRanges>
void writeContent(const KEnv& env, const NoteKind& kind, unsigned int index, const TextRanges& ranges,
                  const std::string& header) {
  IWriteArchive* archive = env.conversion->archive;
  const NumberText id = NumberText().append(kind.contentId).appendUnsigned(index);
  archive->BeginElement("span");
  archive->AddAttribute("id", id.c_str());
  archive->AddAttribute("class", "content");
  archive->AddAttribute("onmouseover", call("onMouseOverContent", id, ")").c_str());
  archive->AddAttribute("onmouseout", call("onMouseOut", id, ")").c_str());
  if (!header.empty()) archive->AddContent(header.c_str());
  if (index < ranges.Count()) WriteStory(env, kind.subDoc, ranges.Range(index));
  archive->EndElement("span");
}

template <class Notes>
Status writeNoteContent(const Notes& notes, unsigned int index, const KEnv& env, const NoteKind& kind) {
  if (notes.GetPositions().Count() == 0) return Status::kNothing;
  if (index >= notes.GetPositions().Count()) return Status::kInvalidArgument;
  writeContent(env, kind, index, notes.GetTextRanges(), std::string());
  return Status::kOk;
}

template <class Notes>
bool isNote(const Notes* notes, unsigned int cp, unsigned int index) {
  if (!notes) return true;
  return index < notes->GetPositions().Count() && notes->GetPositions().Position(index) == cp;
}

}  // namespace

Status KHtmlFootEndnoteWriter::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  footnotes_ = &env->conversion->document->GetFootnotes();
  endnotes_ = &env->conversion->document->GetEndnotes();
  return Status::kOk;
}

Status KHtmlFootEndnoteWriter::WriteAnchor(unsigned int cp) {
  if (!env_) return Status::kInvalidArgument;
  if (IsFootnote(cp, env_->footnoteCount)) {
    env_->page.pendingFootnotes.push_back(env_->footnoteCount);
    WriteFootnoteAnchor(env_->footnoteCount++);
    return Status::kOk;
  }
  if (IsEndnote(cp, env_->endnoteCount)) {
    env_->page.pendingEndnotes.push_back(env_->endnoteCount);
    WriteEndnoteAnchor(env_->endnoteCount++);
    return Status::kOk;
  }
  return Status::kNothing;
}

bool KHtmlFootEndnoteWriter::IsFootnote(unsigned int cp, unsigned int index) const {
  return isNote(footnotes_, cp, index);
}

bool KHtmlFootEndnoteWriter::IsEndnote(unsigned int cp, unsigned int index) const {
  return isNote(endnotes_, cp, index);
}

void KHtmlFootEndnoteWriter::WriteFootnoteAnchor(unsigned int index) {
  writeAnchor(env_->conversion->archive, kFootnote, index, NumberText().appendUnsigned(index).c_str());
}

void KHtmlFootEndnoteWriter::WriteEndnoteAnchor(unsigned int index) {
  writeAnchor(env_->conversion->archive, kEndnote, index, NumberText().appendUnsigned(index).c_str());
}

Status KHtmlFootEndnoteWriter::WriteFootnoteContent(unsigned int index, const KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  return writeNoteContent(env->conversion->document->GetFootnotes(), index, *env, kFootnote);
}

Status KHtmlFootEndnoteWriter::WriteEndnoteContent(unsigned int index, const KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  return writeNoteContent(env->conversion->document->GetEndnotes(), index, *env, kEndnote);
}

Status KHtmlAnnotationWriter::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  annotations_ = &env->conversion->document->GetAnnotations();
  return Status::kOk;
}

Status KHtmlAnnotationWriter::WriteAnchor() {
  if (!env_) return Status::kInvalidArgument;
  env_->page.pendingAnnotations.push_back(env_->annotationCount);
  writeAnchor(env_->conversion->archive, kAnnotation, env_->annotationCount++, "|");
  return Status::kOk;
}

Status KHtmlAnnotationWriter::WriteContent(unsigned int index, const KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  const KDRAnnotations& annotations = env->conversion->document->GetAnnotations();
  if (index >= annotations.GetRefs().Count()) return Status::kInvalidArgument;
  std::string header;
  FormatAnnotationContent(annotations, index, *env->textPool, env->conversion->safety, header);
  writeContent(*env, kAnnotation, index, annotations.GetTextRanges(), header);
  return Status::kOk;
}

void FormatAnnotationContent(const KDRAnnotations& annotations, unsigned int index, const KTextPool&,
                             const KPageSafety& safety, std::string& out) {
  out += "<b>";
  const unsigned short* const author = annotations.GetAuthor(annotations.GetRefs().Item(index)).name;
  out += safety.Text(KEncoding::WCHAR2BitToString(65001, author));
  out += ",";
  if (index < annotations.GetDTTMs().Count()) FormatDttm(*annotations.GetDTTMs().Item(index), out);
  out += "</b>";
  out += "<br>\xE6\x89\xB9\xE6\xB3\xA8\xEF\xBC\x9A";  // "comment:" in Chinese
}

void FormatDttm(const mso_word::DTTM& dttm, std::string& out) {
  const auto bits = [&dttm](unsigned first, unsigned count) {
    return dttm.value >> first & ((1u << count) - 1);
  };
  FixedText<260> text;
  text.append("&nbsp;").appendUnsigned(1900 + bits(20, 9));
  text.append('-').appendUnsigned(bits(16, 4)).append('-').appendUnsigned(bits(11, 5));
  text.append("&nbsp;").appendUnsigned(bits(6, 5)).append(':').appendUnsigned(bits(0, 6)).append(":00");
  text.append("&nbsp;\xE6\x98\x9F\xE6\x9C\x9F").appendUnsigned(bits(29, 3));  // "weekday" in Chinese
  out.append(text);
}

}  // namespace pagerex
