#include "safety/page_rules.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "objectwriter/shape_script.h"
#include "pagerex/pagerex.h"
#include "safety/script_documents.h"
#include "support/corpus.h"
#include "support/temp_folder.h"

// No page of a safe conversion does what its document wants.

namespace {

using safety::PageRules;
using support::Bytes;

constexpr const char* kViews[] = {"normal", "phone", "preview", "mulpages"};

/// What a conversion makes, by file name.
std::vector<std::pair<std::string, std::string>> outputOf(const Bytes& document, const std::string& view,
                                                          const std::string& safe,
                                                          const std::string& links = "links=safe") {
  const support::TempFolder folder;
  const std::string source = folder.write("in.doc", document);
  std::string options[] = {"view=" + view, "pagesize=300", safe, links};
  char* argv[] = {options[0].data(), options[1].data(), options[2].data(), options[3].data()};
  PageRex(source.c_str(), folder.path("out.htm").c_str(), static_cast<int>(std::size(argv)), argv);
  std::vector<std::pair<std::string, std::string>> files;
  for (const std::string& name : folder.files()) {
    if (name != "in.doc") files.emplace_back(name, folder.read(name));
  }
  return files;
}

bool isPage(const std::string& name) {
  return name.ends_with(".htm") || name.ends_with(".html");
}

PageRules learntRules() {
  PageRules rules;
  for (const char* view : kViews) {
    for (const auto& [name, text] : outputOf(safety::harmlessDocument().build(), view, "safe=off")) {
      if (isPage(name)) rules.learn(text);
    }
  }
  return rules;
}

const PageRules& rules() {
  static const PageRules learnt = learntRules();
  return learnt;
}

/// The first thing of a document that its pages may not do, in any view.
std::string violationOf(const Bytes& document, const std::string& safe,
                        const std::string& links = "links=safe") {
  for (const char* view : kViews) {
    for (const auto& [name, text] : outputOf(document, view, safe, links)) {
      const std::string found =
          isPage(name) ? rules().violation(text, links == "links=all") : PageRules::fileViolation(name, text);
      if (!found.empty()) return std::string(view) + ", " + name + ": " + found;
    }
  }
  return "";
}

TEST(PageRules, KnowTheLibrarysOwnScripts) {
  EXPECT_EQ(violationOf(safety::harmlessDocument().build(), "safe=off"), "");
}

TEST(PageRules, SeeWhatRuns) {
  for (const char* page :
       {"<script>alert(1)</script>", "<a href='javascript:x'>", "<a href='\x01java\tscript:x'>",
        "<a href=//x>", "<a href='/\\x'>", "<a href='\\\\x'>", "<v:shadow on='t' onload=x>", "<p OnX=''>",
        "<img src=x onerror=x>", "<p style='a:url(x)'>", "<p style='a:exp\\72 ession(x)'>", "<iframe src=x>",
        "<!--[if gte vml 1]><v:rect href='vbscript:x'><![endif]-->", "<svg><a xlink:href='data:x'>",
        "<p style='a:u/**/rl(x)'>"}) {
    EXPECT_NE(rules().violation(page), "") << page;
  }
  for (const char* page :
       {"<a href='http://x/'>", "<a href='#x'>", "<img src=image001.png>", "<p style='a:b'>",
        "<v:shadow on='t'>", "<p on1=x>", "<p on-a=x>", "<p title='onload=x'>"}) {
    EXPECT_EQ(rules().violation(page), "") << page;
  }
  EXPECT_EQ(rules().violation("<a href='javascript:x'>", true), "");
}

TEST(PageRules, SeeWhatOtherFilesMayNotBe) {
  EXPECT_NE(PageRules::fileViolation("style.css", "a{b:url(x)}"), "");
  EXPECT_NE(PageRules::fileViolation("style.css", "a{b:c}</style>"), "");
  EXPECT_EQ(PageRules::fileViolation("style.css", "a{b:c}"), "");
  for (const char* name : {"image001.", "image001", "a.svg", "a.png.xml", "x.js"})
    EXPECT_NE(PageRules::fileViolation(name, "x"), "") << name;
  for (const char* name : {"image001.png", "image001.bin", "a/image001.wmf"})
    EXPECT_EQ(PageRules::fileViolation(name, "<script>"), "") << name;
  EXPECT_EQ(PageRules::fileViolation("a/shapejs.js", ""), "");
  EXPECT_EQ(PageRules::fileViolation("a/shapejs.js", ObjectWriter::kDrawLineScript), "");
  EXPECT_NE(PageRules::fileViolation("a/shapejs.js", "alert(1)"), "");
}

TEST(SafePages, DocumentsThatBringScriptNeedThem) {
  for (const auto& each : safety::scriptDocuments()) {
    const std::string_view name = each.name;
    const bool isText = name == "HeadingsAndBookmarks" || name == "Stories";  // safe in all pages
    EXPECT_EQ(violationOf(each.document.build(), "safe=off").empty(), isText) << each.name;
  }
}

TEST(SafePages, DoNothingThatAScriptInTheDocumentWants) {
  for (const auto& each : safety::scriptDocuments()) {
    for (const char* links : {"links=safe", "links=all", "links=none"}) {
      EXPECT_EQ(violationOf(each.document.build(), "safe=on", links), "") << each.name << links;
    }
  }
}

TEST(SafePages, DoNothingOfRichDocuments) {
  for (const auto& each : mutation::richDocuments()) {
    EXPECT_EQ(violationOf(each.document.build(), "safe=on"), "") << each.name;
  }
}

TEST(SafePages, DoNothingOfRealDocuments) {
  const auto documents = support::corpusDocuments();
  if (documents.empty()) GTEST_SKIP() << "no corpus";
  for (const auto& path : documents) {
    std::ifstream file(path, std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_EQ(violationOf(bytes, "safe=on"), "") << path;
  }
}

}  // namespace
