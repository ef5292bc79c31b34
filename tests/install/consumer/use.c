/* A host in C: what it gets for a document that is not there. */
#include <pagerex/numformat.h>
#include <pagerex/pagerex.h>
#include <stddef.h>

int main(void) {
  IPageRexCallBack callbacks = {NULL, NULL, NULL};
  if (PageRex("/nowhere.doc", "/nowhere.htm", 0, NULL) != PAGEREX_CANNOT_OPEN) return 1;
  if (pageRex("/nowhere.doc", "/nowhere.htm", 200, &callbacks) != PAGEREX_ERROR) return 2;
  if (PageRexOutputError() != 0) return 4;
  return _XNFInit() == NF_OK && _XNFUnInit() == NF_OK ? 0 : 3;
}
