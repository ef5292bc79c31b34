#include "htmlwriter/spelled_properties.h"

namespace pagerex {

SpelledRun& KSpelledProperties::Run(ByteView list) {
  SpelledRun& run = runs_.Find(list.data(), [list](const SpelledRun& known) { return known.IsFor(list); });
  if (run.isDecoded) return run;
  const KDWSprmList sprms(list);
  run.list = list;
  run.istd = sprms.GetCharIstd();
  Sprms2SpanProp(sprms, &run.properties);
  run.isDecoded = true;
  return run;
}

}  // namespace pagerex
