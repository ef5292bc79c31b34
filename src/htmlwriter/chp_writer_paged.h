#pragma once

#include "htmlwriter/chp_writer.h"

namespace pagerex {

/// The views that cut the text into pages by counting characters, each source character as one.
class KChpMulpageBase : public virtual KChpBase {
 public:
  Status Write(unsigned int index) override;
  Status WriteChpContent() override;
  Status WriteChpContent(uint32_t start, uint32_t end) override;

 private:
  bool mayChangePage() const;
  Status ChangePage();
};

/// View "phone": no notes, no drawn objects.
class KHtmlChpWriterPhone : public KChpMulpageBase {
 public:
  bool ProcessField() override { return ProcessMarks(true); }

 protected:
  void OnObjectMark(uint16_t mark, uint32_t cp) override {
    if (mark == text_mark::kPicture) WritePicture(cp, false);
  }
};

/// View "mulpages": the paging of one side, the notes and objects of the other, over one state of the run.
class KHtmlChpWriterMulpages : public KChpMulpageBase, public KChpNormalBase {};

/// View "preview": bare text up to the page size.
class KHtmlChpWriterPreview : public KChpBase {
 public:
  Status Write(unsigned int index) override;
  bool ProcessField() override { return ProcessMarks(false); }
  Status WriteChpContent() override;
  Status WriteChpContent(uint32_t start, uint32_t end) override;
  void BeginChp() override {}
  void EndChp() override {}
  Status WriteHyperLinkBegin() override { return Status::kOk; }

 private:
  Status WriteUpToLimit();
};

}  // namespace pagerex
