#include "htmlwriter/view.h"

#include "base/output_path.h"
#include "htmlwriter/env.h"
#include "htmlwriter/index_pages.h"
#include "htmlwriter/navigation_writer.h"
#include "htmlwriter/writer_interfaces.h"

namespace pagerex {
namespace {

/// "name.files" and "name.files/file", relative to the main HTML file; what does not fit is cut.
PathText folderUrl(std::string_view name) {
  return PathText().append(name).append(kFilesFolderSuffix);
}
PathText urlOf(std::string_view name, const char* file) {
  return folderUrl(name).append('/').append(file);
}

void writeFrames(const KEnv& env, std::string_view name) {
  KHtmlConversionEnv& conversion = *env.conversion;
  const PathText path = outputPath(conversion.filesDir, "navigation.html");
  const bool hasNavigation =
      env.navigation->Write(conversion.files, path.c_str(), "main", "1.htm") == Status::kOk;
  WriteFramePage(conversion.files, conversion.htmlPath.c_str(), urlOf(name, "navigation.html").c_str(),
                 urlOf(name, "1.htm").c_str(), hasNavigation, conversion.safety);
}

void writePageLinks(const KEnv& env, std::string_view name) {
  WriteHtmlMain(env.conversion->files, env.conversion->htmlPath.c_str(), folderUrl(name).c_str(),
                env.writers->pages->GetPageCount(), env.conversion->safety);
}

void writePageList(const KEnv& env, std::string_view name) {
  WriteMulpagesInfo(env.conversion->files, env.conversion->htmlPath.c_str(), folderUrl(name).c_str(),
                    env.writers->pages->GetPageCount(), env.conversion->safety);
}

/// By view.                     size   folder tree   notes  phone
constexpr KViewTraits kViews[] = {
    {VIEW_NORMAL, "normal", false, true, true, true, false, writeFrames},
    {VIEW_PHONE, "phone", true, true, false, false, true, writePageLinks},
    {VIEW_PREVIEW, "preview", true, false, false, false, false, nullptr},
    {VIEW_MULPAGES, "mulpages", true, true, false, true, false, writePageList},
};

}  // namespace

const KViewTraits* TraitsOf(VIEW view) {
  for (const KViewTraits& row : kViews) {
    if (row.view == view) return &row;
  }
  return nullptr;
}

VIEW ViewOf(std::string_view word) {
  for (const KViewTraits& row : kViews) {
    if (row.word == word) return row.view;
  }
  return VIEW_INVALID;
}

}  // namespace pagerex
