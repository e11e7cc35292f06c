#include <string>

#include "harness/camera_test.h"

// How a value is found in the request's text and becomes a number, seen through the page number
// that "PageChange" sends.

namespace {

using namespace harness;
using testing::ElementsAre;

std::string BodyWithRawParams(const std::string& text) {
  return "{\"Request\":{\"Command\":\"PageChange\",\"SessionID\":\"5f0c2a9e71d4\",\"Params\":" +
         text;
}

class ParametersTest : public CameraTest {
 protected:
  FakeDaemon daemon_{Answer(ReplyMessage(Bytes({0, 0, 0, 0, 0})))};
};

TEST_F(ParametersTest, ValuesEndAtCommaQuoteOrBrace) {
  struct Row {
    const char* description;
    const char* params;
    int page;
  };
  constexpr Row kRows[] = {
      {"a number", "{\"Page\":5}}}", 5},
      {"a number before another member", "{\"Page\":6,\"A\":1}}}", 6},
      {"a quoted number", "{\"Page\":\"7\"}}}", 7},
      {"a quoted value ends at its comma", "{\"Page\":\"8,9\"}}}", 8},
      {"a quoted value ends at its brace", "{\"Page\":\"1}2\"}}}", 1},
      {"an escaped quote is a quote", "{\"Page\":\"2\\\"3\"}}}", 2},
      {"a quote ends an unquoted value", "{\"Page\":3\"4}}}", 3},
      {"an empty quoted value", "{\"Page\":\"\"}}}", 0},
      {"no value before a comma", "{\"Page\":,\"A\":1}}}", 0},
      {"no value before a brace", "{\"Page\":}}}", 0},
      {"a second quote opens nothing", "{\"Page\":\"\"9\"}}}", 0},
      {"an object is just its brace", "{\"Page\":{\"A\":1}}}}", 0},
      {"a list begins with its bracket", "{\"Page\":[4]}}}", 0},
      {"the first of two members", "{\"Page\":4,\"Page\":5}}}", 4},
      {"the key inside another name", "{\"FirstPage\":6,\"Page\":7}}}", 6},
      {"the key inside a value: the next colon counts", "{\"A\":\"Page\",\"B\":8}}}", 8},
      {"an unquoted key", "{Page:9}}}", 9},
      {"without any braces", "Page:3,", 3},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.description);
    const Outcome outcome = Post(BodyWithRawParams(row.params));
    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_EQ(daemon_.Received().back(), Message(5, 1, 15, outcome.pid, Bytes({row.page})));
  }
}

TEST_F(ParametersTest, ValuesWithoutAnEndAreRefused) {
  struct Row {
    const char* description;
    const char* params;
    const char* line;
  };
  constexpr Row kRows[] = {
      {"no such key", "{\"Side\":1}}}", "error: json_parser() key [Page] does not appear\n"},
      {"the key in another case", "{\"page\":1}}}",
       "error: json_parser() key [Page] does not appear\n"},
      {"no colon", "{\"Page\"}}}", "error: json_parser() terminater : does not appear\n"},
      {"the text ends after the colon", "{\"Page\":", "error: json_parser() buffer over 8/8\n"},
      {"the text ends after the quote", "{\"Page\":\"", "error: json_parser() buffer over 9/9\n"},
      {"the text ends after a digit", "{\"Page\":5", "error: json_parser() buffer over 9/9\n"},
      {"the text ends after digits", "{\"Page\":512", "error: json_parser() buffer over 11/11\n"},
      {"the text ends in a quoted value", "{\"Page\":\"51",
       "error: json_parser() buffer over 11/11\n"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.description);
    const std::string body = BodyWithRawParams(row.params);
    EXPECT_THAT(Post(body), Replied("{\"Response\":{\"Result\":\"RequestedError\"}}"));
    EXPECT_THAT(
        log_.TakeLines(),
        Logged(Error("rcv post_data = " + body), Error(row.line),
               Error(std::string("requested error ret=-1, params=\"Params\":") + row.params)));
  }
  EXPECT_THAT(daemon_.Received(), ElementsAre());
}

TEST_F(ParametersTest, NumbersSaturateAndAreThenTruncatedToTheirWidth) {
  struct Row {
    const char* value;
    int page;
  };
  constexpr Row kRows[] = {
      {"0", 0},
      {"255", 255},
      {"256", 0},
      {"300", 44},
      {"-1", 255},
      {"-255", 1},
      {"+7", 7},
      {"007", 7},
      {"0x10", 0},
      {"1e3", 1},
      {"12.9", 12},
      {"7pages", 7},
      {"pages7", 0},
      {"true", 0},
      {"-", 0},
      {"--3", 0},
      {"+-3", 0},
      {"2147483647", 255},
      {"2147483648", 255},            // saturates at 0x7fffffff
      {"4294967297", 255},            // does not wrap around to 1
      {"99999999999999999999", 255},  // longer than any integer
      {"-2147483648", 0},
      {"-2147483649", 0},  // saturates at 0x80000000
      {"-99999999999999999999", 0},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.value);
    const Outcome outcome = Post(Body("PageChange", std::string("\"Page\":") + row.value));
    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_EQ(daemon_.Received().back(), Message(5, 1, 15, outcome.pid, Bytes({row.page})));
  }
}

TEST_F(ParametersTest, ValuesAreTruncatedTo4999Characters) {
  const std::string zeros(4998, '0');
  const Outcome fits = Post(Body("PageChange", "\"Page\":" + zeros + "5"));
  EXPECT_EQ(daemon_.Received().back(), Message(5, 1, 15, fits.pid, Bytes({5})));
  const Outcome cut = Post(Body("PageChange", "\"Page\":" + zeros + "56"));
  EXPECT_EQ(daemon_.Received().back(), Message(5, 1, 15, cut.pid, Bytes({5})));
}

}  // namespace
