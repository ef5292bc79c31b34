#include "result_names.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "files.h"

namespace cli {

namespace {

/// The path from the root on, without ".", ".." and doubled slashes, as its letters alone tell.
std::string absolute(const std::string& path, const std::string& current) {
  const std::string whole = path[0] == '/' ? path : current + "/" + path;
  std::vector<std::string> parts;
  for (size_t from = 0; from < whole.size();) {
    const size_t to = std::min(whole.find('/', from), whole.size());
    const std::string part = whole.substr(from, to - from);
    if (part == ".." && !parts.empty()) parts.pop_back();
    if (!part.empty() && part != "." && part != "..") parts.push_back(part);
    from = to + 1;
  }
  std::string result;
  for (const std::string& part : parts) result += "/" + part;
  return result;
}

/// "/a/b" of "/a/b/c" and "/a/b/d/e".
std::string commonFolder(const std::string& a, const std::string& b) {
  const std::string first = a + "/", second = b + "/";
  const auto end = std::mismatch(first.begin(), first.end(), second.begin(), second.end()).first;
  const size_t slash = first.rfind('/', static_cast<size_t>(end - first.begin()));
  const bool isWhole = end != first.begin() && *(end - 1) == '/';
  return first.substr(0, isWhole ? static_cast<size_t>(end - first.begin()) - 1 : slash);
}

std::string folderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}

/// An input by its place below the folder that is common to all.
struct Placed {
  const Input* input;
  std::string place;  ///< "a/x.doc"
  std::string name;   ///< of its result: "a/x.html"
};

/// A place as results have it: what would break a line, or command a terminal, is spelled as in an address.
std::string printable(const std::string& place) {
  std::string result;
  for (const char byte : place) {
    const auto code = static_cast<unsigned char>(byte);
    if (code >= ' ' && code != 0x7f) {
      result += byte;
      continue;
    }
    char spelled[4];
    std::snprintf(spelled, sizeof spelled, "%%%02X", code);
    result += spelled;
  }
  return result;
}

/// The library takes names of up to 230 bytes; numbers and extensions need some of them.
std::string shortened(const std::string& place) {
  constexpr size_t kLongest = 200;
  const size_t name = place.rfind('/') + 1;
  if (place.size() - name <= kLongest) return place;
  size_t end = name + kLongest;
  while (end > name && (place[end] & 0xC0) == 0x80) --end;  // no half character
  return place.substr(0, end);
}

std::string currentFolder() {
  char path[PATH_MAX];
  return getcwd(path, sizeof path) ? path : "";
}

std::vector<Placed> place(const std::vector<Input>& inputs) {
  const std::string current = currentFolder();
  std::string common;
  std::unordered_map<std::string, std::string> folders;  // few, and named by many inputs
  for (const Input& input : inputs) {
    if (folders.count(input.folder)) continue;
    const std::string& whole = folders[input.folder] = absolute(input.folder, current);
    common = folders.size() == 1 ? whole : commonFolder(common, whole);
  }
  std::vector<Placed> placed;
  std::unordered_multimap<std::string, const Input*> known;
  for (const Input& input : inputs) {
    const std::string whole = absolute(input.path, current);
    const auto [first, last] = known.equal_range(whole);
    const bool isKnown = std::any_of(first, last, [&](const auto& one) {
      return one.second->path == input.path || isSameFile(one.second->path, input.path);
    });
    if (isKnown) continue;
    known.emplace(whole, &input);
    placed.push_back(
        {&input, shortened(printable(whole.substr(std::min(whole.size(), common.size() + 1)))), ""});
  }
  return placed;
}

/// The names that are given away.
class Names {
 public:
  Names(const std::vector<Placed>& placed, const pagerex_format& format)
      : extension_(format.extension), hasFolders_(!format.is_single_file) {
    for (const Placed& one : placed) {
      for (std::string folder = folderOf(one.place); !folder.empty(); folder = folderOf(folder)) {
        if (!taken_.insert(folder).second) break;
      }
    }
  }

  std::string give(const std::string& place) {
    const bool isDocument = isSameWord(endingOf(place), ".doc");
    std::string name = (isDocument ? place.substr(0, place.size() - 4) : place) + extension_;
    for (int number = 1; !take(name); ++number)
      name = place + (number > 1 ? "~" + std::to_string(number) : "") + extension_;
    return name;
  }

 private:
  bool take(const std::string& name) {
    const std::string folder = name.substr(0, name.size() - extension_.size()) + ".files";
    if (taken_.count(name) || (hasFolders_ && taken_.count(folder))) return false;
    taken_.insert(name);
    if (hasFolders_) taken_.insert(folder);
    return true;
  }

  const std::string extension_;
  const bool hasFolders_;
  std::unordered_set<std::string> taken_;
};

std::string without(std::string folder) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

std::string below(const std::string& folder, const std::string& name) {
  return folder.back() == '/' ? folder + name : folder + "/" + name;
}

}  // namespace

std::vector<Item> nameResults(const std::vector<Input>& inputs, const std::string& folder,
                              const pagerex_format& format) {
  std::vector<Placed> placed = place(inputs);
  std::vector<Placed*> order;
  order.reserve(placed.size());
  for (Placed& one : placed) order.push_back(&one);
  const auto rank = [](const Placed* one) {
    return std::make_tuple(endingOf(one->place) != ".doc", std::cref(one->place),
                           std::cref(one->input->path));
  };
  std::sort(order.begin(), order.end(), [&](const Placed* a, const Placed* b) { return rank(a) < rank(b); });
  Names names(placed, format);
  for (Placed* one : order) one->name = names.give(one->place);

  std::vector<Item> items;
  items.reserve(placed.size());
  for (Placed& one : placed) items.push_back({one.input->path, below(without(folder), one.name), "", {}});
  return items;
}

namespace {

using FileId = std::pair<dev_t, ino_t>;

/// All folders from the first to the last; false with errno set.
bool makeFolders(const std::string& path) {
  for (size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
    const std::string folder = path.substr(0, slash);
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST && !isFolder(folder)) return false;
    if (slash == std::string::npos) return isFolder(path) || (errno = ENOTDIR, false);
  }
}

/// Why nothing is written to a folder; empty for nothing. The one above it is there.
std::string whyNotInto(const std::string& folder) {
  struct stat info;
  if (mkdir(folder.c_str(), 0777) == 0) return "";
  if (errno != EEXIST) return folder + ": " + std::strerror(errno);
  if (lstat(folder.c_str(), &info) != 0) return folder + ": " + std::strerror(errno);
  if (S_ISLNK(info.st_mode)) return folder + " is a symbolic link, which leads elsewhere.";
  return S_ISDIR(info.st_mode) ? "" : folder + " is no folder.";
}

/// As above with all that lie between it and `top`; remembered, since many results share a folder.
const std::string& makeBelow(const std::string& top, const std::string& folder,
                             std::unordered_map<std::string, std::string>& known) {
  const auto found = known.find(folder);
  if (found != known.end()) return found->second;
  std::string why = folder.size() > top.size() ? makeBelow(top, folderOf(folder), known) : "";
  if (why.empty() && folder.size() > top.size()) why = whyNotInto(folder);
  return known[folder] = why;
}

void refuseInputs(std::vector<Item>& items) {
  std::vector<std::pair<FileId, Item*>> there;
  struct stat info;
  for (Item& item : items) {
    if (lstat(item.output.c_str(), &info) != 0) continue;
    if (S_ISLNK(info.st_mode)) item.refusal = item.output + " is a symbolic link, which leads elsewhere.";
    there.push_back({{info.st_dev, info.st_ino}, &item});
  }
  if (there.empty()) return;
  std::set<FileId> inputs;
  for (const Item& item : items) {
    if (stat(item.path.c_str(), &info) == 0) inputs.insert({info.st_dev, info.st_ino});
  }
  for (const auto& [id, item] : there) {
    if (inputs.count(id)) item->refusal = item->output + " is one of the files that are read.";
  }
}

}  // namespace

std::string prepareFolders(const std::string& folder, std::vector<Item>& items) {
  const std::string top = without(folder);
  if (!makeFolders(top)) return top + ": " + std::strerror(errno);
  std::unordered_map<std::string, std::string> known;
  for (Item& item : items) item.refusal = makeBelow(top == "/" ? "" : top, folderOf(item.output), known);
  refuseInputs(items);
  return "";
}

}  // namespace cli
