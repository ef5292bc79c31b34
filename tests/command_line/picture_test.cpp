// A picture from a file or from standard input, for browsers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command_line/program.h"
#include "support/small_pictures.h"

using support::Bytes;
using support::TempFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string textOf(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

TEST(Picture, GoesToStandardOutput) {
  const TempFolder folder;
  folder.write("x.emf", support::smallEmf());
  for (const Arguments& arguments :
       {Arguments{"picture", "x.emf"}, Arguments{"picture", "-o", "-", "x.emf"}, Arguments{"picture", "-"}}) {
    const Finished finished = pagerex(arguments, folder.path(), textOf(support::smallEmf()));
    EXPECT_EQ(finished.exitCode, 0);
    EXPECT_THAT(finished.output, StartsWith("<svg "));
    EXPECT_EQ(finished.errors, "");
  }
  EXPECT_THAT(folder.files(), ElementsAre("x.emf"));
}

TEST(Picture, GoesToAFile) {
  const TempFolder folder;
  folder.write("x.bmp", support::bmp());
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(pagerex({"picture", "-o", "y.PNG", "x.bmp"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.read("y.PNG"), StartsWith("\x89PNG"));
  EXPECT_EQ(pagerex({"picture", "x.bmp", "--output=z"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("x.bmp", "y.PNG", "z"));
}

TEST(Picture, TakesItsNameAndItsEndingInAFolder) {
  const TempFolder folder;
  folder.write("in/a.b.wmf", support::smallEmf());
  folder.write("out/x", std::string());
  EXPECT_EQ(pagerex({"picture", "-o", "out", "in/a.b.wmf"}, folder.path()).exitCode, 0);
  EXPECT_EQ(pagerex({"picture", "-o", "out/", "-"}, folder.path(), textOf(support::gif())).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("in/a.b.wmf", "out/a.b.svg", "out/picture.gif", "out/x"));
}

TEST(Picture, IsRefusedByANameOfAnotherKind) {
  const TempFolder folder;
  folder.write("x.tif", support::tiff());
  const Finished finished = pagerex({"picture", "-o", "y.svg", "x.tif"}, folder.path());
  EXPECT_EQ(finished.exitCode, 1);
  EXPECT_EQ(finished.errors, "pagerex: y.svg: what comes of this picture ends in .png\n");
  folder.write("x.jpg", support::smallJpeg());
  EXPECT_EQ(pagerex({"picture", "-o", "y.png", "x.jpg"}, folder.path()).exitCode, 1);
  EXPECT_EQ(pagerex({"picture", "-o", "y.jpeg", "x.jpg"}, folder.path()).exitCode, 0);
  EXPECT_THAT(folder.files(), ElementsAre("x.jpg", "x.tif", "y.jpeg"));
}

TEST(Picture, DestroysNothing) {
  const TempFolder folder;
  folder.write("x.jpg", support::smallJpeg());
  folder.write("x.doc", documentOf("Hello"));
  folder.write("mine.gif", support::gif());
  for (const char* target : {"x.jpg", "x.doc", "mine.gif"}) {
    const std::string before = folder.read(target);
    EXPECT_EQ(pagerex({"picture", "-o", target, "x.jpg"}, folder.path()).exitCode, 1) << target;
    EXPECT_EQ(folder.read(target), before);
  }
}

TEST(Picture, ThatIsNoneIsTold) {
  const TempFolder folder;
  folder.write("x.doc", documentOf("Hello"));
  folder.write("cut.jpg", textOf(support::smallJpeg()).substr(0, 20));
  const Finished document = pagerex({"picture", "x.doc"}, folder.path());
  EXPECT_EQ(document.exitCode, 2);
  EXPECT_THAT(document.errors, HasSubstr("x.doc: This is a Word 97-2003 document (.doc). Only pictures"));
  EXPECT_EQ(pagerex({"picture", "-o", "y.png", "cut.jpg"}, folder.path()).exitCode, 1);
  const Finished cut = pagerex({"picture", "-o", "y.jpg", "cut.jpg"}, folder.path());
  EXPECT_EQ(cut.exitCode, 2);
  EXPECT_THAT(cut.errors, HasSubstr("It is damaged"));
  EXPECT_EQ(pagerex({"picture", "none.emf"}, folder.path()).exitCode, 2);
  EXPECT_THAT(folder.files(), ElementsAre("cut.jpg", "x.doc"));
}

TEST(Picture, NeedsOneFileAndFewOptions) {
  for (const Arguments& arguments :
       {Arguments{"picture"}, Arguments{"picture", "a", "b"}, Arguments{"picture", "-t", "html", "a"},
        Arguments{"picture", "--safe", "a"}, Arguments{"picture", "--no-such", "a"}}) {
    const Finished finished = pagerex(arguments);
    EXPECT_EQ(finished.exitCode, 1);
    EXPECT_THAT(finished.errors, HasSubstr("pagerex picture [-o PATH] FILE"));
  }
  EXPECT_THAT(pagerex({"picture", "--help"}).output, HasSubstr("pagerex picture [-o PATH] FILE"));
}

TEST(Picture, IsToldByInfo) {
  const Finished finished = pagerex({"--info", "-"}, ".", textOf(support::gif()));
  EXPECT_EQ(field(linesOf(finished.output)[0], "kind"), "gif");
}

TEST(Picture, CalledPictureIsNamedWithItsFolder) {
  const TempFolder folder;
  folder.write("picture", support::gif());
  EXPECT_EQ(pagerex({"picture", "./picture"}, folder.path()).output, textOf(support::gif()));
  EXPECT_EQ(pagerex({"picture", "picture"}, folder.path()).output, textOf(support::gif()));
}

}  // namespace
