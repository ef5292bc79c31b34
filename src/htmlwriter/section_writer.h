#pragma once

#include "base/write_archive.h"
#include "htmlwriter/env.h"
#include "htmlwriter/writer_interfaces.h"
#include "wordreader/section_prop.h"

namespace pagerex {

/// Places a section of the main text on a white sheet as wide as its paper. A small script corrects the
/// sheet's height when the page has loaded.
class KSectionBase : public ISectionWriter {
 public:
  /// kInvalidArgument for a null `env`, which is not owned.
  Status Init(KEnv* env);

  /// Writes section `index` of the section table; what the text stream returned.
  Status Write(unsigned int index) override;
  /// kNothing if no section is open.
  Status BreakSection() override;
  Status ContinueSection() override;

  virtual Status StartSection();
  virtual Status EndSection();

 private:
  void LoadSectionProps();
  Status WriteOffetScript();

  int sectionIndex_ = -1;
  bool sectionOpen_ = false;
  KEnv* env_ = nullptr;
  KDRSectionProp prop_;  ///< of section propIndex_
  int propIndex_ = -1;
};

/// Sections without blocks, for the views "phone" and "preview".
class KHtmlSectionWriterPreview : public KSectionBase {
 public:
  Status StartSection() override { return Status::kOk; }
  Status EndSection() override { return Status::kOk; }
};

/// Width and margins of a section as CSS. kInvalidArgument for a null `archive`.
Status WriteSecProps(IWriteArchive* archive, const KDRSectionProp& prop);
/// The gap between two sheets. kInvalidArgument for a null `archive`.
Status WriteSecSplit(IWriteArchive* archive);

}  // namespace pagerex
