#pragma once

#include <string>

#include "base/output_files.h"
#include "base/write_archive.h"
#include "support/temp_folder.h"

namespace support {

/// What `write(archive)` writes.
template <class Write>
std::string markupOf(Write write) {
  TempFolder folder;
  OutputFiles files;
  IWriteArchive* archive = nullptr;
  if (CreateHtmlWriterArchive(&archive, files, folder.path("page.htm").c_str()) != Status::kOk)
    return "no file";
  write(archive);
  DeleteHtmlWriterArchive(archive);
  return folder.read("page.htm");
}

/// The CSS that `write(archive)` writes into a style attribute, without its frame.
template <class Write>
std::string cssOf(Write write) {
  const std::string text = markupOf([&](IWriteArchive* archive) {
    archive->StartCssStyle();
    write(archive);
    archive->EndCssStyle();
  });
  const std::string frame = " style=\"";
  return text.substr(frame.size(), text.size() - frame.size() - 1);
}

}  // namespace support
