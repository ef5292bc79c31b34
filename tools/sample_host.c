/* A host that shows pages while they are made: converts with callbacks, 200 characters a page, and stops once
 * the second page is finished. */
#include <stdio.h>

#include "pagerex/pagerex.h"

static int nCount = 2;

static void FinishPage(int page, const char* path) {
  (void)page;
  (void)path;
  printf("FinishPage\n");
}

static void EndTransform(void) {
  printf("EndTransform\n");
}

/* Goes on behind the first page; behind the second, asks for time once and then stops. */
static int Continue(void) {
  --nCount;
  printf("Continue: %d\n", nCount);
  return nCount;
}

int main(int argc, char** argv) {
  IPageRexCallBack callbacks = {FinishPage, EndTransform, Continue};
  if (argc <= 2) {
    printf("Useage %s <txt filename> <html filename>", argv[0]);
    return -1;
  }
  return pageRex(argv[1], argv[2], 200, &callbacks) != 0;
}
