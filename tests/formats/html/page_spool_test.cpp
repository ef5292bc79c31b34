#include "formats/html/page_spool.h"

#include <gtest/gtest.h>

#include <random>

#include "base/utf8_output.h"
#include "support/memory_sink.h"

namespace pagerex {
namespace {

/// What comes back of parts that were put in.
std::string backFrom(const std::vector<std::string_view>& parts) {
  support::MemorySink sink;
  OutputFiles files(sink);
  {
    Utf8Output out(files);
    out.Open("page");
    PageSpool spool;
    for (const std::string_view part : parts) spool.Add(part);
    spool.WriteTo([&out](std::string_view markup) { out.Put(markup); });
  }
  return sink.files["page"];
}

/// Letters that hardly deflate, or do.
std::string letters(size_t count, unsigned kinds) {
  std::mt19937 random(7);
  std::string made(count, ' ');
  for (char& each : made) each = static_cast<char>('!' + random() % kinds);
  return made;
}

TEST(PageSpool, GivesBackWhatIsPutIn) {
  EXPECT_EQ(backFrom({}), "");
  EXPECT_EQ(backFrom({""}), "");
  EXPECT_EQ(backFrom({"a", "", "bc"}), "abc");
}

TEST(PageSpool, GivesBackSeveralMegabytes) {
  for (const unsigned kinds : {2u, 90u}) {
    const std::string page = letters(7 << 20, kinds);
    for (const size_t part : {size_t{1000}, size_t{0x10000}, size_t{300001}, page.size()}) {
      std::vector<std::string_view> parts;
      for (size_t at = 0; at < page.size(); at += part)
        parts.push_back(std::string_view(page).substr(at, part));
      EXPECT_TRUE(backFrom(parts) == page) << kinds << " " << part;
    }
  }
}

TEST(PageSpool, GivesBackPagesAroundTheSizeThatIsHeldPlain) {
  constexpr size_t kPlain = 3 << 19;
  const std::string page = letters(kPlain + 2, 40);
  for (size_t length = kPlain - 1; length <= kPlain + 2; ++length) {
    const std::string_view some = std::string_view(page).substr(0, length);
    EXPECT_TRUE(backFrom({some.substr(0, length - 1), some.substr(length - 1)}) == some) << length;
  }
}

TEST(PageSpool, HoldsNothingOnceItIsWritten) {
  const std::string page = letters(2 << 20, 40);
  support::MemorySink sink;
  OutputFiles files(sink);
  Utf8Output out(files);
  PageSpool spool;
  for (const char* const name : {"first", "second"}) {
    spool.Add(page);
    spool.Add(page);
    out.Open(name);
    spool.WriteTo([&out](std::string_view markup) { out.Put(markup); });
    out.Close();
    EXPECT_TRUE(sink.files[name] == page + page) << name;
  }
}

TEST(PageSpool, MayGoWithoutHavingBeenWritten) {
  PageSpool spool;
  const std::string page = letters(4 << 20, 40);
  spool.Add(page);
  spool.Add(page);
}

}  // namespace
}  // namespace pagerex
