#include "htmlwriter/section_writer.h"

#include "base/number_text.h"
#include "story/work_limits.h"

namespace pagerex {

Status KSectionBase::Init(KEnv* env) {
  if (!env) return Status::kInvalidArgument;
  env_ = env;
  return Status::kOk;
}

Status KSectionBase::Write(unsigned int index) {
  if (!env_ || index >= env_->plcfSed->Count()) return Status::kInvalidArgument;
  sectionIndex_ = static_cast<int>(index);
  StartSection();
  const KDWRange range = env_->plcfSed->Range(index);
  const Status status = env_->writers->textStream->Write(range.start, range.end);
  EndSection();
  return status;
}

Status KSectionBase::BreakSection() {
  if (!sectionOpen_) return Status::kNothing;
  env_->writers->textStream->BreakTextStream();
  return EndSection();
}

Status KSectionBase::ContinueSection() {
  if (!env_) return Status::kInvalidArgument;
  StartSection();
  return env_->writers->textStream->ContinueTextStream();
}

Status KSectionBase::StartSection() {
  if (!env_) return Status::kInvalidArgument;
  if (sectionOpen_) EndSection();
  sectionOpen_ = true;
  IWriteArchive* archive = env_->conversion->archive;
  archive->BeginElement("center");
  LoadSectionProps();
  env_->sectionLeftMargin = prop_.dxaLeft;

  archive->BeginElement("div");
  archive->AddAttribute("id", numbered("parent", sectionIndex_).c_str());
  archive->StartCssStyle();
  archive->AddCssProp("background", "#FFFFFF");
  archive->AddCssProp("width", points(prop_.xaPage).c_str());
  archive->EndCssStyle();
  archive->AddContent("<!--[if gte vml 1]></center><center><![endif]-->");

  archive->BeginElement("div");
  archive->AddAttribute("id", numbered("child", sectionIndex_).c_str());
  archive->StartCssStyle();
  archive->AddCssProp("position", "absolute");
  archive->EndCssStyle();

  archive->BeginElement("div");
  archive->StartCssStyle();
  archive->AddCssProp("position", "relative");
  WriteSecProps(archive, prop_);
  archive->EndCssStyle();
  return Status::kOk;
}

Status KSectionBase::EndSection() {
  if (!env_) return Status::kInvalidArgument;
  if (!sectionOpen_) return Status::kNothing;
  IWriteArchive* archive = env_->conversion->archive;
  archive->EndElement("div");
  archive->EndElement("div");
  archive->EndElement("div");
  archive->EndElement("center");
  sectionOpen_ = false;
  WriteOffetScript();
  WriteSecSplit(archive);
  return Status::kOk;
}

/// A section that goes on over many pages is read and decoded once.
void KSectionBase::LoadSectionProps() {
  if (propIndex_ == sectionIndex_) return;
  propIndex_ = sectionIndex_;
  prop_.Reset();
  const auto section = env_->plcfSed->Item(static_cast<uint32_t>(sectionIndex_), *env_->conversion->document);
  if (section.sprms.empty() || !env_->conversion->Limits().DecodeShared(section.sprms.size())) return;
  Sprms2ZeloSectionProp(KDWSprmList(section.sprms), &prop_);
}

/// The child block is absolute and gives its parent no height: the page's script adds it when it has loaded.
Status KSectionBase::WriteOffetScript() {
  if (!env_ || sectionIndex_ < 0 || static_cast<uint32_t>(sectionIndex_) >= env_->plcfSed->Count()) {
    return Status::kInvalidArgument;
  }
  const NumberText index = number(sectionIndex_);
  IWriteArchive* archive = env_->conversion->archive;
  archive->Put("<script type='text/javascript'>");
  archive->PutNewLine();
  archive->Put("initFun[initFun.length] = function(){document.getElementById('parent");
  archive->Put(index.c_str());
  archive->Put("').style.height = document.getElementById('child");
  archive->Put(index.c_str());
  archive->Put("').offsetHeight+");
  archive->Put(number((prop_.dyaTop + prop_.dyaBottom) / 20).c_str());
  archive->Put(";}</script>");
  return Status::kOk;
}

Status WriteSecProps(IWriteArchive* archive, const KDRSectionProp& prop) {
  if (!archive) return Status::kInvalidArgument;
  archive->AddCssProp("width", points(prop.xaPage - prop.dxaLeft - prop.dxaRight).c_str());
  archive->AddCssProp("margin-left", points(prop.dxaLeft).c_str());
  archive->AddCssProp("margin-right", points(prop.dxaRight).c_str());
  archive->AddCssProp("margin-top", points(prop.dyaTop).c_str());
  archive->AddCssProp("margin-bottom", points(prop.dyaBottom).c_str());
  return Status::kOk;
}

Status WriteSecSplit(IWriteArchive* archive) {
  if (!archive) return Status::kInvalidArgument;
  archive->Put("<p><o:p>&nbsp;</o:p></p>");
  return Status::kOk;
}

}  // namespace pagerex
