#include "formats/html/html_format.h"

#include <algorithm>
#include <cstdlib>

#include "formats/flow_format.h"
#include "formats/html/html_writer.h"
#include "formats/html/page_spool.h"

namespace pagerex {
namespace {

std::string folderOf(const FormatJob& job) {
  return job.mainName.substr(0, job.mainName.rfind('.')) + ".files";
}

std::unique_ptr<PictureOutput> picturesFor(FormatJob& job) {
  const uint64_t mostBytes = 32 * job.inputBytes + (64 << 20);
  // Metafiles, which lie deflated in a document, become some eight times as long.
  const uint64_t mostEmbedded = 32 * job.inputBytes + (1 << 20);
  if (job.pictures == PAGEREX_PICTURES_NONE) return makeNoPictures(&job.warnings);
  if (job.pictures == PAGEREX_PICTURES_FILES)
    return makePictureFiles(job.files, folderOf(job), &job.warnings, mostBytes);
  return makeHeldPictures(mostEmbedded, &job.warnings);
}

/// The count of bytes that are a character to be read at the begin of `bytes`; 0 for a control, and for what
/// is no UTF-8.
size_t characterIn(std::string_view bytes) {
  const auto at = [bytes](size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u; };
  const unsigned first = at(0), second = at(1);
  const auto goesOn = [](unsigned byte) { return (byte & 0xC0) == 0x80; };
  if (first < 0x80) return first >= 0x20 && first != 0x7F;
  if (first < 0xC2 || first > 0xF4 || !goesOn(second)) return 0;
  if (first < 0xE0) return first == 0xC2 && second < 0xA0 ? 0 : 2;
  const bool isTooLong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
  const bool isOutside = (first == 0xED && second >= 0xA0) || (first == 0xF4 && second >= 0x90);
  if (isTooLong || isOutside || !goesOn(at(2))) return 0;
  const unsigned third = at(2);
  const bool isNoCharacter =
      first == 0xEF && ((second == 0xB7 && third >= 0x90 && third < 0xB0) ||
                        (second == 0xBB && third == 0xBF) || (second == 0xBF && third >= 0xBE));
  if (first < 0xF0) return isNoCharacter ? 0 : 3;
  return goesOn(at(3)) ? 4 : 0;
}

/// A file's name need not be text.
std::string readableUtf8(std::string_view name) {
  std::string text;
  while (!name.empty()) {
    const size_t count = characterIn(name);
    text += count > 0 ? name.substr(0, count) : "_";
    name.remove_prefix(std::max<size_t>(count, 1));
  }
  return text.empty() ? "_" : text;
}

/// A document without a title goes by the name of its page.
PageFrame titled(PageFrame frame, const FormatJob& job) {
  if (frame.title.empty()) {
    const size_t slash = job.mainName.rfind('/');
    const std::string name = job.mainName.substr(slash == std::string::npos ? 0 : slash + 1);
    appendAttribute(frame.title, readableUtf8(name.substr(0, name.rfind('.'))));
  }
  return frame;
}

/// Writes markup in which marks stand for pictures that are held.
class WithPictures {
 public:
  WithPictures(const PictureOutput& pictures, Utf8Output& out) : pictures_(pictures), out_(out) {}

  void Put(std::string_view markup) {
    while (!markup.empty()) {
      const size_t mark = markup.find(kHeldMark);
      const std::string_view before = markup.substr(0, mark);
      isInMark_ ? static_cast<void>(number_ += before) : out_.Put(before);
      if (mark == std::string_view::npos) return;
      if (isInMark_) pictures_.WriteHeld(std::strtoull(number_.c_str(), nullptr, 10), out_);
      number_.clear();
      isInMark_ = !isInMark_;
      markup.remove_prefix(mark + 1);
    }
  }

 private:
  const PictureOutput& pictures_;
  Utf8Output& out_;
  bool isInMark_ = false;
  std::string number_;  ///< as far as it has come
};

/// The whole page, when its style sheet is known.
class WholePage final : public BlockSink {
 public:
  void Take(std::string_view markup) override { spool_.Add(markup); }
  void WriteTo(Utf8Output& out, const PictureOutput& pictures) {
    WithPictures page(pictures, out);
    spool_.WriteTo([&page](std::string_view markup) { page.Put(markup); });
  }

 private:
  PageSpool spool_;
};

/// Pieces of the page, each as soon as it is done.
class PagePieces final : public BlockSink {
 public:
  PagePieces(FormatJob& job, const PictureOutput& pictures)
      : job_(job), pictures_(pictures), out_(job.files) {}

  void Begin(HtmlWriter& writer, StyleSheet& sheet) {
    writer_ = &writer;
    sheet_ = &sheet;
  }
  void Take(std::string_view markup) override { piece_.Add(markup); }
  bool WantsEnd(uint64_t characters) const override {
    return characters >= static_cast<uint64_t>(job_.wantedPageSize);
  }
  void EndPiece() override { Write(""); }
  void EndPage() { Write(kPageEnd); }
  int count() const { return count_; }

 private:
  void Write(std::string_view end) {
    const std::string name =
        ++count_ == 1 ? job_.mainName : folderOf(job_) + "/" + std::to_string(count_) + ".html";
    std::string rules = sheet_->TakeRules();
    if (count_ == 1) {
      PageFrame frame = titled(writer_->frame(), job_);
      frame.showsOwnStyleOnly = false;
      rules = pageHead(frame, writer_->BaseRules(job_.choices.darkScheme) + rules);
    } else if (!rules.empty()) {
      rules = "<style>" + rules + "</style>\n";
    }
    // What is written while no file is open goes nowhere.
    out_.Open(name.c_str());
    out_.Put(rules);
    WithPictures piece(pictures_, out_);
    piece_.WriteTo([&piece](std::string_view markup) { piece.Put(markup); });
    out_.Put(end);
    out_.Close();
    if (failed(job_.listener.PageFinished(count_, name.c_str()))) job_.control.Stop(StopCause::kCanceled);
  }

  FormatJob& job_;
  const PictureOutput& pictures_;
  Utf8Output out_;
  HtmlWriter* writer_ = nullptr;
  StyleSheet* sheet_ = nullptr;
  PageSpool piece_;
  int count_ = 0;
};

}  // namespace

Status writeHtml(FormatJob& job) {
  const HtmlOptions options{.comments = job.choices.comments, .links = job.links};
  const std::unique_ptr<PictureOutput> pictures = picturesFor(job);
  StyleSheet sheet(&job.warnings);
  if (job.wantedPageSize > 0) {
    PagePieces pieces(job, *pictures);
    HtmlWriter writer(pieces, sheet, options, *pictures, &job.warnings);
    pieces.Begin(writer, sheet);
    walkFor(job, writer);
    pieces.EndPage();
    job.written.pages = static_cast<uint64_t>(pieces.count());
  } else {
    Utf8Output out(job.files);
    if (!out.Open(job.mainName.c_str())) return Status::kFailure;
    WholePage page;
    HtmlWriter writer(page, sheet, options, *pictures, &job.warnings);
    walkFor(job, writer);
    out.Put(
        pageHead(titled(writer.frame(), job), writer.BaseRules(job.choices.darkScheme) + sheet.TakeRules()));
    page.WriteTo(out, *pictures);
    out.Put(kPageEnd);
    job.written.pages = 1;
  }
  job.written.pictures = pictures->pictures();
  return Status::kOk;
}

}  // namespace pagerex
