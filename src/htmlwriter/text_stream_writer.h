#pragma once

#include "htmlwriter/env.h"
#include "htmlwriter/writer_interfaces.h"

namespace pagerex {

/// Binds an environment to one sub-document and walks the paragraphs of a range of it.
class KHtmlTextStreamWriter : public ITextStreamWriter {
 public:
  /// Fills the tables of `env` with those of the sub-document. kInvalidArgument for a null `env`.
  Status Init(KEnv* env, mso_word::SUBDOC_TYPE type);

  /// Writes the paragraphs that start in the range. kFailure if there is none or if one failed.
  Status Write(unsigned int start, unsigned int end) override;
  Status BreakTextStream() override;
  Status ContinueTextStream() override;

 private:
  KEnv* env_ = nullptr;
};

}  // namespace pagerex
