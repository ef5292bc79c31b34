#pragma once

#include <string>
#include <string_view>

#include "base/byte_view.h"
#include "pictures/picture_sink.h"
#include "pictures/web_picture.h"

/// What the fuzzers of pictures ask of all that comes out.
namespace fuzz {

/// Keeps everything.
class PictureText final : public pagerex::PictureSink {
 public:
  bool Put(ByteView bytes) override {
    text_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return true;
  }
  std::string_view view() const { return text_; }

 private:
  std::string text_;
};

/// Why this is not an SVG that may be shown anywhere: markup that is not well-formed, characters that XML
/// does not have, elements or attributes that no picture needs, what runs, and what lies outside. Empty when
/// it is one.
std::string whatIsWrongWithSvg(std::string_view svg);

/// Why this is not a PNG: chunks, sums, and rows of the size that the header tells.
std::string whatIsWrongWithPng(std::string_view png);

/// Ends the program, telling why, when what came of a picture is not what the result says.
void checkPicture(pagerex::PictureResult result, pagerex::PictureKind kind, std::string_view made);

}  // namespace fuzz
