#include "pictures/metafile_canvas.h"

#include <algorithm>

namespace pagerex {

Matrix beginCanvas(SvgCanvas& canvas, const Box& device, double widthPoints, double heightPoints) {
  constexpr double kFine = 8000;  // units along the longer side: a tenth of what a screen has pixels
  const double longer = std::max(device.width(), device.height());
  double unit = 1;
  while (longer * unit < kFine) unit *= 10;
  while (longer * unit > kFine * 20) unit /= 10;
  canvas.Begin(device.width() * unit, device.height() * unit, widthPoints, heightPoints);
  return {unit, 0, 0, unit, -device.left * unit, -device.top * unit};
}

}  // namespace pagerex
