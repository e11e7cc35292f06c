#include "core/json_writer.h"

#include <gtest/gtest.h>

namespace {

TEST(JsonWriter, SeparatesMembersOnEveryLevel) {
  JsonWriter json;
  json.Text("A", "x");
  json.BeginObject("B");
  json.Number("C", -1);
  json.QuotedNumber("D", 2);
  json.EndObject();
  json.Bare("E", "007");
  json.BeginArray("F");
  json.BeginElement();
  json.Text("G", "");
  json.EndObject();
  json.BeginElement();
  json.EndObject();
  json.EndArray();
  json.Number("H", 3);
  EXPECT_EQ(json.View(), R"("A":"x","B":{"C":-1,"D":"2"},"E":007,"F":[{"G":""},{}],"H":3)");
}

TEST(JsonWriter, WritesTextsUnchanged) {
  JsonWriter json;
  json.Text("A", "\"\\\n");
  EXPECT_EQ(json.View(), "\"A\":\"\"\\\n\"");
}

TEST(JsonWriter, EscapesTextsOnRequest) {
  JsonWriter json;
  json.EscapedText("A", "a\"b\\c/");
  json.EscapedText("B", std::string_view("\0\t\n\x1f \x7f\xff", 7));
  json.EscapedText("C", "");
  EXPECT_EQ(json.View(), R"("A":"a\"b\\c/","B":"\u0000\u0009\u000a\u001f )"
                         "\x7f\xff\",\"C\":\"\"");
}

TEST(JsonWriter, LeavesAnEmptyArrayEmpty) {
  JsonWriter json;
  json.BeginArray("A");
  json.EndArray();
  EXPECT_EQ(json.View(), R"("A":[])");
}

TEST(JsonWriter, TakesATextInPieces) {
  JsonWriter json;
  TextBuilder& text = json.BeginText("A");
  text.AppendNumber(1);
  text.Append(':');
  text.Append("x");
  json.EndText();
  json.BeginText("B");
  json.EndText();
  json.Number("C", 2);
  EXPECT_EQ(json.View(), R"("A":"1:x","B":"","C":2)");
}

}  // namespace
