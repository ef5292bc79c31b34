#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/status.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/span_prop.h"

class KDRDocument;
class KDRListTable;
class KDRStyle;
class KDRStyleSheet;

/// Merged records by style index, made on demand and owned.
template <class T>
class PropList {
 public:
  /// Makes room for records below `count`; never less room than before.
  void EnsureSize(int count);
  /// The record of style i; made (in its constructor's state) if absent and `create`, else null.
  T* GetProp(int i, bool create);

 private:
  std::vector<std::unique_ptr<T>> props_;
};

/// Resolves style inheritance into decoded records, each computed once.
/// The document must outlive it. A null record means that the style has no properties of that kind.
template <class Span, class Paragraph>
class StyleSheetMerger {
 public:
  /// kInvalidArgument for a null document.
  Status Init(const KDRDocument* document);
  /// The same with the parts named; without lists or document, styles take nothing from list levels.
  void Init(const KDRStyleSheet& styles, const KDRListTable* lists, const KDRDocument* document);

  /// The style's own property group, behind its size word; empty if it has none.
  ByteView GetPapx(int istd) const;
  ByteView GetChpx(int istd) const;
  /// The style's character group as a list; kFailure, and an empty list, if it has none.
  Status GetChpxSprms(KDWSprmList* out, int istd) const;

  /// The records at the top of a chain of bases.
  const Paragraph* GetDefaultPapx() const { return &defaultPapx_; }
  const Span* GetDefaultChpx() const { return &defaultChpx_; }

  /// Paragraph properties with all bases merged in.
  const Paragraph* GetMergedPapx(int istd);
  /// Character properties of a character style.
  const Span* GetMergedChpx(int istd);
  /// Character properties of a paragraph style.
  const Span* GetMergedChpxAtPStyle(int istd);
  /// The character properties in force in a paragraph of one style with a run of another; 0xFFF for no style.
  /// `out` is not reset: it keeps what it holds where a paragraph style has no character properties.
  void GetMergedChpxAll(Span& out, int charStyle, int paraStyle);

 private:
  using GroupGetter = ByteView (KDRStyle::*)() const;

  const KDRStyle* FindStyle(int istd) const;
  ByteView FindGroup(GroupGetter group, int istd) const;
  const Span* ResolveChpx(PropList<Span>& cache, int istd);
  template <class T, class Apply>
  const T* Resolve(PropList<T>& cache, const T& top, GroupGetter group, int istd, const Apply& apply);

  const KDRDocument* document_ = nullptr;
  const KDRStyleSheet* styles_ = nullptr;
  const KDRListTable* lists_ = nullptr;
  Paragraph defaultPapx_;
  Span defaultChpx_;
  PropList<Span> characterStyles_;
  PropList<Paragraph> paragraphs_;
  PropList<Span> paragraphStyleSpans_;
  std::vector<int>
      resolving_;  ///< styles on the chain that is being resolved, each the base of the one before
};

extern template class StyleSheetMerger<KDRSpanProp, KDRParagraphProp>;
using KStyleMerger = StyleSheetMerger<KDRSpanProp, KDRParagraphProp>;
