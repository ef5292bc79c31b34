#include "support/html_of.h"

#include "formats/html/page_frame.h"

namespace support {

using namespace pagerex;

std::string KeptBlocks::whole() const {
  std::string all;
  for (const std::string& piece : pieces) all += piece;
  return all;
}

std::string ToldPage::whole() const {
  return pageHead(frame, baseRules + rules) + blocks + std::string(kPageEnd);
}

ToldPage pageOf(const Script& inside, const Script& behind, const PageChoices& choices) {
  ToldPage page;
  KeptBlocks blocks(choices.pieceSize);
  StyleSheet sheet(&page.warnings);
  const std::unique_ptr<PictureOutput> none = makeNoPictures(nullptr);
  HtmlWriter writer(blocks, sheet, choices.options, choices.pictures ? *choices.pictures : *none,
                    &page.warnings);
  FlowScript script(writer);
  if (choices.facts) choices.facts(script);
  script.Document([&] { inside(script); },
                  [&] {
                    if (behind) behind(script);
                  });
  page.blocks = blocks.whole();
  page.baseRules = writer.BaseRules(choices.darkScheme);
  page.rules = sheet.TakeRules();
  page.frame = writer.frame();
  return page;
}

}  // namespace support
