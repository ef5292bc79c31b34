#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "convert/host_handler.h"

namespace flow_test {

inline std::string spelled(const pagerex_text& text) {
  return {text.data, text.length};
}

class Styles final : public pagerex::StyleNames {
  std::u16string_view NameOf(uint16_t istd) const override { return istd == 7 ? u"Strong" : u"Other"; }
  const pagerex::ParagraphProperties& ParagraphOf(uint16_t) const override { return paragraph_; }
  const pagerex::RunProperties& RunOf(uint16_t) const override { return run_; }

  const pagerex::ParagraphProperties paragraph_{};
  const pagerex::RunProperties run_{};
};
class Fonts final : public pagerex::ToldFonts {
  std::u16string_view NameOf(uint16_t ftc) const override {
    static constexpr const char16_t* kNames[] = {u"Arial", u"SimSun", u"Symbol", u"Miriam"};
    return ftc < 4 ? kNames[ftc] : u"";
  }
  pagerex::FontFacts FactsOf(uint16_t ftc) const override { return {NameOf(ftc), {}, 0, 0, 0, {}}; }
};

/// Tells the adapter something, and looks at what the one function of the host gets.
template <class T>
class Handed {
 public:
  using Look = std::function<void(const T&)>;

  Handed(int (*pagerex_handler::*function)(void*, const T*), Look look) : look_(std::move(look)) {
    host_.size = sizeof host_;
    host_.*function = [](void* user, const T* told) {
      EXPECT_EQ(told->size, sizeof(T));
      ++static_cast<Handed*>(user)->calls;
      static_cast<Handed*>(user)->look_(*told);
      return 0;
    };
    handler.BeginDocument({summary_, 0x0409, 720, false, 1, &styles_, &fonts_});
  }

  int calls = 0;

 private:
  pagerex_handler host_ = {};
  Look look_;
  pagerex::RunControl control_;
  pagerex::DocumentSummary summary_;
  Styles styles_;
  Fonts fonts_;

 public:
  pagerex::HostHandler handler{host_, this, control_};
};

inline pagerex::Border border(uint8_t kind) {
  return {kind, static_cast<uint8_t>(kind + 1), static_cast<uint8_t>(kind + 2), true, {0x123456, false}};
}

inline void expectBorder(const pagerex_border& told, uint8_t kind) {
  EXPECT_EQ(told.kind, kind);
  EXPECT_EQ(told.width_eighths, kind + 1);
  EXPECT_EQ(told.space_points, kind + 2);
  EXPECT_EQ(told.has_shadow, 1);
  EXPECT_EQ(told.colour.rgb, 0x123456u);
  EXPECT_EQ(told.colour.is_automatic, 0);
}

// 2004-03-01 09:05
inline constexpr uint32_t kDttm = 5 | 9 << 6 | 1 << 11 | 3 << 16 | 104 << 20;

inline void expectDate(const pagerex_date& told) {
  EXPECT_EQ(told.year, 2004);
  EXPECT_EQ(told.month, 3);
  EXPECT_EQ(told.day, 1);
  EXPECT_EQ(told.hour, 9);
  EXPECT_EQ(told.minute, 5);
}

}  // namespace flow_test
