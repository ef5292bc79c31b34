// Writes the documents that compare.py measures the program on, into a folder: make_bench_documents FOLDER

#include <cstdio>
#include <exception>
#include <string>

#include "documents.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  try {
    for (int i = 0; i < bench::kWholeDocumentCount; ++i) {
      support::WordDocument doc;
      bench::addStyles(doc);
      bench::kWholeDocuments[i].fill(doc);
      doc.save(std::string(argv[1]) + "/" + bench::kWholeDocuments[i].name + ".doc");
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
  return 0;
}
