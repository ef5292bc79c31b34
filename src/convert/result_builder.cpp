#include "convert/result_builder.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "convert/structures.h"

namespace pagerex {
namespace {

struct CodeRow {
  int code;
  const char* name;
  const char* sentence;
};
constexpr CodeRow kCodes[] = {
    {PAGEREX_RESULT_OK, "ok", "The document was converted."},
    {PAGEREX_RESULT_INVALID_ARGUMENT, "invalid_argument", "The call asks for something that there is not."},
    {PAGEREX_RESULT_NOT_WORD, "not_word", "Only documents of Word 97 to 2003 are converted."},
    {PAGEREX_RESULT_ENCRYPTED, "encrypted", "Encrypted documents are not converted."},
    {PAGEREX_RESULT_DAMAGED, "damaged", "It is damaged, and could not be read to its end."},
    {PAGEREX_RESULT_UNREADABLE, "unreadable", "The input could not be read"},
    {PAGEREX_RESULT_CANNOT_WRITE, "cannot_write", "The output could not be written"},
    {PAGEREX_RESULT_REFUSED, "refused",
     "The output would take the place of a file or folder that no conversion has made."},
    {PAGEREX_RESULT_CANCELED, "canceled", "The conversion was canceled."},
    {PAGEREX_RESULT_DEADLINE, "deadline", "The conversion took longer than it was given."},
    {PAGEREX_RESULT_OUT_OF_MEMORY, "out_of_memory", "The machine has no more memory."},
    {PAGEREX_RESULT_MEMORY_LIMIT, "memory_limit", "The conversion needs more memory than it was given."},
    {PAGEREX_RESULT_OUTPUT_LIMIT, "output_limit", "The output is larger than was allowed."},
    {PAGEREX_RESULT_TOO_LARGE, "too_large", "The input is larger than was allowed."},
    {PAGEREX_RESULT_NOT_PICTURE, "not_picture", "Only pictures are converted by this call."},
};

struct WarningRow {
  WarningCode code;
  bool lost;
  const char* sentence;
};
static_assert(static_cast<int>(WarningCode::kTableDamaged) == PAGEREX_WARNING_TABLE_DAMAGED &&
              static_cast<int>(WarningCode::kOutputFull) == PAGEREX_WARNING_OUTPUT_FULL &&
              static_cast<int>(WarningCode::kStopped) == PAGEREX_WARNING_STOPPED);
constexpr WarningRow kWarnings[] = {
    {WarningCode::kTableDamaged, true, "A table of the file cannot be read whole."},
    {WarningCode::kOutside, true, "The file refers to bytes that it does not have."},
    {WarningCode::kEndedEarly, true, "The text ends before the end of the document."},
    {WarningCode::kWorkLimit, true, "The file refers to the same things again and again; some are left out."},
    {WarningCode::kOutputFull, true, "The document would become far more output than a sound one."},
    {WarningCode::kPicture, true, "A picture cannot be read."},
    {WarningCode::kLinkRemoved, false, "The address of a link was left out."},
    {WarningCode::kPicturesOff, false, "Pictures were not wanted."},
    {WarningCode::kFileShort, true, "The file ends before its tables say so."},
    {WarningCode::kStopped, false, "No more of the text was wanted."},
};

struct CauseRow {
  StopCause cause;
  int code;
};
constexpr CauseRow kCauses[] = {
    {StopCause::kCanceled, PAGEREX_RESULT_CANCELED},
    {StopCause::kDeadline, PAGEREX_RESULT_DEADLINE},
    {StopCause::kOutOfMemory, PAGEREX_RESULT_OUT_OF_MEMORY},
    {StopCause::kMemoryLimit, PAGEREX_RESULT_MEMORY_LIMIT},
    {StopCause::kOutputLimit, PAGEREX_RESULT_OUTPUT_LIMIT},
    {StopCause::kCannotWrite, PAGEREX_RESULT_CANNOT_WRITE},
    {StopCause::kUnreadable, PAGEREX_RESULT_UNREADABLE},
    {StopCause::kDamaged, PAGEREX_RESULT_DAMAGED},
};

const CodeRow* rowOf(int code) {
  for (const CodeRow& row : kCodes) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

const WarningRow& rowOf(WarningCode code) {
  for (const WarningRow& row : kWarnings) {
    if (row.code == code) return row;
  }
  return kWarnings[0];
}

/// In English, whatever the locale of the host.
const char* describe(int error) {
#ifdef __GLIBC__
  const char* const text = strerrordesc_np(error);
  return text ? text : "Unknown error";
#else
  return std::strerror(error);
#endif
}

bool isPicture(int kind) {
  return kind >= PAGEREX_KIND_EMF && kind <= PAGEREX_KIND_GIF;
}

/// Whether what came of the call is told along with what the file is.
bool tellsKind(int code, int kind) {
  return code == PAGEREX_RESULT_NOT_WORD || code == PAGEREX_RESULT_ENCRYPTED ||
         code == PAGEREX_RESULT_DAMAGED || code == PAGEREX_RESULT_NOT_PICTURE ||
         (code == PAGEREX_RESULT_OK && isPicture(kind));
}

}  // namespace

int codeOf(StopCause cause) {
  for (const CauseRow& row : kCauses) {
    if (row.cause == cause) return row.code;
  }
  return PAGEREX_RESULT_OK;
}

ResultBuilder::ResultBuilder(const pagerex_result* out)
    : wantsSummary_(out && out->size > offsetof(pagerex_result, summary)) {}

void ResultBuilder::SetWritten(const WrittenCounts& written, uint64_t bytes, uint32_t files) {
  result_.counts = {written.characters, written.paragraphs, written.tables, written.pictures, written.pages};
  result_.output_bytes = bytes;
  result_.output_files = files;
}

void ResultBuilder::Add(const Warnings& warnings) {
  for (const Warning& warning : warnings.all()) {
    result_.warnings_total += warning.count;
    if (result_.warning_count == PAGEREX_MOST_WARNINGS) continue;
    const WarningRow& row = rowOf(warning.code);
    pagerex_warning& out = result_.warnings[result_.warning_count++];
    out.code = static_cast<int32_t>(warning.code);
    out.lost = row.lost;
    out.count = warning.count;
    copyText(warning.where, out.where);
    out.sentence = row.sentence;
  }
}

int ResultBuilder::End(int code, int error) {
  result_.code = code;
  result_.system_error = error;
  const pagerex_warning* const first = result_.warnings;
  const bool lost = std::any_of(first, first + result_.warning_count,
                                [](const pagerex_warning& warning) { return warning.lost != 0; });
  result_.complete = code == PAGEREX_RESULT_OK && !lost;
  Spell();
  return code;
}

/// No memory is needed for it.
void ResultBuilder::Spell() {
  const CodeRow* const row = rowOf(result_.code);
  const char* const kind = tellsKind(result_.code, result_.kind) ? pagerex_kind_sentence(result_.kind) : "";
  const bool isPictureDone = result_.code == PAGEREX_RESULT_OK && isPicture(result_.kind);
  const char* const sentence = isPictureDone ? "It was converted." : row ? row->sentence : "";
  char why[96] = "";
  const bool hasReason =
      result_.code == PAGEREX_RESULT_UNREADABLE || result_.code == PAGEREX_RESULT_CANNOT_WRITE;
  if (hasReason && result_.system_error == 0) copyText(".", why);
  if (hasReason && result_.system_error != 0) {
    std::snprintf(why, sizeof(why), ": %s.", describe(result_.system_error));
  }
  const bool isPartial = result_.code == PAGEREX_RESULT_OK && !result_.complete;
  std::snprintf(result_.sentence, sizeof(result_.sentence), "%s%s%s%s%s", kind, *kind ? " " : "", sentence,
                why, isPartial ? " Something of it is missing: see the warnings." : "");
}

void ResultBuilder::Give(pagerex_result* out) const {
  if (!out || out->size < sizeof(out->size)) return;
  giveStructure(result_, *out);
}

}  // namespace pagerex

const char* pagerex_result_name(int code) {
  const pagerex::CodeRow* const row = pagerex::rowOf(code);
  return row ? row->name : "unknown";
}
