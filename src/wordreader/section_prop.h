#pragma once

#include <cstdint>

#include "base/status.h"
#include "wordreader/prop_values.h"
#include "wordreader/sprm_list.h"

namespace mso_word {
#pragma pack(push, 1)
/// A document grid block that some programs store in a section.
struct VtxOperandManuscript {
  uint8_t bytes[19];

  /// Fills in the usual grid.
  constexpr VtxOperandManuscript()
      : bytes{0xD0, 0x2F, 0xE0, 0x3D, 0, 20, 0, 20, 0, 0, 0, 0, 128, 0, 255, 0x02, 0, 0, 0} {}
  static constexpr VtxOperandManuscript Cleared() {
    VtxOperandManuscript cleared;
    for (uint8_t& byte : cleared.bytes) byte = 0;
    return cleared;
  }
};
#pragma pack(pop)
static_assert(sizeof(VtxOperandManuscript) == 19);
}  // namespace mso_word

/// Section properties as decoded from sprms; the comments name the sprm. Lengths are in twips.
struct __SectionData {
  static constexpr unsigned kColumns = 90;
  uint8_t bkc = 2;                              ///< sprmSBkc
  uint8_t fTitlePage = 0;                       ///< sprmSFTitlePage
  uint8_t nfcPgn = 0;                           ///< sprmSNfcPgn
  uint8_t cnsPgn = 0;                           ///< sprmScnsPgn
  uint8_t fPgnRestart = 0;                      ///< sprmSFPgnRestart
  uint8_t fEndnote = 1;                         ///< sprmSFEndnote
  uint8_t fLBetween = 0;                        ///< sprmSLBetween
  uint8_t vjc = 0;                              ///< sprmSVjc
  uint16_t dmBinFirst = 0;                      ///< sprmSDmBinFirst
  uint16_t dmBinOther = 0;                      ///< sprmSDmBinOther
  mso_word::BRCEX brcTopEx = KDRBrc::Nil();     ///< sprmSBrcTop
  mso_word::BRCEX brcBottomEx = KDRBrc::Nil();  ///< sprmSBrcBottom
  mso_word::BRCEX brcLeftEx = KDRBrc::Nil();    ///< sprmSBrcLeft
  mso_word::BRCEX brcRightEx = KDRBrc::Nil();   ///< sprmSBrcRight
  mso_word::BRC brcTop{};                       ///< sprmSBrcTop80
  mso_word::BRC brcBottom{};                    ///< sprmSBrcBottom80
  mso_word::BRC brcLeft{};                      ///< sprmSBrcLeft80
  mso_word::BRC brcRight{};                     ///< sprmSBrcRight80
  mso_word::VtxOperandManuscript manuscript =
      mso_word::VtxOperandManuscript::Cleared();  ///< private document grid block
  int32_t dxtCharSpace = 0;                       ///< sprmSDxtCharSpace
  int16_t dyaLinePitch = 0;                       ///< sprmSDyaLinePitch
  uint16_t clm = 0;                               ///< sprmSClm
  uint8_t dmOrientPage = 0;                       ///< sprmSBOrientation
  uint8_t iHeadingPgn = 0;                        ///< sprmSiHeadingPgn
  uint16_t pgnStart = 1;                          ///< sprmSPgnStart97
  uint16_t wTextFlow = 0;                         ///< sprmSTextFlow
  uint16_t xaPage = 12240;                        ///< sprmSXaPage
  uint16_t yaPage = 15840;                        ///< sprmSYaPage
  uint16_t dxaLeft = 1800;                        ///< sprmSDxaLeft
  uint16_t dxaRight = 1800;                       ///< sprmSDxaRight
  int16_t dyaTop = 1440;                          ///< sprmSDyaTop
  int16_t dyaBottom = 1440;                       ///< sprmSDyaBottom
  uint16_t dzaGutter = 0;                         ///< sprmSDzaGutter
  uint16_t dyaHdrTop = 720;                       ///< sprmSDyaHdrTop
  uint16_t dyaHdrBottom = 720;                    ///< sprmSDyaHdrBottom
  uint16_t ccolM1 = 0;                            ///< sprmSCcolumns: the count of columns, 0 when not set
  uint8_t fEvenlySpaced = 1;                      ///< sprmSFEvenlySpaced
  int16_t dxaColumns = 720;                       ///< sprmSDxaColumns
  uint32_t rgdxaColumnWidth[kColumns] = {};       ///< sprmSDxaColWidth: twips
  uint32_t rgdxaColumnSpacing[kColumns] = {};     ///< sprmSDxaColSpacing: twips
  uint8_t pgbApplyTo = 0;                         ///< sprmSPgbProp
  uint8_t pgbPageDepth = 0;                       ///< sprmSPgbProp
  uint8_t pgbOffsetFrom = 1;                      ///< sprmSPgbProp
  uint16_t dmPaperReq = 9;                        ///< sprmSDmPaperReq
  uint8_t fRTLGutter = 0;                         ///< sprmSFRTLGutter
  uint8_t fpc = 1;                                ///< sprmSFpc
  uint8_t nfcFtnRef = 0;                          ///< sprmSNfcFtnRef
  uint8_t nfcEdnRef = 2;                          ///< sprmSNfcEdnRef
  uint16_t nFtn = 1;                              ///< sprmSNFtn
  uint16_t nEdn = 1;                              ///< sprmSNEdn
  uint8_t rncFtn = 0;                             ///< sprmSRncFtn
  uint8_t rncEdn = 0;                             ///< sprmSRncEdn
  uint8_t fUnlocked = 1;                          ///< sprmSFProtected
};

struct __SectionDataMask {
  uint8_t bytes[188] = {};  ///< the last 180: one whole byte a column width, then one a column spacing
};

/// Where the presence bit of each field of the record stands.
namespace section_mask {
constexpr PropMask bkc{0, 0x01};
constexpr PropMask fTitlePage{0, 0x02};
constexpr PropMask nfcPgn{0, 0x04};
constexpr PropMask cnsPgn{0, 0x10};
constexpr PropMask fPgnRestart{0, 0x20};
constexpr PropMask fEndnote{0, 0x40};
constexpr PropMask fLBetween{1, 0x04};
constexpr PropMask vjc{1, 0x08};
constexpr PropMask dmBinFirst{1, 0x10};
constexpr PropMask dmBinOther{1, 0x20};
constexpr PropMask brcTopEx{1, 0x40};
constexpr PropMask brcBottomEx{1, 0x80};
constexpr PropMask brcLeftEx{2, 0x01};
constexpr PropMask brcRightEx{2, 0x02};
constexpr PropMask brcTop{2, 0x04};
constexpr PropMask brcBottom{2, 0x08};
constexpr PropMask brcLeft{2, 0x10};
constexpr PropMask brcRight{2, 0x20};
constexpr PropMask manuscript{2, 0x40};
constexpr PropMask dxtCharSpace{3, 0x04};
constexpr PropMask dyaLinePitch{3, 0x08};
constexpr PropMask clm{3, 0x10};
constexpr PropMask dmOrientPage{3, 0x20};
constexpr PropMask iHeadingPgn{3, 0x40};
constexpr PropMask pgnStart{3, 0x80};
constexpr PropMask wTextFlow{4, 0x02};
constexpr PropMask xaPage{4, 0x04};
constexpr PropMask yaPage{4, 0x08};
constexpr PropMask dxaLeft{4, 0x10};
constexpr PropMask dxaRight{4, 0x20};
constexpr PropMask dyaTop{4, 0x40};
constexpr PropMask dyaBottom{4, 0x80};
constexpr PropMask dzaGutter{5, 0x01};
constexpr PropMask dyaHdrTop{5, 0x02};
constexpr PropMask dyaHdrBottom{5, 0x04};
constexpr PropMask ccolM1{5, 0x08};
constexpr PropMask fEvenlySpaced{5, 0x10};
constexpr PropMask dxaColumns{5, 0x20};
constexpr PropMask pgbProp{6, 0x02};
constexpr PropMask dmPaperReq{6, 0x04};
constexpr PropMask fRTLGutter{6, 0x10};
constexpr PropMask fpc{6, 0x20};
constexpr PropMask nfcFtnRef{6, 0x40};
constexpr PropMask nfcEdnRef{6, 0x80};
constexpr PropMask nFtn{7, 0x01};
constexpr PropMask nEdn{7, 0x02};
constexpr PropMask rncFtn{7, 0x04};
constexpr PropMask rncEdn{7, 0x08};
constexpr PropMask fUnlocked{7, 0x10};
}  // namespace section_mask

/// Section properties. A presence bit says that a sprm, not a default, set the field.
struct KDRSectionProp : __SectionData {
  __SectionDataMask mask;

  bool has(PropMask field) const { return (mask.bytes[field.byte] & field.bit) != 0; }
  void setPresent(PropMask field) { mask.bytes[field.byte] |= field.bit; }
  /// Presence of the width or spacing of column n, below kColumns.
  bool hasColumnWidth(unsigned n) const { return mask.bytes[8 + n] != 0; }
  bool hasColumnSpacing(unsigned n) const { return mask.bytes[98 + n] != 0; }
  /// The value of a field that a sprm set, else a fresh one of its type: for the document grid block that is
  /// the usual grid, where the record itself holds zeros.
  template <class T>
  T GetValue(const T __SectionData::*field, PropMask presence) const {
    return has(presence) ? this->*field : T();
  }
  /// Clears the mask and sets the defaults.
  void Reset();
};

inline constexpr KDRSectionProp kDefaultSectionProp{};

inline void KDRSectionProp::Reset() {
  *this = kDefaultSectionProp;
}

/// Resets `out` and decodes section sprms into it. A column number of 90 or above is ignored.
Status Sprms2ZeloSectionProp(const KDWSprmList& sprms, KDRSectionProp* out);
