#include <cstdlib>
#include <string>
#include <string_view>

#include "base/encoding.h"
#include "entry/args.h"
#include "entry/html_writer.h"
#include "pagerex/numformat.h"
#include "pagerex/pagerex.h"
#include "wordreader/document.h"

using pagerex::KHtmlWriter;
using pagerex::VIEW;

namespace {

struct Options {
  VIEW view = pagerex::VIEW_NORMAL;
  int pageSize = -1;
};

constexpr struct {
  std::string_view word;
  VIEW view;
} kViews[] = {
    {"normal", pagerex::VIEW_NORMAL},
    {"phone", pagerex::VIEW_PHONE},
    {"preview", pagerex::VIEW_PREVIEW},
    {"mulpages", pagerex::VIEW_MULPAGES},
};

VIEW viewOf(std::string_view word) {
  for (const auto& row : kViews) {
    if (row.word == word) return row.view;
  }
  return pagerex::VIEW_INVALID;
}

bool hasPageSize(VIEW view) {
  return view == pagerex::VIEW_PHONE || view == pagerex::VIEW_PREVIEW || view == pagerex::VIEW_MULPAGES;
}

/// In their order: a page size counts only behind a view that has one.
Options readOptions(int argc, char** argv) {
  Options options;
  std::string name, value;
  for (int i = 0; argv && i < argc; ++i) {
    if (args::ParseArg(argv[i], name, value) != Status::kOk) continue;
    if (name == "view") options.view = viewOf(value);
    if (name == "pagesize" && hasPageSize(options.view)) options.pageSize = std::atoi(value.c_str());
  }
  return options;
}

/// The service that spells list numbers, up for the length of one conversion.
struct NumberFormats {
  NumberFormats() { _XNFInit(); }
  NumberFormats(const NumberFormats&) = delete;
  NumberFormats& operator=(const NumberFormats&) = delete;
  ~NumberFormats() {
    _XNFUnInit();
    _XNF_ClearNFTableCache();
  }
};

int write(KDRDocument& document, const char* htmlPath, const Options& options, IPageRexCallBack* callback) {
  KHtmlWriter writer;
  int result = PAGEREX_CANNOT_WRITE;
  if (writer.Init(&document, htmlPath, options.view, options.pageSize, callback) == Status::kOk) {
    result = writer.Write() == Status::kOk ? PAGEREX_OK : PAGEREX_FAILED;
  }
  document.Close();
  return result;
}

/// A damaged document may make the reader throw; that is a failure of the step it was thrown in.
int convert(const char* source, const char* htmlPath, const Options& options, IPageRexCallBack* callback) {
  KEncoding::SetLocale("zh_CN.UTF-8");
  bool opened = false;
  try {
    KDRDocument document;
    const NumberFormats numbers;
    opened = source && document.OpenDocument(source, 0x10000) == Status::kOk;
    if (opened) return write(document, htmlPath, options, callback);
  } catch (...) {
  }
  return opened ? PAGEREX_FAILED : PAGEREX_CANNOT_OPEN;
}

}  // namespace

int PageRex(const char* source, const char* htmlPath, int argc, char** argv) {
  try {
    return convert(source, htmlPath, readOptions(argc, argv), nullptr);
  } catch (...) {
    return PAGEREX_FAILED;
  }
}

int pageRex(const char* source, const char* htmlPath, int pageSize, IPageRexCallBack* callback) {
  const Options options{pagerex::VIEW_MULPAGES, pageSize};
  if (convert(source, htmlPath, options, callback) != PAGEREX_OK) return PAGEREX_ERROR;
  return PAGEREX_OK;
}
