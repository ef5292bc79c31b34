#include "entry/html_writer.h"

#include <cerrno>
#include <new>

#include "base/output_path.h"
#include "entry/basefile.h"
#include "htmlwriter/css_file_writer.h"
#include "htmlwriter/host.h"
#include "htmlwriter/navigation_writer.h"
#include "htmlwriter/story_writer.h"
#include "htmlwriter/view.h"
#include "htmlwriter/writer_factory.h"
#include "htmlwriter/writer_interfaces.h"
#include "objectwriter/doc_object_writer.h"

namespace pagerex {
namespace {

/// A path without its extension, in two parts.
struct SplitPath {
  explicit SplitPath(const std::string& path) { basefile::splitpath(path.c_str(), dir, name, extension); }

  std::string dir, name, extension;
};

/// Takes the writers of the main text, and what lives only while they run, out of the environment.
class RunningWriters {
 public:
  explicit RunningWriters(KEnv& env) : env_(env) {}
  RunningWriters(const RunningWriters&) = delete;
  RunningWriters& operator=(const RunningWriters&) = delete;
  ~RunningWriters() {
    env_.navigation = nullptr;
    KWriterFactory::ReleaseWriterByView(env_);
    env_.conversion->merger = nullptr;
  }

 private:
  KEnv& env_;
};

}  // namespace

KHtmlWriter::~KHtmlWriter() = default;

Status KHtmlWriter::Init(const KDRDocument* document, const char* path, VIEW view, int charactersPerPage,
                         KHost* host, const KPageSafety& safety) {
  const KViewTraits* const traits = TraitsOf(view);
  if (!document || !path || !traits) return Status::kInvalidArgument;
  archive_.reset();
  conversion_.emplace(files_);
  env_.emplace(*conversion_);
  conversion_->document = document;
  conversion_->host = host;
  conversion_->safety = safety;
  env_->pageSize = charactersPerPage;
  env_->view = view;
  archive_ = CreateOwnedArchive(files_, path);
  if (!archive_) return Status::kCannotCreate;
  conversion_->archive = archive_.get();
  conversion_->htmlPath = path;
  return traits->hasFilesFolder ? CreateFilesFolder() : Status::kOk;
}

std::string KHtmlWriter::FilesFolderOf(const std::string& path) {
  const SplitPath split(path);
  return split.dir + split.name + std::string(kFilesFolderSuffix);
}

Status KHtmlWriter::CreateFilesFolder() {
  const std::string folder = FilesFolderOf(conversion_->htmlPath);
  conversion_->filesDir = folder;
  CreateObjectWriter();
  if (!files_.sink()) {
    basefile::DelFilesInDir(folder.c_str());
    if (!basefile::CreateDir(folder.c_str()) || !files_.EnterFolder(folder)) {
      files_.NoteError(errno);
      return Status::kCannotCreate;
    }
  }
  // The pages name this file; shapes that need script append to it.
  basefile::CreateFile(files_, outputPath(folder, "shapejs.js").c_str());
  return Status::kOk;
}

/// The object writer serves all stories of the conversion.
void KHtmlWriter::CreateObjectWriter() {
  objectWriter_.reset();
  objectEnv_.emplace(*conversion_, scripts_, env_->inTable, *this);
  objectWriter_ = ObjectWriter::CreateDocHtmlObjectWriter();
  objectWriter_->Init(&*objectEnv_);
  conversion_->objectWriter = objectWriter_.get();
}

void KHtmlWriter::WriteStory(mso_word::SUBDOC_TYPE type, const KDWRange& range) {
  pagerex::WriteStory(*env_, type, range);
}

Status KHtmlWriter::Write() {
  if (!archive_) return Status::kInvalidArgument;
  const KViewTraits& view = *TraitsOf(env_->view);
  KStyleMerger styles;
  styles.Init(conversion_->document);
  conversion_->merger = &styles;
  KHtmlNavigationPageWriter tree;
  tree.Init(conversion_->document);
  const RunningWriters running(*env_);
  // First, since it finds the font size of each style.
  if (view.hasFilesFolder) KCssFileWriter::Write("style.css", &*env_);
  if (view.hasNavigation) env_->navigation = &tree;
  if (KWriterFactory::CreateWriterByView(*env_, mso_word::SUBDOC_MAIN) != Status::kOk)
    return Status::kNothing;
  const Status status = WritePages();
  EndTransform();
  if (status == Status::kOk && view.writeIndex) {
    view.writeIndex(*env_, SplitPath(conversion_->htmlPath).name);
  }
  return status;
}

/// The main text. An exception out of a damaged document is a failure like another, so that the host still
/// hears of the end.
Status KHtmlWriter::WritePages() {
  try {
    return env_->writers->pages->Write();
  } catch (const std::bad_alloc&) {
    if (conversion_->control) conversion_->control->Stop(StopCause::kOutOfMemory);
  } catch (...) {
    warn(conversion_->warnings, WarningCode::kOutside);
    if (conversion_->control) conversion_->control->Stop(StopCause::kDamaged);
  }
  return Status::kFailure;
}

void KHtmlWriter::EndTransform() {
  if (conversion_->host) conversion_->host->EndTransform();
}

}  // namespace pagerex
