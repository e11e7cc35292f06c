#include <string>
#include <vector>

#include "harness/camera_test.h"

// Clip marking, and what drives the upload of clips by FTP.

namespace {

using namespace harness;

class ClipCommandTest : public CameraTest {
 protected:
  /// The message that a request sends; its reply must be "Success".
  std::string MessageOf(const std::string& command, const std::string& params, pid_t* sender) {
    const std::size_t before = daemon_.Received().size();
    const Outcome outcome = Post(Body(command, params));
    *sender = outcome.pid;
    EXPECT_THAT(outcome, Replied(ResultJson(command)));
    const std::vector<std::string> received = daemon_.Received();
    EXPECT_EQ(received.size(), before + 1);
    return received.empty() ? "" : received.back();
  }

  void ExpectPayload(const std::string& command, int code, const std::string& params,
                     const std::string& payload) {
    pid_t sender = 0;
    const std::string message = MessageOf(command, params, &sender);
    EXPECT_EQ(message, Message(6, payload.size(), code, sender, payload));
  }

  /// A missing parameter: refused with -1, after these lines of the command's own.
  void ExpectMissing(const std::string& command, const std::string& params,
                     const std::string& missing, const LogLines& lines) {
    const std::string body = Body(command, params);
    EXPECT_THAT(Post(body), Replied(ErrorJson("RequestedError")));
    LogLines expected = {Error("rcv post_data = " + body)};
    expected.insert(expected.end(), lines.begin(), lines.end());
    expected.push_back(Error("error: json_parser() key [" + missing + "] does not appear\n"));
    expected.push_back(Error("requested error ret=-1, params=\"Params\":{" + params + "}}}"));
    EXPECT_EQ(log_.TakeLines(), expected);
    EXPECT_THAT(daemon_.Received(), testing::IsEmpty());
  }

  FakeDaemon daemon_{Answer(ReplyMessage(Bytes({0})))};
};

class ClipMarkTest : public ClipCommandTest {};

TEST_F(ClipMarkTest, SendsSlotIndexAndMark) {
  struct Row {
    const char* description;
    const char* params;
    std::string payload;
  };
  const Row rows[] = {
      {"set on slot A", R"("Slot":"A","IndexNo":258,"OKMark":"Mark")", Bytes({0, 0, 1, 2, 1, 0})},
      {"cleared on slot B", R"("Slot":"B","IndexNo":3,"OKMark":"NoMark")",
       Bytes({1, 0, 0, 3, 0, 0})},
      {"any other word sets", R"("Slot":"A","IndexNo":1,"OKMark":"nomark")",
       Bytes({0, 0, 0, 1, 1, 0})},
      {"a longer word sets", R"("Slot":"A","IndexNo":1,"OKMark":"NoMarks")",
       Bytes({0, 0, 0, 1, 1, 0})},
      {"a shorter word sets", R"("Slot":"A","IndexNo":1,"OKMark":"NoMar")",
       Bytes({0, 0, 0, 1, 1, 0})},
      {"an empty word sets", R"("Slot":"A","IndexNo":1,"OKMark":"")", Bytes({0, 0, 0, 1, 1, 0})},
      {"lower case is slot B", R"("Slot":"a","IndexNo":1,"OKMark":"Mark")",
       Bytes({1, 0, 0, 1, 1, 0})},
      {"no slot at all is slot B", R"("Slot":"","IndexNo":1,"OKMark":"Mark")",
       Bytes({1, 0, 0, 1, 1, 0})},
      {"only the first character counts", R"("Slot":"AB","IndexNo":1,"OKMark":"Mark")",
       Bytes({0, 0, 0, 1, 1, 0})},
      {"the highest index", R"("Slot":"A","IndexNo":65535,"OKMark":"Mark")",
       Bytes({0, 0, 255, 255, 1, 0})},
      {"an index of more than 16 bits", R"("Slot":"A","IndexNo":65537,"OKMark":"Mark")",
       Bytes({0, 0, 0, 1, 1, 0})},
      {"a negative index", R"("Slot":"A","IndexNo":-2,"OKMark":"Mark")",
       Bytes({0, 0, 255, 254, 1, 0})},
      {"an index that is none", R"("Slot":"A","IndexNo":"x","OKMark":"Mark")",
       Bytes({0, 0, 0, 0, 1, 0})},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    ExpectPayload("SetClipInfo", 16, row.params, row.payload);
  }
}

TEST_F(ClipMarkTest, RefusesAMissingParameter) {
  ExpectMissing("SetClipInfo", R"("IndexNo":1,"OKMark":"Mark")", "Slot", {});
  ExpectMissing("SetClipInfo", R"("Slot":"A","OKMark":"Mark")", "IndexNo", {});
  ExpectMissing("SetClipInfo", R"("Slot":"A","IndexNo":1)", "OKMark", {});
}

TEST_F(ClipMarkTest, TracesItsFieldsAtLevelFour) {
  WriteFile(kLogLevelFile, "cmd=4\n");
  struct Row {
    const char* params;
    const char* line;
  };
  const Row rows[] = {
      {R"("Slot":"A","IndexNo":258,"OKMark":"Mark")", "index_no=258, ok_mark=Mark"},
      {R"("Slot":"A","IndexNo":-1,"OKMark":"NoMark")", "index_no=65535, ok_mark=NoMark"},
      {R"("Slot":"A","IndexNo":70000,"OKMark":"")", "index_no=4464, ok_mark="},
      {R"("Slot":"A","IndexNo":1,"OKMark":"123456789012345678901234567890x")",
       "index_no=1, ok_mark=123456789012345678901234567890"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const std::string body = Body("SetClipInfo", row.params);
    Post(body);
    // The first line ends at its slot, which is still empty: a NUL ends the text.
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("rcv post_data = " + body), Info("Set {slot="), Info(row.line),
                       Error("send res_str = " + ResultJson("SetClipInfo"))));
  }
}

TEST_F(ClipMarkTest, IsNotTracedBelowLevelFour) {
  const std::string body = Body("SetClipInfo", R"("Slot":"A","IndexNo":1,"OKMark":"Mark")");
  Post(body);
  EXPECT_THAT(log_.Lines(), Logged(Error("rcv post_data = " + body),
                                   Error("send res_str = " + ResultJson("SetClipInfo"))));
}

class FtpPromptTest : public ClipCommandTest {};

TEST_F(FtpPromptTest, SendsTheLowByteOfTheResponse) {
  struct Row {
    const char* params;
    const char* logged;
    std::string payload;
  };
  const Row rows[] = {
      {R"("Response":0)", "0(0)", Bytes({0, 0})},
      {R"("Response":1)", "1(1)", Bytes({1, 0})},
      {R"("Response":"2")", "2(2)", Bytes({2, 0})},
      {R"("Response":255)", "255(255)", Bytes({255, 0})},
      {R"("Response":258)", "258(258)", Bytes({2, 0})},
      {R"("Response":-1)", "-1(-1)", Bytes({255, 0})},
      {R"("Response":"yes")", "yes(0)", Bytes({0, 0})},
      {R"("Response":"")", "(0)", Bytes({0, 0})},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.params);
    ExpectPayload("WebFtpOperateResponse", 107, row.params, row.payload);
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("rcv post_data = " + Body("WebFtpOperateResponse", row.params)),
                       Info("responce params={" + std::string(row.params) + "}}}"),
                       Info("send param response=" + std::string(row.logged)),
                       Error("send res_str = " + ResultJson("WebFtpOperateResponse"))));
  }
}

TEST_F(FtpPromptTest, RefusesAMissingResponse) {
  ExpectMissing("WebFtpOperateResponse", R"("Answer":1)", "Response",
                {Info("responce params={\"Answer\":1}}}")});
}

class FtpUploadStartTest : public ClipCommandTest {
 protected:
  struct Kind {
    const char* command;
    int code;
    const char* log_name;
  };
  static constexpr Kind kKinds[] = {
      {"SetWebFtpUploadAll", 108, "upload all"},
      {"SetWebFtpUploadOkMarked", 109, "upload ok mark"},
  };
};

TEST_F(FtpUploadStartTest, SendsTheLowBytesOfServerAndSlot) {
  struct Row {
    const char* params;
    const char* logged;
    std::string payload;
  };
  const Row rows[] = {
      {R"("Server":0,"Slot":1)", "server=0 slot=1", Bytes({0, 1})},
      {R"("Server":"3","Slot":"0")", "server=3 slot=0", Bytes({3, 0})},
      {R"("Slot":1,"Server":2)", "server=2 slot=1", Bytes({2, 1})},
      {R"("Server":"258","Slot":"511")", "server=258 slot=511", Bytes({2, 255})},
      {R"("Server":-1,"Slot":"A")", "server=-1 slot=0", Bytes({255, 0})},
  };
  for (const Kind& kind : kKinds) {
    for (const Row& row : rows) {
      SCOPED_TRACE(std::string(kind.command) + " " + row.params);
      ExpectPayload(kind.command, kind.code, row.params, row.payload);
      const std::string name = kind.log_name;
      EXPECT_THAT(log_.TakeLines(),
                  Logged(Error("rcv post_data = " + Body(kind.command, row.params)),
                         Info(name + " params={" + row.params + "}}}"),
                         Info(name + " send param " + row.logged),
                         Error("send res_str = " + ResultJson(kind.command))));
    }
  }
}

TEST_F(FtpUploadStartTest, RefusesAMissingParameter) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.command);
    const std::string params_line = std::string(kind.log_name) + " params=";
    ExpectMissing(kind.command, R"("Slot":1)", "Server", {Info(params_line + "{\"Slot\":1}}}")});
    ExpectMissing(kind.command, R"("Server":1)", "Slot", {Info(params_line + "{\"Server\":1}}}")});
  }
}

struct Selection {
  const char* command;
  int code;
  const char* log_name;
};

constexpr Selection kSelections[] = {
    {"SetWebFtp1UploadASelect", 110, "select A upload ftp1"},
    {"SetWebFtp2UploadASelect", 111, "select A upload ftp2"},
    {"SetWebFtp3UploadASelect", 112, "select A upload ftp3"},
    {"SetWebFtp4UploadASelect", 113, "select A upload ftp4"},
    {"SetWebFtp1UploadBSelect", 114, "select B upload ftp1"},
    {"SetWebFtp2UploadBSelect", 115, "select B upload ftp2"},
    {"SetWebFtp3UploadBSelect", 116, "select B upload ftp3"},
    {"SetWebFtp4UploadBSelect", 117, "select B upload ftp4"},
};

/// The 500 bytes of a selection: zeros except for the given blocks of four bytes.
using Blocks = std::vector<std::pair<std::size_t, std::string>>;

std::string Bitmap(const Blocks& blocks) {
  std::string bitmap(500, '\0');
  for (const auto& [block, bytes] : blocks) {
    bitmap.replace(4 * block, 4, bytes);
  }
  return bitmap;
}

class FtpSelectionTest : public ClipCommandTest {};

TEST_F(FtpSelectionTest, EachCommandSendsItsCodeAndTheBitmap) {
  const std::string params = R"("block0":1,"block5":16909060)";
  const std::string payload = Bitmap({{0, Bytes({0, 0, 0, 1})}, {5, Bytes({1, 2, 3, 4})}});
  for (const Selection& selection : kSelections) {
    SCOPED_TRACE(selection.command);
    ExpectPayload(selection.command, selection.code, params, payload);
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("rcv post_data = " + Body(selection.command, params)),
                       Info(std::string(selection.log_name) + " params={" + params + "}}}"),
                       Error("send res_str = " + ResultJson(selection.command))));
  }
}

TEST_F(FtpSelectionTest, ReadsBlocks) {
  const std::string all_bits = Bytes({255, 255, 255, 255});
  struct Row {
    const char* description;
    const char* params;
    Blocks blocks;
  };
  const Row rows[] = {
      {"none", "", {}},
      {"the first", R"("block0":258)", {{0, Bytes({0, 0, 1, 2})}}},
      {"the last", R"("block124":1)", {{124, Bytes({0, 0, 0, 1})}}},
      {"beyond the last", R"("block125":1)", {}},
      {"blocks left out",
       R"("block0":1,"block5":2)",
       {{0, Bytes({0, 0, 0, 1})}, {5, Bytes({0, 0, 0, 2})}}},
      {"numbers that begin alike",
       R"("block1":1,"block10":10,"block100":100)",
       {{1, Bytes({0, 0, 0, 1})}, {10, Bytes({0, 0, 0, 10})}, {100, Bytes({0, 0, 0, 100})}}},
      {"all bits, unsigned", R"("block0":4294967295)", {{0, all_bits}}},
      {"all bits, signed", R"("block0":-1)", {{0, all_bits}}},
      {"the highest bit, unsigned", R"("block0":2147483648)", {{0, Bytes({0x80, 0, 0, 0})}}},
      {"the highest bit, signed", R"("block0":-2147483648)", {{0, Bytes({0x80, 0, 0, 0})}}},
      {"all bits but the highest", R"("block0":2147483647)", {{0, Bytes({0x7F, 255, 255, 255})}}},
      {"more than 32 bits", R"("block0":4294967298)", {{0, Bytes({0, 0, 0, 2})}}},
      {"more than 64 bits", R"("block0":99999999999999999999)", {{0, all_bits}}},
      {"less than 64 bits hold", R"("block0":-99999999999999999999)", {}},
      {"a quoted number is none", R"("block0":"7","block1":8)", {{1, Bytes({0, 0, 0, 8})}}},
      {"no number", R"("block0":x,"block1":)", {}},
      {"a number with a tail",
       R"("block0":7x,"block1":8.9)",
       {{0, Bytes({0, 0, 0, 7})}, {1, Bytes({0, 0, 0, 8})}}},
      {"out of order", R"("block5":5,"block0":1)", {{0, Bytes({0, 0, 0, 1})}}},
      {"one out of order",
       R"("block0":1,"block2":2,"block1":3,"block3":4)",
       {{0, Bytes({0, 0, 0, 1})}, {1, Bytes({0, 0, 0, 3})}, {3, Bytes({0, 0, 0, 4})}}},
      {"twice the same", R"("block0":1,"block0":2)", {{0, Bytes({0, 0, 0, 1})}}},
      {"other members between",
       R"("block0":1,"x":9,"block1":2)",
       {{0, Bytes({0, 0, 0, 1})}, {1, Bytes({0, 0, 0, 2})}}},
      {"another spelling", R"("Block0":1,"block00":2,"block 0":3)", {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    ExpectPayload("SetWebFtp1UploadASelect", 110, row.params, Bitmap(row.blocks));
  }
}

TEST_F(FtpSelectionTest, ReadsAllBlocks) {
  std::string params;
  Blocks blocks;
  for (int block = 0; block < 125; ++block) {
    params += (block > 0 ? ",\"block" : "\"block") + std::to_string(block) +
              "\":" + std::to_string(0x01020300 + block);
    blocks.emplace_back(block, Bytes({1, 2, 3, block}));
  }
  ExpectPayload("SetWebFtp4UploadBSelect", 117, params, Bitmap(blocks));
}

TEST_F(FtpSelectionTest, AValueWithoutAnEndSelectsNothing) {
  const std::string head = R"({"Request":{"Command":"SetWebFtp2UploadBSelect","SessionID":")" +
                           std::string(kSession) + R"(","Params":{)";
  struct Row {
    const char* description;
    const char* tail;
    Blocks blocks;
  };
  const Row rows[] = {
      {"the only one", R"("block0":7)", {}},
      {"one brace does not end it", R"("block0":7})", {}},
      {"the last one", R"("block0":7,"block1":8})", {{0, Bytes({0, 0, 0, 7})}}},
      {"a block that is not read is an end", R"("block0":7,"block)", {{0, Bytes({0, 0, 0, 7})}}},
      {"two braces are an end", R"("block0":7}})", {{0, Bytes({0, 0, 0, 7})}}},
  };
  std::vector<std::string> messages;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    const Outcome outcome = Post(head + row.tail);
    EXPECT_THAT(outcome, Replied(ResultJson("SetWebFtp2UploadBSelect")));
    messages.push_back(Message(6, 500, 115, outcome.pid, Bitmap(row.blocks)));
    EXPECT_EQ(daemon_.Received(), messages);
  }
}

TEST_F(FtpSelectionTest, TracesTheFirstAndLastBlocksAsStored) {
  WriteFile(kLogLevelFile, "cmd=4\n");
  const std::string params =
      R"("block0":1,"block1":-1,"block3":305419896,"block4":9,"block121":9,"block122":160,)"
      R"("block124":2147483648)";
  const std::string body = Body("SetWebFtp3UploadASelect", params);
  Post(body);
  EXPECT_THAT(
      log_.Lines(),
      Logged(Error("rcv post_data = " + body),
             Info("select A upload ftp3 params={" + params + "}}}"), Info("block[0]:1000000"),
             Info("block[1]:ffffffff"), Info("block[2]:0"), Info("block[3]:78563412"),
             Info("block[122]:a0000000"), Info("block[123]:0"), Info("block[124]:80"),
             Error("send res_str = " + ResultJson("SetWebFtp3UploadASelect"))));
}

/// All commands of this file with the payload length that they announce.
struct Announced {
  const char* command;
  int code;
  std::size_t length;
};

constexpr Announced kAnnounced[] = {
    {"SetClipInfo", 16, 6},
    {"WebFtpOperateResponse", 107, 2},
    {"SetWebFtpUploadAll", 108, 2},
    {"SetWebFtpUploadOkMarked", 109, 2},
    {"SetWebFtp1UploadASelect", 110, 500},
    {"SetWebFtp2UploadASelect", 111, 500},
    {"SetWebFtp3UploadASelect", 112, 500},
    {"SetWebFtp4UploadASelect", 113, 500},
    {"SetWebFtp1UploadBSelect", 114, 500},
    {"SetWebFtp2UploadBSelect", 115, 500},
    {"SetWebFtp3UploadBSelect", 116, 500},
    {"SetWebFtp4UploadBSelect", 117, 500},
};

TEST_F(ClipCommandTest, WithoutParametersSendsTheBareHeader) {
  std::vector<std::string> messages;
  for (const Announced& row : kAnnounced) {
    SCOPED_TRACE(row.command);
    const Outcome outcome = Post(Body(row.command));
    EXPECT_THAT(outcome, Replied(ResultJson(row.command)));
    messages.push_back(Message(6, row.length, row.code, outcome.pid));
    EXPECT_EQ(daemon_.Received(), messages);
  }
}

TEST_F(ClipCommandTest, ReportsTheResultOfTheDaemon) {
  for (const Announced& row : kAnnounced) {
    SCOPED_TRACE(row.command);
    daemon_.Next(Answer(ReplyMessage(Bytes({2}))));
    EXPECT_THAT(Post(Body(row.command)), Replied(ResultJson(row.command, "DisableError")));
  }
}

}  // namespace
