// Writes the metafiles that the program is measured on into a folder: make_bench_metafiles FOLDER

#include <cstdio>
#include <fstream>
#include <string>

#include "metafiles.h"

namespace {

constexpr size_t kBytes = 4 << 20;

struct NamedLines {
  const char* name;
  bench::Lines lines;
};
constexpr NamedLines kAll[] = {
    {"polylines", bench::Lines::kPolylines},
    {"steps", bench::Lines::kSteps},
    {"polygons", bench::Lines::kPolygons},
};

bool write(const std::string& path, const support::Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(file.flush());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  const std::string folder = std::string(argv[1]) + "/";
  for (const NamedLines& each : kAll) {
    const bool isWritten = write(folder + each.name + ".emf", bench::emfOf(each.lines, kBytes)) &&
                           write(folder + each.name + ".wmf", bench::wmfOf(each.lines, kBytes));
    if (isWritten) continue;
    std::fprintf(stderr, "%s: cannot write %s\n", argv[0], each.name);
    return 1;
  }
  return 0;
}
