#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "flow/handler.h"

namespace pagerex {

/// Which styles stand for the text of programs, by the words of their names.
class CodeStyles {
 public:
  /// `names` is not owned; may be null.
  void Begin(const StyleNames* names);

  bool IsCharacterStyle(uint16_t istd);
  bool IsParagraphStyle(uint16_t istd, std::u16string_view name);

 private:
  enum class Known : uint8_t { kNot, kCode, kOther };

  static Known& At(std::vector<Known>& known, uint16_t istd);

  const StyleNames* names_ = nullptr;
  std::vector<Known> characters_, paragraphs_;  ///< by istd
};

}  // namespace pagerex
