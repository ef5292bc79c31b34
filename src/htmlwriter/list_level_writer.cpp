#include "htmlwriter/list_level_writer.h"

#include <algorithm>

#include "base/encoding.h"
#include "htmlwriter/css_file_writer.h"
#include "htmlwriter/css_props.h"
#include "htmlwriter/navigation_writer.h"
#include "objectwriter/object_writer_interface.h"
#include "story/list_number.h"
#include "story/work_limits.h"
#include "wordreader/font_table.h"
#include "wordreader/list_table.h"

namespace pagerex {
namespace {

constexpr uint16_t kSprmCPbiIBullet = 0x6887;
constexpr unsigned int kUtf8 = 65001;

/// Bytes of the level's own character properties; null if they could not be read.
const KDRPropx* chpxOf(const KDRListLevel& level, const KEnv& env) {
  return level.GetChpx(*env.conversion->document);
}

/// In any letter case of ASCII.
bool isPictureBulletName(const unsigned short* name) {
  constexpr char kName[] = "_PICTUREBULLETS";
  for (size_t i = 0; i + 1 < sizeof kName; ++i) {
    const bool isLower = name[i] >= 'a' && name[i] <= 'z';
    if (name[i] - (isLower ? 'a' - 'A' : 0) != kName[i]) return false;
  }
  return true;
}

}  // namespace

Status KHtmlListLevelWriter::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  labels_.Init(env->conversion->document, &env->conversion->numberFormats);
  return Status::kOk;
}

Status KHtmlListLevelWriter::Write(const KDRSpanProp* base) {
  if (!env_ || !base) return Status::kInvalidArgument;
  const KDRList* list = labels_.List(env_->pap.listIlfo);
  const uint8_t ilvl = env_->pap.listIlvl;
  if (!list || !list->Good() || ilvl >= list->GetLevelCount()) return Status::kInvalidArgument;
  const KDRListLevel* level = list->GetLevel(ilvl);
  if (!level || !level->Good()) return Status::kInvalidArgument;

  env_->conversion->archive->BeginElement("span");
  WriteLevelProps(*level, *base);
  Status status = _WriteNumber(level);
  if (failed(status)) status = _WriteBullet(level);
  env_->conversion->archive->EndElement("span");
  return status;
}

/// A group of size 0 counts too: the label then looks like the paragraph mark.
void KHtmlListLevelWriter::WriteLevelProps(const KDRListLevel& level, const KDRSpanProp& base) {
  const KDRPropx* chpx = chpxOf(level, *env_);
  if (!chpx) return;
  const KDWSprmList sprms(chpx->sprms());
  KDRSpanProp span = base;
  Sprms2SpanProp(sprms, &span);
  IWriteArchive* archive = env_->conversion->archive;
  const uint16_t istd = sprms.GetCharIstd();
  if (istd != mso_word::kNoCharacterStyle) {
    std::string name;
    GetChpStdName(istd, name);
    if (!name.empty()) archive->AddAttribute("class", name.c_str());
  }
  archive->StartCssStyle();
  WriteChProps(&span, archive, &env_->conversion->document->GetFontTable(), -1, 10.5f,
               env_->conversion->safety);
  archive->EndCssStyle();
}

Status KHtmlListLevelWriter::_WriteNumber(const KDRListLevel* level) {
  if (!level || !level->Good()) return Status::kInvalidArgument;
  if (level->GetNfc() == kBulletNfc) return Status::kFailure;

  constexpr unsigned kPlaces = 9;
  const uint8_t* places = level->GetrgbxchNums();
  const uint16_t* text = level->GetXst();
  const ListPlace place{env_->pap.listIlfo, env_->pap.listIlvl};
  Utf16Joiner joiner;
  for (unsigned i = 0, next = 0; i < level->GetXstLen(); ++i) {
    if (next < kPlaces && i + 1 == places[next]) {
      ++next;
      WriteLabel(KEncoding::WCharToString(kUtf8, labels_.NumberAt(text[i], place).c_str()));
    } else {
      std::string literal;
      if (text[i] != 0) appendUtf8(literal, joiner.Join(text[i]));
      WriteLabel(literal);
    }
  }
  constexpr uint8_t kFollowNothing = 2;
  if (level->GetIxchFollow() < kFollowNothing) WriteGap();
  return Status::kOk;
}

Status KHtmlListLevelWriter::_WriteBullet(const KDRListLevel* level) {
  if (level->GetNfc() != kBulletNfc) return Status::kInvalidArgument;
  Status picture = Status::kFailure;
  if (const KDRPropx* chpx = chpxOf(*level, *env_)) {
    KDWSprm sprm;
    if (KDWSprmList(chpx->sprms()).FindSprm(kSprmCPbiIBullet, &sprm) == Status::kOk) {
      uint32_t index = 0;
      sprm.GetSprmValue(&index);
      picture = _ParseBullet(index);
    }
  }
  if (failed(picture)) {
    // Symbol fonts keep their characters in the private range F000.
    constexpr uint16_t kSymbolRange = 0xF000;
    std::string bullet;
    Utf16Joiner joiner;
    for (unsigned i = 0; i < level->GetXstLen(); ++i) {
      const uint16_t unit = level->GetXst()[i];
      if (unit == 0) break;
      appendUtf8(bullet, joiner.Join((unit & 0xFF00) == kSymbolRange ? unit & 0xFF : unit));
    }
    WriteLabel(bullet);
  }
  WriteGap();
  return Status::kOk;
}

/// Picture bullets stand in the text under a hidden bookmark. Only the first bookmark is ever looked at.
Status KHtmlListLevelWriter::_ParseBullet(unsigned int index) {
  const KDRPlcfBkf* bookmarks = env_->bookmarkStarts;
  if (!env_->conversion->objectWriter || !bookmarks || index >= bookmarks->Count()) return Status::kFailure;
  const auto first = bookmarks->Item(0);
  if (!isPictureBulletName(first.name.text)) return Status::kFailure;
  KWorkLimits& limits = env_->conversion->Limits();
  const uint32_t end = std::min(first.range.end, env_->textPool->size());
  Status status = Status::kFailure;
  for (uint32_t cp = first.range.start; cp < end && limits.TryBullet(); ++cp) {
    status = env_->conversion->objectWriter->WriteEmbedShape(cp);
  }
  return status;
}

void KHtmlListLevelWriter::WriteLabel(const std::string& text) {
  if (text.empty()) return;
  const KPageSafety& safety = env_->conversion->safety;
  env_->conversion->archive->AddContent(safety.on ? safety.Text(text).c_str() : text.c_str(), -1, true);
  if (env_->pap.collectingTitle != 0 && env_->navigation) env_->navigation->CollectTitle(text.c_str());
}

void KHtmlListLevelWriter::WriteGap() {
  env_->conversion->archive->AddContent("&nbsp;");
  if (env_->pap.collectingTitle != 0 && env_->navigation) env_->navigation->CollectTitle(" ");
}

}  // namespace pagerex
