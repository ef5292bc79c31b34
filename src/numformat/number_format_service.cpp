#include "numformat/number_format_service.h"

#include <algorithm>
#include <optional>

#include "numformat/format_compiler.h"

void NumberFormatService::GiveBack::operator()(KNFSect* format) const {
  format->Release();
}

Status NumberFormatService::Format(const tagVARIANT& value, std::wstring_view format, std::wstring& out) {
  out.clear();
  KNFSect* compiled = nullptr;
  const Status status = Compile(format, nullptr, &compiled);
  return failed(status) ? status : FormatUnder(*compiled, value, out);
}

Status NumberFormatService::FormatUnder(const KNFSect& format, const tagVARIANT& value, std::wstring& out) {
  std::optional<std::wstring> text;
  NFSTYLE style;
  const Status status = format.FormatNum(value, kDefaultParam, text, style);
  if (text) out = std::move(*text);
  return status;
}

KNFSect* NumberFormatService::Find(std::wstring_view format) const {
  const auto found = formats_.find(format);
  return found == formats_.end() ? nullptr : found->second.get();
}

Status NumberFormatService::Compile(std::wstring_view format, const NF_FORMAT_PARAM* param, KNFSect** out) {
  *out = Find(format);
  if (*out) return Status::kOk;
  KNFSect* compiled = nullptr;
  const Status status = KNFCompile(format).Compile(s_PLResouce_OQ, &compiled, param);
  KeptFormat kept(compiled);
  if (kept) formats_.emplace(format, std::move(kept));
  *out = compiled;
  return status;
}

const KNFSect* NumberFormatService::FindByKey(unsigned key) const {
  const auto found = std::find_if(keyed_.begin(), keyed_.end(),
                                  [key](const KeyedFormat& keyed) { return keyed.key == key; });
  return found == keyed_.end() ? nullptr : found->format;
}

Status NumberFormatService::CompileForKey(unsigned key, std::wstring_view text, const KNFSect** out) {
  KNFSect* compiled = nullptr;
  const Status status = Compile(text, nullptr, &compiled);
  if (!failed(status)) keyed_.push_back({key, compiled});
  *out = compiled;
  return status;
}
