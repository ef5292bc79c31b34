#pragma once

#include <cstdint>
#include <map>
#include <string>

class IWriteArchive;
class KDRDocument;

namespace pagerex {
struct KEnv;
}

namespace ObjectWriter {

/// What an object writer works in.
class IEnv {
 public:
  virtual ~IEnv() = default;
};

/// The output of an object writer. Owns none of what it points at.
class KHtmlEnv : public IEnv {
 public:
  IWriteArchive* archive = nullptr;
  /// Pictures written so far: 32 hexadecimal digits of the picture's identity to its file name. Its size
  /// gives the next picture's number.
  std::map<std::string, std::string> images;
  std::string htmlPath;
  std::string filesDir;  ///< without a closing slash
  std::string name;      ///< of the main HTML file, without folder and extension
};

/// The same for a Word document.
class KDocHtmlEnv : public KHtmlEnv {
 public:
  const uint8_t* inTable = nullptr;  ///< that of `env`
  const KDRDocument* document = nullptr;
  const pagerex::KEnv* env = nullptr;  ///< of the main text
};

}  // namespace ObjectWriter
