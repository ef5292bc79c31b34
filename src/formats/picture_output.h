#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/output_files.h"
#include "base/utf8_output.h"
#include "base/warnings.h"
#include "flow/handler.h"

namespace pagerex {

/// Takes the pictures of a document, and tells where they can be seen.
class PictureOutput {
 public:
  PictureOutput() = default;
  PictureOutput(const PictureOutput&) = delete;
  PictureOutput& operator=(const PictureOutput&) = delete;
  virtual ~PictureOutput() = default;

  /// An address for the page, in which only URI characters stand; empty where there is no picture to show.
  /// Valid up to the next call.
  virtual std::string_view AddressOf(const PictureFacts& picture) = 0;

  /// Writes the data that stands for the mark of a held picture, see makeHeldPictures.
  virtual void WriteHeld(uint64_t /*number*/, Utf8Output& /*out*/) const {}

  uint64_t pictures() const { return pictures_; }

 protected:
  uint64_t pictures_ = 0;  ///< that were stored, each once
};

/// Pictures as files "`folder`/picture-1.png", each stored once however often it is shown, up to
/// `mostBytes` of all together. `files` and `warnings` (may be null) are not owned.
std::unique_ptr<PictureOutput> makePictureFiles(OutputFiles& files, std::string folder, Warnings* warnings,
                                                uint64_t mostBytes = UINT64_MAX);

/// Pictures as "data:" addresses, up to `mostBytes` of all together.
std::unique_ptr<PictureOutput> makeEmbeddedPictures(uint64_t mostBytes, Warnings* warnings);

/// As embedded ones, but what is told is an address with a mark in place of its data: kHeldMark, a number,
/// and kHeldMark again. The bytes are held, each picture's once, until they are written. Pictures that no
/// browser shows have no data.
std::unique_ptr<PictureOutput> makeHeldPictures(uint64_t mostBytes, Warnings* warnings);
constexpr char kHeldMark = '\x01';  // never part of a page

/// Whether browsers show the picture that an address leads to, as these tell it.
bool isShownByBrowsers(std::string_view address);

/// None, and a warning for each.
std::unique_ptr<PictureOutput> makeNoPictures(Warnings* warnings);

}  // namespace pagerex
