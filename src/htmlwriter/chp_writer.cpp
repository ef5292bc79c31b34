#include "htmlwriter/chp_writer.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/number_text.h"
#include "htmlwriter/css_props.h"
#include "htmlwriter/navigation_writer.h"
#include "objectwriter/object_writer_interface.h"
#include "story/work_limits.h"

namespace pagerex {

Status KChpBase::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  limits_ = &env->conversion->Limits();
  return Status::kOk;
}

Status KChpBase::EnterRun(unsigned int index) {
  if (!env_ || index >= env_->plcfChp->Count()) return Status::kInvalidArgument;
  const KDWRange range = env_->plcfChp->Range(index);
  runStart_ = std::max({range.start, env_->pap.papStart, env_->streamStart});
  runEnd_ = std::min({range.end, env_->pap.papEnd, env_->streamEnd});
  if (runEnd_ < runStart_) return Status::kNothing;
  runEnd_ = std::min(runEnd_, std::max(runStart_, env_->textPool->size()));
  const uint32_t length = runEnd_ - runStart_;
  if (!limits_->Visit(env_->subDocType, uint64_t{1} + length) ||
      limits_->OutputFull(*env_->conversion->archive)) {
    return Status::kNothing;
  }

  // One character more is read to see whether a page break follows.
  if (runText_.size() < size_t{length} + 2) runText_.resize(size_t{length} + 2);
  runText_[length] = 0;
  env_->textPool->read(runStart_, runText_.data(), length + 1);
  endsWithPageBreak_ = runText_[length] == text_mark::kPageBreak;
  runText_[length] = 0;

  runList_ = env_->plcfChp->Data(index)->fkp();
  const KDRSpanProp& properties = env_->conversion->spelled.Run(runList_).properties;
  isSpecial_ = properties.fSpec != 0;
  isHidden_ = properties.fVanish != 0;
  isOleObject_ = properties.fOle2 != 0;
  return Status::kOk;
}

void KChpBase::BeginChp() {
  IWriteArchive* archive = env_->conversion->archive;
  archive->BeginElement("span");
  const int32_t lineSpacing = env_->pap.lineSpacing;
  const float baseFontSize = env_->pap.baseFontSize;
  SpelledRun& run = env_->conversion->spelled.Run(runList_);
  if (!run.attributes.empty() && run.lineSpacing == lineSpacing && run.baseFontSize == baseFontSize) {
    archive->_Put(run.attributes.data(), static_cast<int>(run.attributes.size()));
    return;
  }
  const uint64_t start = archive->GetWrittenBytes();
  WriteAttributes(run);
  run.lineSpacing = lineSpacing;
  run.baseFontSize = baseFontSize;
  run.attributes = archive->WrittenSince(start);
}

void KChpBase::WriteAttributes(const SpelledRun& run) {
  IWriteArchive* archive = env_->conversion->archive;
  float baseSize = env_->pap.baseFontSize;
  if (run.istd != mso_word::kNoCharacterStyle) {
    archive->AddAttribute("class", numbered("std", run.istd).c_str());
    baseSize = GetBaseFontSize(env_, run.istd, baseSize);
  }
  archive->StartCssStyle();
  WriteChProps(&run.properties, archive, &env_->conversion->document->GetFontTable(), env_->pap.lineSpacing,
               baseSize, env_->conversion->safety);
  archive->EndCssStyle();
}

void KChpBase::EndChp() {
  env_->conversion->archive->EndElement("span");
}

namespace {

/// Of the 16-bit characters of a code. Halves of a character leave nothing of the text in pages that are not
/// safe.
std::string joinedUtf8(const std::wstring& code) {
  std::string text;
  Utf16Joiner joiner;
  for (const wchar_t unit : code) appendUtf8(text, joiner.Join(static_cast<unsigned short>(unit)));
  return text;
}

}  // namespace

Status KChpBase::WriteHyperLinkBegin() {
  if (env_->hyperlinkState != 1) return Status::kInvalidArgument;
  env_->hyperlinkState = 2;
  IWriteArchive& archive = *env_->conversion->archive;
  const KPageSafety& safety = env_->conversion->safety;
  archive.BeginElement("a");
  std::wstring url;
  std::wstring title;
  ParseHyperlinkFieldCode(fields_.takeCode(), url, title);
  const auto narrow = [&safety](const std::wstring& text) {
    return safety.on ? joinedUtf8(text) : KEncoding::WCharToString(65001, text.c_str());
  };
  if (!url.empty()) safety.AddAddress(archive, "href", narrow(url));
  if (!title.empty()) archive.AddAttribute("title", std::string_view(safety.Text(narrow(title))));
  return Status::kOk;
}

bool KChpBase::ProcessMarks(bool links) {
  const uint32_t length = runEnd_ - runStart_;
  if (!isSpecial_) {
    fields_.collect(runText_.data(), length);
    return fields_.hidesText();
  }
  for (uint32_t i = 0; i < length && !limits_->OutputFull(*env_->conversion->archive); ++i) {
    switch (runText_[i]) {
      case text_mark::kFieldBegin:
        OnFieldBegin(runStart_ + i, links);
        break;
      case text_mark::kFieldSeparator:
        fields_.separator();
        break;
      case text_mark::kFieldEnd:
        OnFieldEnd(links);
        break;
      default:
        OnObjectMark(runText_[i], runStart_ + i);
    }
  }
  return true;
}

void KChpBase::OnObjectMark(uint16_t, uint32_t) {}

void KChpBase::OnFieldBegin(uint32_t cp, bool links) {
  const KDRFieldContext& marks = *env_->fields;
  const uint32_t index = marks.Find(cp);
  const bool known = index < marks.Count();
  fields_.begin(known, known ? marks.Item(index).GetFieldType() : 0);
  if (links && fields_.inHyperlink()) env_->hyperlinkState = 1;
}

void KChpBase::OnFieldEnd(bool links) {
  if (links && fields_.inHyperlink()) env_->conversion->archive->EndElement("a");
  env_->hyperlinkState = 0;
  fields_.end();
}

void KChpBase::WriteText(uint32_t start, uint32_t end) {
  const uint16_t* text = runText_.data() + (start - runStart_);
  env_->conversion->archive->AddTextEx(text, end - start);
  if (env_->pap.collectingTitle != 0 && env_->navigation) {
    std::string title;
    Utf16Joiner joiner;
    for (uint32_t i = 0; i < end - start; ++i) {
      if (text[i] != 0) appendUtf8(title, joiner.Join(text[i]));
    }
    env_->navigation->CollectTitle(title.c_str());
  }
}

Status KChpNormalBase::Init(KEnv* env) {
  const Status annotations = annotations_.Init(env);
  if (failed(annotations)) return annotations;
  const Status notes = notes_.Init(env);
  return failed(notes) ? notes : KChpBase::Init(env);
}

/// An inline picture. OLE objects have a call of their own.
void KChpBase::WritePicture(uint32_t cp, bool oleObjects) {
  if (isHidden_ || !env_->conversion->objectWriter) return;
  if (!isOleObject_) {
    env_->conversion->objectWriter->WriteEmbedShape(cp);
  } else if (oleObjects) {
    env_->conversion->objectWriter->WriteOle(cp);
  }
}

/// Notes do not refer to notes of their own kind.
void KChpNormalBase::OnObjectMark(uint16_t mark, uint32_t cp) {
  const mso_word::SUBDOC_TYPE story = env_->subDocType;
  if (mark == text_mark::kNoteReference) {
    if (story != mso_word::SUBDOC_FOOTNOTE && story != mso_word::SUBDOC_ENDNOTE) notes_.WriteAnchor(cp);
  } else if (mark == text_mark::kAnnotation) {
    if (story != mso_word::SUBDOC_ANNOTATION) annotations_.WriteAnchor();
  } else if (mark == text_mark::kPicture) {
    WritePicture(cp, true);
  } else if (mark == text_mark::kDrawnObject) {
    if (!isHidden_ && env_->conversion->objectWriter)
      env_->conversion->objectWriter->WriteObject(cp, endsWithPageBreak_);
  }
}

Status KHtmlChpWriterNormal::Init(KEnv* env) {
  const Status bookmarks = bookmarks_.Init(env);
  return failed(bookmarks) ? bookmarks : KChpNormalBase::Init(env);
}

Status KHtmlChpWriterNormal::Write(unsigned int index) {
  const Status entered = EnterRun(index);
  if (entered != Status::kOk) return entered;
  if (ProcessField()) return Status::kOk;
  BeginChp();
  if (env_->hyperlinkState == 1) WriteHyperLinkBegin();
  const Status status = WriteChpContent();
  EndChp();
  return status;
}

/// A mark in a run of its own, the common layout, gives an empty paragraph its height; one at the end of a
/// longer run leaves no trace.
Status KHtmlChpWriterNormal::WriteChpContent() {
  IWriteArchive* archive = env_->conversion->archive;
  bookmarks_.Collect(runStart_, runEnd_);
  if (isWholePap(text_mark::kParagraphEnd)) {
    WriteBookmarkAtStart();
    archive->AddContent(kEmptyPap);
  } else if (isWholePap(text_mark::kCellEnd)) {
    WriteBookmarkAtStart();
    if (failed(env_->pap.papx.FindSprm(sprm_opcode::kPFTtp, nullptr))) archive->AddContent(kEmptyPap);
  } else if (env_->pap.papHasContent == 0 && runText_[0] == text_mark::kParagraphEnd) {
    WriteBookmarkAtStart();
    archive->AddContent(kEmptyPap);
  } else if (runText_[0] == text_mark::kPageBreak) {
    WriteBookmarkAtStart();
    archive->AddContent(kPageBreak);
  } else {
    WriteTextWithBookmarks();
  }
  return Status::kOk;
}

void KHtmlChpWriterNormal::WriteBookmarkAtStart() {
  if (!bookmarks_.positions().empty()) bookmarks_.Write(runStart_);
}

void KHtmlChpWriterNormal::WriteTextWithBookmarks() {
  uint32_t done = runStart_;
  for (const unsigned int position : bookmarks_.positions()) {
    WriteChpContent(done, position);
    bookmarks_.Write(position);
    done = position;
  }
  WriteChpContent(done, runEnd_);
}

Status KHtmlChpWriterNormal::WriteChpContent(uint32_t start, uint32_t end) {
  if (start == end) return Status::kNothing;
  if (!isPart(start, end)) return Status::kFailure;
  WriteText(start, end);
  return Status::kOk;
}

}  // namespace pagerex
