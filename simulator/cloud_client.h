// The cloud streaming service, and the client in the camera that talks to it. Each step takes a
// while, and its state shows the outcome. The data of a step stay until logout, even if its state
// changes.
#pragma once

#include <string>

#include "simulator/state.h"

namespace simulator {

/// The service is found under an "https://" URL.
void LogInToCloud(State& state, const std::string& password, const std::string& url);
void LogOutOfCloud(State& state);
/// Needs a login, without which the service refuses.
void ObtainCloudEvents(State& state);
/// Fails for an event that is not in the list.
void ObtainStreamInfo(State& state, int event);

/// The events obtained; none before.
const std::vector<CloudEvent>& ObtainedEvents(const State& state);
/// The stream information obtained; null before, and about another event.
const CloudEvent* ObtainedStreamInfo(const State& state, int event);

/// Lets time pass.
void AdvanceCloud(State& state, Milliseconds elapsed);

}  // namespace simulator
