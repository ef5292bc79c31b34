#include "support/form_fields.h"

namespace support {
namespace {

/// How Word spells a kind of field.
struct Spelling {
  uint8_t type;  // of the field
  const char* code;
};
constexpr Spelling kSpellings[] = {{70, " FORMTEXT "}, {71, " FORMCHECKBOX "}, {83, " FORMDROPDOWN "}};

constexpr uint16_t kFieldData = 0x0806, kPictureLocation = 0x6A03;
constexpr uint32_t kHeaderBytes = 68;
constexpr uint16_t kByDefault = 25;

void addText(ByteWriter& out, const Text& text) {
  out.u16(text.units().size()).text16(text.units()).u16(0);
}

/// The state as its bits have it.
uint16_t stateOf(const FormField& field) {
  if (field.kind == FormField::Kind::kText) return 0;
  if (field.byDefault) return kByDefault;
  return field.kind == FormField::Kind::kCheckBox ? field.checked : field.chosen;
}

}  // namespace

Bytes FormField::bytes() const {
  const auto bits = static_cast<uint16_t>(static_cast<unsigned>(kind) | stateOf(*this) << 2 |
                                          (kind == Kind::kDropDown ? 0x8000 : 0));
  ByteWriter data;
  data.u32(0xFFFFFFFF).u16(bits).u16(0).u16(20);
  addText(data, name);
  if (kind == Kind::kText) {
    addText(data, {});
  } else {
    data.u16(byDefault.value_or(0));
  }
  for (int i = 0; i < 5; ++i) addText(data, {});  // format, help, status, macros
  if (kind == Kind::kDropDown) {
    std::vector<std::u16string> strings;
    for (const Text& choice : choices) strings.push_back(choice.units());
    data.bytes(stringTable(strings));
  }
  const Bytes body = data.take();
  return ByteWriter()
      .u32(kHeaderBytes + static_cast<uint32_t>(body.size()))
      .u16(kHeaderBytes)
      .zeros(kHeaderBytes - 6)
      .bytes(body)
      .take();
}

Paragraph& addFormField(WordDocument& document, Paragraph& paragraph, const FormField& field) {
  constexpr char16_t kDataMark = 1;
  const auto& [type, code] = kSpellings[static_cast<size_t>(field.kind)];
  Sprms dataRun = field.sprms;
  dataRun.add(sprm(kPictureLocation, document.data(field.bytes()))).add(sprm(kFieldData, 1));
  if (!field.name.empty()) paragraph.bookmarkStart(field.name);
  paragraph.fieldBegin(type, field.sprms).run(code, field.sprms).special(kDataMark, dataRun);
  paragraph.fieldSeparator(field.sprms);
  // An empty text field shows five wide spaces.
  if (field.kind == FormField::Kind::kText)
    paragraph.run(field.value.empty() ? Text(std::u16string(5, 0x2002)) : field.value, field.sprms);
  paragraph.fieldEnd(0x80, field.sprms);
  if (!field.name.empty()) paragraph.bookmarkEnd(field.name);
  return paragraph;
}

}  // namespace support
