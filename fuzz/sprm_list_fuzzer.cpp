// Decodes a list of sprms as properties of a run, a paragraph, a section and a table row.

#include <cstdint>
#include <memory>

#include "base/byte_view.h"
#include "story/table_rows.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/section_prop.h"
#include "wordreader/span_prop.h"
#include "wordreader/sprm_list.h"

namespace {

void walk(ByteView bytes) {
  KDWSprmList list(bytes);
  KDWSprm found;
  KDWSprmList::Enumerator all(list);
  for (KDWSprm sprm; all.Next(&sprm) == Status::kOk;) list.FindSprm(sprm.GetOpcode(), &found);
  list.GetCharIstd();
  KEnumSprmList other;
  other.Assign(bytes);
  for (KSprm sprm; other.Next(sprm) == Status::kOk;) sprm.GetFixOprand();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
  const ByteView bytes(input, size);
  if (size <= 2000) walk(bytes);

  const KDWSprmList list(bytes);
  KDRSpanProp span, spanBase;
  Sprms2SpanProp(list, &spanBase);
  Sprms2SpanProp(list, &span, &spanBase);
  span.OverwriteByAnother(&spanBase);

  KDRParagraphProp paragraph;
  Sprms2ParagraphProp(list, &paragraph, nullptr, nullptr);
  ApplyListPapx(&paragraph, bytes);

  const auto section = std::make_unique<KDRSectionProp>();
  Sprms2ZeloSectionProp(list, section.get());

  pagerex::TABLE_ROW row;
  pagerex::TableStyle style = {};
  pagerex::ReadTableRow(list, 1800, row, style);
  return 0;
}
