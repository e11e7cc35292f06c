#include "api/schemas.h"

#include <fstream>

#include "harness/handler.h"

namespace {

const Json& Document() {
  static const Json document = Json::parse(std::ifstream(CAMERA_API_DOCUMENT));
  return document;
}

const Json& Schema(const std::string& name) { return Document()["components"]["schemas"][name]; }

/// References replaced by what they refer to; the members next to a reference override its own.
Json Resolved(const Json& schema) {
  if (schema.is_array()) {
    Json items = Json::array();
    for (const Json& item : schema) {
      items.push_back(Resolved(item));
    }
    return items;
  }
  if (!schema.is_object()) {
    return schema;
  }
  Json members = Json::object();
  if (schema.contains("$ref")) {
    const std::string reference = schema["$ref"];
    members = Resolved(Schema(reference.substr(reference.rfind('/') + 1)));
  }
  for (const auto& [key, value] : schema.items()) {
    if (key != "$ref") {
      members[key] = Resolved(value);
    }
  }
  return members;
}

/// 1 where that is a legal number, so that no sample is the number 0 that missing parameters read
/// as; the first word; otherwise a short text.
Json SampleOf(const Json& schema) {
  if (schema.contains("enum")) {
    return schema["enum"][0];
  }
  return schema["type"] == "integer" ? Json(1) : Json("a");
}

}  // namespace

const std::vector<std::string>& CommandNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> found;
    const Json& post = Document()["paths"]["/cgi-bin/camera_remote.cgi"]["post"];
    for (const Json& one : post["requestBody"]["content"]["application/json"]["schema"]["oneOf"]) {
      const std::string reference = one["$ref"];
      const std::size_t begin = reference.rfind('/') + 1;
      found.push_back(reference.substr(begin, reference.size() - begin - sizeof "Request" + 1));
    }
    return found;
  }();
  return names;
}

Json ParamsSchema(const std::string& command) {
  const Json& members = Schema(command + "Request")["properties"]["Request"]["properties"];
  return members.contains("Params") ? Resolved(members["Params"]) : Json::object();
}

Params SampleParams(const std::string& command) {
  Params params;
  const Json schema = ParamsSchema(command);
  for (const Json& name : schema.value("required", Json::array())) {
    params.emplace_back(name, SampleOf(schema["properties"][name.get<std::string>()]));
  }
  if (schema.contains("oneOf")) {  // a control and one of its keys
    for (const auto& [name, words] : schema["oneOf"][0]["properties"].items()) {
      for (auto& [parameter, value] : params) {
        if (parameter == name) {
          value = words.contains("const") ? words["const"] : words["enum"][0];
        }
      }
    }
  }
  return params;
}

std::string TextOf(const Params& params) {
  std::string text;
  for (const auto& [name, value] : params) {
    text += (text.empty() ? "" : ",") + Json(name).dump() + ":" + value.dump();
  }
  return text;
}

std::string SampleBody(const std::string& command) {
  return BodyOf(command, SampleParams(command));
}

std::string BodyOf(const std::string& command, const Params& params) {
  return ParamsSchema(command).empty() ? harness::Body(command)
                                       : harness::Body(command, TextOf(params));
}
