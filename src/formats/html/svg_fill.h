#pragma once

#include <string>
#include <string_view>

#include "formats/html/shape_svg.h"

namespace pagerex {

/// What a shape is filled with, as the value of `fill`. Gradients, patterns and pictures stand in front of
/// what they fill.
class SvgFill {
 public:
  /// Appends the definition that the fill needs.
  SvgFill(std::string& out, const ShapeFill& fill, double width, double height, SvgIds& ids,
          std::string_view address);

  /// ` fill="..."`; of a part that is lighter (1) or darker (-1) a plain colour.
  void Append(std::string& out, int shade) const;

 private:
  void DefineLinear();
  void DefineRadial();
  void AddStops();
  void AddStop(const ShapeFill::Stop& stop, double place);
  void DefinePattern();
  void DefinePicture(std::string_view address);
  /// The beginning of the element that is referred to.
  void Begin(std::string_view element);

  std::string& out_;
  const ShapeFill& fill_;
  double width_, height_;
  SvgIds& ids_;
  uint32_t id_ = 0;  ///< 0 for a plain colour
};

}  // namespace pagerex
