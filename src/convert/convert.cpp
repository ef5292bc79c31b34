// The exported calls on documents.

#include "pagerex/convert.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <memory>
#include <new>
#include <string>

#include "convert/document_counts.h"
#include "convert/format_table.h"
#include "convert/host_call.h"
#include "convert/host_listener.h"
#include "convert/open_document.h"
#include "convert/output_target.h"
#include "convert/result_builder.h"
#include "convert/result_sink.h"
#include "convert/structures.h"
#include "formats/text/text_writer.h"
#include "wordreader/text_pool.h"

namespace pagerex {
namespace {

// What the first versions of the structures held.
constexpr size_t kOptionsSize = offsetof(pagerex_options, revisions);
constexpr size_t kInfoSize = offsetof(pagerex_document_info, summary);

/// What is to be written, once a host's structures have been read and found sound.
struct Request {
  const Format* format = nullptr;
  pagerex_options options{};
  FlowChoices choices;
  pagerex_limits limits{};
  pagerex_output output{};
  TargetPath path;  ///< where the output is a path
  std::string mainName, folderName;
  int nameError = 0;  ///< a value of errno for a main name that nothing can have

  bool Take(const pagerex_options* optionsGiven, const pagerex_output* outputGiven);

 private:
  bool TakeChoices();
  bool IsSingleFile() const;
};

bool Request::Take(const pagerex_options* optionsGiven, const pagerex_output* outputGiven) {
  if (!outputGiven || !takeOutput(*outputGiven, output)) return false;
  if (!takeOptional(optionsGiven, kOptionsSize, options)) return false;
  if (!takeOptional(options.limits, kLimitsSize, limits)) return false;
  format = formatNamed(options.format ? options.format : "");
  if (!format || options.page_size < 0) return false;
  if (options.links < PAGEREX_LINKS_SAFE || options.links > PAGEREX_LINKS_NONE) return false;
  if (options.pictures < PAGEREX_PICTURES_USUAL || options.pictures > PAGEREX_PICTURES_WEB) return false;
  if ((format->pictures & pictureChoice(options.pictures)) == 0) return false;
  if (options.pictures == PAGEREX_PICTURES_USUAL && format->embedsPictures)
    options.pictures = PAGEREX_PICTURES_EMBEDDED;
  if (!TakeChoices()) return false;
  if (output.path) path = splitTargetPath(output.path);
  mainName = output.path        ? path.name
             : output.main_name ? output.main_name
                                : std::string("document") + format->told.extension;
  if (!IsSingleFile()) folderName = mainName.substr(0, mainName.rfind('.')) + ".files";
  nameError = folderName == mainName ? EINVAL : errorOfName(mainName);
  return output.path || nameError == 0;
}

bool Request::IsSingleFile() const {
  constexpr int kInPieces = 2;
  const bool hasPictureFiles =
      options.pictures != PAGEREX_PICTURES_EMBEDDED && options.pictures != PAGEREX_PICTURES_NONE;
  if (format->told.has_page_size == kInPieces && options.page_size > 0) return false;
  return format->told.is_single_file || (format->told.is_single_without_pictures && !hasPictureFiles);
}

bool Request::TakeChoices() {
  if (options.revisions < PAGEREX_REVISIONS_FINAL || options.revisions > PAGEREX_REVISIONS_ALL) return false;
  if (options.width < 0 || (options.width > 0 && options.width < kLeastTextWidth)) return false;
  choices.revisions = options.revisions;
  choices.hiddenText = options.hidden_text != 0;
  choices.comments = options.no_comments == 0;
  choices.headers = options.headers != 0;
  choices.frontMatter = options.front_matter != 0;
  choices.pageBreaks = options.page_breaks != 0;
  choices.commonMark = options.common_mark != 0;
  choices.width = options.width;
  choices.darkScheme = options.dark_scheme != 0;
  return true;
}

/// Takes the document through one format, into the target.
class Writing {
 public:
  Writing(pagerex_document& document, const Request& request, ResultBuilder& result)
      : document_(document), request_(request), result_(result) {
    arm(control_, request.limits);
  }

  int Run();

 private:
  int Write(OutputTarget& target);
  int RunFormat(ResultSink& sink);
  /// The same once the flag and the clock have been looked at.
  int MustEnd(int code) {
    control_.LookAtClock();
    control_.MustStop();
    return CodeOfEnd(code);
  }
  int CodeOfEnd(int code) const {
    if (control_.cause() == StopCause::kOutOfMemory) return codeOf(document_.MemoryCause());
    return control_.cause() == StopCause::kNone ? code : codeOf(control_.cause());
  }

  pagerex_document& document_;
  const Request& request_;
  ResultBuilder& result_;
  RunControl control_;
  Warnings warnings_;
  WrittenCounts written_;
};

int Writing::Run() {
  TargetRefusal refusal;
  // In a path that is no fault of the call: it may come from a list of files.
  if (request_.nameError != 0) return result_.End(PAGEREX_RESULT_CANNOT_WRITE, request_.nameError);
  const std::unique_ptr<OutputTarget> target =
      request_.output.path ? makePathTarget(request_.path, request_.folderName, document_.input(), refusal)
                           : makeHostTarget(request_.output, control_);
  if (!target) return result_.End(refusal.code, refusal.error);
  control_.LookAtClock();
  int code = Write(*target);
  // A write that found no room for its own needs is no fault of the disk.
  if (code == PAGEREX_RESULT_CANNOT_WRITE && target->error() == ENOMEM) code = PAGEREX_RESULT_OUT_OF_MEMORY;
  const int error = code == PAGEREX_RESULT_CANNOT_WRITE ? target->error()
                    : code == PAGEREX_RESULT_UNREADABLE ? document_.input().error()
                                                        : 0;
  result_.Add(document_.warnings());
  result_.Add(warnings_);
  return result_.End(code, error);
}

int Writing::Write(OutputTarget& target) {
  ResultSink sink(target, control_, orNoLimit(request_.limits.output_bytes), request_.mainName,
                  request_.format->told.media_type);
  int code = PAGEREX_RESULT_OK;
  try {
    code = RunFormat(sink);
    if (MustEnd(code) == PAGEREX_RESULT_OK) sink.Finish();
    code = MustEnd(code);
  } catch (const std::bad_alloc&) {
    control_.Stop(document_.MemoryCause());
  } catch (...) {  // a damaged document
    code = PAGEREX_RESULT_DAMAGED;
  }
  code = CodeOfEnd(code);
  result_.SetWritten(written_, sink.bytes(), sink.files());
  document_.End(code != PAGEREX_RESULT_OK);
  if (code != PAGEREX_RESULT_OK) return code;
  return target.Commit() ? code : PAGEREX_RESULT_CANNOT_WRITE;
}

int Writing::RunFormat(ResultSink& sink) {
  constexpr int64_t kUsualPage = 2000;
  const Format& format = *request_.format;
  const bool readsModel = format.reads == Format::Reads::kModel;
  int code = PAGEREX_RESULT_OK;
  const KDRDocument* const model = readsModel ? document_.BeginModel(control_, code) : nullptr;
  WordFile* const file = readsModel ? nullptr : document_.BeginFile(control_, code);
  if (!model && !file) return code;
  if (result_.wantsSummary()) result_.SetSummary(document_.Summary());
  uint64_t length = 0;
  if (HostListener::IsWanted(request_.options))
    length = model ? model->GetTextPool(mso_word::SUBDOC_MAIN).size() : file->storyStarts()[1];
  HostListener listener(request_.options, control_, length);
  const int64_t pageSize = request_.options.page_size ? request_.options.page_size : kUsualPage;
  OutputFiles files(sink);
  FormatJob job{model,
                file,
                files,
                request_.mainName,
                static_cast<int32_t>(std::min<int64_t>(pageSize, INT32_MAX)),
                static_cast<LinkPolicy>(request_.options.links),
                request_.options.pictures,
                control_,
                warnings_,
                listener,
                request_.choices,
                {},
                document_.input().Size(),
                static_cast<int32_t>(std::min<int64_t>(request_.options.page_size, INT32_MAX))};
  listener.Begin();
  const Status status = format.write(job);
  written_ = job.written;
  if (failed(status)) return PAGEREX_RESULT_DAMAGED;
  listener.Done();
  return PAGEREX_RESULT_OK;
}

int openDocument(const pagerex_input* input, const pagerex_limits* limits, pagerex_document** document,
                 ResultBuilder& result) {
  pagerex_input given;
  pagerex_limits bounds;
  if (!document || !input || !takeInput(*input, given) || !takeOptional(limits, kLimitsSize, bounds)) {
    return result.End(PAGEREX_RESULT_INVALID_ARGUMENT);
  }
  RunControl control;
  arm(control, bounds);
  auto opened = std::make_unique<pagerex_document>(orNoLimit(bounds.memory));
  int error = 0;
  control.LookAtClock();
  const int code = opened->Open(given, orNoLimit(bounds.input_bytes), control, error);
  result.SetKind(opened->kind());
  result.Add(opened->warnings());
  if (code == PAGEREX_RESULT_OK) *document = opened.release();
  return result.End(code, code == PAGEREX_RESULT_UNREADABLE ? error : 0);
}

int writeDocument(pagerex_document* document, const pagerex_options* options, const pagerex_output* output,
                  ResultBuilder& result) {
  Request request;
  if (document) result.SetKind(document->kind());
  if (!document || !request.Take(options, output)) return result.End(PAGEREX_RESULT_INVALID_ARGUMENT);
  return Writing(*document, request, result).Run();
}

/// What is left of a deadline at least a little, so that it does not become none.
uint64_t whatIsLeft(uint64_t deadlineMs, RunControl::Clock::time_point start) {
  if (deadlineMs == 0) return 0;
  const auto gone = std::chrono::duration_cast<std::chrono::milliseconds>(RunControl::Clock::now() - start);
  const auto spent = static_cast<uint64_t>(gone.count());
  return spent < deadlineMs ? deadlineMs - spent : 1;
}

int convertDocument(const pagerex_input* input, const pagerex_limits* limits, const pagerex_options* options,
                    const pagerex_output* output, ResultBuilder& result) {
  const RunControl::Clock::time_point start = RunControl::Clock::now();
  pagerex_limits bounds;
  Request request;
  if (!takeOptional(limits, kLimitsSize, bounds) || !request.Take(options, output))
    return result.End(PAGEREX_RESULT_INVALID_ARGUMENT);
  pagerex_document* opened = nullptr;
  const int code = openDocument(input, limits, &opened, result);
  const std::unique_ptr<pagerex_document> document(opened);
  if (code != PAGEREX_RESULT_OK) return code;
  if (!request.options.limits) request.limits = bounds;
  if (request.limits.deadline_ms == bounds.deadline_ms)
    request.limits.deadline_ms = whatIsLeft(bounds.deadline_ms, start);
  result.Forget();
  return Writing(*document, request, result).Run();
}

/// One way of reading what info tells.
template <class Read>
int tryInfo(pagerex_document& document, RunControl& control, const Read& read) {
  int code = PAGEREX_RESULT_OK;
  try {
    read(code);
  } catch (const std::bad_alloc&) {
    control.Stop(document.MemoryCause());
  } catch (...) {
    code = PAGEREX_RESULT_DAMAGED;
  }
  if (control.cause() != StopCause::kNone) code = codeOf(control.cause());
  document.End(code != PAGEREX_RESULT_OK);
  return code;
}

int tellInfo(pagerex_document* document, pagerex_document_info* info, ResultBuilder& result) {
  if (!document || !info || info->size < kInfoSize) return result.End(PAGEREX_RESULT_INVALID_ARGUMENT);
  RunControl control;
  pagerex_document_info told = {};
  told.kind = document->kind();
  told.input_bytes = document->input().Size();
  const bool wantsSummary = info->size > kInfoSize;
  int code = tryInfo(*document, control, [&](int& status) {
    if (const KDRDocument* const model = document->BeginModel(control, status)) {
      told.counts = countContents(*model);
      if (wantsSummary) told.summary = document->Summary();
    }
  });
  if (code == PAGEREX_RESULT_DAMAGED) {
    code = tryInfo(*document, control, [&](int& status) {
      if (WordFile* const file = document->BeginFile(control, status)) {
        told.counts = countByWalk(*file, control);
        if (wantsSummary) told.summary = document->Summary();
      }
    });
  }
  if (code == PAGEREX_RESULT_OK) giveStructure(told, *info);
  return result.End(code);
}

}  // namespace
}  // namespace pagerex

int pagerex_open(const pagerex_input* input, const pagerex_limits* limits, pagerex_document** document,
                 pagerex_result* result) {
  if (document) *document = nullptr;
  return pagerex::answer(result, [&](pagerex::ResultBuilder& builder) {
    return pagerex::openDocument(input, limits, document, builder);
  });
}

int pagerex_write(pagerex_document* document, const pagerex_options* options, const pagerex_output* output,
                  pagerex_result* result) {
  return pagerex::answer(result, [&](pagerex::ResultBuilder& builder) {
    return pagerex::writeDocument(document, options, output, builder);
  });
}

int pagerex_convert(const pagerex_input* input, const pagerex_limits* limits, const pagerex_options* options,
                    const pagerex_output* output, pagerex_result* result) {
  return pagerex::answer(result, [&](pagerex::ResultBuilder& builder) {
    return pagerex::convertDocument(input, limits, options, output, builder);
  });
}

int pagerex_info(pagerex_document* document, pagerex_document_info* info) {
  return pagerex::answer(
      nullptr, [&](pagerex::ResultBuilder& builder) { return pagerex::tellInfo(document, info, builder); });
}

void pagerex_close(pagerex_document* document) {
  delete document;
}

const pagerex_format* pagerex_format_at(int index) {
  const pagerex::Format* const format = pagerex::formatAt(index);
  return format ? &format->told : nullptr;
}

void pagerex_cancel(int* flag) {
  if (flag) __atomic_store_n(flag, 1, __ATOMIC_RELAXED);
}

const char* pagerex_version(void) {
  return PAGEREX_VERSION;
}
