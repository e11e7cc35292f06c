// The control daemon's messages about the camera as a whole: status, recording, zoom position,
// pages, the monitor picture and the settings files.
#pragma once

#include <string>

#include "simulator/daemon.h"

namespace simulator {

/// The one-way notice that settings files have changed: the camera reads them again.
Reply NoteRenewal(Camera& camera, const Bytes& payload);

/// The status reply: 38 bytes, numbers big-endian.
Reply ReportStatus(Camera& camera, const Bytes& payload);

/// Byte 0: 0 starts recording, anything else stops it.
Reply ControlRecording(Camera& camera, const Bytes& payload);

Reply StartMonitor(Camera& camera, const Bytes& payload);
Reply StopMonitor(Camera& camera, const Bytes& payload);

/// Bytes 0-1: the position, signed, big-endian.
Reply SetZoomPosition(Camera& camera, const Bytes& payload);

/// The reply's bytes 4-23: the antenna's level, from 24 on: the location.
Reply ReportGps(Camera& camera, const Bytes& payload);

/// Byte 0: the page now shown. The reply reports which pages are allowed: byte 1 planning metadata,
/// byte 2 edit metadata, byte 3 view remote, byte 4 settings.
Reply ChangePage(Camera& camera, const Bytes& payload);

// Whether these messages are refused now.
Refusal RefuseRecording(const State& state, const Bytes& payload);
Refusal RefuseZoomPosition(const State& state, const Bytes& payload);
Refusal RefuseGps(const State& state, const Bytes& payload);

// The messages in words.
std::string DescribeRecording(const Bytes& payload);
std::string DescribeZoomPosition(const Bytes& payload);
std::string DescribePage(const Bytes& payload);

}  // namespace simulator
