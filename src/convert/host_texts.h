#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "pagerex/walk.h"

namespace pagerex {

/// Texts as a host gets them, in one block of memory that is used again and again.
class HostTexts {
 public:
  struct Text {
    std::u16string_view from;
    pagerex_text* to;
  };

  /// What was filled in before is no longer valid.
  void Fill(std::initializer_list<Text> texts) { Fill(texts.begin(), texts.size()); }
  void Fill(const Text* texts, size_t count);

 private:
  std::vector<char> bytes_;
};

}  // namespace pagerex
