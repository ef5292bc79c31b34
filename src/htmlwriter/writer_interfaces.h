#pragma once

#include "base/status.h"

namespace pagerex {

/// How paragraph and run writers ask for a page change.
class IStartNewPage {
 public:
  virtual ~IStartNewPage() = default;
  /// Closes the current page and opens the next; with `continueSection` the open section and paragraph go on
  /// there.
  virtual Status StartNewPage(bool continueSection) = 0;
};

/// Owns the page files of the main text.
class IPagesWriter : public IStartNewPage {
 public:
  virtual Status Write() = 0;
  /// Pages started, the current one included.
  virtual int GetPageCount() = 0;
};

/// Places one section of the main text on the page.
class ISectionWriter {
 public:
  virtual ~ISectionWriter() = default;
  virtual Status Write(unsigned int index) = 0;
  /// Ends an open section in mid-text, for a page break.
  virtual Status BreakSection() = 0;
  virtual Status ContinueSection() = 0;
};

/// Writes a range of character positions of one sub-document.
class ITextStreamWriter {
 public:
  virtual ~ITextStreamWriter() = default;
  virtual Status Write(unsigned int start, unsigned int end) = 0;
  virtual Status BreakTextStream() = 0;
  virtual Status ContinueTextStream() = 0;
};

/// Writes one paragraph of the sub-document.
class IPapWriter {
 public:
  virtual ~IPapWriter() = default;
  /// kOk for done or skipped; kNothing when the paragraph lies outside the stream.
  virtual Status Write(unsigned int index) = 0;
  /// Closes and reopens the open paragraph around a page break.
  virtual Status BreakPap() = 0;
  virtual Status ContinuePap() = 0;
};

/// Writes one run of the sub-document.
class IChpWriter {
 public:
  virtual Status Write(unsigned int index) = 0;
  virtual ~IChpWriter() = default;
};

/// The writers of one story. Whoever made them owns them as one object, which this is the view of.
struct KWriter {
  KWriter() = default;
  KWriter(const KWriter&) = delete;
  KWriter& operator=(const KWriter&) = delete;
  virtual ~KWriter() = default;

  IPagesWriter* pages = nullptr;      ///< null in a note
  ISectionWriter* section = nullptr;  ///< null in a note
  ITextStreamWriter* textStream = nullptr;
  IPapWriter* pap = nullptr;
  IChpWriter* chp = nullptr;
};

}  // namespace pagerex
