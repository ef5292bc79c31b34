#include "htmlwriter/pap_writer.h"

#include "base/number_text.h"
#include "htmlwriter/css_props.h"
#include "htmlwriter/navigation_writer.h"
#include "story/work_limits.h"
#include "wordreader/list_table.h"

namespace pagerex {

Status KPapBase::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  limits_ = &env->conversion->Limits();
  const Status tables = tableWriter_.Init(env);
  return failed(tables) ? tables : listWriter_.Init(env);
}

Status KPapBase::WriteElement(unsigned int index) {
  const Status entered = EnterPap(index);
  if (entered != Status::kOk) return entered;
  env_->pap.papHasContent = 0;
  const ByteView papx = env_->plcfPap->Data(index)->fkp();
  if (papx.empty()) return Status::kOk;
  env_->pap.papx.AssignPapx(papx);
  StartTitle();
  env_->pap.baseFontSize = GetBaseFontSize(env_, env_->pap.papx.GetParaIstd(), 10.5f);
  if (tableWriter_.Write() == Status::kStopped) return Status::kOk;

  unsigned int first = 0;
  unsigned int last = 0;
  if (failed(SearchChp({env_->pap.papStart, env_->pap.papEnd}, first, last))) return Status::kOk;
  IStartNewPage* const startNewPage = env_->startNewPage;
  const Status page = ChoosePage();
  if (failed(page)) return page;
  StartPap();
  WriteAutoNum();
  const Status status = WriteRuns(first, last);
  EndPap();
  env_->startNewPage = startNewPage;
  if (env_->pap.collectingTitle != 0 && env_->navigation) env_->navigation->EndCollectTitle();
  tableWriter_.EnsureWriteEnd(env_->pap.papEnd - 1);
  return status == Status::kOk || status == Status::kNothing ? Status::kOk : Status::kFailure;
}

/// A heading goes into the navigation tree, whose link leads to an anchor in front of the paragraph.
void KPapBase::StartTitle() {
  if (!env_->navigation) return;
  const uint16_t istd = env_->pap.papx.GetParaIstd();
  env_->pap.collectingTitle = IsTitle(istd);
  if (env_->pap.collectingTitle != 0 && !limits_->AddToNavigation()) env_->pap.collectingTitle = 0;
  if (env_->pap.collectingTitle == 0) return;
  env_->navigation->StartCollectTitle(env_->pap.papStart, istd);
  env_->navigation->WriteTitleAnchor(env_->pap.papStart, env_->conversion->archive);
}

Status KPapBase::EnterPap(unsigned int index) {
  if (!env_) return Status::kInvalidArgument;
  if (index >= env_->plcfPap->Count()) return Status::kNothing;
  const KDWRange range = env_->plcfPap->Range(index);
  if (range.start > range.end || range.start >= env_->streamEnd || env_->streamStart >= range.end) {
    return Status::kNothing;
  }
  if (!limits_->Visit(env_->subDocType, 1) || limits_->OutputFull(*env_->conversion->archive))
    return Status::kNothing;
  env_->pap.papStart = range.start;
  env_->pap.papEnd = range.end;
  env_->pap.papIndex = index;
  if (env_->subDocType == mso_word::SUBDOC_MAIN) env_->conversion->NoteParagraph(range.start, range.end);
  return Status::kOk;
}

Status KPapBase::WriteRuns(unsigned int first, unsigned int last) {
  Status status = Status::kOk;
  for (unsigned int run = first; run < last && !failed(status); ++run) {
    status = env_->writers->chp->Write(run);
  }
  return status;
}

/// The label looks like the paragraph mark, which stands in the paragraph's last run: there the search left
/// the cursor.
void KPapBase::WriteAutoNum() {
  if (!hasList_) return;
  const KDWSprmList sprms(env_->plcfChp->Data(chpCursor_)->fkp());
  const uint16_t istd = sprms.GetCharIstd();
  KDRSpanProp span;
  if (limits_->DecodeShared(env_->conversion->merger->GetChpx(istd).size())) {
    env_->conversion->merger->GetMergedChpxAll(span, istd, env_->pap.papx.GetParaIstd());
  }
  Sprms2SpanProp(sprms, &span);
  listWriter_.Write(&span);
}

Status KPapBase::StartPap() {
  if (!env_) return Status::kInvalidArgument;
  env_->conversion->archive->BeginElement("p");
  WritePapxs();
  return Status::kOk;
}

Status KPapBase::EndPap() {
  if (!env_) return Status::kInvalidArgument;
  env_->conversion->archive->EndElement("p");
  env_->conversion->archive->PutNewLine();
  return Status::kOk;
}

void KPapBase::WritePapxs() {
  KPapEnv& pap = env_->pap;
  IWriteArchive* archive = env_->conversion->archive;
  const ByteView list = env_->plcfPap->Data(pap.papIndex)->fkp();
  SpelledParagraph& paragraph = env_->conversion->spelled.Paragraph(list);
  if (!paragraph.attributes.empty()) {
    archive->_Put(paragraph.attributes.data(), static_cast<int>(paragraph.attributes.size()));
  } else {
    const uint64_t start = archive->GetWrittenBytes();
    WriteAttributes(paragraph);
    paragraph.list = list;
    paragraph.attributes = archive->WrittenSince(start);
  }
  hasList_ = paragraph.isListItem;
  if (hasList_) {
    pap.listIlfo = paragraph.ilfo;
    pap.listIlvl = paragraph.ilvl;
  }
  if (paragraph.setsLineSpacing) pap.lineSpacing = paragraph.lineSpacing;
}

void KPapBase::WriteAttributes(SpelledParagraph& paragraph) {
  constexpr int kNotSet = INT32_MIN;
  const KPapEnv& pap = env_->pap;
  IWriteArchive* archive = env_->conversion->archive;
  const uint16_t istd = pap.papx.GetParaIstd();
  if (istd != mso_word::kNoCharacterStyle) archive->AddAttribute("class", numbered("std", istd).c_str());
  KDRParagraphProp prop;
  Sprms2ParagraphProp(pap.papx, &prop, &env_->conversion->document->GetListTable(),
                      env_->conversion->document);
  paragraph.isListItem = prop.has(paragraph_mask::ilfo) && prop.has(paragraph_mask::ilvl);
  paragraph.ilfo = prop.ilfo;
  paragraph.ilvl = prop.ilvl;
  paragraph.lineSpacing = kNotSet;
  archive->StartCssStyle();
  WritePapProps(&prop, archive, paragraph.lineSpacing);
  archive->EndCssStyle();
  paragraph.setsLineSpacing = paragraph.lineSpacing != kNotSet;
}

bool HasIntersection(const KDWRange& a, const KDWRange& b) {
  return static_cast<int32_t>(a.start) <= static_cast<int32_t>(b.end) &&
         static_cast<int32_t>(b.start) <= static_cast<int32_t>(a.end);
}

/// Touching counts as overlap, so that a run which merely ends where the range begins is stepped over, and
/// one which merely begins where it ends is left out. The cursor stays on the last run: the next range begins
/// its search there.
Status KPapBase::SearchChp(const KDWRange& range, unsigned int& first, unsigned int& last) {
  const KPropxTable& runs = *env_->plcfChp;
  if (!FindFirstChp(range, first)) return Status::kFailure;
  last = first + 1;
  if (runs.Range(first).end != range.end) {
    for (; last < runs.Count(); ++last) {
      const KDWRange run = runs.Range(last);
      if (!HasIntersection(run, range)) break;
      if (run.start == range.end && runs.Range(last - 1).end == range.end) break;
    }
  }
  chpCursor_ = last - 1;
  return Status::kOk;
}

/// Where the runs ascend, those that end before the range need no look. A damaged table is walked, step by
/// counted step.
bool KPapBase::FindFirstChp(const KDWRange& range, unsigned int& first) {
  const KPropxTable& runs = *env_->plcfChp;
  if (chpCursor_ >= runs.Count()) return false;
  const bool ascends = runs.ascends();
  first = ascends ? runs.FirstEndingFrom(range.start, chpCursor_) : chpCursor_;
  for (; first < runs.Count(); ++first) {
    const KDWRange run = runs.Range(first);
    const bool meets = HasIntersection(run, range);
    if (meets && (range.start != run.end || runs.Range(first + 1).start != range.start)) return true;
    if (ascends ? !meets : !limits_->Search(env_->subDocType)) return false;
  }
  return false;
}

/// Keeps a paragraph whole where it ends little above the page size, and opens a page for one that does not
/// fit any more. A longer one begins on this page, and the run writer cuts it.
Status KPapMulpageBase::ChoosePage() {
  if (env_->hyperlinkState != 0 || env_->inTable == 1) return Status::kOk;
  const int64_t length = int64_t{env_->pap.papEnd} - env_->pap.papStart;
  if (env_->page.charCount + length <= static_cast<int64_t>(env_->pageSize * 1.1)) {
    env_->startNewPage = nullptr;
  } else if (env_->startNewPage && env_->page.charCount > static_cast<int64_t>(env_->pageSize * 0.9)) {
    const Status status = env_->startNewPage->StartNewPage(true);
    if (failed(status)) return status;
    env_->page.charCount = 0;
  }
  return Status::kOk;
}

Status KHtmlPapWriterPreview::Write(unsigned int index) {
  const Status entered = EnterPap(index);
  if (entered != Status::kOk) return entered;
  unsigned int first = 0;
  unsigned int last = 0;
  if (failed(SearchChp({env_->pap.papStart, env_->pap.papEnd}, first, last))) return Status::kOk;
  for (unsigned int run = first; run < last; ++run) {
    const Status status = env_->writers->chp->Write(run);
    if (status != Status::kOk) return status;
  }
  return Status::kOk;
}

}  // namespace pagerex
