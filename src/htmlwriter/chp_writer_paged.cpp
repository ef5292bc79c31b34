#include "htmlwriter/chp_writer_paged.h"

#include <algorithm>

namespace pagerex {
namespace {

constexpr int32_t kMarkCharacters = 10;  ///< what an empty paragraph or a page break counts

}  // namespace

/// Links and tables are never split.
bool KChpMulpageBase::mayChangePage() const {
  return env_->startNewPage && env_->hyperlinkState == 0 && env_->inTable != 1;
}

Status KChpMulpageBase::ChangePage() {
  const Status status = env_->startNewPage->StartNewPage(true);
  if (!failed(status)) env_->page.charCount = 0;
  return status;
}

Status KChpMulpageBase::Write(unsigned int index) {
  const Status entered = EnterRun(index);
  if (entered != Status::kOk) return entered;
  if (ProcessField()) return Status::kOk;
  if (mayChangePage() && env_->page.charCount >= env_->pageSize) {
    const Status changed = ChangePage();
    if (failed(changed)) return changed;
  }
  BeginChp();
  if (env_->hyperlinkState == 1) WriteHyperLinkBegin();
  const Status status = WriteChpContent();
  EndChp();
  return status;
}

Status KChpMulpageBase::WriteChpContent() {
  IWriteArchive* archive = env_->conversion->archive;
  if (isWholePap(text_mark::kParagraphEnd)) {
    archive->AddContent(kEmptyPap);
    env_->page.charCount += kMarkCharacters;
  } else if (isWholePap(text_mark::kCellEnd)) {
    if (!failed(env_->pap.papx.FindSprm(sprm_opcode::kPFTtp, nullptr))) return Status::kOk;
    archive->AddContent(kEmptyPap);
    env_->page.charCount += kMarkCharacters;
  } else if (env_->pap.papHasContent == 0 && runText_[0] == text_mark::kParagraphEnd) {
    archive->AddContent(kEmptyPap);
  } else if (runText_[0] == text_mark::kPageBreak) {
    archive->AddContent(kPageBreak);
    env_->page.charCount += kMarkCharacters;
  } else {
    return WriteChpContent(runStart_, runEnd_);
  }
  return Status::kOk;
}

/// A page size of 0 or below never cuts inside a run.
Status KChpMulpageBase::WriteChpContent(uint32_t start, uint32_t end) {
  if (start == end) return Status::kNothing;
  if (!isPart(start, end)) return Status::kFailure;
  const uint32_t pageSize = static_cast<uint32_t>(env_->pageSize);
  const uint32_t count = static_cast<uint32_t>(env_->page.charCount);
  if (env_->pageSize > 0 && mayChangePage() && count < pageSize && end - start > pageSize - count) {
    uint32_t next = start + (pageSize - count);
    while (next != end) {
      const Status written = WriteChpContent(start, next);
      if (failed(written)) return written;
      EndChp();
      const Status changed = ChangePage();
      if (failed(changed)) return changed;
      BeginChp();
      start = next;
      next += std::min(end - start, pageSize);
    }
  }
  WriteText(start, end);
  env_->page.charCount += static_cast<int32_t>(end - start);
  return Status::kOk;
}

Status KHtmlChpWriterPreview::Write(unsigned int index) {
  const Status entered = EnterRun(index);
  if (entered != Status::kOk) return entered;
  return ProcessField() ? Status::kOk : WriteChpContent();
}

Status KHtmlChpWriterPreview::WriteChpContent() {
  IWriteArchive* archive = env_->conversion->archive;
  if (isWholePap(text_mark::kParagraphEnd)) {
    archive->AddContent("<br>");
    ++env_->page.charCount;
  } else if (isWholePap(text_mark::kCellEnd)) {
    archive->AddContent("&nbsp;");
    ++env_->page.charCount;
  } else if (env_->pap.papHasContent == 0 && runText_[0] == text_mark::kParagraphEnd) {
    archive->AddContent("<br>");
  } else if (runText_[0] == text_mark::kPageBreak) {
    archive->AddContent("<br>");
    ++env_->page.charCount;
  } else {
    return WriteUpToLimit();
  }
  return Status::kOk;
}

Status KHtmlChpWriterPreview::WriteUpToLimit() {
  const int64_t length = int64_t{runEnd_} - runStart_;
  const int64_t room = int64_t{env_->pageSize} - env_->page.charCount;
  if (length <= room) {
    WriteChpContent(runStart_, runEnd_);
    env_->page.charCount += static_cast<int32_t>(length);
    return Status::kOk;
  }
  if (room > 0) WriteChpContent(runStart_, runStart_ + static_cast<uint32_t>(room));
  env_->page.charCount = env_->pageSize;
  return Status::kNothing;
}

Status KHtmlChpWriterPreview::WriteChpContent(uint32_t start, uint32_t end) {
  if (start == end) return Status::kNothing;
  if (!isPart(start, end)) return Status::kFailure;
  WriteText(start, end);
  return Status::kOk;
}

}  // namespace pagerex
