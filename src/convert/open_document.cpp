#include "convert/open_document.h"

#include <algorithm>
#include <cerrno>
#include <new>

#include "convert/result_builder.h"
#include "convert/summary_text.h"
#include "storage/compound_file.h"

using pagerex::RunControl;
using pagerex::StopCause;

namespace {

/// Places in the streams of a document have 32 bits. A file can be told to be larger than any disk, and a
/// table of its pages is made of what it is told.
constexpr uint64_t kMostOfFormat = uint64_t{1} << 32;

/// What a host is told of a kind that is not converted.
int codeOfKind(int kind) {
  if (kind == PAGEREX_KIND_WORD97) return PAGEREX_RESULT_DAMAGED;
  return kind == PAGEREX_KIND_WORD_ENCRYPTED ? PAGEREX_RESULT_ENCRYPTED : PAGEREX_RESULT_NOT_WORD;
}

/// Stops listening to the control of a call when that ends.
class Listening {
 public:
  Listening(pagerex::InputSource& source, RunControl& control) : source_(source) {
    source.SetControl(&control);
  }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;
  ~Listening() { source_.SetControl(nullptr); }

 private:
  pagerex::InputSource& source_;
};

}  // namespace

int pagerex_document::Open(const pagerex_input& input, uint64_t mostInputBytes, RunControl& control,
                           int& error) {
  source_ = pagerex::openInput(input, control, error);
  if (!source_)
    return control.cause() == StopCause::kNone ? PAGEREX_RESULT_UNREADABLE : pagerex::codeOf(control.cause());
  const Listening listening(*source_, control);
  if (source_->Size() > std::min(mostInputBytes, kMostOfFormat)) return PAGEREX_RESULT_TOO_LARGE;
  int code = OpenFile(control);
  if (code == PAGEREX_RESULT_DAMAGED && control.cause() == StopCause::kNone) {
    kind_ = Detect();
    code = codeOfKind(kind_);
  }
  error = source_->error();
  control.LookAtClock();
  control.MustStop();
  return control.cause() == StopCause::kNone ? code : pagerex::codeOf(control.cause());
}

/// PAGEREX_RESULT_DAMAGED for all that is no document to the reader.
int pagerex_document::OpenFile(RunControl& control) {
  CloseDocument();
  budget_ = {memoryLimit_, false};
  modelWarnings_ = fileWarnings_ = {};
  return Guarded(control, [this] {
    IStorage* opened = nullptr;
    const Status status = OpenCompoundFile(*source_, &budget_, &opened);
    storage_.reset(opened);
    if (failed(status)) return status;
    file_.emplace();
    return OpenFresh();
  });
}

/// A walk reads its tables once, and warns of them: the next one begins as the first one did.
int pagerex_document::OpenFileAgain(RunControl& control) {
  return Guarded(control, [this] { return OpenFresh(); });
}

/// What an earlier walk read goes, and its memory may be taken again.
Status pagerex_document::OpenFresh() {
  file_->Close();
  fileWarnings_ = {};
  fileBudget_ = {budget_.left, false};
  fileIsFresh_ = true;
  return file_->Open(storage_.get(), &fileBudget_, &fileWarnings_);
}

int pagerex_document::OpenModel(RunControl& control) {
  return Guarded(control, [this] {
    model_.emplace();
    model_->SetBudget(&budget_);
    model_->SetWarnings(&modelWarnings_);
    return model_->OpenDocument(storage_.get());
  });
}

template <class Function>
int pagerex_document::Guarded(RunControl& control, const Function& open) {
  Status status = Status::kFailure;
  try {
    status = open();
  } catch (const std::bad_alloc&) {
    control.Stop(MemoryCause());
  } catch (...) {  // a damaged file
    status = Status::kFailure;
  }
  if (control.cause() != StopCause::kNone || failed(status)) {
    CloseDocument();
    return PAGEREX_RESULT_DAMAGED;
  }
  kind_ = PAGEREX_KIND_WORD97;
  return PAGEREX_RESULT_OK;
}

void pagerex_document::CloseDocument() {
  if (model_) model_->Close();
  model_.reset();
  file_.reset();
  storage_.reset();
  summary_.reset();
}

/// Some kinds show only in the whole file; of a huge one, and where memory is short, the beginning has to do,
/// which tells the families apart.
int pagerex_document::Detect() {
  constexpr uint64_t kMost = 64 << 20, kLeast = 4096;
  const uint64_t size = source_->Size();
  if (const uint8_t* const bytes = source_->Bytes()) return pagerex_detect(bytes, static_cast<size_t>(size));
  const auto wanted = static_cast<size_t>(std::min({size, kMost, std::max(budget_.left, kLeast)}));
  const auto bytes = std::make_unique_for_overwrite<uint8_t[]>(wanted);
  return pagerex_detect(bytes.get(), source_->ReadAt(0, bytes.get(), wanted));
}

const KDRDocument* pagerex_document::BeginModel(RunControl& control, int& code) {
  source_->SetControl(&control);
  readsModel_ = true;
  // What a walk has read is not wanted, and its memory may be.
  code = !file_ ? OpenFile(control) : fileIsFresh_ ? PAGEREX_RESULT_OK : OpenFileAgain(control);
  if (code == PAGEREX_RESULT_OK && !model_) code = OpenModel(control);
  return model_ ? &*model_ : nullptr;
}

pagerex::WordFile* pagerex_document::BeginFile(RunControl& control, int& code) {
  source_->SetControl(&control);
  readsModel_ = false;
  code = !file_ ? OpenFile(control) : fileIsFresh_ ? PAGEREX_RESULT_OK : OpenFileAgain(control);
  fileIsFresh_ = false;
  return file_ ? &*file_ : nullptr;
}

const pagerex_summary& pagerex_document::Summary() {
  fileIsFresh_ = false;
  if (!summary_) summary_ = std::make_unique<pagerex_summary>(pagerex::summaryOf(*file_));
  return *summary_;
}

void pagerex_document::End(bool brokeOff) {
  if (brokeOff) CloseDocument();
  source_->SetControl(nullptr);
}
