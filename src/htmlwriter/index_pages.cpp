#include "htmlwriter/index_pages.h"

#include "base/number_text.h"
#include "base/write_archive.h"
#include "htmlwriter/normal_html.h"

namespace pagerex {
namespace {

/// Folds the navigation away and back. The empty row is an empty line.
constexpr const char* kFoldScript[] = {
    "function ShiftStatus()",
    "{var obj = document.getElementById(\"switchPoint\");",
    "",
    "if (obj.title == \"close\"){",
    "obj.title = \"open\";",
    "obj.innerHTML = \"<b>&gt;</b>\";",
    "document.getElementById(\"navigation\").style.display=\"none\";}",
    "else{",
    "obj.title = \"close\";",
    "obj.innerHTML = \"<b>&lt;</b>\";",
    "document.getElementById(\"navigation\").style.display=\"\";}}",
};

void writeFrameHead(IWriteArchive& archive) {
  archive.BeginElement("head");
  archive.BeginElement("script");
  archive.AddAttribute("language", "javascript");
  for (const char* line : kFoldScript) {
    archive.PutNewLine();
    archive.AddContent(line);
  }
  archive.EndElement("script");
  archive.EndElement("head");
}

/// The narrow column between the frames; a click on it folds the navigation.
void writeFoldColumn(IWriteArchive& archive) {
  archive.BeginElement("td");
  archive.BeginElement("table");
  archive.AddAttribute("height", "100%");
  archive.AddAttribute("cellspacing", "0");
  archive.AddAttribute("cellpadding", "0");
  archive.AddAttribute("border", "0");
  archive.BeginElement("tr");
  archive.BeginElement("td");
  archive.AddAttribute("id", "switchPoint");
  archive.AddAttribute("title", "close");
  archive.AddAttribute("style",
                       "cursor: pointer; vertical-align: center;font-family: Tahoma; font-size: 6pt; "
                       "color: white; height: 100%;");
  archive.AddAttribute("onclick", "ShiftStatus();");
  archive.AddAttribute("width", "8");
  archive.AddAttribute("bgcolor", "#aac8f6");
  archive.AddContent("<b>&lt;</b>");
  archive.EndElement("td");
  archive.EndElement("tr");
  archive.EndElement("table");
  archive.EndElement("td");
}

void writeNavigationFrame(IWriteArchive& archive, const char* navigationUrl) {
  archive.BeginElement("td");
  archive.AddAttribute("id", "center");
  archive.AddAttribute("nowrap");
  archive.AddAttribute("align", "middle");
  archive.BeginElement("iframe");
  archive.AddAttribute("id", "navigation");
  archive.AddAttribute("style", "z-index: 2; visibility: inherit; width: 300px; height: 100%;");
  archive.AddAttribute("src", navigationUrl);
  archive.AddAttribute("frameborder", "0");
  archive.EndElement("iframe");
  archive.EndElement("td");
}

void writeMainFrame(IWriteArchive& archive, const char* firstPageUrl) {
  archive.BeginElement("td");
  archive.AddAttribute("style", "width:100%;");
  archive.BeginElement("iframe");
  archive.AddAttribute("name", "main");
  archive.AddAttribute("style", "z-index: 1; visibility: inherit; width: 100%; height: 100%;");
  archive.AddAttribute("src", firstPageUrl);
  archive.AddAttribute("frameborder", "0");
  archive.AddAttribute("scrolling", "yes");
  archive.EndElement("iframe");
  archive.EndElement("td");
}

/// "%s/%d.htm"; what does not fit is cut.
template <size_t N>
FixedText<N> pageLink(const char* folder, int page) {
  return FixedText<N>().append(folder).append('/').appendInt(page).append(".htm");
}

}  // namespace

Status WriteFramePage(OutputFiles& files, const char* htmlPath, const char* navigationUrl,
                      const char* firstPageUrl, bool hasNavigation, const KPageSafety& safety) {
  if (!htmlPath || !navigationUrl || !firstPageUrl) return Status::kInvalidArgument;
  const ArchivePtr archive = CreateOwnedArchive(files, htmlPath);
  if (!archive) return Status::kInvalidArgument;
  archive->BeginElement("html");
  writeFrameHead(*archive);
  archive->BeginElement("body");
  archive->AddAttribute("style", "margin: 0px;");
  archive->AddAttribute("scroll", "no");
  archive->BeginElement("table");
  archive->AddAttribute("height", "100%");
  archive->AddAttribute("cellspacing", "0");
  archive->AddAttribute("cellpadding", "0");
  archive->AddAttribute("width", "100%");
  archive->AddAttribute("border", "0");
  archive->BeginElement("tr");
  if (hasNavigation) {
    writeNavigationFrame(*archive, safety.Path(navigationUrl).c_str());
    writeFoldColumn(*archive);
  }
  writeMainFrame(*archive, safety.Path(firstPageUrl).c_str());
  archive->EndElement("tr");
  archive->EndElement("table");
  archive->EndElement("body");
  archive->EndElement("html");
  return Status::kOk;
}

Status WriteHtmlMain(OutputFiles& files, const char* htmlPath, const char* filesFolderName, int pageCount,
                     const KPageSafety& safety) {
  if (!htmlPath || !filesFolderName || pageCount <= 0) return Status::kInvalidArgument;
  const ArchivePtr archive = CreateOwnedArchive(files, htmlPath);
  if (!archive) return Status::kInvalidArgument;
  WriteNormalHtmlStart(archive.get());
  archive->BeginElement("p");
  archive->AddContent(numbered("total", pageCount).append("page").c_str());
  archive->EndElement("p");
  archive->PutNewLine();
  archive->BeginElement("p");
  for (int page = 1; page <= pageCount; ++page) {
    archive->BeginElement("a");
    archive->AddAttribute("href", safety.Path(pageLink<64>(filesFolderName, page).c_str()).c_str());
    archive->AddContent(page);
    archive->EndElement("a");
    archive->AddContent("\t");
  }
  archive->EndElement("p");
  archive->PutNewLine();
  WriteNormalHtmlEnd(archive.get());
  return Status::kOk;
}

Status WriteMulpagesInfo(OutputFiles& files, const char* htmlPath, const char* filesFolderName, int pageCount,
                         const KPageSafety& safety) {
  if (!htmlPath || !filesFolderName || pageCount <= 0) return Status::kInvalidArgument;
  const ArchivePtr archive = CreateOwnedArchive(files, htmlPath);
  if (!archive) return Status::kFailure;
  archive->BeginElement("file");
  archive->AddAttribute("totalpages", pageCount);
  for (int page = 1; page <= pageCount; ++page) {
    archive->BeginElement("page");
    archive->AddContent(safety.Text(pageLink<260>(filesFolderName, page).c_str()).c_str());
    archive->EndElement("page");
  }
  archive->EndElement("file");
  return Status::kOk;
}

}  // namespace pagerex
