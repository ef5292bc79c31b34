// Pictures from anywhere to anywhere, as browsers read them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "convert/host.h"
#include "convert/memory_faults.h"
#include "support/small_pictures.h"
#include "support/temp_folder.h"

using namespace convert_test;
using support::Bytes;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

Result convertPicture(const pagerex_input& input, const pagerex_output& output,
                      const pagerex_limits* limits = nullptr,
                      const pagerex_picture_options* options = nullptr) {
  Result result;
  EXPECT_EQ(pagerex_convert_picture(&input, limits, options, &output, &result), result.code);
  EXPECT_TRUE(result.isOne());
  return result;
}

std::string textOf(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

struct Sample {
  int kind;
  Bytes bytes;
  const char* name;
  const char* mediaType;
};
std::vector<Sample> samples() {
  return {
      {PAGEREX_KIND_EMF, support::smallEmf(), "picture.svg", "image/svg+xml"},
      {PAGEREX_KIND_WMF, support::placeableWmf(), "picture.svg", "image/svg+xml"},
      {PAGEREX_KIND_PICT, support::pict(), "picture.svg", "image/svg+xml"},
      {PAGEREX_KIND_DIB, support::dib(), "picture.png", "image/png"},
      {PAGEREX_KIND_BMP, support::bmp(), "picture.png", "image/png"},
      {PAGEREX_KIND_TIFF, support::tiff(), "picture.png", "image/png"},
      {PAGEREX_KIND_PNG, support::smallPng(), "picture.png", "image/png"},
      {PAGEREX_KIND_JPEG, support::smallJpeg(), "picture.jpg", "image/jpeg"},
      {PAGEREX_KIND_GIF, support::gif(), "picture.gif", "image/gif"},
  };
}

TEST(Pictures, AreConvertedByTheirKind) {
  for (const Sample& sample : samples()) {
    Host host(sample.bytes);
    const Result result = convertPicture(host.memory(), host.sink());
    EXPECT_EQ(result.code, PAGEREX_RESULT_OK) << sample.kind;
    EXPECT_EQ(result.kind, sample.kind);
    EXPECT_EQ(result.complete, 1);
    EXPECT_EQ(result.counts.pictures, 1u);
    EXPECT_EQ(result.output_files, 1u);
    EXPECT_EQ(result.output_bytes, host.bytes());
    EXPECT_THAT(host.names(), ElementsAre(sample.name));
    EXPECT_EQ(host.typeOf(sample.name), sample.mediaType);
    EXPECT_EQ(host.completeFiles().size(), 1u);
    EXPECT_EQ(host.complaints(), "");
    EXPECT_EQ(pagerex_detect(sample.bytes.data(), sample.bytes.size()), sample.kind);
    const pagerex_picture_format* const format = pagerex_picture_format_of(sample.kind);
    ASSERT_NE(format, nullptr);
    EXPECT_EQ(std::string("picture") + format->extension, sample.name);
    EXPECT_STREQ(format->media_type, sample.mediaType);
  }
}

TEST(Pictures, HaveNoFormatOfOtherKinds) {
  for (const int kind : {-1, 0, 10, 60, 70, 1000})
    EXPECT_EQ(pagerex_picture_format_of(kind), nullptr) << kind;
}

TEST(Pictures, TellWhatTheyAre) {
  Host host(support::smallEmf());
  EXPECT_STREQ(convertPicture(host.memory(), host.sink()).sentence,
               "This is an enhanced metafile (.emf). It was converted.");
  EXPECT_STREQ(pagerex_kind_name(PAGEREX_KIND_EMF), "emf");
}

TEST(Pictures, AreTheSameFromAnywhere) {
  Host host(support::smallEmf());
  convertPicture(host.memory(), host.sink());
  const std::string whole = host.content("picture.svg");
  EXPECT_THAT(whole, StartsWith("<svg "));
  host.forget();
  EXPECT_EQ(convertPicture(host.functions(), host.sink()).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(host.content("picture.svg"), whole);
  const support::TempFolder folder;
  const std::string source = folder.write("in.emf", support::smallEmf()), target = folder.path("out.svg");
  EXPECT_EQ(convertPicture(inputFrom(source), outputTo(target)).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(folder.read("out.svg"), whole);
  EXPECT_THAT(folder.files(), ElementsAre("in.emf", "out.svg"));
}

TEST(Pictures, TakeTheNameThatTheOutputHas) {
  Host host(support::gif());
  pagerex_output output = host.sink();
  output.main_name = "red.gif";
  EXPECT_EQ(convertPicture(host.memory(), output).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(host.content("red.gif"), textOf(support::gif()));
  output.main_name = "a/b.gif";
  EXPECT_EQ(convertPicture(host.memory(), output).code, PAGEREX_RESULT_INVALID_ARGUMENT);
}

TEST(Pictures, ThatAreNoneAreTold) {
  const std::string text = "some text";
  Host host(Bytes(text.begin(), text.end()));
  const Result result = convertPicture(host.memory(), host.sink());
  EXPECT_EQ(result.code, PAGEREX_RESULT_NOT_PICTURE);
  EXPECT_EQ(result.kind, PAGEREX_KIND_TEXT);
  EXPECT_STREQ(result.sentence, "This is plain text (.txt). Only pictures are converted by this call.");
  EXPECT_STREQ(pagerex_result_name(result.code), "not_picture");
  EXPECT_TRUE(host.names().empty());
  Host document(smallDocument());
  EXPECT_EQ(convertPicture(document.memory(), document.sink()).kind, PAGEREX_KIND_WORD97);
}

TEST(Pictures, AreNoDocuments) {
  Host host(support::smallPng());
  const Result result = convert(host.memory(), host.sink(), Host::quiet("html"));
  EXPECT_EQ(result.code, PAGEREX_RESULT_NOT_WORD);
  EXPECT_EQ(result.kind, PAGEREX_KIND_PNG);
}

TEST(Pictures, OfWhichNothingCanBeReadAreDamaged) {
  Host host({0xFF, 0xD8, 0xFF, 0xD9});
  const Result result = convertPicture(host.memory(), host.sink());
  EXPECT_EQ(result.code, PAGEREX_RESULT_DAMAGED);
  EXPECT_EQ(result.kind, PAGEREX_KIND_JPEG);
  EXPECT_TRUE(host.names().empty());
}

TEST(Pictures, NeedAnInputAndAnOutput) {
  Host host(support::gif());
  const pagerex_input input = host.memory();
  const pagerex_output output = host.sink();
  EXPECT_EQ(pagerex_convert_picture(nullptr, nullptr, nullptr, &output, nullptr),
            PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(pagerex_convert_picture(&input, nullptr, nullptr, nullptr, nullptr),
            PAGEREX_RESULT_INVALID_ARGUMENT);
  EXPECT_EQ(pagerex_convert_picture(&input, nullptr, nullptr, &output, nullptr), PAGEREX_RESULT_OK);
  pagerex_picture_options options = {};
  EXPECT_EQ(pagerex_convert_picture(&input, nullptr, &options, &output, nullptr),
            PAGEREX_RESULT_INVALID_ARGUMENT);
  options.size = sizeof options;
  options.width = -1;
  EXPECT_EQ(pagerex_convert_picture(&input, nullptr, &options, &output, nullptr),
            PAGEREX_RESULT_INVALID_ARGUMENT);
}

TEST(Pictures, WithoutASizeTakeTheOneThatIsToldThem) {
  Host host(support::bareWmf());
  pagerex_picture_options options = {};
  options.size = sizeof options;
  options.width = 300;
  options.height = 150;
  convertPicture(host.memory(), host.sink());
  const std::string usual = host.content("picture.svg");
  host.forget();
  convertPicture(host.memory(), host.sink(), nullptr, &options);
  EXPECT_NE(host.content("picture.svg"), usual);
  EXPECT_THAT(host.content("picture.svg"), HasSubstr("width=\"300pt\""));
}

TEST(Pictures, StopAtLimits) {
  Host host(support::smallEmf());
  pagerex_limits limits = noLimits();
  limits.input_bytes = 20;
  EXPECT_EQ(convertPicture(host.memory(), host.sink(), &limits).code, PAGEREX_RESULT_TOO_LARGE);
  limits = noLimits();
  limits.output_bytes = 20;
  EXPECT_EQ(convertPicture(host.memory(), host.sink(), &limits).code, PAGEREX_RESULT_OUTPUT_LIMIT);
  EXPECT_TRUE(host.completeFiles().empty());
  limits = noLimits();
  limits.memory = 20;
  EXPECT_EQ(convertPicture(host.functions(), host.sink(), &limits).code, PAGEREX_RESULT_MEMORY_LIMIT);
  const int stop = 1;
  limits = noLimits();
  limits.cancel = &stop;
  EXPECT_EQ(convertPicture(host.memory(), host.sink(), &limits).code, PAGEREX_RESULT_CANCELED);
}

TEST(Pictures, EndWithAFunctionThatFailsOrThrows) {
  for (const Call call : {Call::kByteCount, Call::kRead, Call::kBegin, Call::kWrite, Call::kEnd}) {
    const bool isInput = call == Call::kByteCount || call == Call::kRead;
    Host host(support::smallEmf());
    host.onCall = [call](Call made) { return made != call; };
    const int failed = convertPicture(host.functions(), host.sink()).code;
    EXPECT_EQ(failed, isInput ? PAGEREX_RESULT_UNREADABLE : PAGEREX_RESULT_CANNOT_WRITE);
    host.forget();
    host.onCall = [call](Call made) { return made == call ? throw 1 : true; };
    EXPECT_EQ(convertPicture(host.functions(), host.sink()).code, PAGEREX_RESULT_CANCELED);
    EXPECT_EQ(host.complaints(), "");
  }
}

TEST(Pictures, AreWholeOrToldWhereMemoryRunsOut) {
  for (const Sample& sample : samples()) {
    Host host(sample.bytes);
    const pagerex_input input = host.functions();
    const pagerex_output output = host.sink();
    convertPicture(input, output);
    const Files whole = host.files();
    bool hasFailed = true;
    for (int64_t failing = 1; hasFailed; ++failing) {
      host.forget();
      Result result;
      {
        const MemoryFaults faults(failing);
        pagerex_convert_picture(&input, nullptr, nullptr, &output, &result);
        hasFailed = faults.haveFailed();
      }
      const bool isTold = result.code == PAGEREX_RESULT_OUT_OF_MEMORY;
      const bool isWhole = result.code == PAGEREX_RESULT_OK && host.files() == whole;
      ASSERT_TRUE(isTold || isWhole) << sample.kind << ", request " << failing << ": " << result.sentence;
      ASSERT_TRUE(arePartOf(host.completeFiles(), whole)) << sample.kind << ", request " << failing;
    }
  }
}

TEST(Pictures, TakeThePlaceOfOlderOnesAlone) {
  const support::TempFolder folder;
  const std::string source = folder.write("in.bmp", support::bmp()), target = folder.path("out");
  const auto replaces = [&](const std::string& older) {
    folder.write("out", older);
    const int code = convertPicture(inputFrom(source), outputTo(target)).code;
    EXPECT_EQ(code != PAGEREX_RESULT_OK, folder.read("out") == older);
    return code == PAGEREX_RESULT_OK;
  };
  EXPECT_TRUE(replaces(textOf(support::smallPng())));
  EXPECT_TRUE(replaces("<svg xmlns=\"http://www.w3.org/2000/svg\"></svg>"));
  EXPECT_TRUE(replaces(""));
  EXPECT_FALSE(replaces(textOf(support::smallJpeg())));
  EXPECT_FALSE(replaces(textOf(smallDocument())));
  EXPECT_EQ(convertPicture(inputFrom(source), outputTo(source)).code, PAGEREX_RESULT_REFUSED);
  EXPECT_EQ(folder.read("in.bmp"), textOf(support::bmp()));
}

TEST(Pictures, ThatAreNotThereAreUnreadable) {
  const support::TempFolder folder;
  const std::string source = folder.path("none.emf"), target = folder.path("x.svg");
  const Result result = convertPicture(inputFrom(source), outputTo(target));
  EXPECT_EQ(result.code, PAGEREX_RESULT_UNREADABLE);
  EXPECT_EQ(result.system_error, ENOENT);
  EXPECT_TRUE(folder.files().empty());
}

}  // namespace
