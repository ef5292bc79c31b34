#pragma once

#include <functional>
#include <string>

#include "pagerex/walk.h"

namespace flow_test {

/// Functions of a host that write down each call, one a line, with what tells it from its like.
class HostTranscript {
 public:
  HostTranscript();
  HostTranscript(const HostTranscript&) = delete;
  HostTranscript& operator=(const HostTranscript&) = delete;

  /// All functions; they want this object as their `user`.
  pagerex_handler handler;
  std::string lines;
  /// Asked behind each line, with the count of lines: what the function returns. It may throw.
  std::function<int(int line)> answer = [](int) { return 0; };
  int calls = 0;

  /// Whether the lines "begin X" and "end X" nest.
  bool isBalanced() const;
};

/// An open document, which is closed when it goes.
class HostDocument {
 public:
  explicit HostDocument(const std::string& bytes, const pagerex_limits* limits = nullptr);
  HostDocument(const HostDocument&) = delete;
  HostDocument& operator=(const HostDocument&) = delete;
  ~HostDocument() { pagerex_close(document_); }

  pagerex_document* get() const { return document_; }
  int walk(HostTranscript& host, const pagerex_walk_options* options = nullptr) {
    return pagerex_walk(document_, options, &host.handler, &host, &result);
  }

  pagerex_result result = {};

 private:
  std::string bytes_;
  pagerex_document* document_ = nullptr;
};

}  // namespace flow_test
