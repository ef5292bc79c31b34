#include "drawing/embed_shapes.h"

#include <algorithm>

#include "wordreader/doc_file.h"
#include "wordreader/document.h"
#include "wordreader/sprm_list.h"

namespace {

constexpr uint16_t kSprmCFData = 0x0806;
constexpr uint16_t kSprmCPicLocation = 0x6A03;
constexpr uint16_t kPictureMark = 1;
constexpr size_t kRecordHeader = 8;

constexpr mso_word::SUBDOC_TYPE kOrder[] = {
    mso_word::SUBDOC_MAIN,           mso_word::SUBDOC_HEADER,     mso_word::SUBDOC_TEXTBOX,
    mso_word::SUBDOC_HEADER_TEXTBOX, mso_word::SUBDOC_ANNOTATION, mso_word::SUBDOC_FOOTNOTE,
    mso_word::SUBDOC_ENDNOTE,
};

/// Up to `size` bytes, as many as there are.
ByteView read(DsMemReadArchive& stream, uint64_t size, ChainAllocator& allocator) {
  const auto fits = static_cast<unsigned int>(std::min<uint64_t>(size, stream.bytesLeft()));
  if (fits == 0) return {};
  void* bytes = allocator.Alloc(fits);
  return ByteView(bytes, stream.get(bytes, fits));
}

/// Runs of a sound document share no characters. Those of a damaged one may each be the whole text: a story
/// is searched so many times.
constexpr uint64_t kMostSearches = 8;

/// The position of the picture's character in a run; the end of the run if it has none. `charactersLeft`
/// counts down what may still be looked at.
uint32_t findMark(const KTextPool& pool, const KDWRange& range, uint64_t& charactersLeft) {
  for (uint32_t cp = range.start; cp < range.end && cp < pool.size() && charactersLeft > 0;) {
    uint32_t n = 0;
    const unsigned short* text = pool.run(cp, &n);
    n = static_cast<uint32_t>(std::min<uint64_t>({n, range.end - cp, charactersLeft}));
    charactersLeft -= n;
    const unsigned short* found = std::find(text, text + n, kPictureMark);
    if (found != text + n) return cp + static_cast<uint32_t>(found - text);
    cp += n;
  }
  return range.end;
}

}  // namespace

Status KDREmbedShapes::Read(const KDRDocument& document) {
  DsMemReadArchive& stream = document.GetDocFile().getDataStrm();
  if (!stream.good()) return Status::kNothing;
  // Pictures of a sound file do not overlap: all of them together fit into the stream.
  bytesLeft_ = stream.size();
  Status status = Status::kOk;
  for (const mso_word::SUBDOC_TYPE type : kOrder) {
    const KPropxTable& runs = document.GetPlcfChp(type);
    charactersLeft_ = kMostSearches * document.GetTextPool(type).size();
    for (uint32_t i = 0; i < runs.Count(); ++i) {
      const ByteView properties = runs.Data(i)->fkp();
      if (properties.size() <= 2) continue;
      const KDWSprmList sprms(properties);
      KDWSprm location;
      // A run with sprmCFData is a form field.
      if (sprms.FindSprm(kSprmCFData, nullptr) == Status::kOk) continue;
      if (sprms.FindSprm(kSprmCPicLocation, &location) != Status::kOk) continue;
      uint32_t offset = 0;
      location.GetSprmValue(&offset);
      status =
          AppendShape(offset, stream, document.GetTextPool(type), runs.Range(i), document.GetAllocator());
    }
  }
  return status;
}

Status KDREmbedShapes::AppendShape(uint32_t offset, DsMemReadArchive& stream, const KTextPool& pool,
                                   const KDWRange& range, ChainAllocator& allocator) {
  const uint32_t cp = findMark(pool, range, charactersLeft_);
  if (cp == range.end) return Status::kNothing;
  auto known = byOffset_.find(offset);
  if (known == byOffset_.end()) {
    KDREmbedShape shape;
    if (bytesLeft_ == 0 || failed(shape.Init(stream, offset, cp, allocator))) return Status::kNothing;
    const uint64_t used = stream.tell() > offset ? stream.tell() - offset : 0;
    bytesLeft_ -= std::min<uint64_t>(bytesLeft_, std::max<uint64_t>(used, 1));
    known = byOffset_.emplace(offset, shape).first;
  }
  shapes_.push_back(known->second);
  shapes_.back().cp = cp;
  return Status::kOk;
}

Status KDREmbedShape::Init(DsMemReadArchive& stream, uint32_t offset, uint32_t position,
                           ChainAllocator& allocator) try {
  constexpr int kShape = 100;
  constexpr int kNamedShape = 102;
  cp = position;
  stream.seek(static_cast<long>(offset), 0);
  picture = read(stream, PICF::kSize, allocator);
  if (picture.size() < PICF::kSize) {
    picture = ByteView();
    return Status::kOk;
  }
  const uint64_t length = picture.u32(PICF::kLength);
  uint64_t remaining = length > PICF::kSize ? length - PICF::kSize : 0;
  const auto take = [&](uint64_t size) { remaining -= std::min(remaining, size); };

  const int kind = picture.i16(PICF::kKind);
  if (kind == kNamedShape) {
    nameLength = read(stream, 1, allocator).u8(0);
    name = read(stream, nameLength, allocator);
    take(1u + nameLength);
  } else if (kind != kShape) {
    return Status::kFailure;
  }

  const ByteView header = read(stream, kRecordHeader, allocator);
  take(kRecordHeader);
  mso_escher::MsoRORecInfo container;
  container.versionAndInstance = header.u16(0);
  container.type = header.u16(2);
  container.body = container.reach = read(stream, header.u32(4), allocator);
  take(header.u32(4));
  auto* made = New<mso_escher::MsoROShape>(allocator);
  made->InitShape(container, allocator, 0);
  shape = made;

  auto* table = New<KDRBseTable>(allocator);
  table->Init(read(stream, remaining, allocator));
  blips = table;
  return Status::kOk;
} catch (int) {
  return Status::kFailure;  // a seek outside the stream
}
