#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "flow/handler.h"
#include "formats/html/look_book.h"
#include "formats/html/page_text.h"
#include "formats/html/tab_stops.h"

namespace pagerex {

/// What tabs of a paragraph depend on beside its properties; twips.
struct TabLine {
  int32_t distance = 720;  ///< between the stops that every paragraph has
  int32_t end = 0;         ///< of the line, from the margin; 0 where that is not known
  int32_t sizeHalfPoints = 20;
};

/// What stands in one paragraph. It begins with its first content, as its look is that of its first text; who
/// owns this says what it begins with.
class ParagraphWriter {
 public:
  /// None is owned.
  ParagraphWriter(LookBook& looks, StyleSheet& sheet) : looks_(looks), sheet_(sheet) {}

  /// `out` takes the text, and stands where the content begins. `context` is that of the paragraph's block.
  /// `properties` must stay until End.
  void Begin(PageText& out, const ParagraphProperties& properties, uint32_t context, const TabLine& line);
  /// The label of a list item, `look` its own.
  void PutLabel(std::u16string_view label, LookBook::Look look, ParagraphFacts::Follow follow,
                std::string_view picture);
  void Text(std::u16string_view text, const RunProperties& properties);
  void PutTab();
  void PutLineBreak();
  /// Markup in the line: a picture, a place, a reference. `look` null for one outside of runs.
  void PutInline(std::string_view markup, const RunProperties* look = nullptr);
  /// A link of its own, also where one is open: that ends in front of it, and begins anew behind it.
  void PutLink(std::string_view markup, const RunProperties* look = nullptr);
  /// An element around all that follows, up to its end; they nest.
  void BeginElement(std::string_view open, std::string_view close);
  void EndElement();
  /// Ends what is open. False if there was nothing that makes a line.
  bool End();

 private:
  struct Element {
    std::string open, close;
    size_t begin;  ///< of its content
  };
  struct Group {
    bool isOpen = false;
    size_t begin = 0;
    bool isDecimal = false;  ///< its text has its point at the stop
    size_t text = 0;         ///< where that begins
  };

  void OpenRun(LookBook::Look look, FontScript script);
  void CloseRun();
  void PutByScripts(std::u16string_view text, LookBook::Look look, bool isComplex);
  void PutInStop(const FoundStop& stop, int32_t width);
  size_t CloseInner();
  void Reopen(size_t first);
  void EndGroup();
  void NameLink(const Element& link);
  void BeginSegment(int32_t position);

  LookBook& looks_;
  StyleSheet& sheet_;
  PageText* out_ = nullptr;
  const ParagraphProperties* properties_ = nullptr;
  uint32_t context_ = 0;
  TabLine line_;

  bool isRunOpen_ = false;
  LookBook::Look runLook_ = 0;
  FontScript runScript_ = FontScript::kAscii;
  std::string_view runOpen_, runClose_;
  std::vector<Element> elements_;
  bool hasLine_ = false;  ///< something stands in the line

  size_t segment_ = 0;    ///< where what the next tab moves begins
  int32_t position_ = 0;  ///< and where that stands on the line, in twips from the margin
  Group group_;
};

}  // namespace pagerex
