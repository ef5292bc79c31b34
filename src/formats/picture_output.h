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

/// Where a picture can be found.
struct PictureAddress {
  std::string_view uri;  ///< of URI characters; empty where there is no picture
  bool isShown = false;  ///< by browsers
};

/// Takes the pictures of a document, as browsers read them, and tells where they can be seen. One of which
/// nothing can be made for browsers stays as it is.
class PictureOutput {
 public:
  PictureOutput() = default;
  PictureOutput(const PictureOutput&) = delete;
  PictureOutput& operator=(const PictureOutput&) = delete;
  virtual ~PictureOutput() = default;

  /// Valid up to the next call.
  virtual PictureAddress AddressOf(const PictureFacts& picture) = 0;

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
/// browser shows have no address.
std::unique_ptr<PictureOutput> makeHeldPictures(uint64_t mostBytes, Warnings* warnings);
constexpr char kHeldMark = '\x01';  // never part of a page

/// None, and a warning for each.
std::unique_ptr<PictureOutput> makeNoPictures(Warnings* warnings);

}  // namespace pagerex
