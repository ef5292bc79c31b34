#pragma once

/// Lengths from one unit to another.
struct UnitSwitch {
  static constexpr double Twip2Pt(double twips) { return twips / 20; }
  static constexpr double EMU2Pt(double emu) { return emu / 12700; }
  static constexpr double Pt2Pixel(double points) { return points / 72 * 96; }
};
