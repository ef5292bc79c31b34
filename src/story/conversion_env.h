#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/output_files.h"
#include "base/progress.h"
#include "base/run_control.h"
#include "base/warnings.h"
#include "base/write_archive.h"
#include "numformat/number_format_service.h"
#include "story/page_safety.h"
#include "story/table_scans.h"
#include "story/work_limits.h"

class KDRDocument;

namespace pagerex {

class WebPictures;

/// What belongs to one conversion: all its stories and all its writers share it. Owns none of what it points
/// at.
struct KConversionEnv {
  explicit KConversionEnv(OutputFiles& output) : files(output) {}
  KConversionEnv(const KConversionEnv&) = delete;
  KConversionEnv& operator=(const KConversionEnv&) = delete;

  OutputFiles& files;
  const KDRDocument* document = nullptr;
  IWriteArchive* archive = nullptr;  ///< output of the current page
  std::string htmlPath;              ///< the main HTML path that the caller passed
  std::string filesDir;              ///< without a closing slash; empty where there is no files folder
  KPageSafety safety;                ///< constant for a conversion

  bool hasPictures = true;               ///< whether pictures are written at all
  WebPictures* webPictures = nullptr;    ///< beside those of the document, for the pages to show; may be null
  RunControl* control = nullptr;         ///< what may end it before its end; may be null
  Warnings* warnings = nullptr;          ///< where it tells what it leaves out; may be null
  ProgressListener* progress = nullptr;  ///< may be null
  WrittenCounts written;

  NumberFormatService numberFormats;

  /// How much may be done. Made when first asked for, as that reads the tables of the document.
  KWorkLimits& Limits() {
    if (!limits_) limits_.emplace(document, control);
    return *limits_;
  }
  /// The tables of the document that have been looked at ahead. Made when first asked for.
  KTableScans& Scans() {
    if (!scans_) scans_.emplace(document, Limits());
    return *scans_;
  }

  /// A paragraph of the main text begins.
  void NoteParagraph(uint32_t start, uint32_t end) {
    ++written.paragraphs;
    written.characters += end - start;
    if (progress) progress->Reached(start);
  }

  /// Null before they are made.
  const KWorkLimits* LimitsMade() const { return limits_ ? &*limits_ : nullptr; }

 private:
  std::optional<KWorkLimits> limits_;
  std::optional<KTableScans> scans_;
};

}  // namespace pagerex
