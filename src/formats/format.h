#pragma once

#include <cstdint>
#include <string>

#include "base/link_policy.h"
#include "base/output_files.h"
#include "base/progress.h"
#include "base/run_control.h"
#include "base/status.h"
#include "base/warnings.h"
#include "pagerex/convert.h"

class KDRDocument;

namespace pagerex {

class WordFile;

/// The host of a conversion, as a format tells it how far it has come.
class FormatListener : public ProgressListener {
 public:
  /// A page, from 1, stands whole in the file `name`. kOk when the conversion may go on, which the call may
  /// wait for; kStopped otherwise.
  virtual Status PageFinished(int page, const char* name) = 0;
};

/// What hosts ask of the formats on the walk, as pagerex_options has it.
struct FlowChoices {
  int32_t revisions = PAGEREX_REVISIONS_FINAL;
  bool hiddenText = false;
  bool comments = true;
  bool headers = false;
  bool frontMatter = false;
  bool pageBreaks = false;
  bool commonMark = false;
  int32_t width = 0;
  bool darkScheme = false;
};

/// One document to be written in one format. Owns none of what it refers to.
struct FormatJob {
  const KDRDocument* document;  ///< for a format that reads the model, and else null
  WordFile* file;               ///< for one that walks the document, and else null
  OutputFiles& files;           ///< takes the files by their names
  std::string mainName;         ///< of the main file; others go into the folder named after it
  int32_t pageSize;             ///< characters, 1 or more; counts where the format has pages
  LinkPolicy links;
  int32_t pictures;     ///< PAGEREX_PICTURES_..., one that the format can do
  RunControl& control;  ///< to be asked for each paragraph at least
  Warnings& warnings;
  FormatListener& listener;
  const FlowChoices& choices;
  WrittenCounts written;       ///< filled in by the format
  uint64_t inputBytes = 0;     ///< what output and memory are measured by
  int32_t wantedPageSize = 0;  ///< `pageSize` if the host gave one, else 0
};

/// A format: what hosts are told of it, and what writes it.
struct Format {
  enum class Reads : uint8_t { kModel, kFile };

  pagerex_format told;
  Reads reads;
  uint32_t pictures;  ///< those of PAGEREX_PICTURES_... that it can do: bit n for n
  /// kOk for a document that was written to its end. May throw std::bad_alloc, and an int for a document that
  /// is damaged beyond reading.
  Status (*write)(FormatJob& job);
  bool embedsPictures = false;  ///< where PAGEREX_PICTURES_USUAL is asked for
};

constexpr uint32_t pictureChoice(int32_t choice) {
  return uint32_t{1} << choice;
}

}  // namespace pagerex
