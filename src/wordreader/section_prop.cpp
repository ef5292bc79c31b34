#include "wordreader/section_prop.h"

#include "wordreader/sprm_table.h"

namespace {

constexpr uint16_t kSprmSCcolumns = 0x500B;
constexpr uint16_t kSprmSDxaColWidth = 0xF203;
constexpr uint16_t kSprmSDxaColSpacing = 0xF204;
constexpr uint16_t kSprmSPgbProp = 0x522F;
constexpr uint16_t kPrivateGrid = 0xD1FF;

namespace present = section_mask;
constexpr PropMask kFirstWidth{8, 1};     ///< of column 0; column n has the n-th byte behind it
constexpr PropMask kFirstSpacing{98, 1};  ///< likewise

#define FIELD(field) SPRM_FIELD(__SectionData, field)
constexpr SprmTable kSprms({
    {0x3009, FIELD(bkc), SprmRule::kByte, present::bkc},                    // sprmSBkc
    {0x300A, FIELD(fTitlePage), SprmRule::kByte, present::fTitlePage},      // sprmSFTitlePage
    {0x300E, FIELD(nfcPgn), SprmRule::kByte, present::nfcPgn},              // sprmSNfcPgn
    {0x3000, FIELD(cnsPgn), SprmRule::kByte, present::cnsPgn},              // sprmScnsPgn
    {0x3011, FIELD(fPgnRestart), SprmRule::kByte, present::fPgnRestart},    // sprmSFPgnRestart
    {0x3012, FIELD(fEndnote), SprmRule::kByte, present::fEndnote},          // sprmSFEndnote
    {0x3019, FIELD(fLBetween), SprmRule::kByte, present::fLBetween},        // sprmSLBetween
    {0x301A, FIELD(vjc), SprmRule::kByte, present::vjc},                    // sprmSVjc
    {0x5007, FIELD(dmBinFirst), SprmRule::kWord, present::dmBinFirst},      // sprmSDmBinFirst
    {0x5008, FIELD(dmBinOther), SprmRule::kWord, present::dmBinOther},      // sprmSDmBinOther
    {0xD234, FIELD(brcTopEx), SprmRule::kBorder, present::brcTopEx},        // sprmSBrcTop
    {0xD236, FIELD(brcBottomEx), SprmRule::kBorder, present::brcBottomEx},  // sprmSBrcBottom
    {0xD235, FIELD(brcLeftEx), SprmRule::kBorder, present::brcLeftEx},      // sprmSBrcLeft
    {0xD237, FIELD(brcRightEx), SprmRule::kBorder, present::brcRightEx},    // sprmSBrcRight
    {0x702B, FIELD(brcTop), SprmRule::kBorder80, present::brcTop},          // sprmSBrcTop80
    {0x702D, FIELD(brcBottom), SprmRule::kBorder80, present::brcBottom},    // sprmSBrcBottom80
    {0x702C, FIELD(brcLeft), SprmRule::kBorder80, present::brcLeft},        // sprmSBrcLeft80
    {0x702E, FIELD(brcRight), SprmRule::kBorder80, present::brcRight},      // sprmSBrcRight80
    {kPrivateGrid, FIELD(manuscript), SprmRule::kSpecial, present::manuscript},
    {0x7030, FIELD(dxtCharSpace), SprmRule::kLong, present::dxtCharSpace},  // sprmSDxtCharSpace
    {0x9031, FIELD(dyaLinePitch), SprmRule::kWord, present::dyaLinePitch},  // sprmSDyaLinePitch
    {0x5032, FIELD(clm), SprmRule::kWord, present::clm},                    // sprmSClm
    {0x301D, FIELD(dmOrientPage), SprmRule::kByte, present::dmOrientPage},  // sprmSBOrientation
    {0x3001, FIELD(iHeadingPgn), SprmRule::kByte, present::iHeadingPgn},    // sprmSiHeadingPgn
    {0x501C, FIELD(pgnStart), SprmRule::kWord, present::pgnStart},          // sprmSPgnStart97
    {0x5033, FIELD(wTextFlow), SprmRule::kWord, present::wTextFlow},        // sprmSTextFlow
    {0xB01F, FIELD(xaPage), SprmRule::kWord, present::xaPage},              // sprmSXaPage
    {0xB020, FIELD(yaPage), SprmRule::kWord, present::yaPage},              // sprmSYaPage
    {0xB021, FIELD(dxaLeft), SprmRule::kWord, present::dxaLeft},            // sprmSDxaLeft
    {0xB022, FIELD(dxaRight), SprmRule::kWord, present::dxaRight},          // sprmSDxaRight
    {0x9023, FIELD(dyaTop), SprmRule::kWord, present::dyaTop},              // sprmSDyaTop
    {0x9024, FIELD(dyaBottom), SprmRule::kWord, present::dyaBottom},        // sprmSDyaBottom
    {0xB025, FIELD(dzaGutter), SprmRule::kWord, present::dzaGutter},        // sprmSDzaGutter
    {0xB017, FIELD(dyaHdrTop), SprmRule::kWord, present::dyaHdrTop},        // sprmSDyaHdrTop
    {0xB018, FIELD(dyaHdrBottom), SprmRule::kWord, present::dyaHdrBottom},  // sprmSDyaHdrBottom
    {kSprmSCcolumns, FIELD(ccolM1), SprmRule::kSpecial, present::ccolM1},
    {0x3005, FIELD(fEvenlySpaced), SprmRule::kByte, present::fEvenlySpaced},  // sprmSFEvenlySpaced
    {0x900C, FIELD(dxaColumns), SprmRule::kWord, present::dxaColumns},        // sprmSDxaColumns
    {kSprmSDxaColWidth, FIELD(rgdxaColumnWidth), SprmRule::kSpecial, kFirstWidth},
    {kSprmSDxaColSpacing, FIELD(rgdxaColumnSpacing), SprmRule::kSpecial, kFirstSpacing},
    {kSprmSPgbProp, FIELD(pgbApplyTo), SprmRule::kSpecial, present::pgbProp},
    {0x5026, FIELD(dmPaperReq), SprmRule::kWord, present::dmPaperReq},  // sprmSDmPaperReq
    {0x322A, FIELD(fRTLGutter), SprmRule::kByte, present::fRTLGutter},  // sprmSFRTLGutter
    {0x303B, FIELD(fpc), SprmRule::kByte, present::fpc},                // sprmSFpc
    {0x5040, FIELD(nfcFtnRef), SprmRule::kByte, present::nfcFtnRef},    // sprmSNfcFtnRef
    {0x5042, FIELD(nfcEdnRef), SprmRule::kByte, present::nfcEdnRef},    // sprmSNfcEdnRef
    {0x503F, FIELD(nFtn), SprmRule::kWord, present::nFtn},              // sprmSNFtn
    {0x5041, FIELD(nEdn), SprmRule::kWord, present::nEdn},              // sprmSNEdn
    {0x303C, FIELD(rncFtn), SprmRule::kByte, present::rncFtn},          // sprmSRncFtn
    {0x303E, FIELD(rncEdn), SprmRule::kByte, present::rncEdn},          // sprmSRncEdn
    {0x3006, FIELD(fUnlocked), SprmRule::kByte, present::fUnlocked},    // sprmSFProtected
});
#undef FIELD

/// The operand of a column sprm: the column in its first byte, and its size in the next two. The presence of
/// each column has a byte of its own in the mask.
void SetColumn(ByteView operand, uint32_t (&sizes)[__SectionData::kColumns], PropMask first,
               KDRSectionProp* out) {
  const uint8_t column = operand.u8(0);
  if (column >= __SectionData::kColumns) return;
  sizes[column] = operand.u16(1);
  out->mask.bytes[first.byte + column] = first.bit;
}

/// False if the presence bit of the row is not to be set.
bool ApplySpecial(uint16_t opcode, ByteView operand, KDRSectionProp* out) {
  switch (opcode) {
    case kSprmSCcolumns:
      out->ccolM1 = static_cast<uint16_t>(operand.u16(0) + 1);
      return true;
    case kSprmSDxaColWidth:
      SetColumn(operand, out->rgdxaColumnWidth, kFirstWidth, out);
      return false;
    case kSprmSDxaColSpacing:
      SetColumn(operand, out->rgdxaColumnSpacing, kFirstSpacing, out);
      return false;
    case kSprmSPgbProp:
      out->pgbApplyTo = operand.u8(0) & 7;
      out->pgbPageDepth = operand.u8(0) >> 3 & 3;
      out->pgbOffsetFrom = operand.u8(0) >> 5;
      return true;
    case kPrivateGrid:
      if (operand.u8(0) != 4) return false;
      out->manuscript = operand.part(1).copyOf<mso_word::VtxOperandManuscript>(0);
      return true;
    default:
      return false;
  }
}

}  // namespace

Status Sprms2ZeloSectionProp(const KDWSprmList& sprms, KDRSectionProp* out) {
  out->Reset();
  const auto special = [out](uint16_t opcode, ByteView operand) {
    return ApplySpecial(opcode, operand, out);
  };
  DecodeSprms<__SectionData>(kSprms, sprms, out, out, special);
  return Status::kOk;
}
