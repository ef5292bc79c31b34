#pragma once

#include <cstdint>
#include <vector>

#include "htmlwriter/bookmark_writer.h"
#include "htmlwriter/env.h"
#include "htmlwriter/note_writer.h"
#include "htmlwriter/writer_interfaces.h"
#include "story/field_state.h"
#include "wordreader/sprm_opcodes.h"
#include "wordreader/text_marks.h"

namespace pagerex {

/// Turns one entry of the run table into a "span" with its class and CSS; or into nothing, when the run
/// belongs to a field code; or into what its special characters stand for. The common base of the run writers
/// of all views.
class KChpBase : public IChpWriter {
 public:
  /// kInvalidArgument for a null `env`, which is not owned.
  virtual Status Init(KEnv* env);
  /// True if the run is consumed: nothing further is written for it.
  virtual bool ProcessField() = 0;
  /// The current run as a whole.
  virtual Status WriteChpContent() = 0;
  /// The text of a part of the run. kNothing for an empty part, kFailure for one outside the run.
  virtual Status WriteChpContent(uint32_t start, uint32_t end) = 0;
  virtual void BeginChp();
  virtual void EndChp();
  virtual Status WriteHyperLinkBegin();

 protected:
  /// Makes run `index` the current one, clamped to the paragraph and the stream, with its text and
  /// properties. kNothing if nothing of it lies there.
  Status EnterRun(unsigned int index);
  /// Goes through a run of special characters, follows the fields, and tells whether the run is consumed.
  /// `links`: hyperlinks come out as anchors.
  bool ProcessMarks(bool links);
  /// A special character that is no field mark.
  virtual void OnObjectMark(uint16_t mark, uint32_t cp);
  /// Writes the inline picture at `cp`, unless the run is hidden.
  void WritePicture(uint32_t cp, bool oleObjects);

  bool isPart(uint32_t start, uint32_t end) const {
    return start < end && start >= runStart_ && end <= runEnd_;
  }
  /// The paragraph is one character long, and it is `mark`.
  bool isWholePap(uint16_t mark) const {
    return env_->pap.papEnd - env_->pap.papStart == 1 && runText_[0] == mark;
  }
  /// Writes part of the run's text as document text.
  void WriteText(uint32_t start, uint32_t end);

  KEnv* env_ = nullptr;
  KWorkLimits* limits_ = nullptr;
  uint32_t runStart_ = 0xFFFFFFFFu;
  uint32_t runEnd_ = 0xFFFFFFFFu;
  std::vector<uint16_t> runText_;  ///< the run's text and a 0; the buffer is used again for each run
  ByteView runList_;               ///< its own properties
  bool isSpecial_ = false;         ///< sprmCFSpec: its characters are marks
  bool isHidden_ = false;          ///< sprmCFVanish
  bool isOleObject_ = false;       ///< sprmCFOle2
  KFieldState fields_;
  bool endsWithPageBreak_ = false;  ///< the character behind the run's last one is a page break

 private:
  /// The class and the CSS of the run.
  void WriteAttributes(const SpelledRun& run);
  void OnFieldBegin(uint32_t cp, bool links);
  void OnFieldEnd(bool links);
};

/// What the views "normal" and "mulpages" share: notes, annotations, drawn objects.
class KChpNormalBase : public virtual KChpBase {
 public:
  Status Init(KEnv* env) override;
  bool ProcessField() override { return ProcessMarks(true); }

 protected:
  void OnObjectMark(uint16_t mark, uint32_t cp) override;

 private:
  KHtmlAnnotationWriter annotations_;
  KHtmlFootEndnoteWriter notes_;
};

/// View "normal", and every nested story.
class KHtmlChpWriterNormal : public KChpNormalBase {
 public:
  Status Init(KEnv* env) override;
  Status Write(unsigned int index) override;
  Status WriteChpContent() override;
  Status WriteChpContent(uint32_t start, uint32_t end) override;

 private:
  void WriteBookmarkAtStart();
  void WriteTextWithBookmarks();

  KHtmlBookmarkWriter bookmarks_;
};

constexpr const char* kEmptyPap = "<o:p>&nbsp;</o:p>";
constexpr const char* kPageBreak = "<br clear=all style='page-break-before:always'>";

}  // namespace pagerex
