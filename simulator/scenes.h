// Scenes: states of the camera that it can be reset to. A scene is a JSON file that lists what
// differs from the camera as it is switched on, in the form of `GET /simulator/state`.
#pragma once

#include <string>
#include <vector>

#include "simulator/camera.h"
#include "simulator/json.h"

namespace simulator {

/// Everything about the camera: its state and its settings files.
Json WholeState(const Camera& camera);

/// Applies a JSON merge patch, completely or not at all.
/// @throws Rejected for an invalid patch
void PatchWholeState(Camera& camera, const Json& patch);

/// Puts the camera into a scene, whatever its state was.
/// @throws Rejected for an invalid scene
void SetScene(Camera& camera, const Json& scene);

/// The scenes in a folder: the names of its files, without ".json", in alphabetical order.
std::vector<std::string> SceneNames(const std::string& folder);

/// Reads a scene, by its name in the folder.
/// @throws Rejected if there is no such scene or it is invalid JSON
Json ReadScene(const std::string& folder, const std::string& name);
/// Reads a scene from a file.
Json ReadSceneFile(const std::string& path);

}  // namespace simulator
