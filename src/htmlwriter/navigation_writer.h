#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/status.h"
#include "base/write_archive.h"

class KDRDocument;

namespace pagerex {

/// An entry of the navigation tree: a heading, which has the headings and bookmarks behind it as children, or
/// a bookmark.
struct NAVIGATION_ITEM {
  enum Kind : uint32_t { kRoot = 0, kHeading = 1, kBookmark = 2 };

  uint32_t position = 0;  ///< of the heading or bookmark in its sub-document
  Kind kind = kRoot;
  uint32_t level = 0;  ///< of a heading, 1 to 9
  std::string text;    ///< UTF-8
  std::vector<std::unique_ptr<NAVIGATION_ITEM>> children;
  NAVIGATION_ITEM* parent = nullptr;
};

/// Collects headings and bookmarks while the text is written, and at the end writes the page that shows them
/// as a tree.
class KHtmlNavigationPageWriter : public NAVIGATION_ITEM {
 public:
  KHtmlNavigationPageWriter() = default;
  KHtmlNavigationPageWriter(const KHtmlNavigationPageWriter&) = delete;
  KHtmlNavigationPageWriter& operator=(const KHtmlNavigationPageWriter&) = delete;

  /// kInvalidArgument for a null `document`, which is not owned.
  Status Init(const KDRDocument* document);

  /// Adds a bookmark under the current heading. kInvalidArgument for a null name.
  Status CollectBookMarkCP(unsigned int position, const char* name);
  /// Makes a heading of level 1 to 9 the current item. kInvalidArgument for another level.
  Status StartCollectTitle(unsigned int cp, unsigned int level);
  /// Adds UTF-8 text to the current item. kInvalidArgument for null.
  Status CollectTitle(const char* text);
  Status EndCollectTitle() { return Status::kOk; }
  /// The anchor in the text that a heading's link leads to. kInvalidArgument for a null `archive`.
  Status WriteTitleAnchor(unsigned int cp, IWriteArchive* archive);

  /// Writes the tree to `path`, a file of the output, with links that open anchors of `page` in the frame
  /// `target`. kNothing, and no file, if there is no item; kFailure if the file cannot be created;
  /// kInvalidArgument for a null argument.
  Status Write(OutputFiles& files, const char* path, const char* target, const char* page);

 private:
  NAVIGATION_ITEM* Add(Kind kind, NAVIGATION_ITEM* parent, unsigned int position);

  NAVIGATION_ITEM* current_ = this;
  const KDRDocument* document_ = nullptr;
};

/// The link of a bookmark and of a heading.
Status WriteBM(const NAVIGATION_ITEM* item, IWriteArchive* archive, const char* target, const char* page);
Status WriteTitle(const NAVIGATION_ITEM* item, IWriteArchive* archive, const char* target, const char* page);
/// An item and all below it. `folds` counts the folding headings written so far.
Status WriteNavigation(const NAVIGATION_ITEM* item, IWriteArchive* archive, const char* target,
                       const char* page, int& folds, const KDRDocument* document);
/// The script that folds and unfolds, and closes all folds at the start.
Status WriteFoldScript(IWriteArchive* archive, int folds);
/// The tree's style rules.
Status WriteStyle(IWriteArchive* archive);

}  // namespace pagerex
