#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "pagerex/convert.h"
#include "support/drawing_writer.h"
#include "support/word_document_writer.h"

// Addresses that a conversion leaves out are told in its result.

namespace {

using support::Bytes;
using support::ByteWriter;
using support::WordDocument;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

/// The scheme of each warning of this kind, and how often it was given.
using Removed = std::vector<std::pair<std::string, uint32_t>>;

struct Written {
  std::map<std::string, std::string> files;
  Removed removed;
  pagerex_result result = {};
};

Bytes linkTo(std::u16string_view address) {
  return ByteWriter().zeros(20).u32(0x101).u32(static_cast<uint32_t>(address.size())).text16(address).take();
}

/// Three links in the text and one of a shape.
Bytes documentWithLinks() {
  constexpr uint8_t kHyperlink = 88;
  WordDocument doc;
  doc.paragraph().special(8);
  for (const char* address : {"javascript:x", "http://x/", "Java\tScript:y"})
    doc.paragraph().field(kHyperlink, std::string(" HYPERLINK \"") + address + "\" ", "link");
  using namespace support::drawing;
  Drawing().shape(0, Shape(1).props(Props().complex(0x0382, linkTo(u"file:///x")))).addTo(doc);
  return doc.build();
}

Written written(int32_t links) {
  const Bytes document = documentWithLinks();
  Written made;
  pagerex_input input = {};
  input.size = sizeof input;
  input.data = document.data();
  input.length = document.size();
  pagerex_options options = {};
  options.size = sizeof options;
  options.links = links;
  pagerex_output output = {};
  output.size = sizeof output;
  output.user = &made;
  output.begin = [](void* user, const char* name, const char*) -> void* {
    return &static_cast<Written*>(user)->files[name];
  };
  output.write = [](void*, void* file, const void* data, size_t length) {
    static_cast<std::string*>(file)->append(static_cast<const char*>(data), length);
    return 0;
  };
  made.result.size = sizeof made.result;
  EXPECT_EQ(pagerex_convert(&input, nullptr, &options, &output, &made.result), PAGEREX_RESULT_OK);
  for (uint32_t i = 0; i < made.result.warning_count; ++i) {
    const pagerex_warning& warning = made.result.warnings[i];
    if (warning.code == PAGEREX_WARNING_LINK_REMOVED) made.removed.emplace_back(warning.where, warning.count);
  }
  return made;
}

std::string pageOf(const Written& made) {
  for (const auto& [name, text] : made.files) {
    if (name.ends_with("/1.htm")) return text;
  }
  return "no page";
}

TEST(RemovedLinks, AreToldByTheirScheme) {
  const Written made = written(PAGEREX_LINKS_SAFE);
  EXPECT_THAT(made.removed, ElementsAre(Pair("file", 1u), Pair("javascript", 2u)));
  EXPECT_THAT(pageOf(made), HasSubstr("href=\"http://x/\""));
  EXPECT_THAT(pageOf(made), Not(HasSubstr("cript:")));
  EXPECT_THAT(pageOf(made), Not(HasSubstr("file:")));
}

TEST(RemovedLinks, OfPagesWithoutLinksAreAll) {
  const Written made = written(PAGEREX_LINKS_NONE);
  EXPECT_THAT(made.removed, ElementsAre(Pair("file", 1u), Pair("javascript", 2u), Pair("http", 1u)));
  EXPECT_THAT(pageOf(made), Not(HasSubstr("href=\"http://x/\"")));
}

TEST(RemovedLinks, AreNoneWhereAllAreKept) {
  const Written made = written(PAGEREX_LINKS_ALL);
  EXPECT_TRUE(made.removed.empty());
  EXPECT_EQ(made.result.warnings_total, 0u);
  EXPECT_THAT(pageOf(made), HasSubstr("href=\"javascript:x\""));
}

}  // namespace
