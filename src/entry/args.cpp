#include "entry/args.h"

#include <string_view>

Status args::ParseArg(const char* arg, std::string& name, std::string& value) {
  name.clear();
  value.clear();
  if (!arg) return Status::kInvalidArgument;
  const std::string_view text = arg;
  const size_t equals = text.find('=');
  if (equals != text.rfind('=')) return Status::kFailure;
  if (equals == std::string_view::npos || equals == 0 || equals + 1 == text.size()) return Status::kFailure;
  name = text.substr(0, equals);
  value = text.substr(equals + 1);
  return Status::kOk;
}
