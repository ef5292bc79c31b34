#pragma once

#include <memory>
#include <vector>

#include "pictures/emf_plus.h"
#include "pictures/gdi.h"
#include "pictures/metafile_text.h"

namespace pagerex {

/// Plays the records of an enhanced metafile, whose type and size stand in front of each.
class EmfPlayer {
 public:
  /// `file` is the whole metafile; `device` takes pixels of its device to the canvas.
  EmfPlayer(ByteView file, SvgCanvas& canvas, const Matrix& device, double pixelsPerInchX,
            double pixelsPerInchY, bool isNested);
  EmfPlayer(const EmfPlayer&) = delete;
  EmfPlayer& operator=(const EmfPlayer&) = delete;

  /// False when the records break off, or something could not be drawn.
  bool Play();

 private:
  friend struct EmfRecords;

  // What a record does. `form` is what tells it from others of its kind; offsets count from the record's
  // begin.
  void Points(ByteView record, int form);
  void Polys(ByteView record, int form);
  void PolyDraw(ByteView record, int form);
  void Map(ByteView record, int form);
  void Scale(ByteView record, int form);
  void Value(ByteView record, int form);
  void World(ByteView record, int form);
  void Clip(ByteView record, int form);
  void SelectRegion(ByteView record, int form);
  void SaveOrRestore(ByteView record, int form);
  void Object(ByteView record, int form);
  void CreatePen(ByteView record, int form);
  void CreateExtendedPen(ByteView record, int form);
  void CreateBrush(ByteView record, int form);
  void CreatePattern(ByteView record, int form);
  void CreateFont(ByteView record, int form);
  void CreatePalette(ByteView record, int form);
  void PaletteEntries(ByteView record, int form);
  void Shape(ByteView record, int form);
  void Line(ByteView record, int form);
  void AngleArc(ByteView record, int form);
  void Path(ByteView record, int form);
  void DrawRegion(ByteView record, int form);
  void Text(ByteView record, int form);
  void SmallText(ByteView record, int form);
  void Blt(ByteView record, int form);
  void MaskedBlt(ByteView record, int form);
  void SlantedBlt(ByteView record, int form);
  void DibBlt(ByteView record, int form);
  void Gradient(ByteView record, int form);
  void Comment(ByteView record, int form);

  void PlayOne(uint32_t type, ByteView record);
  void PlayClimbingText(TextRecord told, ByteView ways);
  size_t PlayText(ByteView record, size_t at, bool isWide, size_t most);
  Dib DibOf(ByteView record, size_t at, uint32_t usage) const;
  Region RegionData(ByteView data);

  const ByteView file_;
  Gdi gdi_;
  MetafileText texts_;
  const Matrix device_;
  const double pixelsPerInch_;
  const bool isNested_;                  ///< part of a metafile
  std::unique_ptr<EmfPlusPlayer> plus_;  ///< where its records alone draw
  bool isPlusKnown_ = false;
  bool isWhole_ = true;
};

}  // namespace pagerex
