#include "convert/web_picture_files.h"

#include "base/stdio_archive.h"
#include "formats/picture_bytes.h"

namespace pagerex {
namespace {

/// Makes the file when there is something to be written.
class LateFile final : public PictureSink {
 public:
  LateFile(OutputFiles& files, const std::string& path) : file_(files), path_(path) {}

  bool Put(ByteView bytes) override {
    if (!isOpen_) isOpen_ = file_.open(path_.c_str());
    return isOpen_ && file_.put(bytes.data(), static_cast<unsigned>(bytes.size())) == bytes.size();
  }

 private:
  DsWriteArchive file_;
  const std::string& path_;
  bool isOpen_ = false;
};

}  // namespace

bool WebPictureFiles::Write(const DocumentPicture& picture, OutputFiles& files, std::string& path) {
  const PictureData data{PictureType::kNone, picture.bytes, picture.isDeflated, picture.rawSize};
  std::vector<uint8_t> room;
  bool isWhole = true;
  const ByteView bytes = bytesOf(data, room, isWhole);
  const PictureKind kind = kindOfPicture(bytes);
  const WebKind web = webKindOf(kind);
  if (web.kind == kind && kind != PictureKind::kUnknown) return false;
  path += web.extension;
  LateFile file(files, path);
  const PictureResult result = writeWebPicture(bytes, {picture.widthPoints, picture.heightPoints}, file);
  if (result != PictureResult::kWhole || !isWhole) warnings_.Add(WarningCode::kPicture);
  return result == PictureResult::kWhole || result == PictureResult::kInPart;
}

}  // namespace pagerex
