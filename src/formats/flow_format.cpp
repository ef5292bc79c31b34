#include "formats/flow_format.h"

#include "flow/walk.h"

namespace pagerex {

void walkFor(FormatJob& job, FlowHandler& writer) {
  const WalkOptions options{static_cast<RevisionView>(job.choices.revisions), job.choices.hiddenText};
  job.written = walk(*job.file, options, job.control, &job.listener, writer);
}

}  // namespace pagerex
