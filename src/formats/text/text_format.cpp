#include "formats/text/text_format.h"

#include "flow/walk.h"
#include "formats/flow_format.h"
#include "formats/text/text_writer.h"

namespace pagerex {

Status writeText(FormatJob& job) {
  Utf8Output out(job.files);
  if (!out.Open(job.mainName.c_str())) return Status::kFailure;
  const TextOptions options{
      .width = job.choices.width, .headers = job.choices.headers, .comments = job.choices.comments};
  TextWriter writer(out, options);
  walkFor(job, writer);
  return Status::kOk;
}

}  // namespace pagerex
