#include "htmlwriter/writer_factory.h"

#include <optional>

#include "htmlwriter/chp_writer.h"
#include "htmlwriter/chp_writer_paged.h"
#include "htmlwriter/pages_writer.h"
#include "htmlwriter/pap_writer.h"
#include "htmlwriter/section_writer.h"
#include "htmlwriter/text_stream_writer.h"

namespace pagerex {
namespace {

/// Notes have neither pages nor sections of their own.
bool hasPages(mso_word::SUBDOC_TYPE type) {
  return type != mso_word::SUBDOC_FOOTNOTE && type != mso_word::SUBDOC_ENDNOTE;
}

/// The writers of a view in one object, as there are many notes.
template <class Pages, class Section, class Chp, class Pap>
class WriterSet : public KWriter {
 public:
  bool Init(KEnv& env, mso_word::SUBDOC_TYPE type) {
    textStream = &stream_;
    if (failed(stream_.Init(&env, type))) return false;
    if (hasPages(type)) {
      pages = &pages_.emplace();
      section = &section_.emplace();
      if (failed(pages_->Init(&env)) || failed(section_->Init(&env))) return false;
    }
    chp = &chp_;
    pap = &pap_;
    return !failed(chp_.Init(&env)) && !failed(pap_.Init(&env));
  }

 private:
  KHtmlTextStreamWriter stream_;
  std::optional<Pages> pages_;
  std::optional<Section> section_;
  Chp chp_;
  Pap pap_;
};

template <class Set>
std::unique_ptr<KWriter> make(KEnv& env, mso_word::SUBDOC_TYPE type) {
  auto set = std::make_unique<Set>();
  return set->Init(env, type) ? std::move(set) : nullptr;
}

using NormalWriters = WriterSet<KPagesBase, KSectionBase, KHtmlChpWriterNormal, KHtmlPapWriterNormal>;
using PhoneWriters = WriterSet<KPagesBase, KHtmlSectionWriterPreview, KHtmlChpWriterPhone, KPapMulpageBase>;
using PreviewWriters = WriterSet<KHtmlPagesWriterPreview, KHtmlSectionWriterPreview, KHtmlChpWriterPreview,
                                 KHtmlPapWriterPreview>;
using MulpagesWriters = WriterSet<KPagesBase, KSectionBase, KHtmlChpWriterMulpages, KPapMulpageBase>;

constexpr struct {
  VIEW view;
  std::unique_ptr<KWriter> (*make)(KEnv& env, mso_word::SUBDOC_TYPE type);
} kWriters[] = {
    {VIEW_NORMAL, make<NormalWriters>},
    {VIEW_PHONE, make<PhoneWriters>},
    {VIEW_PREVIEW, make<PreviewWriters>},
    {VIEW_MULPAGES, make<MulpagesWriters>},
};

}  // namespace

Status KWriterFactory::CreateWriterByView(KEnv& env, mso_word::SUBDOC_TYPE type) {
  ReleaseWriterByView(env);
  for (const auto& row : kWriters) {
    if (row.view == env.view) env.writers = row.make(env, type);
  }
  return env.writers ? Status::kOk : Status::kNothing;
}

void KWriterFactory::ReleaseWriterByView(KEnv& env) {
  env.writers.reset();
}

}  // namespace pagerex
