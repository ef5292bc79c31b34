#include "htmlwriter/pages_writer.h"

#include <utility>

#include "base/output_path.h"
#include "htmlwriter/host.h"
#include "htmlwriter/note_writer.h"
#include "htmlwriter/page_frame.h"
#include "story/work_limits.h"

namespace pagerex {

Status KPagesBase::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  env->startNewPage = this;
  return Status::kOk;
}

Status KPagesBase::Write() {
  if (!env_) return Status::kInvalidArgument;
  const Status started = StartNewPage(false);
  if (failed(started)) return started;
  env_->plcfSed = &env_->conversion->document->GetPlcfsed();
  const uint32_t count = env_->plcfSed->Count();
  const KWorkLimits& limits = env_->conversion->Limits();
  for (uint32_t i = 0; i < count && !limits.OutputFull(*env_->conversion->archive); ++i)
    env_->writers->section->Write(i);
  return ClosePage();
}

Status KPagesBase::StartNewPage(bool continueSection) {
  if (!env_) return Status::kInvalidArgument;
  const Status closed = ClosePage();
  if (failed(closed)) return closed;
  ++pageIndex_;
  env_->conversion->Limits().AddPage();
  ++env_->conversion->written.pages;
  env_->conversion->archive->Open(pagePath(env_->conversion->filesDir, pageIndex_).c_str());
  StartPage();
  return continueSection ? env_->writers->section->ContinueSection() : Status::kOk;
}

Status KPagesBase::StartPage() {
  if (!env_) return Status::kInvalidArgument;
  pageOpen_ = true;
  WriteHtmlStart(env_->conversion->archive, TraitsOf(env_->view)->isForPhones);
  return Status::kOk;
}

Status KPagesBase::ClosePage() {
  if (!env_) return Status::kInvalidArgument;
  if (pageOpen_) {
    env_->writers->section->BreakSection();
    if (TraitsOf(env_->view)->hasNotes) WritePendingNotes();
    WriteHtmlEnd(env_->conversion->archive);
    pageOpen_ = false;
    const Status answered = WaitForHost();
    if (failed(answered)) return answered;
  }
  env_->conversion->archive->Close();
  return Status::kOk;
}

/// The contents of the notes whose anchors stand on the page.
void KPagesBase::WritePendingNotes() {
  const auto annotations = std::exchange(env_->page.pendingAnnotations, {});
  const auto footnotes = std::exchange(env_->page.pendingFootnotes, {});
  const auto endnotes = std::exchange(env_->page.pendingEndnotes, {});
  for (const unsigned int note : annotations) KHtmlAnnotationWriter::WriteContent(note, env_);
  for (const unsigned int note : footnotes) KHtmlFootEndnoteWriter::WriteFootnoteContent(note, env_);
  for (const unsigned int note : endnotes) KHtmlFootEndnoteWriter::WriteEndnoteContent(note, env_);
}

/// Tells the host of the finished page; it may hold the conversion back, or end it.
Status KPagesBase::WaitForHost() {
  KHtmlConversionEnv& conversion = *env_->conversion;
  if (!conversion.host) return Status::kOk;
  if (conversion.host->WantsClosedPages()) conversion.archive->Close();
  const Status answered =
      conversion.host->FinishPage(pageIndex_, pagePath(conversion.filesDir, pageIndex_).c_str());
  if (failed(answered)) conversion.archive->Close();
  return answered;
}

Status KHtmlPagesWriterPreview::Write() {
  if (!env_) return Status::kInvalidArgument;
  env_->plcfSed = &env_->conversion->document->GetPlcfsed();
  Status status = Status::kOk;
  const uint32_t count = env_->plcfSed->Count();
  for (uint32_t i = 0; i < count && status == Status::kOk; ++i) status = env_->writers->section->Write(i);
  return status == Status::kNothing ? Status::kOk : status;
}

}  // namespace pagerex
