#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "base/encoding.h"
#include "base/output_files.h"
#include "entry/args.h"
#include "entry/html_writer.h"
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

/// Without links and dots; as it stands when there is no such file.
std::string realPath(const char* path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path, nullptr), std::free);
  return real ? real.get() : path;
}

/// Whether writing the output would destroy the document that is read: as the main HTML file, by whatever
/// name, or as one of the files in the files folder, which is emptied.
bool wouldDestroy(const char* source, const char* htmlPath, VIEW view) {
  struct stat read, written;
  if (!htmlPath || stat(source, &read) != 0) return false;
  if (stat(htmlPath, &written) == 0 && read.st_dev == written.st_dev && read.st_ino == written.st_ino)
    return true;
  const std::string folder = KHtmlWriter::FilesFolderOf(htmlPath);
  if (view == pagerex::VIEW_PREVIEW || lstat(folder.c_str(), &written) != 0 || !S_ISDIR(written.st_mode))
    return false;
  return realPath(source).starts_with(realPath(folder.c_str()) + '/');
}

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
  ForgetOutputError();
  KEncoding::SetLocale("zh_CN.UTF-8");
  bool opened = false;
  try {
    KDRDocument document;
    opened = source && document.OpenDocument(source, 0x10000) == Status::kOk;
    if (opened && wouldDestroy(source, htmlPath, options.view)) {
      NoteOutputError(EEXIST);
      return PAGEREX_CANNOT_WRITE;
    }
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

int PageRexOutputError(void) {
  return FirstOutputError();
}
