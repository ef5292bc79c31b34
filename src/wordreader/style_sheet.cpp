#include "wordreader/style_sheet.h"

#include <algorithm>
#include <iterator>

#include "wordreader/document.h"

using mso_word::STYLE_SGC;

Status KDRStyleSheet::Read(const KDRDocument& document) {
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, mso_word::FCLCB_STYLE_SHEET);
  return status == Status::kOk ? ReadRecord(record.bytes, document.GetAllocator()) : status;
}

Status KDRStyleSheet::ReadRecord(ByteView bytes, ChainAllocator& allocator) {
  const uint16_t headerSize = bytes.u16(0);
  header_ = bytes.part(2, headerSize).copyOf<mso_word::STSHI>(0);
  ByteView left = bytes.part(size_t{2} + headerSize);
  if (left.empty()) return Status::kNothing;

  styles_.reserve(std::min<size_t>(header_.styleCount, left.size() / 2));
  for (unsigned int istd = 0; istd < header_.styleCount && !left.empty(); ++istd) {
    const uint16_t size = left.u16(0);
    left = left.part(2);
    KDRStyle* style = nullptr;
    if (size != 0) {
      if (header_.baseSize > size) break;
      KDRStyle read(left, static_cast<uint16_t>(istd));
      unsigned int used = 0;
      read.Init(header_.baseSize, &used);
      if (used != size) break;
      style = New<KDRStyle>(allocator, read);
    }
    styles_.push_back(style);
    left = left.part(size);
  }
  return Status::kOk;
}

void KDRStyle::Init(unsigned int baseSize, unsigned int* size) {
  size_t at = baseSize;
  const size_t nameBytes = size_t{record_.u16(at)} * 2;
  name_ = record_.part(at + 2, nameBytes);
  at += 2 + nameBytes + 2;  // the name ends with a zero that its length does not count

  const unsigned int groups = fixedPart().groups & 0xF;
  for (unsigned int i = 0; i < groups; ++i) {
    switch (GetSubSgc(GetKind(), i)) {
      case mso_word::SGC_PARAGRAPH:
        papx_ = record_.part(at);
        break;
      case mso_word::SGC_CHARACTER:
        chpx_ = record_.part(at);
        break;
      case mso_word::SGC_TABLE:
        tapx_ = record_.part(at);
        break;
      default:
        break;
    }
    const size_t groupSize = record_.u16(at);
    at += 2 + groupSize + groupSize % 2;
  }
  *size = static_cast<unsigned int>(at);
}

STYLE_SGC KDRStyle::GetSubSgc(STYLE_SGC kind, unsigned int group) {
  using namespace mso_word;
  static constexpr STYLE_SGC kGroups[][3] = {
      {SGC_NONE, SGC_NONE, SGC_NONE},             // no kind
      {SGC_PARAGRAPH, SGC_CHARACTER, SGC_NONE},   // paragraph
      {SGC_CHARACTER, SGC_NONE, SGC_NONE},        // character
      {SGC_TABLE, SGC_PARAGRAPH, SGC_CHARACTER},  // table
      {SGC_PARAGRAPH, SGC_NONE, SGC_NONE},        // numbering
  };
  return kind < std::size(kGroups) && group < std::size(kGroups[0]) ? kGroups[kind][group] : SGC_NONE;
}

Status KDRStyleSheet::GetStyle(unsigned int istd, const KDRStyle** style) const {
  *style = istd < styles_.size() ? styles_[istd] : nullptr;
  return *style ? Status::kOk : Status::kFailure;
}
