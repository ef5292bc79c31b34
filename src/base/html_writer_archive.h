#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "base/encoding.h"
#include "base/short_copy.h"
#include "base/stdio_archive.h"
#include "base/write_archive.h"

/// The output archive: spells markup, text and CSS into a 512 KiB buffer in front of one file at a time.
/// Owns its file. The states are no file, open and closed; what is written while no file is open is dropped,
/// though the memory of open tags, open CSS and spaces goes on, and `Open` leaves that memory as it is.
/// Errors of the file system while writing are only noted (`OutputFiles::FirstError`). Made on the heap, by
/// CreateHtmlWriterArchive.
class KHtmlWriterArchive final : public IWriteArchive {
 public:
  explicit KHtmlWriterArchive(OutputFiles& files);
  ~KHtmlWriterArchive() override;

  using IWriteArchive::AddAttribute;
  using IWriteArchive::AddCssProp;
  using IWriteArchive::EndElement;

  void EndElement(bool empty) override;

  void AddAttribute(const char* name, int value, const char* ns, const char* quote) override;
  void AddAttribute(const char* name, double value, const char* ns, const char* quote) override;
  void AddAttribute(const char* name, bool value, const char* ns, const char* quote) override;
  void AddAttribute(const char* name, unsigned int value, const char* ns, const char* quote) override;
  void AddAttribute(const char* name, const wchar_t* value, const char* ns, const char* quote) override;
  void AddAttribute(const wchar_t* name, const wchar_t* value, const wchar_t* ns,
                    const wchar_t* quote) override;
  void AddAttribute(const char* name, const unsigned short* value, const char* ns,
                    const wchar_t* quote) override;
  void AddAttribute(const char* name) override;

  void AddContentEx(const char* text) override;
  void AddContentEx(const wchar_t* text) override;
  void AddContentEx(const unsigned short* text) override;
  void AddTextEx(const unsigned short* text, unsigned int length) override;

  void AddContent(const wchar_t* text, int length, bool breaks) override;
  void AddContent(const char* text, int length, bool breaks) override;
  void AddContent(const unsigned short* text, int length, bool breaks) override;
  void AddContent(int value) override;
  void AddContent(bool value) override;
  void AddContent(long value) override;
  void AddContent(double value) override;
  void AddContent(float value) override;
  void AddContent(unsigned int value) override;

  void PutNewLine() override;
  void Put(const char* text) override;
  void Put(const wchar_t* text, int length) override;
  void Put(const unsigned short* text, int length) override;

  WebEncoding GetWebEncoding() override { return webEncoding_; }
  void SetWebEncoding(WebEncoding encoding) override { webEncoding_ = encoding; }

  void StartCssBlock(const char* selector) override;
  void EndCssBlock() override;
  void StartCssStyle() override;
  void EndCssStyle() override;
  void AddCssProp(const char* name, const wchar_t* value, const char* quote) override;
  void AddCssProp(const char* name, const unsigned short* value, const char* quote) override;

  Status Open(const wchar_t* path) override;
  Status Open(const char* path) override;
  void Close() override;
  bool WriteArchiveIsOk() override { return file_ != nullptr; }
  uint64_t GetWrittenBytes() const override { return writtenOut_ + used_; }
  std::string_view WrittenSince(uint64_t position) const override {
    if (position < writtenOut_ || position >= GetWrittenBytes()) return {};
    const auto start = static_cast<size_t>(position - writtenOut_);
    return {buffer_ + start, used_ - start};
  }
  void _Put(const char* data, int length) override;

  static constexpr uint32_t kBufferSize = 0x80000;

 private:
  void WriteStartTag(std::string_view name, std::string_view ns) override;
  void WriteEndTag(std::string_view name, std::string_view ns) override;
  void WriteAttribute(std::string_view name, std::string_view value) override;
  void WriteAttribute(std::string_view name, std::string_view value, std::string_view ns,
                      std::string_view quote) override;
  void WriteCssProp(std::string_view name, std::string_view value) override;
  void WriteCssProp(std::string_view name, std::string_view value, std::string_view quote) override;

  template <class Path>
  Status OpenFile(const Path* path);
  void WriteOut();
  void WriteStartTagSlowly(std::string_view name, std::string_view ns);
  void WriteEndTagSlowly(std::string_view name, std::string_view ns);
  void WriteAll(std::initializer_list<std::string_view> texts);
  void WriteSlowly(const char* data, size_t length);
  void EnsureEndCss();
  void AddContentBytes(std::string_view text, bool breaks);
  std::string Narrow(const wchar_t* text, int length) const;
  std::string Narrow(const unsigned short* text) const;
  std::string NarrowNext(const unsigned short* text, size_t length);
  void EscapeUnits(const unsigned short* text, size_t length);
  template <class Unit>
  void Escape(const Unit* text, size_t length);
  template <class Unit>
  char* EscapeInto(const Unit*& text, const Unit* end, char* out, const char* outEnd);
  size_t CopyPlain(const unsigned short* text, size_t length, uint8_t previous, char* out);
  static size_t CopyPlain(const unsigned char* text, size_t length, uint8_t previous, char* out);
  char* EscapeOne(unsigned char byte, char* out, uint8_t& previous);
  char* EscapeOne(unsigned short unit, char* out, uint8_t& previous);

  void Write(const char* data, size_t length) {
    // A full or absent buffer has no room: both are told apart on the slow path.
    if (length <= capacity_ - used_) {
      std::memcpy(buffer_ + used_, data, length);
      used_ += static_cast<uint32_t>(length);
    } else {
      WriteSlowly(data, length);
    }
  }
  void Write(std::string_view text) {
    if (!text.empty()) Write(text.data(), text.size());
  }
  /// Writes short views and literals in a row. False, and nothing written, if one is long or there is no
  /// room. Calls nothing, so that its caller saves no registers.
  template <class... Texts>
  [[gnu::always_inline]] bool WriteQuickly(const Texts&... texts) {
    if ((sizeOf(texts) | ...) >= kShort || (sizeOf(texts) + ...) > capacity_ - used_) return false;
    char* out = buffer_ + used_;
    ((out = copyShort(out, texts)), ...);
    used_ = static_cast<uint32_t>(out - buffer_);
    return true;
  }
  void EnsureWriteRight() {
    if (!tagOpen_) return;
    Write(">", 1);
    tagOpen_ = false;
    pendingSpace_ = 0;
  }

  WebEncoding webEncoding_ = WebEncoding::kUtf8;
  OutputFiles& files_;  ///< of the conversion
  std::unique_ptr<DsWriteArchive> file_;
  uint64_t writtenOut_ = 0;  ///< bytes that have left the buffer, or gone past it
  uint32_t used_ = 0;        ///< bytes in the buffer
  uint32_t capacity_ = 0;    ///< kBufferSize while a file is open, else 0
  Utf16Joiner joiner_;       ///< half a character may wait for the next 16-bit text
  bool tagOpen_ = false;     ///< a start tag's ">" is still owing
  bool cssInBlock_ = false;  ///< the open CSS is a rule of a style sheet, not a `style` attribute
  bool cssOpen_ = false;
  uint8_t pendingSpace_ = 0;  ///< the last byte that went through text escaping
  char buffer_[kBufferSize];
};
