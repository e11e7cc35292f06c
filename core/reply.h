// The reply to the client: the HTTP header and one JSON text.
#pragma once

#include <string_view>

/// Header of every reply; followed by the length of the JSON text, an empty line and the text.
extern const char HTTP_HEADER[];

/// The names of the results, by a daemon's result byte.
constexpr const char* RESULT_STR[] = {"Success", "RequestedError", "DisableError"};

// The replies to requests that are rejected.
inline constexpr char kFormatErrorReply[] = R"({"Response":{"Result":"FormatError"}})";
inline constexpr char kSessionErrorReply[] = R"({"Response":{"Result":"SessionError"}})";
inline constexpr char kCommandErrorReply[] = R"({"Response":{"Result":"CommandError"}})";
inline constexpr char kRequestedErrorReply[] = R"({"Response":{"Result":"RequestedError"}})";

/// Prints the header and the whole JSON text, whatever its length, in one write. A failure, usually
/// a web server that has gone, is logged at level 1.
void PrintReply(std::string_view json);
