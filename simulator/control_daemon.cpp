#include "simulator/control_daemon.h"

#include "simulator/camera_messages.h"
#include "simulator/clip_messages.h"
#include "simulator/controls.h"

namespace simulator {

std::vector<MessageRow> ControlMessages() {
  return {
      {1, 1, "settings renewal notice", 1, NoteRenewal},
      {5, 0, "status request", 0, ReportStatus, nullptr, kAsks},
      {5, 1, "record start/stop", 1, ControlRecording, DescribeRecording, kActs, ControlObstacle},
      {5, 5, "monitor start", 0, StartMonitor},
      {5, 6, "monitor stop", 0, StopMonitor},
      {5, 14, "zoom position", 2, SetZoomPosition, DescribeZoomPosition, kActs,
       ZoomPositionObstacle},
      {5, 15, "page change", 1, ChangePage, DescribePage},
      {5, 17, "key event", 2, PressKey, DescribeKey, kActs, KeyObstacle},
      {5, 18, "slider event", 3, MoveSlider, DescribeSlider, kActs, SliderObstacle},
      {5, 19, "XY field event", 3, MoveField, DescribeField, kActs, FieldObstacle},
      {5, 118, "zoom switch", 2, OperateZoomSwitch, DescribeZoomSwitch, kActs, ZoomSwitchObstacle},
      {5, 119, "seesaw switch", 3, OperateSeesawSwitch, DescribeSeesaw, kActs, SeesawObstacle},
      {6, 11, "clip list", 6, ListClips, DescribeClipList, kAsks},
      {6, 16, "clip mark", 6, MarkClip, DescribeClipMark},
      {6, 29, "GPS information", 0, ReportGps, nullptr, kAsks, GpsObstacle},
      {6, 107, "FTP prompt answer", 2, AnswerUploadPrompt, DescribeUploadAnswer},
      {6, 108, "FTP upload of all clips", 2, UploadAllClips, DescribeUploadAll},
      {6, 109, "FTP upload of marked clips", 2, UploadMarkedClips, DescribeUploadMarked},
      {6, 110, "FTP 1 upload from slot A", 500, UploadSelectedClips<0, 0>},
      {6, 111, "FTP 2 upload from slot A", 500, UploadSelectedClips<1, 0>},
      {6, 112, "FTP 3 upload from slot A", 500, UploadSelectedClips<2, 0>},
      {6, 113, "FTP 4 upload from slot A", 500, UploadSelectedClips<3, 0>},
      {6, 114, "FTP 1 upload from slot B", 500, UploadSelectedClips<0, 1>},
      {6, 115, "FTP 2 upload from slot B", 500, UploadSelectedClips<1, 1>},
      {6, 116, "FTP 3 upload from slot B", 500, UploadSelectedClips<2, 1>},
      {6, 117, "FTP 4 upload from slot B", 500, UploadSelectedClips<3, 1>},
  };
}

}  // namespace simulator
