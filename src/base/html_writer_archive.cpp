#include "base/html_writer_archive.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/number_text.h"
#include "base/plain_text.h"

namespace {

constexpr size_t kLongestEscape = 24;

struct EscapeRow {
  char text[kLongestEscape];
  uint8_t size;
};

/// What document text becomes, by its ASCII characters. The space's row is for one that follows another
/// space. The missing semicolon of the last row is what readers of these pages get.
struct Escapes {
  EscapeRow rows[128] = {};
  constexpr Escapes() {
    for (unsigned code = 0; code < 128; ++code) {
      const char itself = static_cast<char>(code);
      set(itself, {&itself, 1});
    }
    for (char dropped : {'\0', '\a', '\r'}) set(dropped, "");
    set('\t', "&nbsp;&nbsp;&nbsp;&nbsp;");
    set('\v', "<br>");
    set(' ', "&nbsp;");
    set('&', "&amp;");
    set('<', "&lt;");
    set('>', "&gt");
  }
  constexpr void set(char byte, std::string_view text) {
    EscapeRow& row = rows[static_cast<unsigned char>(byte)];
    std::copy(text.begin(), text.end(), row.text);
    row.size = static_cast<uint8_t>(text.size());
  }
};
constexpr Escapes kEscapes;
constexpr size_t kEscapeBlock = 512;

std::string_view boolWord(bool value) {
  return value ? "true" : "false";
}

/// 0xRRGGBB as "#RRGGBB".
NumberText rgbText(unsigned int colour) {
  return NumberText()
      .append('#')
      .appendHexByte(colour >> 16)
      .appendHexByte(colour >> 8)
      .appendHexByte(colour);
}

}  // namespace

Status CreateHtmlWriterArchive(IWriteArchive** archive, OutputFiles& files, const char* path, unsigned int,
                               unsigned int, char*) {
  if (!archive) return Status::kInvalidArgument;
  auto made = std::make_unique<KHtmlWriterArchive>(files);
  if (made->Open(path) != Status::kOk) return Status::kInvalidArgument;
  *archive = made.release();
  return Status::kOk;
}

void DeleteHtmlWriterArchive(IWriteArchive* archive) {
  delete archive;
}

// cppcheck-suppress uninitMemberVar ; the buffer is written before it is read
KHtmlWriterArchive::KHtmlWriterArchive(OutputFiles& files) : files_(files) {}

KHtmlWriterArchive::~KHtmlWriterArchive() {
  Close();
}

// Markup.

void KHtmlWriterArchive::WriteStartTag(std::string_view name, std::string_view ns) {
  const bool done = !ns.data() && (tagOpen_ ? WriteQuickly("><", name) : WriteQuickly("<", name));
  if (!done) return WriteStartTagSlowly(name, ns);
  if (tagOpen_) pendingSpace_ = 0;
  tagOpen_ = true;
}

void KHtmlWriterArchive::WriteStartTagSlowly(std::string_view name, std::string_view ns) {
  EnsureWriteRight();
  WriteAll({"<", ns, ns.data() ? ":" : "", name});
  tagOpen_ = true;
}

void KHtmlWriterArchive::EndElement(bool empty) {
  Write(empty ? std::string_view("/>") : std::string_view(">"));
  tagOpen_ = false;
}

void KHtmlWriterArchive::WriteEndTag(std::string_view name, std::string_view ns) {
  if (tagOpen_ || ns.data() || !WriteQuickly("</", name, ">")) WriteEndTagSlowly(name, ns);
}

void KHtmlWriterArchive::WriteEndTagSlowly(std::string_view name, std::string_view ns) {
  EnsureWriteRight();
  WriteAll({"</", ns, ns.data() ? ":" : "", name, ">"});
}

void KHtmlWriterArchive::WriteAttribute(std::string_view name, std::string_view value) {
  if (!WriteQuickly(" ", name, "=\"", value, "\"")) WriteAll({" ", name, "=\"", value, "\""});
}

void KHtmlWriterArchive::WriteAttribute(std::string_view name, std::string_view value, std::string_view ns,
                                        std::string_view quote) {
  WriteAll({" ", ns, ns.data() ? ":" : "", name, "=", quote, value, quote});
}

void KHtmlWriterArchive::AddAttribute(const char* name, int value, const char* ns, const char* quote) {
  AddAttribute(name, std::string_view(number(value)), ns, quote);
}

void KHtmlWriterArchive::AddAttribute(const char* name, double value, const char* ns, const char* quote) {
  AddAttribute(name, std::string_view(fixedNumber(value)), ns, quote);
}

void KHtmlWriterArchive::AddAttribute(const char* name, bool value, const char* ns, const char* quote) {
  AddAttribute(name, boolWord(value), ns, quote);
}

void KHtmlWriterArchive::AddAttribute(const char* name, unsigned int value, const char* ns,
                                      const char* quote) {
  AddAttribute(name, std::string_view(rgbText(value)), ns, quote);
}

void KHtmlWriterArchive::AddAttribute(const char* name, const wchar_t* value, const char* ns,
                                      const char* quote) {
  AddAttribute(name, std::string_view(Narrow(value, -1)), ns, quote);
}

void KHtmlWriterArchive::AddAttribute(const wchar_t* name, const wchar_t* value, const wchar_t* ns,
                                      const wchar_t* quote) {
  const std::string narrowNs = Narrow(ns, -1);
  const std::string narrowQuote = Narrow(quote, -1);
  WriteAttribute(Narrow(name, -1), Narrow(value, -1), viewOf(ns ? narrowNs.c_str() : nullptr), narrowQuote);
}

void KHtmlWriterArchive::AddAttribute(const char* name, const unsigned short* value, const char* ns,
                                      const wchar_t* quote) {
  const std::string narrowQuote = Narrow(quote, -1);
  AddAttribute(name, std::string_view(Narrow(value)), ns, narrowQuote.c_str());
}

void KHtmlWriterArchive::AddAttribute(const char* name) {
  WriteAll({" ", viewOf(name)});
}

// Document text.

void KHtmlWriterArchive::AddContentEx(const char* text) {
  if (!text) return;
  EnsureWriteRight();
  Escape(reinterpret_cast<const unsigned char*>(text), std::strlen(text));
}

void KHtmlWriterArchive::AddContentEx(const wchar_t* text) {
  if (text) AddContentEx(Narrow(text, -1).c_str());
}

void KHtmlWriterArchive::AddContentEx(const unsigned short* text) {
  if (!text) return;
  EnsureWriteRight();
  EscapeUnits(text, charactersOf(text, -1));
}

void KHtmlWriterArchive::AddTextEx(const unsigned short* text, unsigned int length) {
  if (!text || std::all_of(text, text + length, [](unsigned short unit) { return unit == 0; })) return;
  EnsureWriteRight();
  EscapeUnits(text, length);
}

void KHtmlWriterArchive::EscapeUnits(const unsigned short* text, size_t length) {
  if (webEncoding_ == WebEncoding::kUtf8) {
    Escape(text, length);
  } else {
    AddContentEx(NarrowNext(text, length).c_str());
  }
}

/// The one loop that all document text goes through. Text goes straight to the buffer as long as there is
/// room, else by way of a small block.
template <class Unit>
void KHtmlWriterArchive::Escape(const Unit* text, size_t length) {
  char block[kEscapeBlock];
  const Unit* const end = text + length;
  while (text != end) {
    const bool direct = capacity_ - used_ >= kEscapeBlock;
    char* const begin = direct ? buffer_ + used_ : block;
    char* const out = EscapeInto(text, end, begin, direct ? buffer_ + capacity_ : block + kEscapeBlock);
    if (direct) {
      used_ = static_cast<uint32_t>(out - buffer_);
    } else {
      Write(block, static_cast<size_t>(out - block));
    }
  }
}

/// Writes as much of the text as there is room for whatever it may be, moves `text` behind that and returns
/// the place behind what is written.
template <class Unit>
char* KHtmlWriterArchive::EscapeInto(const Unit*& text, const Unit* end, char* out, const char* outEnd) {
  const char* const full = outEnd - kLongestEscape;
  uint8_t previous = pendingSpace_;
  while (text != end && out < full) {
    const auto room = static_cast<size_t>(std::min<ptrdiff_t>(full - out, end - text));
    if (const size_t plain = CopyPlain(text, room, previous, out)) {
      text += plain;
      out += plain;
      previous = static_cast<uint8_t>(out[-1]);
    }
    // What is not plain seldom comes alone: other scripts are whole words of it.
    if (text != end && out < full) {
      do out = EscapeOne(*text++, out, previous);
      while (text != end && *text >= 128 && out < full);
    }
  }
  pendingSpace_ = previous;
  return out;
}

size_t KHtmlWriterArchive::CopyPlain(const unsigned short* text, size_t length, uint8_t previous, char* out) {
  const size_t count = copyPlainText(text, length, previous, out);
  if (count > 0) joiner_.Reset();
  return count;
}

size_t KHtmlWriterArchive::CopyPlain(const unsigned char* text, size_t length, uint8_t previous, char* out) {
  size_t count = 0;
  for (; count < length && isPlainText(text[count], previous); ++count) {
    previous = text[count];
    out[count] = static_cast<char>(previous);
  }
  return count;
}

/// Writes what stands for one character, which may be plain but for its place, and returns the place behind
/// it.
inline char* KHtmlWriterArchive::EscapeOne(unsigned char byte, char* out, uint8_t& previous) {
  previous = byte;
  if (byte >= 128) {
    *out = static_cast<char>(byte);
    return out + 1;
  }
  // There is room for all of the row's bytes.
  std::memcpy(out, kEscapes.rows[byte].text, kLongestEscape);
  return out + kEscapes.rows[byte].size;
}

inline char* KHtmlWriterArchive::EscapeOne(unsigned short unit, char* out, uint8_t& previous) {
  if (unit == 0) return out;
  const bool isSurrogate = (unit & 0xF800) == 0xD800;
  if (!isSurrogate) joiner_.Reset();
  const char32_t character = isSurrogate ? joiner_.Join(unit) : unit;
  if (character < 128) return EscapeOne(static_cast<unsigned char>(character), out, previous);
  const size_t size = encodeUtf8(character, out);
  if (size > 0) previous = static_cast<uint8_t>(out[size - 1]);
  return out + size;
}

// Text as it stands.

void KHtmlWriterArchive::AddContent(const char* text, int length, bool breaks) {
  if (text) AddContentBytes({text, length < 0 ? std::strlen(text) : static_cast<size_t>(length)}, breaks);
}

void KHtmlWriterArchive::AddContent(const wchar_t* text, int length, bool breaks) {
  if (text) AddContentBytes(Narrow(text, length), breaks);
}

void KHtmlWriterArchive::AddContent(const unsigned short* text, int length, bool breaks) {
  if (text) AddContentBytes(NarrowNext(text, charactersOf(text, length)), breaks);
}

void KHtmlWriterArchive::AddContentBytes(std::string_view text, bool breaks) {
  EnsureWriteRight();
  for (size_t lineEnd; breaks && (lineEnd = text.find('\n')) != std::string_view::npos;) {
    Write(text.substr(0, lineEnd));
    Write("<br>");
    text.remove_prefix(lineEnd + 1);
  }
  Write(text);
}

void KHtmlWriterArchive::AddContent(int value) {
  AddContentBytes(number(value), false);
}

void KHtmlWriterArchive::AddContent(bool value) {
  AddContentBytes(boolWord(value), false);
}

void KHtmlWriterArchive::AddContent(long value) {
  AddContentBytes(NumberText().appendInt(value), false);
}

void KHtmlWriterArchive::AddContent(double value) {
  AddContentBytes(generalNumber(value), false);
}

void KHtmlWriterArchive::AddContent(float value) {
  AddContent(static_cast<double>(value));
}

void KHtmlWriterArchive::AddContent(unsigned int value) {
  AddContentBytes(rgbText(value), false);
}

void KHtmlWriterArchive::PutNewLine() {
  Write("\r\n", 2);
}

void KHtmlWriterArchive::Put(const char* text) {
  Write(viewOf(text));
}

void KHtmlWriterArchive::Put(const wchar_t* text, int length) {
  Write(Narrow(text, length));
}

void KHtmlWriterArchive::Put(const unsigned short* text, int length) {
  if (text) Write(NarrowNext(text, charactersOf(text, length)));
}

std::string KHtmlWriterArchive::Narrow(const wchar_t* text, int length) const {
  return KEncoding::WCharToString(static_cast<unsigned int>(webEncoding_), text, length);
}

/// A 16-bit text that is whole in itself: the value of an attribute or of a property.
std::string KHtmlWriterArchive::Narrow(const unsigned short* text) const {
  return KEncoding::WCHAR2BitToString(static_cast<unsigned int>(webEncoding_), text);
}

/// The next part of a 16-bit text that goes on over several calls.
std::string KHtmlWriterArchive::NarrowNext(const unsigned short* text, size_t length) {
  std::wstring characters;
  for (size_t i = 0; i < length; ++i) {
    const char32_t character = joiner_.Join(text[i]);
    if (character != 0 && (character & 0xFFFFF800) != 0xD800) characters += static_cast<wchar_t>(character);
  }
  return Narrow(characters.c_str(), -1);
}

// CSS.

void KHtmlWriterArchive::StartCssBlock(const char* selector) {
  if (!selector) return;
  EnsureWriteRight();
  EnsureEndCss();
  WriteAll({selector, "\r\n{"});
  cssInBlock_ = true;
  cssOpen_ = true;
}

void KHtmlWriterArchive::EndCssBlock() {
  if (!cssOpen_) return;
  Write("}", 1);
  PutNewLine();
  cssOpen_ = false;
}

void KHtmlWriterArchive::StartCssStyle() {
  EnsureEndCss();
  Write(" style=\"");
  cssInBlock_ = false;
  cssOpen_ = true;
}

void KHtmlWriterArchive::EndCssStyle() {
  if (!cssOpen_) return;
  Write("\"", 1);
  cssOpen_ = false;
}

void KHtmlWriterArchive::EnsureEndCss() {
  if (!cssOpen_) return;
  if (cssInBlock_) {
    EndCssBlock();
  } else {
    EndCssStyle();
  }
}

void KHtmlWriterArchive::WriteCssProp(std::string_view name, std::string_view value) {
  const bool done = !cssInBlock_ && (cssOpen_ ? WriteQuickly(name, ":", value, ";")
                                              : WriteQuickly(" style=\"", name, ":", value, ";"));
  if (!done) return WriteCssProp(name, value, {});
  cssOpen_ = true;
}

void KHtmlWriterArchive::WriteCssProp(std::string_view name, std::string_view value, std::string_view quote) {
  if (!cssOpen_) StartCssStyle();
  WriteAll({name, ":", quote, value, quote, ";"});
  if (cssInBlock_) PutNewLine();
}

void KHtmlWriterArchive::AddCssProp(const char* name, const wchar_t* value, const char* quote) {
  AddCssProp(name, std::string_view(Narrow(value, -1)), quote);
}

void KHtmlWriterArchive::AddCssProp(const char* name, const unsigned short* value, const char* quote) {
  AddCssProp(name, std::string_view(Narrow(value)), quote);
}

// The file.

Status KHtmlWriterArchive::Open(const wchar_t* path) {
  return OpenFile(path);
}

Status KHtmlWriterArchive::Open(const char* path) {
  return OpenFile(path);
}

/// A file that is still open gets what is its own first.
template <class Path>
Status KHtmlWriterArchive::OpenFile(const Path* path) {
  Close();
  const bool first = !file_;
  if (first) file_ = std::make_unique<DsWriteArchive>(files_);
  if (path && file_->open(path)) {
    capacity_ = kBufferSize;
    return Status::kOk;
  }
  if (first) file_.reset();
  return Status::kNothing;
}

void KHtmlWriterArchive::Close() {
  if (!file_) return;
  WriteOut();
  file_->close();
  capacity_ = 0;
}

void KHtmlWriterArchive::_Put(const char* data, int length) {
  if (data && length > 0) Write(data, static_cast<size_t>(length));
}

void KHtmlWriterArchive::WriteAll(std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) Write(text);
}

/// What did not fit: fills the buffer up and begins it anew, or goes past it.
void KHtmlWriterArchive::WriteSlowly(const char* data, size_t length) {
  if (capacity_ == 0) return;
  if (length > kBufferSize) {
    WriteOut();
    file_->put(data, static_cast<unsigned int>(length));
    writtenOut_ += length;
    return;
  }
  const size_t fits = capacity_ - used_;
  std::memcpy(buffer_ + used_, data, fits);
  used_ = capacity_;
  WriteOut();
  std::memcpy(buffer_, data + fits, length - fits);
  used_ = static_cast<uint32_t>(length - fits);
}

void KHtmlWriterArchive::WriteOut() {
  if (used_ > 0) file_->put(buffer_, used_);
  writtenOut_ += used_;
  used_ = 0;
}
