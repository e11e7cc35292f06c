#include "simulator/control_daemon.h"

#include "simulator/camera_messages.h"
#include "simulator/clip_messages.h"
#include "simulator/controls.h"

namespace simulator {

namespace {

/// The upload of chosen clips, which has a message for each server and slot.
template <std::size_t server, std::uint8_t slot>
MessageRow UploadRow(std::uint8_t code, const char* name) {
  constexpr std::size_t kBitmapSize = 500;
  return {6,
          code,
          name,
          kBitmapSize,
          UploadSelectedClips<server, slot>,
          nullptr,
          kActs,
          RefuseUploadOfSelected<server, slot>};
}

}  // namespace

std::vector<MessageRow> ControlMessages() {
  return {
      {1, 1, "settings renewal notice", 1, NoteRenewal},
      {5, 0, "status request", 0, ReportStatus, nullptr, kAsks},
      {5, 1, "record start/stop", 1, ControlRecording, DescribeRecording, kActs, RefuseRecording},
      {5, 5, "monitor start", 0, StartMonitor},
      {5, 6, "monitor stop", 0, StopMonitor},
      {5, 14, "zoom position", 2, SetZoomPosition, DescribeZoomPosition, kActs, RefuseZoomPosition},
      {5, 15, "page change", 1, ChangePage, DescribePage},
      {5, 17, "key event", 2, PressKey, DescribeKey, kActs, RefuseKey},
      {5, 18, "slider event", 3, MoveSlider, DescribeSlider, kActs, RefuseSlider},
      {5, 19, "XY field event", 3, MoveField, DescribeField, kActs, RefuseField},
      {5, 118, "zoom switch", 2, OperateZoomSwitch, DescribeZoomSwitch, kActs, RefuseZoomSwitch},
      {5, 119, "seesaw switch", 3, OperateSeesawSwitch, DescribeSeesaw, kActs, RefuseSeesaw},
      {6, 11, "clip list", 6, ListClips, DescribeClipList, kAsks, RefuseClipList},
      {6, 16, "clip mark", 6, MarkClip, DescribeClipMark, kActs, RefuseClipMark},
      {6, 29, "GPS information", 0, ReportGps, nullptr, kAsks, RefuseGps},
      {6, 107, "FTP prompt answer", 2, AnswerUploadPrompt, DescribeUploadAnswer, kActs,
       RefuseUploadAnswer},
      {6, 108, "FTP upload of all clips", 2, UploadAllClips, DescribeUploadAll, kActs,
       RefuseUploadOfClips},
      {6, 109, "FTP upload of marked clips", 2, UploadMarkedClips, DescribeUploadMarked, kActs,
       RefuseUploadOfClips},
      UploadRow<0, 0>(110, "FTP 1 upload from slot A"),
      UploadRow<1, 0>(111, "FTP 2 upload from slot A"),
      UploadRow<2, 0>(112, "FTP 3 upload from slot A"),
      UploadRow<3, 0>(113, "FTP 4 upload from slot A"),
      UploadRow<0, 1>(114, "FTP 1 upload from slot B"),
      UploadRow<1, 1>(115, "FTP 2 upload from slot B"),
      UploadRow<2, 1>(116, "FTP 3 upload from slot B"),
      UploadRow<3, 1>(117, "FTP 4 upload from slot B"),
  };
}

}  // namespace simulator
