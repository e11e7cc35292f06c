#include "simulator/control_interface.h"

#include <httplib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <functional>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "simulator/date_time.h"
#include "simulator/list_text.h"
#include "simulator/recording.h"

namespace simulator {
namespace {

constexpr char kHttpSocket[] = "/run/simulator/http.sock";
constexpr std::size_t kMaxBody = 8 << 20;

enum Status { kOk = 200, kBadRequest = 400, kNotFound = 404, kNotAllowed = 405, kInternal = 500 };

/// An error that is answered with another status than "bad request".
class Refused : public std::runtime_error {
 public:
  Refused(int status, const std::string& what) : std::runtime_error(what), status_(status) {}
  [[nodiscard]] int status() const { return status_; }

 private:
  int status_;
};

/// The body as a JSON object; an empty body is an empty object.
Json BodyOf(const httplib::Request& request) {
  if (request.body.find_first_not_of(" \t\r\n") == std::string::npos) {
    return Json::object();
  }
  Json body = ParseJson(request.body, "the body");
  if (!body.is_object()) {
    throw Rejected("the body must be a JSON object");
  }
  return body;
}

void AllowMembers(const Json& body, std::initializer_list<std::string_view> names) {
  for (const auto& [name, value] : body.items()) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      throw Rejected(name + ": no such member");
    }
  }
}

/// A number in the query; nothing if it is not there.
std::optional<unsigned long> QueryNumber(const httplib::Request& request, const char* name) {
  if (!request.has_param(name)) {
    return std::nullopt;
  }
  const std::string text = request.get_param_value(name);
  constexpr std::size_t kMostDigits = 18;
  if (text.empty() || text.size() > kMostDigits ||
      text.find_first_not_of("0123456789") != std::string::npos) {
    throw Rejected(std::string(name) + ": must be a number");
  }
  return std::stoul(text);
}

// --- What the requests do -----------------------------------------------------------------------

Json GetState(SimulatedCamera& simulated, const httplib::Request&) {
  return WholeState(simulated.camera());
}

Json PatchState(SimulatedCamera& simulated, const httplib::Request& request) {
  PatchWholeState(simulated.camera(), BodyOf(request));
  return WholeState(simulated.camera());
}

// The type of every handler in the table of routes.
// cppcheck-suppress constParameter
Json GetScenes(SimulatedCamera& simulated, const httplib::Request&) {
  return simulated.SceneNames();
}

Json Reset(SimulatedCamera& simulated, const httplib::Request& request) {
  const Json body = BodyOf(request);
  AllowMembers(body, {"scene", "paused"});
  const Json scene = body.value("scene", Json(""));
  const Json paused = body.value("paused", Json(false));
  if (!scene.is_string()) {
    throw Rejected("scene: must be a text");
  }
  if (!paused.is_boolean()) {
    throw Rejected("paused: must be true or false");
  }
  simulated.Reset(scene.get<std::string>());
  if (paused.get<bool>()) {
    simulated.camera().state().clock.paused = true;
  }
  return Json::object();
}

Json GetFaults(SimulatedCamera& simulated, const httplib::Request&) {
  Json list = Json::array();
  for (const Fault& fault : simulated.faults().all()) {
    list.push_back(ToJson(fault));
  }
  return list;
}

Json AddFault(SimulatedCamera& simulated, const httplib::Request& request) {
  return ToJson(simulated.faults().Add(BodyOf(request)));
}

Json RemoveFaults(SimulatedCamera& simulated, const httplib::Request& request) {
  AllowMembers(BodyOf(request), {});
  const std::optional<unsigned long> id = QueryNumber(request, "id");
  if (!id) {
    simulated.faults().Clear();
  } else if (*id > INT_MAX || !simulated.faults().Remove(static_cast<int>(*id))) {
    throw Refused(kNotFound, "there is no fault with the id " + std::to_string(*id));
  }
  return Json::object();
}

Json ClockJson(const State& state) {
  return {{"date", DateText(CurrentSecond(state.clock))},
          {"uptime_ms", state.clock.uptime},
          {"paused", state.clock.paused},
          {"speed", state.clock.speed}};
}

Json GetClock(SimulatedCamera& simulated, const httplib::Request&) {
  return ClockJson(simulated.camera().state());
}

Json SetClock(SimulatedCamera& simulated, const httplib::Request& request) {
  constexpr int kDay = 86400000;
  const Json body = BodyOf(request);
  AllowMembers(body, {"paused", "speed", "step_ms"});
  Json clock = body;
  clock.erase("step_ms");
  const Json step = body.value("step_ms", Json(0));
  if (!step.is_number_integer() || step < 0 || step > kDay ||
      step.get<int>() % Camera::kStep != 0) {
    throw Rejected("step_ms: must be a multiple of 10 from 0 to 86400000");
  }
  PatchWholeState(simulated.camera(), {{"clock", clock}});
  simulated.LetTimePass(step.get<Milliseconds>());
  return ClockJson(simulated.camera().state());
}

Json GetJournal(SimulatedCamera& simulated, const httplib::Request& request) {
  return simulated.journal().After(QueryNumber(request, "after").value_or(0));
}

Json ClearJournal(SimulatedCamera& simulated, const httplib::Request& request) {
  AllowMembers(BodyOf(request), {});
  simulated.journal().Clear();
  return Json::object();
}

Json LogIn(SimulatedCamera& simulated, const httplib::Request& request) {
  AllowMembers(BodyOf(request), {});
  return {{"SessionID", simulated.login().LogIn(simulated.camera().state().clock.uptime)}};
}

Json LogOut(SimulatedCamera& simulated, const httplib::Request& request) {
  AllowMembers(BodyOf(request), {});
  simulated.login().LogOut();
  return Json::object();
}

struct Route {
  const char* path;
  const char* method;
  Json (*handle)(SimulatedCamera& simulated, const httplib::Request& request);
  std::string_view parameter = {};  ///< what the query may have; empty: nothing
};

constexpr Route kRoutes[] = {
    {"/simulator/state", "GET", GetState},
    {"/simulator/state", "PATCH", PatchState},
    {"/simulator/scenes", "GET", GetScenes},
    {"/simulator/reset", "POST", Reset},
    {"/simulator/faults", "GET", GetFaults},
    {"/simulator/faults", "POST", AddFault},
    {"/simulator/faults", "DELETE", RemoveFaults, "id"},
    {"/simulator/clock", "GET", GetClock},
    {"/simulator/clock", "POST", SetClock},
    {"/simulator/journal", "GET", GetJournal, "after"},
    {"/simulator/journal", "DELETE", ClearJournal},
    {"/simulator/login", "POST", LogIn},
    {"/simulator/logout", "POST", LogOut},
};

void AllowParameter(const httplib::Request& request, std::string_view name) {
  for (const auto& [parameter, value] : request.params) {
    if (parameter != name) {
      throw Rejected(parameter + ": no such parameter" +
                     (name.empty() ? "" : "; there is " + std::string(name)));
    }
  }
}

/// The paths, each once: the routes of a path follow each other.
std::string AllPaths() {
  std::string paths;
  std::string_view last;
  for (const Route& route : kRoutes) {
    if (route.path != last) {
      AddToList(paths, route.path);
    }
    last = route.path;
  }
  return paths;
}

Json Handle(SimulatedCamera& simulated, const httplib::Request& request,
            httplib::Response& response) {
  std::string allowed;
  for (const Route& route : kRoutes) {
    if (request.path != route.path) {
      continue;
    }
    if (request.method == route.method) {
      AllowParameter(request, route.parameter);
      return route.handle(simulated, request);
    }
    AddToList(allowed, route.method);
  }
  if (allowed.empty()) {
    throw Refused(kNotFound, "there is no " + request.path + "; there are " + AllPaths());
  }
  response.set_header("Allow", allowed);
  throw Refused(kNotAllowed, request.path + " knows " + allowed + " only");
}

void Respond(httplib::Response& response, int status, const Json& json) {
  response.status = status;
  response.set_header("Cache-Control", "no-store");
  response.set_content(json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n",
                       "application/json");
}

/// Reads the body as it is, whatever its type. (The library would parse a body with the type of a
/// form, which curl sends by default, and refuse it beyond 8 KiB.)
/// @return false if it cannot be read; the response says so then
bool ReadBody(httplib::Request& request, httplib::Response& response,
              const httplib::ContentReader& reader) {
  const auto append = [&request](const char* data, std::size_t length) {
    request.body.append(data, length);
    return true;
  };
  if (!request.is_multipart_form_data() && reader(append)) {
    return true;
  }
  Respond(response, kBadRequest,
          {{"error", "the body cannot be read: it must be JSON of at most " +
                         std::to_string(kMaxBody >> 20) + " MiB, as it is"}});
  return false;
}

void Serve(SimulatedCamera& simulated, const httplib::Request& request,
           httplib::Response& response) {
  const std::lock_guard<std::mutex> held(simulated.lock());
  try {
    simulated.BringUpToDate();
    const Json reply = Handle(simulated, request, response);
    simulated.Publish();
    Respond(response, kOk, reply);
  } catch (const Refused& error) {
    Respond(response, error.status(), {{"error", error.what()}});
  } catch (const Rejected& error) {
    Respond(response, kBadRequest, {{"error", error.what()}});
  } catch (const std::exception& error) {
    Respond(response, kInternal, {{"error", error.what()}});
  }
}

}  // namespace

class ControlInterface::Server {
 public:
  explicit Server(SimulatedCamera& camera) {
    http_.set_address_family(AF_UNIX);
    http_.set_payload_max_length(kMaxBody);
    const httplib::Server::Handler serve = [&camera](const httplib::Request& request,
                                                     httplib::Response& response) {
      Serve(camera, request, response);
    };
    const httplib::Server::HandlerWithContentReader read_and_serve =
        [&camera](const httplib::Request& request, httplib::Response& response,
                  const httplib::ContentReader& reader) {
          httplib::Request whole = request;
          if (ReadBody(whole, response, reader)) {
            Serve(camera, whole, response);
          }
        };
    http_.Get(".*", serve)
        .Post(".*", read_and_serve)
        .Put(".*", read_and_serve)
        .Patch(".*", read_and_serve)
        .Delete(".*", read_and_serve)
        .Options(".*", serve);
    unlink(kHttpSocket);
    constexpr int kPortOfNoMeaning = 80;
    if (!http_.bind_to_port(kHttpSocket, kPortOfNoMeaning)) {
      throw std::runtime_error(std::string("cannot listen on ") + kHttpSocket);
    }
    thread_ = std::thread([this] { http_.listen_after_bind(); });
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() {
    http_.stop();
    thread_.join();
    unlink(kHttpSocket);
  }

 private:
  httplib::Server http_;
  std::thread thread_;
};

ControlInterface::ControlInterface(SimulatedCamera& camera)
    : server_(std::make_unique<Server>(camera)) {}

ControlInterface::~ControlInterface() = default;

}  // namespace simulator
