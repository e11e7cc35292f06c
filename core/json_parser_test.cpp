#include "core/json_parser.h"

#include <gtest/gtest.h>

#include <string>

#include "harness/system_log.h"

namespace {

using harness::Error;
using harness::Logged;

struct Case {
  const char* what;
  const char* text;
  const char* key;
  const char* value;
  int end;  // index of the character that ended the value
};

const Case kCases[] = {
    {"a number before a brace", R"("A":5})", "A", "5", 5},
    {"a number before a comma", R"("A":5,"B":6})", "A", "5", 5},
    {"the second member", R"("A":5,"B":6})", "B", "6", 11},
    {"a negative number", R"("A":-17})", "A", "-17", 7},
    {"a quoted text", R"("A":"xyz"})", "A", "xyz", 8},
    {"a quoted text ends at its first comma", R"("A":"x,y"})", "A", "x", 6},
    {"a quoted text ends at its first brace", R"("A":"x}y"})", "A", "x", 6},
    {"an escaped quote is not recognized", R"("A":"x\"y"})", "A", "x\\", 7},
    {"an empty quoted text", R"("A":""})", "A", "", 5},
    {"an empty quoted text at the very end", R"("A":"")", "A", "", 5},
    {"no value before a comma", R"("A":,"B":1})", "A", "", 4},
    {"no value before a brace", R"("A":})", "A", "", 4},
    {"a nested object yields its opening brace", R"("Params":{"A":1})", "Params", "{", 10},
    {"a word", R"("A":true})", "A", "true", 8},
    {"white space after the colon belongs to the value", R"("A": 5})", "A", " 5", 6},
    {"after a blank the quote ends the value", R"("A": "x"})", "A", " ", 5},
    {"the first occurrence wins", R"("A":1,"A":2})", "A", "1", 5},
    {"a key matches inside another name", R"("SessionID":"s","ID":"i"})", "ID", "s", 14},
    {"a key matches inside a value", R"("X":"AB","B":"y"})", "B", "y", 15},
    {"a key needs no quotes", "A:1}", "A", "1", 3},
    {"the colon may be far after the key", R"("A" and so on:7})", "A", "7", 15},
    {"a colon in the value belongs to it", R"("A":"1:2"})", "A", "1:2", 8},
};

TEST(JsonParser, ExtractsTheScalarThatFollowsTheKey) {
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.what);
    char out[100] = "left over from before";
    const char* const end = json_parser(row.text, row.key, out);
    ASSERT_NE(end, nullptr);
    EXPECT_STREQ(out, row.value);
    EXPECT_EQ(end - row.text, row.end);
  }
}

struct Failure {
  const char* what;
  const char* text;
  const char* key;
  const char* message;
};

const Failure kFailures[] = {
    {"no such key", R"("A":1})", "B", "error: json_parser() key [B] does not appear\n"},
    {"an empty text", "", "A", "error: json_parser() key [A] does not appear\n"},
    {"no colon after the key", R"({"B":"A"})", "A",
     "error: json_parser() terminater : does not appear\n"},
    {"nothing after the colon", R"("A":)", "A", "error: json_parser() buffer over 4/4\n"},
    {"nothing after the opening quote", R"("A":")", "A", "error: json_parser() buffer over 5/5\n"},
    {"a number up to the end of the text", R"("A":5)", "A",
     "error: json_parser() buffer over 5/5\n"},
    {"a text without its closing quote", R"("A":"xyz)", "A",
     "error: json_parser() buffer over 8/8\n"},
};

TEST(JsonParser, ReportsEachFailureToTheSystemLogAndLeavesNoValue) {
  for (const Failure& row : kFailures) {
    SCOPED_TRACE(row.what);
    harness::SystemLog log;
    char out[100] = "left over from before";
    EXPECT_EQ(json_parser(row.text, row.key, out), nullptr);
    EXPECT_STREQ(out, "");
    EXPECT_THAT(log.Lines(), Logged(Error(row.message)));
  }
}

TEST(JsonParser, TruncatesAValueToTheCallersArray) {
  char out[4];
  const char* const text = R"("A":"12345"})";
  EXPECT_EQ(json_parser(text, "A", out), text + 10);
  EXPECT_STREQ(out, "123");
}

TEST(JsonParser, KeepsAValueThatJustFits) {
  char out[6];
  json_parser(R"("A":"12345"})", "A", out);
  EXPECT_STREQ(out, "12345");
}

TEST(JsonParser, WritesNothingBeyondTheCallersArray) {
  struct {
    char out[4];
    char guard;
  } caller = {{}, '#'};
  json_parser(("\"A\":\"" + std::string(5000, 'x') + "\"").c_str(), "A", caller.out);
  EXPECT_STREQ(caller.out, "xxx");
  EXPECT_EQ(caller.guard, '#');
}

}  // namespace
