#include "wordreader/style_merger.h"

#include <algorithm>

#include "wordreader/document.h"
#include "wordreader/style_sheet.h"

namespace {

constexpr int kNoStyle = -1;

int BaseOf(const KDRStyle& style) {
  return style.GetBaseStyle() == mso_word::kNoBaseStyle ? kNoStyle : style.GetBaseStyle();
}

/// A property group's bytes behind its size word.
ByteView GroupContent(ByteView group) {
  return group.part(2, group.u16(0));
}

/// A paragraph group's sprms, behind the size word and the style index. The list is taken four bytes longer
/// than it is, as far as the sheet goes: the walk looks at the first two words of what follows.
KDWSprmList PapxSprms(ByteView group) {
  return KDWSprmList(group.part(4, size_t{group.u16(0)} + 2));
}

}  // namespace

template <class Span, class Paragraph>
Status StyleSheetMerger<Span, Paragraph>::Init(const KDRDocument* document) {
  if (!document) return Status::kInvalidArgument;
  Init(document->GetStyleSheet(), &document->GetListTable(), document);
  return Status::kOk;
}

template <class Span, class Paragraph>
void StyleSheetMerger<Span, Paragraph>::Init(const KDRStyleSheet& styles, const KDRListTable* lists,
                                             const KDRDocument* document) {
  *this = StyleSheetMerger();
  styles_ = &styles;
  lists_ = lists;
  document_ = document;
  defaultChpx_.rgftc[0] = styles.get_DefaultFont_ASCII();
  defaultChpx_.rgftc[1] = styles.get_DefaultFont_FarEast();
  defaultChpx_.rgftc[2] = styles.get_DefaultFont_Complex();
}

template <class Span, class Paragraph>
const Paragraph* StyleSheetMerger<Span, Paragraph>::GetMergedPapx(int istd) {
  const auto apply = [this](ByteView group, Paragraph* record, const Paragraph* base) {
    Sprms2MaskParaPr(PapxSprms(group), record, base, lists_, document_);
  };
  return Resolve(paragraphs_, defaultPapx_, &KDRStyle::GetPapx, istd, apply);
}

template <class Span, class Paragraph>
const Span* StyleSheetMerger<Span, Paragraph>::GetMergedChpx(int istd) {
  return ResolveChpx(characterStyles_, istd);
}

template <class Span, class Paragraph>
const Span* StyleSheetMerger<Span, Paragraph>::GetMergedChpxAtPStyle(int istd) {
  return ResolveChpx(paragraphStyleSpans_, istd);
}

template <class Span, class Paragraph>
void StyleSheetMerger<Span, Paragraph>::GetMergedChpxAll(Span& out, int charStyle, int paraStyle) {
  const Span* base =
      paraStyle == mso_word::kNoCharacterStyle ? &defaultChpx_ : GetMergedChpxAtPStyle(paraStyle);
  if (base) out = *base;
  if (charStyle == mso_word::kNoCharacterStyle) return;

  // Once merged, the character style's own list is laid over again, so that its toggles work against the
  // paragraph style: bold on bold is not bold.
  out.OverwriteByAnother(GetMergedChpx(charStyle));
  KDWSprmList sprms;
  GetChpxSprms(&sprms, charStyle);
  Sprms2MaskSpanPr(sprms, &out, base);
}

template <class Span, class Paragraph>
const Span* StyleSheetMerger<Span, Paragraph>::ResolveChpx(PropList<Span>& cache, int istd) {
  const auto apply = [](ByteView group, Span* record, const Span* base) {
    Sprms2MaskSpanPr(KDWSprmList(GroupContent(group)), record, base);
  };
  return Resolve(cache, defaultChpx_, &KDRStyle::GetChpx, istd, apply);
}

/// The merged record of a style; null if the style has no such group. A base without a group brings nothing.
/// A style that the chain of bases meets again counts as having no base.
template <class Span, class Paragraph>
template <class T, class Apply>
const T* StyleSheetMerger<Span, Paragraph>::Resolve(PropList<T>& cache, const T& top, GroupGetter group,
                                                    int istd, const Apply& apply) {
  const auto merge = [&](int style, const T* base) {
    T* record = cache.GetProp(style, true);
    if (base) *record = *base;
    apply(FindGroup(group, style), record, base);
  };

  // Up the chain, as far as there is a group and no record yet. Making the records on the way marks it.
  resolving_.clear();
  int style = istd;
  while (!FindGroup(group, style).empty() && !cache.GetProp(style, false)) {
    cache.GetProp(style, true);
    resolving_.push_back(style);
    style = BaseOf(*FindStyle(style));
  }
  const bool endless = std::find(resolving_.begin(), resolving_.end(), style) != resolving_.end();
  if (endless) merge(style, &top);

  // Down again, each style over its base, which is complete by now.
  for (auto i = resolving_.rbegin(); i != resolving_.rend(); ++i) {
    if (endless && *i == style) continue;
    const int base = BaseOf(*FindStyle(*i));
    merge(*i, base == kNoStyle ? &top : cache.GetProp(base, false));
  }
  return cache.GetProp(istd, false);
}

template <class Span, class Paragraph>
ByteView StyleSheetMerger<Span, Paragraph>::GetPapx(int istd) const {
  return GroupContent(FindGroup(&KDRStyle::GetPapx, istd));
}

template <class Span, class Paragraph>
ByteView StyleSheetMerger<Span, Paragraph>::GetChpx(int istd) const {
  return GroupContent(FindGroup(&KDRStyle::GetChpx, istd));
}

template <class Span, class Paragraph>
Status StyleSheetMerger<Span, Paragraph>::GetChpxSprms(KDWSprmList* out, int istd) const {
  const ByteView group = FindGroup(&KDRStyle::GetChpx, istd);
  out->Assign(GroupContent(group));
  return group.empty() ? Status::kFailure : Status::kOk;
}

template <class Span, class Paragraph>
const KDRStyle* StyleSheetMerger<Span, Paragraph>::FindStyle(int istd) const {
  const KDRStyle* style = nullptr;
  if (styles_ && istd >= 0) styles_->GetStyle(static_cast<unsigned int>(istd), &style);
  return style;
}

template <class Span, class Paragraph>
ByteView StyleSheetMerger<Span, Paragraph>::FindGroup(GroupGetter group, int istd) const {
  const KDRStyle* style = FindStyle(istd);
  return style ? (style->*group)() : ByteView();
}

template <class T>
T* PropList<T>::GetProp(int i, bool create) {
  if (i < 0) return nullptr;
  const auto index = static_cast<size_t>(i);
  if (create) {
    EnsureSize(i + 1);
    if (!props_[index]) props_[index] = std::make_unique<T>();
  }
  return index < props_.size() ? props_[index].get() : nullptr;
}

template <class T>
void PropList<T>::EnsureSize(int count) {
  const auto size = static_cast<size_t>(std::max(count, 0));
  if (size > props_.size()) props_.resize(size);
}

template class PropList<KDRSpanProp>;
template class PropList<KDRParagraphProp>;
template class StyleSheetMerger<KDRSpanProp, KDRParagraphProp>;
