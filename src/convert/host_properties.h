#pragma once

#include <vector>

#include "convert/host_texts.h"
#include "flow/handler.h"
#include "pagerex/walk.h"

namespace pagerex {

pagerex_colour hostColour(const Colour& colour);
pagerex_border hostBorder(const Border& border);
pagerex_shading hostShading(const Shading& shading);
pagerex_date hostDate(uint32_t dttm);
pagerex_change hostChange(const Revision& revision);

/// The names that properties refer to by number. Not owned, and null where nobody tells them.
struct HostNames {
  const StyleNames* styles = nullptr;
  const ToldFonts* fonts = nullptr;

  std::u16string_view Style(uint16_t istd) const { return styles ? styles->NameOf(istd) : u""; }
  std::u16string_view Font(uint16_t ftc) const { return fonts ? fonts->NameOf(ftc) : u""; }
};

/// Properties of text for a host. They are spelled anew when they differ from the last ones.
class HostRun {
 public:
  /// Valid until the next call.
  const pagerex_run* Of(const RunProperties& properties, const HostNames& names);

 private:
  void SpellNames(const RunProperties& properties, const HostNames& names);

  bool isKnown_ = false;
  RunProperties last_;
  pagerex_run told_{};
  HostTexts texts_;
};

/// The same of paragraphs, without what they are.
class HostParagraph {
 public:
  void Fill(const ParagraphProperties& from, pagerex_paragraph& to);

 private:
  std::vector<pagerex_tab_stop> tabs_;
};

}  // namespace pagerex
