#include <cstring>

#include "core/cmd/remote.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "remote/event_table.h"

int KeyCommand::Press(const char* kind, const char* key) {
  std::uint8_t kind_code = 0;
  std::uint8_t key_code = 0;
  if (getIndexOfKeyEvent(kind, key, kind_code, key_code) != 0) {
    return -1;
  }
  SetPayload({kind_code, key_code});
  return 0;
}

int KeyCommand::PressAndLog(const char* kind, const char* key, const char* label) {
  if (Press(kind, key) != 0) {
    return -1;
  }
  const std::uint8_t* const codes = message_.Payload();
  DLOG(2, "send param kind=%s(%d) %s=%s(%d)", kind, codes[0], label, key, codes[1]);
  return 0;
}

int KeyCommand::PressParameters(const char* params, const char* key_parameter, const char* label) {
  ShortText kind;
  ShortText key;
  const bool complete = ReadParameters(params, "Kind", kind, key_parameter, key);
  return complete ? PressAndLog(kind, key, label) : -1;
}

int KeyCommand::StartOrStop(const char* params, const char* kind, const char* start_word) {
  ShortText word;
  const bool complete = ReadParameter(params, "Streaming", word);
  return complete ? Press(kind, std::strcmp(word, start_word) == 0 ? "Start" : "Stop") : -1;
}

int SetWebKeyEvent::Parse(const char* params) {
  DLOG(2, "##### SetWebKeyEvent Parse() params=%s", params);
  return PressParameters(params, "Key", "key");
}

int SetWebButtonEvent::Parse(const char* params) {
  DLOG(2, "##### SetWebButtonEvent Parse() params=%s", params);
  return PressParameters(params, "Button", "button");
}

int SystemRequest::Parse(const char* params) {
  DLOG(2, "##### SystemRequest Parse()");
  ShortText request;
  return ReadParameter(params, "Request", request) ? PressAndLog("System", request) : -1;
}

int SetIFBCtrl::Parse(const char* params) {
  DLOG(2, "##### SetIFBCtrl Parse() params=%s", params);
  return StartOrStop(params, "IFBStreaming", "Start");
}

int SetStreamingCtrl::Parse(const char* params) {
  DLOG(2, "##### SetStreamingCtrl Parse() params=%s", params);
  // "On" here, but "Start" for the return audio: clients rely on both.
  return StartOrStop(params, "Streaming", "On");
}

int SetTallyLampPriority::Parse(const char* params) {
  ShortText priority;
  if (!ReadParameter(params, "Priority", priority)) {
    return -1;
  }
  DLOG(2, "##### SetTallyLampPriority Parse() m_priority=%s", priority);
  return PressAndLog("Tally", priority);
}

int SetTallyLampCtrl::Parse(const char* params) {
  DLOG(2, "##### SetTallyLampCtrl Parse() params=%s", params);
  ShortText sw;
  return ReadParameter(params, "Sw", sw) ? Press("Tally", sw) : -1;
}

int SetTallyControlWithPriority::Parse(const char* params) {
  DLOG(2, "##### SetTallyControlWithPriority Parse() params=%s", params);
  ShortText sw;
  if (!ReadParameter(params, "Sw", sw)) {
    return -1;
  }
  // The keys that also take control have a suffix. An empty "Sw" becomes the key "Web".
  constexpr char kSuffix[] = "Web";
  char key[sizeof(ShortText) + sizeof kSuffix - 1];
  CopyText(key, sw);
  AppendText(key, kSuffix);
  return PressAndLog("Tally", key);
}

int SetStudioTally::Parse(const char* params) {
  DLOG(2, "##### SetStudioTally Parse() params=%s", params);
  ShortText indication;
  const bool complete = ReadParameter(params, "Indication", indication);
  return complete ? PressAndLog("StudioTally", indication) : -1;
}
