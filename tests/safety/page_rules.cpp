#include "safety/page_rules.h"

#include <algorithm>
#include <cctype>
#include <functional>

#include "objectwriter/shape_script.h"
#include "safety/page_reader.h"

namespace safety {
namespace {

constexpr std::string_view kRunning[] = {"script", "style", "iframe", "frame", "object",  "embed",   "applet",
                                         "meta",   "base",  "link",   "form",  "svg",     "math",    "audio",
                                         "video",  "input", "button", "xml",   "isindex", "template"};
constexpr std::string_view kPictures[] = {".png", ".jpg", ".wmf", ".dib", ".bmp", ".bin"};

/// A script or a handler, whatever numbers and colours are in it.
std::string normal(std::string_view text) {
  std::string out;
  for (size_t i = 0; i < text.size();) {
    const bool isNumber =
        std::isdigit(static_cast<unsigned char>(text[i])) != 0 ||
        (text[i] == '-' && i + 1 < text.size() && std::isdigit(static_cast<unsigned char>(text[i + 1])));
    size_t end = i + 1;
    if (isNumber) {
      while (end < text.size() && (std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == '.'))
        ++end;
      out += '0';
    } else if (text[i] == '#' && text.size() - i >= 7 &&
               std::all_of(text.begin() + static_cast<ptrdiff_t>(i) + 1,
                           text.begin() + static_cast<ptrdiff_t>(i) + 7,
                           [](unsigned char c) { return std::isxdigit(c); })) {
      end = i + 7;
      out += "#0";
    } else {
      out += text[i];
    }
    i = end;
  }
  return out;
}

/// Each function once at most, in any order.
bool isLibraryScript(std::string_view text) {
  for (const std::string_view script :
       {ObjectWriter::kDrawEllipseScript, ObjectWriter::kDrawLineScript, ObjectWriter::kDrawEllipseScript}) {
    if (text.starts_with(script)) text.remove_prefix(script.size());
  }
  return text.empty();
}

using Report = std::function<void(const std::string& thing)>;

/// What must be known: elements that run something with their attributes and text, and handlers.
void reportRunning(const GumboNode& node, const Report& report) {
  const std::string name = nameOf(node);
  const GumboVector& attributes = node.v.element.attributes;
  std::string whole = "<" + name;
  for (unsigned i = 0; i < attributes.length; ++i) {
    const auto& each = *static_cast<const GumboAttribute*>(attributes.data[i]);
    const std::string text = lower(each.name) + "=" + normal(each.value);
    if (isHandler(lower(each.name)) || text.starts_with("srcdoc=")) report("handler " + text);
    whole += " " + text;
  }
  if (!isIn(kRunning, name)) return;
  report(whole + normal(textIn(node)));
}

void judgeAttributes(const GumboNode& node, bool anyAddress, const Report& report) {
  const GumboVector& attributes = node.v.element.attributes;
  for (unsigned i = 0; i < attributes.length; ++i) {
    const auto& each = *static_cast<const GumboAttribute*>(attributes.data[i]);
    const std::string name = lower(each.name);
    if (name == "style") {
      const std::string found = runningStyle(each.value);
      if (!found.empty()) report(found);
    }
    const std::string scheme = isAddress(name) ? schemeOf(each.value) : "";
    if (!anyAddress && !scheme.empty() && !isSafeScheme(scheme)) report(name + " " + each.value);
  }
}

/// The page as readers of conditional comments get it.
std::string withoutConditions(std::string_view page) {
  std::string text(page);
  for (const std::string_view mark :
       {"<!--[if gte vml 1]>", "<!--[if !mso]>", "<![endif]-->", "<![if !vml]>", "<![endif]>"}) {
    for (size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) text.erase(at, mark.size());
  }
  return text;
}

}  // namespace

void PageRules::learn(std::string_view page) {
  const auto visit = [this](const GumboNode& node) {
    reportRunning(node, [this](const std::string& thing) { known_.insert(thing); });
  };
  readPage(std::string(page), visit);
  readPage(withoutConditions(page), visit);
}

std::string PageRules::violation(std::string_view page, bool anyAddress) const {
  std::string first;
  const auto note = [&first](const std::string& thing) {
    if (first.empty()) first = thing;
  };
  const auto visit = [&](const GumboNode& node) {
    reportRunning(node, [&](const std::string& thing) {
      if (!known_.contains(thing)) note(thing);
    });
    judgeAttributes(node, anyAddress, note);
  };
  readPage(std::string(page), visit);
  readPage(withoutConditions(page), visit);
  return first;
}

std::string PageRules::fileViolation(std::string_view name, std::string_view text) {
  const std::string_view extension = name.substr(std::min(name.rfind('.'), name.size()));
  if (extension == ".css")
    return text.find('<') == std::string_view::npos ? runningStyle(text) : "< in a style sheet";
  if (name.ends_with("shapejs.js")) return isLibraryScript(text) ? "" : "script of somebody else";
  return isIn(kPictures, extension) ? "" : "a file that may be a page: " + std::string(name);
}

}  // namespace safety
