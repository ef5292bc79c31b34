#include "convert/sample_files.h"

#include "pagerex/convert.h"
#include "support/compound_file_writer.h"
#include "support/small_pictures.h"
#include "support/word_document_writer.h"

using support::Bytes;
using support::ByteWriter;
using support::CompoundFile;
using support::CompoundFileWriter;

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kWordNamespace = "http://schemas.microsoft.com/office/word/2003/wordml";

Bytes openDocument(std::string_view type) {
  return ZipWriter().entry("mimetype", type).entry("content.xml").bytes();
}

Bytes installerByClass() {
  CompoundFile file = CompoundFileWriter().stream(u"A", Bytes(10)).build();
  file.patch(file.entryOffset(0) + 80, Bytes{0x84, 0x10, 0x0C, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46});
  return file.bytes();
}

void append(std::vector<SampleFile>& to, int kind, std::string_view name, std::vector<Bytes> files) {
  for (size_t i = 0; i < files.size(); ++i)
    to.push_back({std::string(name) + " " + std::to_string(i), kind, files[i]});
}

void appendWord(std::vector<SampleFile>& to) {
  append(to, PAGEREX_KIND_WORD97, "word97",
         {support::WordDocument().build(), wordOf(0xA5EC, 0xC1, 0x0200, u"1Table"), wordOf(0xA5EC, 0xC1, 0)});
  append(to, PAGEREX_KIND_WORD95, "word95",
         {wordOf(0xA5DC, 0x65, 0), wordOf(0xA5DC, 0x68, 0), wordOf(0xA697, 0x66, 0),
          bytesOf("\xDC\xA5\x65\0\x40\0\x09\4"sv)});
  append(
      to, PAGEREX_KIND_WORD_EARLY, "early",
      {bytesOf("\x9B\xA5\x21\0\x40\0\x09\4"sv), bytesOf("\xDB\xA5\x2D\0\x40\0\x09\4"sv),
       bytesOf("\x31\xBE\0\0\0\xAB\0\0"sv), bytesOf("\x32\xBE\0\0\0\xAB\0\0"sv), bytesOf("\xFE\x32\0\0\0"sv),
       bytesOf("\xFE\x34\0\0\0"sv), bytesOf("\xFE\x37\0\x1C\0"sv), bytesOf("\xFE\x37\0\x23\0"sv)});
  append(to, PAGEREX_KIND_WORD_ENCRYPTED, "encrypted",
         {wordOf(0xA5EC, 0xC1, 0x0300, u"1Table"), wordOf(0xA5DC, 0x68, 0x0100)});
}

void appendCompoundFiles(std::vector<SampleFile>& to) {
  append(to, PAGEREX_KIND_COMPOUND, "compound",
         {compoundOf({u"A", u"B"}), CompoundFileWriter().bytes(), wordOf(0x1234, 0, 0)});
  append(to, PAGEREX_KIND_XLS, "xls", {compoundOf({u"Workbook"}), compoundOf({u"Book", u"A"})});
  append(to, PAGEREX_KIND_PPT, "ppt", {compoundOf({u"Current User", u"PowerPoint Document"})});
  append(to, PAGEREX_KIND_MSG, "msg",
         {compoundOf({u"__properties_version1.0", u"__nameid_version1.0/__properties_version1.0"})});
  append(to, PAGEREX_KIND_MSI, "msi", {installerByClass(), compoundOf({u"A", u"\x4840\x3B3F\x43F2\x4438"})});
  append(to, PAGEREX_KIND_OOXML_ENCRYPTED, "ooxml-encrypted",
         {compoundOf({u"EncryptedPackage", u"EncryptionInfo", u"\6DataSpaces/Version"})});
}

void appendArchives(std::vector<SampleFile>& to) {
  const auto office = [](std::string_view part) {
    return ZipWriter().entry("[Content_Types].xml").entry("_rels/.rels").entry(part);
  };
  append(to, PAGEREX_KIND_ZIP, "zip",
         {ZipWriter().entry("letter.txt").bytes(), ZipWriter().bytes(), ZipWriter().entry("word/a").bytes()});
  append(to, PAGEREX_KIND_DOCX, "docx",
         {office("word/document.xml").bytes(), office("word/document.xml").entries(),
          office("WORD\\document.xml").bytes(),
          ZipWriter().entry("word/x.xml").entry("[content_types].xml").entry("xl/y.xml").bytes(),
          ZipWriter().sizesFollow().entry("[Content_Types].xml").entry("word/document.xml").entries()});
  append(to, PAGEREX_KIND_XLSX, "xlsx", {office("xl/workbook.xml").bytes()});
  append(to, PAGEREX_KIND_PPTX, "pptx", {office("ppt/presentation.xml").bytes()});
  append(to, PAGEREX_KIND_OOXML, "ooxml", {office("visio/document.xml").bytes()});
  append(to, PAGEREX_KIND_ODT, "odt",
         {openDocument("application/vnd.oasis.opendocument.text"),
          openDocument("application/vnd.oasis.opendocument.text-template")});
  append(to, PAGEREX_KIND_ODS, "ods", {openDocument("application/vnd.oasis.opendocument.spreadsheet")});
  append(to, PAGEREX_KIND_ODP, "odp", {openDocument("application/vnd.oasis.opendocument.presentation")});
  append(to, PAGEREX_KIND_ODF, "odf", {openDocument("application/vnd.oasis.opendocument.graphics")});
}

void appendMarkup(std::vector<SampleFile>& to) {
  const std::string page = "<!DOCTYPE html>\n<html><body>Hello</body></html>";
  append(to, PAGEREX_KIND_RTF, "rtf",
         {bytesOf("{\\rtf1\\ansi Hello}"), bytesOf("\xEF\xBB\xBF\r\n {\\rtf1 Hello}")});
  append(to, PAGEREX_KIND_HTML, "html",
         {bytesOf(page), bytesOf("  \n<HTML>"), bytesOf("<!-- a -->\n<p>Hello"), bytesOf("<h1 id=a>"),
          bytesOf("<?xml version='1.0'?><html xmlns='http://www.w3.org/1999/xhtml'/>"), utf16Of(page, false),
          utf16Of(page, true), bytesOf("\xEF\xBB\xBF" + page)});
  append(to, PAGEREX_KIND_MHTML, "mhtml",
         {bytesOf("MIME-Version: 1.0\r\nContent-Type: multipart/related; boundary=\"b\"\r\n\r\n--b"),
          bytesOf("\r\nFrom: <Saved>\r\nSubject: a\r\n\tand b\r\nmime-version: 1.0\r\n")});
  append(to, PAGEREX_KIND_XML, "xml",
         {bytesOf("<?xml version='1.0'?><a/>"), bytesOf("<a:b xmlns:a='http://example.com'>"),
          bytesOf("<?xml version='1.0'?><!DOCTYPE p><p>")});
  append(to, PAGEREX_KIND_WORDML, "wordml",
         {bytesOf("<?xml version='1.0'?>\n<?mso-application progid=\"Word.Document\"?>\n<w:wordDocument>"),
          bytesOf("<w:wordDocument xmlns:w=\"" + std::string(kWordNamespace) + "\">"),
          bytesOf("<?xml version='1.0'?><wordDocument xmlns='" + std::string(kWordNamespace) + "'>")});
}

}  // namespace

Bytes bytesOf(std::string_view text) {
  return Bytes(text.begin(), text.end());
}

Bytes utf16Of(std::string_view text, bool bigEndian) {
  Bytes bytes;
  for (const char c : text) {
    bytes.push_back(bigEndian ? 0 : static_cast<uint8_t>(c));
    bytes.push_back(bigEndian ? static_cast<uint8_t>(c) : 0);
  }
  return bytes;
}

ZipWriter& ZipWriter::sizesFollow() {
  flags_ = 8;
  return *this;
}

ZipWriter& ZipWriter::entry(std::string_view name, std::string_view content) {
  const auto offset = static_cast<uint32_t>(entries_.size());
  const auto size = static_cast<uint32_t>(content.size());
  const auto nameBytes = static_cast<uint32_t>(name.size());
  const uint32_t told = flags_ ? 0 : size;
  ByteWriter header;
  header.bytes(entries_).u32(0x04034B50).u16(20).u16(flags_).u16(0).u32(0).u32(0).u32(told).u32(told);
  header.u16(nameBytes).u16(0).text8(name).text8(content);
  if (flags_) header.u32(0x08074B50).u32(0).u32(size).u32(size);
  entries_ = header.take();
  ByteWriter entry;
  entry.bytes(directory_)
      .u32(0x02014B50)
      .u16(20)
      .u16(20)
      .u16(flags_)
      .u16(0)
      .u32(0)
      .u32(0)
      .u32(size)
      .u32(size);
  entry.u16(nameBytes).u16(0).u16(0).u16(0).u16(0).u32(0).u32(offset).text8(name);
  directory_ = entry.take();
  return *this;
}

Bytes ZipWriter::bytes(int64_t directoryOffset, std::string_view comment) const {
  const auto offset = static_cast<uint32_t>(directoryOffset < 0 ? entries_.size() : directoryOffset);
  ByteWriter file;
  file.bytes(entries_).bytes(directory_).u32(0x06054B50).zeros(8);
  file.u32(static_cast<uint32_t>(directory_.size())).u32(offset);
  return file.u16(static_cast<uint32_t>(comment.size())).text8(comment).take();
}

Bytes compoundOf(const std::vector<std::u16string>& streams) {
  CompoundFileWriter writer;
  for (const std::u16string& name : streams) writer.stream(name, Bytes(100, 1));
  return writer.bytes();
}

Bytes wordOf(uint16_t identity, uint16_t format, uint16_t flags, const char16_t* table) {
  CompoundFileWriter writer;
  writer.stream(u"WordDocument",
                ByteWriter().u16(identity).u16(format).zeros(6).u16(flags).zeros(500).take());
  if (table) writer.stream(table, Bytes(100));
  return writer.bytes();
}

std::vector<SampleFile> sampleFiles() {
  std::vector<SampleFile> files;
  append(files, PAGEREX_KIND_EMPTY, "empty", {Bytes()});
  append(files, PAGEREX_KIND_UNKNOWN, "unknown",
         {bytesOf("\x89PNH\r\n\x1A\n\0\0\0\rIHDR"sv), Bytes(100), bytesOf("\1\2\3")});
  append(files, PAGEREX_KIND_TEXT, "text",
         {bytesOf("Dear Sir,\r\nyours\x1A"), bytesOf("\xEF\xBB\xBFGr\xC3\xBC\xC3\x9F"), bytesOf("Gr\xFC\xDF"),
          bytesOf("\xFF\xFEH\0i\0"sv), bytesOf("\xFE\xFF\0H\0i"sv), bytesOf("  \n")});
  appendWord(files);
  appendCompoundFiles(files);
  appendArchives(files);
  appendMarkup(files);
  append(files, PAGEREX_KIND_WORDPERFECT, "wordperfect", {bytesOf("\xFFWPC\x10\0\0\0\1\x0A"sv)});
  append(files, PAGEREX_KIND_PDF, "pdf",
         {bytesOf("%PDF-1.4\n"), bytesOf("\xEF\xBB\xBF%PDF-1.4\n"), bytesOf("some header\n%PDF-1.7\n"),
          bytesOf(std::string(1018, '\0') + "\n%PDF-1.7\n")});
  append(files, PAGEREX_KIND_EMF, "emf", {support::smallEmf()});
  append(files, PAGEREX_KIND_WMF, "wmf", {support::bareWmf(), support::placeableWmf()});
  append(files, PAGEREX_KIND_PICT, "pict", {support::pict()});
  append(files, PAGEREX_KIND_DIB, "dib", {support::dib()});
  append(files, PAGEREX_KIND_BMP, "bmp", {support::bmp()});
  append(files, PAGEREX_KIND_TIFF, "tiff", {support::tiff()});
  append(files, PAGEREX_KIND_PNG, "png", {support::smallPng()});
  append(files, PAGEREX_KIND_JPEG, "jpeg", {support::smallJpeg()});
  append(files, PAGEREX_KIND_GIF, "gif", {support::gif()});
  return files;
}
