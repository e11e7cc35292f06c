#include "core/line_reader.h"

#include "core/text.h"

bool LinePieces::Refill() {
  next_ = 0;
  filled_ = 0;
  if (!failed_ && length_ < os::kMaxFile) {
    failed_ = !os::Read(file_, block_, sizeof block_, filled_);
    length_ += filled_;
  }
  return filled_ > 0;
}

bool LinePieces::Next(char* piece, std::size_t size) {
  std::size_t length = 0;
  while (length + 1 < size && (next_ < filled_ || Refill())) {
    const char c = block_[next_++];
    piece[length++] = c;
    if (c == '\n') {
      break;
    }
  }
  piece[length] = '\0';
  return length > 0;
}

std::string_view ValueAfterKey(const char* line, std::string_view key) {
  const char* first = line + key.size();
  while (IsSpace(*first)) {
    ++first;
  }
  const char* last = first;
  while (*last != '\0' && !IsSpace(*last)) {
    ++last;
  }
  return {first, static_cast<std::size_t>(last - first)};
}
