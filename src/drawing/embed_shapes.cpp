#include "drawing/embed_shapes.h"

#include <algorithm>

#include "wordreader/document.h"
#include "wordreader/sprm_list.h"
#include "wordreader/text_marks.h"

namespace {

constexpr mso_word::SUBDOC_TYPE kOrder[] = {
    mso_word::SUBDOC_MAIN,           mso_word::SUBDOC_HEADER,     mso_word::SUBDOC_TEXTBOX,
    mso_word::SUBDOC_HEADER_TEXTBOX, mso_word::SUBDOC_ANNOTATION, mso_word::SUBDOC_FOOTNOTE,
    mso_word::SUBDOC_ENDNOTE,
};

/// Where a run's properties say that its picture lies. A run with sprmCFData is a form field.
std::optional<uint32_t> PictureOffset(ByteView properties) {
  constexpr uint16_t kSprmCFData = 0x0806;
  constexpr uint16_t kSprmCPicLocation = 0x6A03;
  std::optional<uint32_t> offset;
  if (properties.size() <= 2) return offset;
  const KDWSprmList sprms(properties);
  KDWSprm sprm;
  for (KDWSprmList::Enumerator walk(sprms); walk.Next(&sprm) == Status::kOk;) {
    if (sprm.GetOpcode() == kSprmCFData) return {};
    if (sprm.GetOpcode() == kSprmCPicLocation && !offset) offset = sprm.GetArgument().u32(0);
  }
  return offset;
}

/// Runs of a sound document share no characters. Those of a damaged one may each be the whole text: a story
/// is searched so many times.
constexpr uint64_t kMostSearches = 8;

/// The first place in a range of the character that stands for a picture. `charactersLeft` counts down what
/// may still be looked at.
std::optional<uint32_t> FindMark(const KTextPool& text, const KDWRange& range, uint64_t& charactersLeft) {
  const uint32_t end = std::min(range.end, text.size());
  for (uint32_t cp = range.start; cp < end && charactersLeft > 0;) {
    uint32_t n = 0;
    const unsigned short* const page = text.run(cp, &n);
    n = static_cast<uint32_t>(std::min<uint64_t>({n, end - cp, charactersLeft}));
    charactersLeft -= n;
    const unsigned short* const found = std::find(page, page + n, text_mark::kPicture);
    if (found != page + n) return cp + static_cast<uint32_t>(found - page);
    cp += n;
  }
  return {};
}

}  // namespace

Status KDREmbedShapes::Read(const KDRDocument& document) {
  DsMemReadArchive& stream = document.GetDocFile().getDataStrm();
  if (!stream.good()) return Status::kNothing;
  data_.emplace(stream, document.GetAllocator());
  Known known;
  Status status = Status::kOk;
  for (const mso_word::SUBDOC_TYPE type : kOrder) ReadSubDoc(document, type, known, status);
  return status;
}

void KDREmbedShapes::ReadSubDoc(const KDRDocument& document, mso_word::SUBDOC_TYPE type, Known& known,
                                Status& status) {
  const KPropxTable& runs = document.GetPlcfChp(type);
  const KTextPool& text = document.GetTextPool(type);
  uint64_t charactersLeft = kMostSearches * text.size();
  for (uint32_t i = 0; i < runs.Count(); ++i) {
    const std::optional<uint32_t> offset = PictureOffset(runs.Data(i)->fkp());
    if (!offset) continue;
    const std::optional<uint32_t> cp = FindMark(text, runs.Range(i), charactersLeft);
    status = cp ? AppendShape(*offset, *cp, known, document.GetAllocator()) : Status::kNothing;
  }
}

/// A picture is read once, however many runs name it.
Status KDREmbedShapes::AppendShape(uint32_t offset, uint32_t cp, Known& known, ChainAllocator& allocator) {
  const auto [place, isNew] = known.try_emplace(offset);
  KDREmbedShape shape;
  if (isNew) {
    if (failed(shape.Init(*data_, offset, cp, allocator))) return Status::kNothing;
    place->second = Count();
  } else {
    if (!place->second) return Status::kNothing;
    shape = shapes_[*place->second];
    shape.cp = cp;
  }
  shapes_.push_back(shape);
  return Status::kOk;
}

Status KDREmbedShape::Init(StreamPieces& pieces, uint32_t offset, uint32_t position,
                           ChainAllocator& allocator) {
  constexpr int kShape = 100;
  constexpr int kNamedShape = 102;
  cp = position;
  picture = pieces.Read(offset, PICF::kSize);
  if (picture.empty()) return Status::kFailure;
  if (picture.size() < PICF::kSize) {
    picture = ByteView();
    return Status::kOk;
  }
  uint64_t at = uint64_t{offset} + PICF::kSize;
  const int kind = picture.i16(PICF::kKind);
  if (kind == kNamedShape) {
    pieces.Peek(at, &nameLength, 1);
    name = pieces.Read(at + 1, nameLength);
    at += 1u + nameLength;
  } else if (kind != kShape) {
    return Status::kFailure;
  }

  // The container's type is not looked at.
  uint8_t header[8] = {};
  pieces.Peek(at, header, sizeof(header));
  const uint32_t bodySize = ByteView(header, sizeof(header)).u32(4);
  mso_escher::MsoRORecInfo container;
  container.body = container.reach = pieces.Read(at + sizeof(header), bodySize);
  mso_escher::MsoROShape made;
  made.InitShape(container, allocator, 0);
  if (made.Good()) shape = New<mso_escher::MsoROShape>(allocator, made);

  at += sizeof(header) + uint64_t{bodySize};
  const uint64_t end = uint64_t{offset} + picture.u32(PICF::kLength);
  auto* const table = New<KDRBseTable>(allocator);
  table->Init(pieces, at, end > at ? end - at : 0);
  blips = table;
  return Status::kOk;
}
