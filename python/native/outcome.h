#pragma once

#include "pagerex/convert.h"
#include "python.h"

namespace pagerex::python {

/// (code, kind, system_error, complete, sentence, counts, output_bytes, output_files, warnings,
/// warnings_total, summary): what came of a call. Null with an exception set.
PyObject* outcomeOf(const pagerex_result& result);

/// (characters, paragraphs, tables, pictures, pages)
PyObject* countsOf(const pagerex_counts& counts);

/// The texts, then the numbers, in the order of the structure, then the properties that someone gave a name,
/// as a tuple of (name, value, kind).
PyObject* summaryOf(const pagerex_summary& summary);

/// Text that says it is UTF-8.
PyObject* textOf(const char* data, size_t length);

}  // namespace pagerex::python
