// Documents from anywhere to anywhere: the same bytes, and what a host is told on the way.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "convert/host.h"
#include "support/temp_folder.h"
#include "support/word_document_writer.h"

using namespace convert_test;
namespace fs = std::filesystem;

namespace {

/// What stands at a path, by the names that a sink would be told.
Files filesIn(const support::TempFolder& folder) {
  Files files;
  for (const std::string& name : folder.files()) files[name] = folder.read(name);
  return files;
}

class EachFormat : public testing::TestWithParam<std::string> {
 protected:
  const char* format() const { return GetParam().c_str(); }
  const pagerex_format& row() const {
    int i = 0;
    while (pagerex_format_at(i)->name != GetParam()) ++i;
    return *pagerex_format_at(i);
  }
  std::string mainName() const { return std::string("document") + row().extension; }
  const Files whole_ = filesOf(richDocument(), GetParam());
};
INSTANTIATE_TEST_SUITE_P(Formats, EachFormat, testing::ValuesIn(formats()),
                         [](const auto& chosen) { return chosen.param; });

TEST_P(EachFormat, IsTheSameFromFunctions) {
  Host host(richDocument());
  EXPECT_EQ(convert(host.functions(), host.sink(), Host::quiet(format())).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(host.files(), whole_);
}

TEST_P(EachFormat, IsTheSameFromAPath) {
  const support::TempFolder folder;
  const std::string source = folder.write("in.doc", richDocument());
  Host host;
  EXPECT_EQ(convert(inputFrom(source), host.sink(), Host::quiet(format())).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(host.files(), whole_);
}

TEST_P(EachFormat, IsTheSameAtAPath) {
  const support::TempFolder from, to;
  EXPECT_EQ(convertPaths(from.write("in.doc", richDocument()), to.path(mainName()), format()).code,
            PAGEREX_RESULT_OK);
  EXPECT_EQ(filesIn(to), whole_);
}

TEST_P(EachFormat, IsTheSameFromAFileThatMayOnlyBeRead) {
  const support::TempFolder from, to;
  const std::string source = from.write("in.doc", richDocument());
  fs::permissions(source, fs::perms::owner_read);
  fs::permissions(from.path(), fs::perms::owner_read | fs::perms::owner_exec);
  const int code = convertPaths(source, to.path(mainName()), format()).code;
  fs::permissions(from.path(), fs::perms::owner_all);
  EXPECT_EQ(code, PAGEREX_RESULT_OK);
  EXPECT_EQ(filesIn(to), whole_);
  EXPECT_EQ(from.files(), std::vector<std::string>{"in.doc"});
}

TEST_P(EachFormat, IsTheSameHoweverOftenItIsWritten) {
  Host host(richDocument());
  Document document(host.memory());
  for (int i = 0; i < 5; ++i) {
    host.forget();
    EXPECT_EQ(document.write(Host::quiet(format()), host.sink()), PAGEREX_RESULT_OK);
    EXPECT_EQ(host.files(), whole_);
  }
}

TEST_P(EachFormat, IsTheSameAfterTheOthers) {
  Host host(richDocument());
  Document document(host.functions());
  for (const std::string& other : formats()) document.write(host.options(other.c_str()), host.sink());
  host.forget();
  document.write(host.options(format()), host.sink());
  EXPECT_EQ(host.files(), whole_);
}

TEST_P(EachFormat, KeepsItsPromisesToASink) {
  Host host(richDocument());
  convert(host.memory(), host.sink(), host.options(format()));
  EXPECT_EQ(host.complaints(), "");
  EXPECT_EQ(host.completeFiles(), whole_);
}

TEST_P(EachFormat, NamesItsMainFileAndWhatStandsBesideIt) {
  Host host(richDocument());
  pagerex_output output = host.sink();
  output.main_name = "letter.htm";
  convert(host.memory(), output, Host::quiet(format()));
  EXPECT_EQ(host.typeOf("letter.htm"), row().media_type);
  for (const std::string& name : host.names())
    EXPECT_TRUE(name == "letter.htm" || name.starts_with("letter.files/")) << name;
}

TEST_P(EachFormat, TellsTheTypeOfEachFile) {
  Host host(richDocument());
  convert(host.memory(), host.sink(), Host::quiet(format()));
  for (const std::string& name : host.names())
    EXPECT_NE(host.typeOf(name), "application/octet-stream") << name;
}

TEST_P(EachFormat, IsOneFileWhereItSaysSo) {
  const bool embedsPictures = GetParam() == "html";
  EXPECT_EQ(row().is_single_file != 0 || embedsPictures, whole_.size() == 1);
  Host host(richDocument());
  pagerex_options options = Host::quiet(format());
  options.pictures = PAGEREX_PICTURES_NONE;
  convert(host.memory(), host.sink(), options);
  EXPECT_EQ(row().is_single_without_pictures != 0, host.files().size() == 1);
}

TEST_P(EachFormat, RisesFromNothingToAll) {
  Host host(richDocument());
  convert(host.memory(), host.sink(), host.options(format()));
  ASSERT_FALSE(host.progress().empty());
  EXPECT_EQ(host.progress().front(), 0);
  EXPECT_EQ(host.progress().back(), 1);
  EXPECT_LE(host.progress().size(), 101u);
}

TEST_P(EachFormat, TellsHowMuchWasWritten) {
  Host host(richDocument());
  const Result result = convert(host.memory(), host.sink(), Host::quiet(format()));
  EXPECT_EQ(result.output_bytes, host.bytes());
  EXPECT_EQ(result.output_files, host.files().size());
  EXPECT_EQ(result.kind, PAGEREX_KIND_WORD97);
  EXPECT_TRUE(result.isOne());
}

TEST_P(EachFormat, TellsOfPagesThatAreThere) {
  Host host(richDocument());
  const Result result = convert(host.memory(), host.sink(), host.options(format()));
  const std::vector<std::string> names = host.names();
  for (const std::string& page : host.pages())
    EXPECT_EQ(std::count(names.begin(), names.end(), page), 1) << page;
  EXPECT_GE(result.counts.pages, host.pages().size());
}

TEST_P(EachFormat, LeavesItsPicturesOutWhereTheyAreNotWanted) {
  Host host(richDocument());
  pagerex_options options = Host::quiet(format());
  options.pictures = PAGEREX_PICTURES_NONE;
  const Result result = convert(host.memory(), host.sink(), options);
  EXPECT_EQ(result.code, PAGEREX_RESULT_OK);
  EXPECT_EQ(result.counts.pictures, 0u);
  for (const std::string& name : host.names()) EXPECT_EQ(host.typeOf(name).find("image/"), std::string::npos);
}

TEST_P(EachFormat, RefusesPicturesThatItCannotDo) {
  Host host(richDocument());
  pagerex_options options = Host::quiet(format());
  options.pictures = PAGEREX_PICTURES_EMBEDDED;
  const bool canEmbed = GetParam() == "markdown" || GetParam() == "html";
  EXPECT_EQ(convert(host.memory(), host.sink(), options).code,
            canEmbed ? PAGEREX_RESULT_OK : PAGEREX_RESULT_INVALID_ARGUMENT);
  options.pictures = PAGEREX_PICTURES_FILES;
  EXPECT_EQ(convert(host.memory(), host.sink(), options).code,
            row().is_single_file ? PAGEREX_RESULT_INVALID_ARGUMENT : PAGEREX_RESULT_OK);
}

TEST_P(EachFormat, TakesItsUsualPageForNone) {
  Host host(richDocument()), usual(richDocument());
  pagerex_options options = Host::quiet(format());
  constexpr int kSinglePage = 2;
  options.page_size = row().has_page_size == kSinglePage ? 0 : 2000;
  convert(host.memory(), host.sink(), options);
  EXPECT_EQ(host.files(), whole_);
  options.page_size = 2000;
  Host inPieces(richDocument());
  convert(inPieces.memory(), inPieces.sink(), options);
  EXPECT_EQ(inPieces.files() != whole_, row().has_page_size == kSinglePage);
}

TEST_P(EachFormat, TakesPagesOfAnySize) {
  for (const int64_t size : {int64_t{1}, int64_t{100}, int64_t{INT32_MAX}, int64_t{INT64_MAX}}) {
    Host host(smallDocument());
    pagerex_options options = host.options(format());
    options.page_size = size;
    EXPECT_EQ(convert(host.memory(), host.sink(), options).code, PAGEREX_RESULT_OK) << size;
    EXPECT_EQ(host.complaints(), "") << size;
  }
}

TEST_P(EachFormat, HoldsNoAddressesWhereNoneAreWanted) {
  Host host(richDocument());
  pagerex_options options = Host::quiet(format());
  options.links = PAGEREX_LINKS_NONE;
  EXPECT_EQ(convert(host.memory(), host.sink(), options).code, PAGEREX_RESULT_OK);
  for (const auto& [name, content] : host.files())
    EXPECT_EQ(content.find("http://x.example/"), std::string::npos) << name;
}

TEST(Formats, HaveNamesOfTheirOwn) {
  std::vector<std::string> names = formats();
  std::sort(names.begin(), names.end());
  EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
  EXPECT_EQ(pagerex_format_at(-1), nullptr);
  EXPECT_EQ(pagerex_format_at(static_cast<int>(names.size())), nullptr);
}

TEST(Formats, AreTheFirstWhereNoneIsNamed) {
  Host host(smallDocument());
  convert(host.memory(), host.sink(), Host::quiet(nullptr));
  EXPECT_EQ(host.files(), filesOf(smallDocument(), pagerex_format_at(0)->name));
}

TEST(Pages, AreToldOneAfterTheOther) {
  Host host(smallDocument());
  pagerex_options options = host.options("mulpages");
  options.page_size = 200;
  const Result result = convert(host.memory(), host.sink(), options);
  EXPECT_GT(host.pages().size(), 2u);
  EXPECT_EQ(host.pages()[1], "document.files/2.htm");
  EXPECT_EQ(result.counts.pages, host.pages().size());
}

TEST(Previews, TellThatTheyEndBeforeTheDocument) {
  Host host(smallDocument());
  pagerex_options options = Host::quiet("preview");
  options.page_size = 5;
  const Result result = convert(host.memory(), host.sink(), options);
  EXPECT_TRUE(result.warns(PAGEREX_WARNING_STOPPED));
  EXPECT_EQ(result.complete, 1);
}

TEST(Counts, AreThoseOfTheDocument) {
  support::WordDocument document;
  document.paragraph("one");
  document.row({"a", "b"}, {support::defTableSprm({0, 1000, 2000})});
  document.paragraph("two");
  Host host(document.build());
  const Result result = convert(host.memory(), host.sink(), Host::quiet("normal"));
  EXPECT_EQ(result.counts.tables, 1u);
  EXPECT_EQ(result.counts.pictures, 0u);
  EXPECT_GE(result.counts.characters, 10u);
}

TEST(Info, TellsWhatTheDocumentHolds) {
  Host host(smallDocument());
  const Document document(host.memory());
  pagerex_document_info info = {};
  info.size = sizeof(info);
  ASSERT_EQ(pagerex_info(document.get(), &info), PAGEREX_RESULT_OK);
  EXPECT_EQ(info.kind, PAGEREX_KIND_WORD97);
  EXPECT_EQ(info.input_bytes, smallDocument().size());
  EXPECT_EQ(info.counts.tables, 1u);
  EXPECT_EQ(info.counts.pictures, 1u);
  EXPECT_GT(info.counts.characters, 900u);
}

TEST(Info, IsTheSameBeforeAndAfterWriting) {
  Host host(richDocument());
  Document document(host.memory());
  pagerex_document_info before = {}, after = {};
  before.size = after.size = sizeof(before);
  pagerex_info(document.get(), &before);
  document.write(Host::quiet("normal"), host.sink());
  pagerex_info(document.get(), &after);
  EXPECT_EQ(before.counts.characters, after.counts.characters);
  EXPECT_EQ(before.counts.paragraphs, after.counts.paragraphs);
  EXPECT_EQ(before.counts.pictures, after.counts.pictures);
}

TEST(Info, HasNoBearingOnWhatIsWritten) {
  Host host(richDocument());
  Document document(host.memory());
  pagerex_document_info info = {};
  info.size = sizeof(info);
  pagerex_info(document.get(), &info);
  document.write(Host::quiet("phone"), host.sink());
  EXPECT_EQ(host.files(), filesOf(richDocument(), "phone"));
}

TEST(Warnings, AreTheSameHoweverOftenADocumentIsWritten) {
  support::WordDocument made;
  made.paragraph("Go ")
      .fieldBegin(88)
      .run(" HYPERLINK \"javascript:x()\" ")
      .fieldSeparator()
      .run("x")
      .fieldEnd();
  Host host(made.build());
  Document document(host.memory());
  document.write(Host::quiet("normal"), host.sink());
  const uint64_t first = document.result.warnings_total;
  host.forget();
  document.write(Host::quiet("normal"), host.sink());
  EXPECT_EQ(document.result.warnings_total, first);
}

}  // namespace
