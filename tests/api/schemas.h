// The request schemas of api/openapi.json, as tests need them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

using Json = nlohmann::ordered_json;

/// All commands, in the order of the document.
const std::vector<std::string>& CommandNames();

/// The schema of a command's "Params", references resolved; empty for a command without parameters.
Json ParamsSchema(const std::string& command);

/// Parameters of a request by name, in the order in which they are sent.
using Params = std::vector<std::pair<std::string, Json>>;

/// A value for each parameter that the command requires.
Params SampleParams(const std::string& command);

/// The members of "Params".
std::string TextOf(const Params& params);

/// A request of the command with `SampleParams`.
std::string SampleBody(const std::string& command);

/// A request of the command. Commands without parameters have no "Params".
std::string BodyOf(const std::string& command, const Params& params);
