#pragma once

#include <cstdint>
#include <vector>

#include "base/byte_view.h"
#include "base/chain_allocator.h"
#include "base/status.h"
#include "wordreader/mso_word.h"

class KDRDocument;

namespace mso_word {

/// Kind of a style, and kind of a style's property group.
enum STYLE_SGC : uint8_t {
  SGC_NONE = 0,
  SGC_PARAGRAPH = 1,
  SGC_CHARACTER = 2,
  SGC_TABLE = 3,
  SGC_NUMBERING = 4,  ///< as a kind of style only
};

constexpr uint16_t kNoBaseStyle = 0xFFF;

#pragma pack(push, 1)

/// Fixed part of a style record. A file may hold more or less of it; the header of the sheet tells how much.
struct BASE_STD18 {
  uint16_t unused0;
  uint16_t kindAndBase;  // 2: low 4 bits the kind, the rest the base style, 0xFFF for none
  uint16_t groups;       // 4: low 4 bits the number of property groups
  uint8_t unused6[12];
};
static_assert(sizeof(BASE_STD18) == 18);

/// Header of the style sheet (STSHI).
struct STSHI {
  uint16_t styleCount;
  uint16_t baseSize;  // 2: bytes of the fixed part of a style record
  uint8_t unused4[8];
  uint16_t fontAscii;    // 12: default font
  uint16_t fontFarEast;  // 14
  uint16_t fontComplex;  // 16
};
static_assert(sizeof(STSHI) == 18);

#pragma pack(pop)
}  // namespace mso_word

/// One style of the sheet: a view of its record, which the document's allocator holds.
class KDRStyle {
 public:
  /// `record` begins at the style's record and reaches to the end of the sheet's bytes, so that what follows
  /// the record can be looked at, but nothing outside the sheet.
  KDRStyle(ByteView record, uint16_t istd) : record_(record), istd_(istd) {}

  /// Finds the name and the property groups. `baseSize` is the size of the record's fixed part; `*size`
  /// becomes the bytes that the record uses up by its own counts.
  void Init(unsigned int baseSize, unsigned int* size);

  uint16_t GetIndex() const { return istd_; }
  mso_word::STYLE_SGC GetKind() const {
    return static_cast<mso_word::STYLE_SGC>(fixedPart().kindAndBase & 0xF);
  }
  /// Index of the base style, 0xFFF for none.
  uint16_t GetBaseStyle() const { return fixedPart().kindAndBase >> 4; }
  /// The name's 16-bit characters; empty if it has none.
  ByteView GetName() const { return name_; }

  /// A property group, from its 16-bit size word to the end of the sheet's bytes; empty if the style has no
  /// such group. A paragraph group begins, behind the size word, with the style's own index.
  ByteView GetPapx() const { return papx_; }
  ByteView GetChpx() const { return chpx_; }
  ByteView GetTapx() const { return tapx_; }

  /// What a style of that kind has as its n-th property group.
  static mso_word::STYLE_SGC GetSubSgc(mso_word::STYLE_SGC kind, unsigned int group);

 private:
  mso_word::BASE_STD18 fixedPart() const { return record_.copyOf<mso_word::BASE_STD18>(0); }

  ByteView record_;
  ByteView name_;
  ByteView papx_;
  ByteView chpx_;
  ByteView tapx_;
  uint16_t istd_;
};

/// The style sheet: table 1 of the table stream. Its objects live in the document's allocator.
class KDRStyleSheet {
 public:
  /// kNothing if the document has no style sheet. A damaged sheet keeps the styles in front of the damage.
  Status Read(const KDRDocument& document);
  /// `bytes`, which must stay, are the whole table. kNothing if it has no styles.
  Status ReadRecord(ByteView bytes, ChainAllocator& allocator);

  /// The number of styles by the header; fewer may have been read.
  unsigned int Count() const { return header_.styleCount; }
  /// kFailure, and null, for an empty slot or an index out of range.
  Status GetStyle(unsigned int istd, const KDRStyle** style) const;

  /// Font indexes for text without a font of its own.
  uint16_t get_DefaultFont_ASCII() const { return header_.fontAscii; }
  uint16_t get_DefaultFont_FarEast() const { return header_.fontFarEast; }
  uint16_t get_DefaultFont_Complex() const { return header_.fontComplex; }

 private:
  mso_word::STSHI header_{};
  std::vector<const KDRStyle*> styles_;  ///< by style index, null for an empty slot
};
