#pragma once

#include <memory>
#include <optional>

#include "objectwriter/object_writer.h"
#include "objectwriter/picture_files.h"
#include "objectwriter/repeat_limit.h"
#include "objectwriter/shape_lookup.h"

namespace ObjectWriter {

/// Writes the shapes and pictures of a Word document into its pages, each as VML in a conditional comment and
/// as plain HTML for browsers without VML. Serves all stories of a conversion, so that a picture is written
/// to one file however often it is used.
class KDocHtmlObjectWriter : public KHtmlObjectWriter {
 public:
  /// `env` must be a KDocHtmlEnv; it is not owned and outlives the writer. kInvalidArgument for null.
  Status Init(IEnv* env) override;

  using KHtmlObjectWriter::WriteShape;
  using KObjectWriter::WriteObject;
  Status WriteObject(unsigned int cp, bool pageBreakFollows) override;
  Status WriteEmbedShape(unsigned int cp) override;

  Status GetShapePos(const MsoROShape& shape, std::string& style) override;
  Status WriteShapePos_NV(const MsoROShape& shape) override;
  bool MayWrite(const MsoROShape& shape) override;
  bool HasTextBox(const MsoROShape& shape) override;
  Status WriteDiv(const MsoROShape& shape) override;
  Status WriteImage(PID property, int index, std::string& name) override;
  float GetOBJWidth(const MsoROShape& shape) override;
  float GetOBJHeight(const MsoROShape& shape) override;
  float GetOBJLeft(const MsoROShape& shape) override;
  float GetOBJTop(const MsoROShape& shape) override;

 private:
  Status WriteObject(const MsoROShape& shape, bool wrapInside);
  Status WriteShape(const MsoROShape& shape, bool wrapInside);
  void WriteWrap();
  KDocHtmlEnv* docEnv() const { return static_cast<KDocHtmlEnv*>(env_); }
  pagerex::KWorkLimits& limits() const;
  const ShapeLookup& lookup();
  int ZIndexOf(const MsoROShape& shape) const;

  tagRECT anchor_{};                           ///< of the current top-level object, twips
  unsigned int wrap_ = 0;                      ///< wrapping mode of the current floating shape
  const KDREmbedShape* embedShape_ = nullptr;  ///< the current inline picture; null for a floating shape
  std::unique_ptr<ShapeLookup> lookup_;        ///< made at the first object
  std::optional<PictureFiles> pictures_;
  RepeatLimit objects_;
  /// Inline pictures that may still be written. A bullet's picture may be repeated for each item of a list,
  /// so there is no limit for a single one.
  uint32_t picturesLeft_ = 1u << 20;
  OpenTextBoxes textBoxes_;
};

/// The only object writer there is.
std::unique_ptr<IObjectWriter> CreateDocHtmlObjectWriter();

}  // namespace ObjectWriter
