#include "htmlwriter/text_stream_writer.h"

namespace pagerex {

Status KHtmlTextStreamWriter::Init(KEnv* env, mso_word::SUBDOC_TYPE type) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  const KDRDocument& document = *env->conversion->document;
  env->subDocType = type;
  env->textPool = &document.GetTextPool(type);
  env->plcfPap = &document.GetPlcfPap(type);
  env->plcfChp = &document.GetPlcfChp(type);
  env->bookmarkStarts = &document.GetBookMarks().GetStarts(type);
  env->fields = &document.GetFields(type);
  env->bookmarkCPStarts = &document.GetBookMarks().GetCPStarts(type);
  return Status::kOk;
}

Status KHtmlTextStreamWriter::Write(unsigned int start, unsigned int end) {
  if (!env_ || start > end) return Status::kInvalidArgument;
  env_->streamStart = start;
  env_->streamEnd = end;
  Status status = Status::kFailure;
  const uint32_t count = env_->plcfPap->Count();
  for (uint32_t i = env_->plcfPap->FirstFrom(start); i < count; ++i) {
    status = env_->writers->pap->Write(i);
    if (status != Status::kOk) break;
  }
  return status == Status::kOk || status == Status::kNothing ? Status::kOk : Status::kFailure;
}

Status KHtmlTextStreamWriter::BreakTextStream() {
  return env_ ? env_->writers->pap->BreakPap() : Status::kInvalidArgument;
}

Status KHtmlTextStreamWriter::ContinueTextStream() {
  return env_ ? env_->writers->pap->ContinuePap() : Status::kInvalidArgument;
}

}  // namespace pagerex
