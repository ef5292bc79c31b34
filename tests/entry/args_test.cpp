#include "entry/args.h"

#include <gtest/gtest.h>

namespace {

/// The status, and "name|value".
std::pair<Status, std::string> parsed(const char* arg) {
  std::string name = "old", value = "old";
  const Status status = args::ParseArg(arg, name, value);
  return {status, name + "|" + value};
}

std::pair<Status, std::string> refused(Status status) {
  return {status, "|"};
}

}  // namespace

TEST(ParseArg, SplitsAtTheEqualsSign) {
  EXPECT_EQ(parsed("view=phone"), std::pair(Status::kOk, std::string("view|phone")));
  EXPECT_EQ(parsed("a=b"), std::pair(Status::kOk, std::string("a|b")));
}

TEST(ParseArg, RefusesNull) {
  EXPECT_EQ(parsed(nullptr), refused(Status::kInvalidArgument));
}

TEST(ParseArg, RefusesAMissingNameOrValue) {
  EXPECT_EQ(parsed("=phone"), refused(Status::kFailure));
  EXPECT_EQ(parsed("view="), refused(Status::kFailure));
  EXPECT_EQ(parsed("="), refused(Status::kFailure));
}

TEST(ParseArg, RefusesNoneAndMoreThanOneEqualsSign) {
  EXPECT_EQ(parsed("view"), refused(Status::kFailure));
  EXPECT_EQ(parsed(""), refused(Status::kFailure));
  EXPECT_EQ(parsed("view=a=b"), refused(Status::kFailure));
  EXPECT_EQ(parsed("view=="), refused(Status::kFailure));
}
