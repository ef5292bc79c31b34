#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "flow/handler.h"
#include "flow/property_memo.h"
#include "formats/html/font_families.h"
#include "formats/html/paragraph_css.h"
#include "formats/html/run_css.h"
#include "formats/html/style_sheet.h"

namespace pagerex {

/// The tags around a run.
struct RunMarkup {
  std::string open, close;
};

/// How a block begins behind its name.
struct BlockMarkup {
  std::string attributes;  ///< ` class="Heading-1 p4" lang=de`
  uint32_t context = 0;    ///< what its runs differ from
};

/// Knows each look of the document once, and what is written for it: classes of the style sheet, tags,
/// languages. What is written for a look depends on what it stands in, which is a context.
class LookBook {
 public:
  using Look = uint32_t;

  /// `sheet` must stay; what `facts` refer to, as long as looks are asked for.
  LookBook(const DocumentFacts& facts, StyleSheet& sheet);

  /// Declarations of the page's text and paragraphs: those of style "Normal", which all others differ from.
  /// They can be asked for when the document is no longer there.
  const std::string& PageText() const { return pageText_; }
  std::string PageParagraph() const;

  Look LookOf(const RunProperties& properties);
  const RunProperties& Properties(Look look) const { return *looks_[look]; }

  /// A paragraph in which the look of the first text is `look`. `ground` lies under it: of its cell. Valid
  /// until the next call.
  const BlockMarkup& Block(const ParagraphProperties& paragraph, const Neighbours& neighbours, Look look,
                           const Colour& ground);
  /// Valid until MayForget().
  const RunMarkup& Run(Look look, uint32_t context, FontScript script);
  /// Says that no look is held any more. They are forgotten when they are many.
  void MayForget();
  /// The scripts that are shown in other fonts, sizes or languages than ASCII text: bits, 1 << FontScript.
  uint8_t OtherScripts(Look look) const { return otherScripts_[look]; }

 private:
  struct Style {
    std::string name;
    ParagraphProperties paragraph;
    RunProperties run;
  };
  struct Context {
    Look look;
    Colour ground;

    friend bool operator==(const Context&, const Context&) = default;
  };
  enum class Emphasis : uint8_t { kUnknown, kNone, kEmphasis, kStrong, kBoth };

  const Style& StyleOf(uint16_t istd);
  uint32_t ContextOf(const Context& context);
  BlockMarkup MakeBlock(const ParagraphProperties& paragraph, const Neighbours& neighbours, Look look,
                        const Colour& ground);
  RunMarkup MakeRun(Look look, uint32_t context, FontScript script);
  Emphasis EmphasisOf(uint16_t characterStyle);
  uint16_t LanguageOf(const RunProperties& run, FontScript script) const;

  const DocumentFacts facts_;
  StyleSheet& sheet_;
  FontFamilies fonts_;
  const ParagraphProperties normalParagraph_;
  const RunProperties normalRun_;
  std::string pageText_;
  const uint16_t language_;
  std::unordered_map<RunProperties, Look, RunPropertiesHash> lookNumbers_;
  std::vector<const RunProperties*> looks_;
  std::vector<uint8_t> otherScripts_;
  struct Recent {
    uint32_t serial = 0;
    Look look = 0;
  };
  std::array<Recent, 256> recentLooks_{};  ///< by the serial's last bits
  std::unordered_map<uint16_t, Style> styles_;
  std::vector<Context> contexts_;
  std::unordered_map<uint64_t, RunMarkup> runs_;
  struct BlockKey {
    uint32_t serial;
    Look look;
    Colour ground;
    uint8_t neighbours;

    friend bool operator==(const BlockKey&, const BlockKey&) = default;
  };
  struct BlockKeyHash {
    size_t operator()(const BlockKey& key) const;
  };
  std::unordered_map<BlockKey, BlockMarkup, BlockKeyHash> blocks_;
  BlockMarkup unkept_;
  std::vector<Emphasis> emphases_;
};

}  // namespace pagerex
