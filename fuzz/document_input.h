#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "support/bytes.h"

/// The input of the fuzzers that convert whole documents. Bytes that begin like a compound file are taken as
/// they are. Anything else is the content of the document's three streams, which is packed into a sound
/// compound file: nearly every change to that would break the container, and nothing behind it be reached.
namespace fuzz {

struct DocumentStreams {
  support::Bytes wordDocument;
  support::Bytes table;
  support::Bytes data;
};

bool isCompoundFile(const uint8_t* input, size_t size);

/// 32 bits each of the lengths of the first two streams, then the streams. A length that goes too far takes
/// what there is.
DocumentStreams splitStreams(const uint8_t* input, size_t size);
support::Bytes joinStreams(const DocumentStreams& streams);

/// The document file that an input stands for.
support::Bytes documentOf(const uint8_t* input, size_t size);

/// Converts the document in a view of `PageRex`, with more options if there are any. The result is that of
/// `PageRex`. Ends the process by a signal if the result is none of those that are told, or the output
/// immoderate.
int convert(const support::Bytes& document, const char* view, std::vector<std::string> more = {});

}  // namespace fuzz
