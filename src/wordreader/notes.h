#pragma once

#include <cstdint>

#include "base/status.h"
#include "wordreader/plcf.h"

/// Where the footnotes of the main text are referred to, and where their texts lie in the footnote
/// sub-document.
class KDRFootnotes {
 public:
  using Positions = KDRPlcf<int16_t, mso_word::FCLCB_FOOTNOTE_REFS>;
  using TextRanges = KDRPlcf<void, mso_word::FCLCB_FOOTNOTE_TEXT>;

  Status Read(const KDRDocument& document);
  const Positions& GetPositions() const { return positions_; }
  const TextRanges& GetTextRanges() const { return textRanges_; }

 private:
  Positions positions_;
  TextRanges textRanges_;
};

/// The same for endnotes and the endnote sub-document.
class KDREndnotes {
 public:
  using Positions = KDRPlcf<int16_t, mso_word::FCLCB_ENDNOTE_REFS>;
  using TextRanges = KDRPlcf<void, mso_word::FCLCB_ENDNOTE_TEXT>;

  Status Read(const KDRDocument& document);
  const Positions& GetPositions() const { return positions_; }
  const TextRanges& GetTextRanges() const { return textRanges_; }

 private:
  Positions positions_;
  TextRanges textRanges_;
};
