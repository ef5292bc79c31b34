// A host in C++: converts a document in a view, and asks for one that is not there.
//
//     use_cpp SOURCE TARGET
#include <pagerex/convert.h>
#include <pagerex/numformat.h>
#include <pagerex/pagerex.h>

#include <string>

int main(int argc, char** argv) {
  const std::string nowhere = "/nowhere.doc";
  std::string view = "view=phone", size = "pagesize=2000";
  char* options[] = {&view[0], &size[0]};
  if (argc != 3) return 9;
  if (PageRex(nowhere.c_str(), argv[2], 2, options) != PAGEREX_CANNOT_OPEN) return 1;
  if (pageRex(nowhere.c_str(), argv[2], 200, nullptr) != PAGEREX_ERROR) return 2;
  if (PageRex(argv[1], argv[2], 2, options) != PAGEREX_OK) return 3;
  if (PageRexOutputError() != 0) return 4;
  if (pagerex_detect(nullptr, 0) != PAGEREX_KIND_EMPTY) return 6;
  return _XNFInit() == NF_OK && _XNFUnInit() == NF_OK ? 0 : 5;
}
