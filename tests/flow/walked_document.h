#pragma once

#include <string>

#include "base/warnings.h"
#include "flow/walk.h"
#include "support/flow_transcript.h"
#include "support/word_document_writer.h"

namespace flow_test {

/// Tells the bytes of a file to a handler. Returns what was warned of.
pagerex::Warnings walkInto(const support::Bytes& file, pagerex::FlowHandler& handler,
                           const pagerex::WalkOptions& options = {});

/// A made document, told to a transcript.
class Walked {
 public:
  explicit Walked(const support::WordDocument& document, unsigned parts = 0,
                  const pagerex::WalkOptions& options = {})
      : Walked(document.build(), parts, options) {}
  /// Any bytes of a file.
  explicit Walked(const support::Bytes& file, unsigned parts = 0, const pagerex::WalkOptions& options = {});

  const std::string& text() { return transcript_.text(); }
  const std::u16string& characters() const { return transcript_.characters(); }
  bool warnsOf(pagerex::WarningCode code) const;
  bool warns() const { return !warnings_.all().empty(); }

 private:
  support::FlowTranscript transcript_;
  pagerex::Warnings warnings_;
};

/// The transcript alone. It fails the test if something that began did not end, or if there was a warning.
std::string transcriptOf(const support::WordDocument& document, unsigned parts = 0,
                         const pagerex::WalkOptions& options = {});

}  // namespace flow_test
