#include "htmlwriter/spelled_properties.h"

namespace pagerex {

SpelledRun& KSpelledProperties::Run(ByteView list) {
  SpelledRun& run = runs_.SlotOf(list.data());
  if (run.isDecoded && run.list.data() == list.data() && run.list.size() == list.size()) return run;
  const KDWSprmList sprms(list);
  run.isDecoded = false;
  run.list = list;
  run.istd = sprms.GetCharIstd();
  run.properties.Reset();
  Sprms2SpanProp(sprms, &run.properties);
  run.attributes.clear();
  run.isDecoded = true;
  return run;
}

}  // namespace pagerex
