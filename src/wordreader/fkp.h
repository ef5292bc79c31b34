#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

#include "base/byte_view.h"
#include "base/status.h"
#include "wordreader/plcf.h"

class KDRDocument;

constexpr uint32_t kFkpPageSize = 512;
constexpr uint32_t kNoFkpIndex = 0xFFFFFFFF;

/// A run's properties in a page: a size byte, then the list.
struct KDRFkpChpx {
  /// The list that `propx` begins with, cut where the page ends.
  static ByteView List(ByteView propx) { return propx.part(1, propx.u8(0)); }
};

/// A paragraph's properties in a page: a count of words `cw`, less half a word, then the list; where `cw` is
/// 0 the count stands in the byte behind it. The list begins with the 16-bit style index.
struct KDRFkpPapx {
  static ByteView List(ByteView propx) {
    const uint32_t cw = propx.u8(0);
    return cw != 0 ? propx.part(1, 2 * cw - 1) : propx.part(2, 2 * size_t{propx.u8(1)});
  }
};

/// A formatted disk page: stream offsets, and at each a word offset to the properties in the page.
/// A view of the page's 512 bytes. `Bx` is the record, whose first byte is that offset.
template <class Propx, class Bx>
class KDRPlcfFkp : public KDRPlcf<Bx, 0> {
 public:
  struct ItemType {
    KDWRange range;  ///< stream offsets
    ByteView sprms;  ///< empty if the entry has no properties
  };

  /// Takes the page, whose last byte is the count of entries.
  void Read(ByteView page) {
    page_ = page;
    this->AssignCounted(page, page.u8(kFkpPageSize - 1));
  }
  /// Zeros outside the page.
  ItemType Item(uint32_t i) const { return {this->Range(i), _GetPropx(i)}; }

 private:
  ByteView _GetPropx(uint32_t i) const {
    const size_t wordOffset = this->RecordBytes(i, sizeof(Bx)).u8(0);
    return wordOffset != 0 ? Propx::List(page_.part(wordOffset * 2)) : ByteView();
  }

  ByteView page_;
};

/// An entry of a `_KDRFkpx`. With either index kNoFkpIndex it denotes no entry.
template <class Fkpx>
class _KDRPlcfFkpIterator {
 public:
  _KDRPlcfFkpIterator(const Fkpx* owner, uint32_t fkp, uint32_t propx)
      : owner_(owner), fkp_(fkp), propx_(propx) {}

  /// Index of the page, and of the entry within it.
  uint32_t GetFkpIndex() const { return fkp_; }
  uint32_t GetPropxIndex() const { return propx_; }

  /// To the next entry, which may be in the next page; behind the last one to no entry.
  _KDRPlcfFkpIterator& operator++() {
    if (propx_ + 1 < owner_->GetFkp(fkp_).Count()) {
      ++propx_;
    } else if (fkp_ + 1 < owner_->Count()) {
      ++fkp_;
      propx_ = 0;
    } else {
      fkp_ = propx_ = kNoFkpIndex;
    }
    return *this;
  }
  /// By owner, then by index; an iterator that denotes no entry is above all.
  bool operator<=(const _KDRPlcfFkpIterator& other) const {
    if (fkp_ == kNoFkpIndex || propx_ == kNoFkpIndex) return false;
    if (owner_ != other.owner_) return std::less<>()(owner_, other.owner_);
    return fkp_ != other.fkp_ ? fkp_ < other.fkp_ : propx_ <= other.propx_;
  }

 private:
  const Fkpx* owner_;
  uint32_t fkp_;
  uint32_t propx_;
};

/// All properties of one kind by stream offset: a bin table and the pages that it names.
/// A page is read from "WordDocument" when it is first needed and kept among the last few; what views a page
/// holds until other pages are read. The document must outlive this.
template <class Fkp, class Bin>
class _KDRFkpx : public Bin {
 public:
  using Iterator = _KDRPlcfFkpIterator<_KDRFkpx>;
  using ItemType = typename Fkp::ItemType;

  /// kNothing if the bin table is absent.
  Status Read(const KDRDocument& document);

  /// Page i of the bin table. Throws an int if it lies outside the stream; of a page that the end of the
  /// stream cuts, the rest is zero. It stays until another page is asked for.
  const Fkp& GetFkp(uint32_t i) const {
    if (i != fkpIndex_) TurnTo(i);
    return fkp_;
  }
  /// The entry whose range holds the stream offset `fc`; none if there is none.
  Iterator UpperBound(uint32_t fc) const;
  /// The last entry of the last page; none if there is no page.
  Iterator End() const;

  /// Offsets and properties of an entry; both offsets are -1 if it is out of range.
  ItemType Item(const Iterator& entry) const {
    if (entry.GetFkpIndex() < Bin::Count()) {
      const Fkp& fkp = GetFkp(entry.GetFkpIndex());
      if (entry.GetPropxIndex() < fkp.Count()) return fkp.Item(entry.GetPropxIndex());
    }
    return {{kNoFkpIndex, kNoFkpIndex}, {}};
  }
  /// Bytes of an entry's properties; 0 if it has none or is out of range.
  uint32_t Size(const Iterator& entry) const { return static_cast<uint32_t>(Item(entry).sprms.size()); }

 private:
  struct Page {
    uint32_t number = kNoFkpIndex;  ///< in the stream
    uint8_t bytes[kFkpPageSize];
  };
  /// Text is scanned mostly forwards, so a few pages do; pieces that jump about find theirs again.
  static constexpr uint32_t kPagesKept = 128;

  /// Makes page i the current one.
  void TurnTo(uint32_t i) const;
  ByteView PageBytes(uint32_t pageNumber) const;

  const KDRDocument* document_ = nullptr;
  mutable std::array<std::unique_ptr<Page>, kPagesKept> pages_;  ///< by the low bits of the page number
  mutable uint32_t fkpIndex_ = kNoFkpIndex;                      ///< the current page, which `fkp_` views
  mutable Fkp fkp_;
  mutable uint32_t lastPageCount_ = kNoFkpIndex;  ///< entries of the last page, once known
};

using KDRPapxFkp = KDRPlcfFkp<KDRFkpPapx, mso_word::FKP_BX>;
using KDRChpxFkp = KDRPlcfFkp<KDRFkpChpx, unsigned char>;
using KDRPapxFkps = _KDRFkpx<KDRPapxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_PAPX_BINS>>;
using KDRChpxFkps = _KDRFkpx<KDRChpxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_CHPX_BINS>>;

extern template class _KDRFkpx<KDRPapxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_PAPX_BINS>>;
extern template class _KDRFkpx<KDRChpxFkp, KDRPlcf<uint32_t, mso_word::FCLCB_CHPX_BINS>>;
