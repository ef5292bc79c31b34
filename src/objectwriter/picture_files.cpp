#include "objectwriter/picture_files.h"

#include "base/number_text.h"
#include "base/output_path.h"
#include "drawing/drawing.h"
#include "objectwriter/object_attr.h"
#include "story/web_pictures.h"
#include "wordreader/document.h"

namespace ObjectWriter {
namespace {

using mso_escher::_FBSE;
using mso_escher::MsoROBlip;
using mso_escher::MsoROBlipStore;

// Places in the header of a metafile.
constexpr size_t kRawSize = 0;
constexpr size_t kCompression = 32;
constexpr uint8_t kDeflate = 0;

bool isDeflated(ByteView metafileHeader) {
  return !metafileHeader.empty() && metafileHeader.u8(kCompression) == kDeflate;
}

/// "image%03d.%s"; the extension may be null.
FixedText<32> imageName(size_t number, const char* extension) {
  FixedText<32> name;
  name.append("image");
  for (size_t limit = 100; limit > number && limit > 1; limit /= 10) name.append('0');
  name.append(NumberText().appendUnsigned(number)).append('.');
  return extension ? name.append(extension) : name;
}

}  // namespace

Status PictureFiles::WriteStored(int index, std::string& name) {
  if (!Wants()) return Status::kNothing;
  const KDRDocument& document = *env_.conversion.document;
  const MsoROBlipStore& store = document.GetDrawingGroup().GetBlipStore();
  if (index < 1) return Status::kNothing;
  if (static_cast<unsigned int>(index) > store.GetCount()) return Lacks();
  const auto entry = static_cast<unsigned int>(index - 1);
  const ByteView fbse = store.GetFBSE(entry);
  const MsoROBlip* const blip =
      fbse.u32(_FBSE::kDelayOffset) == 0
          ? store.GetBlipNoDelayStrm(entry)
          : store.GetBlipWithDelayStrm(entry, &document.GetDocFile().getWordDocumentStrm());
  if (!blip || blip->type > mso_escher::kBlipDib) return Lacks();
  StoredImage image;
  image.data = blip->data;
  image.type = static_cast<unsigned char>(blip->type);
  image.compressed = isDeflated(blip->metafileHeader);
  image.rawSize = blip->metafileHeader.u32(kRawSize);
  image.metafileHeader = blip->metafileHeader;
  return Write(fbse.part(_FBSE::kUid, _FBSE::kUidSize), image, name);
}

Status PictureFiles::WriteListed(const KDRBseTable* pictures, int place, std::string& name) {
  constexpr size_t kType = 8;  // of an entry with its header: the first byte of its body
  if (place < 0 || !Wants()) return Status::kNothing;
  if (!pictures) return Lacks();
  const ByteView entry = pictures->Item(static_cast<unsigned int>(place));
  const KDRBseImage* const picture = pictures->ImageItem(static_cast<unsigned int>(place));
  if (!picture || entry.u8(kType) == 0) return Lacks();
  StoredImage image;
  image.data = picture->data;
  image.type = entry.u8(kType);
  image.compressed = isDeflated(picture->metafileHeader);
  image.rawSize = image.compressed ? picture->metafileHeader.u32(kRawSize) : 0;
  image.metafileHeader = picture->metafileHeader;
  return Write(picture->uid, image, name);
}

bool PictureFiles::Wants() const {
  const pagerex::KConversionEnv& conversion = env_.conversion;
  if (!conversion.hasPictures) warn(conversion.warnings, pagerex::WarningCode::kPicturesOff);
  return conversion.hasPictures;
}

Status PictureFiles::Lacks() const {
  warn(env_.conversion.warnings, pagerex::WarningCode::kPicture);
  return Status::kNothing;
}

/// A picture that cannot be written counts as written all the same: its name stays. What has no extension a
/// browser may take for a page, by its bytes.
Status PictureFiles::Write(ByteView uid, const StoredImage& image, std::string& name) {
  const char* extension = objectAttr::GetImageExt(image.type);
  if (!extension && env_.conversion.safety.on) extension = "bin";
  std::string path;
  std::string* known = nullptr;
  const Status status = GetImageName(uid, known, path, extension);
  if (status != Status::kOk && status != kKnownImage) return status;
  pagerex::KConversionEnv& conversion = env_.conversion;
  if (status == Status::kOk && conversion.Limits().WritePicture(MostImageBytes(image))) {
    if (WriteImageFile(image, conversion.files, path.c_str()) == Status::kOk) ++conversion.written.pictures;
    WriteForWeb(image, *known, path);
  }
  name = *known;
  return Status::kOk;
}

void PictureFiles::WriteForWeb(const StoredImage& image, std::string& name, const std::string& path) {
  pagerex::KConversionEnv& conversion = env_.conversion;
  if (!conversion.webPictures || !conversion.Limits().WritePicture(MostImageBytes(image))) return;
  constexpr double kEmuOfPoint = 12700;
  constexpr size_t kWidth = 20, kHeight = 24;  // in the header of a metafile, in EMU
  const pagerex::DocumentPicture picture{image.data, image.compressed, image.rawSize,
                                         image.metafileHeader.u32(kWidth) / kEmuOfPoint,
                                         image.metafileHeader.u32(kHeight) / kEmuOfPoint};
  const size_t folder = path.size() - name.size();
  std::string webPath = path.substr(0, path.rfind('.') + 1);
  if (!conversion.webPictures->Write(picture, conversion.files, webPath)) return;
  ++conversion.written.pictures;
  name = webPath.substr(folder);
}

Status PictureFiles::GetImageName(ByteView uid, std::string*& name, std::string& path,
                                  const char* extension) {
  if (uid.empty()) return Status::kNothing;
  FixedText<64> key;
  for (size_t i = 0; i < _FBSE::kUidSize; ++i) key.appendHexByte(uid.u8(i));
  auto& images = env_.images;
  const auto [image, isNew] = images.try_emplace(key.c_str());
  if (isNew) {
    image->second = std::string_view(imageName(images.size(), extension));
    path = std::string_view(pagerex::outputPath(env_.conversion.filesDir, image->second));
  }
  name = &image->second;
  return isNew ? Status::kOk : kKnownImage;
}

}  // namespace ObjectWriter
