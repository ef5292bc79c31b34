#include "base/output_path.h"

namespace pagerex {

PathText outputPath(std::string_view folder, std::string_view name) {
  PathText path;
  path.append(folder).append('/').append(name);
  return path.size() == folder.size() + 1 + name.size() ? path : PathText();
}

PathText pagePath(std::string_view folder, int page) {
  return outputPath(folder, NumberText().appendInt(page).append(".htm"));
}

}  // namespace pagerex
