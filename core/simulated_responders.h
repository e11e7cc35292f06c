// Simulated answers of the control daemon, taken from text files (see docs/test-data.md) instead of
// a camera. Maintainers call them where there is no camera; the handler does not. All log at
// level 4.
//
// Requests and replies are the payloads of messages. Missing bytes of a request read as zeros; so
// do missing files, lines and values.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/bytes.h"
#include "status/replies.h"

/// Answers the status request from "cam_status", which is read under the exclusive lock, with the
/// result "Success", and logs the values.
void Dummy_GetCamStatus(std::uint8_t (&reply)[status_reply::kSize]);

/// Answers the clip list request from "clip_info", with the result "Success".
/// @param request  byte 0 slot (0 A, 1 B), bytes 2 and 3 number of the first clip, bytes 4 and 5
///                 number of clips; a reply has at most 15
/// @return the length of the reply: 4 bytes, then its clips
std::size_t Dummy_GetClipInfo(ByteView request, std::uint8_t (&reply)[kClipReplySize]);

constexpr std::size_t kPageReplySize = 5;

/// Answers a page change from "cam_status": the result "Success", then the permissions for
/// planning metadata, edit metadata, view remote and settings.
/// @param request  the page's number; every page gets the same answer
void Dummy_PageChange(ByteView request, std::uint8_t (&reply)[kPageReplySize]);

/// Stores a zoom position in the line "Zoom" of "cam_status". The file is locked while it is read
/// and written. A file without that line is not changed.
void Dummy_SetZoomCtrl(std::int16_t position);

/// Answers the marking of a clip with the result "Success"; the clip is not changed.
/// @param request  byte 0 slot, bytes 2 and 3 number of the clip, byte 4 OK mark
void Dummy_SetClipInfo(ByteView request, std::uint8_t (&reply)[1]);

/// Answers the start of an upload with two zeros, the first of them the result "Success".
/// @param request  byte 0 server, byte 1 slot
void Dummy_SetWebFtp(ByteView request, std::uint8_t (&reply)[2]);

/// The time since the epoch in seconds, to the microsecond.
double gettimeofday_sec();
