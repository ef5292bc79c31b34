#include "flow/form_field_data.h"

#include <gtest/gtest.h>

#include <random>

#include "flow/list_bytes.h"

namespace pagerex {
namespace {

using Kind = FormFieldData::Kind;

void appendText(Bytes& bytes, std::u16string_view text) {
  append(bytes, text.size(), 2);
  for (const char16_t c : text) append(bytes, c, 2);
}

void appendTerminated(Bytes& bytes, std::u16string_view text) {
  appendText(bytes, text);
  append(bytes, 0, 2);
}

struct TestField {
  Kind kind;
  unsigned result;
  std::u16string_view name;
  unsigned byDefault = 0;
  std::u16string_view defaultText = {};
  std::vector<std::u16string_view> choices = {};
  unsigned flags = 0;

  Bytes bytes() const {
    Bytes out;
    append(out, 0xFFFFFFFF, 4);
    append(out, static_cast<unsigned>(kind) | result << 2 | flags, 2);
    append(out, 20, 4);
    appendTerminated(out, name);
    if (kind == Kind::kText) {
      appendTerminated(out, defaultText);
    } else {
      append(out, byDefault, 2);
    }
    appendTerminated(out, u"format");
    for (const std::u16string_view text : {u"help", u"status", u"", u"exit"}) appendTerminated(out, text);
    if (kind == Kind::kDropDown) {
      append(out, 0xFFFF, 2);
      append(out, choices.size(), 4);
      for (const std::u16string_view choice : choices) appendText(out, choice);
    }
    Bytes header;
    append(header, 0x44 + out.size(), 4);
    append(header, 0x44, 2);
    append(header, Bytes(62));
    append(header, out);
    return header;
  }
};

bool read(const Bytes& bytes, FormFieldData& out) {
  return readFormFieldData({bytes.data(), bytes.size()}, out);
}

FormFieldData readOf(const TestField& field) {
  FormFieldData out;
  EXPECT_TRUE(read(field.bytes(), out));
  return out;
}

TEST(FormFieldData, OfATextFieldIsItsDefinition) {
  const FormFieldData field = readOf({Kind::kText, 0, u"Text1", 0, u"type here", {}, 2u << 11 | 1u << 9});
  EXPECT_EQ(field.kind, Kind::kText);
  EXPECT_EQ(field.textKind, 2);
  EXPECT_TRUE(field.isProtected);
  EXPECT_EQ(field.name, u"Text1");
  EXPECT_EQ(field.defaultText, u"type here");
  EXPECT_EQ(field.format, u"format");
  EXPECT_EQ(field.Choice(), u"");
}

TEST(FormFieldData, OfACheckBoxIsWhetherItIsChecked) {
  EXPECT_FALSE(readOf({Kind::kCheckBox, 0, u"Check1", 1}).isChecked);
  EXPECT_TRUE(readOf({Kind::kCheckBox, 1, u"Check1", 0}).isChecked);
  EXPECT_FALSE(readOf({Kind::kCheckBox, 25, u"Check1", 0}).isChecked);
  EXPECT_TRUE(readOf({Kind::kCheckBox, 25, u"Check1", 1}).isChecked);
}

TEST(FormFieldData, OfADropDownIsItsChoice) {
  EXPECT_EQ(readOf({Kind::kDropDown, 1, u"d", 0, {}, {u"one", u"two"}}).Choice(), u"two");
  EXPECT_EQ(readOf({Kind::kDropDown, 25, u"d", 0, {}, {u"one", u"two"}}).Choice(), u"one");
  EXPECT_EQ(readOf({Kind::kDropDown, 25, u"d", 1, {}, {u"one", u"two"}}).Choice(), u"two");
  EXPECT_EQ(readOf({Kind::kDropDown, 7, u"d", 0, {}, {u"one", u"two"}}).Choice(), u"");
  EXPECT_EQ(readOf({Kind::kDropDown, 25, u"d"}).Choice(), u"");
}

TEST(FormFieldData, IsNotThereInOtherRecords) {
  FormFieldData out;
  EXPECT_FALSE(read({}, out));
  EXPECT_FALSE(read(Bytes(200), out));
  Bytes otherVersion = TestField{Kind::kText, 0, u"x"}.bytes();
  otherVersion[0x44] = 0;
  EXPECT_FALSE(read(otherVersion, out));
  EXPECT_FALSE(read(TestField{static_cast<Kind>(3), 0, u"x"}.bytes(), out));
}

TEST(FormFieldData, EndsWhereTheBytesAreCut) {
  const Bytes whole = TestField{Kind::kDropDown, 1, u"name", 0, {}, {u"one", u"two"}}.bytes();
  for (size_t size = 0; size < whole.size(); ++size) {
    FormFieldData out;
    const bool isThere = read(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)), out);
    EXPECT_EQ(isThere, size >= 0x44 + 6) << size;
    EXPECT_TRUE(std::u16string_view(u"name").starts_with(out.name));
    EXPECT_LE(out.choices.size(), 2u);
  }
}

TEST(FormFieldData, OfAnyBytesIsRead) {
  std::mt19937 random(1);
  for (int round = 0; round < 5000; ++round) {
    Bytes bytes = TestField{static_cast<Kind>(round % 3), 25, u"n", 0, u"d", {u"one", u"two"}}.bytes();
    for (int i = 0; i < 5; ++i)
      bytes[0x44 + random() % (bytes.size() - 0x44)] = static_cast<uint8_t>(random());
    FormFieldData out;
    read(bytes, out);
    EXPECT_LE(out.name.size() + out.defaultText.size() + out.choices.size(), bytes.size());
  }
}

}  // namespace
}  // namespace pagerex
