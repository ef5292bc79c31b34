#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>
#include <string_view>

namespace cli {

/// One line of JSON.
using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

void putText(JsonWriter& json, const char* name, std::string_view text);

/// A path. One that is no UTF-8 is shown with U+FFFD in the place of what is none, and comes again byte for
/// byte, percent-encoded, in a field of the name with "_bytes" behind it.
void putPath(JsonWriter& json, const char* name, std::string_view path);

/// What putPath has written: the text, and the encoded bytes, empty if there are none.
std::string pathOf(std::string_view text, std::string_view encoded);

bool isUtf8(std::string_view text);

}  // namespace cli
