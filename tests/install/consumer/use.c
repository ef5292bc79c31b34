/* A host in C: converts a document with callbacks, and asks for one that is not there, and what a
 * few bytes are.
 *
 *     use_c SOURCE TARGET     prints the pages as they are finished */
#include <pagerex/convert.h>
#include <pagerex/numformat.h>
#include <pagerex/pagerex.h>
#include <stdio.h>
#include <string.h>

static int ended = 0;

static void finishPage(int page, const char* path) {
  printf("%d %s\n", page, path);
}

static void endTransform(void) {
  ended = 1;
}

static int goOn(void) {
  return PAGEREX_GO_ON;
}

int main(int argc, char** argv) {
  IPageRexCallBack callbacks = {finishPage, endTransform, goOn};
  if (argc != 3) return 9;
  if (PageRex("/nowhere.doc", "/nowhere.htm", 0, NULL) != PAGEREX_CANNOT_OPEN) return 1;
  if (pageRex("/nowhere.doc", "/nowhere.htm", 200, &callbacks) != PAGEREX_ERROR || ended) return 2;
  if (pageRex(argv[1], argv[2], 2000, &callbacks) != PAGEREX_OK || !ended) return 3;
  if (PageRexOutputError() != 0) return 4;
  if (pagerex_detect("{\\rtf1 }", 8) != PAGEREX_KIND_RTF) return 6;
  if (strcmp(pagerex_kind_name(PAGEREX_KIND_RTF), "rtf") != 0) return 7;
  if (strlen(pagerex_kind_sentence(PAGEREX_KIND_RTF)) == 0) return 8;
  return _XNFInit() == NF_OK && _XNFUnInit() == NF_OK ? 0 : 5;
}
