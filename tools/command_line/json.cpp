#include "json.h"

#include <cstdint>
#include <cstring>

namespace cli {

namespace {

/// The bytes of the character that the text begins with; 0 if it begins with none.
size_t characterLength(std::string_view text) {
  struct Form {
    uint8_t mask, lead;
    size_t length;
    uint32_t least;
  };
  constexpr Form kForms[] = {
      {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};
  for (const Form& form : kForms) {
    const auto lead = static_cast<uint8_t>(text[0]);
    if ((lead & form.mask) != form.lead) continue;
    if (text.size() < form.length) return 0;
    uint32_t character = lead & static_cast<uint8_t>(~form.mask);
    for (size_t i = 1; i < form.length; ++i) {
      const auto byte = static_cast<uint8_t>(text[i]);
      if ((byte & 0xC0) != 0x80) return 0;
      character = character << 6 | (byte & 0x3F);
    }
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < form.least || character > 0x10FFFF || isSurrogate ? 0 : form.length;
  }
  return 0;
}

std::string mended(std::string_view text) {
  std::string whole;
  while (!text.empty()) {
    const size_t length = characterLength(text);
    whole += length ? text.substr(0, length) : "\xEF\xBF\xBD";
    text.remove_prefix(length ? length : 1);
  }
  return whole;
}

std::string percentEncoded(std::string_view path) {
  constexpr std::string_view kKept = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const char byte : path) {
    if (kKept.find(byte) != std::string_view::npos) {
      text += byte;
      continue;
    }
    text += '%';
    text += kDigits[static_cast<uint8_t>(byte) >> 4];
    text += kDigits[static_cast<uint8_t>(byte) & 15];
  }
  return text;
}

int digit(char c) {
  const char* const digits = "0123456789ABCDEF";
  const char* const place = c ? std::strchr(digits, c) : nullptr;
  return place ? static_cast<int>(place - digits) : -1;
}

}  // namespace

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const size_t length = characterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

void putText(JsonWriter& json, const char* name, std::string_view text) {
  const std::string whole = isUtf8(text) ? std::string(text) : mended(text);
  json.Key(name);
  json.String(whole.data(), static_cast<rapidjson::SizeType>(whole.size()));
}

void putPath(JsonWriter& json, const char* name, std::string_view path) {
  putText(json, name, path);
  if (!isUtf8(path)) putText(json, (std::string(name) + "_bytes").c_str(), percentEncoded(path));
}

std::string pathOf(std::string_view text, std::string_view encoded) {
  if (encoded.empty()) return std::string(text);
  std::string path;
  for (size_t i = 0; i < encoded.size(); ++i) {
    const bool isCode = encoded[i] == '%' && i + 2 < encoded.size() && digit(encoded[i + 1]) >= 0 &&
                        digit(encoded[i + 2]) >= 0;
    path += isCode ? static_cast<char>(digit(encoded[i + 1]) << 4 | digit(encoded[i + 2])) : encoded[i];
    if (isCode) i += 2;
  }
  return path;
}

}  // namespace cli
