// The settings folder when it is missing, out of reach, write-protected or on a full disk: every
// command that reads or writes a file in it.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::IsEmpty;

namespace fs = std::filesystem;

const LogLine kRenewal = Info("##### RenewSetting socket_send_msg() renew_reconnect 0");

/// A command and what it does without a file: a reader reports the defaults; a writer starts from
/// them, stores nothing, sends its notice and succeeds.
struct SettingsCommand {
  std::string name;
  std::string params;
  bool is_traced;  // request and reply, by default
  LogLines steps;
  std::string data;  // of a reader's reply
  bool writes;
};

SettingsCommand Reader(const std::string& name, const std::string& params, bool is_traced,
                       const LogLines& steps, const std::string& data) {
  return {name, params, is_traced, steps, data, false};
}

/// A writer of these files; `steps` are its lines before it finds that it cannot write them.
SettingsCommand Writer(const std::string& name, const std::string& params,
                       const std::vector<std::string>& files, LogLines steps) {
  for (const std::string& file : files) {
    steps.push_back(Error("cannot write [/var/tmp/lighttpd/" + file + "]"));
  }
  steps.push_back(kRenewal);
  return {name, params, true, steps, "", true};
}

/// A writer of a streaming server, which traces its parameters.
SettingsCommand ServerWriter(const std::string& transport, const std::string& params,
                             const LogLines& steps = {}) {
  const std::string name = "SetStreamingServerSettings" + transport;
  LogLines lines = {Info("##### " + name + " Parse() params={" + params + "}}}")};
  lines.insert(lines.end(), steps.begin(), steps.end());
  return Writer(name, params, {"streaming_server1"}, lines);
}

std::vector<SettingsCommand> Readers() {
  return {
      Reader("GetStreamingSettings", "", false, {Info("##### GetStreamingSettings Output()")},
             R"("Resolution":"1920x1080","Framerate":"60p","Bitrate":"")"),
      Reader("GetCurrentStreamingServerID", "", true, {}, R"("ID":0)"),
      Reader("GetStreamingServerSettings", R"("ID":1)", true,
             {Info("##### GetStreamingSettings Parse() params={\"ID\":1}}}")},
             R"("Alias":"0","Type":"UDP","Udp":{"DstAddress":"0.0.0.0","DstPort":0,)"
             R"("PcrJitter":0})"),
      Reader("GetNTPStatus", "", false,
             {Info("##### GetNTPStatus Output()"), Info("##### GetNTPStatus ntp tc_sync 1 1")},
             R"("Address":"192.168.0.100","TcSync":"On","Status":"Master")"),
      Reader("GetIFBSettings", "", false, {Info("##### GetIFBSettings Output()")},
             R"("Function":"Disable","Address":"192.168.0.100","Port":5000,)"
             R"("Mountpoint":"DB90TX")"),
      Reader("GetPresetZoomPosition", "", true, {}, R"("A":-1,"B":-1,"C":-1)"),
  };
}

std::vector<SettingsCommand> StreamingWriters() {
  return {
      Writer("SetStreamingSettings", R"("Resolution":"720x480","Bitrate":"1.5M")", {"streaming"},
             {Info("##### SetStreamingSettings Parse() m_resolution=720x480 m_bitrate=1.5M"),
              Info("##### SetStreamingSettings Transmit() bofore res:0 qua:0 ser:0"),
              Info("##### SetStreamingSettings Transmit() after res:3 qua:64 ser:0")}),
      Writer("SetStreamingResolution", R"("Resolution":"640x360")", {"streaming"}, {}),
      Writer("SetStreamingFramerate", R"("Framerate":"50i")", {"streaming"},
             {Info("##### SetStreamingFramerate Parse() m_framerate=50i"),
              Info("##### SetStreamingFramerate Transmit() bofore res:0 qua:0 ser:0"),
              Info("##### SetStreamingFramerate Transmit() after res:0 qua:3 ser:0")}),
      Writer("SetStreamingBitrate", R"("Bitrate":"12M")", {"streaming"}, {}),
      Writer("SetCurrentStreamingServerID", R"("ID":3)", {"streaming"},
             {Info("##### SetCurrentStreamingServerID Parse() m_server=3 OK"),
              Info("##### SetCurrentStreamingServerID Transmit() bofore res:0 qua:0 ser:0"),
              Info("##### SetCurrentStreamingServerID Transmit() after res:0 qua:0 ser:3")}),
      ServerWriter("UDP", R"("ID":1,"Alias":"a","DstAddress":"h","DstPort":1,"PcrJitter":2)"),
      ServerWriter("RTSP", R"("ID":1,"Alias":"a","Password":"p")"),
      ServerWriter("ZIXI",
                   R"("ID":1,"Alias":"a","DstAddress":"h","DstPort":1,"StreamId":"s",)"
                   R"("Password":"p","Latency":2,"AdaptiveBitrate":1)",
                   {Info("##### SetStreamingServerSettingsZIXI Transmit() m_server_no=1 m_alias=a "
                         "m_type=3 m_ip=h m_port=1 m_sid=s m_pas=p m_lat=2 m_abt=1")}),
      ServerWriter("RTMP", R"("ID":1,"Alias":"a","DstUrl":"u","StreamKey":"k")"),
      ServerWriter("RTP", R"("ID":1,"Alias":"a","DstAddress":"h","DstPort":1,"Smpte2022Fec":1,)"
                          R"("FecMatrixL":10,"FecMatrixD":5)"),
      Writer("SetCldstrmStreamInfoToStrmsrv", R"("EventID":3,"StrmsrvID":2)",
             {"streaming", "streaming_server2"},
             {Error("Url: u"), Error("StreamKey: k"), Error("Title: t")}),
  };
}

std::vector<SettingsCommand> CameraWriters() {
  return {
      Writer("SetNTPServer", R"("Address":"ntp")", {"ntp"},
             {Info("##### SetNTPServer Parse() addr:ntp"),
              Info("##### SetNTPServer Transmit() bofore addr:192.168.0.100 tc_sync:1"),
              Info("##### SetNTPServer Transmit() after addr:ntp tc_sync:1")}),
      Writer("SetNTPSettings", R"("TcSync":"Off")", {"ntp"},
             {Info("##### SetNTPSettings Parse() tc_sync:Off"),
              Info("##### SetNTPSettings Transmit() bofore addr:192.168.0.100 tc_sync:1"),
              Info("##### SetNTPSettings Transmit() after addr:192.168.0.100 tc_sync:0")}),
      Writer("SetIFBSettings", R"("Function":"Enable","Address":"h","Port":1,"Mountpoint":"m")",
             {"ifb"},
             {Info("##### SetIFBSettings Parse() func:Enable addr:h port:1 mntp:m"),
              Info("##### SetIFBSettings Transmit() bofore func:0 addr:192.168.0.100 port:5000 "
                   "mntp:DB90TX"),
              Info("##### SetIFBSettings Transmit() after func:1 addr:h port:1 mntp:m")}),
      Writer("SetPresetZoomPosition", R"("ID":"A","Position":1)", {"web_zoom_preset"}, {}),
  };
}

std::vector<SettingsCommand> AllSettingsCommands() {
  std::vector<SettingsCommand> commands = Readers();
  for (const auto& writers : {StreamingWriters(), CameraWriters()}) {
    commands.insert(commands.end(), writers.begin(), writers.end());
  }
  return commands;
}

std::string ReplyTo(const SettingsCommand& command) {
  return command.writes ? ResultJson(command.name) : DataJson(command.name, command.data);
}

/// The lines of a command whose request has this text.
LogLines LinesOf(const SettingsCommand& command, const std::string& request) {
  LogLines lines = command.steps;
  if (command.is_traced) {
    lines.insert(lines.begin(), Error("rcv post_data = " + request));
    lines.push_back(Error("send res_str = " + ReplyTo(command)));
  }
  return lines;
}

/// A fault of the folder. It lasts as long as the object that `put` returns.
struct Fault {
  const char* name;
  std::function<std::shared_ptr<void>()> put;
};

const Fault kMissing = {"Missing", [] {
                          fs::remove_all(kSettingsFolder);
                          return nullptr;
                        }};
const Fault kOutOfReach = {"OutOfReach", [] {
                             fs::permissions(kSettingsFolder, fs::perms::none);
                             return nullptr;
                           }};
const Fault kWriteProtected = {"WriteProtected",
                               [] { return std::make_shared<ReadOnly>(kSettingsFolder); }};
const Fault kFull = {"Full", [] { return std::make_shared<FullDisk>(kSettingsFolder); }};

class SettingsFaultTest : public CameraTest, public testing::WithParamInterface<Fault> {
 protected:
  /// The files in the folder, except the session file.
  static std::vector<std::string> Files() {
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(kSettingsFolder)) {
      const std::string name = entry.path().filename();
      if (name != ".session" && name != ".ballast") {
        files.push_back(name);
      }
    }
    return files;
  }

  static Outcome Run(Request request) { return RunHandler(request.WithoutPrivileges()); }

  /// The command does what it does without a file, and sends its notice.
  void ExpectDefaults(const SettingsCommand& command, const Request& request,
                      const LogLines& lines) {
    SCOPED_TRACE(command.name);
    FakeDaemon control;
    EXPECT_THAT(Run(request), Replied(ReplyTo(command)));
    EXPECT_EQ(log_.TakeLines(), lines);
    EXPECT_EQ(control.Received(),
              std::vector<std::string>(command.writes ? 1 : 0, RenewalNotice()));
  }

  const std::string stream_info_ = Bytes({0, 0, 0, 0}) + "u" + std::string(191, '\0') + "k" +
                                   std::string(63, '\0') + "t" + std::string(63, '\0');
  FakeDaemon streaming_{kStreamingSocket, Answer(ReplyMessage(stream_info_))};
};

const auto kNameOfFault = [](const auto& test) { return test.param.name; };

/// Nothing in the folder can be read, so no client is logged in.
class UnreadableFolderTest : public SettingsFaultTest {};

INSTANTIATE_TEST_SUITE_P(In, UnreadableFolderTest, testing::Values(kMissing, kOutOfReach),
                         kNameOfFault);

TEST_P(UnreadableFolderTest, HoldsNoSession) {
  const auto fault = GetParam().put();
  FakeDaemon control;
  std::vector<SettingsCommand> commands = AllSettingsCommands();
  commands.push_back(Writer("SessionRenewal", R"("Update":1)", {}, {}));
  for (const SettingsCommand& command : commands) {
    SCOPED_TRACE(command.name);
    EXPECT_THAT(Run(Request(Body(command.name, command.params))),
                Replied("{\"Response\":{\"Result\":\"SessionError\"}}"));
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("session error no file [/var/tmp/lighttpd/.session]")));
  }
  EXPECT_THAT(control.Received(), IsEmpty());
  EXPECT_THAT(streaming_.Received(), IsEmpty());
}

// The command line needs no session.
TEST_P(UnreadableFolderTest, MeansDefaults) {
  const auto fault = GetParam().put();
  for (const SettingsCommand& command : AllSettingsCommands()) {
    const std::string text = BodyWithoutSession(command.name, command.params);
    LogLines lines = LinesOf(command, text);
    lines.insert(lines.begin(), Error("CMD post_data = " + text));
    ExpectDefaults(command, Request::CommandLine({"100", text}), lines);
  }
}

TEST_P(UnreadableFolderTest, KeepsTheSessionFromBeingRenewed) {
  const auto fault = GetParam().put();
  const std::string text = BodyWithoutSession("SessionRenewal", R"("Update":1)");
  EXPECT_THAT(Run(Request::CommandLine({"100", text})),
              Replied(ResultJson("SessionRenewal", "RequestedError")));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("CMD post_data = " + text), Error("rcv post_data = " + text),
                     Info("##### SessionRenewal Parse() params={\"Update\":1}}}"),
                     Error("cannot write [/var/tmp/lighttpd/.session]"),
                     Error("send res_str = " + ResultJson("SessionRenewal", "RequestedError"))));
}

TEST_P(UnreadableFolderTest, DoesNotConcernCommandsWithoutSession) {
  const auto fault = GetParam().put();
  const std::string reply =
      DataJson("HeartbeatConfirmation", R"("VideoOutput":"On","StudioTally":"Off")");
  EXPECT_THAT(Run(Request(BodyWithoutSession("HeartbeatConfirmation"))), Replied(reply));
}

/// Files in the folder can be read but not written.
class UnwritableFolderTest : public SettingsFaultTest {};

INSTANTIATE_TEST_SUITE_P(In, UnwritableFolderTest, testing::Values(kWriteProtected, kFull),
                         kNameOfFault);

// Not even an empty file may be left: all its settings would read as empty.
TEST_P(UnwritableFolderTest, StoresNothing) {
  const auto fault = GetParam().put();
  for (const SettingsCommand& command : AllSettingsCommands()) {
    const std::string body = Body(command.name, command.params);
    ExpectDefaults(command, Request(body), LinesOf(command, body));
    EXPECT_THAT(Files(), IsEmpty());
  }
}

class SettingsFolderTest : public CameraTest {};

// Pipes without a writer read as empty files, and pipes without a reader cannot be written.
TEST_F(SettingsFolderTest, PipesInPlaceOfFilesAreNotWaitedFor) {
  const FakeDaemon control;
  for (const char* const name : {"cgilog", "ntp"}) {
    ASSERT_EQ(mkfifo((std::string(kSettingsFolder) + "/" + name).c_str(), 0600), 0);
  }
  EXPECT_THAT(
      Post(Body("GetNTPStatus")),
      Replied(DataJson("GetNTPStatus", R"("Address":"","TcSync":"Off","Status":"Master")")));
  EXPECT_THAT(Post(Body("SetNTPServer", R"("Address":"ntp")")),
              Replied(ResultJson("SetNTPServer")));
  EXPECT_TRUE(fs::is_fifo(std::string(kSettingsFolder) + "/ntp"));
}

// Another program has the pipe open, and it is full.
TEST_F(SettingsFolderTest, APipeInPlaceOfAFileSurvivesAWrite) {
  constexpr char kPath[] = "/var/tmp/lighttpd/ntp";
  const FakeDaemon control;
  ASSERT_EQ(mkfifo(kPath, 0600), 0);
  const int pipe = open(kPath, O_RDWR | O_NONBLOCK | O_CLOEXEC);
  const std::string block(4096, 'x');
  while (write(pipe, block.data(), block.size()) > 0) {
  }
  const std::string body = Body("SetNTPServer", R"("Address":"ntp")");
  EXPECT_THAT(Post(body), Replied(ResultJson("SetNTPServer")));
  close(pipe);
  EXPECT_TRUE(fs::is_fifo(kPath));
  EXPECT_THAT(log_.Lines(), testing::Contains(Error("cannot write [/var/tmp/lighttpd/ntp]")));
}

TEST_F(SettingsFolderTest, DevicesWithoutEndInPlaceOfFilesEndARead) {
  const FakeDaemon control;
  for (const char* const name : {"cgilog", "ntp"}) {
    fs::create_symlink("/dev/zero", std::string(kSettingsFolder) + "/" + name);
  }
  for (const auto& [body, json] :
       {std::pair(Body("GetNTPStatus"),
                  DataJson("GetNTPStatus", R"("Address":"","TcSync":"Off","Status":"Master")")),
        std::pair(Body("SetNTPServer", R"("Address":"ntp")"), ResultJson("SetNTPServer"))}) {
    SCOPED_TRACE(body);
    const Outcome outcome = Post(body);
    EXPECT_THAT(outcome, Replied(json));
    EXPECT_LT(outcome.elapsed.count(), TimeMargin());
  }
  EXPECT_TRUE(fs::is_symlink(std::string(kSettingsFolder) + "/ntp"));
}

TEST_F(SettingsFolderTest, ADeviceWithoutEndInPlaceOfTheSessionHoldsNoSession) {
  fs::remove(kSessionFile);
  fs::create_symlink("/dev/zero", kSessionFile);
  const Outcome outcome = Post(Body("GetSystemInfo"));
  EXPECT_THAT(outcome, Replied("{\"Response\":{\"Result\":\"SessionError\"}}"));
  EXPECT_LT(outcome.elapsed.count(), TimeMargin());
}

TEST_F(SettingsFolderTest, NoMoreThan16MiBOfAFileAreRead) {
  constexpr std::size_t kLimit = 16777216;
  const std::string last_line = "address\tinside\n";
  WriteFile("/var/tmp/lighttpd/ntp",
            IgnoredLines(kLimit - last_line.size()) + last_line + "address\toutside\n");
  EXPECT_THAT(
      Post(Body("GetNTPStatus")),
      Replied(DataJson("GetNTPStatus", R"("Address":"inside","TcSync":"Off","Status":"Master")")));
}

TEST_F(SettingsFolderTest, AHugeFileIsReplacedByOneOfTheUsualSize) {
  const FakeDaemon control;
  WriteFile("/var/tmp/lighttpd/ntp", "address\told\ntc_sync\t0\n" + std::string(20000000, 'x'));
  EXPECT_THAT(Post(Body("SetNTPServer", R"("Address":"ntp")")),
              Replied(ResultJson("SetNTPServer")));
  EXPECT_EQ(ReadFile("/var/tmp/lighttpd/ntp"), "address\tntp\ntc_sync\t0\n");
}

TEST_F(SettingsFolderTest, AFileWithoutRoomToGrowKeepsItsOldContents) {
  WriteFile("/var/tmp/lighttpd/web_zoom_preset", "preset_a\t1\npreset_b\t2\npreset_c\t3\n");
  const FakeDaemon control;
  const std::string body = Body("SetPresetZoomPosition", R"("ID":"C","Position":-2147483648)");
  // The file has 33 bytes and would need 43.
  EXPECT_THAT(RunHandler(Request(body).LimitFileSize(40)),
              Replied(ResultJson("SetPresetZoomPosition")));
  EXPECT_EQ(ReadFile("/var/tmp/lighttpd/web_zoom_preset"),
            "preset_a\t1\npreset_b\t2\npreset_c\t3\n");
  EXPECT_THAT(log_.Lines(),
              testing::Contains(Error("cannot write [/var/tmp/lighttpd/web_zoom_preset]")));
}

TEST_F(SettingsFolderTest, AFileStaysTheSameWhenItIsRewritten) {
  constexpr char kPath[] = "/var/tmp/lighttpd/ntp";
  WriteFile(kPath, "address\told\ntc_sync\t0\n");
  fs::permissions(kPath, fs::perms(0640));
  struct stat before = {};
  stat(kPath, &before);
  const FakeDaemon control;
  for (const char* const address : {"longer", "s"}) {
    Post(Body("SetNTPServer", std::string("\"Address\":\"") + address + '"'));
    struct stat after = {};
    stat(kPath, &after);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
  }
}

/// A writer that is killed when it makes a system call, and what it leaves for others to find.
struct Kill {
  const char* what;
  std::string before;  // empty: there is no file
  const char* address;
  long system_call;
  std::string left;  // empty: still no file
  std::string then;  // what the next writer, which switches "tc_sync" off, makes of it
};

TEST_F(SettingsFolderTest, AWriterThatIsKilledLeavesNothingForTheNextOne) {
  if (IsEmulated()) {
    GTEST_SKIP() << "an emulator cannot be told which system call to end at";
  }
  const Kill rows[] = {
      {"before it cuts the file", "address\tlonger\ntc_sync\t1\n", "s", SYS_ftruncate,
       "address\ts\ntc_sync\t1\n\n\n\n\n\n", "address\ts\ntc_sync\t0\n"},
      {"before it fills a file that it has lengthened", "address\ts\ntc_sync\t1\n", "longer",
       SYS_pwritev, "address\ts\ntc_sync\t1\n\n\n\n\n\n", "address\ts\ntc_sync\t0\n"},
      {"before it names a new file", "", "s", SYS_linkat, "",
       "address\t192.168.0.100\ntc_sync\t0\n"},
  };
  constexpr char kPath[] = "/var/tmp/lighttpd/ntp";
  const FakeDaemon control;
  for (const Kill& row : rows) {
    SCOPED_TRACE(row.what);
    fs::remove(kPath);
    if (!row.before.empty()) {
      WriteFile(kPath, row.before);
    }
    const std::string body =
        Body("SetNTPServer", std::string("\"Address\":\"") + row.address + '"');
    EXPECT_EQ(RunHandler(Request(body).KillAt(row.system_call)).signal, SIGSYS);
    EXPECT_EQ(Exists(kPath) ? ReadFile(kPath) : "", row.left);
    EXPECT_THAT(Post(Body("SetNTPSettings", R"("TcSync":"Off")")),
                Replied(ResultJson("SetNTPSettings")));
    EXPECT_EQ(ReadFile(kPath), row.then);
  }
}

TEST_F(SettingsFolderTest, AFileIsCreatedAlsoWhereANewOneCannotBeNamed) {
  const FakeDaemon control;
  EXPECT_THAT(
      RunHandler(Request(Body("SetNTPServer", R"("Address":"s")")).Refuse(SYS_linkat, EPERM)),
      Replied(ResultJson("SetNTPServer")));
  EXPECT_EQ(ReadFile("/var/tmp/lighttpd/ntp"), "address\ts\ntc_sync\t1\n");
}

TEST_F(SettingsFolderTest, ALinkToAMissingFileStaysALink) {
  const FakeDaemon control;
  fs::create_symlink("/var/tmp/elsewhere", "/var/tmp/lighttpd/ntp");
  EXPECT_THAT(Post(Body("SetNTPServer", R"("Address":"s")")), Replied(ResultJson("SetNTPServer")));
  EXPECT_TRUE(fs::is_symlink("/var/tmp/lighttpd/ntp"));
  EXPECT_EQ(ReadFile("/var/tmp/elsewhere"), "address\ts\ntc_sync\t1\n");
}

TEST_F(SettingsFolderTest, APipeInPlaceOfTheSessionHoldsNoSession) {
  fs::remove(kSessionFile);
  ASSERT_EQ(mkfifo(kSessionFile, 0600), 0);
  EXPECT_THAT(Post(Body("GetNTPStatus")), Replied("{\"Response\":{\"Result\":\"SessionError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error("session error no file [/var/tmp/lighttpd/.session]")));
}

TEST_F(SettingsFolderTest, WriteProtectionKeepsTheSessionUnchanged) {
  const std::string before = ReadFile(kSessionFile);
  const ReadOnly folder(kSettingsFolder);
  const std::string body = Body("SessionRenewal", R"("Update":1)");
  const std::string reply = ResultJson("SessionRenewal", "RequestedError");
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THAT(Post(body), Replied(reply));
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("rcv post_data = " + body),
                       Info("##### SessionRenewal Parse() params={\"Update\":1}}}"),
                       Error("cannot write [/var/tmp/lighttpd/.session]"),
                       Error("send res_str = " + reply)));
  }
  EXPECT_EQ(ReadFile(kSessionFile), before);
}

// An existing file has room for its new contents.
TEST_F(SettingsFolderTest, AFullDiskTakesNewContentsOfExistingFiles) {
  WriteFile("/var/tmp/lighttpd/ntp", "address\told\ntc_sync\t0\n");
  const FullDisk disk(kSettingsFolder);
  FakeDaemon control;
  EXPECT_THAT(Post(Body("SetNTPServer", R"("Address":"ntp.example")")),
              Replied(ResultJson("SetNTPServer")));
  EXPECT_EQ(ReadFile("/var/tmp/lighttpd/ntp"), "address\tntp.example\ntc_sync\t0\n");
  EXPECT_THAT(Post(Body("SessionRenewal", R"("Update":1)")), Replied(ResultJson("SessionRenewal")));
  EXPECT_THAT(Post(Body("GetPresetZoomPosition")),
              Replied(DataJson("GetPresetZoomPosition", R"("A":-1,"B":-1,"C":-1)")));
}

}  // namespace
