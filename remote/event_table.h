// The remote event table: the names of controls and keys in requests, and their codes in messages.
#pragma once

#include <array>
#include <cstdint>

/// One key of one control.
struct RemoteEvent {
  char kind[30];           ///< the control's name
  std::uint8_t kind_code;  ///< 0 only in the last row, which stands for "not found"
  char key[30];            ///< the key's name; empty for bars and fields, which have no keys
  std::uint8_t key_code;   ///< 255 if there is no key
};
static_assert(sizeof(RemoteEvent) == 62);

using EventTable = std::array<RemoteEvent, 134>;

/// All keys of all controls. The log shows the index of a row, so the order is fixed.
extern const EventTable eventTable;

/// The first row that `matches` holds for, or else the last row.
template <typename Predicate>
const RemoteEvent& FindRemoteEvent(Predicate matches) {
  const RemoteEvent* event = eventTable.data();
  while (event != &eventTable.back() && !matches(*event)) {
    ++event;
  }
  return *event;
}

/// Index of a row, which the log shows.
inline int IndexOf(const RemoteEvent& event) {
  return static_cast<int>(&event - eventTable.data());
}

/// Looks up a control and one of its keys, both compared exactly, and logs the row at level 2.
/// @param kind_code_out  receives the control's code, 0 if there is no such pair
/// @param key_code_out   receives the key's code, 255 if there is no such pair
/// @return 0, or -1 if there is no such pair or the pair is the last row's "None", "None"
int getIndexOfKeyEvent(const char* kind, const char* key, std::uint8_t& kind_code_out,
                       std::uint8_t& key_code_out);

/// Looks up a control by its name alone and logs the row at level 2. The first row counts, so a
/// control with two codes yields its first one.
/// @param kind_code_out  receives the control's code, 0 if there is no such control
/// @return 0, or -1 if there is no such control
int getIndexOfSliderEvent(const char* kind, std::uint8_t& kind_code_out);
