#include "simulator/journal.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace simulator {
namespace {

constexpr std::string_view kMask = "***";

/// JSON as such; anything else as a text.
Json JsonOrText(const std::string& text) {
  if (text.empty()) {
    return nullptr;
  }
  Json json = Json::parse(text, nullptr, false);
  return json.is_discarded() ? Json(text) : json;
}

Json ToJson(const MessageRecord& message) {
  Json json = {{"daemon", message.daemon},
               {"bytes", HexText(message.bytes)},
               {"decoded", message.decoded},
               {"reply", message.reply ? Json(HexText(*message.reply)) : Json()},
               {"changes", message.changes}};
  if (!message.fault.empty()) {
    json["fault"] = message.fault;
  }
  return json;
}

/// Replaces every occurrence of a text.
void Replace(std::string& text, const std::string& what, std::string_view with) {
  for (std::size_t at = text.find(what); at != std::string::npos;
       at = text.find(what, at + with.size())) {
    text.replace(at, what.size(), with);
  }
}

/// Replaces a text among bytes, without changing their number.
void Blank(Bytes& bytes, const std::string& what) {
  auto at = bytes.begin();
  while ((at = std::search(at, bytes.end(), what.begin(), what.end())) != bytes.end()) {
    at = std::fill_n(at, what.size(), std::uint8_t{'*'});
  }
}

/// Collects the values of the members of a JSON text that hold secrets.
void AddSecrets(const std::string& text, std::vector<std::string>& secrets) {
  constexpr std::string_view kNames[] = {"\"Password\":\"", "\"StreamKey\":\""};
  for (const std::string_view name : kNames) {
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at)) {
      at += name.size();
      const std::size_t end = std::min(text.find_first_of("\",}", at), text.size());
      if (end > at) {
        secrets.push_back(text.substr(at, end - at));
      }
    }
  }
}

/// The stream key in the reply that brings stream information.
void AddStreamKey(const MessageRecord& message, std::vector<std::string>& secrets) {
  constexpr std::uint8_t kCloud = 11;
  constexpr std::uint8_t kStreamInformation = 105;
  constexpr std::size_t kKey = 196;
  constexpr std::size_t kKeyEnd = 260;
  constexpr std::size_t kCode = 4;
  if (message.bytes.size() >= kHeaderSize && message.bytes[1] == kCloud &&
      message.bytes[kCode] == kStreamInformation && message.reply &&
      message.reply->size() >= kKeyEnd) {
    const auto key = message.reply->begin() + kKey;
    const std::string text(key, std::find(key, key + (kKeyEnd - kKey), 0));
    if (!text.empty()) {
      secrets.push_back(text);
    }
  }
}

std::size_t SizeOf(const Entry& entry) {
  std::size_t size = sizeof(Entry) + entry.request.size() + entry.reply.size();
  for (const MessageRecord& message : entry.messages) {
    size +=
        sizeof(MessageRecord) + message.bytes.size() + (message.reply ? message.reply->size() : 0);
  }
  for (const std::string& line : entry.log) {
    size += sizeof(std::string) + line.size();
  }
  return size;
}

/// Bytes that are no UTF-8 are replaced.
std::string Dump(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

Json ToJson(const Entry& entry) {
  Json messages = Json::array();
  for (const MessageRecord& message : entry.messages) {
    messages.push_back(ToJson(message));
  }
  const auto text_or_null = [](const std::string& text) {
    return text.empty() ? Json() : Json(text);
  };
  return {{"number", entry.number},
          {"time", entry.time},
          {"client", entry.client},
          {"method", entry.method},
          {"command", text_or_null(entry.command)},
          {"result", text_or_null(entry.result)},
          {"status", entry.status},
          {"ms", entry.ms},
          {"request", JsonOrText(entry.request)},
          {"reply", JsonOrText(entry.reply)},
          {"reason", text_or_null(entry.reason)},
          {"faults", entry.faults},
          {"messages", messages},
          {"log", entry.log}};
}

void MaskSecrets(Entry& entry) {
  std::vector<std::string> secrets;
  AddSecrets(entry.request, secrets);
  AddSecrets(entry.reply, secrets);
  for (const MessageRecord& message : entry.messages) {
    AddStreamKey(message, secrets);
  }
  for (const std::string& secret : secrets) {
    for (const std::string_view quoted : {"\"Password\":\"", "\"StreamKey\":\""}) {
      Replace(entry.request, std::string(quoted) + secret,
              std::string(quoted) + std::string(kMask));
      Replace(entry.reply, std::string(quoted) + secret, std::string(quoted) + std::string(kMask));
    }
    for (std::string& line : entry.log) {
      Replace(line, secret, kMask);
    }
    for (MessageRecord& message : entry.messages) {
      Blank(message.bytes, secret);
      if (message.reply) {
        Blank(*message.reply, secret);
      }
    }
  }
}

Journal::Journal(const std::string& file, bool show_secrets) : show_secrets_(show_secrets) {
  if (!file.empty()) {
    file_.open(file, std::ios::app);
    if (!file_) {
      throw std::runtime_error("cannot write the journal to " + file);
    }
  }
}

const Entry& Journal::Add(Entry entry) {
  entry.number = ++last_;
  if (!show_secrets_) {
    MaskSecrets(entry);
  }
  if (file_.is_open()) {
    file_ << Dump(ToJson(entry)) << std::endl;
  }
  const std::size_t size = SizeOf(entry);
  size_ += size;
  entries_.push_back({std::move(entry), size});
  while (entries_.size() > kMaxEntries || (size_ > kMaxBytes && entries_.size() > 1)) {
    size_ -= entries_.front().size;
    entries_.pop_front();
  }
  return entries_.back().entry;
}

Json Journal::After(unsigned long after) const {
  Json entries = Json::array();
  for (const Kept& kept : entries_) {
    if (kept.entry.number > after) {
      entries.push_back(ToJson(kept.entry));
    }
  }
  const unsigned long wanted_from = std::max(after, cleared_to_) + 1;
  const unsigned long first = entries_.empty() ? last_ + 1 : entries_.front().entry.number;
  return {{"dropped", first > wanted_from ? first - wanted_from : 0},
          {"last", last_},
          {"entries", entries}};
}

void Journal::Clear() {
  entries_.clear();
  size_ = 0;
  cleared_to_ = last_;
}

}  // namespace simulator
