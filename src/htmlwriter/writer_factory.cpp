#include "htmlwriter/writer_factory.h"

#include <memory>

#include "htmlwriter/chp_writer.h"
#include "htmlwriter/chp_writer_paged.h"
#include "htmlwriter/pages_writer.h"
#include "htmlwriter/pap_writer.h"
#include "htmlwriter/section_writer.h"
#include "htmlwriter/text_stream_writer.h"

namespace pagerex {
namespace {

/// Makes a writer, puts it into its slot, which owns it from then on, and initialises it.
template <class Writer, class Interface>
bool make(Interface*& slot, KEnv& env) {
  auto writer = std::make_unique<Writer>();
  Writer* made = writer.get();
  slot = writer.release();
  return made->Init(&env) == Status::kOk;
}

template <class Interface>
void release(Interface*& slot) {
  delete slot;
  slot = nullptr;
}

bool makeStream(KEnv& env, mso_word::SUBDOC_TYPE type) {
  auto* writer = new KHtmlTextStreamWriter;
  env.writers.textStream = writer;
  return writer->Init(&env, type) == Status::kOk;
}

/// Notes have neither pages nor sections of their own.
bool hasPages(mso_word::SUBDOC_TYPE type) {
  return type != mso_word::SUBDOC_FOOTNOTE && type != mso_word::SUBDOC_ENDNOTE;
}

template <class Pages, class Section, class Chp, class Pap>
bool makeWriters(KEnv& env, mso_word::SUBDOC_TYPE type) {
  KWriter& writers = env.writers;
  if (hasPages(type) && !(make<Pages>(writers.pages, env) && make<Section>(writers.section, env)))
    return false;
  return make<Chp>(writers.chp, env) && make<Pap>(writers.pap, env);
}

bool makePreviewWriters(KEnv& env) {
  KWriter& writers = env.writers;
  return make<KHtmlPagesWriterPreview>(writers.pages, env) &&
         make<KHtmlSectionWriterPreview>(writers.section, env) &&
         make<KHtmlPapWriterPreview>(writers.pap, env) && make<KHtmlChpWriterPreview>(writers.chp, env);
}

bool makeForView(KEnv& env, mso_word::SUBDOC_TYPE type) {
  constexpr int kStreamOnly = 4;
  switch (static_cast<int>(env.view)) {
    case VIEW_NORMAL:
      return makeWriters<KPagesBase, KSectionBase, KHtmlChpWriterNormal, KHtmlPapWriterNormal>(env, type);
    case VIEW_PHONE:
      return makeWriters<KPagesBase, KHtmlSectionWriterPreview, KHtmlChpWriterPhone, KPapMulpageBase>(env,
                                                                                                      type);
    case VIEW_PREVIEW:
      return makePreviewWriters(env);
    case VIEW_MULPAGES:
      return makeWriters<KPagesBase, KSectionBase, KHtmlChpWriterMulpages, KPapMulpageBase>(env, type);
    default:
      return static_cast<int>(env.view) == kStreamOnly;
  }
}

}  // namespace

Status KWriterFactory::CreateWriterByView(KEnv& env, mso_word::SUBDOC_TYPE type) {
  ReleaseWriterByView(env);
  return makeStream(env, type) && makeForView(env, type) ? Status::kOk : Status::kNothing;
}

void KWriterFactory::ReleaseWriterByView(KEnv& env) {
  release(env.writers.chp);
  release(env.writers.pages);
  release(env.writers.pap);
  release(env.writers.section);
  release(env.writers.textStream);
}

}  // namespace pagerex
