// A host in C++: what it gets for a document that is not there.
#include <pagerex/numformat.h>
#include <pagerex/pagerex.h>

#include <string>

int main() {
  const std::string source = "/nowhere.doc", target = "/nowhere.htm";
  std::string option = "view=phone";
  char* argv[] = {&option[0]};
  if (PageRex(source.c_str(), target.c_str(), 1, argv) != PAGEREX_CANNOT_OPEN) return 1;
  if (pageRex(source.c_str(), target.c_str(), 200, nullptr) != PAGEREX_ERROR) return 2;
  return _XNFInit() == NF_OK && _XNFUnInit() == NF_OK ? 0 : 3;
}
