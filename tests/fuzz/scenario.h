// The format of a fuzzer input: lines of text, so that people can read and write it, and a change
// of a few bytes affects only one line. The first character of a line is its kind (below), the rest
// is the value. In a value, \n is a line feed and \\ a backslash. Unknown kinds are ignored.
//
// Written by the black-box tests, which record the seeds of the fuzzers, by the fuzzers themselves
// and by hand; read by the fuzzers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scenario {

enum Kind : char {
  kBody = 'B',           ///< standard input of a POST
  kContentLength = 'C',  ///< the variable; the body's true length unless given
  kArgument = 'A',       ///< of the command line; the first one is a canned request's number
  kMemory = 'M',         ///< the camera status block
  kReply = 'R',          ///< the bytes that a daemon sends on the next connection before it closes
  kPayload = 'P',        ///< the same, after a header with the length of this payload
  kRefusal = 'X',        ///< the next connection is refused
  kEarlyClose = 'W',     ///< the next connection is closed before the message is taken
  kClock = 'T',          ///< seconds since the epoch
  kReadOnly = 'D',       ///< no file can be written
  kUnreadable = 'U',     ///< no file can be read
};

/// Each file of the camera is a kind of line, too.
struct File {
  char kind;
  const char* path;
};

inline constexpr File kFiles[] = {
    {'s', "/var/tmp/lighttpd/.session"},
    {'g', "/var/tmp/lighttpd/cgilog"},
    {'n', "/var/tmp/lighttpd/ntp"},
    {'i', "/var/tmp/lighttpd/ifb"},
    {'z', "/var/tmp/lighttpd/web_zoom_preset"},
    {'f', "/var/tmp/lighttpd/streaming"},
    {'0', "/var/tmp/lighttpd/streaming_server0"},
    {'1', "/var/tmp/lighttpd/streaming_server1"},
    {'2', "/var/tmp/lighttpd/streaming_server2"},
    {'3', "/var/tmp/lighttpd/streaming_server3"},
    {'c', "/srv/www/htdocs/cam_status"},
    {'l', "/srv/www/htdocs/clip_info"},
};

struct Line {
  char kind;
  std::string value;
};

/// One line, its line feed included.
std::string Format(const Line& line);

/// All lines of an input. Every input is valid.
std::vector<Line> Parse(std::string_view input);

}  // namespace scenario
