#pragma once

#include <cstdint>

#include "support/word_document_writer.h"

/// Documents to measure the converter on, made by the writer of the tests.
namespace bench {

/// One construct of a document, as often as asked for: nothing else grows with `count`.
struct Construct {
  const char* name;
  void (*fill)(support::WordDocument& doc, int count);
};

extern const Construct kConstructs[];
extern const int kConstructCount;

/// Styles and fonts as an ordinary document has them.
void addStyles(support::WordDocument& doc);

/// A document of an everyday kind for the whole program.
struct WholeDocument {
  const char* name;
  void (*fill)(support::WordDocument& doc);
};

extern const WholeDocument kWholeDocuments[];
extern const int kWholeDocumentCount;

}  // namespace bench
