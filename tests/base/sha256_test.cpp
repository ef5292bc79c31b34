#include "base/sha256.h"

#include <gtest/gtest.h>

namespace pagerex {
namespace {

struct Row {
  const char* message;
  const char* digest;
};
/// Of FIPS 180-4.
constexpr Row kMessages[] = {
    {"", "47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU="},
    {"abc", "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0="},
    {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
     "JI1qYdIGOLjlwCaTDD5gOaM85Flk/yFn9uzt1BnbBsE="},
    {"abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqr"
     "stnopqrstu",
     "z1sWp3ivg4ADbOWeewSSNwskmxHo8HpRr6xFA3r+6dE="},
};

struct LengthRow {
  size_t length;
  const char* digest;
};
/// So many times "a": on both sides of where the length goes into another block.
constexpr LengthRow kLengths[] = {
    {1, "ypeBEsobvcr6wjGzmiPcTaeG7/gUfE5yuYB3ha/uSLs="},
    {55, "n0OQ+NMMLdkuyfCVtl4rmumwqSWlJY4kHJ8ekQ9zQxg="},
    {56, "s1Q5pKxvCUi21vnjxq8PX1kM4g8b3nCQ73lwaG7Gc4o="},
    {63, "fT50oF19sVvOStnsBljqmOPwbu7PFrTG//LaRX3cLzQ="},
    {64, "/+BU/nrgy23GXDr5th1SCfQ5hR20PQulmXM33xVGaOs="},
    {65, "Y1NhxIu56rFBmOduqKt/GkFoXWrWKqkUbTAdTxfrCuA="},
    {119, "MeulHDE6XAgiat8Y1KNZz9/Y0ugWsT9K+VL36mWE3Ps="},
    {120, "Lz0zVDLHC1gK8Ojhs2dKfAINaDql9zqq7f3FWvkEwhw="},
    {128, "aDbPE7rEAOkQUHHNavRwhN+srU5eMCyUv+0k4BOvtz4="},
    {1000000, "zcduXJkU+5KBocfihNc+Z/GAmkiklyAOBG05zMcRLNA="},
};

TEST(Sha256, OfThePublishedMessages) {
  for (const Row& row : kMessages) EXPECT_EQ(base64OfSha256(row.message), row.digest) << row.message;
}

TEST(Sha256, OfEveryFillingOfItsBlocks) {
  for (const LengthRow& row : kLengths)
    EXPECT_EQ(base64OfSha256(std::string(row.length, 'a')), row.digest) << row.length;
}

}  // namespace
}  // namespace pagerex
