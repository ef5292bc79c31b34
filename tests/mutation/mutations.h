#pragma once

#include <cstddef>
#include <cstdint>

#include "support/bytes.h"
#include "support/word_document_writer.h"

/// Changes to the bytes of sound documents, the same ones in each run.
namespace mutation {

/// The same numbers in each run and on each machine.
class Random {
 public:
  uint32_t below(size_t limit) { return static_cast<uint32_t>(next() % limit); }
  template <class T, size_t N>
  T of(const T (&items)[N]) {
    return items[below(N)];
  }

 private:
  uint32_t next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    return state_ ^= state_ << 5;
  }
  uint32_t state_ = 20240601;
};

/// Where a part of a stream that a reader takes as one begins and ends.
struct Part {
  support::Bytes* stream;
  size_t begin;
  size_t end;
};

/// Changes a few bytes of the part.
void change(const Part& part, Random& random);
/// A copy with some changes in its streams; now and then one of these is cut.
support::WordStreams changed(const support::WordStreams& sound, Random& random);
support::Bytes fileOf(const support::WordStreams& streams);

}  // namespace mutation
