#pragma once

namespace ObjectWriter {

/// Functions of "shapejs.js", by which a browser without VML draws ellipses and lines. Both write into the
/// document at the place of the call, so that their coordinates are relative to the shape's own "div".

/// drawEllipse(left, top, width, height, border width, border colour, fill colour, opacity), in points.
extern const char kDrawEllipseScript[];
/// drawLine(X0, X1, Y0, Y1, colour, size), in pixels.
extern const char kDrawLineScript[];

}  // namespace ObjectWriter
