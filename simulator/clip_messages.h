// The control daemon's messages about clips: their list, their OK marks and their upload.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "simulator/daemon.h"

namespace simulator {

// What these messages do. They are called only for messages that are not refused.

/// Byte 0: 0 for slot A, 1 for slot B; bytes 2-3: the first clip's index number; bytes 4-5: how
/// many clips. The reply: bytes 2-3 the number of clips that follow, 15 at most, with 32 bytes
/// each; numbers big-endian.
Reply ListClips(Camera& camera, const Bytes& payload);

/// Byte 0: slot; bytes 2-3: the clip's index number; byte 4: 1 to set the OK mark, 0 to clear it.
Reply MarkClip(Camera& camera, const Bytes& payload);

/// Byte 0: the server, 0 to 3; byte 1: slot.
Reply UploadAllClips(Camera& camera, const Bytes& payload);
Reply UploadMarkedClips(Camera& camera, const Bytes& payload);

/// Byte 0: the answer to the upload's question, 0 for no.
Reply AnswerUploadPrompt(Camera& camera, const Bytes& payload);

/// 125 numbers of 32 bits: the clip with the index number 1 is the lowest bit of the first one.
Reply UploadSelection(Camera& camera, std::size_t server, std::uint8_t slot, const Bytes& payload);

/// The message whose code stands for one server and one slot.
template <std::size_t server, std::uint8_t slot>
Reply UploadSelectedClips(Camera& camera, const Bytes& payload) {
  return UploadSelection(camera, server, slot, payload);
}

// Whether these messages are refused now.
Refusal RefuseClipList(const State& state, const Bytes& payload);
Refusal RefuseClipMark(const State& state, const Bytes& payload);
Refusal RefuseUploadOfClips(const State& state, const Bytes& payload);
Refusal RefuseUploadAnswer(const State& state, const Bytes& payload);
Refusal RefuseUploadOfSelection(const State& state, std::size_t server, std::uint8_t slot);

template <std::size_t server, std::uint8_t slot>
Refusal RefuseUploadOfSelected(const State& state, const Bytes&) {
  return RefuseUploadOfSelection(state, server, slot);
}

// What these messages say, in words.
std::string DescribeClipList(const Bytes& payload);
std::string DescribeClipMark(const Bytes& payload);
std::string DescribeUploadAll(const Bytes& payload);
std::string DescribeUploadMarked(const Bytes& payload);
std::string DescribeUploadAnswer(const Bytes& payload);

}  // namespace simulator
