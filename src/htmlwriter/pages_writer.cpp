#include "htmlwriter/pages_writer.h"

#include <unistd.h>

#include <utility>

#include "htmlwriter/note_writer.h"
#include "htmlwriter/output_path.h"
#include "htmlwriter/page_frame.h"
#include "htmlwriter/work_limits.h"
#include "pagerex/pagerex.h"

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
  env_->plcfSed = &env_->document->GetPlcfsed();
  const uint32_t count = env_->plcfSed->Count();
  const KWorkLimits& limits = WorkLimitsOf(*env_);
  for (uint32_t i = 0; i < count && !limits.OutputFull(*env_->archive); ++i) env_->writers.section->Write(i);
  return ClosePage();
}

Status KPagesBase::StartNewPage(bool continueSection) {
  if (!env_) return Status::kInvalidArgument;
  const Status closed = ClosePage();
  if (failed(closed)) return closed;
  ++pageIndex_;
  WorkLimitsOf(*env_).AddPage();
  env_->archive->Open(pagePath(env_->filesDir, pageIndex_).c_str());
  StartPage();
  return continueSection ? env_->writers.section->ContinueSection() : Status::kOk;
}

Status KPagesBase::StartPage() {
  if (!env_) return Status::kInvalidArgument;
  pageOpen_ = true;
  WriteHtmlStart(env_->archive, env_->view == VIEW_PHONE);
  return Status::kOk;
}

Status KPagesBase::ClosePage() {
  if (!env_) return Status::kInvalidArgument;
  if (pageOpen_) {
    env_->writers.section->BreakSection();
    if (env_->view == VIEW_NORMAL || env_->view == VIEW_MULPAGES) WritePendingNotes();
    WriteHtmlEnd(env_->archive);
    pageOpen_ = false;
    const Status answered = WaitForHost();
    if (failed(answered)) return answered;
  }
  env_->archive->Close();
  return Status::kOk;
}

/// The contents of the notes whose anchors stand on the page.
void KPagesBase::WritePendingNotes() {
  const auto annotations = std::exchange(env_->pendingAnnotations.numbers, {});
  const auto footnotes = std::exchange(env_->pendingFootnotes.numbers, {});
  const auto endnotes = std::exchange(env_->pendingEndnotes.numbers, {});
  for (const unsigned int note : annotations) KHtmlAnnotationWriter::WriteContent(note, env_);
  for (const unsigned int note : footnotes) KHtmlFootEndnoteWriter::WriteFootnoteContent(note, env_);
  for (const unsigned int note : endnotes) KHtmlFootEndnoteWriter::WriteEndnoteContent(note, env_);
}

/// Tells the host of the finished page and holds the conversion back until it answers.
Status KPagesBase::WaitForHost() {
  constexpr useconds_t kPollMicroseconds = 20000;
  const IPageRexCallBack* callback = env_->callback;
  if (!callback) return Status::kOk;
  if (callback->FinishPage) callback->FinishPage(pageIndex_, pagePath(env_->filesDir, pageIndex_).c_str());
  if (!callback->Continue) return Status::kOk;
  int answer;
  do {
    usleep(kPollMicroseconds);
    answer = callback->Continue();
  } while (answer == PAGEREX_WAIT);
  if (answer == PAGEREX_GO_ON) return Status::kOk;
  env_->archive->Close();
  return Status::kStopped;
}

Status KHtmlPagesWriterPreview::Write() {
  if (!env_) return Status::kInvalidArgument;
  env_->plcfSed = &env_->document->GetPlcfsed();
  Status status = Status::kOk;
  const uint32_t count = env_->plcfSed->Count();
  for (uint32_t i = 0; i < count && status == Status::kOk; ++i) status = env_->writers.section->Write(i);
  return status == Status::kNothing ? Status::kOk : status;
}

}  // namespace pagerex
