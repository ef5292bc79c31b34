#include "formats/html/page_frame.h"

#include <algorithm>

#include "base/sha256.h"
#include "formats/html/css_values.h"
#include "formats/html/page_text.h"
#include "formats/html/section_css.h"

namespace pagerex {
namespace {

/// On screens the margins of the paper are as wide as there is room for.
constexpr std::string_view kBefore =
    "@layer pagerex{@layer base,styles,looks,small;@layer base{\n"
    ":root{--i:1;--n:1}\n"
    "html{-webkit-text-size-adjust:100%;text-size-adjust:100%;background:#fff;color:#000}\n"
    "body{margin:0}\n"
    "h1,h2,h3,h4,h5,h6,p,figure,ol,ul,li{margin:0;padding:0;font-size:inherit;font-weight:inherit}\n"
    "ol,ul{list-style:none}\n"
    "a{color:inherit;text-decoration:none}\n"
    "a:focus-visible,a:hover{text-decoration:underline}\n"
    "img,svg{vertical-align:baseline}\n"
    "img,svg:not(.g){height:auto}\n"
    "table{border-collapse:collapse;table-layout:fixed;font:inherit;color:inherit}\n"
    "td,th{padding:0;vertical-align:top;text-align:start;font-weight:inherit}\n"
    "sup,sub{font-size:.65em;line-height:0}\n"
    "em,i{font-style:italic}b,strong{font-weight:bold}\n"
    "u,ins{text-decoration:underline}s,del{text-decoration:line-through}\n"
    "ins{color:#06c}del{color:#b00020}\n"
    "hr{border:0;border-top:1px solid;margin:6pt 0}\n"
    ".pb{border-top:1px dashed #999;margin:12pt 0}\n"
    "span.pb,span.cb{display:block}.cb{break-after:column}\n"
    ".lb{height:1em;width:auto}\n"
    ".t{display:inline-block;text-indent:0;tab-size:0}\n"
    ".tf{display:inline-flex;text-indent:0;tab-size:0;max-width:100%;align-items:flex-end;align-items:last "
    "baseline}\n"
    ".tf>span{min-width:0}\n"
    ".dp{display:inline-block;width:0;white-space:nowrap}\n"
    ".tc>:last-child{width:0;display:flex;justify-content:center;white-space:nowrap}\n"
    ".tl{flex:1 1 1em;height:.85em;overflow:hidden}\n"
    ".tl1{border-bottom:2px dotted;margin:0 2px}.tl2{border-bottom:1px dashed;margin:0 2px}\n"
    ".tl3{border-bottom:1px solid}.tl4{border-bottom:2px solid}\n"
    ".tl5{border-bottom:1px dotted;margin:0 2px .3em}\n"
    ".notes,.comments{border-top:1px solid #999;margin-top:24pt;padding-top:6pt}\n"
    ".cr{font-size:75%;vertical-align:super;line-height:0;color:#767676}\n"
    ".missing{display:inline-block;border:1px solid #999;vertical-align:bottom;box-sizing:border-box;"
    "max-width:100%;overflow:hidden;font-size:9pt;color:#595959}\n"
    ".a{position:relative}\n"
    ".text-box{box-sizing:border-box;isolation:isolate}\n"
    ".text-box>.g{position:absolute;left:0;top:0;z-index:-1}\n"
    ".rule{display:inline-block;width:100%;border-top:1.5pt solid #aca899;vertical-align:middle}\n"
    ".sh{display:inline-block}.g{overflow:visible;display:block}\n"
    "main{position:relative;z-index:0}\n"
    "section>header{margin-bottom:12pt}section>footer{margin-top:12pt}\n";

constexpr std::string_view kAfter =
    "@media "
    "print{main{padding:0;max-width:none}hr.pb{display:none}hr.pb+*{break-before:page}span.pb{visibility:"
    "hidden;margin:0;break-after:page}"
    ".a{break-inside:avoid}.x{overflow:visible;max-width:none}"
    "a:hover{text-decoration:none}}\n";

constexpr std::string_view kSmall =
    "@layer small{@media (max-width:900px){img,svg:not(.g){max-width:100%}}"
    "@media screen and (max-width:640px){:root{--i:.4;--n:0}main{padding:16px;max-width:100%}"
    ".text-box,.fl{position:static;float:none;max-width:100%;margin:6pt 0;transform:none}"
    ".sh{max-width:100%;overflow:hidden}.text-box{width:auto;min-height:0;padding:6pt}.text-box>svg{display:"
    "none}"
    "div.fl{display:block}.t{min-width:0;tab-size:4}.tc>:last-child{width:auto;white-space:normal}}}\n";

constexpr std::string_view kDark =
    "@media screen and (prefers-color-scheme:dark){html{background:#111;color-scheme:dark}"
    "main{background:#fff;color:#000;filter:invert(.93) hue-rotate(180deg)}"
    "img,svg image{filter:invert(1) hue-rotate(180deg)}}\n";

}  // namespace

std::string baseRules(LookBook& looks, const DocumentFacts& facts, const SectionProperties& paper,
                      bool followsDarkScheme) {
  constexpr int32_t kLeastWidth = 2880, kMostWidth = 31680;
  const int32_t width = std::clamp(
      int32_t{paper.pageWidth} - paper.marginLeft - paper.marginRight - static_cast<int32_t>(paper.gutter),
      kLeastWidth, kMostWidth);
  std::string rules(kBefore);
  rules += "main{margin:0 auto;max-width:";
  appendPoints(rules, width);
  rules += ";padding:";
  appendPoints(rules, std::min(std::abs(int32_t{paper.marginTop}), 1440));
  rules += " clamp(16px,5vw,";
  appendPoints(rules, std::clamp(int32_t{paper.marginLeft}, 240, 2880));
  rules += ");overflow-wrap:break-word;tab-size:";
  appendPoints(rules, std::max<int32_t>(facts.defaultTabStop, 20));
  rules += ";" + looks.PageText() + "}\n";
  // A table is as wide as it is, up to the right side of the window; then it is moved in its own box.
  rules += ".x{width:fit-content;overflow-x:auto;max-width:calc(100vw - 32px - max(clamp(16px,5vw,";
  appendPoints(rules, std::clamp(int32_t{paper.marginLeft}, 240, 2880));
  rules += "),50vw - ";
  appendPoints(rules, width / 2);
  rules += "))}.x .x,.text-box .x{max-width:100%}\n";
  rules += "p,h1,h2,h3,h4,h5,h6{white-space:var(--w,pre-wrap);" + looks.PageParagraph() + "}\n";
  if (facts.background.isThere && !facts.background.fill.isAutomatic) {
    rules += "html{background:";
    appendColour(rules, facts.background.fill.rgb);
    if (isDark(facts.background.fill.rgb)) rules += ";color:#fff";
    rules += "}\n";
  }
  rules += kAfter;
  if (followsDarkScheme) rules += kDark;
  rules += "}\n";
  rules += kSmall;
  rules += "}\n";
  appendPageRule(rules, "", paper);
  rules += '\n';
  return rules;
}

std::string pageHead(const PageFrame& frame, std::string_view rules) {
  constexpr std::string_view kUnknownLanguage = "und";
  std::string head = "<!doctype html>\n<html lang=";
  appendValue(head, frame.language.empty() ? kUnknownLanguage : frame.language);
  if (frame.isRightToLeft) head += " dir=rtl";
  head +=
      "><head><meta charset=utf-8>\n<meta http-equiv=Content-Security-Policy content=\"default-src 'none';"
      "style-src ";
  head += frame.showsOwnStyleOnly ? "'sha256-" + base64OfSha256(rules) + "'" : "'unsafe-inline'";
  head +=
      ";img-src 'self' data:\">\n<meta name=viewport "
      "content=\"width=device-width,initial-scale=1\">\n<title>";
  head += frame.title;
  head += "</title>\n";
  head += frame.metadata;
  head += "<style>";
  head += rules;
  head += "</style>\n</head><body><main>\n";
  return head;
}

}  // namespace pagerex
