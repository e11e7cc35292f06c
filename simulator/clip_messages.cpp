#include "simulator/clip_messages.h"

#include <algorithm>
#include <string>
#include <vector>

namespace simulator {
namespace {

constexpr std::uint8_t kSlotA = 0;
constexpr std::uint8_t kSlotB = 1;
constexpr std::size_t kClipsPerReply = 15;

std::size_t U16(const Bytes& bytes, std::size_t offset) {
  return static_cast<std::size_t>(bytes[offset]) << 8 | bytes[offset + 1];
}

void PutU16(Bytes& bytes, std::size_t offset, std::size_t value) {
  bytes[offset] = static_cast<std::uint8_t>(value >> 8);
  bytes[offset + 1] = static_cast<std::uint8_t>(value);
}

/// Null for a slot that the camera does not have.
Slot* FindSlot(Camera& camera, std::uint8_t slot) {
  switch (slot) {
    case kSlotA:
      return &camera.SlotA();
    case kSlotB:
      return &camera.SlotB();
    default:
      return nullptr;
  }
}

/// The 32 bytes that describe a clip.
Bytes ClipRecord(const Clip& clip, std::size_t index_number) {
  constexpr std::size_t kNameWidth = 10;
  Bytes record(32);
  PutU16(record, 0, index_number);
  std::copy_n(clip.name.begin(), std::min(clip.name.size(), kNameWidth - 1), record.begin() + 2);
  std::copy(clip.first_frame.begin(), clip.first_frame.end(), record.begin() + 12);
  std::copy(clip.last_frame.begin(), clip.last_frame.end(), record.begin() + 16);
  PutU16(record, 20, clip.recorded_at.year);
  record[22] = static_cast<std::uint8_t>(clip.recorded_at.month - 1);
  record[23] = clip.recorded_at.day;
  record[24] = clip.recorded_at.hour;
  record[25] = clip.recorded_at.minute;
  record[26] = clip.recorded_at.second;
  record[27] = clip.ok_mark ? 1 : 0;
  record[28] = clip.four_to_three ? 1 : 0;
  record[30] = clip.edit_lock ? 1 : 0;
  return record;
}

template <typename Choice>
Reply StartUpload(Camera& camera, std::size_t server, std::uint8_t slot_number, Choice chosen) {
  const Slot* const slot = FindSlot(camera, slot_number);
  if (slot == nullptr || server >= Upload::kServers) {
    return ResultOnly(Result::kRequestedError);
  }
  std::vector<std::string> files;
  for (std::size_t i = 0; i < slot->clips.size(); ++i) {
    if (chosen(i, slot->clips[i])) {
      files.push_back(slot->clips[i].name + ".MOV");
    }
  }
  return ResultOnly(camera.upload().Start(server, files) ? Result::kSuccess
                                                         : Result::kDisableError);
}

}  // namespace

Reply ListClips(Camera& camera, const Bytes& payload) {
  const Slot* const slot = FindSlot(camera, payload[0]);
  if (slot == nullptr) {
    return ResultOnly(Result::kRequestedError);
  }
  const std::size_t first = std::max<std::size_t>(U16(payload, 2), 1);
  const std::size_t end =
      std::min(slot->clips.size() + 1, first + std::min(U16(payload, 4), kClipsPerReply));
  Bytes reply(4);
  for (std::size_t index = first; index < end; ++index) {
    const Bytes record = ClipRecord(slot->clips[index - 1], index);
    reply.insert(reply.end(), record.begin(), record.end());
  }
  PutU16(reply, 2, end > first ? end - first : 0);
  return reply;
}

Reply MarkClip(Camera& camera, const Bytes& payload) {
  Slot* const slot = FindSlot(camera, payload[0]);
  const std::size_t index = U16(payload, 2);
  if (slot == nullptr || index < 1 || index > slot->clips.size()) {
    return ResultOnly(Result::kRequestedError);
  }
  if (slot->write_protected) {
    return ResultOnly(Result::kDisableError);
  }
  slot->clips[index - 1].ok_mark = payload[4] != 0;
  return ResultOnly(Result::kSuccess);
}

Reply UploadAllClips(Camera& camera, const Bytes& payload) {
  return StartUpload(camera, payload[0], payload[1], [](std::size_t, const Clip&) { return true; });
}

Reply UploadMarkedClips(Camera& camera, const Bytes& payload) {
  return StartUpload(camera, payload[0], payload[1],
                     [](std::size_t, const Clip& clip) { return clip.ok_mark; });
}

Reply UploadSelection(Camera& camera, std::size_t server, std::uint8_t slot, const Bytes& payload) {
  return StartUpload(camera, server, slot, [&payload](std::size_t i, const Clip&) {
    // Within a number of 4 bytes, the highest byte comes first.
    const std::size_t byte = i / 32 * 4 + 3 - i % 32 / 8;
    return byte < payload.size() && (payload[byte] >> i % 8 & 1) != 0;
  });
}

Reply AnswerUploadPrompt(Camera& camera, const Bytes& payload) {
  return ResultOnly(camera.upload().AnswerPrompt(payload[0] != 0) ? Result::kSuccess
                                                                  : Result::kDisableError);
}

}  // namespace simulator
