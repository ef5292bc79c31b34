#include "convert/document_counts.h"

#include <vector>

#include "drawing/drawing.h"
#include "drawing/embed_shapes.h"
#include "flow/walk.h"
#include "story/table_paragraph.h"
#include "wordreader/document.h"
#include "wordreader/merged_propx.h"
#include "wordreader/text_pool.h"

namespace pagerex {
namespace {

constexpr uint32_t kPictureFrame = 75;  // msosptPictureFrame
constexpr size_t kPageCount = 46;       // cPg in the document properties: u16

/// Tables follow one another where a paragraph between them lies in none.
uint64_t countTables(const KDRDocument& document, const KPropxTable& paragraphs) {
  KTableParagraphs looks(&document);
  uint64_t tables = 0;
  bool inTable = false;
  for (uint32_t i = 0; i < paragraphs.Count(); ++i) {
    const bool inside = looks.Look(SprmsOfParagraph(*paragraphs.Data(i))).kind == TableParagraph::INSIDE;
    if (inside && !inTable) ++tables;
    inTable = inside;
  }
  return tables;
}

uint64_t countFloatingPictures(const mso_escher::MsoROShape& root) {
  uint64_t pictures = 0;
  std::vector<mso_escher::MsoROShape> pending = {root};
  while (!pending.empty()) {
    const mso_escher::MsoROShape shape = pending.back();
    pending.pop_back();
    if (shape.GetShapeType() == kPictureFrame) ++pictures;
    if (!shape.IsGroupShape()) continue;
    for (unsigned int i = 0; i < shape.GetChildCount(); ++i) pending.push_back(shape.GetChildShape(i));
  }
  return pictures;
}

uint64_t pagesToldByWord(const KDRDocument& document) {
  KDRTableRecord properties;
  if (document.GetTableRecord(&properties, mso_word::FCLCB_DOCUMENT_PROPERTIES) == Status::kNothing) return 0;
  return properties.bytes.u16(kPageCount);
}

/// Counts what a walk does not count itself.
class PictureCount final : public FlowHandler {
 public:
  void BeginDocument(const DocumentFacts& facts) override { pages_ = facts.pageCount; }
  void BeginHeader(const HeaderFacts&) override { ++outside_; }
  void EndHeader() override { --outside_; }
  void BeginNote(const NoteFacts&) override { ++outside_; }
  void EndNote() override { --outside_; }
  void BeginComment(const CommentFacts&) override { ++outside_; }
  void EndComment() override { --outside_; }
  void Text(std::u16string_view, const RunProperties&) override {}
  void Picture(const PictureFacts&) override { pictures_ += outside_ == 0; }

  uint64_t pages() const { return pages_; }
  uint64_t pictures() const { return pictures_; }

 private:
  uint32_t outside_ = 0;  ///< parts around this place that are not of the main text
  uint64_t pages_ = 0, pictures_ = 0;
};

}  // namespace

pagerex_counts countByWalk(WordFile& file, RunControl& control) {
  PictureCount others;
  const WalkOptions everything{RevisionView::kAll, true};
  const WrittenCounts written = walk(file, everything, control, nullptr, others);
  return {written.characters, written.paragraphs, written.tables, others.pictures(), others.pages()};
}

pagerex_counts countContents(const KDRDocument& document) {
  const KPropxTable& paragraphs = document.GetPlcfPap(mso_word::SUBDOC_MAIN);
  pagerex_counts counts = {};
  counts.characters = document.GetTextPool(mso_word::SUBDOC_MAIN).size();
  counts.paragraphs = paragraphs.Count();
  counts.tables = countTables(document, paragraphs);
  counts.pictures =
      document.GetEmbedShapes().Count() + countFloatingPictures(document.GetDrawing(0).GetRootShape());
  counts.pages = pagesToldByWord(document);
  return counts;
}

}  // namespace pagerex
