#include "wordreader/span_prop.h"

#include "wordreader/sprm_opcodes.h"
#include "wordreader/sprm_table.h"

namespace {

constexpr uint16_t kSprmCFRMarkDel = 0x0800;
constexpr uint16_t kSprmCFRMark = 0x0801;
constexpr uint16_t kSprmCFOle2 = 0x080A;
constexpr uint16_t kSprmCFSpec = 0x0855;
constexpr uint16_t kSprmCFELayout = 0xCA78;

namespace present = span_mask;

#define FIELD(field) SPRM_FIELD(__SpanData, field)
#define FIELDS(first, last) SPRM_FIELDS(__SpanData, first, last)
constexpr SprmTable kSprms({
    {0x0835, FIELD(fBold), SprmRule::kToggle, present::fBold},            // sprmCFBold
    {0x0836, FIELD(fItalic), SprmRule::kToggle, present::fItalic},        // sprmCFItalic
    {0x0838, FIELD(fOutline), SprmRule::kToggle, present::fOutline},      // sprmCFOutline
    {0x083A, FIELD(fSmallCaps), SprmRule::kToggle, present::fSmallCaps},  // sprmCFSmallCaps
    {0x083B, FIELD(fCaps), SprmRule::kToggle, present::fCaps},            // sprmCFCaps
    {0x083C, FIELD(fVanish), SprmRule::kToggle, present::fVanish},        // sprmCFVanish
    {0x0837, FIELD(fStrike), SprmRule::kToggle, present::fStrike},        // sprmCFStrike
    {0x0839, FIELD(fShadow), SprmRule::kToggle, present::fShadow},        // sprmCFShadow
    {0x0858, FIELD(fEmboss), SprmRule::kToggle, present::fEmboss},        // sprmCFEmboss
    {0x0854, FIELD(fImprint), SprmRule::kToggle, present::fImprint},      // sprmCFImprint
    {0x2A53, FIELD(fDStrike), SprmRule::kToggle, present::fDStrike},      // sprmCFDStrike
    {0x286F, FIELD(idctHint), SprmRule::kByte, present::idctHint},        // sprmCIdctHint
    {kSprmCFRMarkDel, FIELD(fRMarkDel), SprmRule::kSpecial, present::fRMarkDel},
    {0x4863, FIELD(ibstRMarkDel), SprmRule::kWord, present::ibstRMarkDel},  // sprmCIbstRMarkDel
    {0x6864, FIELD(dttmRMarkDel), SprmRule::kLong, present::dttmRMarkDel},  // sprmCDttmRMarkDel
    {kSprmCFRMark, FIELD(fRMark), SprmRule::kSpecial, present::fRMark},
    {0x4804, FIELD(ibstRMark), SprmRule::kWord, present::ibstRMark},     // sprmCIbstRMark
    {0x6805, FIELD(dttmRMark), SprmRule::kLong, present::dttmRMark},     // sprmCDttmRMark
    {0xCA72, FIELD(brc), SprmRule::kBorder, present::brc},               // sprmCBrc
    {0xCA71, FIELD(shd), SprmRule::kShading, present::shd},              // sprmCShd
    {0x2859, FIELD(sfxtText), SprmRule::kByte, present::sfxtText},       // sprmCSfxText
    {0x4A4F, FIELD(rgftc[0]), SprmRule::kWord, present::rgftc0},         // sprmCRgFtc0
    {0x4A50, FIELD(rgftc[1]), SprmRule::kWord, present::rgftc1},         // sprmCRgFtc1
    {0x4A51, FIELD(rgftc[2]), SprmRule::kWord, present::rgftc2},         // sprmCRgFtc2
    {0x4A43, FIELD(hps), SprmRule::kWord, present::hps},                 // sprmCHps
    {0x484B, FIELD(hpsKern), SprmRule::kWord, present::hpsKern},         // sprmCHpsKern
    {0x2A48, FIELD(iss), SprmRule::kByte, present::iss},                 // sprmCIss
    {0x2A3E, FIELD(kul), SprmRule::kByte, present::kul},                 // sprmCKul
    {0x4852, FIELD(wCharScale), SprmRule::kWord, present::wCharScale},   // sprmCCharScale
    {0x6877, FIELD(cvUl), SprmRule::kLong, present::cvUl},               // sprmCCvUl
    {0x8840, FIELD(dxaSpace), SprmRule::kWord, present::dxaSpace},       // sprmCDxaSpace
    {0x6870, FIELD(cv), SprmRule::kLong, present::cv},                   // sprmCCv
    {0x2A0C, FIELD(highlight), SprmRule::kByte, present::highlight},     // sprmCHighlight
    {0x4845, FIELD(hpsPos), SprmRule::kWord, present::hpsPos},           // sprmCHpsPos
    {0x2A34, FIELD(kcd), SprmRule::kByte, present::kcd},                 // sprmCKcd
    {0x0868, FIELD(fUsePgsu), SprmRule::kToggle, present::fUsePgsu},     // sprmCFUsePgsuSettings
    {0x6A09, FIELDS(ftcSym, xchSym), SprmRule::kLong, present::symbol},  // sprmCSymbol
    {kSprmCFELayout, FIELD(ufel), SprmRule::kSpecial, present::ufel},
    {0x486D, FIELD(lidDefault), SprmRule::kWord, present::lidDefault},  // sprmCRgLid0_80
    {0x4873, FIELD(lidDefault), SprmRule::kWord, present::lidDefault},  // sprmCRgLid0
    {0x486E, FIELD(lidFE), SprmRule::kWord, present::lidFE},            // sprmCRgLid1_80
    {0x4874, FIELD(lidFE), SprmRule::kWord, present::lidFE},            // sprmCRgLid1
    {kSprmCFSpec, FIELD(fSpec), SprmRule::kSpecial, present::fSpec},
    {sprm_opcode::kCIstd, FIELD(istd), SprmRule::kWord, present::istd},
    {kSprmCFOle2, FIELD(fOle2), SprmRule::kByte, present::fOle2},
});
#undef FIELD
#undef FIELDS

bool ApplySpecial(uint16_t opcode, ByteView operand, KDRSpanProp* out) {
  switch (opcode) {
    case kSprmCFRMarkDel:
      out->fRMarkDel = operand.u8(0) != 0;
      return true;
    case kSprmCFRMark:
      out->fRMark = operand.u8(0) != 0;
      return true;
    case kSprmCFSpec:
      out->fSpec = 1;
      return true;
    case kSprmCFELayout:
      AssignAsianLayout(out->ufel, operand);
      return true;
    default:
      return false;
  }
}

}  // namespace

Status Sprms2SpanProp(const KDWSprmList& sprms, KDRSpanProp* out, const KDRSpanProp* base) {
  const auto special = [out](uint16_t opcode, ByteView operand) {
    return ApplySpecial(opcode, operand, out);
  };
  DecodeSprms<__SpanData>(kSprms, sprms, out, base ? base : out, special);
  return Status::kOk;
}

void KDRSpanProp::OverwriteByAnother(const KDRSpanProp* other) {
  if (!other) return;
  for (const SprmRow& row : kSprms) {
    // The value of fOle2 counts, whatever its presence bit says.
    const bool takes = row.opcode == kSprmCFOle2 ? other->fOle2 != 0 : other->has(row.presence);
    if (!takes) continue;
    std::memcpy(RecordBytes<__SpanData>(this) + row.offset, RecordBytes<__SpanData>(other) + row.offset,
                row.size);
    setPresent(row.presence);
  }
  if (other->has(present::fRMarkDel)) unusedRMarkDel = other->unusedRMarkDel;
  if (other->has(present::fRMark)) unusedRMark = other->unusedRMark;
}
