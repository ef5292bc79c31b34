#pragma once

#include <memory>

#include "base/byte_view.h"
#include "pictures/svg_canvas.h"

namespace pagerex {

/// Draws the EMF+ records that stand in the comments of an enhanced metafile.
class EmfPlusPlayer {
 public:
  /// `device` takes pixels of the reference device, of which there are so many to the inch, to the canvas.
  /// The canvas is not owned. A metafile that is part of a picture, `isNested`, shows none in itself.
  EmfPlusPlayer(SvgCanvas& canvas, const Matrix& device, double pixelsPerInch, bool isNested = false);
  EmfPlusPlayer(const EmfPlusPlayer&) = delete;
  EmfPlusPlayer& operator=(const EmfPlusPlayer&) = delete;
  ~EmfPlusPlayer();

  /// The records of one comment, behind its "EMF+". A record may go on in the next comment. False when
  /// something of it could not be drawn.
  bool Play(ByteView records);

  /// The last record gave the device to the records of the enhanced metafile, which are drawn until the next
  /// one of these comments.
  bool isDeviceLent() const;

  /// Whether a comment's records begin with a header that says that the enhanced metafile's own records draw
  /// the same.
  static bool isDual(ByteView records);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace pagerex
