#pragma once

#include <cstdint>

#include "base/status.h"
#include "wordreader/prop_values.h"
#include "wordreader/sprm_list.h"

/// Character properties as decoded from sprms; the comments name the sprm. Sizes (`hps...`) are in
/// half-points, lengths (`dxa...`) in twips, colours have red in the low byte.
struct __SpanData {
  uint8_t fBold = 0;                            ///< sprmCFBold
  uint8_t fItalic = 0;                          ///< sprmCFItalic
  uint8_t fOutline = 0;                         ///< sprmCFOutline
  uint8_t fSmallCaps = 0;                       ///< sprmCFSmallCaps
  uint8_t fCaps = 0;                            ///< sprmCFCaps
  uint8_t fVanish = 0;                          ///< sprmCFVanish
  uint8_t fStrike = 0;                          ///< sprmCFStrike
  uint8_t fShadow = 0;                          ///< sprmCFShadow
  uint8_t fEmboss = 0;                          ///< sprmCFEmboss
  uint8_t fImprint = 0;                         ///< sprmCFImprint
  uint8_t fDStrike = 0;                         ///< sprmCFDStrike
  uint8_t idctHint = 0;                         ///< sprmCIdctHint
  uint8_t fRMarkDel = 0;                        ///< sprmCFRMarkDel
  uint16_t ibstRMarkDel = 0;                    ///< sprmCIbstRMarkDel
  uint32_t dttmRMarkDel = 0;                    ///< sprmCDttmRMarkDel
  uint8_t fRMark = 0;                           ///< sprmCFRMark
  uint16_t ibstRMark = 0;                       ///< sprmCIbstRMark
  uint32_t dttmRMark = 0;                       ///< sprmCDttmRMark
  mso_word::BRCEX brc = KDRBrc::Nil();          ///< sprmCBrc
  mso_word::SHDEX shd = KDRShd::Normal();       ///< sprmCShd
  uint8_t sfxtText = 0;                         ///< sprmCSfxText
  uint16_t rgftc[3] = {0, 1, 0};                ///< sprmCRgFtc0 to 2: font indexes, ASCII, East Asian, other
  uint16_t hps = 21;                            ///< sprmCHps
  int16_t hpsKern = 0;                          ///< sprmCHpsKern
  uint8_t iss = 0;                              ///< sprmCIss
  uint8_t kul = 0;                              ///< sprmCKul
  uint16_t wCharScale = 100;                    ///< sprmCCharScale
  uint32_t cvUl = mso_word::kAutomaticColour;   ///< sprmCCvUl
  int16_t dxaSpace = 0;                         ///< sprmCDxaSpace
  uint32_t cv = mso_word::kAutomaticColour;     ///< sprmCCv
  uint8_t highlight = 0;                        ///< sprmCHighlight
  int16_t hpsPos = 0;                           ///< sprmCHpsPos
  uint8_t kcd = 0;                              ///< sprmCKcd
  uint8_t fUsePgsu = 1;                         ///< sprmCFUsePgsuSettings
  uint16_t ftcSym = 0;                          ///< sprmCSymbol: font index
  uint16_t xchSym = 0;                          ///< sprmCSymbol: character
  mso_word::ASIANLAYOUT ufel{};                 ///< sprmCFELayout
  uint16_t lidDefault = 0;                      ///< sprmCRgLid0_80, sprmCRgLid0
  uint16_t lidFE = 0;                           ///< sprmCRgLid1_80, sprmCRgLid1
  uint8_t fSpec = 0;                            ///< sprmCFSpec
  uint16_t istd = mso_word::kNoCharacterStyle;  ///< sprmCIstd
  uint8_t fOle2 = 0;                            ///< sprmCFOle2
};

struct __SpanDataMask {
  uint8_t bytes[6] = {};
};

/// Where the presence bit of each field of the record stands.
namespace span_mask {
constexpr PropMask fBold{0, 0x01};
constexpr PropMask fItalic{0, 0x02};
constexpr PropMask fOutline{0, 0x04};
constexpr PropMask fSmallCaps{0, 0x08};
constexpr PropMask fCaps{0, 0x10};
constexpr PropMask fVanish{0, 0x20};
constexpr PropMask fStrike{0, 0x40};
constexpr PropMask fShadow{0, 0x80};
constexpr PropMask fEmboss{1, 0x01};
constexpr PropMask fImprint{1, 0x02};
constexpr PropMask fDStrike{1, 0x04};
constexpr PropMask idctHint{1, 0x08};
constexpr PropMask fRMarkDel{1, 0x10};
constexpr PropMask ibstRMarkDel{1, 0x20};
constexpr PropMask dttmRMarkDel{1, 0x40};
constexpr PropMask fRMark{1, 0x80};
constexpr PropMask ibstRMark{2, 0x01};
constexpr PropMask dttmRMark{2, 0x02};
constexpr PropMask brc{2, 0x04};
constexpr PropMask shd{2, 0x08};
constexpr PropMask sfxtText{2, 0x10};
constexpr PropMask rgftc0{2, 0x40};
constexpr PropMask rgftc1{2, 0x80};
constexpr PropMask rgftc2{3, 0x01};
constexpr PropMask hps{3, 0x02};
constexpr PropMask hpsKern{3, 0x04};
constexpr PropMask iss{3, 0x08};
constexpr PropMask kul{3, 0x10};
constexpr PropMask wCharScale{3, 0x20};
constexpr PropMask cvUl{3, 0x40};
constexpr PropMask dxaSpace{3, 0x80};
constexpr PropMask cv{4, 0x01};
constexpr PropMask highlight{4, 0x02};
constexpr PropMask hpsPos{4, 0x04};
constexpr PropMask kcd{4, 0x08};
constexpr PropMask fUsePgsu{4, 0x10};
constexpr PropMask symbol{4, 0x20};
constexpr PropMask ufel{4, 0x40};
constexpr PropMask lidDefault{5, 0x01};
constexpr PropMask lidFE{5, 0x02};
constexpr PropMask fSpec{5, 0x08};
constexpr PropMask istd{5, 0x10};
constexpr PropMask fOle2{5, 0x20};
}  // namespace span_mask

/// Character properties of a run or style. A presence bit says that a sprm, not a default, set the field.
struct KDRSpanProp : __SpanData {
  /// dttmRMarkDel and dttmRMark are each followed by a word that no sprm sets and that merging copies.
  uint16_t unusedRMarkDel = 0;
  uint16_t unusedRMark = 0;
  __SpanDataMask mask;

  bool has(PropMask field) const { return (mask.bytes[field.byte] & field.bit) != 0; }
  void setPresent(PropMask field) { mask.bytes[field.byte] |= field.bit; }
  /// Clears the mask and sets the defaults.
  void Reset();
  /// Takes over each field whose presence bit is set in `other`, with its bit; null does nothing.
  void OverwriteByAnother(const KDRSpanProp* other);
};

inline constexpr KDRSpanProp kDefaultSpanProp{};

inline void KDRSpanProp::Reset() {
  *this = kDefaultSpanProp;
}

/// Decodes character sprms over `out`, which is not reset. Toggles are judged against `base`; null means
/// `out`.
Status Sprms2SpanProp(const KDWSprmList& sprms, KDRSpanProp* out, const KDRSpanProp* base = nullptr);
inline Status Sprms2MaskSpanPr(const KDWSprmList& sprms, KDRSpanProp* out,
                               const KDRSpanProp* base = nullptr) {
  return Sprms2SpanProp(sprms, out, base);
}
