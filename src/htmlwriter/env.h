#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/write_archive.h"
#include "wordreader/bookmarks.h"
#include "wordreader/document.h"
#include "wordreader/fields.h"
#include "wordreader/sections.h"
#include "wordreader/sprm_list.h"
#include "wordreader/style_merger.h"

struct IPageRexCallBack;

namespace ObjectWriter {
class IObjectWriter;
}

namespace pagerex {

class KHtmlNavigationPageWriter;
class IStartNewPage;
class IPagesWriter;
class IPapWriter;
class IChpWriter;
class ISectionWriter;
class ITextStreamWriter;
class KTableScans;
class KWorkLimits;

/// How the document comes out.
enum VIEW : int {
  VIEW_INVALID = -1,
  VIEW_NORMAL = 0,    ///< one page, with a navigation frame
  VIEW_PHONE = 1,     ///< many small pages, no floating drawings, no notes
  VIEW_PREVIEW = 2,   ///< the first characters as a bare fragment
  VIEW_MULPAGES = 3,  ///< as normal, cut into pages by character count
};

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

/// The writers of one story. Owned by the environment for which KWriterFactory made them.
struct KWriter {
  IPagesWriter* pages = nullptr;
  IPapWriter* pap = nullptr;
  IChpWriter* chp = nullptr;
  ISectionWriter* section = nullptr;
  ITextStreamWriter* textStream = nullptr;

  void Init() { *this = KWriter(); }
};

/// Numbers of notes. They stay where they are when an environment is copied: a nested story owes nothing, and
/// a page may owe many notes and hold many stories.
struct KNoteNumbers {
  KNoteNumbers() = default;
  KNoteNumbers(const KNoteNumbers&) {}
  KNoteNumbers& operator=(const KNoteNumbers&) = delete;

  std::vector<unsigned int> numbers;
};

/// All that the writers of one story share; they reach each other, the document and the output through it
/// alone. A nested story (notes, text boxes) is written by a copy with writers of its own; the pointers are
/// shared.
struct KEnv {
  /// 0 no link; 1 a HYPERLINK field has begun and its anchor is not written yet; 2 the anchor element is
  /// open.
  uint32_t hyperlinkState = 0;
  int32_t charCount = 0;  ///< characters counted on the current page
  VIEW view = VIEW_INVALID;
  KPapEnv pap;
  std::string htmlPath;  ///< the main HTML path that the caller passed
  std::string filesDir;  ///< without a closing slash; empty in view 2
  const KDRDocument* document = nullptr;
  IWriteArchive* archive = nullptr;  ///< output of the current page; owned by KHtmlWriter
  int32_t pageSize = -1;             ///< characters per page
  const KTextPool* textPool = nullptr;
  const KPropxTable* plcfChp = nullptr;
  const KPropxTable* plcfPap = nullptr;
  const KDRPlcfsed* plcfSed = nullptr;
  const KDRPlcfBkf* bookmarkStarts = nullptr;
  const KBookmarkPositions* bookmarkCPStarts = nullptr;
  const KDRFieldContext* fields = nullptr;
  KStyleMerger* merger = nullptr;
  KWriter writers;
  ObjectWriter::IObjectWriter* objectWriter = nullptr;  ///< null in view 2
  KHtmlNavigationPageWriter* navigation = nullptr;      ///< set in view 0 for the length of the main text
  /// The pages writer as seen by the run and paragraph writers; null while a paragraph is not to be split.
  IStartNewPage* startNewPage = nullptr;
  uint32_t streamStart = 0xFFFFFFFFu;  ///< character positions of the text stream being written
  uint32_t streamEnd = 0xFFFFFFFFu;
  uint8_t inTable = 0;
  std::shared_ptr<KTableScans> tableScans;  ///< of the document; made by the first table writer
  std::shared_ptr<KWorkLimits> workLimits;  ///< of the conversion; made by the first writer
  uint32_t annotationCount = 0;
  uint32_t footnoteCount = 0;
  uint32_t endnoteCount = 0;
  mso_word::SUBDOC_TYPE subDocType = mso_word::SUBDOC_MAIN;
  int32_t sectionLeftMargin = 0;  ///< twips
  /// Points, by style index. Filled before any page is written and shared by all copies.
  std::shared_ptr<std::map<unsigned int, float>> styleFontSizes =
      std::make_shared<std::map<unsigned int, float>>();
  KNoteNumbers pendingAnnotations;  ///< notes whose content the page still owes
  KNoteNumbers pendingFootnotes;
  KNoteNumbers pendingEndnotes;
  IPageRexCallBack* callback = nullptr;  ///< the host's; may be null
};

}  // namespace pagerex
