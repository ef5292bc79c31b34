#include "formats/markdown/markdown_format.h"

#include "formats/flow_format.h"
#include "formats/markdown/markdown_writer.h"

namespace pagerex {

Status writeMarkdown(FormatJob& job) {
  constexpr uint64_t kMostEmbedded = uint64_t{1} << 30;
  Utf8Output out(job.files);
  if (!out.Open(job.mainName.c_str())) return Status::kFailure;
  const MarkdownOptions options{.commonMarkOnly = job.choices.commonMark,
                                .comments = job.choices.comments,
                                .frontMatter = job.choices.frontMatter,
                                .pageBreaks = job.choices.pageBreaks,
                                .htmlTables = true,
                                .links = job.links};
  std::unique_ptr<PictureOutput> pictures;
  if (job.pictures == PAGEREX_PICTURES_EMBEDDED) {
    pictures = makeEmbeddedPictures(kMostEmbedded, &job.warnings);
  } else if (job.pictures != PAGEREX_PICTURES_NONE) {
    pictures = makePictureFiles(job.files, job.mainName.substr(0, job.mainName.rfind('.')) + ".files",
                                &job.warnings);
  }
  MarkdownWriter writer(out, options, pictures.get(), &job.warnings);
  walkFor(job, writer);
  if (pictures) job.written.pictures = pictures->pictures();
  return Status::kOk;
}

}  // namespace pagerex
