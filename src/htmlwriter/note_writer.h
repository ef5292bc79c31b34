#pragma once

#include <string>

#include "htmlwriter/env.h"
#include "wordreader/annotations.h"
#include "wordreader/notes.h"

namespace pagerex {

/// Footnotes and endnotes: a small anchor in the text, and the hidden block of content at the end of the
/// page. Notes are numbered from 0 in the order of their anchors; the file's own numbering is not consulted.
class KHtmlFootEndnoteWriter {
 public:
  /// kInvalidArgument for a null `env`, which is not owned.
  Status Init(KEnv* env);
  /// The anchor of the note whose reference stands at `cp`; kNothing if no note is expected there.
  Status WriteAnchor(unsigned int cp);

  /// Whether note `index` of the table has its reference at `cp`.
  bool IsFootnote(unsigned int cp, unsigned int index) const;
  bool IsEndnote(unsigned int cp, unsigned int index) const;
  void WriteFootnoteAnchor(unsigned int index);
  void WriteEndnoteAnchor(unsigned int index);

  /// Writes the content of a note with writers of its own into the current page of `env`. kInvalidArgument
  /// for a null `env` or an index outside the table, kNothing if the document has no such notes.
  static Status WriteFootnoteContent(unsigned int index, const KEnv* env);
  static Status WriteEndnoteContent(unsigned int index, const KEnv* env);

 private:
  KEnv* env_ = nullptr;
  const KDRFootnotes* footnotes_ = nullptr;
  const KDREndnotes* endnotes_ = nullptr;
};

/// Annotations, in the same way; each reference mark takes the next number.
class KHtmlAnnotationWriter {
 public:
  Status Init(KEnv* env);
  Status WriteAnchor();
  static Status WriteContent(unsigned int index, const KEnv* env);

 private:
  KEnv* env_ = nullptr;
  const KDRAnnotations* annotations_ = nullptr;
};

/// Appends the heading of an annotation: its author, date and time.
void FormatAnnotationContent(const KDRAnnotations& annotations, unsigned int index, const KTextPool& pool,
                             const KPageSafety& safety, std::string& out);
/// Appends a date and time, nothing padded.
void FormatDttm(const mso_word::DTTM& dttm, std::string& out);

}  // namespace pagerex
