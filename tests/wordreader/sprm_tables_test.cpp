#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string_view>

#include "support/sprms.h"
#include "wordreader/paragraph_prop.h"
#include "wordreader/section_prop.h"
#include "wordreader/span_prop.h"

using namespace std::string_view_literals;
using support::Bytes;

namespace {

struct SprmCase {
  uint16_t opcode;
  std::string_view operand;
  size_t offset, size;        ///< where the field stands in the record
  std::string_view expected;  ///< the first bytes of the field; those behind are not to be touched
  size_t maskByte;
  uint8_t maskBit;
};

/// As expected bytes: the field is looked at by a test of its own.
constexpr std::string_view kAny;

constexpr uint8_t kUntouched = 0xA4;

void DecodeSpan(const KDWSprmList& list, KDRSpanProp* out) {
  Sprms2SpanProp(list, out);
}
void DecodeParagraph(const KDWSprmList& list, KDRParagraphProp* out) {
  Sprms2ParagraphProp(list, out, nullptr, nullptr);
}
void DecodeSection(const KDWSprmList& list, KDRSectionProp* out) {
  Sprms2ZeloSectionProp(list, out);
}

Bytes SprmOf(const SprmCase& row) {
  return support::sprm(row.opcode, Bytes(row.operand.begin(), row.operand.end()));
}

/// The bytes of a record that held a pattern, with all presence bits clear, before the list was decoded. The
/// section decoder resets it first.
template <class Prop, class Decode>
Bytes DecodeOverPattern(const Bytes& list, const Decode& decode) {
  Prop prop;
  std::memset(static_cast<void*>(&prop), kUntouched, sizeof(prop));
  prop.mask = {};
  decode(KDWSprmList(ByteView(list.data(), list.size())), &prop);
  Bytes bytes(sizeof(prop));
  std::memcpy(bytes.data(), static_cast<void*>(&prop), sizeof(prop));
  return bytes;
}

/// A row is right if its sprm changes its field and its presence bit, and not one other byte.
template <class Prop, class Data, size_t N, class Decode>
void ExpectRows(const SprmCase (&rows)[N], const Decode& decode) {
  const Bytes untouched = DecodeOverPattern<Prop>({}, decode);
  Prop probe;
  const auto maskAt = static_cast<size_t>(reinterpret_cast<uint8_t*>(&probe.mask) -
                                          reinterpret_cast<uint8_t*>(static_cast<Data*>(&probe)));
  for (const SprmCase& row : rows) {
    SCOPED_TRACE(testing::Message() << "sprm " << std::hex << row.opcode);
    Bytes decoded = DecodeOverPattern<Prop>(SprmOf(row), decode);
    Bytes expected = untouched;
    if (row.expected == kAny) {
      EXPECT_NE(std::memcmp(&decoded[row.offset], &expected[row.offset], row.size), 0);
      std::memcpy(&expected[row.offset], &decoded[row.offset], row.size);
    } else {
      std::memcpy(&expected[row.offset], row.expected.data(), row.expected.size());
    }
    expected[maskAt + row.maskByte] |= row.maskBit;
    EXPECT_EQ(decoded, expected);
  }
}

#define FIELD(field) offsetof(__SpanData, field), sizeof(__SpanData::field)
const SprmCase kSpanRows[] = {
    {0x0835, "\x5a"sv, FIELD(fBold), "\x5a"sv, 0, 0x01},
    {0x0836, "\x5a"sv, FIELD(fItalic), "\x5a"sv, 0, 0x02},
    {0x0838, "\x5a"sv, FIELD(fOutline), "\x5a"sv, 0, 0x04},
    {0x083A, "\x5a"sv, FIELD(fSmallCaps), "\x5a"sv, 0, 0x08},
    {0x083B, "\x5a"sv, FIELD(fCaps), "\x5a"sv, 0, 0x10},
    {0x083C, "\x5a"sv, FIELD(fVanish), "\x5a"sv, 0, 0x20},
    {0x0837, "\x5a"sv, FIELD(fStrike), "\x5a"sv, 0, 0x40},
    {0x0839, "\x5a"sv, FIELD(fShadow), "\x5a"sv, 0, 0x80},
    {0x0858, "\x5a"sv, FIELD(fEmboss), "\x5a"sv, 1, 0x01},
    {0x0854, "\x5a"sv, FIELD(fImprint), "\x5a"sv, 1, 0x02},
    {0x2A53, "\x5a"sv, FIELD(fDStrike), "\x5a"sv, 1, 0x04},
    {0x286F, "\x5a"sv, FIELD(idctHint), "\x5a"sv, 1, 0x08},
    {0x0800, "\x5a"sv, FIELD(fRMarkDel), "\x01"sv, 1, 0x10},
    {0x4863, "\x34\x12"sv, FIELD(ibstRMarkDel), "\x34\x12"sv, 1, 0x20},
    {0x6864, "\x78\x56\x34\x12"sv, FIELD(dttmRMarkDel), "\x78\x56\x34\x12"sv, 1, 0x40},
    {0x0801, "\x5a"sv, FIELD(fRMark), "\x01"sv, 1, 0x80},
    {0x4804, "\x34\x12"sv, FIELD(ibstRMark), "\x34\x12"sv, 2, 0x01},
    {0x6805, "\x78\x56\x34\x12"sv, FIELD(dttmRMark), "\x78\x56\x34\x12"sv, 2, 0x02},
    {0xCA72, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brc), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 2, 0x04},
    {0xCA71, "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a"sv, FIELD(shd),
     "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a"sv, 2, 0x08},
    {0x2859, "\x5a"sv, FIELD(sfxtText), "\x5a"sv, 2, 0x10},
    {0x4A4F, "\x34\x12"sv, FIELD(rgftc[0]), "\x34\x12"sv, 2, 0x40},
    {0x4A50, "\x34\x12"sv, FIELD(rgftc[1]), "\x34\x12"sv, 2, 0x80},
    {0x4A51, "\x34\x12"sv, FIELD(rgftc[2]), "\x34\x12"sv, 3, 0x01},
    {0x4A43, "\x34\x12"sv, FIELD(hps), "\x34\x12"sv, 3, 0x02},
    {0x484B, "\x34\x12"sv, FIELD(hpsKern), "\x34\x12"sv, 3, 0x04},
    {0x2A48, "\x5a"sv, FIELD(iss), "\x5a"sv, 3, 0x08},
    {0x2A3E, "\x5a"sv, FIELD(kul), "\x5a"sv, 3, 0x10},
    {0x4852, "\x34\x12"sv, FIELD(wCharScale), "\x34\x12"sv, 3, 0x20},
    {0x6877, "\x78\x56\x34\x12"sv, FIELD(cvUl), "\x78\x56\x34\x12"sv, 3, 0x40},
    {0x8840, "\x34\x12"sv, FIELD(dxaSpace), "\x34\x12"sv, 3, 0x80},
    {0x6870, "\x78\x56\x34\x12"sv, FIELD(cv), "\x78\x56\x34\x12"sv, 4, 0x01},
    {0x2A0C, "\x5a"sv, FIELD(highlight), "\x5a"sv, 4, 0x02},
    {0x4845, "\x34\x12"sv, FIELD(hpsPos), "\x34\x12"sv, 4, 0x04},
    {0x2A34, "\x5a"sv, FIELD(kcd), "\x5a"sv, 4, 0x08},
    {0x0868, "\x5a"sv, FIELD(fUsePgsu), "\x5a"sv, 4, 0x10},
    {0x6A09, "\x78\x56\x34\x12"sv, FIELD(ftcSym), "\x78\x56\x34\x12"sv, 4, 0x20},
    {0xCA78, "\x01\x02\x03\x04\x05\x06"sv, FIELD(ufel), "\x01\x02\x00\x00\x00\x00"sv, 4, 0x40},
    {0x486D, "\x34\x12"sv, FIELD(lidDefault), "\x34\x12"sv, 5, 0x01},
    {0x4873, "\x34\x12"sv, FIELD(lidDefault), "\x34\x12"sv, 5, 0x01},
    {0x486E, "\x34\x12"sv, FIELD(lidFE), "\x34\x12"sv, 5, 0x02},
    {0x4874, "\x34\x12"sv, FIELD(lidFE), "\x34\x12"sv, 5, 0x02},
    {0x0855, "\x00"sv, FIELD(fSpec), "\x01"sv, 5, 0x08},
    {0x4A30, "\x34\x12"sv, FIELD(istd), "\x34\x12"sv, 5, 0x10},
    {0x080A, "\x5a"sv, FIELD(fOle2), "\x5a"sv, 5, 0x20},
};
#undef FIELD

#define FIELD(field) offsetof(__ParagraphData, field), sizeof(__ParagraphData::field)
const SprmCase kParagraphRows[] = {
    {0x2461, "\x5a"sv, FIELD(jc), "\x5a"sv, 0, 0x01},
    {0x2405, "\x5a"sv, FIELD(fKeep), "\x5a"sv, 0, 0x02},
    {0x2406, "\x5a"sv, FIELD(fKeepFollow), "\x5a"sv, 0, 0x04},
    {0x2407, "\x5a"sv, FIELD(fPageBreakBefore), "\x5a"sv, 0, 0x08},
    {0x2640, "\x5a"sv, FIELD(lvl), "\x5a"sv, 0, 0x10},
    {0x260A, "\x5a"sv, FIELD(ilvl), "\x5a"sv, 0, 0x20},
    {0x460B, "\x34\x12"sv, FIELD(ilfo), "\x34\x12"sv, 0, 0x40},
    {0x845D, "\x34\x12"sv, FIELD(dxaRight), "\x34\x12"sv, 0, 0x80},
    {0x4455, "\x34\x12"sv, FIELD(dxcRight), "\x34\x12"sv, 1, 0x01},
    {0x845E, "\x34\x12"sv, FIELD(dxaLeft), "\x34\x12"sv, 1, 0x02},
    {0x4456, "\x34\x12"sv, FIELD(dxcLeft), "\x34\x12"sv, 1, 0x04},
    {0x8460, "\x34\x12"sv, FIELD(dxaLeft1), "\x34\x12"sv, 1, 0x08},
    {0x4457, "\x34\x12"sv, FIELD(dxcLeft1), "\x34\x12"sv, 1, 0x10},
    {0x6412, "\x78\x56\x34\x12"sv, FIELD(dyaLine), "\x78\x56\x34\x12"sv, 1, 0x20},
    {0x2431, "\x5a"sv, FIELD(fWidowControl), "\x5a"sv, 1, 0x40},
    {0x2448, "\x5a"sv, FIELD(fAdjustRight), "\x5a"sv, 1, 0x80},
    {0x245B, "\x5a"sv, FIELD(fDyaBeforeAuto), "\x5a"sv, 2, 0x01},
    {0x245C, "\x5a"sv, FIELD(fDyaAfterAuto), "\x5a"sv, 2, 0x02},
    {0xA413, "\x34\x12"sv, FIELD(dyaBefore), "\x34\x12"sv, 2, 0x04},
    {0x4458, "\x34\x12"sv, FIELD(dylBefore), "\x34\x12"sv, 2, 0x08},
    {0xA414, "\x34\x12"sv, FIELD(dyaAfter), "\x34\x12"sv, 2, 0x10},
    {0x4459, "\x34\x12"sv, FIELD(dylAfter), "\x34\x12"sv, 2, 0x20},
    {0x2433, "\x5a"sv, FIELD(fKinsoku), "\x5a"sv, 2, 0x40},
    {0x2447, "\x5a"sv, FIELD(fUsePgsuSettings), "\x5a"sv, 2, 0x80},
    {0x2434, "\x5a"sv, FIELD(fWordWrap), "\x5a"sv, 3, 0x01},
    {0x2436, "\x5a"sv, FIELD(fTopLinePunct), "\x5a"sv, 3, 0x02},
    {0x2435, "\x5a"sv, FIELD(fOverflowPunct), "\x5a"sv, 3, 0x04},
    {0x2437, "\x5a"sv, FIELD(fAutoSpaceDE), "\x5a"sv, 3, 0x08},
    {0x2438, "\x5a"sv, FIELD(fAutoSpaceDN), "\x5a"sv, 3, 0x10},
    {0x242A, "\x5a"sv, FIELD(fNoAutoHyph), "\x5a"sv, 3, 0x20},
    {0x240C, "\x5a"sv, FIELD(fNoLineNumb), "\x5a"sv, 3, 0x40},
    {0x2404, "\x5a"sv, FIELD(fSideBySide), "\x5a"sv, 3, 0x80},
    {0x4439, "\x34\x12"sv, FIELD(wAlignFont), "\x34\x12"sv, 4, 0x01},
    {0xC64E, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcTop), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 4,
     0x02},
    {0xC64F, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcLeft), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 4,
     0x04},
    {0xC650, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcBottom), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 4,
     0x08},
    {0xC651, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcRight), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 4,
     0x10},
    {0xC652, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcBetween), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 4,
     0x20},
    {0xC64D, "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a"sv, FIELD(shd),
     "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a"sv, 4, 0x80},
    {0xC60D, "\x00\x01\x34\x12\x5a"sv, FIELD(tabs), kAny, 5, 0x01},
    {0x8418, "\x34\x12"sv, FIELD(dxaAbs), "\x34\x12"sv, 6, 0x01},
    {0x8419, "\x34\x12"sv, FIELD(dyaAbs), "\x34\x12"sv, 6, 0x02},
    {0x841A, "\x34\x12"sv, FIELD(dxaWidth), "\x34\x12"sv, 6, 0x04},
    {0x261B, "\xff"sv, FIELD(pc), "\xf3"sv, 6, 0x08},
    {0x2423, "\x5a"sv, FIELD(wr), "\x5a"sv, 6, 0x10},
    {0x2462, "\x5a"sv, FIELD(fNoAllowOverlap), "\x5a"sv, 6, 0x20},
    {0x442B, "\x34\x92"sv, FIELD(wHeightAbs), "\x34\x12\x01"sv, 6, 0x40},
    {0x842F, "\x34\x12"sv, FIELD(dxaFromText), "\x34\x12"sv, 6, 0x80},
    {0x842E, "\x34\x12"sv, FIELD(dyaFromText), "\x34\x12"sv, 7, 0x01},
    {0x442C, "\x34\x12"sv, FIELD(dcs), "\x34\x00"sv, 7, 0x02},
    {0x443A, "\x34\x12"sv, FIELD(wFrameTextFlow), "\x34\x12"sv, 7, 0x04},
    {0x2430, "\x5a"sv, FIELD(fLocked), "\x5a"sv, 7, 0x08},
    {0x2416, "\x5a"sv, FIELD(fInTable), "\x5a"sv, 8, 0x01},
    {0x244B, "\x5a"sv, FIELD(fInnerTableCell), "\x5a"sv, 8, 0x02},
    {0x2417, "\x5a"sv, FIELD(fTtp), "\x5a"sv, 8, 0x04},
    {0x244C, "\x5a"sv, FIELD(fInnerTtp), "\x5a"sv, 8, 0x08},
    {0x6649, "\x78\x56\x34\x12"sv, FIELD(itap), "\x78\x56\x34\x12"sv, 8, 0x20},
    {0x4600, "\x34\x12"sv, FIELD(istd), "\x34\x12"sv, 8, 0x40},
    {0xC5FF, "\x02"sv, FIELD(fHasPrivate), "\x01"sv, 8, 0x80},
};
#undef FIELD

#define FIELD(field) offsetof(__SectionData, field), sizeof(__SectionData::field)
const SprmCase kSectionRows[] = {
    {0x3009, "\x5a"sv, FIELD(bkc), "\x5a"sv, 0, 0x01},
    {0x300A, "\x5a"sv, FIELD(fTitlePage), "\x5a"sv, 0, 0x02},
    {0x300E, "\x5a"sv, FIELD(nfcPgn), "\x5a"sv, 0, 0x04},
    {0x3000, "\x5a"sv, FIELD(cnsPgn), "\x5a"sv, 0, 0x10},
    {0x3011, "\x5a"sv, FIELD(fPgnRestart), "\x5a"sv, 0, 0x20},
    {0x3012, "\x5a"sv, FIELD(fEndnote), "\x5a"sv, 0, 0x40},
    {0x3019, "\x5a"sv, FIELD(fLBetween), "\x5a"sv, 1, 0x04},
    {0x301A, "\x5a"sv, FIELD(vjc), "\x5a"sv, 1, 0x08},
    {0x5007, "\x34\x12"sv, FIELD(dmBinFirst), "\x34\x12"sv, 1, 0x10},
    {0x5008, "\x34\x12"sv, FIELD(dmBinOther), "\x34\x12"sv, 1, 0x20},
    {0xD234, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcTopEx), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 1,
     0x40},
    {0xD236, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcBottomEx), "\x01\x02\x03\x04\x05\x06\x67\x08"sv,
     1, 0x80},
    {0xD235, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcLeftEx), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 2,
     0x01},
    {0xD237, "\x01\x02\x03\x04\x05\x06\x67\x08"sv, FIELD(brcRightEx), "\x01\x02\x03\x04\x05\x06\x67\x08"sv, 2,
     0x02},
    {0x702B, "\x01\x02\x03\x04"sv, FIELD(brcTop), "\x01\x02\x03\x04"sv, 2, 0x04},
    {0x702D, "\x01\x02\x03\x04"sv, FIELD(brcBottom), "\x01\x02\x03\x04"sv, 2, 0x08},
    {0x702C, "\x01\x02\x03\x04"sv, FIELD(brcLeft), "\x01\x02\x03\x04"sv, 2, 0x10},
    {0x702E, "\x01\x02\x03\x04"sv, FIELD(brcRight), "\x01\x02\x03\x04"sv, 2, 0x20},
    {0xD1FF, "\x04\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f\x10\x11\x12\x13"sv,
     FIELD(manuscript), "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f\x10\x11\x12\x13"sv, 2,
     0x40},
    {0x7030, "\x78\x56\x34\x12"sv, FIELD(dxtCharSpace), "\x78\x56\x34\x12"sv, 3, 0x04},
    {0x9031, "\x34\x12"sv, FIELD(dyaLinePitch), "\x34\x12"sv, 3, 0x08},
    {0x5032, "\x34\x12"sv, FIELD(clm), "\x34\x12"sv, 3, 0x10},
    {0x301D, "\x5a"sv, FIELD(dmOrientPage), "\x5a"sv, 3, 0x20},
    {0x3001, "\x5a"sv, FIELD(iHeadingPgn), "\x5a"sv, 3, 0x40},
    {0x501C, "\x34\x12"sv, FIELD(pgnStart), "\x34\x12"sv, 3, 0x80},
    {0x5033, "\x34\x12"sv, FIELD(wTextFlow), "\x34\x12"sv, 4, 0x02},
    {0xB01F, "\x34\x12"sv, FIELD(xaPage), "\x34\x12"sv, 4, 0x04},
    {0xB020, "\x34\x12"sv, FIELD(yaPage), "\x34\x12"sv, 4, 0x08},
    {0xB021, "\x34\x12"sv, FIELD(dxaLeft), "\x34\x12"sv, 4, 0x10},
    {0xB022, "\x34\x12"sv, FIELD(dxaRight), "\x34\x12"sv, 4, 0x20},
    {0x9023, "\x34\x12"sv, FIELD(dyaTop), "\x34\x12"sv, 4, 0x40},
    {0x9024, "\x34\x12"sv, FIELD(dyaBottom), "\x34\x12"sv, 4, 0x80},
    {0xB025, "\x34\x12"sv, FIELD(dzaGutter), "\x34\x12"sv, 5, 0x01},
    {0xB017, "\x34\x12"sv, FIELD(dyaHdrTop), "\x34\x12"sv, 5, 0x02},
    {0xB018, "\x34\x12"sv, FIELD(dyaHdrBottom), "\x34\x12"sv, 5, 0x04},
    {0x500B, "\x34\x12"sv, FIELD(ccolM1), "\x35\x12"sv, 5, 0x08},
    {0x3005, "\x5a"sv, FIELD(fEvenlySpaced), "\x5a"sv, 5, 0x10},
    {0x900C, "\x34\x12"sv, FIELD(dxaColumns), "\x34\x12"sv, 5, 0x20},
    {0xF203, "\x03\x34\x12"sv, FIELD(rgdxaColumnWidth[3]), "\x34\x12\x00\x00"sv, 11, 1},
    {0xF204, "\x03\x34\x12"sv, FIELD(rgdxaColumnSpacing[3]), "\x34\x12\x00\x00"sv, 101, 1},
    {0x522F, "\xb2\x00"sv, FIELD(pgbApplyTo), "\x02\x02\x05"sv, 6, 0x02},
    {0x5026, "\x34\x12"sv, FIELD(dmPaperReq), "\x34\x12"sv, 6, 0x04},
    {0x322A, "\x5a"sv, FIELD(fRTLGutter), "\x5a"sv, 6, 0x10},
    {0x303B, "\x5a"sv, FIELD(fpc), "\x5a"sv, 6, 0x20},
    {0x5040, "\x34\x12"sv, FIELD(nfcFtnRef), "\x34"sv, 6, 0x40},
    {0x5042, "\x34\x12"sv, FIELD(nfcEdnRef), "\x34"sv, 6, 0x80},
    {0x503F, "\x34\x12"sv, FIELD(nFtn), "\x34\x12"sv, 7, 0x01},
    {0x5041, "\x34\x12"sv, FIELD(nEdn), "\x34\x12"sv, 7, 0x02},
    {0x303C, "\x5a"sv, FIELD(rncFtn), "\x5a"sv, 7, 0x04},
    {0x303E, "\x5a"sv, FIELD(rncEdn), "\x5a"sv, 7, 0x08},
    {0x3006, "\x5a"sv, FIELD(fUnlocked), "\x5a"sv, 7, 0x10},
};
#undef FIELD

TEST(SprmTables, CharacterSprmsSetTheirFieldAndPresenceBitOnly) {
  ExpectRows<KDRSpanProp, __SpanData>(kSpanRows, DecodeSpan);
}

TEST(SprmTables, ParagraphSprmsSetTheirFieldAndPresenceBitOnly) {
  ExpectRows<KDRParagraphProp, __ParagraphData>(kParagraphRows, DecodeParagraph);
}

TEST(SprmTables, SectionSprmsSetTheirFieldAndPresenceBitOnly) {
  ExpectRows<KDRSectionProp, __SectionData>(kSectionRows, DecodeSection);
}

/// True if a list of this sprm alone leaves a record as it was.
template <class Prop, class Decode>
bool IsIgnored(uint16_t opcode, const Decode& decode) {
  const Bytes list = support::ByteWriter().u16(opcode).u8(1).take();
  return DecodeOverPattern<Prop>(list, decode) == DecodeOverPattern<Prop>({}, decode);
}

template <class Prop, size_t N, class Decode>
void ExpectAllOthersIgnored(const SprmCase (&rows)[N], const Decode& decode) {
  for (uint32_t opcode = 0; opcode <= 0xFFFF; ++opcode) {
    const bool known = std::any_of(std::begin(rows), std::end(rows),
                                   [opcode](const SprmCase& row) { return row.opcode == opcode; });
    if (known) continue;
    ASSERT_TRUE(IsIgnored<Prop>(static_cast<uint16_t>(opcode), decode)) << std::hex << opcode;
  }
}

TEST(SprmTables, AllOtherOpcodesAreIgnoredInRuns) {
  ExpectAllOthersIgnored<KDRSpanProp>(kSpanRows, DecodeSpan);
}

TEST(SprmTables, AllOtherOpcodesAreIgnoredInParagraphs) {
  ExpectAllOthersIgnored<KDRParagraphProp>(kParagraphRows, DecodeParagraph);
}

TEST(SprmTables, AllOtherOpcodesAreIgnoredInSections) {
  ExpectAllOthersIgnored<KDRSectionProp>(kSectionRows, DecodeSection);
}

}  // namespace
