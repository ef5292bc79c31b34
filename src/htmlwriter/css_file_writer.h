#pragma once

#include <string>

#include "base/status.h"
#include "htmlwriter/env.h"

namespace pagerex {

/// Writes the style sheet file: the fixed rules and one rule for each style of the document.
struct KCssFileWriter {
  /// Writes `fileName` into the files folder and fills `env->styleFontSizes`. kInvalidArgument for a null
  /// argument, kCannotCreate when the file cannot be created.
  static Status Write(const char* fileName, KEnv* env);
};

/// The fixed rules: pop-up boxes of notes, and their anchors.
void WriteHtmlStyle(IWriteArchive* archive);
/// The rule of one style. kInvalidArgument for a null argument.
Status WriteStyle(unsigned int istd, IWriteArchive* archive, KEnv* env);
/// The text that a list number uses for a style in its class: decimal above 9, empty for 0 to 9.
void GetChpStdName(unsigned short istd, std::string& name);

}  // namespace pagerex
