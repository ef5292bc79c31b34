#pragma once

#include <memory>
#include <string>

#include "base/output_files.h"
#include "base/status.h"
#include "htmlwriter/env.h"
#include "objectwriter/object_env.h"
#include "objectwriter/object_writer_interface.h"
#include "pagerex/pagerex.h"

namespace pagerex {

/// Drives one conversion: prepares the output, runs the writers of the view over the main text and writes the
/// index at the main HTML path. It is the environment of the main text and owns the archive and the object
/// writer in it.
class KHtmlWriter : public KEnv {
 public:
  KHtmlWriter() = default;
  KHtmlWriter(const KHtmlWriter&) = delete;
  KHtmlWriter& operator=(const KHtmlWriter&) = delete;
  ~KHtmlWriter();

  /// Creates or truncates the main HTML file and, but for the preview, empties or makes the files folder
  /// beside it. May be repeated. `doc` and `host` (may be null) are not owned; `charactersPerPage` -1 for
  /// none. kInvalidArgument for a null document or path or an invalid view; kCannotCreate when the file or
  /// the folder cannot be created.
  Status Init(const KDRDocument* doc, const char* path, VIEW chosenView, int charactersPerPage,
              IPageRexCallBack* host);

  /// Once, after `Init`. kNothing when there are no writers for the view; else what the pages writer
  /// returned: after anything but kOk the main HTML file has no index, while the pages written so far remain.
  Status Write();

  /// The files folder of a main HTML path, without a slash behind it.
  static std::string FilesFolderOf(const std::string& path);

 private:
  Status CreateFilesFolder();
  void CreateObjectWriter(const std::string& name);
  Status WritePages();
  void WriteIndex();

  FilesFolder folder_;
  std::unique_ptr<ObjectWriter::KDocHtmlEnv> objectEnv_;
  std::unique_ptr<ObjectWriter::IObjectWriter> ownedObjectWriter_;
};

}  // namespace pagerex
