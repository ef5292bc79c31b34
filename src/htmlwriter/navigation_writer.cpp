#include "htmlwriter/navigation_writer.h"

#include "base/number_text.h"
#include "htmlwriter/css_props.h"
#include "htmlwriter/normal_html.h"

namespace pagerex {
namespace {

/// Starts a link to the anchor that `prefix` and the item's position name.
void beginLink(const NAVIGATION_ITEM& item, IWriteArchive* archive, const char* target, const char* page,
               const char* prefix) {
  std::string href(page);
  href.append(numbered(prefix, static_cast<int>(item.position)));
  archive->BeginElement("a");
  archive->AddAttribute("target", target);
  archive->AddAttribute("href", href.c_str());
}

void writeLineEnd(IWriteArchive* archive) {
  archive->BeginElement("br");
  archive->EndElement(true);
  archive->PutNewLine();
}

void writeFold(IWriteArchive* archive, int fold) {
  archive->BeginElement("a");
  archive->AddAttribute("id", numbered("fold", fold).c_str());
  archive->AddAttribute("href", "#");
  archive->AddAttribute("class", "fold");
  archive->AddAttribute("onclick", numbered("fun(", fold).append(')').c_str());
  archive->AddContent("-");
  archive->EndElement("a");
}

}  // namespace

Status KHtmlNavigationPageWriter::Init(const KDRDocument* document) {
  if (!document) return Status::kInvalidArgument;
  document_ = document;
  return Status::kOk;
}

NAVIGATION_ITEM* KHtmlNavigationPageWriter::Add(Kind itemKind, NAVIGATION_ITEM* itemParent,
                                                unsigned int itemPosition) {
  auto item = std::make_unique<NAVIGATION_ITEM>();
  item->kind = itemKind;
  item->position = itemPosition;
  item->parent = itemParent;
  itemParent->children.push_back(std::move(item));
  return itemParent->children.back().get();
}

Status KHtmlNavigationPageWriter::CollectBookMarkCP(unsigned int bookmarkPosition, const char* name) {
  if (!name) return Status::kInvalidArgument;
  Add(kBookmark, current_, bookmarkPosition)->text = name;
  return Status::kOk;
}

Status KHtmlNavigationPageWriter::StartCollectTitle(unsigned int cp, unsigned int titleLevel) {
  if (!IsTitle(titleLevel)) return Status::kInvalidArgument;
  NAVIGATION_ITEM* above = current_;
  while (above->parent && above->level != titleLevel - 1) above = above->parent;
  current_ = Add(kHeading, above, cp);
  current_->level = titleLevel;
  return Status::kOk;
}

Status KHtmlNavigationPageWriter::CollectTitle(const char* titleText) {
  if (!titleText) return Status::kInvalidArgument;
  current_->text += titleText;
  return Status::kOk;
}

Status KHtmlNavigationPageWriter::WriteTitleAnchor(unsigned int cp, IWriteArchive* archive) {
  if (!archive) return Status::kInvalidArgument;
  archive->BeginElement("a");
  archive->AddAttribute("name", numbered("TITLE_", static_cast<int>(cp)).c_str());
  archive->EndElement("a");
  return Status::kOk;
}

Status KHtmlNavigationPageWriter::Write(OutputFiles& files, const char* path, const char* target,
                                        const char* page) {
  if (!path || !target || !page) return Status::kInvalidArgument;
  if (children.empty()) return Status::kNothing;
  const ArchivePtr archive = CreateOwnedArchive(files, path);
  if (!archive) return Status::kFailure;

  WriteNormalHtmlStart(archive.get());
  WriteStyle(archive.get());
  int folds = 0;
  for (const auto& child : children)
    WriteNavigation(child.get(), archive.get(), target, page, folds, document_);
  WriteFoldScript(archive.get(), folds);
  WriteNormalHtmlEnd(archive.get());
  return Status::kOk;
}

Status WriteBM(const NAVIGATION_ITEM* item, IWriteArchive* archive, const char* target, const char* page) {
  if (!item || !archive || !target || !page) return Status::kInvalidArgument;
  beginLink(*item, archive, target, page, "#BM_");
  archive->AddContent("[");
  archive->AddContentEx(item->text.c_str());
  archive->AddContent("]");
  archive->EndElement("a");
  return Status::kOk;
}

Status WriteTitle(const NAVIGATION_ITEM* item, IWriteArchive* archive, const char* target, const char* page) {
  if (!item || !archive || !target || !page) return Status::kInvalidArgument;
  beginLink(*item, archive, target, page, "#TITLE_");
  archive->AddContentEx(item->text.c_str());
  archive->EndElement("a");
  return Status::kOk;
}

Status WriteNavigation(const NAVIGATION_ITEM* item, IWriteArchive* archive, const char* target,
                       const char* page, int& folds, const KDRDocument* document) {
  if (!item || !archive || !target || !page) return Status::kInvalidArgument;
  if (item->kind == NAVIGATION_ITEM::kBookmark) {
    archive->AddContent("&nbsp;&nbsp;");
    WriteBM(item, archive, target, page);
    writeLineEnd(archive);
  } else if (item->children.empty()) {
    archive->AddContent("&nbsp;&nbsp;");
    WriteTitle(item, archive, target, page);
    writeLineEnd(archive);
  } else {
    writeFold(archive, folds);
    archive->AddContent("&nbsp;");
    WriteTitle(item, archive, target, page);
    writeLineEnd(archive);
    archive->BeginElement("div");
    archive->AddAttribute("id", numbered("div", folds).c_str());
    ++folds;
    archive->StartCssStyle();
    archive->AddCssProp("margin-left", "20");
    archive->EndCssStyle();
    // Headings nest by their level: nine deep at most.
    for (const auto& child : item->children) {
      WriteNavigation(child.get(), archive, target, page, folds, document);
    }
    archive->EndElement("div");
  }
  archive->PutNewLine();
  return Status::kOk;
}

Status WriteFoldScript(IWriteArchive* archive, int folds) {
  if (!archive) return Status::kInvalidArgument;
  constexpr const char* kLines[] = {
      "<script language='javascript'>",
      "function fun(id)",
      "{\tfold = document.getElementById('fold' + id);",
      "\tif (fold.innerHTML == '-')",
      "\t{\tfold.innerHTML = '+';",
      "\t\tdocument.getElementById('div' + id).style.display = 'none';",
      "\t} else",
      "\t{\tfold.innerHTML = '-';",
      "\t\tdocument.getElementById('div' + id).style.display = '';",
      "\t}",
      "}",
  };
  for (const char* line : kLines) {
    archive->AddContent(line);
    archive->PutNewLine();
  }
  archive->AddContent("for (i = 0; i < ");
  archive->AddContent(folds);
  archive->AddContent("; ++i)");
  archive->PutNewLine();
  archive->AddContent("fun(i);");
  archive->PutNewLine();
  archive->AddContent("</script>");
  archive->PutNewLine();
  return Status::kOk;
}

Status WriteStyle(IWriteArchive* archive) {
  if (!archive) return Status::kInvalidArgument;
  archive->BeginElement("style");
  archive->StartCssBlock("body");
  archive->AddCssProp("white-space", "nowrap");
  archive->EndCssBlock();
  archive->StartCssBlock("a");
  archive->AddCssProp("text-decoration", "none");
  archive->AddCssProp("color", "#000000");
  archive->AddCssProp("font-size", "12px");
  archive->EndCssBlock();
  archive->StartCssBlock(".fold");
  archive->AddCssProp("width", "16");
  archive->AddCssProp("height", "16");
  archive->AddCssProp("border-style", "dashed");
  archive->AddCssProp("border-width", "1");
  archive->AddCssProp("font-size", "16px");
  archive->AddCssProp("text-align", "center");
  archive->AddCssProp("vertical-align", "middle");
  archive->EndCssBlock();
  archive->EndElement("style");
  return Status::kOk;
}

}  // namespace pagerex
