#pragma once

#include <functional>
#include <string>
#include <vector>

#include "formats/html/html_writer.h"
#include "support/flow_script.h"

namespace support {

/// Keeps the blocks of a page, and where its pieces end.
class KeptBlocks final : public pagerex::BlockSink {
 public:
  explicit KeptBlocks(uint64_t wantedSize = UINT64_MAX) : wantedSize_(wantedSize) {}

  void Take(std::string_view markup) override { pieces.back() += markup; }
  bool WantsEnd(uint64_t characters) const override { return characters >= wantedSize_; }
  void EndPiece() override { pieces.emplace_back(); }
  std::string whole() const;

  std::vector<std::string> pieces{1};

 private:
  const uint64_t wantedSize_;
};

/// A document that was told call by call, as a page of the format "html".
struct ToldPage {
  std::string blocks;
  std::string rules;      ///< of its own, without those of every page
  std::string baseRules;  ///< those
  pagerex::PageFrame frame;
  pagerex::Warnings warnings;

  std::string whole() const;  ///< as a file
};

using Script = std::function<void(FlowScript&)>;
/// What else a page depends on; `pictures` null for none.
struct PageChoices {
  pagerex::HtmlOptions options = {};
  pagerex::PictureOutput* pictures = nullptr;
  bool darkScheme = false;
  Script facts = {};  ///< says what the document is, before it begins
  uint64_t pieceSize = UINT64_MAX;
};
ToldPage pageOf(const Script& inside, const Script& behind = {}, const PageChoices& choices = {});

/// Its blocks alone.
inline std::string htmlOf(const Script& inside, const Script& behind = {}, const PageChoices& choices = {}) {
  return pageOf(inside, behind, choices).blocks;
}

}  // namespace support
