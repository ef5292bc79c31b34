#pragma once

#include <cstdint>

#include "wordreader/mso_word.h"

/// Colours as Word mixes them: 0x00BBGGRR, red in the low byte.
namespace pagerex {

/// The per-channel mean of two colours.
uint32_t MixColor(uint32_t first, uint32_t second);
/// The one colour that stands for the shading of a paragraph or of a run.
uint32_t MixColor(const mso_word::SHDEX& shd);
/// The background of a cell's shading with its pattern laid over it.
uint32_t GetBGColor(const mso_word::SHDEX* shd);
/// Word's highlight palette; 0xFFFFFFFF above 16.
uint32_t Ico2RGB(unsigned int ico);

}  // namespace pagerex
