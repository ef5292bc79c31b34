#include "support/tag_balance.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <tuple>

#include "mutation/rich_documents.h"
#include "pagerex/pagerex.h"
#include "support/drawing_writer.h"
#include "support/sprms.h"
#include "support/temp_folder.h"

// The tags of all pages pair up, but for what readers of the pages rely on as it is.

namespace {

using support::LoneTag;
using support::loneTags;
using support::WordDocument;
namespace fs = std::filesystem;

struct Exception {
  std::string_view view;
  LoneTag::Kind kind;
  std::string_view element;
  std::string_view why;
};

constexpr char kLink[] = "the text of a link is its run's, which ends before the link does";
constexpr char kMargins[] = "readers of VML get the section's margins by a block of their own";
constexpr char kWrap[] = "text above and below a shape: opened for readers of VML, closed for all";
constexpr char kPageCut[] = "a paragraph that a page ends in goes on, unopened, in the next one";
constexpr char kSectionTable[] = "a table goes on in the next section";
constexpr char kOpenTable[] = "the text ends in a row, which is not closed";

constexpr Exception kExceptions[] = {
    {"normal", LoneTag::kStart, "a", kLink},
    {"normal", LoneTag::kEnd, "a", kLink},
    {"normal", LoneTag::kStart, "center", kMargins},
    {"normal", LoneTag::kEnd, "center", kMargins},
    {"normal", LoneTag::kStart, "o:wrapblock", kWrap},
    {"normal", LoneTag::kEnd, "o:wrapblock", kWrap},
    {"normal", LoneTag::kStart, "table", kSectionTable},
    {"normal", LoneTag::kEnd, "table", kSectionTable},
    {"normal", LoneTag::kStart, "tr", kOpenTable},
    {"phone", LoneTag::kStart, "a", kLink},
    {"phone", LoneTag::kEnd, "a", kLink},
    {"phone", LoneTag::kStart, "p", kPageCut},
    {"phone", LoneTag::kStart, "table", kOpenTable},
    {"phone", LoneTag::kStart, "tr", kOpenTable},
    {"mulpages", LoneTag::kStart, "a", kLink},
    {"mulpages", LoneTag::kEnd, "a", kLink},
    {"mulpages", LoneTag::kStart, "center", kMargins},
    {"mulpages", LoneTag::kEnd, "center", kMargins},
    {"mulpages", LoneTag::kStart, "o:wrapblock", kWrap},
    {"mulpages", LoneTag::kEnd, "o:wrapblock", kWrap},
    {"mulpages", LoneTag::kStart, "p", kPageCut},
    {"mulpages", LoneTag::kEnd, "p", kPageCut},
    {"mulpages", LoneTag::kStart, "table", kSectionTable},
    {"mulpages", LoneTag::kEnd, "table", kSectionTable},
    {"mulpages", LoneTag::kStart, "tr", kOpenTable},
};

using Lone = std::tuple<std::string, LoneTag::Kind, std::string>;

/// Lone tags by view, each with the place where it was found first.
using Found = std::map<Lone, std::string>;

std::string nameOf(const Lone& lone) {
  const auto& [view, kind, element] = lone;
  return view + ": " + (kind == LoneTag::kStart ? "<" : "</") + element + ">";
}

std::set<Lone> listed() {
  std::set<Lone> all;
  for (const Exception& each : kExceptions) {
    all.emplace(std::string(each.view), each.kind, std::string(each.element));
  }
  return all;
}

/// Converts a file in each view, and notes what is lone.
void note(const support::Bytes& file, const std::string& name, Found& found) {
  for (const std::string view : {"normal", "phone", "preview", "mulpages"}) {
    const support::TempFolder folder;
    const std::string source = folder.write("in.doc", file);
    std::string options[] = {"view=" + view, "pagesize=200"};
    char* argv[] = {options[0].data(), options[1].data()};
    PageRex(source.c_str(), folder.path("out.htm").c_str(), 2, argv);
    for (const std::string& each : folder.files()) {
      if (!each.ends_with(".htm")) continue;
      for (LoneTag& lone : loneTags(folder.read(each))) {
        found.try_emplace({view, lone.kind, std::move(lone.element)}, name + ", " + each);
      }
    }
  }
}

support::Bytes bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return support::Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void expectListed(const Found& found) {
  const std::set<Lone> all = listed();
  for (const auto& [lone, place] : found) EXPECT_TRUE(all.contains(lone)) << nameOf(lone) << " in " << place;
}

/// A folder of real documents, where PAGEREX_CORPUS says or in "shared/corpus" beside a folder that the tests
/// run in; empty if there is none.
fs::path corpus() {
  if (const char* folder = std::getenv("PAGEREX_CORPUS")) return folder;
  for (fs::path up = fs::current_path(); up != up.parent_path(); up = up.parent_path()) {
    if (fs::is_directory(up / "shared" / "corpus")) return up / "shared" / "corpus";
  }
  return {};
}

WordDocument textAboveAndBelowAShape() {
  WordDocument document;
  document.paragraph().special(8);
  support::drawing::Drawing().shape(0, support::drawing::Shape(1, 1025), {.wrap = 1}).addTo(document);
  return document;
}

WordDocument tableOverTwoSections() {
  WordDocument document;
  document.row({"a"}, {support::defTableSprm({0, 1000})});
  document.section({});
  document.row({"b"}, {support::defTableSprm({0, 1000})});
  document.paragraph("behind");
  return document;
}

WordDocument textThatEndsInARow() {
  WordDocument document;
  document.cell("a");
  return document;
}

using Tags = std::vector<LoneTag>;

}  // namespace

TEST(LoneTags, AreNoneWhereAllNest) {
  EXPECT_EQ(loneTags("<p a='>'><b>x</b><br><img></img><o:p/></p> 1 < 2"), Tags{});
  EXPECT_EQ(loneTags("<script>if (a<b) x='<p>';</script><!-- <p> --><!DOCTYPE html>"), Tags{});
  EXPECT_EQ(loneTags("<!--[if gte vml 1]><v:f></v:f><![endif]--><![if !vml]><p></p><![endif]>"), Tags{});
}

TEST(LoneTags, AreThoseOfElementsThatCross) {
  EXPECT_EQ(loneTags("<a><b></a></b>"), (Tags{{LoneTag::kStart, "b"}, {LoneTag::kEnd, "b"}}));
  EXPECT_EQ(loneTags("<P>"), (Tags{{LoneTag::kStart, "p"}}));
  EXPECT_EQ(loneTags("<script>"), (Tags{{LoneTag::kStart, "script"}}));
}

TEST(LoneTags, HaveNoPartnerBeyondTheirConditionalPart) {
  EXPECT_EQ(loneTags("<p><!--[if gte vml 1]></p><p><![endif]--></p>"),
            (Tags{{LoneTag::kEnd, "p"}, {LoneTag::kStart, "p"}}));
  EXPECT_EQ(loneTags("<![endif]><![if !vml]>"), (Tags{{LoneTag::kEnd, "[if]"}, {LoneTag::kStart, "[if]"}}));
}

TEST(Pages, HaveNoLoneTagsButThoseListed) {
  Found found;
  for (const mutation::NamedDocument& each : mutation::richDocuments())
    note(each.document.build(), each.name, found);
  note(textAboveAndBelowAShape().build(), "text above and below a shape", found);
  note(tableOverTwoSections().build(), "table over two sections", found);
  note(textThatEndsInARow().build(), "text that ends in a row", found);
  note(bytesOf(PAGEREX_SAMPLE_DOCUMENT), "sample.doc", found);
  expectListed(found);
  for (const Exception& each : kExceptions) {
    const Lone lone(each.view, each.kind, each.element);
    EXPECT_TRUE(found.contains(lone)) << nameOf(lone) << " occurs no more: " << each.why;
  }
}

TEST(Pages, OfRealDocumentsHaveNoLoneTagsButThoseListed) {
  if (corpus().empty()) GTEST_SKIP() << "no corpus";
  Found found;
  for (const auto& entry : fs::directory_iterator(corpus())) {
    if (entry.is_regular_file()) note(bytesOf(entry.path()), entry.path().filename().string(), found);
  }
  expectListed(found);
}
