#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "flow/handler.h"
#include "pictures/web_picture.h"

namespace pagerex {

/// Inflates to `take`, part by part and in groups of three bytes but for the last; it returns false to end
/// it. False when it ended so, and for data that are damaged.
bool inflatePicture(ByteView deflated, const std::function<bool(ByteView)>& take);

void appendTo(std::vector<uint8_t>& all, ByteView part);

/// The bytes of a picture's file, which `room` has where they were deflated. With `isWhole` false it is as
/// much as could be read.
ByteView bytesOf(const PictureData& picture, std::vector<uint8_t>& room, bool& isWhole);

/// The size at which the whole picture would be shown, were it not cropped.
PictureFrame frameOf(const PictureFacts& picture);

}  // namespace pagerex
