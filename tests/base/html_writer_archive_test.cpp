#include "base/html_writer_archive.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temp_folder.h"

namespace {

/// An archive on a file of its own.
class Output {
 public:
  Output() { EXPECT_EQ(CreateHtmlWriterArchive(&archive_, files_, path().c_str()), Status::kOk); }
  ~Output() { DeleteHtmlWriterArchive(archive_); }
  IWriteArchive* operator->() { return archive_; }
  std::string path(const char* name = "a.htm") const { return folder_.path(name); }
  /// What a file holds, whatever the archive still buffers.
  std::string onDisk(const char* name = "a.htm") const { return folder_.read(name); }
  std::string text() {
    archive_->Close();
    return onDisk();
  }

 private:
  support::TempFolder folder_;
  OutputFiles files_;
  IWriteArchive* archive_ = nullptr;
};

/// Document text inside a fresh "p".
std::string escaped(const char* text) {
  Output out;
  out->BeginElement("p");
  out->AddContentEx(text);
  return out.text();
}

const unsigned short* units(const char16_t* text) {
  return reinterpret_cast<const unsigned short*>(text);
}

}  // namespace

TEST(ArchiveMarkup, AnElementWithoutContentGetsBothTags) {
  Output out;
  out->BeginElement("td");
  out->EndElement("td");
  EXPECT_EQ(out.text(), "<td></td>");
}

TEST(ArchiveMarkup, AnEmptyEndTakesTheBracket) {
  Output out;
  out->BeginElement("br");
  out->AddAttribute("clear", "all");
  out->EndElement(true);
  out->BeginElement("p");
  EXPECT_EQ(out.text(), "<br clear=\"all\"/><p");
}

TEST(ArchiveMarkup, ANonEmptyEndWritesABracketOfItsOwn) {
  Output out;
  out->BeginElement("p");
  out->EndElement(false);
  out->AddContent("x");
  EXPECT_EQ(out.text(), "<p>x");
}

TEST(ArchiveMarkup, NamespacesStandBeforeNames) {
  Output out;
  out->BeginElement("shape", "v");
  out->AddAttribute("spt", "75", "o");
  out->EndElement("shape", "v");
  EXPECT_EQ(out.text(), "<v:shape o:spt=\"75\"></v:shape>");
}

TEST(ArchiveMarkup, AttributesMayFollowALineEnd) {
  Output out;
  out->BeginElement("html");
  out->PutNewLine();
  out->AddAttribute("lang", "en");
  out->BeginElement("head");
  EXPECT_EQ(out.text(), "<html\r\n lang=\"en\"><head");
}

TEST(ArchiveMarkup, RawTextDoesNotBringOutTheBracket) {
  Output out;
  out->BeginElement("p");
  out->Put("raw");
  EXPECT_EQ(out.text(), "<praw");
}

TEST(ArchiveAttribute, EachKindOfValueHasItsForm) {
  Output out;
  out->AddAttribute("i", -7);
  out->AddAttribute("d", 1.5);
  out->AddAttribute("b", true);
  out->AddAttribute("w", L"\u00e9");
  out->AddAttribute("u", units(u"\u4e2d"));
  out->AddAttribute("nowrap");
  EXPECT_EQ(out.text(), " i=\"-7\" d=\"1.500000\" b=\"true\" w=\"\u00e9\" u=\"\u4e2d\" nowrap");
}

TEST(ArchiveAttribute, AllPartsMayBeWide) {
  Output out;
  out->AddAttribute(L"name", L"\u4e2d", L"ns", L"'");
  EXPECT_EQ(out.text(), " ns:name='\u4e2d'");
}

TEST(ArchiveAttribute, ANullQuoteAndANullValueWriteNothing) {
  Output out;
  out->AddAttribute("a", "1", nullptr, nullptr);
  out->AddAttribute("b", static_cast<const char*>(nullptr));
  out->AddAttribute("c", units(u"2"), nullptr, nullptr);
  EXPECT_EQ(out.text(), " a=1 b=\"\" c=2");
}

TEST(ArchiveAttribute, NothingIsEscaped) {
  Output out;
  out->AddAttribute("href", "a?b&c<\">");
  EXPECT_EQ(out.text(), " href=\"a?b&c<\">\"");
}

TEST(ArchiveColour, TakesRedFromBits16To23) {
  Output out;
  out->AddAttribute("bgcolor", 0xAA0BCDEFu);
  out->AddContent(0x010203u);
  EXPECT_EQ(out.text(), " bgcolor=\"#0BCDEF\"#010203");
}

TEST(ArchiveText, TwoSpacesAreABlankAndAHardOne) {
  EXPECT_EQ(escaped("a  b"), "<p>a &nbsp;b");
}

TEST(ArchiveText, ThreeSpacesAreABlankAndTwoHardOnes) {
  EXPECT_EQ(escaped("a   b"), "<p>a &nbsp;&nbsp;b");
}

TEST(ArchiveText, ATabAfterASpaceLeavesNoBlankMemory) {
  EXPECT_EQ(escaped(" \t b"), "<p> &nbsp;&nbsp;&nbsp;&nbsp; b");
}

TEST(ArchiveText, DroppedCharactersEndARunOfSpaces) {
  EXPECT_EQ(escaped(" \r \x07 "), "<p>   ");
}

TEST(ArchiveText, TheGreaterThanSignHasNoSemicolon) {
  EXPECT_EQ(escaped("a>b"), "<p>a&gtb");
}

TEST(ArchiveText, MarkupCharactersAndLineBreaksAreSpelledOut) {
  EXPECT_EQ(escaped("&<\x0b\n\xe4\xb8\xad"), "<p>&amp;&lt;<br>\n\xe4\xb8\xad");
}

TEST(ArchiveText, ASpaceIsRememberedFromCallToCall) {
  Output out;
  out->BeginElement("p");
  out->AddContentEx(units(u" "));
  out->EndElement("i");
  out->AddContentEx(units(u" "));
  EXPECT_EQ(out.text(), "<p> </i>&nbsp;");
}

TEST(ArchiveText, AStartTagForgetsTheSpace) {
  Output out;
  out->AddContentEx(" ");
  out->BeginElement("p");
  out->AddContentEx(" ");
  EXPECT_EQ(out.text(), " <p> ");
}

TEST(ArchiveText, TextAsItStandsDoesNotTouchTheSpace) {
  Output out;
  out->AddContentEx(" ");
  out->AddContent("x");
  out->AddContentEx(" ");
  EXPECT_EQ(out.text(), " x&nbsp;");
}

TEST(ArchiveText, AllWidthsGiveTheSameBytes) {
  Output out;
  out->AddContentEx("\u00e9<");
  out->AddContentEx(L"\u00e9<");
  out->AddContentEx(units(u"\u00e9<"));
  EXPECT_EQ(out.text(), "\u00e9&lt;\u00e9&lt;\u00e9&lt;");
}

TEST(ArchiveText, ANullTextDoesNothingAtAll) {
  Output out;
  out->BeginElement("p");
  out->AddContentEx(static_cast<const char*>(nullptr));
  out->AddContent(static_cast<const wchar_t*>(nullptr));
  out->Put(static_cast<const unsigned short*>(nullptr), 3);
  EXPECT_EQ(out.text(), "<p");
}

TEST(ArchiveText, AnEmptyTextBringsOutTheBracket) {
  EXPECT_EQ(escaped(""), "<p>");
}

TEST(ArchiveSurrogates, HalvesInTwoCallsBecomeOneCharacter) {
  Output out;
  out->AddContentEx(units(u"a\xD83D"));
  out->AddContentEx(units(u"\xDE00z"));
  EXPECT_EQ(out.text(), "a\U0001F600z");
}

TEST(ArchiveSurrogates, ALoneHalfWritesNothing) {
  Output out;
  out->AddContentEx(units(u"a\xD83D"));
  out->AddContentEx(units(u"b"));
  out->AddContentEx(
      units(u"\xDE00"
            u"c\xDE00\xD83D\xD83D\xDE01"));
  EXPECT_EQ(out.text(), "abc\U0001F601");
}

TEST(ArchiveSurrogates, TextAsItStandsJoinsThemToo) {
  Output out;
  out->AddContent(units(u"\xD83D"), 1);
  out->Put(units(u"\xDE00"), -1);
  EXPECT_EQ(out.text(), "\U0001F600");
}

TEST(ArchiveSurrogates, AnAttributeInBetweenIsATextOfItsOwn) {
  Output out;
  out->AddContentEx(units(u"\xD83D"));
  out->AddAttribute("a", units(u"\xDE00x"));
  out->AddContentEx(units(u"\xDE00"));
  EXPECT_EQ(out.text(), " a=\"x\"\U0001F600");
}

TEST(ArchiveBulkText, GivesTheBytesOfACallForEachCharacter) {
  std::u16string text = u"ab  c\t\r\a\v & <x> \xD83D\xDE00 \xDE00\xD83D ";
  text += u'\0';
  text += u"\u00e9\u4e2d \xD83D";
  text += u'\0';
  text += u"\xDE00 end";
  for (int i = 0; i < 9; ++i) text += text;

  Output bulk, single;
  bulk->BeginElement("p");
  single->BeginElement("p");
  bulk->AddTextEx(units(text.data()), static_cast<unsigned int>(text.size()));
  for (char16_t unit : text) {
    const unsigned short one[2] = {unit, 0};
    if (unit) single->AddContentEx(one);
  }
  EXPECT_EQ(bulk.text(), single.text());
}

TEST(ArchiveBulkText, LongerTextThanTheBufferComesOutWhole) {
  std::u16string text;
  std::string expected;
  for (int i = 0; i < 60000; ++i) {
    text += u"words, \u4e2d\u00e9 & ";
    expected += "words, \u4e2d\u00e9 &amp; ";
  }
  Output out;
  out->AddTextEx(units(text.data()), static_cast<unsigned int>(text.size()));
  EXPECT_EQ(out.text(), expected);
}

TEST(ArchiveBulkText, ZerosAloneWriteNothing) {
  const unsigned short zeros[3] = {};
  Output out;
  out->BeginElement("p");
  out->AddTextEx(zeros, 3);
  out->AddTextEx(zeros, 0);
  EXPECT_EQ(out.text(), "<p");
}

TEST(ArchiveContent, NumbersBringOutTheBracket) {
  Output out;
  out->BeginElement("p");
  out->AddContent(-12);
  out->BeginElement("p");
  out->AddContent(0xFFu);
  out->BeginElement("p");
  out->AddContent(true);
  out->BeginElement("p");
  out->AddContent(1234567890L);
  EXPECT_EQ(out.text(), "<p>-12<p>#0000FF<p>true<p>1234567890");
}

TEST(ArchiveContent, FloatingPointNumbersHaveEighteenDigits) {
  Output out;
  out->AddContent(0.1);
  out->AddContent(" ");
  out->AddContent(0.1f);
  out->AddContent(" ");
  out->AddContent(1e20);
  EXPECT_EQ(out.text(), "0.100000000000000006 0.100000001490116119 1e+20");
}

TEST(ArchiveContent, LineFeedsBecomeBreaksOnlyWhenAsked) {
  Output out;
  out->AddContent("a\nb<");
  out->AddContent("a\n\nb", -1, true);
  out->AddContent(L"c\n", -1, true);
  out->AddContent(units(u"\nd"), -1, true);
  EXPECT_EQ(out.text(), "a\nb<a<br><br>bc<br><br>d");
}

TEST(ArchiveContent, ALengthCutsTheText) {
  Output out;
  out->AddContent("abcdef", 3);
  out->AddContent(L"ghi", 1);
  out->AddContent(units(u"jkl"), 2);
  out->AddContent("", 0);
  EXPECT_EQ(out.text(), "abcgjk");
}

TEST(ArchiveEncoding, IsUtf8UntilSetOtherwise) {
  Output out;
  EXPECT_EQ(out->GetWebEncoding(), WebEncoding::kUtf8);
  out->SetWebEncoding(static_cast<WebEncoding>(936));
  EXPECT_EQ(static_cast<unsigned int>(out->GetWebEncoding()), 936u);
}

TEST(ArchiveCss, APropertyAloneOpensAStyleThatStaysOpen) {
  Output out;
  out->BeginElement("p");
  out->AddCssProp("color", "red");
  out->AddCssProp("margin", "0");
  out->EndElement(false);
  out->AddCssProp("x", "y");
  out->EndCssStyle();
  EXPECT_EQ(out.text(), "<p style=\"color:red;margin:0;>x:y;\"");
}

TEST(ArchiveCss, BlocksHaveOnePropertyALine) {
  Output out;
  out->StartCssBlock(".std1");
  out->AddCssProp("color", "red");
  out->AddCssProp("font-family", L"\u5b8b", "'");
  out->AddCssProp("z", units(u"1"));
  out->EndCssBlock();
  EXPECT_EQ(out.text(), ".std1\r\n{color:red;\r\nfont-family:'\u5b8b';\r\nz:1;\r\n}\r\n");
}

TEST(ArchiveCss, TheNextCssClosesTheOpenOne) {
  Output out;
  out->StartCssBlock("a");
  out->StartCssBlock("b");
  out->StartCssStyle();
  out->StartCssStyle();
  out->StartCssBlock("c");
  EXPECT_EQ(out.text(), "a\r\n{}\r\nb\r\n{}\r\n style=\"\" style=\"\"c\r\n{");
}

TEST(ArchiveCss, ABlockBringsOutTheBracket) {
  Output out;
  out->BeginElement("style");
  out->StartCssBlock(nullptr);
  out->StartCssBlock("a");
  EXPECT_EQ(out.text(), "<style>a\r\n{");
}

TEST(ArchiveCss, AnEndWithoutAStartWritesNothing) {
  Output out;
  out->EndCssStyle();
  out->EndCssBlock();
  EXPECT_EQ(out.text(), "");
}

TEST(ArchiveBuffer, ATextOfItsOwnSizeIsCopied) {
  const std::string text(524288, 'x');
  Output out;
  out->_Put(text.data(), 524288);
  EXPECT_EQ(out.onDisk().size(), 0u);
  EXPECT_EQ(out.text(), text);
}

TEST(ArchiveBuffer, ALargerTextGoesStraightToTheFile) {
  const std::string text(524289, 'x');
  Output out;
  out->Put("ab");
  out->_Put(text.data(), 524289);
  EXPECT_GE(out.onDisk().size(), 524288u);
  EXPECT_EQ(out.text(), "ab" + text);
}

TEST(ArchiveBuffer, ATextThatDoesNotFitFillsItFirst) {
  const std::string text(524287, 'x');
  Output out;
  out->_Put(text.data(), 524287);
  out->Put("abc");
  EXPECT_EQ(out.onDisk().size(), 524288u);
  EXPECT_EQ(out.text(), text + "abc");
}

TEST(ArchiveBuffer, MarkupAndTextMayMeetItsEndAnywhere) {
  for (int left = 0; left < 160; left += 3) {
    const std::string before(static_cast<size_t>(524288 - left), 'x');
    Output out;
    out->_Put(before.data(), static_cast<int>(before.size()));
    out->BeginElement("shape", "v");
    out->AddAttribute("class", "std1");
    out->AddAttribute("spt", 75, "o");
    out->AddCssProp("mso-table-layout-alt", "fixed");
    out->AddCssProp("font-family", "Arial", "'");
    out->EndCssStyle();
    out->AddContentEx(units(u"a  \u4e2d<b>"));
    out->EndElement("shape", "v");
    ASSERT_EQ(out.text(), before +
                              "<v:shape class=\"std1\" o:spt=\"75\" style=\"mso-table-layout-alt:fixed;"
                              "font-family:'Arial';\">a &nbsp;\u4e2d&lt;b&gt</v:shape>")
        << left;
  }
}

TEST(ArchiveBuffer, ANegativeLengthAndANullTextWriteNothing) {
  Output out;
  out->_Put("abc", -1);
  out->_Put(nullptr, 3);
  out->_Put("abc", 0);
  EXPECT_EQ(out.text(), "");
}

TEST(ArchiveFile, WhatIsWrittenWhileClosedIsDropped) {
  Output out;
  out->Put("a");
  out->Close();
  out->Put("b");
  out->_Put(std::string(600000, 'x').data(), 600000);
  EXPECT_TRUE(out->WriteArchiveIsOk());
  out->Close();
  EXPECT_EQ(out.text(), "a");
}

TEST(ArchiveFile, ASpaceWrittenWhileClosedIsRemembered) {
  Output out;
  out->Close();
  out->AddContentEx(units(u"a "));
  ASSERT_EQ(out->Open(out.path("b.htm").c_str()), Status::kOk);
  out->AddContentEx(units(u" b"));
  out->Close();
  EXPECT_EQ(out.onDisk("b.htm"), "&nbsp;b");
}

TEST(ArchiveFile, OpenTagsAndSpacesOutliveAChangeOfFile) {
  Output out;
  out->AddContentEx(" ");
  out->Close();
  out->BeginElement("p");
  EXPECT_EQ(out->Open(out.path().c_str()), Status::kOk);
  out->AddContent("x");
  EXPECT_EQ(out.text(), ">x");
}

TEST(ArchiveFile, TheNextFileGetsOnlyItsOwnBytes) {
  Output out;
  out->Put("first");
  EXPECT_EQ(out->Open(out.path("b.htm").c_str()), Status::kOk);
  out->Put("second");
  EXPECT_EQ(out.text(), "first");
  EXPECT_EQ(out.onDisk("b.htm"), "second");
}

TEST(ArchiveFile, AFailedOpenOfTheFirstFileLeavesNoFileObject) {
  OutputFiles files;
  KHtmlWriterArchive* const archive = new KHtmlWriterArchive(files);
  EXPECT_EQ(archive->Open("/nowhere/at/all"), Status::kNothing);
  EXPECT_FALSE(archive->WriteArchiveIsOk());
  archive->Put("dropped");
  DeleteHtmlWriterArchive(archive);
}

TEST(ArchiveFile, AFailedOpenOfALaterFileKeepsTheFileObject) {
  Output out;
  EXPECT_EQ(out->Open("/nowhere/at/all"), Status::kNothing);
  EXPECT_EQ(out->Open(static_cast<const char*>(nullptr)), Status::kNothing);
  EXPECT_TRUE(out->WriteArchiveIsOk());
}

TEST(ArchiveFile, WidePathsArePossible) {
  Output out;
  const std::string folder = out.path("");
  const std::wstring path = std::wstring(folder.begin(), folder.end()) + L"\u4e2d.htm";
  EXPECT_EQ(out->Open(path.c_str()), Status::kOk);
  out->Put("x");
  out->Close();
  EXPECT_EQ(out.onDisk("\u4e2d.htm"), "x");
}

TEST(ArchiveText, HasTheFirstCharactersBehindAsciiInTwoBytes) {
  Output out;
  const unsigned short text[] = {0x7F, 0x80, 0xFF, 0};
  out->AddContentEx(text);
  out->AddTextEx(text, 3);
  EXPECT_EQ(out.text(), "\x7F\xC2\x80\xC3\xBF\x7F\xC2\x80\xC3\xBF");
}

TEST(ArchiveBytes, SinceAPositionAreAtHandUntilTheyLeaveTheBuffer) {
  Output out;
  out->Put("first");
  const uint64_t position = out->GetWrittenBytes();
  EXPECT_EQ(out->WrittenSince(position), "");
  out->Put("second");
  EXPECT_EQ(out->WrittenSince(position), "second");
  EXPECT_EQ(out->WrittenSince(0), "firstsecond");
  const std::string much(KHtmlWriterArchive::kBufferSize, 'x');
  out->Put(much.c_str());
  EXPECT_EQ(out->WrittenSince(position), "");
  const uint64_t later = out->GetWrittenBytes();
  out->Put("third");
  EXPECT_EQ(out->WrittenSince(later), "third");
}

TEST(ArchiveBytes, ThatAreDroppedAreNotAtHand) {
  Output out;
  out->Put("first");
  out->Close();
  const uint64_t position = out->GetWrittenBytes();
  out->Put("dropped");
  EXPECT_EQ(out->WrittenSince(position), "");
  EXPECT_EQ(out->WrittenSince(0), "");
}

TEST(ArchiveFactory, RefusesANullTargetAndAPathThatCannotBeCreated) {
  OutputFiles files;
  IWriteArchive* archive = nullptr;
  EXPECT_EQ(CreateHtmlWriterArchive(nullptr, files, "/tmp/x"), Status::kInvalidArgument);
  EXPECT_EQ(CreateHtmlWriterArchive(&archive, files, "/nowhere/at/all"), Status::kInvalidArgument);
  EXPECT_EQ(CreateHtmlWriterArchive(&archive, files, nullptr), Status::kInvalidArgument);
  EXPECT_EQ(archive, nullptr);
  DeleteHtmlWriterArchive(nullptr);
}
