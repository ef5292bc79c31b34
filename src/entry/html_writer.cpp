#include "entry/html_writer.h"

#include <cerrno>

#include "entry/basefile.h"
#include "entry/index_pages.h"
#include "htmlwriter/css_file_writer.h"
#include "htmlwriter/navigation_writer.h"
#include "htmlwriter/output_path.h"
#include "htmlwriter/writer_factory.h"
#include "htmlwriter/writer_interfaces.h"
#include "objectwriter/doc_object_writer.h"

namespace pagerex {
namespace {

constexpr char kFolderSuffix[] = ".files";

/// Takes the writers of the main text, and what lives only while they run, out of the environment.
class RunningWriters {
 public:
  explicit RunningWriters(KEnv& env) : env_(env) {}
  RunningWriters(const RunningWriters&) = delete;
  RunningWriters& operator=(const RunningWriters&) = delete;
  ~RunningWriters() {
    env_.navigation = nullptr;
    KWriterFactory::ReleaseWriterByView(env_);
    env_.merger = nullptr;
  }

 private:
  KEnv& env_;
};

/// "name.files/file", relative to the main HTML file; what does not fit is cut.
PathText urlOf(const std::string& name, const char* file) {
  return PathText().append(name).append(kFolderSuffix).append('/').append(file);
}

}  // namespace

KHtmlWriter::~KHtmlWriter() {
  DeleteHtmlWriterArchive(archive);
}

Status KHtmlWriter::Init(const KDRDocument* doc, const char* path, VIEW chosenView, int charactersPerPage,
                         IPageRexCallBack* host) {
  if (!doc || !path || chosenView < VIEW_NORMAL || chosenView > VIEW_MULPAGES)
    return Status::kInvalidArgument;
  document = doc;
  pageSize = charactersPerPage;
  view = chosenView;
  callback = host;
  objectWriter = nullptr;
  DeleteHtmlWriterArchive(archive);
  archive = nullptr;
  if (CreateHtmlWriterArchive(&archive, path) != Status::kOk) return Status::kCannotCreate;
  htmlPath = path;
  return view == VIEW_PREVIEW ? Status::kOk : CreateFilesFolder();
}

std::string KHtmlWriter::FilesFolderOf(const std::string& path) {
  std::string dir, name, extension;
  basefile::splitpath(path.c_str(), dir, name, extension);
  return dir + name + kFolderSuffix;
}

Status KHtmlWriter::CreateFilesFolder() {
  std::string dir, name, extension;
  basefile::splitpath(htmlPath.c_str(), dir, name, extension);
  filesDir = FilesFolderOf(htmlPath);
  CreateObjectWriter(name);
  basefile::DelFilesInDir(filesDir.c_str());
  if (!basefile::CreateDir(filesDir.c_str()) || !folder_.Enter(filesDir)) {
    NoteOutputError(errno);
    return Status::kCannotCreate;
  }
  // The pages name this file; shapes that need script append to it.
  basefile::CreateFile(outputPath(filesDir, "shapejs.js").c_str());
  return Status::kOk;
}

/// The object writer serves all stories of the conversion.
void KHtmlWriter::CreateObjectWriter(const std::string& name) {
  objectEnv_ = std::make_unique<ObjectWriter::KDocHtmlEnv>();
  objectEnv_->archive = archive;
  objectEnv_->document = document;
  objectEnv_->filesDir = filesDir;
  objectEnv_->htmlPath = htmlPath;
  objectEnv_->name = name;
  objectEnv_->inTable = &inTable;
  objectEnv_->env = this;
  ownedObjectWriter_ = ObjectWriter::CreateDocHtmlObjectWriter();
  ownedObjectWriter_->Init(objectEnv_.get());
  objectWriter = ownedObjectWriter_.get();
}

Status KHtmlWriter::Write() {
  if (!document || !archive) return Status::kInvalidArgument;
  KStyleMerger styles;
  styles.Init(document);
  merger = &styles;
  KHtmlNavigationPageWriter tree;
  tree.Init(document);
  const RunningWriters running(*this);
  // First, since it finds the font size of each style.
  if (view != VIEW_PREVIEW) KCssFileWriter::Write("style.css", this);
  if (view == VIEW_NORMAL) navigation = &tree;
  if (KWriterFactory::CreateWriterByView(*this, mso_word::SUBDOC_MAIN) != Status::kOk)
    return Status::kNothing;
  const Status status = WritePages();
  if (callback && callback->EndTransform) callback->EndTransform();
  if (status == Status::kOk) WriteIndex();
  return status;
}

/// The main text. An exception out of a damaged document is a failure like another, so that the host still
/// hears of the end.
Status KHtmlWriter::WritePages() try { return writers.pages->Write(); } catch (...) {
  return Status::kFailure;
}

void KHtmlWriter::WriteIndex() {
  std::string dir, name, extension;
  basefile::splitpath(htmlPath.c_str(), dir, name, extension);
  const std::string folder = PathText().append(name).append(kFolderSuffix).c_str();
  if (view == VIEW_NORMAL) {
    const PathText path = outputPath(filesDir, "navigation.html");
    const bool hasNavigation = navigation->Write(path.c_str(), "main", "1.htm") == Status::kOk;
    WriteFramePage(htmlPath.c_str(), urlOf(name, "navigation.html").c_str(), urlOf(name, "1.htm").c_str(),
                   hasNavigation);
  } else if (view == VIEW_PHONE) {
    WriteHtmlMain(htmlPath.c_str(), folder.c_str(), writers.pages->GetPageCount());
  } else if (view == VIEW_MULPAGES) {
    WriteMulpagesInfo(htmlPath.c_str(), folder.c_str(), writers.pages->GetPageCount());
  }
}

}  // namespace pagerex
