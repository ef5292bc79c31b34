// The exported calls on the walk.

#include "pagerex/walk.h"

#include "convert/host_call.h"
#include "convert/host_handler.h"
#include "convert/open_document.h"
#include "convert/structures.h"
#include "flow/walk.h"

namespace pagerex {
namespace {

// What the first versions of the structures held.
constexpr size_t kHandlerSize = sizeof(pagerex_handler);
constexpr size_t kWalkOptionsSize = sizeof(pagerex_walk_options);
constexpr size_t kPictureDataSize = sizeof(pagerex_picture_data);

static_assert(static_cast<int>(RevisionView::kFinal) == PAGEREX_REVISIONS_FINAL &&
              static_cast<int>(RevisionView::kOriginal) == PAGEREX_REVISIONS_ORIGINAL &&
              static_cast<int>(RevisionView::kAll) == PAGEREX_REVISIONS_ALL);

struct Request {
  pagerex_handler handler;
  pagerex_walk_options options;
  pagerex_limits limits;

  bool Take(const pagerex_walk_options* optionsGiven, const pagerex_handler* handlerGiven) {
    return handlerGiven && takeStructure(*handlerGiven, kHandlerSize, handler) &&
           takeOptional(optionsGiven, kWalkOptionsSize, options) &&
           takeOptional(options.limits, kLimitsSize, limits) &&
           options.revisions >= PAGEREX_REVISIONS_FINAL && options.revisions <= PAGEREX_REVISIONS_ALL;
  }
  WalkOptions Options() const {
    return {static_cast<RevisionView>(options.revisions), options.hidden_text != 0};
  }
};

/// PAGEREX_RESULT_..., unless the control has a cause.
int tell(pagerex_document& document, const Request& request, void* user, RunControl& control,
         ResultBuilder& result) {
  int code = PAGEREX_RESULT_OK;
  try {
    control.LookAtClock();
    HostHandler handler(request.handler, user, control);
    if (WordFile* const file = document.BeginFile(control, code); file && !control.MustStop()) {
      if (result.wantsSummary()) result.SetSummary(document.Summary());
      result.SetWritten(walk(*file, request.Options(), control, nullptr, handler), 0, 0);
    }
  } catch (const std::bad_alloc&) {
    control.Stop(document.MemoryCause());
  } catch (...) {  // a damaged document
    code = PAGEREX_RESULT_DAMAGED;
  }
  control.LookAtClock();
  control.MustStop();
  if (control.cause() == StopCause::kOutOfMemory) return codeOf(document.MemoryCause());
  return control.cause() == StopCause::kNone ? code : codeOf(control.cause());
}

int walkDocument(pagerex_document* document, const pagerex_walk_options* options,
                 const pagerex_handler* handler, void* user, ResultBuilder& result) {
  Request request;
  if (document) result.SetKind(document->kind());
  if (!document || !request.Take(options, handler)) return result.End(PAGEREX_RESULT_INVALID_ARGUMENT);
  RunControl control;
  arm(control, request.limits);
  const int code = tell(*document, request, user, control, result);
  result.Add(document->warnings());
  const int error = code == PAGEREX_RESULT_UNREADABLE ? document->input().error() : 0;
  document->End(code != PAGEREX_RESULT_OK);
  return result.End(code, error);
}

}  // namespace
}  // namespace pagerex

int pagerex_walk(pagerex_document* document, const pagerex_walk_options* options,
                 const pagerex_handler* handler, void* user, pagerex_result* result) {
  return pagerex::answer(result, [&](pagerex::ResultBuilder& builder) {
    return pagerex::walkDocument(document, options, handler, user, builder);
  });
}

int pagerex_picture_read(const pagerex_picture* picture, pagerex_picture_data* data) {
  if (!picture || !data || data->size < pagerex::kPictureDataSize) return PAGEREX_RESULT_INVALID_ARGUMENT;
  if (!picture->source) return PAGEREX_RESULT_UNREADABLE;
  return picture->source->Read(*data);
}
