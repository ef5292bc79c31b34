#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/output_files.h"
#include "base/status.h"
#include "htmlwriter/env.h"
#include "htmlwriter/host.h"
#include "objectwriter/object_env.h"
#include "objectwriter/object_writer_interface.h"
#include "story/story_writer_interface.h"

namespace pagerex {

/// Drives one conversion: prepares the output, runs the writers of the view over the main text and writes the
/// index at the main HTML path. Owns what belongs to the conversion: the environment of the main text, the
/// archive and the object writer.
class KHtmlWriter : public IStoryWriter {
 public:
  /// Neither is owned. `scripts` tells which functions of the shapes' script file need not be written.
  KHtmlWriter(OutputFiles& files, ObjectWriter::ShapeScripts& scripts) : files_(files), scripts_(scripts) {}
  KHtmlWriter(const KHtmlWriter&) = delete;
  KHtmlWriter& operator=(const KHtmlWriter&) = delete;
  ~KHtmlWriter() override;

  /// Creates or truncates the main HTML file and, but for the preview, empties or makes the files folder
  /// beside it. May be repeated. `document` and `host` (may be null) are not owned; `charactersPerPage` -1
  /// for none. kInvalidArgument for a null document or path or an invalid view; kCannotCreate when the file
  /// or the folder cannot be created.
  Status Init(const KDRDocument* document, const char* path, VIEW view, int charactersPerPage, KHost* host,
              const KPageSafety& safety = {});

  /// Once, after `Init`. kNothing when there are no writers for the view; else what the pages writer
  /// returned: after anything but kOk the main HTML file has no index, while the pages written so far remain.
  Status Write();

  /// Of a shape: as in the normal view, whatever the view.
  void WriteStory(mso_word::SUBDOC_TYPE type, const KDWRange& range) override;

  /// The environment of the main text; there from `Init` on.
  const KEnv& env() const { return *env_; }
  /// What belongs to the conversion; there from `Init` on, and to be completed before `Write`.
  KHtmlConversionEnv& conversion() { return *conversion_; }

  /// The files folder of a main HTML path, without a slash behind it.
  static std::string FilesFolderOf(const std::string& path);

 private:
  Status CreateFilesFolder();
  void CreateObjectWriter();
  Status WritePages();
  void EndTransform();

  OutputFiles& files_;
  ObjectWriter::ShapeScripts& scripts_;
  std::optional<KHtmlConversionEnv> conversion_;
  std::optional<KEnv> env_;
  ArchivePtr archive_;
  std::optional<ObjectWriter::KDocHtmlEnv> objectEnv_;
  std::unique_ptr<ObjectWriter::IObjectWriter> objectWriter_;
};

}  // namespace pagerex
