#include "htmlwriter/page_frame.h"

namespace pagerex {
namespace {

void writeMeta(IWriteArchive* archive, const char* name, const char* content) {
  archive->BeginElement("meta");
  archive->AddAttribute("name", name);
  archive->AddAttribute("content", content);
  archive->EndElement("meta");
  archive->PutNewLine();
}

void writeVmlStyle(IWriteArchive* archive) {
  archive->Put("<!--[if !mso]>");
  archive->PutNewLine();
  archive->BeginElement("style");
  archive->EndElement(false);
  archive->PutNewLine();
  archive->Put("v\\:* {behavior:url(#default#VML);}\r\n");
  archive->Put("o\\:* {behavior:url(#default#VML);}\r\n");
  archive->Put("w\\:* {behavior:url(#default#VML);}\r\n");
  archive->Put(".shape {behavior:url(#default#VML);}\r\n");
  archive->EndElement("style");
  archive->PutNewLine();
  archive->Put("<![endif]-->");
  archive->PutNewLine();
}

constexpr const char* kScriptLines[] = {
    "var initFun = new Array();",
    "window.onload = function(){",
    "setTimeout(runInitFun, 0);",
    "if (navigator.appName == \"Microsoft Internet Explorer\")document.body.style.background = '#808080';}",
    "function runInitFun()",
    "{for (var i = 0 ; i < initFun.length ; ++i) initFun[i]();}",
    "",
    "var contentLeft;",
    "var contentTop;",
    "function onMouseOverAnchor(contentID, event)",
    "{",
    "contentID.style.visibility = \"visible\";",
    "contentID.style.display = \"block\";",
    "contentLeft = event.clientX + document.body.scrollLeft;",
    "contentTop = event.clientY + document.body.scrollTop;",
    "contentID.style.left = contentLeft;",
    "contentID.style.top = contentTop;",
    "",
    "}",
    "",
    "function onMouseOverContent(contentID)",
    "{",
    "contentID.style.visibility = \"visible\";",
    "contentID.style.display = \"block\";",
    "contentID.style.left = contentLeft;",
    "contentID.style.top = contentTop;",
    "}",
    "",
    "function onMouseOut(contentID)",
    "{",
    "contentID.style.visibility = \"hidden\";",
    "contentID.style.display = \"none\";",
    "}",
    "",
};

}  // namespace

Status WriteHtmlStart(IWriteArchive* archive, bool phone) {
  if (!archive) return Status::kNothing;
  archive->BeginElement("html");
  archive->AddAttribute("v", "urn:schemas-microsoft-com:vml", "xmlns");
  archive->PutNewLine();
  archive->AddAttribute("o", "urn:schemas-microsoft-com:office:office", "xmlns");
  archive->PutNewLine();
  archive->AddAttribute("w", "urn:schemas-microsoft-com:office:word", "xmlns");
  archive->PutNewLine();
  archive->AddAttribute("xmlns", "http://www.w3.org/TR/REC-html40");
  archive->EndElement(false);
  archive->PutNewLine();
  archive->PutNewLine();

  archive->BeginElement("head");
  archive->EndElement(false);
  archive->BeginElement("script");
  archive->AddAttribute("language", "JavaScript");
  archive->AddAttribute("src", "shapejs.js");
  archive->EndElement("script");
  archive->PutNewLine();
  archive->BeginElement("meta");
  archive->AddAttribute("http-equiv", "content-type");
  archive->Put(" content=\"text/html; charset=utf-8\"");
  archive->EndElement("meta");
  archive->PutNewLine();
  writeMeta(archive, "ProgId", "Word.Document");
  writeMeta(archive, "Generator", "Qel 2009");
  writeMeta(archive, "Originator", "Qel 2009");
  writeVmlStyle(archive);
  archive->BeginElement("link");
  archive->AddAttribute("rel", "stylesheet");
  archive->AddAttribute("type", "text/css");
  archive->AddAttribute("href", "style.css");
  archive->EndElement(true);
  if (!phone) WriteHtmlScript(archive);
  archive->PutNewLine();
  archive->EndElement("head");
  archive->PutNewLine();
  archive->PutNewLine();

  archive->BeginElement("body");
  archive->StartCssStyle();
  archive->AddCssProp("background", "#FFFFFF");
  archive->EndCssStyle();
  archive->EndElement(false);
  archive->PutNewLine();
  return Status::kOk;
}

void WriteHtmlScript(IWriteArchive* archive) {
  archive->BeginElement("script");
  archive->AddAttribute("language", "javascript");
  for (const char* line : kScriptLines) {
    archive->AddContent(line);
    archive->PutNewLine();
  }
  archive->EndElement("script");
  archive->PutNewLine();
}

Status WriteHtmlEnd(IWriteArchive* archive) {
  if (!archive) return Status::kNothing;
  archive->PutNewLine();
  archive->EndElement("body");
  archive->PutNewLine();
  archive->EndElement("html");
  return Status::kOk;
}

}  // namespace pagerex
