#pragma once

#include "base/warnings.h"
#include "story/web_pictures.h"

namespace pagerex {

/// What the views write beside the pictures of a document.
class WebPictureFiles final : public WebPictures {
 public:
  /// Warns of those that browsers will not show. Not owned.
  explicit WebPictureFiles(Warnings& warnings) : warnings_(warnings) {}

  bool Write(const DocumentPicture& picture, OutputFiles& files, std::string& path) override;

 private:
  Warnings& warnings_;
};

}  // namespace pagerex
