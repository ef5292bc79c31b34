// What a document says of itself, with each conversion and without one.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "convert/host.h"
#include "support/word_document_writer.h"

using namespace convert_test;
using support::Bytes;
using support::WordDocument;

namespace {

Bytes documentWith(const support::Summary& summary) {
  WordDocument document;
  document.paragraph("text");
  document.summary(summary);
  return document.build();
}

pagerex_summary summaryOf(const Bytes& bytes) {
  Host host(bytes);
  const Document document(host.memory());
  pagerex_document_info info = {};
  info.size = sizeof(info);
  EXPECT_EQ(pagerex_info(document.get(), &info), PAGEREX_RESULT_OK);
  return info.summary;
}

TEST(Summary, TellsTexts) {
  support::Summary made;
  made.title = "A title", made.subject = "A subject", made.author = "Ann", made.lastAuthor = "Bob";
  made.keywords = "some, words", made.comments = "No comment", made.category = "Letters";
  made.manager = "Carl", made.company = "Acme", made.templateName = "Normal.dot";
  made.application = "Microsoft Word 9.0", made.revisionNumber = "7", made.language = "fr-CH";
  const pagerex_summary told = summaryOf(documentWith(made));
  EXPECT_STREQ(told.title, "A title");
  EXPECT_STREQ(told.subject, "A subject");
  EXPECT_STREQ(told.author, "Ann");
  EXPECT_STREQ(told.last_author, "Bob");
  EXPECT_STREQ(told.keywords, "some, words");
  EXPECT_STREQ(told.comments, "No comment");
  EXPECT_STREQ(told.category, "Letters");
  EXPECT_STREQ(told.manager, "Carl");
  EXPECT_STREQ(told.company, "Acme");
  EXPECT_STREQ(told.template_name, "Normal.dot");
  EXPECT_STREQ(told.application, "Microsoft Word 9.0");
  EXPECT_STREQ(told.revision, "7");
  EXPECT_STREQ(told.language, "fr-CH");
}

TEST(Summary, TellsTimesAndCounts) {
  support::Summary made;
  made.created = support::fileTime(2004, 3, 1, 12, 30);
  made.saved = support::fileTime(2004, 3, 2);
  made.editingTime = uint64_t{90} * 600'000'000;
  made.pages = 3, made.words = 400, made.characters = 2000, made.paragraphs = 20, made.lines = 50;
  made.security = 4;
  const pagerex_summary told = summaryOf(documentWith(made));
  EXPECT_STREQ(told.created, "2004-03-01T12:30:00Z");
  EXPECT_STREQ(told.saved, "2004-03-02T00:00:00Z");
  EXPECT_STREQ(told.printed, "");
  EXPECT_EQ(told.editing_minutes, 90u);
  EXPECT_EQ(told.pages, 3u);
  EXPECT_EQ(told.words, 400u);
  EXPECT_EQ(told.characters, 2000u);
  EXPECT_EQ(told.paragraphs, 20u);
  EXPECT_EQ(told.lines, 50u);
  EXPECT_EQ(told.security, 4u);
}

TEST(Summary, TellsNoCountsBelowNothing) {
  support::Summary made;
  made.pages = -1;
  EXPECT_EQ(summaryOf(documentWith(made)).pages, 0u);
}

TEST(Summary, CutsTextsBetweenCharacters) {
  support::Summary made;
  made.codePage = 1200;
  made.title = std::u16string(254, u'x') + u"\u00FC and more";
  made.author = std::u16string(125, u'x') + u"\U0001F600 and more";
  const pagerex_summary told = summaryOf(documentWith(made));
  EXPECT_EQ(told.title, std::string(254, 'x'));
  EXPECT_EQ(told.author, std::string(125, 'x'));
}

TEST(Summary, TellsPropertiesThatSomeoneGaveAName) {
  support::Summary made;
  made.custom = {{"Client", support::Text("Acme")},
                 {"Number", int32_t{-7}},
                 {"Share", 0.5},
                 {"Done", true},
                 {"Due", support::NamedProperty::Time{support::fileTime(2004, 3, 1)}}};
  const pagerex_summary told = summaryOf(documentWith(made));
  const struct {
    const char *name, *value;
    int kind;
  } expected[] = {{"Client", "Acme", PAGEREX_PROPERTY_TEXT},
                  {"Number", "-7", PAGEREX_PROPERTY_INTEGER},
                  {"Share", "0.5", PAGEREX_PROPERTY_REAL},
                  {"Done", "true", PAGEREX_PROPERTY_BOOLEAN},
                  {"Due", "2004-03-01T00:00:00Z", PAGEREX_PROPERTY_TIME}};
  ASSERT_EQ(told.custom_count, 5u);
  for (size_t i = 0; i < 5; ++i) {
    EXPECT_STREQ(told.custom[i].name, expected[i].name);
    EXPECT_STREQ(told.custom[i].value, expected[i].value);
    EXPECT_EQ(told.custom[i].kind, expected[i].kind);
  }
}

TEST(Summary, TellsTheFirstOfManyProperties) {
  support::Summary made;
  for (int i = 0; i < 40; ++i) made.custom.push_back({"p" + std::to_string(i), int32_t{i}});
  const pagerex_summary told = summaryOf(documentWith(made));
  ASSERT_EQ(told.custom_count, uint32_t{PAGEREX_MOST_PROPERTIES});
  EXPECT_STREQ(told.custom[15].name, "p15");
}

TEST(Summary, TellsTheLanguageOfTheTextWhereNoneIsTold) {
  WordDocument document;
  document.style(0, support::Style().name("Normal").chpx({support::sprm(0x486D, 0x0807)}));
  document.paragraph("text");
  EXPECT_STREQ(summaryOf(document.build()).language, "de-CH");
}

TEST(Summary, ComesWithEachConversion) {
  support::Summary made;
  made.title = "A title";
  Host host(documentWith(made));
  for (const std::string& format : formats()) {
    host.forget();
    const Result result = convert(host.memory(), host.sink(), Host::quiet(format.c_str()));
    EXPECT_STREQ(result.summary.title, "A title") << format;
  }
}

TEST(Summary, IsNotToldOfWhatIsNoDocument) {
  Host host({'a', 'b', 'c'});
  Result result;
  std::memset(&result.summary, 0x55, sizeof(result.summary));
  const pagerex_input input = host.memory();
  const pagerex_output output = host.sink();
  EXPECT_EQ(pagerex_convert(&input, nullptr, nullptr, &output, &result), PAGEREX_RESULT_NOT_WORD);
  EXPECT_STREQ(result.summary.title, "");
  EXPECT_EQ(result.summary.custom_count, 0u);
}

TEST(Summary, IsNotGivenToHostsThatHaveNoRoomForIt) {
  support::Summary made;
  made.title = "A title";
  Host host(documentWith(made));
  const Document document(host.memory());
  pagerex_document_info info = {};
  std::memset(&info.summary, 0x55, sizeof(info.summary));
  info.size = offsetof(pagerex_document_info, summary);
  EXPECT_EQ(pagerex_info(document.get(), &info), PAGEREX_RESULT_OK);
  EXPECT_GT(info.counts.characters, 0u);
  EXPECT_EQ(info.summary.title[0], 0x55);
  Result result;
  std::memset(&result.summary, 0x55, sizeof(result.summary));
  result.size = offsetof(pagerex_result, summary);
  const pagerex_input input = host.memory();
  const pagerex_output output = host.sink();
  EXPECT_EQ(pagerex_convert(&input, nullptr, nullptr, &output, &result), PAGEREX_RESULT_OK);
  EXPECT_EQ(result.summary.title[0], 0x55);
}

TEST(Summary, ThatIsDamagedMakesNoViewLessWhole) {
  WordDocument document;
  document.paragraph("text");
  document.stream(u"\x05SummaryInformation", Bytes(100, 0xFF));
  Host host(document.build());
  const Result result = convert(host.memory(), host.sink(), Host::quiet("normal"));
  EXPECT_EQ(result.complete, 1);
  EXPECT_STREQ(result.summary.title, "");
}

}  // namespace
