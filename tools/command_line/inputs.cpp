#include "inputs.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <memory>

#include "files.h"

namespace cli {

namespace {

bool isCalledDocument(const std::string& name) {
  constexpr std::string_view kEndings[] = {".doc", ".dot", ".wbk"};
  const std::string_view ending = endingOf(name);
  return std::any_of(std::begin(kEndings), std::end(kEndings),
                     [&](std::string_view one) { return isSameWord(one, ending); });
}

std::string joined(const std::string& folder, const std::string& name) {
  return folder.back() == '/' ? folder + name : folder + "/" + name;
}

/// A folder with those below it.
class Walk {
 public:
  Walk(const std::string& top, bool all, const std::string& skipped, std::vector<Input>& inputs)
      : top_(top), all_(all), skipped_(skipped), inputs_(inputs) {}

  void run() {
    std::vector<std::string> folders = {top_};
    while (!folders.empty()) {
      const std::string folder = folders.back();
      folders.pop_back();
      std::vector<std::string> below = look(folder);
      folders.insert(folders.end(), std::make_move_iterator(below.rbegin()),
                     std::make_move_iterator(below.rend()));
    }
  }

 private:
  /// Takes the files of one folder; returns the folders in it. One that cannot be read is told of as a file
  /// is.
  std::vector<std::string> look(const std::string& folder) {
    std::vector<std::string> files, folders;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    if (!entries) {
      inputs_.push_back({folder, top_});
      return {};
    }
    while (const dirent* entry = readdir(entries.get())) {
      const std::string name = entry->d_name;
      if (name == "." || name == "..") continue;
      const unsigned char type = typeOf(dirfd(entries.get()), *entry);
      if (type == DT_DIR && !isSkipped(joined(folder, name))) folders.push_back(joined(folder, name));
      if (type == DT_REG && (all_ || isCalledDocument(name))) files.push_back(joined(folder, name));
    }
    std::sort(files.begin(), files.end());
    std::sort(folders.begin(), folders.end());
    for (std::string& file : files) inputs_.push_back({std::move(file), top_});
    return folders;
  }

  static unsigned char typeOf(int folder, const dirent& entry) {
    struct stat info;
    if (entry.d_type != DT_UNKNOWN) return entry.d_type;
    if (fstatat(folder, entry.d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) return DT_UNKNOWN;
    return S_ISDIR(info.st_mode) ? DT_DIR : S_ISREG(info.st_mode) ? DT_REG : DT_UNKNOWN;
  }
  bool isSkipped(const std::string& folder) const { return isSameFile(folder, skipped_); }

  const std::string& top_;
  const bool all_;
  const std::string& skipped_;
  std::vector<Input>& inputs_;
};

std::string readList(const Request& request, std::vector<std::string>& names) {
  const bool isStandardInput = request.filesFrom == "-";
  const Descriptor file(isStandardInput ? dup(STDIN_FILENO)
                                        : open(request.filesFrom.c_str(), O_RDONLY | O_CLOEXEC));
  std::string content;
  if (!file || !readAll(file.get(), content)) return request.filesFrom + ": " + std::strerror(errno);
  const char end = request.endsWithNull ? '\0' : '\n';
  for (size_t from = 0; from < content.size();) {
    const size_t to = std::min(content.find(end, from), content.size());
    if (to > from) names.push_back(content.substr(from, to - from));
    from = to + 1;
  }
  return "";
}

}  // namespace

std::string collectInputs(const Request& request, const std::string& skipped, std::vector<Input>& inputs) {
  std::vector<std::string> names = request.files;
  if (!request.filesFrom.empty()) {
    if (std::string wrong = readList(request, names); !wrong.empty()) return wrong;
  }
  for (const std::string& name : names) {
    if (isFolder(name)) {
      Walk(name, request.all, skipped, inputs).run();
    } else {
      const size_t slash = name.rfind('/');
      inputs.push_back({name, slash == std::string::npos ? "." : name.substr(0, slash + 1)});
    }
  }
  return "";
}

}  // namespace cli
