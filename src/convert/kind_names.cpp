#include "pagerex/convert.h"

namespace {

struct KindName {
  int kind;
  const char* name;
  const char* sentence;
};

/// The first row stands for numbers that are no kind.
constexpr KindName kKindNames[] = {
    {PAGEREX_KIND_UNKNOWN, "unknown", "This is not a kind of file that is known here."},
    {PAGEREX_KIND_EMPTY, "empty", "This file is empty."},
    {PAGEREX_KIND_TEXT, "text", "This is plain text (.txt)."},
    {PAGEREX_KIND_WORD97, "word97", "This is a Word 97-2003 document (.doc)."},
    {PAGEREX_KIND_WORD95, "word95", "This is a document of Word 6 or Word 95 (.doc)."},
    {PAGEREX_KIND_WORD_EARLY, "word-early",
     "This is a document of an early Word, from before Word 6 (.doc)."},
    {PAGEREX_KIND_WORD_ENCRYPTED, "word-encrypted",
     "This is an encrypted Word document (.doc), which needs its password."},
    {PAGEREX_KIND_COMPOUND, "compound",
     "This is a compound file (OLE2) that holds no Word document, or one that is damaged or cut short."},
    {PAGEREX_KIND_XLS, "xls", "This is a spreadsheet of 2003 or before (.xls)."},
    {PAGEREX_KIND_PPT, "ppt", "This is a presentation of 2003 or before (.ppt)."},
    {PAGEREX_KIND_MSG, "msg", "This is a mail message (.msg)."},
    {PAGEREX_KIND_MSI, "msi", "This is an installer package (.msi)."},
    {PAGEREX_KIND_OOXML_ENCRYPTED, "ooxml-encrypted",
     "This is an encrypted Office file of 2007 or later (.docx, .xlsx or .pptx), which needs its password."},
    {PAGEREX_KIND_ZIP, "zip", "This is a zip archive (.zip)."},
    {PAGEREX_KIND_DOCX, "docx", "This is a Word document of 2007 or later (.docx)."},
    {PAGEREX_KIND_XLSX, "xlsx", "This is a spreadsheet of 2007 or later (.xlsx)."},
    {PAGEREX_KIND_PPTX, "pptx", "This is a presentation of 2007 or later (.pptx)."},
    {PAGEREX_KIND_OOXML, "ooxml", "This is an Office Open XML package, as of 2007 or later."},
    {PAGEREX_KIND_ODT, "odt", "This is an OpenDocument text (.odt)."},
    {PAGEREX_KIND_ODS, "ods", "This is an OpenDocument spreadsheet (.ods)."},
    {PAGEREX_KIND_ODP, "odp", "This is an OpenDocument presentation (.odp)."},
    {PAGEREX_KIND_ODF, "odf", "This is an OpenDocument file, other than text, spreadsheet or presentation."},
    {PAGEREX_KIND_RTF, "rtf", "This is a Rich Text document (.rtf)."},
    {PAGEREX_KIND_HTML, "html", "This is a web page (.html)."},
    {PAGEREX_KIND_MHTML, "mhtml", "This is a web page in one file (.mht), or another MIME message."},
    {PAGEREX_KIND_XML, "xml", "This is an XML document (.xml)."},
    {PAGEREX_KIND_WORDML, "wordml", "This is a Word document in the XML of Word 2003 (.xml)."},
    {PAGEREX_KIND_WORDPERFECT, "wordperfect", "This is a WordPerfect document (.wpd)."},
    {PAGEREX_KIND_PDF, "pdf", "This is a PDF document (.pdf)."},
    {PAGEREX_KIND_EMF, "emf", "This is an enhanced metafile (.emf)."},
    {PAGEREX_KIND_WMF, "wmf", "This is a Windows metafile (.wmf)."},
    {PAGEREX_KIND_PICT, "pict", "This is a Macintosh picture (.pict)."},
    {PAGEREX_KIND_DIB, "dib", "This is a bitmap without its file header (.dib)."},
    {PAGEREX_KIND_BMP, "bmp", "This is a bitmap (.bmp)."},
    {PAGEREX_KIND_TIFF, "tiff", "This is a TIFF picture (.tif)."},
    {PAGEREX_KIND_PNG, "png", "This is a PNG picture (.png)."},
    {PAGEREX_KIND_JPEG, "jpeg", "This is a JPEG picture (.jpg)."},
    {PAGEREX_KIND_GIF, "gif", "This is a GIF picture (.gif)."},
};

const KindName& rowOf(int kind) {
  for (const KindName& row : kKindNames) {
    if (row.kind == kind) return row;
  }
  return kKindNames[0];
}

}  // namespace

const char* pagerex_kind_name(int kind) {
  return rowOf(kind).name;
}

const char* pagerex_kind_sentence(int kind) {
  return rowOf(kind).sentence;
}
