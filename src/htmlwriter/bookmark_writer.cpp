#include "htmlwriter/bookmark_writer.h"

#include "base/encoding.h"
#include "base/number_text.h"
#include "htmlwriter/navigation_writer.h"
#include "story/work_limits.h"

namespace pagerex {

Status KHtmlBookmarkWriter::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  limits_ = &env->conversion->Limits();
  return Status::kOk;
}

Status KHtmlBookmarkWriter::Collect(unsigned int begin, unsigned int end) {
  if (!env_) return Status::kInvalidArgument;
  positions_.clear();
  if (!env_->bookmarkCPStarts || !env_->bookmarkStarts || begin >= end) return Status::kOk;
  const KBookmarkPositions& starts = *env_->bookmarkCPStarts;
  // Runs come in order: nearly always the next one begins where the last one ended.
  auto it = starts_ == &starts && end_ == begin ? next_ : starts.lower_bound(begin);
  starts_ = nullptr;
  for (; it != starts.end() && it->first < end; ++it) {
    if (env_->navigation) {
      // Word's hidden bookmarks begin with an underscore.
      const unsigned short* name = env_->bookmarkStarts->Item(static_cast<int>(it->second)).name.text;
      if (!limits_->AddToNavigation()) return Status::kOk;
      if (name[0] == '_') continue;
      const std::string text = KEncoding::WCHAR2BitToString(65001, name);
      env_->navigation->CollectBookMarkCP(it->first, text.c_str());
    }
    positions_.push_back(it->first);
  }
  starts_ = &starts;
  end_ = end;
  next_ = it;
  return Status::kOk;
}

Status KHtmlBookmarkWriter::Write(unsigned int position) {
  if (!env_) return Status::kInvalidArgument;
  env_->conversion->archive->BeginElement("a");
  env_->conversion->archive->AddAttribute("name", numbered("BM_", static_cast<int>(position)).c_str());
  env_->conversion->archive->EndElement("a");
  return Status::kOk;
}

}  // namespace pagerex
