#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/status.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/span_prop.h"

class KDRDocument;
class KDRListTable;
class KDRStyleSheet;

/// Merged records by style index, made on demand and owned.
template <class T>
class PropList {
 public:
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

  /// The style's own property group, behind its size word; empty if it has none.
  ByteView GetPapx(int istd) const;
  ByteView GetChpx(int istd) const;
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
  void GetMergedChpxAll(Span& out, int charStyle, int paraStyle);

 private:
  const KDRDocument* document_ = nullptr;
  const KDRStyleSheet* styles_ = nullptr;
  const KDRListTable* lists_ = nullptr;
  Paragraph defaultPapx_;
  Span defaultChpx_;
  PropList<Span> characterStyles_;
  PropList<Paragraph> paragraphs_;
  PropList<Span> paragraphStyleSpans_;
  std::vector<int> resolving_;  ///< styles on the chain that is being resolved
};

extern template class StyleSheetMerger<KDRSpanProp, KDRParagraphProp>;
using KStyleMerger = StyleSheetMerger<KDRSpanProp, KDRParagraphProp>;
