#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "base/status.h"

class OutputFiles;

/// Code page for wide text in the output; 65001 is UTF-8.
enum class WebEncoding : uint32_t { kUtf8 = 65001 };

/// The only way out for markup, text and CSS.
/// A forward-only writer: it knows how a start tag, an attribute, a text and a CSS property are spelled and
/// keeps no stack of open elements. The ">" of a start tag is written late, by the next element or text. Text
/// is NUL-terminated where no length is taken. A null text writes nothing. Nothing here reports an error.
class IWriteArchive {
 public:
  virtual ~IWriteArchive() = default;

  void BeginElement(const char* name, const char* ns = nullptr) { WriteStartTag(viewOf(name), viewOf(ns)); }
  /// Ends the open start tag: "/>" if `empty`, else ">".
  virtual void EndElement(bool empty) = 0;
  /// Writes the end tag.
  void EndElement(const char* name, const char* ns = nullptr) { WriteEndTag(viewOf(name), viewOf(ns)); }

  /// Neither name nor value is escaped. A null quote writes no quote.
  void AddAttribute(const char* name, const char* value, const char* ns = nullptr,
                    const char* quote = kQuote) {
    AddAttribute(name, viewOf(value), ns, quote);
  }
  void AddAttribute(const char* name, std::string_view value, const char* ns = nullptr,
                    const char* quote = kQuote) {
    if (!ns && quote == kQuote) {
      WriteAttribute(viewOf(name), value);
    } else {
      WriteAttribute(viewOf(name), value, viewOf(ns), viewOf(quote));
    }
  }
  virtual void AddAttribute(const char* name, int value, const char* ns = nullptr,
                            const char* quote = kQuote) = 0;
  virtual void AddAttribute(const char* name, double value, const char* ns = nullptr,
                            const char* quote = kQuote) = 0;
  virtual void AddAttribute(const char* name, bool value, const char* ns = nullptr,
                            const char* quote = kQuote) = 0;
  /// A colour 0xRRGGBB as "#%02X%02X%02X". Word's own colours have red in the low byte: see `wordColour`.
  virtual void AddAttribute(const char* name, unsigned int value, const char* ns = nullptr,
                            const char* quote = kQuote) = 0;
  virtual void AddAttribute(const char* name, const wchar_t* value, const char* ns = nullptr,
                            const char* quote = kQuote) = 0;
  virtual void AddAttribute(const wchar_t* name, const wchar_t* value, const wchar_t* ns = nullptr,
                            const wchar_t* quote = L"\"") = 0;
  virtual void AddAttribute(const char* name, const unsigned short* value, const char* ns = nullptr,
                            const wchar_t* quote = L"\"") = 0;
  /// A bare attribute.
  virtual void AddAttribute(const char* name) = 0;

  /// Document text: escaped, runs of spaces kept, tabs and line breaks turned into markup.
  virtual void AddContentEx(const char* text) = 0;
  virtual void AddContentEx(const wchar_t* text) = 0;
  virtual void AddContentEx(const unsigned short* text) = 0;

  /// Text as it stands. A negative length means up to the NUL. With `breaks` each line feed becomes "<br>".
  virtual void AddContent(const wchar_t* text, int length = -1, bool breaks = false) = 0;
  virtual void AddContent(const char* text, int length = -1, bool breaks = false) = 0;
  virtual void AddContent(const unsigned short* text, int length = -1, bool breaks = false) = 0;
  virtual void AddContent(int value) = 0;
  virtual void AddContent(bool value) = 0;
  virtual void AddContent(long value) = 0;
  virtual void AddContent(double value) = 0;
  virtual void AddContent(float value) = 0;
  /// A colour 0xRRGGBB as "#%02X%02X%02X".
  virtual void AddContent(unsigned int value) = 0;

  /// "\r\n".
  virtual void PutNewLine() = 0;
  /// Raw bytes up to the NUL; no late bracket.
  virtual void Put(const char* text) = 0;
  virtual void Put(const wchar_t* text, int length) = 0;
  virtual void Put(const unsigned short* text, int length) = 0;

  virtual WebEncoding GetWebEncoding() = 0;
  virtual void SetWebEncoding(WebEncoding encoding) = 0;

  /// A rule of a style sheet file.
  virtual void StartCssBlock(const char* selector) = 0;
  virtual void EndCssBlock() = 0;
  /// A `style` attribute.
  virtual void StartCssStyle() = 0;
  virtual void EndCssStyle() = 0;
  /// Opens a `style` attribute when no CSS is open.
  void AddCssProp(const char* name, const char* value, const char* quote = nullptr) {
    AddCssProp(name, viewOf(value), quote);
  }
  void AddCssProp(const char* name, std::string_view value, const char* quote = nullptr) {
    if (quote) {
      WriteCssProp(viewOf(name), value, viewOf(quote));
    } else {
      WriteCssProp(viewOf(name), value);
    }
  }
  virtual void AddCssProp(const char* name, const wchar_t* value, const char* quote = nullptr) = 0;
  virtual void AddCssProp(const char* name, const unsigned short* value, const char* quote = nullptr) = 0;

  /// Truncates or creates the file and writes to it from now on. Returns kOk or kNothing.
  virtual Status Open(const wchar_t* path) = 0;
  virtual Status Open(const char* path) = 0;
  /// Writes out what is buffered and closes the file; `Open` may follow.
  virtual void Close() = 0;
  /// True if a file object exists, whether or not its file is open.
  virtual bool WriteArchiveIsOk() = 0;
  virtual void _Put(const char* data, int length) = 0;

  /// Bytes written since the archive was made, all its files together.
  virtual uint64_t GetWrittenBytes() const = 0;
  /// What was written since `GetWrittenBytes` was `position`, where all of it is still at hand; else empty.
  /// Good until more is written.
  virtual std::string_view WrittenSince(uint64_t position) const = 0;

  /// As AddContentEx of each 16-bit character in turn, zeros left out, in one call.
  virtual void AddTextEx(const unsigned short* text, unsigned int length) = 0;

 protected:
  static constexpr char kQuote[] = "\"";

  /// A view that has no data stands for no text. Of a literal the compiler knows the length.
  static constexpr std::string_view viewOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
  }

 private:
  virtual void WriteStartTag(std::string_view name, std::string_view ns) = 0;
  virtual void WriteEndTag(std::string_view name, std::string_view ns) = 0;
  virtual void WriteAttribute(std::string_view name, std::string_view value) = 0;
  virtual void WriteAttribute(std::string_view name, std::string_view value, std::string_view ns,
                              std::string_view quote) = 0;
  virtual void WriteCssProp(std::string_view name, std::string_view value) = 0;
  virtual void WriteCssProp(std::string_view name, std::string_view value, std::string_view quote) = 0;
};

/// Makes an archive on the file `path` of the output `files`, which outlives it; the file is truncated, and
/// the caller hands the archive to DeleteHtmlWriterArchive. kInvalidArgument for a null `archive` or when the
/// file cannot be created. The last three are not looked at.
Status CreateHtmlWriterArchive(IWriteArchive** archive, OutputFiles& files, const char* path,
                               unsigned int flags1 = 4113, unsigned int flags2 = 4096,
                               char* reserved = nullptr);

/// Writes out, closes and frees; null is accepted.
void DeleteHtmlWriterArchive(IWriteArchive* archive);

/// An archive with its owner.
struct ArchiveDeleter {
  void operator()(IWriteArchive* archive) const { DeleteHtmlWriterArchive(archive); }
};
using ArchivePtr = std::unique_ptr<IWriteArchive, ArchiveDeleter>;

/// The same, owned; null when the file cannot be created.
inline ArchivePtr CreateOwnedArchive(OutputFiles& files, const char* path) {
  IWriteArchive* archive = nullptr;
  CreateHtmlWriterArchive(&archive, files, path);
  return ArchivePtr(archive);
}
