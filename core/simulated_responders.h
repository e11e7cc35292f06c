// Stand-ins for the camera's daemons: each answers one message as the daemon would, out of text
// files (see docs/test-data.md) instead of a camera. They are for whoever plays the daemons where
// there is no camera; nothing in the handler calls them. All of them log at level 4.
//
// Requests and replies are the payloads of messages. What a request lacks reads as zeros; so does
// what the files lack, files that are missing included.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/bytes.h"
#include "status/clip_record.h"
#include "status/status_reply.h"

/// Answers the status request out of "cam_status", read under the exclusive lock, with the result
/// "Success", and logs the values.
void Dummy_GetCamStatus(std::uint8_t (&reply)[status_reply::kSize]);

/// Answers the clip list request out of "clip_info", with the result "Success".
///
/// @param request  byte 0 slot (0 A, 1 B), bytes 2 and 3 number of the first clip, bytes 4 and 5
///                 number of clips; there are never more than 15 in a reply
/// @return how many bytes the reply has: those of its clips and the 4 in front of them
std::size_t Dummy_GetClipInfo(ByteView request, std::uint8_t (&reply)[kClipReplySize]);

constexpr std::size_t kPageReplySize = 5;

/// Answers a page change out of "cam_status": the result "Success", then the permissions for
/// planning metadata, edit metadata, view remote and settings.
/// @param request  the page's number; every page gets the same answer
void Dummy_PageChange(ByteView request, std::uint8_t (&reply)[kPageReplySize]);

/// Stores a zoom position in the line "Zoom" of "cam_status". The lock is held from before the file
/// is read until it is written. A file without that line stays as it is.
void Dummy_SetZoomCtrl(std::int16_t position);

/// Answers the clip marking with the result "Success"; the clip itself stays as it is.
/// @param request  byte 0 slot, bytes 2 and 3 number of the clip, byte 4 OK mark
void Dummy_SetClipInfo(ByteView request, std::uint8_t (&reply)[1]);

/// Answers the start of an upload with two zeros, the first of them the result "Success".
/// @param request  byte 0 server, byte 1 slot
void Dummy_SetWebFtp(ByteView request, std::uint8_t (&reply)[2]);

/// The time since the epoch in seconds, to the microsecond.
double gettimeofday_sec();
