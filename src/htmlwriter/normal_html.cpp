#include "htmlwriter/normal_html.h"

namespace pagerex {

Status WriteNormalHtmlStart(IWriteArchive* archive) {
  if (!archive) return Status::kInvalidArgument;
  archive->BeginElement("html");
  archive->BeginElement("head");
  archive->BeginElement("script");
  archive->AddAttribute("language", "JavaScript");
  archive->AddAttribute("src", "shapejs.js");
  archive->EndElement("script");
  archive->BeginElement("meta");
  archive->AddAttribute("http-equiv", "Content-Type");
  archive->AddAttribute("content", "text/html; charset=utf-8");
  archive->EndElement("meta");
  archive->EndElement("head");
  archive->BeginElement("body");
  return Status::kOk;
}

Status WriteNormalHtmlEnd(IWriteArchive* archive) {
  if (!archive) return Status::kInvalidArgument;
  archive->EndElement("body");
  archive->EndElement("html");
  return Status::kOk;
}

}  // namespace pagerex
