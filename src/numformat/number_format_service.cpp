#include "base/status.h"
#include "pagerex/numformat.h"

namespace {

bool initialised = false;

constexpr uint32_t result(Status status) {
  return static_cast<uint32_t>(status);
}

}  // namespace

uint32_t _XNFInit() {
  initialised = true;
  return result(Status::kOk);
}

uint32_t _XNFUnInit() {
  initialised = false;
  return result(Status::kOk);
}

// Nothing is kept yet.
uint32_t _XNF_ClearNFTableCache() {
  return result(Status::kOk);
}

uint32_t _XNFFreeText(wchar_t* text) {
  delete[] text;
  return result(Status::kOk);
}
