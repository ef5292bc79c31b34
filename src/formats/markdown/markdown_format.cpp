#include "formats/markdown/markdown_format.h"

#include "formats/flow_format.h"
#include "formats/markdown/markdown_writer.h"

namespace pagerex {

namespace {

std::unique_ptr<PictureOutput> picturesFor(FormatJob& job) {
  // Sound pictures grow by less where they are inflated; the embedded ones are held until the end.
  const uint64_t mostBytes = 32 * job.inputBytes + (64 << 20);
  const uint64_t mostEmbedded = 16 * job.inputBytes + (1 << 20);
  if (job.pictures == PAGEREX_PICTURES_NONE) return makeNoPictures(&job.warnings);
  if (job.pictures == PAGEREX_PICTURES_EMBEDDED) return makeEmbeddedPictures(mostEmbedded, &job.warnings);
  return makePictureFiles(job.files, job.mainName.substr(0, job.mainName.rfind('.')) + ".files",
                          &job.warnings, mostBytes);
}

}  // namespace

Status writeMarkdown(FormatJob& job) {
  Utf8Output out(job.files);
  if (!out.Open(job.mainName.c_str())) return Status::kFailure;
  const MarkdownOptions options{.commonMarkOnly = job.choices.commonMark,
                                .comments = job.choices.comments,
                                .frontMatter = job.choices.frontMatter,
                                .pageBreaks = job.choices.pageBreaks,
                                .htmlTables = true,
                                .links = job.links};
  const std::unique_ptr<PictureOutput> pictures = picturesFor(job);
  MarkdownWriter writer(out, options, pictures.get(), &job.warnings);
  walkFor(job, writer);
  job.written.pictures = pictures->pictures();
  return Status::kOk;
}

}  // namespace pagerex
