#include "wordreader/piece.h"

#include <algorithm>
#include <cstring>

#include "wordreader/document.h"
#include "wordreader/sprm_list.h"
#include "wordreader/sprm_opcodes.h"

namespace {

struct SingleSprm {
  uint8_t isprm;
  uint16_t opcode;
};

/// The sprms that a piece's modifier can name by a number of its own.
constexpr SingleSprm kSingleSprms[] = {
    {0x00, 0x2879},  // sprmCLbcCRJ
    {0x04, 0x2602},  // sprmPIncLvl
    {0x05, 0x2403},  // sprmPJc80
    {0x07, 0x2405},  // sprmPFKeep
    {0x08, 0x2406},  // sprmPFKeepFollow
    {0x09, 0x2407},  // sprmPFPageBreakBefore
    {0x0C, 0x260A},  // sprmPIlvl
    {0x0D, 0x2470},  // sprmPFMirrorIndents
    {0x0E, 0x240C},  // sprmPFNoLineNumb
    {0x0F, 0x2471},  // sprmPTtwo
    {0x18, sprm_opcode::kPFInTable},
    {0x19, sprm_opcode::kPFTtp},
    {0x1D, 0x261B},  // sprmPPc
    {0x25, 0x2423},  // sprmPWr
    {0x2C, 0x242A},  // sprmPFNoAutoHyph
    {0x32, 0x2430},  // sprmPFLocked
    {0x33, 0x2431},  // sprmPFWidowControl
    {0x35, 0x2433},  // sprmPFKinsoku
    {0x36, 0x2434},  // sprmPFWordWrap
    {0x37, 0x2435},  // sprmPFOverflowPunct
    {0x38, 0x2436},  // sprmPFTopLinePunct
    {0x39, 0x2437},  // sprmPFAutoSpaceDE
    {0x3A, 0x2438},  // sprmPFAutoSpaceDN
    {0x41, 0x0800},  // sprmCFRMarkDel
    {0x42, 0x0801},  // sprmCFRMark
    {0x43, 0x0802},  // sprmCFFldVanish
    {0x47, 0x0806},  // sprmCFData
    {0x4B, 0x080A},  // sprmCFOle2
    {0x4D, 0x2A0C},  // sprmCHighlight
    {0x4E, 0x0858},  // sprmCFEmboss
    {0x4F, 0x2859},  // sprmCSfxText
    {0x50, 0x0811},  // sprmCFWebHidden
    {0x51, 0x0818},  // sprmCFSpecVanish
    {0x53, 0x2A33},  // sprmCPlain
    {0x55, 0x0835},  // sprmCFBold
    {0x56, 0x0836},  // sprmCFItalic
    {0x57, 0x0837},  // sprmCFStrike
    {0x58, 0x0838},  // sprmCFOutline
    {0x59, 0x0839},  // sprmCFShadow
    {0x5A, 0x083A},  // sprmCFSmallCaps
    {0x5B, 0x083B},  // sprmCFCaps
    {0x5C, 0x083C},  // sprmCFVanish
    {0x5E, 0x2A3E},  // sprmCKul
    {0x62, 0x2A42},  // sprmCIco
    {0x68, 0x2A48},  // sprmCIss
    {0x73, 0x2A53},  // sprmCFDStrike
    {0x74, 0x0854},  // sprmCFImprint
    {0x75, 0x0855},  // sprmCFSpec
    {0x76, 0x0856},  // sprmCFObj
    {0x78, 0x2640},  // sprmPOutLvl
    {0x7B, 0x2A90},  // sprmCFSdtVanish
    {0x7C, 0x2A86},  // sprmCNeedFontFixup
    {0x7E, 0x2443},  // sprmPFNumRMIns
};

bool isCharacterSprm(uint16_t opcode) {
  return (opcode >> 8 & 0x1C) == 8;
}

/// Calls `visit` with the bytes of each sprm, the last one cut to the list, and whether it is a character
/// sprm.
template <class Visit>
void forEachSprm(ByteView sprms, Visit visit) {
  KDWSprmList::Enumerator sprm{KDWSprmList(sprms)};
  KDWSprm current;
  for (size_t at = 0; sprm.Next(&current) == Status::kOk;) {
    const ByteView bytes = sprms.part(at, current.GetSize());
    visit(bytes, isCharacterSprm(current.GetOpcode()));
    at += bytes.size();
  }
}

}  // namespace

uint16_t OpcodeOfSingleSprm(uint8_t isprm) {
  const auto* row =
      std::lower_bound(std::begin(kSingleSprms), std::end(kSingleSprms), isprm,
                       [](const SingleSprm& single, uint8_t key) { return single.isprm < key; });
  return row != std::end(kSingleSprms) && row->isprm == isprm ? row->opcode : 0;
}

// _PieceWrapper

void _PieceWrapper::Assign(const _TypeTraits<mso_word::PCD>::ItemType& piece) {
  const mso_word::PCD& pcd = piece.data;
  range_ = piece.range;
  range_.end = std::max(range_.start, range_.end);
  wide_ = (pcd.rawFc & mso_word::PCD::kAnsi) == 0;
  fc_ = wide_ ? pcd.rawFc : (pcd.rawFc & ~mso_word::PCD::kAnsi) >> 1;
  noParaLast_ = (pcd.flags & mso_word::PCD::kNoParaLast) != 0;
  sprms_ = sorter_.AnalyseSprm(pcd.prm);
}

_PieceEx _PieceWrapper::Front(uint32_t n, uint32_t subDocBegin) const {
  return {fc_, fc_ + uint64_t{n} * (wide_ ? 2 : 1), range_.start - subDocBegin, wide_};
}

void _PieceWrapper::SplitPiece(uint32_t n) {
  range_.start += n;
  fc_ += uint64_t{n} * (wide_ ? 2 : 1);
}

// KPieceSprmSorter

KPieceSprms KPieceSprmSorter::AnalyseSprm(uint16_t prm) {
  if (prm == 0) return {};
  if (prm & 1) return SortedGroup(prm >> 1);
  return {RepairSingleSprm(prm), {}};
}

KPieceSprms KPieceSprmSorter::SortedGroup(size_t index) {
  const auto& inFile = document_.GetSprmsFastSave();
  if (index >= inFile.size()) return {};
  if (groups_.empty()) groups_.resize(inFile.size());
  Group& group = groups_[index];
  if (!group.sorted) {
    group.sprms = SortSprms(inFile[index]->sprms(), document_.GetAllocator());
    group.sorted = true;
  }
  return group.sprms;
}

ByteView KPieceSprmSorter::RepairSingleSprm(uint16_t prm) {
  const auto isprm = static_cast<uint8_t>((prm & 0xFE) >> 1);
  const uint16_t words[3] = {4, OpcodeOfSingleSprm(isprm), static_cast<uint16_t>(prm >> 8)};
  void* copy = document_.GetAllocator().AllocAligned(sizeof(words), alignof(uint16_t));
  std::memcpy(copy, words, sizeof(words));
  // The list begins with the size word and is as long as that says, so that it is read as a sprm 4 of which
  // nothing comes: such a modifier changes no property.
  return ByteView(copy, words[0]);
}

KPieceSprms SortSprms(ByteView sprms, ChainAllocator& allocator) {
  size_t paragraphBytes = 0;
  bool metCharacter = false;
  bool sorted = true;
  forEachSprm(sprms, [&](ByteView sprm, bool character) {
    metCharacter |= character;
    if (character) return;
    sorted &= !metCharacter;
    paragraphBytes += sprm.size();
  });
  if (!metCharacter) return {sprms, {}};
  if (sorted) return {sprms.part(0, paragraphBytes), sprms.part(paragraphBytes)};

  auto* copy = static_cast<uint8_t*>(allocator.Alloc(sprms.size()));
  size_t paragraphAt = 0;
  size_t characterAt = paragraphBytes;
  forEachSprm(sprms, [&](ByteView sprm, bool character) {
    size_t& at = character ? characterAt : paragraphAt;
    std::memcpy(copy + at, sprm.data(), sprm.size());
    at += sprm.size();
  });
  return {ByteView(copy, paragraphBytes), ByteView(copy + paragraphBytes, characterAt - paragraphBytes)};
}
