#include "simulator/clip_messages.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "simulator/date_time.h"
#include "simulator/recording.h"
#include "simulator/upload.h"

namespace simulator {
namespace {

constexpr std::size_t kClipsPerReply = 15;

/// Why the clips of a slot cannot be read now, if they cannot.
Refusal RefuseSlot(const State& state, std::uint8_t slot) {
  if (slot >= state.slots.size()) {
    return {"the camera has no such slot", Result::kRequestedError};
  }
  return {HasCard(state.slots[slot]) ? nullptr : "there is no card in the slot that can be read"};
}

Refusal RefuseUpload(const State& state, std::size_t server, std::uint8_t slot) {
  if (server >= state.upload.servers.size()) {
    return {"the camera has no such FTP server", Result::kRequestedError};
  }
  const Refusal refusal = RefuseSlot(state, slot);
  return refusal.why != nullptr ? refusal : Refusal{UploadObstacle(state)};
}

std::string SlotName(std::uint8_t slot) {
  return slot < 2 ? std::string(1, static_cast<char>('A' + slot)) : std::to_string(slot);
}

/// The 32 bytes that describe a clip.
Bytes ClipRecord(const Clip& clip, std::size_t index_number) {
  constexpr std::size_t kNameWidth = 10;
  Bytes record(32);
  PutU16(record, 0, static_cast<int>(index_number));
  std::copy_n(clip.name.begin(), std::min(clip.name.size(), kNameWidth - 1), record.begin() + 2);
  std::copy(clip.first_frame.begin(), clip.first_frame.end(), record.begin() + 12);
  std::copy(clip.last_frame.begin(), clip.last_frame.end(), record.begin() + 16);
  const DateTime date = DateTimeOf(clip.recorded_at);
  PutU16(record, 20, date.year);
  record[22] = static_cast<std::uint8_t>(date.month - 1);
  record[23] = static_cast<std::uint8_t>(date.day);
  record[24] = static_cast<std::uint8_t>(date.hour);
  record[25] = static_cast<std::uint8_t>(date.minute);
  record[26] = static_cast<std::uint8_t>(date.second);
  record[27] = clip.ok_mark ? 1 : 0;
  record[28] = clip.four_to_three ? 1 : 0;
  record[30] = clip.edit_lock ? 1 : 0;
  return record;
}

template <typename Choice>
Reply UploadClips(Camera& camera, std::size_t server, std::uint8_t slot, Choice chosen) {
  const Clips& clips = camera.state().slots[slot].clips;
  std::vector<std::string> files;
  for (std::size_t i = 0; i < clips.size(); ++i) {
    if (chosen(i, clips[i])) {
      files.push_back(clips[i].name + ".MOV");
    }
  }
  StartUpload(camera.state(), static_cast<int>(server), std::move(files));
  return ResultOnly(Result::kSuccess);
}

}  // namespace

Reply ListClips(Camera& camera, const Bytes& payload) {
  const Clips& clips = camera.state().slots[payload[0]].clips;
  const std::size_t first = std::max<std::size_t>(U16(payload, 2), 1);
  const std::size_t end =
      std::min(clips.size() + 1, first + std::min(U16(payload, 4), kClipsPerReply));
  Bytes reply(4);
  for (std::size_t index = first; index < end; ++index) {
    const Bytes record = ClipRecord(clips[index - 1], index);
    reply.insert(reply.end(), record.begin(), record.end());
  }
  PutU16(reply, 2, static_cast<int>(end > first ? end - first : 0));
  return reply;
}

Reply MarkClip(Camera& camera, const Bytes& payload) {
  camera.state().slots[payload[0]].clips[U16(payload, 2) - 1].ok_mark = payload[4] != 0;
  return ResultOnly(Result::kSuccess);
}

Reply UploadAllClips(Camera& camera, const Bytes& payload) {
  return UploadClips(camera, payload[0], payload[1], [](std::size_t, const Clip&) { return true; });
}

Reply UploadMarkedClips(Camera& camera, const Bytes& payload) {
  return UploadClips(camera, payload[0], payload[1],
                     [](std::size_t, const Clip& clip) { return clip.ok_mark; });
}

Reply UploadSelection(Camera& camera, std::size_t server, std::uint8_t slot, const Bytes& payload) {
  return UploadClips(camera, server, slot, [&payload](std::size_t i, const Clip&) {
    // Within a number of 4 bytes, the highest byte comes first.
    const std::size_t byte = i / 32 * 4 + 3 - i % 32 / 8;
    return byte < payload.size() && (payload[byte] >> i % 8 & 1) != 0;
  });
}

Reply AnswerUploadPrompt(Camera& camera, const Bytes& payload) {
  AnswerUploadQuestion(camera.state(), payload[0] != 0);
  return ResultOnly(Result::kSuccess);
}

Refusal RefuseClipList(const State& state, const Bytes& payload) {
  return RefuseSlot(state, payload[0]);
}

Refusal RefuseClipMark(const State& state, const Bytes& payload) {
  const Refusal refusal = RefuseSlot(state, payload[0]);
  if (refusal.why != nullptr) {
    return refusal;
  }
  const Slot& slot = state.slots[payload[0]];
  if (slot.write_protected) {
    return {"the card is locked"};
  }
  const std::size_t index = U16(payload, 2);
  if (index < 1 || index > slot.clips.size()) {
    return {"the card has no such clip", Result::kRequestedError};
  }
  return {};
}

Refusal RefuseUploadOfClips(const State& state, const Bytes& payload) {
  return RefuseUpload(state, payload[0], payload[1]);
}

Refusal RefuseUploadOfSelection(const State& state, std::size_t server, std::uint8_t slot) {
  return RefuseUpload(state, server, slot);
}

Refusal RefuseUploadAnswer(const State& state, const Bytes&) {
  return {UploadAsks(state.upload) ? nullptr : "no upload waits for an answer"};
}

std::string DescribeClipList(const Bytes& payload) {
  return "list " + std::to_string(U16(payload, 4)) + " clips of slot " + SlotName(payload[0]) +
         " from " + std::to_string(U16(payload, 2));
}

std::string DescribeClipMark(const Bytes& payload) {
  return std::string(payload[4] != 0 ? "set" : "clear") + " the OK mark of clip " +
         std::to_string(U16(payload, 2)) + " in slot " + SlotName(payload[0]);
}

std::string DescribeUploadAll(const Bytes& payload) {
  return "upload all clips of slot " + SlotName(payload[1]) + " to FTP" +
         std::to_string(payload[0] + 1);
}

std::string DescribeUploadMarked(const Bytes& payload) {
  return "upload the marked clips of slot " + SlotName(payload[1]) + " to FTP" +
         std::to_string(payload[0] + 1);
}

std::string DescribeUploadAnswer(const Bytes& payload) {
  return "answer the upload's question with " + std::to_string(payload[0]);
}

}  // namespace simulator
