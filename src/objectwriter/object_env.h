#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "objectwriter/shape_script.h"
#include "story/conversion_env.h"
#include "story/story_writer_interface.h"

namespace ObjectWriter {

/// What an object writer works in.
class IEnv {
 public:
  virtual ~IEnv() = default;
};

/// What an object writer of any document has beside the conversion. Owns none of what it refers to.
class KHtmlEnv : public IEnv {
 public:
  KHtmlEnv(pagerex::KConversionEnv& shared, ShapeScripts& written) : conversion(shared), scripts(written) {}

  pagerex::KConversionEnv& conversion;
  ShapeScripts& scripts;
  /// Pictures written so far: 32 hexadecimal digits of the picture's identity to its file name. Its size
  /// gives the next picture's number.
  std::map<std::string, std::string> images;
};

/// The same for a Word document.
class KDocHtmlEnv : public KHtmlEnv {
 public:
  KDocHtmlEnv(pagerex::KConversionEnv& shared, ShapeScripts& written, const uint8_t& mainTextInTable,
              pagerex::IStoryWriter& storyWriter)
      : KHtmlEnv(shared, written), inTable(mainTextInTable), stories(storyWriter) {}

  const uint8_t& inTable;  ///< of the main text, also for a shape of another story
  pagerex::IStoryWriter& stories;
};

}  // namespace ObjectWriter
