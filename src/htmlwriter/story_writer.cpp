#include "htmlwriter/story_writer.h"

#include "htmlwriter/writer_factory.h"
#include "htmlwriter/writer_interfaces.h"

namespace pagerex {

void WriteStory(const KEnv& env, mso_word::SUBDOC_TYPE type, const KDWRange& range) {
  KEnv copy(env);
  copy.writers.Init();
  copy.view = VIEW_NORMAL;
  copy.pageSize = -1;
  copy.navigation = nullptr;
  struct Release {
    KEnv& env;
    ~Release() { KWriterFactory::ReleaseWriterByView(env); }
  } release{copy};
  if (KWriterFactory::CreateWriterByView(copy, type) == Status::kOk) {
    copy.writers.textStream->Write(range.start, range.end);
  }
}

}  // namespace pagerex
