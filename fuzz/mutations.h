#pragma once

#include <cstddef>
#include <random>

#include "document_input.h"
#include "support/bytes.h"

/// Changes to an input that know what its parts are, so that most of what comes out still reads as a
/// document. What they do to bytes in the end is libFuzzer's own choice: only fuzzers can link this.
namespace fuzz {

using Random = std::minstd_rand;

/// Into the place that libFuzzer gives; what came of it.
size_t copyOut(const support::Bytes& bytes, uint8_t* out, size_t maxSize);

/// The bytes may grow by `room`.
void changeBytes(support::Bytes& bytes, size_t room);
/// Changes at most `length` bytes from `offset` on; what lies behind keeps its place.
void changeInPlace(support::Bytes& bytes, size_t offset, size_t length);

/// Changes one of the drawing records that lie in `records`, at any depth, with the lengths of those around
/// it. Bytes that begin no record are passed over.
void changeRecords(support::Bytes& records, size_t room, Random& random);

/// Changes a table, a page, a part of the FIB or a picture. A table that changes its length moves to the end
/// of the table stream, and the FIB follows it.
void changeDocument(DocumentStreams& streams, size_t room, Random& random);
/// Puts a table of the other document in the place of the own one.
void takeTable(DocumentStreams& streams, const DocumentStreams& other, Random& random);

}  // namespace fuzz
