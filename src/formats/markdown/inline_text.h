#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pagerex {

/// Looks that Markdown or HTML has a form for.
enum LookBit : uint16_t {
  kInsertedLook = 1,
  kDeletedLook = 2,
  kStrikeLook = 4,
  kBoldLook = 8,
  kItalicLook = 16,
  kUnderlineLook = 32,
  kSuperscriptLook = 64,
  kSubscriptLook = 128,
  kCodeLook = 256
};

/// A link's address, ready for the page, and its title.
struct InlineLink {
  std::string address;
  std::u16string title;
};

/// The text of a paragraph: gathered call by call, then put in order for a writer.
class InlineText {
 public:
  struct Piece {
    enum Kind : uint8_t { kText, kBreak, kMarkup, kReference };
    Kind kind;
    bool isBlank;   ///< blanks or a break; told where the text has looks or links, once it is in order
    uint16_t look;  ///< bits of LookBit
    uint32_t link;  ///< index of a link, from 1; 0 for none
    size_t begin, end;
  };

  void Clear();
  /// Controls and noncharacters are left out, but for tabs; line feeds become spaces.
  void Add(std::u16string_view text, uint16_t look);
  void AddBreak();
  /// Something that is markup already, and shows something: a picture.
  void AddMarkup(std::string_view markup) { AddStored(Piece::kMarkup, markup, link_); }
  /// "[^1]"; outside of links.
  void AddReference(std::string_view markup) { AddStored(Piece::kReference, markup, 0); }
  void BeginLink(InlineLink link);
  void EndLink() { link_ = 0; }
  bool IsInLink() const { return link_ != 0; }

  /// Whether nothing shows.
  bool IsEmpty() const;

  /// Puts the pieces in order: blanks at both ends are gone; blanks and breaks between two looks have what is
  /// common to both; neighbours of one look are one piece. `ignored` looks are left out.
  void Arrange(uint16_t ignored);
  /// The looks that all of its text has.
  uint16_t CommonLook() const;

  const std::vector<Piece>& pieces() const { return pieces_; }
  std::u16string_view TextOf(const Piece& piece) const {
    return std::u16string_view(text_).substr(piece.begin, piece.end - piece.begin);
  }
  std::string_view MarkupOf(const Piece& piece) const {
    return std::string_view(markup_).substr(piece.begin, piece.end - piece.begin);
  }
  const InlineLink& LinkOf(const Piece& piece) const { return links_[piece.link - 1]; }

 private:
  void AddFiltered(std::u16string_view text);
  bool HasOnlyBlanks(const Piece& piece) const;
  void AddStored(Piece::Kind kind, std::string_view markup, uint32_t link);
  void SplitBlanks();
  void LookOfBlanks();
  void Join();
  void TrimEnds();
  bool BeginsAndEndsWithText() const;

  std::u16string text_;
  std::string markup_;
  std::vector<InlineLink> links_;
  std::vector<Piece> pieces_;
  std::vector<Piece> split_;  ///< kept for its memory
  uint32_t link_ = 0;
};

}  // namespace pagerex
