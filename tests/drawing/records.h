#pragma once

#include "base/chain_allocator.h"
#include "drawing/drawing.h"
#include "escher_writer.h"

inline ByteView viewOf(const support::Bytes& bytes) {
  return ByteView(bytes.data(), bytes.size());
}

/// The first record of some bytes; of type 0 if there is none.
inline mso_escher::MsoRORecInfo firstRecord(const support::Bytes& bytes) {
  mso_escher::MsoRORecInfo record;
  mso_escher::MsoRORecords(viewOf(bytes)).Next(&record);
  return record;
}

/// A property table, with the bytes that it reads.
struct ReadTable {
  explicit ReadTable(support::Bytes made) : bytes(std::move(made)) { table.Init(firstRecord(bytes)); }
  support::Bytes bytes;
  mso_escher::MsoROShapeOPT table;
};

/// A shape or group, with the bytes and the memory that it lies in.
struct ReadShape {
  explicit ReadShape(support::Bytes made) : bytes(std::move(made)) {
    const mso_escher::MsoRORecInfo record = firstRecord(bytes);
    if (record.type == mso_escher::kShapeGroupContainer) {
      shape.InitGroupShape(record, allocator, 0);
    } else {
      shape.InitShape(record, allocator, 0);
    }
  }
  support::Bytes bytes;
  ChainAllocator allocator;
  mso_escher::MsoROShape shape;
};

/// The drawings of a document, read from the bytes of their table.
struct ReadDrawings {
  explicit ReadDrawings(support::Bytes made) : bytes(std::move(made)) {
    status = info.ReadRecord(viewOf(bytes), allocator);
  }
  const mso_escher::MsoROBlipStore& store() const { return info.GetDrawingGroup().GetBlipStore(); }
  const mso_escher::MsoROShape& root(unsigned int i = 0) const { return info.GetDrawing(i).GetRootShape(); }
  support::Bytes bytes;
  ChainAllocator allocator;
  KDRDggInfo info;
  Status status;
};
