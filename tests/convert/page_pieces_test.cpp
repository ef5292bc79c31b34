// The page of the format "html" in pieces: together they are the page.

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "convert/host.h"
#include "mutation/rich_documents.h"

using namespace convert_test;
using support::Bytes;
using support::WordDocument;

namespace {

/// A page taken apart.
struct Page {
  std::string blocks;  ///< without style elements
  std::multiset<std::string> rules;
  size_t pieces = 0;
};

constexpr std::string_view kStyle = "<style>", kStyleEnd = "</style>\n";

/// Of all its files in the order in which they came.
Page pageOf(const Host& host) {
  std::string all;
  Page page;
  for (const std::string& name : host.names()) {
    if (!name.ends_with(".html")) continue;
    all += host.content(name);
    ++page.pieces;
  }
  // The policy of the first piece allows for the rules of the others.
  const size_t head = all.find("<body>");
  std::string blocks = all.substr(head);
  all.resize(head);
  const auto take = [&page](std::string& text) {
    for (size_t at; (at = text.find(kStyle)) != std::string::npos;) {
      const size_t end = text.find(kStyleEnd, at);
      std::istringstream lines(text.substr(at + kStyle.size(), end - at - kStyle.size()));
      for (std::string line; std::getline(lines, line);) {
        if (line != "}" && !line.starts_with("@layer")) page.rules.insert(line);
      }
      text.erase(at, end + kStyleEnd.size() - at);
    }
  };
  take(all);
  take(blocks);
  page.blocks = blocks;
  return page;
}

pagerex_options inPieces(int64_t size) {
  pagerex_options options = Host::quiet("html");
  options.page_size = size;
  options.pictures = PAGEREX_PICTURES_EMBEDDED;
  return options;
}

void expectPieces(const Bytes& document, const char* name) {
  Host host(document);
  ASSERT_EQ(convert(host.memory(), host.sink(), inPieces(0)).code, PAGEREX_RESULT_OK) << name;
  const Page whole = pageOf(host);
  EXPECT_EQ(whole.pieces, 1u);
  for (const int64_t size : {1, 2, 7, 30, 100, 1000, 1000000}) {
    host.forget();
    const Result result = convert(host.memory(), host.sink(), inPieces(size));
    ASSERT_EQ(result.code, PAGEREX_RESULT_OK) << name << " " << size;
    const Page page = pageOf(host);
    EXPECT_EQ(result.counts.pages, page.pieces) << name << " " << size;
    EXPECT_TRUE(page.blocks == whole.blocks) << name << " " << size;
    EXPECT_EQ(page.rules, whole.rules) << name << " " << size;
  }
}

/// Paragraphs, a list, a table, notes and sections.
Bytes longDocument() {
  WordDocument document;
  for (int section = 0; section < 3; ++section) {
    for (int i = 0; i < 5; ++i) {
      document.paragraph("some words of a paragraph").footnote("A note of it.");
      document.row({"a", "b"}, {support::defTableSprm({0, 1000, 2000})});
      document.paragraph("large", {support::sprm(0x4A43, static_cast<uint16_t>(30 + i))});
    }
    document.section({support::sprm(0x500B, static_cast<uint16_t>(section))});
    document.paragraph("in the next section");
  }
  return document.build();
}

TEST(PagePieces, AreThePageTogether) {
  expectPieces(longDocument(), "long");
  expectPieces(richDocument(), "rich");
}

TEST(PagePieces, AreThePageTogetherOfAnyDocument) {
  for (const auto& each : mutation::richDocuments()) expectPieces(each.document.build(), each.name);
}

TEST(PagePieces, AreManyWhereTheyAreSmall) {
  Host host(longDocument());
  EXPECT_EQ(convert(host.memory(), host.sink(), inPieces(1)).code, PAGEREX_RESULT_OK);
  EXPECT_GT(pageOf(host).pieces, 20u);
  EXPECT_EQ(host.names()[0], "document.html");
  EXPECT_EQ(host.names()[1], "document.files/2.html");
}

TEST(PagePieces, AreToldOneByOne) {
  Host host(longDocument());
  pagerex_options options = host.options("html");
  options.page_size = 1;
  EXPECT_EQ(convert(host.memory(), host.sink(), options).code, PAGEREX_RESULT_OK);
  EXPECT_EQ(host.pages(), host.names());
  EXPECT_EQ(host.mostOpen(), 1u);
  EXPECT_EQ(host.complaints(), "");
}

TEST(PagePieces, EndWhereTheHostStops) {
  Host host(longDocument());
  pagerex_options options = host.options("html");
  options.page_size = 1;
  host.answer = [&] { return host.pages().size() < 3 ? PAGEREX_GO_ON : PAGEREX_STOP; };
  EXPECT_EQ(convert(host.memory(), host.sink(), options).code, PAGEREX_RESULT_CANCELED);
  EXPECT_LE(host.names().size(), 5u);
  EXPECT_EQ(host.complaints(), "");
}

TEST(Page, IsTheSameEachTime) {
  const std::vector<Bytes> documents = {longDocument(), richDocument()};
  for (const Bytes& document : documents) {
    const Files first = filesOf(document, "html");
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(filesOf(document, "html") == first);
    Host host(document);
    EXPECT_EQ(convert(host.functions(), host.sink(), Host::quiet("html")).code, PAGEREX_RESULT_OK);
    EXPECT_TRUE(host.files() == first);
  }
}

}  // namespace
