#include "wordreader/paragraph_prop.h"

#include <algorithm>

#include "wordreader/list_table.h"
#include "wordreader/sprm_opcodes.h"
#include "wordreader/sprm_table.h"

namespace {

constexpr uint16_t kSprmPIlvl = 0x260A;
constexpr uint16_t kSprmPIlfo = 0x460B;
constexpr uint16_t kSprmPChgTabsPapx = 0xC60D;
constexpr uint16_t kSprmPPc = 0x261B;
constexpr uint16_t kSprmPWHeightAbs = 0x442B;
constexpr uint16_t kSprmPDcs = 0x442C;
constexpr uint16_t kSprmPDxaLeft = 0x845E;
constexpr uint16_t kSprmPDxaLeft1 = 0x8460;
constexpr uint16_t kPrivateParagraph = 0xC5FF;

namespace present = paragraph_mask;

#define FIELD(field) SPRM_FIELD(__ParagraphData, field)
#define FIELDS(first, last) SPRM_FIELDS(__ParagraphData, first, last)
constexpr SprmTable kSprms({
    {0x2461, FIELD(jc), SprmRule::kByte, present::jc},                                // sprmPJc
    {0x2405, FIELD(fKeep), SprmRule::kToggle, present::fKeep},                        // sprmPFKeep
    {0x2406, FIELD(fKeepFollow), SprmRule::kToggle, present::fKeepFollow},            // sprmPFKeepFollow
    {0x2407, FIELD(fPageBreakBefore), SprmRule::kToggle, present::fPageBreakBefore},  // sprmPFPageBreakBefore
    {0x2640, FIELD(lvl), SprmRule::kByte, present::lvl},                              // sprmPOutLvl
    {kSprmPIlvl, FIELD(ilvl), SprmRule::kSpecial, present::ilvl},
    {kSprmPIlfo, FIELD(ilfo), SprmRule::kSpecial, present::ilfo},
    {0x845D, FIELD(dxaRight), SprmRule::kWord, present::dxaRight},  // sprmPDxaRight
    {0x4455, FIELD(dxcRight), SprmRule::kWord, present::dxcRight},  // sprmPDxcRight
    {kSprmPDxaLeft, FIELD(dxaLeft), SprmRule::kWord, present::dxaLeft},
    {0x4456, FIELD(dxcLeft), SprmRule::kWord, present::dxcLeft},  // sprmPDxcLeft
    {kSprmPDxaLeft1, FIELD(dxaLeft1), SprmRule::kWord, present::dxaLeft1},
    {0x4457, FIELD(dxcLeft1), SprmRule::kWord, present::dxcLeft1},                    // sprmPDxcLeft1
    {0x6412, FIELDS(dyaLine, fMultLinespace), SprmRule::kLong, present::dyaLine},     // sprmPDyaLine
    {0x2431, FIELD(fWidowControl), SprmRule::kToggle, present::fWidowControl},        // sprmPFWidowControl
    {0x2448, FIELD(fAdjustRight), SprmRule::kToggle, present::fAdjustRight},          // sprmPFAdjustRight
    {0x245B, FIELD(fDyaBeforeAuto), SprmRule::kToggle, present::fDyaBeforeAuto},      // sprmPFDyaBeforeAuto
    {0x245C, FIELD(fDyaAfterAuto), SprmRule::kToggle, present::fDyaAfterAuto},        // sprmPFDyaAfterAuto
    {0xA413, FIELD(dyaBefore), SprmRule::kWord, present::dyaBefore},                  // sprmPDyaBefore
    {0x4458, FIELD(dylBefore), SprmRule::kWord, present::dylBefore},                  // sprmPDylBefore
    {0xA414, FIELD(dyaAfter), SprmRule::kWord, present::dyaAfter},                    // sprmPDyaAfter
    {0x4459, FIELD(dylAfter), SprmRule::kWord, present::dylAfter},                    // sprmPDylAfter
    {0x2433, FIELD(fKinsoku), SprmRule::kToggle, present::fKinsoku},                  // sprmPFKinsoku
    {0x2447, FIELD(fUsePgsuSettings), SprmRule::kToggle, present::fUsePgsuSettings},  // sprmPFUsePgsuSettings
    {0x2434, FIELD(fWordWrap), SprmRule::kToggle, present::fWordWrap},                // sprmPFWordWrap
    {0x2436, FIELD(fTopLinePunct), SprmRule::kToggle, present::fTopLinePunct},        // sprmPFTopLinePunct
    {0x2435, FIELD(fOverflowPunct), SprmRule::kToggle, present::fOverflowPunct},      // sprmPFOverflowPunct
    {0x2437, FIELD(fAutoSpaceDE), SprmRule::kToggle, present::fAutoSpaceDE},          // sprmPFAutoSpaceDE
    {0x2438, FIELD(fAutoSpaceDN), SprmRule::kToggle, present::fAutoSpaceDN},          // sprmPFAutoSpaceDN
    {0x242A, FIELD(fNoAutoHyph), SprmRule::kToggle, present::fNoAutoHyph},            // sprmPFNoAutoHyph
    {0x240C, FIELD(fNoLineNumb), SprmRule::kToggle, present::fNoLineNumb},            // sprmPFNoLineNumb
    {0x2404, FIELD(fSideBySide), SprmRule::kToggle, present::fSideBySide},            // sprmPFSideBySide
    {0x4439, FIELD(wAlignFont), SprmRule::kWord, present::wAlignFont},                // sprmPWAlignFont
    {0xC64E, FIELD(brcTop), SprmRule::kBorder, present::brcTop},                      // sprmPBrcTop
    {0xC64F, FIELD(brcLeft), SprmRule::kBorder, present::brcLeft},                    // sprmPBrcLeft
    {0xC650, FIELD(brcBottom), SprmRule::kBorder, present::brcBottom},                // sprmPBrcBottom
    {0xC651, FIELD(brcRight), SprmRule::kBorder, present::brcRight},                  // sprmPBrcRight
    {0xC652, FIELD(brcBetween), SprmRule::kBorder, present::brcBetween},              // sprmPBrcBetween
    {0xC64D, FIELD(shd), SprmRule::kShading, present::shd},                           // sprmPShd
    {kSprmPChgTabsPapx, FIELD(tabs), SprmRule::kSpecial, present::tabs},
    {0x8418, FIELD(dxaAbs), SprmRule::kWord, present::dxaAbs},      // sprmPDxaAbs
    {0x8419, FIELD(dyaAbs), SprmRule::kWord, present::dyaAbs},      // sprmPDyaAbs
    {0x841A, FIELD(dxaWidth), SprmRule::kWord, present::dxaWidth},  // sprmPDxaWidth
    {kSprmPPc, FIELD(pc), SprmRule::kSpecial, present::pc},
    {0x2423, FIELD(wr), SprmRule::kByte, present::wr},                              // sprmPWr
    {0x2462, FIELD(fNoAllowOverlap), SprmRule::kToggle, present::fNoAllowOverlap},  // sprmPFNoAllowOverlap
    {kSprmPWHeightAbs, FIELD(wHeightAbs), SprmRule::kSpecial, present::wHeightAbs},
    {0x842F, FIELD(dxaFromText), SprmRule::kWord, present::dxaFromText},  // sprmPDxaFromText
    {0x842E, FIELD(dyaFromText), SprmRule::kWord, present::dyaFromText},  // sprmPDyaFromText
    {kSprmPDcs, FIELD(dcs), SprmRule::kSpecial, present::dcs},
    {0x443A, FIELD(wFrameTextFlow), SprmRule::kWord, present::wFrameTextFlow},  // sprmPFrameTextFlow
    {0x2430, FIELD(fLocked), SprmRule::kToggle, present::fLocked},              // sprmPFLocked
    {sprm_opcode::kPFInTable, FIELD(fInTable), SprmRule::kByte, present::fInTable},
    {0x244B, FIELD(fInnerTableCell), SprmRule::kByte, present::fInnerTableCell},  // sprmPFInnerTableCell
    {sprm_opcode::kPFTtp, FIELD(fTtp), SprmRule::kByte, present::fTtp},
    {0x244C, FIELD(fInnerTtp), SprmRule::kByte, present::fInnerTtp},  // sprmPFInnerTtp
    {sprm_opcode::kPItap, FIELD(itap), SprmRule::kLong, present::itap},
    {0x4600, FIELD(istd), SprmRule::kWord, present::istd},  // sprmPIstd
    {kPrivateParagraph, FIELD(fHasPrivate), SprmRule::kSpecial, present::fHasPrivate},
});
#undef FIELD
#undef FIELDS

/// What list properties are looked up in while a paragraph is decoded; either may be null.
struct Lists {
  const KDRListTable* table;
  const KDRDocument* document;
};

/// The indents and tabs of the paragraph's list level become its defaults, once both list number and level
/// are known: their presence bits are cleared, so that only a later sprm counts as set.
void ApplyListLevel(KDRParagraphProp* out, const Lists& lists) {
  if (!lists.table || out->ilfo == 0 || out->ilfo > lists.table->Count()) return;
  const KDRList* list = lists.table->Item(out->ilfo);
  if (!list->Good() || out->ilvl >= list->GetLevelCount()) return;

  const KDRListLevel* level = list->GetLevel(out->ilvl);
  const KDRPropx* papx = level && lists.document ? level->GetPapx(*lists.document) : nullptr;
  if (papx) ApplyListPapx(out, papx->sprms());
  out->setAbsent(present::dxaLeft);
  out->setAbsent(present::dxaLeft1);
  out->setAbsent(present::tabs);
}

/// False if the operand leaves the field unset.
bool ApplySpecial(uint16_t opcode, ByteView operand, KDRParagraphProp* out, const Lists& lists) {
  switch (opcode) {
    case kSprmPIlvl:
      out->ilvl = operand.u8(0);
      if (out->has(present::ilfo)) ApplyListLevel(out, lists);
      return true;
    case kSprmPIlfo:
      out->ilfo = operand.u16(0);
      if (out->has(present::ilvl)) ApplyListLevel(out, lists);
      return true;
    case kSprmPChgTabsPapx:
      __AssignKDRtab(out->tabs, operand);
      return true;
    case kSprmPPc:
      out->pc = operand.u8(0) & 0xF3;
      return true;
    case kSprmPWHeightAbs:
      out->wHeightAbs = operand.u16(0) & 0x7FFF;
      out->fMinHeight = static_cast<uint8_t>(operand.u16(0) >> 15);
      return true;
    case kSprmPDcs:
      out->dcs = operand.u8(0);
      return true;
    case kPrivateParagraph:
      if (operand.u8(0) == 1) return false;
      out->fHasPrivate = 1;
      return true;
    default:
      return false;
  }
}

}  // namespace

Status Sprms2ParagraphProp(const KDWSprmList& sprms, KDRParagraphProp* out, const KDRListTable* lists,
                           const KDRDocument* document, const KDRParagraphProp* base) {
  const auto special = [&](uint16_t opcode, ByteView operand) {
    return ApplySpecial(opcode, operand, out, {lists, document});
  };
  DecodeSprms<__ParagraphData>(kSprms, sprms, out, base ? base : out, special);
  return Status::kOk;
}

void ApplyListPapx(KDRParagraphProp* out, ByteView sprms) {
  KDWSprmList::Enumerator enumerator{KDWSprmList(sprms)};
  for (KDWSprm sprm; enumerator.Next(&sprm) == Status::kOk;) {
    switch (sprm.GetOpcode()) {
      case kSprmPDxaLeft:
        out->dxaLeft = sprm.GetArgument().i16(0);
        out->setPresent(present::dxaLeft);
        break;
      case kSprmPDxaLeft1:
        out->dxaLeft1 = sprm.GetArgument().i16(0);
        out->setPresent(present::dxaLeft1);
        break;
      case kSprmPChgTabsPapx:
        __AssignKDRtab(out->tabs, sprm.GetArgument());
        out->setPresent(present::tabs);
        break;
    }
  }
}

void __AssignKDRtab(KDRTab& out, ByteView operand) {
  const size_t deleted = operand.u8(0);
  const size_t added = operand.u8(1 + 2 * deleted);
  const ByteView deletedAt = operand.part(1, 2 * deleted);
  const ByteView addedAt = operand.part(2 + 2 * deleted, 2 * added);
  const ByteView descriptors = operand.part(2 + 2 * deleted + 2 * added, added);

  out.put_Nil();
  out.deleteCount = static_cast<uint8_t>(std::min<size_t>(deleted, KDRTab::kMax));
  out.addCount = static_cast<uint8_t>(std::min<size_t>(added, KDRTab::kMax));
  for (size_t i = 0; i < out.deleteCount; ++i) out.deletePositions[i] = deletedAt.i16(2 * i);
  for (size_t i = 0; i < out.addCount; ++i) {
    out.addPositions[i] = addedAt.i16(2 * i);
    out.descriptors[i] = descriptors.u8(i);
  }
}
