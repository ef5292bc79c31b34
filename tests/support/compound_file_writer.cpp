#include "support/compound_file_writer.h"

#include <algorithm>
#include <bit>
#include <fstream>
#include <stdexcept>

namespace support {

namespace {

constexpr uint32_t kEntryBytes = 128;
constexpr uint32_t kFatPagesInHeader = 109;
constexpr uint32_t kNoEntry = 0xFFFFFFFF;

size_t pagesFor(size_t bytes, size_t pageBytes) {
  return (bytes + pageBytes - 1) / pageBytes;
}

char16_t upper(char16_t c) {
  return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
}

/// The order of siblings: shorter names first, then by upper-case units.
bool siblingLess(const std::u16string& a, const std::u16string& b) {
  if (a.size() != b.size()) return a.size() < b.size();
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char16_t x, char16_t y) { return upper(x) < upper(y); });
}

/// The links of one directory entry.
struct Links {
  uint32_t left = kNoEntry;
  uint32_t right = kNoEntry;
  uint32_t child = kNoEntry;
  bool black = true;
};

}  // namespace

/// One build: lays out the pages, then fills them.
class CompoundFileBuilder {
 public:
  explicit CompoundFileBuilder(const CompoundFileWriter& writer)
      : options_(writer.options_), nodes_(writer.nodes_) {}

  CompoundFile build() {
    file_.pageBytes_ = 1u << options_.pageShift;
    file_.headerBytes_ = options_.headerFillsPage ? std::max<size_t>(512, file_.pageBytes_) : 512;
    linkStorage(0);
    addPaths(0, u"");
    fillTinyPool();
    layOutPages();
    writeHeader();
    writeTables();
    writeDirectory();
    writeStreams();
    return std::move(file_);
  }

 private:
  using Node = CompoundFileWriter::Node;

  uint32_t pageBytes() const { return file_.pageBytes_; }
  bool isTiny(const Node& node) const { return node.isStream && node.content.size() < options_.tinyCutoff; }

  // --- Directory: entries stand in the order in which a walk of the storages meets them. ---

  void linkStorage(uint32_t node) {
    links_.resize(nodes_.size());
    std::vector<uint32_t> children = nodes_[node].children;
    std::sort(children.begin(), children.end(),
              [this](uint32_t a, uint32_t b) { return siblingLess(nodes_[a].name, nodes_[b].name); });
    links_[node].child =
        options_.tree == SiblingTree::kBalanced ? linkBalanced(children) : linkChain(children);
    for (uint32_t child : children) linkStorage(child);
  }

  uint32_t linkBalanced(const std::vector<uint32_t>& sorted) {
    const int deepest = std::bit_width(sorted.size()) - 1;
    const bool deepestIsFull = std::has_single_bit(sorted.size() + 1);
    return linkMiddle(sorted, 0, sorted.size(), deepestIsFull ? -1 : deepest);
  }

  /// The tree over [first, last). Its entries are black, but red on a last level that is not full.
  uint32_t linkMiddle(const std::vector<uint32_t>& sorted, size_t first, size_t last, int levelsToRed) {
    if (first == last) return kNoEntry;
    const size_t middle = first + (last - first) / 2;
    Links& links = links_[sorted[middle]];
    links.black = levelsToRed != 0;
    links.left = linkMiddle(sorted, first, middle, levelsToRed - 1);
    links.right = linkMiddle(sorted, middle + 1, last, levelsToRed - 1);
    return sorted[middle];
  }

  uint32_t linkChain(const std::vector<uint32_t>& sorted) {
    const bool toTheRight = options_.tree == SiblingTree::kRightChain;
    std::vector<uint32_t> order = sorted;
    if (!toTheRight) std::reverse(order.begin(), order.end());
    for (size_t i = 0; i + 1 < order.size(); ++i) {
      (toTheRight ? links_[order[i]].right : links_[order[i]].left) = order[i + 1];
    }
    return order.empty() ? kNoEntry : order[0];
  }

  void addPaths(uint32_t node, const std::u16string& path) {
    file_.entries_.resize(nodes_.size());
    file_.entries_[node] = path;
    for (uint32_t child : nodes_[node].children) {
      addPaths(child, path.empty() ? nodes_[child].name : path + u"/" + nodes_[child].name);
    }
  }

  // --- Layout ---

  void fillTinyPool() {
    starts_.assign(nodes_.size(), 0);
    const uint32_t tinyBytes = 1u << options_.tinyPageShift;
    for (size_t i = 0; i < nodes_.size(); ++i) {
      if (!isTiny(nodes_[i])) continue;
      const Bytes& content = nodes_[i].content;
      const auto count = static_cast<uint32_t>(pagesFor(content.size(), tinyBytes));
      starts_[i] = appendChain(tinyFat_, static_cast<uint32_t>(tinyFat_.size()), count);
      const size_t poolStart = tinyPool_.size();
      tinyPool_.resize(poolStart + size_t{count} * tinyBytes);
      for (uint32_t k = 0; k < count; ++k) {
        const size_t page = options_.reverseChains ? count - 1 - k : k;
        copyPage(tinyPool_, poolStart + page * tinyBytes, content, size_t{k} * tinyBytes, tinyBytes);
      }
    }
  }

  void layOutPages() {
    const size_t tinyFatPages = pagesFor(tinyFat_.size() * 4, pageBytes());
    const size_t directoryPages = pagesFor(nodes_.size() * kEntryBytes, pageBytes());
    size_t contentPages = directoryPages + tinyFatPages + pagesFor(tinyPool_.size(), pageBytes());
    for (const Node& node : nodes_) {
      if (node.isStream && !isTiny(node)) contentPages += pagesFor(node.content.size(), pageBytes());
    }
    reserveFat(contentPages);
    file_.directoryPages_ = newChain(directoryPages);
    file_.tinyFatPages_ = newChain(tinyFatPages);
    poolPages_ = newChain(pagesFor(tinyPool_.size(), pageBytes()));
    starts_[0] = poolPages_.empty() ? kEndOfChain : poolPages_[0];
    streamPages_.resize(nodes_.size());
    for (size_t i = 0; i < nodes_.size(); ++i) {
      if (!nodes_[i].isStream || isTiny(nodes_[i])) continue;
      streamPages_[i] = newChain(pagesFor(nodes_[i].content.size(), pageBytes()));
      starts_[i] = streamPages_[i].empty() ? kEndOfChain : streamPages_[i][0];
    }
    file_.bytes_.resize(file_.pageOffset(static_cast<uint32_t>(fat_.size())));
  }

  /// The FAT covers its own pages and the master FAT's too.
  void reserveFat(size_t contentPages) {
    const size_t perFatPage = pageBytes() / 4;
    size_t fatPages = 0, masterPages = 0;
    do {
      ++fatPages;
      masterPages = fatPages > kFatPagesInHeader ? pagesFor(fatPages - kFatPagesInHeader, perFatPage - 1) : 0;
    } while (contentPages + fatPages + masterPages > fatPages * perFatPage);
    for (size_t i = 0; i < fatPages; ++i) file_.fatPages_.push_back(newPage(kFatPage));
    for (size_t i = 0; i < masterPages; ++i) file_.masterFatPages_.push_back(newPage(kMasterFatPage));
  }

  uint32_t newPage(uint32_t mark) {
    fat_.push_back(mark);
    return static_cast<uint32_t>(fat_.size() - 1);
  }

  /// The page numbers of a new chain, in the chain's order.
  std::vector<uint32_t> newChain(size_t count) {
    std::vector<uint32_t> pages;
    uint32_t page = appendChain(fat_, static_cast<uint32_t>(fat_.size()), static_cast<uint32_t>(count));
    for (size_t i = 0; i < count; ++i, page = fat_[page]) pages.push_back(page);
    return pages;
  }

  /// Enters a chain of `count` pages that lie at `first` and behind it; returns the chain's start.
  uint32_t appendChain(std::vector<uint32_t>& table, uint32_t first, uint32_t count) {
    if (count == 0) return kEndOfChain;
    for (uint32_t k = 0; k < count; ++k) {
      const uint32_t following = k + 1 == count ? kEndOfChain : first + k + 1;
      const uint32_t preceding = k == 0 ? kEndOfChain : first + k - 1;
      table.push_back(options_.reverseChains ? preceding : following);
    }
    return options_.reverseChains ? first + count - 1 : first;
  }

  // --- Content ---

  static void copyPage(Bytes& target, size_t at, const Bytes& source, size_t from, size_t length) {
    if (from >= source.size()) return;
    const size_t count = std::min(length, source.size() - from);
    std::copy_n(source.begin() + static_cast<ptrdiff_t>(from), count,
                target.begin() + static_cast<ptrdiff_t>(at));
  }

  void writePages(const std::vector<uint32_t>& pages, const Bytes& content) {
    for (size_t k = 0; k < pages.size(); ++k) {
      copyPage(file_.bytes_, file_.pageOffset(pages[k]), content, k * pageBytes(), pageBytes());
    }
  }

  /// A table of page numbers, filled up with `kFreePage` to the end of its last page.
  void writeTable(const std::vector<uint32_t>& pages, const std::vector<uint32_t>& table) {
    ByteWriter content;
    for (uint32_t value : table) content.u32(value);
    content.fill(pages.size() * pageBytes() - content.size(), 0xFF);
    writePages(pages, content.take());
  }

  void writeHeader() {
    ByteWriter header;
    header.bytes({0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1}).zeros(16);
    header.u16(0x3E).u16(options_.pageShift == 12 ? 4 : 3).u16(0xFFFE);
    header.u16(options_.pageShift).u16(options_.tinyPageShift).zeros(6);
    header.u32(options_.pageShift == 12 ? file_.directoryPages_.size() : 0);
    header.u32(file_.fatPages_.size()).u32(file_.directoryPages_[0]).u32(0).u32(options_.tinyCutoff);
    header.u32(firstOf(file_.tinyFatPages_)).u32(file_.tinyFatPages_.size());
    header.u32(firstOf(file_.masterFatPages_)).u32(file_.masterFatPages_.size());
    for (size_t i = 0; i < kFatPagesInHeader; ++i) {
      header.u32(i < file_.fatPages_.size() ? file_.fatPages_[i] : kFreePage);
    }
    patchBytes(file_.bytes_, 0, header.take());
  }

  static uint32_t firstOf(const std::vector<uint32_t>& pages) {
    return pages.empty() ? kEndOfChain : pages[0];
  }

  void writeTables() {
    writeTable(file_.fatPages_, fat_);
    writeTable(file_.tinyFatPages_, tinyFat_);
    const size_t perPage = pageBytes() / 4 - 1;
    for (size_t i = 0; i < file_.masterFatPages_.size(); ++i) {
      std::vector<uint32_t> list(perPage + 1, kFreePage);
      for (size_t k = 0; k < perPage; ++k) {
        const size_t number = kFatPagesInHeader + i * perPage + k;
        if (number < file_.fatPages_.size()) list[k] = file_.fatPages_[number];
      }
      list[perPage] = i + 1 < file_.masterFatPages_.size() ? file_.masterFatPages_[i + 1] : kEndOfChain;
      writeTable({file_.masterFatPages_[i]}, list);
    }
  }

  void writeDirectory() {
    ByteWriter directory;
    for (size_t i = 0; i < nodes_.size(); ++i) writeEntry(directory, i);
    while (directory.size() % pageBytes()) directory.zeros(68).fill(12, 0xFF).zeros(kEntryBytes - 80);
    writePages(file_.directoryPages_, directory.take());
  }

  void writeEntry(ByteWriter& out, size_t i) {
    const Node& node = nodes_[i];
    const Links& links = links_[i];
    out.text16(node.name).zeros(64 - node.name.size() * 2).u16((node.name.size() + 1) * 2);
    out.u8(i == 0          ? 5
           : node.isStream ? 2
                           : 1)
        .u8(links.black)
        .u32(links.left)
        .u32(links.right)
        .u32(links.child);
    out.zeros(36).u32(starts_[i]).u32(i == 0 ? tinyPool_.size() : node.content.size()).u32(0);
  }

  void writeStreams() {
    writePages(poolPages_, tinyPool_);
    for (size_t i = 0; i < nodes_.size(); ++i) writePages(streamPages_[i], nodes_[i].content);
  }

  const CompoundFileWriter::Options& options_;
  const std::vector<Node>& nodes_;
  CompoundFile file_;
  std::vector<Links> links_;
  std::vector<uint32_t> fat_, tinyFat_;
  Bytes tinyPool_;
  std::vector<uint32_t> poolPages_;
  std::vector<std::vector<uint32_t>> streamPages_;  // by node; empty for what lies elsewhere
  std::vector<uint32_t> starts_;                    // by node
};

// --- CompoundFileWriter ---

CompoundFileWriter& CompoundFileWriter::stream(std::u16string_view path, Bytes content) {
  Node& node = nodes_[nodeAt(path)];
  node.isStream = true;
  node.content = std::move(content);
  return *this;
}

CompoundFileWriter& CompoundFileWriter::storage(std::u16string_view path) {
  nodeAt(path);
  return *this;
}

CompoundFile CompoundFileWriter::build() const {
  return CompoundFileBuilder(*this).build();
}

uint32_t CompoundFileWriter::nodeAt(std::u16string_view path) {
  uint32_t node = 0;
  for (size_t slash; (slash = path.find(u'/')) != path.npos; path.remove_prefix(slash + 1)) {
    node = childOf(node, path.substr(0, slash));
  }
  return childOf(node, path);
}

uint32_t CompoundFileWriter::childOf(uint32_t parent, std::u16string_view name) {
  if (name.empty() || name.size() > 32) throw std::invalid_argument("a name has 1 to 32 units");
  for (uint32_t child : nodes_[parent].children) {
    if (nodes_[child].name == name) return child;
  }
  const auto child = static_cast<uint32_t>(nodes_.size());
  nodes_.push_back(Node{std::u16string(name), false, {}, {}});
  nodes_[parent].children.push_back(child);
  return child;
}

// --- CompoundFile ---

void CompoundFile::save(const std::string& path) const {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

uint32_t CompoundFile::entryIndex(std::u16string_view path) const {
  const auto found = std::find(entries_.begin(), entries_.end(), path);
  if (found == entries_.end()) throw std::out_of_range("no such entry in the compound file");
  return static_cast<uint32_t>(found - entries_.begin());
}

size_t CompoundFile::entryOffset(uint32_t index) const {
  const uint32_t perPage = pageBytes_ / kEntryBytes;
  return pageOffset(directoryPages_.at(index / perPage)) + size_t{index % perPage} * kEntryBytes;
}

namespace {
uint32_t readInteger(const Bytes& bytes, size_t offset) {
  if (offset + 4 > bytes.size()) throw std::out_of_range("read outside the compound file");
  uint32_t value;
  std::memcpy(&value, bytes.data() + offset, 4);
  return value;
}
}  // namespace

uint32_t CompoundFile::startPage(std::u16string_view path) const {
  return readInteger(bytes_, entryOffset(entryIndex(path)) + kEntryStartPage);
}

uint32_t CompoundFile::fat(uint32_t page) const {
  return readInteger(bytes_, fatOffset(page));
}

CompoundFile& CompoundFile::patch(size_t offset, const Bytes& data) {
  patchBytes(bytes_, offset, data);
  return *this;
}

CompoundFile& CompoundFile::truncate(size_t size) {
  bytes_.resize(std::min(size, bytes_.size()));
  return *this;
}

size_t CompoundFile::fatOffset(uint32_t page) const {
  const uint32_t perPage = pageBytes_ / 4;
  return pageOffset(fatPages_.at(page / perPage)) + size_t{page % perPage} * 4;
}

size_t CompoundFile::tinyFatOffset(uint32_t tinyPage) const {
  const uint32_t perPage = pageBytes_ / 4;
  return pageOffset(tinyFatPages_.at(tinyPage / perPage)) + size_t{tinyPage % perPage} * 4;
}

}  // namespace support
