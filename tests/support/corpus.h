#pragma once

#include <filesystem>
#include <vector>

#include "support/temp_folder.h"

namespace support {

/// All files of the corpus, sorted: real documents, which are no part of the project. They lie in the folder
/// that PAGEREX_CORPUS names, or else in shared/corpus beside a folder that the tests run in. Empty if there
/// is none.
std::vector<std::filesystem::path> corpusFiles();
/// Those of them that are called documents.
std::vector<std::filesystem::path> corpusDocuments();

/// A file that may be written, as a document must be that is opened.
class WritableCopy {
 public:
  explicit WritableCopy(const std::filesystem::path& original);
  std::string path() const { return folder_.path("copy.doc"); }

 private:
  TempFolder folder_;
};

}  // namespace support
