// What the client gets to see: the HTTP header and one JSON text.
#pragma once

#include <string_view>

/// Header of every reply; the length of the JSON text and the text itself follow it.
extern const char HTTP_HEADER[];

/// The result words, by a daemon's result byte.
constexpr const char* RESULT_STR[] = {"Success", "RequestedError", "DisableError"};

// The fixed replies to requests that no command answered.
extern const char kFormatErrorReply[];
extern const char kSessionErrorReply[];
extern const char kCommandErrorReply[];
extern const char kRequestedErrorReply[];

/// Prints the header and the whole JSON text, whatever its length, in one write. A client that is
/// gone is logged at level 1.
void PrintReply(std::string_view json);
