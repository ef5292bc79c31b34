// Files of text: by the markup that stands first, or as plain text.

#include <algorithm>
#include <string_view>

#include "convert/characters.h"
#include "convert/file_kind.h"

namespace pagerex {

namespace {

constexpr char kHtmlElements[][9] = {
    "html", "head", "body", "title", "meta",   "link", "style", "script", "base",     "table",
    "div",  "p",    "span", "font",  "center", "h1",   "h2",    "h3",     "h4",       "h5",
    "h6",   "hr",   "br",   "pre",   "ul",     "ol",   "form",  "img",    "frameset", "iframe",
};
constexpr std::string_view kWordNamespace = "http://schemas.microsoft.com/office/word/2003/wordml";

bool isBlank(uint16_t c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
bool isHeaderCharacter(uint16_t c) {
  return ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') || (c >= '0' && c <= '9') || c == '-';
}
bool isNameCharacter(uint16_t c) {
  return isHeaderCharacter(c) || c == '_' || c == '.' || c == ':' || c >= 0x80;
}
uint16_t lower(uint16_t c) {
  return c >= 'A' && c <= 'Z' ? static_cast<uint16_t>(c | 0x20) : c;
}

/// Reads the markup at the start of a text, from left to right.
class MarkupReader {
 public:
  explicit MarkupReader(const Characters& text) : text_(text) { skipBlanks(); }

  int kind();

 private:
  struct Range {
    size_t begin, end;
  };

  int kindByRoot();
  bool readProlog();
  bool hasMimeHeaders();
  bool isRootOfHtml(const Range& name) const;
  Range readName();
  void skipBlanks();
  void skipPast(std::string_view end);
  /// Whether the text goes on with this, in whatever case; `what` has small letters only.
  bool standsAt(size_t at, std::string_view what) const;
  bool stands(std::string_view what) const { return standsAt(at_, what); }
  bool equals(const Range& range, std::string_view what) const;
  bool contains(const Range& range, std::string_view what) const;

  const Characters& text_;
  size_t at_ = 0;
  int prologKind_ = PAGEREX_KIND_UNKNOWN;  ///< XML, or more if the prolog tells
};

int MarkupReader::kind() {
  if (stands("{\\rtf")) return PAGEREX_KIND_RTF;
  if (stands("<")) return kindByRoot();
  return hasMimeHeaders() ? PAGEREX_KIND_MHTML : PAGEREX_KIND_UNKNOWN;
}

/// By the first element, unless what stands before it is enough.
int MarkupReader::kindByRoot() {
  if (!readProlog()) return prologKind_;
  ++at_;
  const Range name = readName();
  if (isRootOfHtml(name)) return PAGEREX_KIND_HTML;
  const size_t begin = at_;
  skipPast(">");
  const Range attributes = {begin, at_};
  const bool isWordDocument = equals(name, "worddocument") ||
                              (name.end - name.begin > 13 && standsAt(name.end - 13, ":worddocument"));
  if (isWordDocument && contains(attributes, kWordNamespace)) return PAGEREX_KIND_WORDML;
  if (prologKind_ == PAGEREX_KIND_UNKNOWN && contains(attributes, "xmlns")) return PAGEREX_KIND_XML;
  return prologKind_;
}

/// Declarations, instructions and comments. False if no element follows them.
bool MarkupReader::readProlog() {
  for (;; skipBlanks()) {
    if (stands("<!--")) {
      skipPast("-->");
    } else if (stands("<!doctype")) {
      at_ += 9;
      skipBlanks();
      if (equals(readName(), "html")) {
        prologKind_ = PAGEREX_KIND_HTML;
        return false;
      }
      skipPast(">");
    } else if (stands("<?")) {
      const size_t begin = at_;
      skipPast("?>");
      const Range instruction = {begin, at_};
      if (standsAt(begin, "<?xml") && !isNameCharacter(text_.at(begin + 5)))
        prologKind_ = std::max<int>(prologKind_, PAGEREX_KIND_XML);
      if (standsAt(begin, "<?mso-application") && contains(instruction, "word.document"))
        prologKind_ = PAGEREX_KIND_WORDML;
    } else {
      return stands("<");
    }
  }
}

/// XML may have elements that are called as those of HTML are.
bool MarkupReader::isRootOfHtml(const Range& name) const {
  if (prologKind_ != PAGEREX_KIND_UNKNOWN) return equals(name, "html");
  const uint16_t next = text_.at(name.end);
  if (!isBlank(next) && next != '>' && next != '/') return false;
  return std::any_of(std::begin(kHtmlElements), std::end(kHtmlElements),
                     [&](const char* element) { return equals(name, element); });
}

/// Lines of a name, ":" and a value, which may go on in lines that begin with a blank.
bool MarkupReader::hasMimeHeaders() {
  while (at_ < text_.size()) {
    const bool goesOn = text_.at(at_) == ' ' || text_.at(at_) == '\t';
    if (!goesOn) {
      if (stands("mime-version:")) return true;
      while (isHeaderCharacter(text_.at(at_))) ++at_;
      if (text_.at(at_) != ':') return false;
    }
    skipPast("\n");
  }
  return false;
}

MarkupReader::Range MarkupReader::readName() {
  const size_t begin = at_;
  while (isNameCharacter(text_.at(at_))) ++at_;
  return {begin, at_};
}

void MarkupReader::skipBlanks() {
  while (isBlank(text_.at(at_))) ++at_;
}

void MarkupReader::skipPast(std::string_view end) {
  while (at_ < text_.size() && !stands(end)) ++at_;
  at_ = std::min(at_ + end.size(), text_.size());
}

bool MarkupReader::standsAt(size_t at, std::string_view what) const {
  for (size_t i = 0; i < what.size(); ++i) {
    if (lower(text_.at(at + i)) != static_cast<uint8_t>(what[i])) return false;
  }
  return true;
}

bool MarkupReader::equals(const Range& range, std::string_view what) const {
  return range.end - range.begin == what.size() && standsAt(range.begin, what);
}

bool MarkupReader::contains(const Range& range, std::string_view what) const {
  for (size_t at = range.begin; at + what.size() <= range.end; ++at) {
    if (standsAt(at, what)) return true;
  }
  return false;
}

/// Blanks, escapes and the end mark of DOS files stand in text too.
bool isControl(uint16_t c, bool wide) {
  constexpr std::string_view kInText = "\t\n\v\f\r\x1A\x1B";
  if (c >= ' ') return c == 0x7F || (wide && c >= 0xFFFE);
  return c == 0 || kInText.find(static_cast<char>(c)) == std::string_view::npos;
}

}  // namespace

int markupKind(ByteView file) noexcept {
  const Characters text(file);
  return MarkupReader(text).kind();
}

/// Of a hundred characters no more than two may be ones that are not printed, and none a zero.
int plainTextKind(ByteView file) noexcept {
  constexpr size_t kLookedAt = 4096;
  const Characters text(file);
  const size_t count = std::min(text.size(), kLookedAt);
  size_t controls = 0;
  for (size_t i = 0; i < count; ++i) {
    if (text.at(i) == 0) return PAGEREX_KIND_UNKNOWN;
    if (isControl(text.at(i), text.isWide())) ++controls;
  }
  return controls * 50 <= count ? PAGEREX_KIND_TEXT : PAGEREX_KIND_UNKNOWN;
}

}  // namespace pagerex
