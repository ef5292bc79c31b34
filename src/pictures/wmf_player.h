#pragma once

#include <deque>
#include <vector>

#include "pictures/gdi.h"
#include "pictures/metafile_text.h"

namespace pagerex {

/// Plays the records of a Windows metafile: size in words, function, parameters, which stand in reverse
/// order.
class WmfPlayer {
 public:
  /// `records` begins behind all headers; `device` takes units of the device to the canvas.
  WmfPlayer(ByteView records, SvgCanvas& canvas, const Matrix& device, double unitsPerInch);
  WmfPlayer(const WmfPlayer&) = delete;
  WmfPlayer& operator=(const WmfPlayer&) = delete;

  Gdi& gdi() { return gdi_; }
  /// False when the records break off.
  bool Play();

 private:
  friend struct WmfRecords;

  void Value(ByteView record, int form);
  void Map(ByteView record, int form);
  void Clip(ByteView record, int form);
  void SaveOrRestore(ByteView record, int form);
  void Object(ByteView record, int form);
  void CreatePen(ByteView record, int form);
  void CreateBrush(ByteView record, int form);
  void CreatePattern(ByteView record, int form);
  void CreateFont(ByteView record, int form);
  void CreatePalette(ByteView record, int form);
  void PaletteEntries(ByteView record, int form);
  void CreateRegion(ByteView record, int form);
  void CreateOther(ByteView record, int form);
  void Line(ByteView record, int form);
  void Points(ByteView record, int form);
  void Shape(ByteView record, int form);
  void DrawRegion(ByteView record, int form);
  void Text(ByteView record, int form);
  void ExtendedText(ByteView record, int form);
  void PatternBlt(ByteView record, int form);
  void Blt(ByteView record, int form);
  void DibToDevice(ByteView record, int form);

  void Create(GdiObject object);
  void PutText(ByteView bytes, std::vector<double>& advances, struct TextRecord& told);
  Dib DibOf(ByteView bytes, uint32_t usage) const;
  Dib DeviceBitmap(ByteView bytes, size_t bits);
  const Region* RegionAt(uint32_t handle) const;

  const ByteView records_;
  Gdi gdi_;
  MetafileText texts_;
  std::deque<std::vector<uint8_t>> made_;  ///< bitmaps of devices, as independent ones
};

}  // namespace pagerex
