// The exported calls on pictures.

#include <algorithm>
#include <memory>
#include <string>

#include "convert/file_kind.h"
#include "convert/host_call.h"
#include "convert/inputs.h"
#include "convert/output_target.h"
#include "convert/result_builder.h"
#include "convert/result_sink.h"
#include "convert/structures.h"
#include "pictures/web_picture.h"

namespace pagerex {
namespace {

// What the first version of the structure held.
constexpr size_t kPictureOptionsSize = sizeof(pagerex_picture_options);

constexpr int kFirst = PAGEREX_KIND_EMF;
static_assert(kFirst - 1 + static_cast<int>(PictureKind::kEmf) == PAGEREX_KIND_EMF &&
              kFirst - 1 + static_cast<int>(PictureKind::kPict) == PAGEREX_KIND_PICT &&
              kFirst - 1 + static_cast<int>(PictureKind::kBmp) == PAGEREX_KIND_BMP &&
              kFirst - 1 + static_cast<int>(PictureKind::kGif) == PAGEREX_KIND_GIF);

constexpr pagerex_picture_format kSvg{".svg", "image/svg+xml"}, kPng{".png", "image/png"};
/// In the order of PAGEREX_KIND_....
constexpr pagerex_picture_format kFormats[] = {
    kSvg, kSvg, kSvg, kPng, kPng, kPng, kPng, {".jpg", "image/jpeg"}, {".gif", "image/gif"},
};

/// What is asked for, once a host's structures have been read and found sound.
struct Request {
  pagerex_input input;
  pagerex_limits limits;
  pagerex_picture_options options;
  pagerex_output output;

  bool Take(const pagerex_input* inputGiven, const pagerex_limits* limitsGiven,
            const pagerex_picture_options* optionsGiven, const pagerex_output* outputGiven) {
    return inputGiven && takeInput(*inputGiven, input) && takeOptional(limitsGiven, kLimitsSize, limits) &&
           takeOptional(optionsGiven, kPictureOptionsSize, options) && options.width >= 0 &&
           options.height >= 0 && outputGiven && takeOutput(*outputGiven, output);
  }
};

/// Into a file of the result.
class FileSink final : public PictureSink {
 public:
  FileSink(std::unique_ptr<SinkFile> file, RunControl& control) : file_(std::move(file)), control_(control) {}

  bool Put(ByteView bytes) override {
    if (file_) file_->Put(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    control_.LookAtClock();
    return file_ && !control_.MustStop();
  }

 private:
  const std::unique_ptr<SinkFile> file_;
  RunControl& control_;
};

/// Takes a picture from the input to the output.
class PictureCall {
 public:
  PictureCall(const Request& request, ResultBuilder& result) : request_(request), result_(result) {
    arm(control_, request.limits);
  }

  int Run();

 private:
  int Read();
  int Write();
  int WriteTo(OutputTarget& target, const std::string& name);
  int CodeOf(PictureResult result) const {
    if (result == PictureResult::kNothing) return PAGEREX_RESULT_DAMAGED;
    return result == PictureResult::kRefused ? PAGEREX_RESULT_CANNOT_WRITE : PAGEREX_RESULT_OK;
  }
  /// The same once the flag and the clock have been looked at.
  int MustEnd(int code) {
    control_.LookAtClock();
    control_.MustStop();
    return control_.cause() == StopCause::kNone ? code : codeOf(control_.cause());
  }

  const Request& request_;
  ResultBuilder& result_;
  RunControl control_;
  Warnings warnings_;
  std::unique_ptr<InputSource> source_;
  std::unique_ptr<uint8_t[]> room_;  ///< of an input that is not in memory
  ByteView bytes_;
  int kind_ = PAGEREX_KIND_UNKNOWN;
  int error_ = 0;  ///< a value of errno
};

int PictureCall::Run() {
  control_.LookAtClock();
  int code = MustEnd(Read());
  result_.SetKind(kind_);
  if (code == PAGEREX_RESULT_OK) code = Write();
  result_.Add(warnings_);
  const bool tellsError = code == PAGEREX_RESULT_UNREADABLE || code == PAGEREX_RESULT_CANNOT_WRITE ||
                          code == PAGEREX_RESULT_REFUSED;
  return result_.End(code, tellsError ? error_ : 0);
}

int PictureCall::Read() {
  constexpr uint64_t kMost = uint64_t{1} << 30;  // no picture comes near
  source_ = openInput(request_.input, control_, error_);
  if (!source_) return PAGEREX_RESULT_UNREADABLE;
  source_->SetControl(&control_);
  const uint64_t size = source_->Size();
  if (size > std::min(orNoLimit(request_.limits.input_bytes), kMost)) return PAGEREX_RESULT_TOO_LARGE;
  const uint8_t* start = source_->Bytes();
  size_t count = static_cast<size_t>(size);
  if (!start) {
    if (size > orNoLimit(request_.limits.memory)) return PAGEREX_RESULT_MEMORY_LIMIT;
    room_ = std::make_unique_for_overwrite<uint8_t[]>(count);
    count = source_->ReadAt(0, room_.get(), count);
    start = room_.get();
  }
  error_ = source_->error();
  if (error_ != 0) return PAGEREX_RESULT_UNREADABLE;
  bytes_ = ByteView(start, count);
  kind_ = pictureKind(bytes_);
  if (kind_ != PAGEREX_KIND_UNKNOWN) return PAGEREX_RESULT_OK;
  kind_ = pagerex_detect(bytes_.data(), bytes_.size());
  return PAGEREX_RESULT_NOT_PICTURE;
}

int PictureCall::Write() {
  TargetPath path;
  if (request_.output.path) path = splitTargetPath(request_.output.path);
  path.isPicture = true;
  const std::string name = request_.output.path ? path.name
                           : request_.output.main_name
                               ? request_.output.main_name
                               : std::string("picture") + kFormats[kind_ - kFirst].extension;
  error_ = errorOfName(name);
  if (error_ != 0)
    return request_.output.path ? PAGEREX_RESULT_CANNOT_WRITE : PAGEREX_RESULT_INVALID_ARGUMENT;
  TargetRefusal refusal;
  const std::unique_ptr<OutputTarget> target = request_.output.path
                                                   ? makePathTarget(path, "", *source_, refusal)
                                                   : makeHostTarget(request_.output, control_);
  error_ = refusal.error;
  if (!target) return refusal.code;
  const int code = WriteTo(*target, name);
  error_ = target->error();
  return code;
}

int PictureCall::WriteTo(OutputTarget& target, const std::string& name) {
  ResultSink sink(target, control_, orNoLimit(request_.limits.output_bytes), name,
                  kFormats[kind_ - kFirst].media_type);
  int code = PAGEREX_RESULT_OK;
  try {
    FileSink file(sink.Open(name.c_str()), control_);
    const PictureFrame frame{request_.options.width, request_.options.height};
    const PictureResult result = writeWebPicture(bytes_, frame, file);
    if (result == PictureResult::kInPart) warn(&warnings_, WarningCode::kPicture);
    code = MustEnd(CodeOf(result));
    if (code != PAGEREX_RESULT_OK) control_.Stop(StopCause::kDamaged);  // what was begun is no whole file
  } catch (const std::bad_alloc&) {
    control_.Stop(StopCause::kOutOfMemory);
    code = PAGEREX_RESULT_OUT_OF_MEMORY;
  }
  if (code == PAGEREX_RESULT_OK) code = MustEnd(code);
  result_.SetWritten({.pictures = code == PAGEREX_RESULT_OK}, sink.bytes(), sink.files());
  if (code != PAGEREX_RESULT_OK) return code;
  return target.Commit() ? code : PAGEREX_RESULT_CANNOT_WRITE;
}

}  // namespace

int pictureKind(ByteView file) noexcept {
  const int kind = static_cast<int>(kindOfPicture(file));
  return kind == 0 ? PAGEREX_KIND_UNKNOWN : kFirst - 1 + kind;
}

}  // namespace pagerex

const pagerex_picture_format* pagerex_picture_format_of(int kind) {
  const bool isPicture = kind >= PAGEREX_KIND_EMF && kind <= PAGEREX_KIND_GIF;
  return isPicture ? &pagerex::kFormats[kind - pagerex::kFirst] : nullptr;
}

int pagerex_convert_picture(const pagerex_input* input, const pagerex_limits* limits,
                            const pagerex_picture_options* options, const pagerex_output* output,
                            pagerex_result* result) {
  return pagerex::answer(result, [&](pagerex::ResultBuilder& builder) {
    pagerex::Request request;
    if (!request.Take(input, limits, options, output)) return builder.End(PAGEREX_RESULT_INVALID_ARGUMENT);
    return pagerex::PictureCall(request, builder).Run();
  });
}
