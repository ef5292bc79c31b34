#include "convert/view_formats.h"

#include "convert/web_picture_files.h"
#include "entry/html_writer.h"
#include "htmlwriter/host.h"
#include "wordreader/document.h"

namespace pagerex {
namespace {

/// Hands on to the listener of the job.
class JobHost final : public KHost {
 public:
  explicit JobHost(FormatListener& listener) : listener_(listener) {}

  bool WantsClosedPages() const override { return true; }
  Status FinishPage(int page, const char* path) override { return listener_.PageFinished(page, path); }
  void EndTransform() override {}

 private:
  FormatListener& listener_;
};

}  // namespace

Status writeView(FormatJob& job, VIEW view) {
  JobHost host(job.listener);
  ObjectWriter::ShapeScripts scripts;
  KHtmlWriter writer(job.files, scripts);
  const int pageSize = TraitsOf(view)->hasPageSize ? job.pageSize : -1;
  const KPageSafety safety{true, job.links, &job.warnings};
  Status status = writer.Init(job.document, job.mainName.c_str(), view, pageSize, &host, safety);
  if (failed(status)) return status;
  KHtmlConversionEnv& conversion = writer.conversion();
  conversion.hasPictures = job.pictures != PAGEREX_PICTURES_NONE;
  WebPictureFiles webPictures(job.warnings);
  if (job.pictures == PAGEREX_PICTURES_WEB) conversion.webPictures = &webPictures;
  conversion.control = &job.control;
  conversion.warnings = &job.warnings;
  conversion.progress = &job.listener;
  status = writer.Write();
  conversion.Limits().Report(*conversion.archive, job.warnings);
  job.written = conversion.written;
  if (view == VIEW_PREVIEW) {
    job.written.pages = 1;
    const uint64_t all = job.document->GetTextPool(mso_word::SUBDOC_MAIN).size();
    if (static_cast<uint64_t>(pageSize) < all) job.warnings.Add(WarningCode::kStopped);
  }
  return status;
}

}  // namespace pagerex
