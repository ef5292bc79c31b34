#pragma once

#include <string>

#include "base/byte_view.h"
#include "base/status.h"
#include "drawing/bse_table.h"
#include "objectwriter/image_file.h"
#include "objectwriter/object_env.h"

namespace ObjectWriter {

/// The pictures of a document as files in the files folder, each written once however often it is used.
class PictureFiles {
 public:
  /// `env` is not owned; its `images` tells what is written.
  explicit PictureFiles(KHtmlEnv& env) : env_(env) {}

  /// A picture of the drawings' common store, counted from 1. Writes its file, unless that is done already,
  /// and sets `name` to the file's name. kNothing if there is no such picture.
  Status WriteStored(int index, std::string& name);
  /// The same for picture `place` of the list of an inline picture, counted from 0; the list may be null.
  Status WriteListed(const KDRBseTable* pictures, int place, std::string& name);

 private:
  /// Whether pictures are written at all; tells when not.
  bool Wants() const;
  /// Tells of a picture that is not there.
  Status Lacks() const;
  Status Write(ByteView uid, const StoredImage& image, std::string& name);
  /// Sets `name` to the file name of the picture with this identity (16 bytes), which others will get too,
  /// and, for a new one, `path` to where to write it. kKnownImage when it is written already, kNothing
  /// without an identity.
  Status GetImageName(ByteView uid, std::string*& name, std::string& path, const char* extension);
  /// Writes beside the picture what browsers read of it, if that is wanted, and gives its name to the pages.
  void WriteForWeb(const StoredImage& image, std::string& name, const std::string& path);

  KHtmlEnv& env_;
};

/// Result of asking for the name of a picture that is written already.
constexpr Status kKnownImage = Status{0x50};

}  // namespace ObjectWriter
