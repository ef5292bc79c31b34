#include <atomic>
#include <mutex>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "numformat/format_compiler.h"
#include "numformat/format_decompiler.h"
#include "numformat/number_format_service.h"
#include "pagerex/numformat.h"

namespace {

/// Calls `action`, which returns a Status, and keeps its exceptions from the caller.
template <class Action>
uint32_t guarded(const Action& action) {
  Status status = Status::kFailure;
  try {
    status = action();
  } catch (const std::bad_alloc&) {
    status = Status::kOutOfMemory;
  } catch (...) {
  }
  return static_cast<uint32_t>(status);
}

/// What is handed out and taken back here are whole formats, never sections.
KNFSect* wholeFormat(KNumericalFormat* format) {
  return static_cast<KNFSect*>(format);
}

/// The service that all callers of these functions share. Formats that are handed out are counted references,
/// which need no lock.
struct SharedService {
  std::mutex mutex;
  NumberFormatService* service = nullptr;  ///< of the formats that are kept; made when there is one

  std::atomic<bool> started = false;
};
constinit SharedService shared;

void forgetFormats() {
  const std::lock_guard lock(shared.mutex);
  delete std::exchange(shared.service, nullptr);
}

/// At the end of the process too. The service itself stays usable, for threads that end later.
const struct ForgetsAtExit {
  ~ForgetsAtExit() { forgetFormats(); }
} forgetsAtExit;

/// The keywords of a dialect; none while the service is not started.
PieceList keywords(PieceList dialect) {
  return shared.started ? dialect : PieceList();
}

uint32_t compile(PieceList dialect, const wchar_t* format, KNumericalFormat** out,
                 const NF_FORMAT_PARAM* param) {
  if (!out) return NF_BAD_ARGUMENT;
  *out = nullptr;
  return guarded([&] {
    KNFSect* compiled = nullptr;
    const Status status = KNFCompile(format ? format : L"").Compile(keywords(dialect), &compiled, param);
    *out = compiled;
    return status;
  });
}

/// With a reference for the caller. What is compiled without keywords is not kept: it must not be found once
/// there are some.
Status compileOnce(std::wstring_view format, KNFSect** out, const NF_FORMAT_PARAM* param) {
  const std::lock_guard lock(shared.mutex);
  KNFSect* kept = shared.service ? shared.service->Find(format) : nullptr;
  Status status = Status::kOk;
  if (!kept) {
    if (!shared.started) return KNFCompile(format).Compile(PieceList(), out, param);
    if (!shared.service) shared.service = new NumberFormatService;
    status = shared.service->Compile(format, param, &kept);
  }
  if (kept) kept->AddRef();
  *out = kept;
  return status;
}

/// A copy that the caller frees.
wchar_t* newText(std::wstring_view text) {
  wchar_t* copy = new wchar_t[text.size() + 1];
  copy[text.copy(copy, text.size())] = 0;
  return copy;
}

uint32_t decompile(KNumericalFormat* format, wchar_t** out, const NF_FORMAT_PARAM* param,
                   DecompileType type) {
  if (out) *out = nullptr;
  if (!format || !out) return NF_BAD_ARGUMENT;
  return guarded([&] {
    *out = newText(KNFDeCompile(type, areaOf(param)).DeCompile(*wholeFormat(format)));
    return Status::kOk;
  });
}

}  // namespace

uint32_t _XNFInit() {
  shared.started = true;
  return NF_OK;
}

uint32_t _XNFUnInit() {
  shared.started = false;
  return NF_OK;
}

uint32_t _XNFCompile(const wchar_t* format, KNumericalFormat** out, const NF_FORMAT_PARAM* param) {
  if (!out) return NF_BAD_ARGUMENT;
  *out = nullptr;
  if (!format) return NF_OK;
  return guarded([&] {
    KNFSect* compiled = nullptr;
    const Status status = compileOnce(format, &compiled, param);
    *out = compiled;
    return status;
  });
}

uint32_t _XNFCompileForOQ(const wchar_t* format, KNumericalFormat** out, const NF_FORMAT_PARAM* param) {
  return _XNFCompile(format, out, param);
}

uint32_t _XNFCompileForExcel(const wchar_t* format, KNumericalFormat** out, const NF_FORMAT_PARAM* param) {
  return compile(s_PLResouce_EXCEL, format, out, param);
}

uint32_t _XNFCompileForWord(const wchar_t* format, KNumericalFormat** out, const NF_FORMAT_PARAM* param) {
  return compile(s_PLResouce_WORD, format, out, param);
}

uint32_t _XNFCompileForQel(const wchar_t* format, KNumericalFormat** out, const NF_FORMAT_PARAM* param) {
  return compile(s_PLResouce_QEL, format, out, param);
}

uint32_t _XNFUnCompile(KNumericalFormat* format, wchar_t** out, const NF_FORMAT_PARAM* param) {
  return decompile(format, out, param, kDecompileOQ);
}

uint32_t _XNFUnCompileForExcel(KNumericalFormat* format, wchar_t** out, const NF_FORMAT_PARAM* param) {
  return decompile(format, out, param, kDecompileExcel);
}

uint32_t _XNFUnCompileForWord(KNumericalFormat* format, wchar_t** out, const NF_FORMAT_PARAM* param) {
  return decompile(format, out, param, kDecompileWord);
}

uint32_t _XNFFormat(const tagVARIANT* value, const wchar_t* format, wchar_t** out, NFSTYLE* style,
                    const NF_FORMAT_PARAM* param) {
  if (out) *out = nullptr;
  if (!format) return NF_BAD_ARGUMENT;
  KNumericalFormat* compiled = nullptr;
  const uint32_t status = _XNFCompile(format, &compiled, param);
  if (failed(static_cast<Status>(status))) return status;
  const uint32_t formatted = _XNFFormatEx(value, compiled, out, style, param);
  _XNFRelease(compiled);
  return formatted;
}

uint32_t _XNFFormatEx(const tagVARIANT* value, KNumericalFormat* format, wchar_t** out, NFSTYLE* style,
                      const NF_FORMAT_PARAM* param) {
  if (out) *out = nullptr;
  if (!format) return NF_BAD_ARGUMENT;
  if (!out && !style) return NF_OK;
  if (!value) return NF_BAD_ARGUMENT;
  return guarded([&] {
    std::optional<std::wstring> text;
    NFSTYLE told;
    const Status status = format->FormatNum(*value, param ? *param : kDefaultParam, text, told);
    if (style) *style = told;
    if (out && text) *out = newText(*text);
    return status;
  });
}

uint32_t _XNFFormatPrecision(KNumericalFormat* format, double* value) {
  if (!format) return NF_BAD_ARGUMENT;
  if (!value || *value == 0) return NF_NOTHING;
  return guarded([&] { return format->FormatPrecision(*value); });
}

uint32_t _XNFAddRef(KNumericalFormat* format) {
  if (format) format->AddRef();
  return NF_OK;
}

uint32_t _XNFRelease(KNumericalFormat* format) {
  if (format) format->Release();
  return NF_OK;
}

uint32_t _XNF_GetSectsInfo(KNumericalFormat* format, NF_SECTS_INFO* info) {
  if (!format || !info) return NF_BAD_ARGUMENT;
  const KNFSect& whole = *wholeFormat(format);
  info->count = static_cast<uint32_t>(whole.GetSectCount());
  for (int i = 0; i < whole.GetSectCount(); ++i) {
    const KNFBase* section = whole.GetSetcReal(i);
    info->sect[i].kind = section ? section->style.kind : 0;
    info->sect[i].zero = 0;
  }
  return NF_OK;
}

uint32_t _XNF_OQ_IsSingleStringSect(KNumericalFormat* format, bool* single) {
  if (!single) return NF_OK;
  *single = false;
  if (!format) return NF_BAD_ARGUMENT;
  const KNFSect& whole = *wholeFormat(format);
  const KNFBase* section = whole.GetSetcReal(0);
  *single = whole.GetSectCount() == 1 && section && section->style.kind == NF_KIND_TEXT;
  return NF_OK;
}

uint32_t _XNF_ClearNFTableCache() {
  return guarded([] {
    forgetFormats();
    return Status::kOk;
  });
}

uint32_t _XNFFreeText(wchar_t* text) {
  delete[] text;
  return NF_OK;
}
