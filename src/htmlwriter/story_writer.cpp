#include "htmlwriter/story_writer.h"

#include "htmlwriter/writer_factory.h"
#include "htmlwriter/writer_interfaces.h"

namespace pagerex {

void WriteStory(const KEnv& env, mso_word::SUBDOC_TYPE type, const KDWRange& range) {
  KEnv nested = KEnv::NestedIn(env);
  if (KWriterFactory::CreateWriterByView(nested, type) == Status::kOk) {
    nested.writers->textStream->Write(range.start, range.end);
  }
}

}  // namespace pagerex
