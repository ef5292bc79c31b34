#pragma once

#include <cstdint>

#include "base/status.h"
#include "wordreader/prop_values.h"
#include "wordreader/sprm_list.h"

class KDRDocument;
class KDRListTable;

/// Tab stops that a paragraph deletes and adds; positions in twips.
struct KDRTab {
  static constexpr unsigned kMax = 64;
  uint8_t deleteCount = 0;
  uint8_t addCount = 0;
  int16_t deletePositions[kMax] = {};
  int16_t addPositions[kMax] = {};
  uint8_t descriptors[kMax] = {};  ///< of the added: bits 0-2 alignment, bits 3-5 leader
  uint8_t defaultAlignment = 0;    ///< of the stops between and behind those that are set
  uint8_t defaultLeader = 0;

  void put_Nil() { *this = KDRTab(); }
  void put_DefaultTBD() { defaultAlignment = defaultLeader = 0; }
};

/// Reads sprmPChgTabsPapx; counts above 64 are cut.
void __AssignKDRtab(KDRTab& out, ByteView operand);

/// Paragraph properties as decoded from sprms; the comments name the sprm. Lengths (`dxa...`, `dya...`) are
/// in twips, `dxc...` in hundredths of a character, `dyl...` in hundredths of a line.
struct __ParagraphData {
  uint8_t jc = 0;                              ///< sprmPJc
  uint8_t fKeep = 0;                           ///< sprmPFKeep
  uint8_t fKeepFollow = 0;                     ///< sprmPFKeepFollow
  uint8_t fPageBreakBefore = 0;                ///< sprmPFPageBreakBefore
  uint8_t lvl = 9;                             ///< sprmPOutLvl
  uint8_t ilvl = 0;                            ///< sprmPIlvl
  uint16_t ilfo = 0;                           ///< sprmPIlfo
  int16_t dxaRight = 0;                        ///< sprmPDxaRight
  int16_t dxcRight = 0;                        ///< sprmPDxcRight
  int16_t dxaLeft = 0;                         ///< sprmPDxaLeft
  int16_t dxcLeft = 0;                         ///< sprmPDxcLeft
  int16_t dxaLeft1 = 0;                        ///< sprmPDxaLeft1
  int16_t dxcLeft1 = 0;                        ///< sprmPDxcLeft1
  int16_t dyaLine = 240;                       ///< sprmPDyaLine: twips, or 240ths of a line
  int16_t fMultLinespace = 1;                  ///< sprmPDyaLine: 1 a multiple, 0 exact or at least
  uint8_t fWidowControl = 0;                   ///< sprmPFWidowControl
  uint8_t fAdjustRight = 0;                    ///< sprmPFAdjustRight
  uint8_t fDyaBeforeAuto = 0;                  ///< sprmPFDyaBeforeAuto
  uint8_t fDyaAfterAuto = 0;                   ///< sprmPFDyaAfterAuto
  int16_t dyaBefore = 0;                       ///< sprmPDyaBefore
  int16_t dylBefore = 0;                       ///< sprmPDylBefore
  int16_t dyaAfter = 0;                        ///< sprmPDyaAfter
  int16_t dylAfter = 0;                        ///< sprmPDylAfter
  uint8_t fKinsoku = 1;                        ///< sprmPFKinsoku
  uint8_t fUsePgsuSettings = 1;                ///< sprmPFUsePgsuSettings
  uint8_t fWordWrap = 1;                       ///< sprmPFWordWrap
  uint8_t fTopLinePunct = 0;                   ///< sprmPFTopLinePunct
  uint8_t fOverflowPunct = 1;                  ///< sprmPFOverflowPunct
  uint8_t fAutoSpaceDE = 0;                    ///< sprmPFAutoSpaceDE
  uint8_t fAutoSpaceDN = 0;                    ///< sprmPFAutoSpaceDN
  uint8_t fNoAutoHyph = 0;                     ///< sprmPFNoAutoHyph
  uint8_t fNoLineNumb = 0;                     ///< sprmPFNoLineNumb
  uint8_t fSideBySide = 0;                     ///< sprmPFSideBySide
  uint16_t wAlignFont = 4;                     ///< sprmPWAlignFont
  mso_word::BRCEX brcTop = KDRBrc::Nil();      ///< sprmPBrcTop
  mso_word::BRCEX brcLeft = KDRBrc::Nil();     ///< sprmPBrcLeft
  mso_word::BRCEX brcBottom = KDRBrc::Nil();   ///< sprmPBrcBottom
  mso_word::BRCEX brcRight = KDRBrc::Nil();    ///< sprmPBrcRight
  mso_word::BRCEX brcBetween = KDRBrc::Nil();  ///< sprmPBrcBetween
  mso_word::BRCEX brcBar = KDRBrc::Nil();      ///< no sprm sets it
  mso_word::SHDEX shd = KDRShd::Normal();      ///< sprmPShd
  KDRTab tabs;                                 ///< sprmPChgTabsPapx
  int16_t dxaAbs = 0;                          ///< sprmPDxaAbs
  int16_t dyaAbs = 0;                          ///< sprmPDyaAbs
  uint16_t dxaWidth = 0;                       ///< sprmPDxaWidth
  uint8_t pc = 0;                              ///< sprmPPc: bits 4-5 vertical, 6-7 horizontal anchor
  int8_t wr = 0;                               ///< sprmPWr
  int8_t fNoAllowOverlap = 0;                  ///< sprmPFNoAllowOverlap
  uint16_t wHeightAbs = 0;                     ///< sprmPWHeightAbs: twips
  uint8_t fMinHeight = 0;                      ///< sprmPWHeightAbs
  int16_t dxaFromText = 0;                     ///< sprmPDxaFromText
  int16_t dyaFromText = 0;                     ///< sprmPDyaFromText
  uint16_t dcs = 0;             ///< sprmPDcs: drop cap, low 3 bits the kind, next 5 bits the lines
  int16_t wFrameTextFlow = 0;   ///< sprmPFrameTextFlow
  int8_t fLocked = 0;           ///< sprmPFLocked
  uint8_t fInTable = 0;         ///< sprmPFInTable
  uint8_t fInnerTableCell = 0;  ///< sprmPFInnerTableCell
  uint8_t fTtp = 0;             ///< sprmPFTtp
  uint8_t fInnerTtp = 0;        ///< sprmPFInnerTtp
  uint32_t itap = 0;            ///< sprmPItap
  uint16_t istd = 0;            ///< sprmPIstd
  uint8_t fHasPrivate = 0;      ///< a private sprm of other programs was met
};

struct __ParagraphDataMask {
  uint8_t bytes[9] = {};
};

/// Where the presence bit of each field of the record stands.
namespace paragraph_mask {
constexpr PropMask jc{0, 0x01};
constexpr PropMask fKeep{0, 0x02};
constexpr PropMask fKeepFollow{0, 0x04};
constexpr PropMask fPageBreakBefore{0, 0x08};
constexpr PropMask lvl{0, 0x10};
constexpr PropMask ilvl{0, 0x20};
constexpr PropMask ilfo{0, 0x40};
constexpr PropMask dxaRight{0, 0x80};
constexpr PropMask dxcRight{1, 0x01};
constexpr PropMask dxaLeft{1, 0x02};
constexpr PropMask dxcLeft{1, 0x04};
constexpr PropMask dxaLeft1{1, 0x08};
constexpr PropMask dxcLeft1{1, 0x10};
constexpr PropMask dyaLine{1, 0x20};
constexpr PropMask fWidowControl{1, 0x40};
constexpr PropMask fAdjustRight{1, 0x80};
constexpr PropMask fDyaBeforeAuto{2, 0x01};
constexpr PropMask fDyaAfterAuto{2, 0x02};
constexpr PropMask dyaBefore{2, 0x04};
constexpr PropMask dylBefore{2, 0x08};
constexpr PropMask dyaAfter{2, 0x10};
constexpr PropMask dylAfter{2, 0x20};
constexpr PropMask fKinsoku{2, 0x40};
constexpr PropMask fUsePgsuSettings{2, 0x80};
constexpr PropMask fWordWrap{3, 0x01};
constexpr PropMask fTopLinePunct{3, 0x02};
constexpr PropMask fOverflowPunct{3, 0x04};
constexpr PropMask fAutoSpaceDE{3, 0x08};
constexpr PropMask fAutoSpaceDN{3, 0x10};
constexpr PropMask fNoAutoHyph{3, 0x20};
constexpr PropMask fNoLineNumb{3, 0x40};
constexpr PropMask fSideBySide{3, 0x80};
constexpr PropMask wAlignFont{4, 0x01};
constexpr PropMask brcTop{4, 0x02};
constexpr PropMask brcLeft{4, 0x04};
constexpr PropMask brcBottom{4, 0x08};
constexpr PropMask brcRight{4, 0x10};
constexpr PropMask brcBetween{4, 0x20};
constexpr PropMask shd{4, 0x80};
constexpr PropMask tabs{5, 0x01};
constexpr PropMask dxaAbs{6, 0x01};
constexpr PropMask dyaAbs{6, 0x02};
constexpr PropMask dxaWidth{6, 0x04};
constexpr PropMask pc{6, 0x08};
constexpr PropMask wr{6, 0x10};
constexpr PropMask fNoAllowOverlap{6, 0x20};
constexpr PropMask wHeightAbs{6, 0x40};
constexpr PropMask dxaFromText{6, 0x80};
constexpr PropMask dyaFromText{7, 0x01};
constexpr PropMask dcs{7, 0x02};
constexpr PropMask wFrameTextFlow{7, 0x04};
constexpr PropMask fLocked{7, 0x08};
constexpr PropMask fInTable{8, 0x01};
constexpr PropMask fInnerTableCell{8, 0x02};
constexpr PropMask fTtp{8, 0x04};
constexpr PropMask fInnerTtp{8, 0x08};
constexpr PropMask itap{8, 0x20};
constexpr PropMask istd{8, 0x40};
constexpr PropMask fHasPrivate{8, 0x80};
constexpr PropMask brcBar{4, 0x40};
}  // namespace paragraph_mask

/// Paragraph properties of a paragraph or style. A presence bit says that a sprm, not a default, set the
/// field.
struct KDRParagraphProp : __ParagraphData {
  __ParagraphDataMask mask;

  bool has(PropMask field) const { return (mask.bytes[field.byte] & field.bit) != 0; }
  void setPresent(PropMask field) { mask.bytes[field.byte] |= field.bit; }
  void setAbsent(PropMask field) { mask.bytes[field.byte] &= static_cast<uint8_t>(~field.bit); }
  /// Clears the mask and sets the defaults.
  void Reset();
};

inline constexpr KDRParagraphProp kDefaultParagraphProp{};

inline void KDRParagraphProp::Reset() {
  *this = kDefaultParagraphProp;
}

/// Decodes paragraph sprms over `out`, which is not reset. When the list has brought both list number and
/// level, the level's indents and tabs take effect as defaults. `lists` may be null; a null `base` means
/// `out`.
Status Sprms2ParagraphProp(const KDWSprmList& sprms, KDRParagraphProp* out, const KDRListTable* lists,
                           const KDRDocument* document, const KDRParagraphProp* base = nullptr);
inline Status Sprms2MaskParaPr(const KDWSprmList& sprms, KDRParagraphProp* out, const KDRParagraphProp* base,
                               const KDRListTable* lists, const KDRDocument* document) {
  return Sprms2ParagraphProp(sprms, out, lists, document, base);
}

/// Applies the left indent, first-line indent and tabs of a list level's sprms, with their presence bits.
void ApplyListPapx(KDRParagraphProp* out, ByteView sprms);
