#pragma once

#include <optional>
#include <string>

#include "base/output_files.h"
#include "base/write_archive.h"
#include "numformat/number_format_service.h"
#include "story/page_safety.h"
#include "story/table_scans.h"
#include "story/work_limits.h"

class KDRDocument;

namespace pagerex {

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

  NumberFormatService numberFormats;

  /// How much may be done. Made when first asked for, as that reads the tables of the document.
  KWorkLimits& Limits() {
    if (!limits_) limits_.emplace(document);
    return *limits_;
  }
  /// The tables of the document that have been looked at ahead. Made when first asked for.
  KTableScans& Scans() {
    if (!scans_) scans_.emplace(document, Limits());
    return *scans_;
  }

 private:
  std::optional<KWorkLimits> limits_;
  std::optional<KTableScans> scans_;
};

}  // namespace pagerex
