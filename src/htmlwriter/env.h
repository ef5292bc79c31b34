#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "htmlwriter/spelled_properties.h"
#include "htmlwriter/view.h"
#include "story/conversion_env.h"
#include "wordreader/bookmarks.h"
#include "wordreader/document.h"
#include "wordreader/fields.h"
#include "wordreader/sections.h"
#include "wordreader/sprm_list.h"
#include "wordreader/style_merger.h"

namespace ObjectWriter {
class IObjectWriter;
}

namespace pagerex {

class IStartNewPage;
class KHost;
class KHtmlNavigationPageWriter;
struct KWriter;

/// State of the current paragraph.
struct KPapEnv {
  uint32_t papStart = 0xFFFFFFFFu;  ///< character positions of the paragraph
  uint32_t papEnd = 0xFFFFFFFFu;
  uint32_t papIndex = 0xFFFFFFFFu;  ///< index in plcfPap
  KDWSprmList papx;                 ///< direct properties, with the style index
  uint16_t listIlfo = 0;            ///< list number and level of the current numbered paragraph
  uint8_t listIlvl = 0;
  int32_t lineSpacing = 0;    ///< for the runs: odd, a percentage plus one; even, twips
  uint8_t papHasContent = 0;  ///< always 0: cleared for each paragraph and set by nobody
  uint8_t collectingTitle = 0;
  float baseFontSize = 10.5f;  ///< of the paragraph's style, points
};

/// What belongs to one conversion into HTML.
struct KHtmlConversionEnv : KConversionEnv {
  using KConversionEnv::KConversionEnv;

  KStyleMerger* merger = nullptr;
  ObjectWriter::IObjectWriter* objectWriter = nullptr;  ///< null in view 2
  /// Points, by style index; negative for a style that has none. Filled before any page is written.
  std::vector<float> styleFontSizes;
  KSpelledProperties spelled;
  KHost* host = nullptr;  ///< may be null
};

/// What belongs to one story. A nested one begins with that of the story around it.
struct KStoryEnv {
  /// 0 no link; 1 a HYPERLINK field has begun and its anchor is not written yet; 2 the anchor element is
  /// open.
  uint32_t hyperlinkState = 0;
  VIEW view = VIEW_INVALID;
  int32_t pageSize = -1;  ///< characters per page
  const KTextPool* textPool = nullptr;
  const KPropxTable* plcfChp = nullptr;
  const KPropxTable* plcfPap = nullptr;
  const KDRPlcfsed* plcfSed = nullptr;
  const KDRPlcfBkf* bookmarkStarts = nullptr;
  const KBookmarkPositions* bookmarkCPStarts = nullptr;
  const KDRFieldContext* fields = nullptr;
  KHtmlNavigationPageWriter* navigation = nullptr;  ///< set in view 0 for the length of the main text
  /// The pages writer as seen by the run and paragraph writers; null while a paragraph is not to be split.
  IStartNewPage* startNewPage = nullptr;
  uint32_t streamStart = 0xFFFFFFFFu;  ///< character positions of the text stream being written
  uint32_t streamEnd = 0xFFFFFFFFu;
  uint8_t inTable = 0;
  uint32_t annotationCount = 0;
  uint32_t footnoteCount = 0;
  uint32_t endnoteCount = 0;
  mso_word::SUBDOC_TYPE subDocType = mso_word::SUBDOC_MAIN;
  int32_t sectionLeftMargin = 0;  ///< twips
};

/// What belongs to the current page. A nested story has one of its own: it turns no pages, and owes nothing.
struct KPageEnv {
  int32_t charCount = 0;                         ///< characters counted on the page
  std::vector<unsigned int> pendingAnnotations;  ///< notes whose content the page still owes
  std::vector<unsigned int> pendingFootnotes;
  std::vector<unsigned int> pendingEndnotes;
};

/// All that the writers of one story share; they reach each other, the document and the output through it
/// alone.
struct KEnv : KStoryEnv {
  /// `shared` is not owned.
  explicit KEnv(KHtmlConversionEnv& shared);
  KEnv(KEnv&&) noexcept;
  ~KEnv();

  /// The environment of a nested story (note, text box), which comes out as in the normal view.
  static KEnv NestedIn(const KEnv& outer);

  KHtmlConversionEnv* conversion;  ///< never null
  KPageEnv page;
  KPapEnv pap;
  std::unique_ptr<KWriter> writers;  ///< made by KWriterFactory; null before
};

}  // namespace pagerex
