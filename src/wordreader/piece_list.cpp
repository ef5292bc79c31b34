#include "wordreader/piece_list.h"

#include <algorithm>
#include <cstring>

#include "wordreader/piece.h"

namespace pagerex {
namespace {

constexpr uint8_t kPropertyGroup = 1, kPieceTable = 2;
constexpr size_t kAddressableGroups = 1 << 15;
constexpr uint32_t kNarrow = 0x40000000;  // flag of an offset: 8-bit text, at half of it

}  // namespace

void PieceList::Read(WordFile& file) {
  allocator_ = &file.allocator();
  const ByteView clx = file.Table(mso_word::FCLCB_CLX);
  if (!ReadTable(clx)) {
    warn(file.warnings(), WarningCode::kTableDamaged, "pieces");
    MakeOnePiece(file);
    return;
  }
  end_ = std::min<uint32_t>(table_.Position(table_.PresentCount()), INT32_MAX);
  for (uint32_t i = 0; i < table_.PresentCount(); ++i) {
    if (table_.Position(i) <= table_.Position(i + 1) && table_.Position(i + 1) <= INT32_MAX) continue;
    warn(file.warnings(), WarningCode::kTableDamaged, "pieces");
    Mend();
    break;
  }
  LimitLength(file);
  Load(0);
}

/// Pieces of a sound file share no text. Those of a damaged one may all be the same.
void PieceList::LimitLength(const WordFile& file) {
  constexpr uint64_t kMostTimes = 8, kSpare = 1 << 16;
  const uint64_t most = kMostTimes * file.bytesHeld() + kSpare;
  if (end_ <= most) return;
  warn(file.warnings(), WarningCode::kWorkLimit, "text");
  end_ = static_cast<uint32_t>(most);
}

/// Keeps what goes on behind all pieces before it.
void PieceList::Mend() {
  uint32_t reached = 0;
  std::vector<TextPiece> kept;
  for (uint32_t i = 0; i < table_.PresentCount(); ++i) {
    end_ = std::min<uint32_t>(table_.Position(i + 1), INT32_MAX);
    if (end_ <= reached || table_.Position(i) >= end_) continue;
    Load(i);
    if (piece_.start < reached) {
      piece_.fc = piece_.OffsetOf(reached);
      piece_.start = reached;
    }
    kept.push_back(piece_);
    reached = piece_.end;
  }
  mended_ = std::move(kept);
  end_ = reached;
  piece_ = {};
}

/// Whether there is one.
bool PieceList::ReadTable(ByteView clx) {
  for (size_t at = 0; at < clx.size();) {
    const uint8_t type = clx.u8(at++);
    if (type == kPropertyGroup) {
      const uint16_t bytes = clx.u16(at);
      if (groups_.size() < kAddressableGroups) groups_.push_back(clx.part(at + 2, bytes));
      at += 2 + size_t{bytes};
    } else if (type == kPieceTable) {
      table_ = PositionTable(clx.part(at + 4, clx.u32(at)), sizeof(mso_word::PCD));
      return table_.Count() > 0;
    }
  }
  return false;
}

void PieceList::MakeOnePiece(const WordFile& file) {
  const uint32_t count = file.storyStarts().back();
  const uint32_t bytes = file.textEnd() > file.textStart() ? file.textEnd() - file.textStart() : 0;
  const bool isWide = bytes / 2 >= count;
  end_ = std::min(count, isWide ? bytes / 2 : bytes);
  piece_ = {0, end_, file.textStart(), isWide, 0};
}

void PieceList::Load(uint32_t index) {
  current_ = index;
  if (index < mended_.size()) {
    piece_ = mended_[index];
    return;
  }
  const ByteView pcd = table_.Record(index);
  const uint32_t fc = pcd.u32(2);
  piece_.isWide = (fc & kNarrow) == 0;
  piece_.fc = piece_.isWide ? fc : (fc & ~kNarrow) >> 1;
  piece_.start = table_.Position(index);
  piece_.prm = pcd.u16(6);
  // An offset plus a length stays within 32 bits.
  const uint32_t end = std::clamp(table_.Position(index + 1), piece_.start, std::max(piece_.start, end_));
  piece_.end = piece_.start + std::min((UINT32_MAX - piece_.fc) >> 1, end - piece_.start);
}

uint32_t PieceList::Count() const {
  return mended_.empty() ? table_.PresentCount() : static_cast<uint32_t>(mended_.size());
}

/// The last piece that begins at or before `position`.
uint32_t PieceList::IndexOf(uint32_t position) const {
  if (mended_.empty()) return table_.Find(position);
  const auto above = std::upper_bound(mended_.begin(), mended_.end(), position,
                                      [](uint32_t at, const TextPiece& piece) { return at < piece.start; });
  return above == mended_.begin() ? Count() : static_cast<uint32_t>(above - mended_.begin() - 1);
}

const TextPiece& PieceList::FindElsewhere(uint32_t position) {
  static constexpr TextPiece kNone{};
  const auto holds = [&] { return position >= piece_.start && position < piece_.end; };
  if (position >= end_ || Count() == 0) return kNone;
  if (position >= piece_.end && current_ + 1 < Count()) Load(current_ + 1);
  if (holds()) return piece_;
  const uint32_t index = IndexOf(position);
  if (index >= Count()) return kNone;
  Load(index);
  return holds() ? piece_ : kNone;
}

uint32_t PieceList::NextStart(uint32_t position) const {
  const uint32_t before = IndexOf(position);
  const uint32_t next = before < Count() ? before + 1 : 0;
  if (next >= Count()) return end_;
  return mended_.empty() ? table_.Position(next) : mended_[next].start;
}

ByteView PieceList::Modifier(uint16_t prm) {
  if (prm == 0) return {};
  if ((prm & 1) == 0) return SingleSprm(prm);
  const size_t group = prm >> 1;
  return group < groups_.size() ? groups_[group] : ByteView();
}

ByteView PieceList::SingleSprm(uint16_t prm) {
  const auto [found, isNew] = single_.try_emplace(prm);
  if (isNew) {
    const uint16_t opcode = OpcodeOfSingleSprm(static_cast<uint8_t>(prm >> 1 & 0x7F));
    if (opcode != 0) {
      auto* const bytes = static_cast<uint8_t*>(allocator_->Alloc(3));
      std::memcpy(bytes, &opcode, sizeof(opcode));
      bytes[2] = static_cast<uint8_t>(prm >> 8);
      found->second = {bytes, 3};
    }
  }
  return found->second;
}

}  // namespace pagerex
