#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/stdio_archive.h"
#include "base/write_archive.h"
#include "drawing/shape.h"
#include "drawing/shape_geometry.h"
#include "objectwriter/object_env.h"
#include "objectwriter/object_writer_interface.h"

namespace ObjectWriter {

using mso_escher::MsoROShape;

/// One level of groups for as long as it lives. Deeper ones than files have are not written.
class GroupLevel {
 public:
  explicit GroupLevel(int& depth) : depth_(depth) { ++depth_; }
  GroupLevel(const GroupLevel&) = delete;
  GroupLevel& operator=(const GroupLevel&) = delete;
  ~GroupLevel() { --depth_; }
  bool allowed() const { return depth_ <= kDeepest; }

 private:
  static constexpr int kDeepest = 64;
  int& depth_;
};

/// Base of all object writers: writes nothing.
class KObjectWriter : public IObjectWriter {
 public:
  Status WriteObject(const std::vector<MsoROShape>&) override { return Status::kOk; }
  Status WriteObject(unsigned int, bool) override { return Status::kOk; }
  Status WriteEmbedShape(unsigned int) override { return Status::kOk; }
  Status WriteOle(unsigned int) override { return Status::kOk; }

 protected:
  IEnv* env_ = nullptr;  ///< not owned
};

/// Writes a shape as VML, and, by the operations named "..._NV", as plain HTML with script for browsers
/// without VML. Works on one shape at a time, whatever document it comes from: derived classes say where it
/// stands, what its text is and where its pictures are.
/// Each operation gives kOk when it has written its part, and as a rule kNothing when it has written nothing.
class KHtmlObjectWriter : public KObjectWriter {
 public:
  virtual Status WriteShape(const MsoROShape&) { return Status::kOk; }

  // --- The start tag of a VML element ---
  /// Fills the position of the current shape and appends its CSS to `style`.
  virtual Status GetShapePos(const MsoROShape& shape, std::string& style);
  virtual Status WriteShapeFlag(const MsoROShape& shape, bool isGroup);
  virtual Status WriteGeometry(const MsoROShape& shape);
  virtual Status WriteCordSize(const MsoROShape& shape);
  virtual Status WriteAdjustValue(const MsoROShape& shape);
  virtual Status WritePath(const MsoROShape& shape);
  virtual Status WriteHyperlink(const MsoROShape& shape);
  virtual void CheckBookName(std::string& name) { name.insert(0, "#"); }
  virtual Status WriteGuoup(const MsoROShape& shape);

  // --- Child elements of a VML element ---
  virtual Status WriteShapeStyle(const MsoROShape& shape);
  virtual Status WriteFillProp(const MsoROShape& shape);
  virtual Status WriteAngleFocus(const MsoROShape& shape, int fillType);
  virtual Status WriteShadeColor(const MsoROShape& shape, int fillType);
  virtual Status WriteLineProp(const MsoROShape& shape, int unused);
  virtual Status WriteShadowProp(const MsoROShape& shape);
  virtual Status Write3DProp(const MsoROShape& shape);
  virtual Status WriteGeoTextProp(const MsoROShape& shape);
  virtual Status WriteCalloutProp(const MsoROShape&) { return Status::kOk; }
  virtual Status WriteTextBoxProp(const MsoROShape& shape);
  virtual Status WriteInkData(const MsoROShape&) { return Status::kOk; }
  virtual Status WriteClientData(const MsoROShape&) { return Status::kOk; }
  virtual Status WriteShapeImage(const MsoROShape& shape);

  // --- Pictures ---
  /// Writes the picture to a file of its own, unless that is done already, and sets `name` to the file's
  /// name. `property` names its role, `index` counts in the blip store from 1.
  virtual Status WriteImage(PID property, int index, std::string& name) = 0;
  /// The attributes that name a picture on the open element.
  virtual Status WriteImageProp(const MsoROShape& shape, PID blip, PID name, PID flags);

  // --- What the kind of document decides ---
  /// Asked before each shape and group: false when no more are to be written.
  virtual bool MayWrite(const MsoROShape&) { return true; }
  virtual bool HasTextBox(const MsoROShape&) { return false; }
  /// The text of a text box.
  virtual Status WriteDiv(const MsoROShape&) { return Status::kOk; }
  /// Place and size: points for a top-level shape, units of the group's coordinates for a child.
  virtual float GetOBJWidth(const MsoROShape&) { return 0; }
  virtual float GetOBJHeight(const MsoROShape&) { return 0; }
  virtual float GetOBJLeft(const MsoROShape&) { return 0; }
  virtual float GetOBJTop(const MsoROShape&) { return 0; }

  // --- Without VML ---
  virtual Status WriteObject_NV(const MsoROShape& shape);
  /// `rect` is the coordinate space around the shape; a group that is no child puts its own there.
  virtual Status WriteObject_NV(tagRECT& rect, const MsoROShape& shape);
  virtual Status WriteShape_NV(const MsoROShape& shape);
  /// Fills the position of the current shape, in points, and adds its CSS.
  virtual Status WriteShapePos_NV(const MsoROShape&) { return Status::kOk; }
  virtual Status GetShapeFrect(const MsoROShape& shape, FRECT& rect);
  virtual Status WriteFillProp_NV(const MsoROShape& shape, bool force);
  /// kOk when there is a fill; with `force`, when it is not switched off.
  virtual Status GetFillProp_NV(const MsoROShape& shape, std::string& color, double& opacity, bool force);
  virtual Status WriteLineProp_NV(const MsoROShape& shape, bool force);
  /// kOk when there is a line. `weight` is in points.
  virtual Status GetLineProp_NV(const MsoROShape& shape, std::string& color, std::string& style,
                                double& weight, bool force);
  virtual Status WriteTextBoxProp_NV(const MsoROShape& shape, std::string& style);
  virtual Status WriteTextBoxTxt_NV(const MsoROShape& shape);
  virtual Status WriteImage_NV(const MsoROShape& shape, PID blip, PID name);
  virtual Status WriteEllipse_NV(const MsoROShape& shape);
  virtual Status WriteLine_NV(const MsoROShape& shape);
  virtual Status WriteJSEllipse(float width, float height, double weight, const std::string& lineColor,
                                const std::string& fillColor, double opacity);
  virtual Status WriteJSLine(float x0, float x1, float y0, float y1, const std::string& color, double weight);
  virtual Status WriteChart(const MsoROShape&) { return Status::kOk; }
  virtual Status GetTextAlign(const MsoROShape&, std::string&) { return Status::kOk; }

 protected:
  KHtmlEnv* htmlEnv() const { return static_cast<KHtmlEnv*>(env_); }
  IWriteArchive* archive() const { return htmlEnv()->conversion.archive; }
  const pagerex::KPageSafety& safety() const { return htmlEnv()->conversion.safety; }
  /// Ends a child element of a shape.
  void EndVml(const char* name);
  /// Parts of the position style.
  void AppendBox(const MsoROShape& shape, bool withMargins, std::string& style) const;
  static void AppendRotation(const MsoROShape& shape, std::string& style);
  static void AppendZIndex(int order, std::string& style);

  FRECT shapeRect_{};        ///< of the current shape
  FRECT groupRect_{};        ///< of the outermost group, points
  tagRECT groupBounds_{};    ///< coordinate space of the outermost group
  tagRECT parentBounds_{};   ///< coordinate space of the enclosing group
  bool chartMode_ = false;   ///< only charts are written; nothing in this library sets it
  bool hasTextBox_ = false;  ///< the current shape has text
  int groupDepth_ = 0;       ///< groups around the current shape

 private:
  /// Appends a function's text to the script file of the output, which is opened at the first call.
  void WriteShapeJSFile(const char* text);
  void WriteScript(const char* call);

  std::optional<DsWriteArchive> scriptFile_;  ///< "shapejs.js", made when first needed
};

}  // namespace ObjectWriter
