#pragma once

#include "base/write_archive.h"
#include "htmlwriter/env.h"
#include "htmlwriter/writer_interfaces.h"

namespace pagerex {

/// Owns the numbered page files of the main text: opens and frames each, walks the sections, and talks to the
/// host.
class KPagesBase : public IPagesWriter {
 public:
  /// Makes itself the `startNewPage` of `env`, which is not owned. kInvalidArgument for a null `env`.
  Status Init(KEnv* env);

  /// Writes the whole main text. kStopped when the host stops behind the last page.
  Status Write() override;
  int GetPageCount() override { return pageIndex_; }
  Status StartNewPage(bool continueSection) override;

  virtual Status StartPage();
  /// kStopped when the host stops.
  virtual Status ClosePage();

 protected:
  KEnv* env_ = nullptr;

 private:
  void WritePendingNotes();
  Status WaitForHost();

  int pageIndex_ = 0;
  bool pageOpen_ = false;
};

/// The preview: one bare fragment in the main HTML file.
class KHtmlPagesWriterPreview : public KPagesBase {
 public:
  Status Write() override;
  Status StartNewPage(bool) override { return Status::kOk; }
  Status StartPage() override { return Status::kOk; }
  Status ClosePage() override { return Status::kOk; }
};

}  // namespace pagerex
