#include "drawing/drawing.h"

#include "wordreader/document.h"

namespace mso_escher {

void MsoRODrawingGroup::Init(const MsoRORecInfo& container, ChainAllocator& allocator) {
  MsoRORecInfo record;
  for (MsoRORecords records(container); records.Next(&record) == Status::kOk;) {
    if (record.type == kBlipStoreContainer) blipStore_.Init(record, allocator);
    if (record.type == kOpt) defaults_.Init(record);
  }
}

void MsoRODrawing::Init(const MsoRORecInfo& container, ChainAllocator& allocator) {
  MsoRORecInfo record;
  for (MsoRORecords records(container); records.Next(&record) == Status::kOk;) {
    if (record.type == kShapeGroupContainer && !root_.Good()) root_.InitGroupShape(record, allocator, 0);
    if (record.type == kShapeContainer && !background_.Good()) background_.InitShape(record, allocator, 0);
  }
}

}  // namespace mso_escher

Status KDRDggInfo::Read(const KDRDocument& document) {
  KDRTableRecord record;
  const Status status = document.GetTableRecord(&record, mso_word::FCLCB_DRAWINGS);
  if (failed(status)) return status;
  return ReadRecord(record.bytes, document.GetAllocator());
}

Status KDRDggInfo::ReadRecord(ByteView bytes, ChainAllocator& allocator) {
  using namespace mso_escher;
  MsoRORecords records(bytes);
  MsoRORecInfo record;
  if (records.Next(&record) != Status::kOk || record.type != kDrawingGroupContainer)
    return Status::kMalformed;
  group_.Init(record, allocator);
  for (unsigned char label; records.ReadBytes(&label, 1) == 1;) {
    if (label >= drawings_.size()) return Status::kMalformed;
    if (records.Next(&record) != Status::kOk || record.type != kDrawingContainer) return Status::kMalformed;
    drawings_[label].Init(record, allocator);
  }
  return Status::kOk;
}
