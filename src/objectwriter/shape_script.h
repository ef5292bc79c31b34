#pragma once

#include <atomic>

namespace ObjectWriter {

/// Functions of "shapejs.js", by which a browser without VML draws ellipses and lines. Both write into the
/// document at the place of the call, so that their coordinates are relative to the shape's own "div".

/// drawEllipse(left, top, width, height, border width, border colour, fill colour, opacity), in points.
extern const char kDrawEllipseScript[];
/// drawLine(X0, X1, Y0, Y1, colour, size), in pixels.
extern const char kDrawLineScript[];

/// Which of them have been written. Hosts of these pages expect that a process writes each once, however
/// often it converts: what is shared between conversions may be so between threads.
struct ShapeScripts {
  std::atomic<bool> drawEllipse{false};
  std::atomic<bool> drawLine{false};
};

}  // namespace ObjectWriter
