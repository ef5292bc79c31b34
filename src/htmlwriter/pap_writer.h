#pragma once

#include "htmlwriter/env.h"
#include "htmlwriter/list_level_writer.h"
#include "htmlwriter/table_writer.h"
#include "htmlwriter/writer_interfaces.h"
#include "wordreader/plcf.h"

namespace pagerex {

/// Turns one entry of the paragraph table into a "p" element and hands its runs to the run writer.
/// A paragraph writer serves one walk over its sub-document, from the beginning to the end.
class KPapBase : public IPapWriter {
 public:
  /// kInvalidArgument for a null `env`, which is not owned.
  virtual Status Init(KEnv* env);

  Status BreakPap() override { return EndPap(); }
  Status ContinuePap() override { return StartPap(); }

  /// The runs [first, last) of a range of positions, searched from where the search before ended. kFailure if
  /// there are none.
  Status SearchChp(const KDWRange& range, unsigned int& first, unsigned int& last);

 protected:
  Status StartPap();
  Status EndPap();
  /// Style class and direct properties of the paragraph.
  void WritePapxs();
  /// The same, not written for this list before; tells what the paragraph needs besides.
  void WriteAttributes(SpelledParagraph& paragraph);

  /// Makes paragraph `index` the current one. kNothing if there is none or if it lies outside the stream.
  Status EnterPap(unsigned int index);
  /// The whole paragraph as an element.
  Status WriteElement(unsigned int index);
  /// Called before the paragraph's element is opened; a failure ends the paragraph unwritten.
  virtual Status ChoosePage() { return Status::kOk; }

  KEnv* env_ = nullptr;
  KWorkLimits* limits_ = nullptr;

 private:
  void StartTitle();
  void WriteAutoNum();
  bool FindFirstChp(const KDWRange& range, unsigned int& first);
  Status WriteRuns(unsigned int first, unsigned int last);

  bool hasList_ = false;  ///< the paragraph's direct properties hold both a list number and a level
  KHtmlTableWriter tableWriter_;
  uint32_t chpCursor_ = 0;
  KHtmlListLevelWriter listWriter_;
};

/// View "normal", and every nested story.
class KHtmlPapWriterNormal : public KPapBase {
 public:
  Status Write(unsigned int index) override { return WriteElement(index); }
};

/// Views "phone" and "mulpages": decides whether a paragraph starts a new page.
class KPapMulpageBase : public KPapBase {
 public:
  Status Write(unsigned int index) override { return WriteElement(index); }

 protected:
  Status ChoosePage() override;
};

/// View "preview": the runs alone, no element.
class KHtmlPapWriterPreview : public KPapBase {
 public:
  Status Write(unsigned int index) override;
};

/// Whether two closed ranges overlap or touch.
bool HasIntersection(const KDWRange& a, const KDWRange& b);

}  // namespace pagerex
