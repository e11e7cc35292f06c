#include "simulator/network.h"

#include "simulator/models.h"
#include "simulator/recording.h"

namespace simulator {
namespace {

constexpr Milliseconds kTimeToConnect = 3000;
constexpr Milliseconds kTimeToStream = 2000;
constexpr Milliseconds kTimeToSynchronize = 5000;
/// How long the camera's clock counts as synchronized while the server does not answer.
constexpr Milliseconds kNtpPatience = 10000;

bool IsAdaptor(Adaptor adaptor) {
  switch (adaptor) {
    case Adaptor::kOff:
    case Adaptor::kNone:
    case Adaptor::kMismatch:
      return false;
    case Adaptor::kWlanAp:
    case Adaptor::kWlanP2p:
    case Adaptor::kEthernet:
    case Adaptor::kCellular:
      break;
  }
  return true;
}

void AdvanceAdaptor(Network& network, Milliseconds elapsed) {
  if (!network.link || !IsAdaptor(network.adaptor)) {
    network.connected = false;
    network.connecting = 0;
  } else if (!network.connected) {
    network.connecting += elapsed;
    if (network.connecting >= kTimeToConnect) {
      network.connected = true;
      network.connecting = 0;
    }
  }
}

void SetTimeCodeToTimeOfDay(State& state) {
  constexpr std::int64_t kSecondsPerDay = 86400;
  const Counting counting = CountingOf(state);
  const std::int64_t second = CurrentSecond(state.clock) % kSecondsPerDay;
  SetTimeCode(state, TimeCodeOf(FramesIn(second * 1000, counting), counting));
}

void AdvanceNtp(State& state, bool time_code_follows, Milliseconds elapsed) {
  Ntp& ntp = state.ntp;
  const bool answers = ntp.reachable && IsOnline(state);
  if (ntp.status == NtpStatus::kMaster || ntp.status == NtpStatus::kUnknown ||
      answers == (ntp.status == NtpStatus::kSynchronized)) {
    ntp.waiting = 0;
    return;
  }
  ntp.waiting += elapsed;
  if (answers && ntp.waiting >= kTimeToSynchronize) {
    ntp.status = NtpStatus::kSynchronized;
    if (time_code_follows) {
      SetTimeCodeToTimeOfDay(state);
    }
  } else if (!answers && ntp.waiting >= kNtpPatience) {
    ntp.status = NtpStatus::kNotSynchronized;
  }
}

void Enter(Streaming& streaming, StreamingStatus status) {
  streaming.status = status;
  streaming.in_status = 0;
}

void AdvanceStreaming(State& state, Milliseconds elapsed) {
  Streaming& streaming = state.streaming;
  const bool can_stream = streaming.reachable && IsOnline(state);
  streaming.in_status += elapsed;
  switch (streaming.status) {
    case StreamingStatus::kStopped:
      break;
    case StreamingStatus::kConnecting:
    case StreamingStatus::kReconnecting:
      if (!can_stream) {
        streaming.in_status = 0;
      } else if (streaming.in_status >= kTimeToStream) {
        Enter(streaming, StreamingStatus::kRunning);
      }
      break;
    case StreamingStatus::kRunning:
      if (!can_stream) {
        Enter(streaming, StreamingStatus::kReconnecting);
      }
      break;
  }
}

}  // namespace

bool IsOnline(const State& state) { return state.network.connected; }

bool IfbIsActive(const State& state) {
  return HasIfb(state) && state.ifb.on && state.ifb.reachable && IsOnline(state);
}

void StartStreaming(State& state) {
  if (state.streaming.status == StreamingStatus::kStopped) {
    Enter(state.streaming, StreamingStatus::kConnecting);
  }
}

void StopStreaming(State& state) { Enter(state.streaming, StreamingStatus::kStopped); }

void RestartStreaming(State& state) {
  if (state.streaming.status == StreamingStatus::kRunning) {
    Enter(state.streaming, StreamingStatus::kReconnecting);
  }
}

void RestartNtp(State& state) {
  if (state.ntp.status != NtpStatus::kMaster) {
    state.ntp.status = NtpStatus::kNotSynchronized;
    state.ntp.waiting = 0;
  }
}

void AdvanceNetwork(State& state, bool time_code_follows_ntp, Milliseconds elapsed) {
  AdvanceAdaptor(state.network, elapsed);
  AdvanceNtp(state, time_code_follows_ntp, elapsed);
  AdvanceStreaming(state, elapsed);
}

}  // namespace simulator
