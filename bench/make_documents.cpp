// Writes the documents that the program is measured on into a folder:
//
//   make_bench_documents FOLDER          documents of everyday kinds
//   make_bench_documents FOLDER COUNT    each construct, so many times in a document of its own

#include <cstdio>
#include <exception>
#include <string>

#include "documents.h"

namespace {

template <class Fill>
void save(const std::string& folder, const char* name, const Fill& fill) {
  support::WordDocument doc;
  bench::addStyles(doc);
  fill(doc);
  doc.save(folder + "/" + name + ".doc");
}

void saveWholeDocuments(const std::string& folder) {
  for (int i = 0; i < bench::kWholeDocumentCount; ++i) {
    save(folder, bench::kWholeDocuments[i].name, bench::kWholeDocuments[i].fill);
  }
}

void saveConstructs(const std::string& folder, int count) {
  for (int i = 0; i < bench::kConstructCount; ++i) {
    save(folder, bench::kConstructs[i].name,
         [&](support::WordDocument& doc) { bench::kConstructs[i].fill(doc, count); });
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fprintf(stderr, "usage: %s FOLDER [COUNT]\n", argv[0]);
    return 2;
  }
  try {
    if (argc == 2) saveWholeDocuments(argv[1]);
    if (argc == 3) saveConstructs(argv[1], std::stoi(argv[2]));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
  return 0;
}
