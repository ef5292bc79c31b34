#include "wordreader/annotations.h"

#include <algorithm>
#include <cstring>

#include "wordreader/document.h"

namespace {

using AtnPositions = KDRPlcf<mso_word::ATRD, mso_word::FCLCB_ANNOTATION_REFS>;

constexpr size_t kMostUsers = 4096;  // a reference could reach eight times as many, but each takes 160 bytes
constexpr size_t kTagInExtra = 2;    // place of a range's tag in the extra data of its name

/// The table of authors: names as a length, a byte that is skipped, and 16-bit characters.
void readUsers(ByteView names, std::vector<UserInfo>& users) {
  for (size_t at = 0; at < names.size() && users.size() < kMostUsers;) {
    const size_t textBytes = names.u8(at) * size_t{2};
    const ByteView name = names.part(at + 2, textBytes);
    UserInfo& user = users.emplace_back();
    if (!name.empty()) {
      std::memcpy(user.name, name.data(), std::min(name.size(), sizeof(user.name) - sizeof(user.name[0])));
    }
    at += 2 + textBytes;
  }
}

uint32_t rangeLength(const mso_word::ATRD& reference, uint32_t position, const KDRAtnBkmkStars& ranges) {
  if (reference.rangeTag == -1) return 0;
  const uint32_t range = ranges.FindRefIndex(static_cast<uint32_t>(reference.rangeTag));
  if (range == KDRAtnBkmkStars::kNoRange) return 0;
  return position - ranges.positions().Position(range);
}

void setInitials(const mso_word::ATRD& reference, std::vector<UserInfo>& users) {
  const int16_t index = reference.authorIndex;
  if (index < 0 || static_cast<size_t>(index) >= users.size()) return;
  std::memcpy(users[static_cast<size_t>(index)].initials, reference.initials, sizeof(reference.initials));
}

}  // namespace

Status KDRAnnotations::Read(const KDRDocument& document) {
  Status status = textRanges_.Read(document);
  if (!failed(status)) status = dates_.Read(document);
  if (!failed(status)) status = ranges_.Read(document);
  if (!failed(status)) status = rangeEnds_.Read(document);
  if (!failed(status)) status = refs_.Read(document, ranges_, users_);
  return status;
}

const UserInfo& KDRAnnotations::GetAuthor(const AtnRef& ref) const {
  static const UserInfo nobody;
  const bool known = ref.authorIndex >= 0 && static_cast<size_t>(ref.authorIndex) < users_.size();
  return known ? users_[static_cast<size_t>(ref.authorIndex)] : nobody;
}

Status KDRAtnDTTMs::Read(const KDRDocument& document) {
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, mso_word::FCLCB_ANNOTATION_DATES);
  if (status == Status::kOk) bytes_ = record.bytes;
  return status;
}

Status KDRAtnBkmkStars::Read(const KDRDocument& document) {
  const Status status = KDRPlcfbkf::Read(document);
  indexByTag_.clear();
  indexByTag_.reserve(Count());
  for (uint32_t i = 0; i < Count(); ++i) {
    indexByTag_.emplace_back(Item(i).name.extra.u32(kTagInExtra), i);
  }
  std::sort(indexByTag_.begin(), indexByTag_.end());
  return status;
}

uint32_t KDRAtnBkmkStars::FindRefIndex(unsigned int tag) const {
  const auto found = std::lower_bound(indexByTag_.begin(), indexByTag_.end(), std::pair(tag, 0u));
  return found != indexByTag_.end() && found->first == tag ? found->second : kNoRange;
}

Status KDRAtnRefs::Read(const KDRDocument& document, const KDRAtnBkmkStars& ranges,
                        std::vector<UserInfo>& users) {
  KDRTableRecord names;
  Status status = document.GetTableRecord(&names, mso_word::FCLCB_ANNOTATION_OWNERS);
  if (status != Status::kOk) return status;
  readUsers(names.bytes, users);

  AtnPositions positions;
  status = positions.Read(document);
  refs_.reserve(positions.Count());
  for (uint32_t i = 0; i < positions.Count(); ++i) {
    const auto [range, reference] = positions.Item(i);
    refs_.push_back({reference.rangeTag, reference.authorIndex, range.start,
                     rangeLength(reference, range.start, ranges)});
    setInitials(reference, users);
  }
  return status;
}
