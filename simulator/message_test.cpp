#include "simulator/message.h"

#include <gtest/gtest.h>

namespace {

using simulator::Bytes;
using simulator::HexText;
using simulator::MakeReply;
using simulator::Message;
using simulator::TakeMessage;

TEST(MessageTest, MessagesAreTakenOneAfterTheOther) {
  Bytes received = {0, 5, 2, 0, 17, 0, 0, 0, 1, 2, 3, 4, 3, 7,  // payload of two bytes
                    0, 6, 0, 0, 29, 0, 0, 0, 1, 2, 3, 4};       // without payload
  const Message first = TakeMessage(received);
  EXPECT_EQ(first.message_class, 5);
  EXPECT_EQ(first.code, 17);
  EXPECT_EQ(first.payload, (Bytes{3, 7}));
  EXPECT_EQ(first.bytes.size(), 14U);
  const Message second = TakeMessage(received);
  EXPECT_EQ(second.message_class, 6);
  EXPECT_EQ(second.code, 29);
  EXPECT_EQ(second.payload, Bytes());
  EXPECT_EQ(received, Bytes());
}

TEST(MessageTest, APayloadThatIsNotAllThereIsTakenAsFarAsItGoes) {
  Bytes received = {0, 5, 0xf4, 1, 17, 0, 0, 0, 0, 0, 0, 0, 9};
  EXPECT_EQ(simulator::AnnouncedLength(received), 500U);
  EXPECT_EQ(TakeMessage(received).payload, Bytes{9});
}

TEST(MessageTest, AReplyRepeatsClassAndCodeAndAnnouncesItsPayload) {
  EXPECT_EQ(MakeReply({5, 17, {}, {}}, {0, 1, 2}),
            (Bytes{0, 5, 3, 0, 17, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2}));
  const Bytes longest = MakeReply({5, 0, {}, {}}, Bytes(70000));
  EXPECT_EQ(longest.size(), 12U + 65535U);
  EXPECT_EQ(longest[2], 0xff);
  EXPECT_EQ(longest[3], 0xff);
}

TEST(MessageTest, HexadecimalDigits) { EXPECT_EQ(HexText({0, 0x5a, 0xff}), "005aff"); }

}  // namespace
