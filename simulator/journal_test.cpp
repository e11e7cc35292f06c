#include "simulator/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using simulator::Bytes;
using simulator::Entry;
using simulator::Journal;
using simulator::MaskSecrets;
using simulator::MessageRecord;
using testing::HasSubstr;
using testing::Not;

Bytes BytesOf(const std::string& text) { return {text.begin(), text.end()}; }

std::string TextOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

TEST(MaskSecretsTest, APasswordIsHiddenWhereverItStands) {
  Entry entry;
  entry.request = R"({"Params":{"Username":"anna","Password":"s3cret-word","Latency":300}})";
  entry.log = {"info: rcv post_data = \"Password\":\"s3cret-word\""};
  MessageRecord message;
  message.bytes = BytesOf("anna....s3cret-word....");
  entry.messages = {message};
  MaskSecrets(entry);
  EXPECT_EQ(entry.request, R"({"Params":{"Username":"anna","Password":"***","Latency":300}})");
  EXPECT_EQ(entry.log[0], "info: rcv post_data = \"Password\":\"***\"");
  EXPECT_EQ(TextOf(entry.messages[0].bytes), "anna....***********....");
}

TEST(MaskSecretsTest, StreamKeysAreHiddenInRequestsAndReplies) {
  Entry entry;
  entry.request = R"({"Params":{"StreamKey":"abcd-1234"}})";
  entry.reply = R"({"Data":{"Rtmp":{"DstUrl":"u","StreamKey":"efgh-5678"}}})";
  MaskSecrets(entry);
  EXPECT_EQ(entry.request, R"({"Params":{"StreamKey":"***"}})");
  EXPECT_EQ(entry.reply, R"({"Data":{"Rtmp":{"DstUrl":"u","StreamKey":"***"}}})");
}

TEST(MaskSecretsTest, OtherMembersWithTheSameTextStayAsTheyAre) {
  Entry entry;
  entry.request = R"({"Params":{"Username":"same","Password":"same"}})";
  MaskSecrets(entry);
  EXPECT_EQ(entry.request, R"({"Params":{"Username":"same","Password":"***"}})");
}

TEST(MaskSecretsTest, ATruncatedPasswordIsHiddenToo) {
  Entry entry;
  entry.request = R"({"Params":{"Password":"half-a-sec)";
  MaskSecrets(entry);
  EXPECT_EQ(entry.request, R"({"Params":{"Password":"***)");
}

TEST(MaskSecretsTest, AnEmptyPasswordHidesNothing) {
  Entry entry;
  entry.request = R"({"Params":{"Password":"","ServerURL":"https://c"}})";
  entry.log = {"err something"};
  MaskSecrets(entry);
  EXPECT_EQ(entry.request, R"({"Params":{"Password":"","ServerURL":"https://c"}})");
  EXPECT_EQ(entry.log[0], "err something");
}

// Bytes 196 to 259 of the reply that brings stream information.
TEST(MaskSecretsTest, TheStreamKeyOfTheCloudIsHiddenInTheDaemonsReply) {
  MessageRecord message;
  message.bytes = {0, 11, 4, 0, 105, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0};
  Bytes reply(324);
  const std::string key = "city-7730-bbbb";
  std::copy(key.begin(), key.end(), reply.begin() + 196);
  message.reply = reply;
  Entry entry;
  entry.messages = {message};
  entry.log = {"debug key city-7730-bbbb"};
  MaskSecrets(entry);
  EXPECT_THAT(TextOf(*entry.messages[0].reply), Not(HasSubstr(key)));
  EXPECT_EQ(entry.messages[0].reply->size(), 324U);
  EXPECT_EQ(entry.log[0], "debug key ***");
}

TEST(JournalTest, TheOldestEntriesMakeRoomForLongOnes) {
  Journal journal("", false);
  Entry entry;
  entry.reply.assign(1 << 20, 'x');
  for (int i = 0; i < 20; ++i) {
    journal.Add(entry);
  }
  // 16 MiB hold 15 of them, each a little over 1 MiB.
  const simulator::Json page = journal.After(0);
  EXPECT_EQ(page["entries"].size(), 15U);
  EXPECT_EQ(page["dropped"], 5);
  EXPECT_EQ(page["last"], 20);
  EXPECT_EQ(journal.After(5)["dropped"], 0);
  EXPECT_EQ(journal.After(4)["dropped"], 1);
}

TEST(JournalTest, WhatWasForgottenOnPurposeWasNotDropped) {
  Journal journal("", false);
  journal.Add({});
  journal.Add({});
  journal.Clear();
  EXPECT_EQ(journal.After(0)["dropped"], 0);
  EXPECT_EQ(journal.Add({}).number, 3U);
  EXPECT_EQ(journal.After(0)["dropped"], 0);
  EXPECT_EQ(journal.After(0)["entries"].size(), 1U);
}

TEST(JournalTest, AFileThatCannotBeWrittenIsAnError) {
  const auto open = [] { const Journal journal("/no/such/folder/journal", false); };
  EXPECT_THROW(open(), std::runtime_error);
}

}  // namespace
