#include "outcome.h"

#include <algorithm>
#include <cstring>

namespace pagerex::python {
namespace {

template <size_t kSize>
PyObject* textOf(const char (&text)[kSize]) {
  return python::textOf(text, strnlen(text, kSize));
}

/// A tuple of what `make` gives for each number below `count`.
template <class Make>
PyObject* tupleOf(size_t count, const Make& make) {
  Ref tuple(PyTuple_New(static_cast<Py_ssize_t>(count)));
  if (!tuple) return nullptr;
  for (size_t i = 0; i < count; ++i) {
    PyObject* const item = make(i);
    if (!item || PyTuple_SetItem(tuple.get(), static_cast<Py_ssize_t>(i), item) != 0) return nullptr;
  }
  return tuple.Release();
}

PyObject* warningOf(const pagerex_warning& warning) {
  return Py_BuildValue("iiINs", static_cast<int>(warning.code), static_cast<int>(warning.lost),
                       static_cast<unsigned>(warning.count), textOf(warning.where), warning.sentence);
}

PyObject* propertyOf(const pagerex_property& property) {
  return Py_BuildValue("NNi", textOf(property.name), textOf(property.value), static_cast<int>(property.kind));
}

}  // namespace

PyObject* textOf(const char* data, size_t length) {
  return PyUnicode_DecodeUTF8(data, static_cast<Py_ssize_t>(length), "replace");
}

PyObject* countsOf(const pagerex_counts& counts) {
  using Number = unsigned long long;
  return Py_BuildValue("KKKKK", static_cast<Number>(counts.characters),
                       static_cast<Number>(counts.paragraphs), static_cast<Number>(counts.tables),
                       static_cast<Number>(counts.pictures), static_cast<Number>(counts.pages));
}

PyObject* summaryOf(const pagerex_summary& s) {
  PyObject* const custom = tupleOf(std::min<size_t>(s.custom_count, PAGEREX_MOST_PROPERTIES),
                                   [&](size_t i) { return propertyOf(s.custom[i]); });
  if (!custom) return nullptr;
  return Py_BuildValue("NNNNNNNNNNNNNNNNIIIIIIIN", textOf(s.title), textOf(s.subject), textOf(s.author),
                       textOf(s.last_author), textOf(s.keywords), textOf(s.comments), textOf(s.category),
                       textOf(s.manager), textOf(s.company), textOf(s.template_name), textOf(s.application),
                       textOf(s.revision), textOf(s.language), textOf(s.created), textOf(s.saved),
                       textOf(s.printed), s.editing_minutes, s.pages, s.words, s.characters, s.paragraphs,
                       s.lines, s.security, custom);
}

PyObject* outcomeOf(const pagerex_result& result) {
  const size_t count = std::min<size_t>(result.warning_count, PAGEREX_MOST_WARNINGS);
  PyObject* const warnings = tupleOf(count, [&](size_t i) { return warningOf(result.warnings[i]); });
  if (!warnings) return nullptr;
  return Py_BuildValue("iiiiNNKINKN", static_cast<int>(result.code), static_cast<int>(result.kind),
                       static_cast<int>(result.system_error), static_cast<int>(result.complete),
                       textOf(result.sentence), countsOf(result.counts),
                       static_cast<unsigned long long>(result.output_bytes),
                       static_cast<unsigned>(result.output_files), warnings,
                       static_cast<unsigned long long>(result.warnings_total), summaryOf(result.summary));
}

}  // namespace pagerex::python
