#pragma once

#include <functional>
#include <string>

#include "base/write_archive.h"
#include "drawing/drawing.h"
#include "htmlwriter/env.h"
#include "htmlwriter/story_writer.h"
#include "objectwriter/doc_object_writer.h"
#include "support/drawing_writer.h"
#include "support/opened_document.h"

/// An opened document with drawings, and an object writer that writes into a page and a files folder of its
/// own.
///
///     ObjectPage page(Shape(1).props(Props().number(0x0181, 0xFF)));
///     EXPECT_EQ(page.written([&](auto& writer) { writer.WriteFillProp(page.shape()); }), "...");
class ObjectPage {
  struct NestedStories : pagerex::IStoryWriter {
    explicit NestedStories(const pagerex::KEnv& mainText) : env(mainText) {}
    void WriteStory(mso_word::SUBDOC_TYPE type, const KDWRange& range) override {
      pagerex::WriteStory(env, type, range);
    }
    const pagerex::KEnv& env;
  };

 public:
  using Writer = ObjectWriter::KDocHtmlObjectWriter;
  using Write = std::function<void(Writer&)>;

  /// `scripts`: of the process, where another page shares them; null for the page's own.
  explicit ObjectPage(const support::WordDocument& document, ObjectWriter::ShapeScripts* scripts = nullptr)
      : document_(document), objects_(conversion_, scripts ? *scripts : ownScripts_, env_.inTable, stories_) {
    conversion_.document = &*document_;
    conversion_.filesDir = folder_.path();
    env_.view = pagerex::VIEW_NORMAL;
    writer_.Init(&objects_);
  }
  explicit ObjectPage(const support::drawing::Drawing& drawing, ObjectWriter::ShapeScripts* scripts = nullptr)
      : ObjectPage(documentOf(drawing), scripts) {}
  /// One floating shape, anchored at position 0.
  explicit ObjectPage(const support::drawing::Shape& shape, const support::drawing::Place& place = {})
      : ObjectPage(support::drawing::Drawing().shape(0, shape, place)) {}

  /// What `write` writes into the page.
  std::string written(const Write& write) {
    const std::string path = folder_.path("page.htm");
    if (CreateHtmlWriterArchive(&conversion_.archive, files_, path.c_str()) != Status::kOk) return "no file";
    write(writer_);
    DeleteHtmlWriterArchive(conversion_.archive);
    conversion_.archive = nullptr;
    return folder_.read("page.htm");
  }

  /// A top-level shape of the main drawing.
  mso_escher::MsoROShape shape(unsigned int i = 0) const {
    return document_->GetDrawing(0).GetRootShape().GetChildShape(i);
  }
  void setInTable() { env_.inTable = 1; }
  const support::TempFolder& folder() const { return folder_; }
  ObjectWriter::KDocHtmlEnv& objects() { return objects_; }
  pagerex::KConversionEnv& conversion() { return conversion_; }
  Writer& writer() { return writer_; }

 private:
  static support::WordDocument documentOf(const support::drawing::Drawing& drawing) {
    support::WordDocument document;
    document.paragraph("text");
    drawing.addTo(document);
    return document;
  }

  support::TempFolder folder_;
  support::OpenedDocument document_;
  OutputFiles files_;
  pagerex::KHtmlConversionEnv conversion_{files_};
  pagerex::KEnv env_{conversion_};
  NestedStories stories_{env_};
  ObjectWriter::ShapeScripts ownScripts_;
  ObjectWriter::KDocHtmlEnv objects_;
  Writer writer_;
};

/// What one operation of the writer writes for a shape with these properties.
template <class Operation>
std::string writtenFor(const support::drawing::Props& props, Operation operation, uint16_t type = 1) {
  ObjectPage page(support::drawing::Shape(type).props(props));
  return page.written([&](ObjectPage::Writer& writer) { (writer.*operation)(page.shape()); });
}
