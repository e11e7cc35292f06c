#include "core/simulated_responders.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstring>
#include <ctime>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>

#include "core/dlog.h"
#include "harness/files.h"
#include "harness/messages.h"
#include "harness/refusal.h"
#include "harness/system_log.h"

namespace {

using harness::Bytes;
using harness::Info;
using harness::Logged;
using harness::WriteFile;

constexpr char kCamStatus[] = "/srv/www/htdocs/cam_status";
constexpr char kClipInfo[] = "/srv/www/htdocs/clip_info";

constexpr char kWholeStatus[] =
    "Status=3\n"
    "Mode=1\n"
    "RecMode=4\n"
    "ZoomStatus=1\n"
    "ZoomPosition=770\n"
    "TC=01:23:45.16\n"
    "BatteryInfo=2\n"
    "BatteryLevel=200\n"
    "BatteryValue=4660\n"
    "SlotAStauts=5\n"
    "SlotAProtect=1\n"
    "SlotARemain=-1\n"
    "SlotAClipNum=258\n"
    "SlotBStauts=2\n"
    "SlotBProtect=6\n"
    "SlotBRemain=515\n"
    "SlotBClipNum=65535\n"
    "AspectRatio=7\n"
    "PlanningMetadataPage=1\n"
    "EditMetadataPage=-1\n"
    "ViewRemotePage=8\n"
    "SettingPage=9\n";

constexpr std::int32_t kLogLimit = 3;

/// Traces of level 4 are on and are collected.
class SimulatedResponders : public testing::Test {
 protected:
  SimulatedResponders() { g_log_level_limit = 4; }
  ~SimulatedResponders() override { g_log_level_limit = kLogLimit; }

  harness::SystemLog log_;
};

template <std::size_t Size>
std::string AsText(const std::uint8_t (&bytes)[Size]) {
  return {reinterpret_cast<const char*>(bytes), Size};
}

std::string StatusReply() {
  std::uint8_t reply[38];
  std::memset(reply, 0xEE, sizeof reply);
  Dummy_GetCamStatus(reply);
  return AsText(reply);
}

ByteView View(const std::string& bytes) {
  return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

/// The reply to a request for clips, truncated to its length.
std::string ClipReply(const std::string& request) {
  std::uint8_t reply[484];
  std::memset(reply, 0xEE, sizeof reply);
  const std::size_t length = Dummy_GetClipInfo(View(request), reply);
  if (length > sizeof reply) {
    throw std::logic_error("a reply beyond its buffer");
  }
  return AsText(reply).substr(0, length);
}

std::string ClipRequest(int slot, int first, int count) {
  return Bytes({slot, 0}) + harness::Be16(static_cast<std::uint16_t>(first)) +
         harness::Be16(static_cast<std::uint16_t>(count));
}

/// A lock on a file, as another process would hold it.
class HeldLock {
 public:
  explicit HeldLock(const char* path) : descriptor_(open(path, O_RDONLY | O_CLOEXEC)) {
    if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
      throw std::runtime_error("cannot lock");
    }
  }
  ~HeldLock() { close(descriptor_); }
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

 private:
  int descriptor_;
};

/// Whether `work` waits while the file is locked, and ends after the lock is released.
template <typename Work>
bool WaitsForLock(const char* path, Work work) {
  std::future<void> done;
  bool waited = false;
  {
    const HeldLock lock(path);
    done = std::async(std::launch::async, work);
    waited = done.wait_for(std::chrono::milliseconds(100)) == std::future_status::timeout;
  }
  return done.wait_for(std::chrono::seconds(10)) == std::future_status::ready && waited;
}

TEST_F(SimulatedResponders, StatusTakesEveryKeyToItsPlaceInTheReply) {
  WriteFile(kCamStatus, kWholeStatus);
  EXPECT_EQ(StatusReply(), Bytes({0,    0,              // result
                                  3,    1,    4,    1,  // recording, mode, recording mode, zooming
                                  0x03, 0x02, 0x01, 0x23, 0x45, 0x96,  // zoom position, time code
                                  5,    1,    0xFF, 0xFF, 0x01, 0x02,  // slot A
                                  2,    6,    0x02, 0x03, 0xFF, 0xFF,  // slot B
                                  2,    200,  0x12, 0x34,              // battery
                                  7,                                   // aspect ratio
                                  1,    -1,   8,    9,                 // pages
                                  0,    0,    0,    0,    0}));  // what the file has no keys for
}

TEST_F(SimulatedResponders, StatusLogsItsValuesAtLevel4) {
  WriteFile(kCamStatus, "Status=3\nTC=01:23:45:16\n");
  StatusReply();
  EXPECT_THAT(log_.TakeLines(), Logged(Info("Dummy_GetCamStatus Status=3 TC=01:23:45:16")));
  g_log_level_limit = 3;
  StatusReply();
  EXPECT_THAT(log_.TakeLines(), Logged());
}

TEST_F(SimulatedResponders, StatusFileMayBeIncompleteAndInAnyOrder) {
  WriteFile(kCamStatus,
            "\n"
            "no separator\n"
            "Zoom=5\n"         // another responder's line
            "SlotAStatus=4\n"  // the key is spelled "Stauts"
            "Mode=\n"
            "ModeX=4\n"
            "=4\n"
            "RecMode= 2\r\n"
            "Status=1\n"
            "Status=4");  // the last one counts, line feed or not
  std::string expected(38, '\0');
  expected[2] = 4;
  expected[4] = 2;
  EXPECT_EQ(StatusReply(), expected);
}

TEST_F(SimulatedResponders, MissingFilesReadAsZeros) {
  EXPECT_EQ(StatusReply(), std::string(38, '\0'));
  EXPECT_EQ(ClipReply(ClipRequest(0, 1, 15)), std::string(4, '\0'));
  std::uint8_t page[5];
  Dummy_PageChange({nullptr, 0}, page);
  EXPECT_EQ(AsText(page), std::string(5, '\0'));
  Dummy_SetZoomCtrl(5);
  EXPECT_FALSE(harness::Exists(kCamStatus));
}

TEST_F(SimulatedResponders, UnreadableFilesReadAsZerosAndAreNotRewritten) {
  mkdir(kCamStatus, 0755);
  EXPECT_EQ(StatusReply(), std::string(38, '\0'));
  rmdir(kCamStatus);
  // Can be opened for update, but has nothing at its beginning.
  ASSERT_EQ(symlink("/proc/self/mem", kCamStatus), 0);
  Dummy_SetZoomCtrl(5);
  EXPECT_EQ(StatusReply(), std::string(38, '\0'));
}

TEST_F(SimulatedResponders, PipesInPlaceOfFilesAreNotWaitedFor) {
  alarm(10);  // ends the test if it waits after all
  ASSERT_EQ(mkfifo(kCamStatus, 0600), 0);
  ASSERT_EQ(mkfifo(kClipInfo, 0600), 0);
  EXPECT_EQ(StatusReply(), std::string(38, '\0'));
  EXPECT_EQ(ClipReply(ClipRequest(0, 1, 15)), std::string(4, '\0'));
  Dummy_SetZoomCtrl(5);
  struct stat status = {};
  ASSERT_EQ(stat(kCamStatus, &status), 0);
  EXPECT_TRUE(S_ISFIFO(status.st_mode));
  alarm(0);
}

TEST_F(SimulatedResponders, NoMoreThan16MiBOfAFileAreReadAndALongerOneIsNotRewritten) {
  const std::string contents =
      "Status=3\nZoom=1\n" + harness::IgnoredLines(16777216) + "Status=4\n";
  WriteFile(kCamStatus, contents);
  std::string expected(38, '\0');
  expected[2] = 3;
  EXPECT_EQ(StatusReply(), expected);
  Dummy_SetZoomCtrl(5);
  EXPECT_TRUE(harness::ReadFile(kCamStatus) == contents);
}

TEST_F(SimulatedResponders, WithoutTheLockNothingIsReadOrWritten) {
  WriteFile(kCamStatus, "Status=3\nZoom=1\n");
  constexpr int kSkipped = 2;  // an emulator has no system calls to refuse
  EXPECT_EXIT(
      {
        if (!harness::RefuseSystemCall(SYS_flock, ENOLCK)) {
          _exit(kSkipped);
        }
        const bool read = StatusReply() != std::string(38, '\0');
        Dummy_SetZoomCtrl(7);
        _exit(read ? 1 : 0);
      },
      [](int status) {
        return WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == kSkipped);
      },
      "");
  EXPECT_EQ(harness::ReadFile(kCamStatus), "Status=3\nZoom=1\n");
}

TEST_F(SimulatedResponders, HostileStatusFilesAreHarmless) {
  WriteFile(kCamStatus, std::string(100000, 'A') + "\n" + std::string(100000, '=') + "\nTC=" +
                            std::string(5000, ':') + "\nStatus=" + std::string(5000, '9') +
                            "\nMode=99999999999999999999\n" + std::string("RecMode=\0 1\n", 12));
  std::string expected(38, '\0');
  expected[2] = '\xFF';
  expected[3] = '\xFF';
  EXPECT_EQ(StatusReply(), expected);
}

constexpr char kClips[] =
    "ignored 00:00:01:00 00:00:02:00 2026-01-01 00:00:00 Mark 16:9 Enable\n"
    "[SlotA]\n"
    "CLIP0001 00:00:10:00 00:01:20.12 2026-03-05 14:30:59 Mark 16:9 Disable\n"
    "\n"
    "CLIP0002 10:00:00:00 10:00:09:24 1999-12-31 23:59:58 NoMark 4:3 Enable\n"
    "[SlotB]\n"
    "B1 00:00:00:00 00:00:00:00 2026-01-02 03:04:05 NoMark 16:9 Enable\n"
    "[Elsewhere]\n"
    "X1 00:00:00:00 00:00:00:00 2026-01-02 03:04:05 NoMark 16:9 Enable\n";

std::string FirstClip() {
  return Bytes({0, 1}) + "CLIP0001" +
         Bytes({0,    0, 0x00, 0x00, 0x10, 0x00, 0x00, 0x01, 0x20, 0x92, 0x07,
                0xEA, 2, 5,    14,   30,   59,   1,    0,    0,    1,    0});
}

std::string SecondClip() {
  return Bytes({0, 2}) + "CLIP0002" +
         Bytes({0,    0,  0x10, 0x00, 0x00, 0x00, 0x10, 0x00, 0x09, 0x24, 0x07,
                0xCF, 11, 31,   23,   59,   58,   0,    1,    0,    0,    0});
}

TEST_F(SimulatedResponders, ClipListHasTheClipsOfTheSlotAsRecords) {
  WriteFile(kClipInfo, kClips);
  EXPECT_EQ(ClipReply(ClipRequest(0, 1, 15)), Bytes({0, 0, 0, 2}) + FirstClip() + SecondClip());
  const std::string slot_b = ClipReply(ClipRequest(1, 1, 15));
  EXPECT_EQ(slot_b.size(), 36U);
  EXPECT_EQ(slot_b.substr(0, 8), Bytes({0, 0, 0, 1, 0, 1}) + "B1");
  EXPECT_EQ(ClipReply(ClipRequest(2, 1, 15)), Bytes({0, 0, 0, 0}));
}

TEST_F(SimulatedResponders, ClipListBeginsAtTheStartIndex) {
  WriteFile(kClipInfo, kClips);
  EXPECT_EQ(ClipReply(ClipRequest(0, 2, 15)), Bytes({0, 0, 0, 1}) + SecondClip());
  EXPECT_EQ(ClipReply(ClipRequest(0, 3, 15)), Bytes({0, 0, 0, 0}));
}

TEST_F(SimulatedResponders, ClipListHasNoMoreClipsThanAskedForAndThanFit) {
  WriteFile(kClipInfo, kClips);
  EXPECT_EQ(ClipReply(ClipRequest(0, 1, 1)), Bytes({0, 0, 0, 1}) + FirstClip());
  EXPECT_EQ(ClipReply(ClipRequest(0, 1, 0)), Bytes({0, 0, 0, 0}));
  std::string clips = "[SlotB]\n";
  for (int i = 0; i < 40; ++i) {
    clips += "CLIP\n";
  }
  WriteFile(kClipInfo, clips);
  const std::string reply = ClipReply(ClipRequest(1, 11, 65535));
  EXPECT_EQ(reply.size(), 484U);
  EXPECT_EQ(reply.substr(0, 6), Bytes({0, 0, 0, 15, 0, 11}));
  EXPECT_EQ(reply.substr(4 + 14 * 32, 2), Bytes({0, 25}));
}

TEST_F(SimulatedResponders, ClipLinesMayBeShortLongOrNonsense) {
  WriteFile(kClipInfo, "[SlotA]\r\nALONE\r\nTOOLONGANAME x ? - : Marked 4:30 disable\n" +
                           std::string(1000, 'L') + "\n");
  const std::string reply = ClipReply(ClipRequest(0, 1, 15));
  EXPECT_EQ(reply, Bytes({0, 0, 0, 3}) +                                      //
                       Bytes({0, 1}) + "ALONE" + std::string(25, '\0') +      //
                       Bytes({0, 2}) + "TOOLONGAN" + std::string(21, '\0') +  //
                       Bytes({0, 3}) + "LLLLLLLLL" + std::string(21, '\0'));
}

TEST_F(SimulatedResponders, ClipListLogsWhatIsAskedForAtLevel4) {
  ClipReply(ClipRequest(1, 258, 16));
  EXPECT_THAT(log_.TakeLines(),
              Logged(Info("Dummy_GetClipInfo slot=1, start_index_num=258, max_clip_num=16")));
  ClipReply("");
  EXPECT_THAT(log_.TakeLines(),
              Logged(Info("Dummy_GetClipInfo slot=0, start_index_num=0, max_clip_num=0")));
}

TEST_F(SimulatedResponders, PageChangeReturnsTheFourPermissions) {
  WriteFile(kCamStatus, kWholeStatus);
  const std::uint8_t request[] = {3};
  std::uint8_t reply[5];
  Dummy_PageChange({request, 1}, reply);
  EXPECT_EQ(AsText(reply), Bytes({0, 1, -1, 8, 9}));
  EXPECT_THAT(log_.Lines(), Logged(Info("Page(PlanningMetadata=1, EditMetadata=-1, ViewRemote=8, "
                                        "Setting=9)")));
}

TEST_F(SimulatedResponders, ZoomControlReplacesOnlyTheZoomLine) {
  WriteFile(kCamStatus, "ZoomStatus=1\nZoom=20000\nZoomPosition=770\nlast, without line feed");
  Dummy_SetZoomCtrl(-32768);
  EXPECT_EQ(harness::ReadFile(kCamStatus),
            "ZoomStatus=1\nZoom=-32768\nZoomPosition=770\nlast, without line feed");
  EXPECT_THAT(log_.Lines(), Logged(Info("pos=-32768")));
}

TEST_F(SimulatedResponders, ZoomControlDoesNotChangeAFileWithoutAZoomLine) {
  WriteFile(kCamStatus, kWholeStatus);
  Dummy_SetZoomCtrl(5);
  EXPECT_EQ(harness::ReadFile(kCamStatus), kWholeStatus);
}

TEST_F(SimulatedResponders, ZoomControlKeepsFilesOfAnySize) {
  const std::string rest = std::string(300000, 'x') + "\n" + std::string("a\0b\n", 4);
  WriteFile(kCamStatus, "Zoom=1\n" + rest);
  Dummy_SetZoomCtrl(300);
  EXPECT_EQ(harness::ReadFile(kCamStatus), "Zoom=300\n" + rest);
}

TEST_F(SimulatedResponders, WaitForTheLock) {
  WriteFile(kCamStatus, "Zoom=1\n");
  EXPECT_TRUE(WaitsForLock(kCamStatus, [] { StatusReply(); }));
  EXPECT_TRUE(WaitsForLock(kCamStatus, [] { Dummy_SetZoomCtrl(7); }));
  EXPECT_EQ(harness::ReadFile(kCamStatus), "Zoom=7\n");
  // And they have given it back.
  const HeldLock lock(kCamStatus);
}

TEST_F(SimulatedResponders, NeverSeeAFileThatIsBeingRewritten) {
  g_log_level_limit = 0;
  WriteFile(kCamStatus, "Zoom=1\n" + harness::IgnoredLines(200000) + "Status=3\n");
  // The writer ends on its own, because the reader may never get the lock while others want it.
  std::atomic<bool> done{false};
  std::thread writer([&done] {
    for (std::int16_t position = 0; position < 300; ++position) {
      Dummy_SetZoomCtrl(position);
    }
    done = true;
  });
  int incomplete = 0;
  while (!done) {
    incomplete += StatusReply()[2] == 3 ? 0 : 1;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  writer.join();
  EXPECT_EQ(incomplete, 0);
}

TEST_F(SimulatedResponders, ClipMarkingSucceeds) {
  std::uint8_t reply[1] = {0xEE};
  Dummy_SetClipInfo(View(Bytes({1, 0, 0x01, 0x02, 1, 0})), reply);
  EXPECT_EQ(AsText(reply), Bytes({0}));
  EXPECT_THAT(log_.Lines(), Logged(Info("Slot=1,IndexNo=258,OKMark=1\n")));
}

TEST_F(SimulatedResponders, UploadStartSucceeds) {
  std::uint8_t reply[2] = {0xEE, 0xEE};
  Dummy_SetWebFtp(View(Bytes({3, 200})), reply);
  EXPECT_EQ(AsText(reply), Bytes({0, 0}));
  EXPECT_THAT(log_.Lines(), Logged(Info("Server=3,Slot=200\n")));
}

TEST_F(SimulatedResponders, TimeOfDayHasAFraction) {
  const double before = static_cast<double>(std::time(nullptr));
  bool has_fraction = false;
  for (int i = 0; i < 3; ++i) {
    const double now = gettimeofday_sec();
    EXPECT_GE(now, before);
    EXPECT_LT(now, before + 60);
    has_fraction = has_fraction || now != std::floor(now);
  }
  EXPECT_TRUE(has_fraction);
}

}  // namespace
