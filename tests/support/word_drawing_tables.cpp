#include "support/word_drawing_tables.h"

#include "support/drawing_writer.h"

namespace support {

using namespace mso_word;

namespace {

/// A drawing: of the text, or of headers.
struct Layer {
  uint32_t story;
  uint32_t anchorTable;
  uint8_t number;
  uint32_t rootShape;
};
constexpr Layer kLayers[] = {{SUBDOC_MAIN, FCLCB_SHAPE_ANCHORS, 0, 1024},
                             {SUBDOC_HEADER, FCLCB_HEADER_SHAPE_ANCHORS, 1, 2048}};

/// Where the text of boxes of one story is told.
struct BoxTables {
  uint32_t story, texts, breaks;
};
constexpr BoxTables kBoxTables[] = {{SUBDOC_TEXTBOX, FCLCB_TEXTBOXES, 75}, {SUBDOC_HEADER_TEXTBOX, 58, 76}};

/// The anchors of a layer as a table; returns the shapes.
std::vector<Bytes> addAnchors(const FlatText& text, const Layer& layer, TableSet& tables) {
  std::vector<uint32_t> positions;
  std::vector<Bytes> places, shapes;
  for (const auto& [cp, anchor] : text.anchors[layer.story]) {
    if (anchor->kind != Anchor::Kind::kShape) continue;
    positions.push_back(cp - text.storyStarts[layer.story]);
    places.push_back(anchor->place);
    shapes.push_back(anchor->shape);
  }
  if (shapes.empty()) return {};
  positions.push_back(text.storyLength(layer.story));
  tables[layer.anchorTable].table = positionTable(positions, places);
  return shapes;
}

}  // namespace

void addDrawingTables(const FlatText& text, const std::vector<Bytes>& storedPictures, TableSet& tables) {
  ByteWriter drawings;
  for (const Layer& layer : kLayers) {
    const std::vector<Bytes> shapes = addAnchors(text, layer, tables);
    if (shapes.empty()) continue;
    drawings.u8(layer.number).bytes(drawing::drawingContainer(layer.rootShape, shapes));
  }
  if (drawings.size() == 0) return;
  tables[FCLCB_DRAWINGS].table =
      ByteWriter().bytes(drawing::groupContainer(storedPictures)).bytes(drawings.take()).take();
}

void addTextBoxTables(const FlatText& text, uint32_t type, const TextBoxTexts& boxes, TableSet& tables) {
  if (boxes.empty()) return;
  std::vector<uint32_t> positions = text.partStarts[type];
  const uint32_t end = text.storyLength(type);
  if (positions.back() < end - 1) positions.push_back(end - 1);
  positions.push_back(end);
  std::vector<Bytes> texts, breaks;
  for (size_t i = 0; i < boxes.size(); ++i) {
    const TextBoxText& box = *boxes[i];
    texts.push_back(ByteWriter().u32(box.boxCount).zeros(10).u32(box.shapeId).u32(0).take());
    breaks.push_back(ByteWriter().u16(static_cast<uint32_t>(i)).u32(0).take());
  }
  // The mark that closes the story has records of its own.
  if (positions.size() > boxes.size() + 1) {
    texts.push_back(Bytes(22));
    breaks.push_back(Bytes{0xFF, 0xFF, 0, 0, 0, 0});
  }
  for (const BoxTables& each : kBoxTables) {
    if (each.story != type) continue;
    tables[each.texts].table = positionTable(positions, texts);
    tables[each.breaks].table = positionTable(positions, breaks);
  }
}

}  // namespace support
