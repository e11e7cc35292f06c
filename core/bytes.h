// Reads and writes numbers and texts in byte layouts: messages, replies, the camera status block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

constexpr std::uint8_t HighByte(std::uint16_t number) {
  return static_cast<std::uint8_t>(number >> 8);
}
constexpr std::uint8_t LowByte(std::uint32_t number) { return static_cast<std::uint8_t>(number); }
constexpr std::uint8_t LowByte(std::int32_t number) { return static_cast<std::uint8_t>(number); }

/// Little-endian numbers of the message header, without alignment or padding.
class LittleEndian16 {
 public:
  constexpr LittleEndian16() = default;
  constexpr LittleEndian16(std::uint16_t value) : bytes_{LowByte(value), HighByte(value)} {}
  constexpr operator std::uint16_t() const {
    return static_cast<std::uint16_t>(bytes_[0] | bytes_[1] << 8);
  }

 private:
  std::uint8_t bytes_[2] = {};
};

class LittleEndian32 {
 public:
  constexpr LittleEndian32() = default;
  constexpr LittleEndian32(std::uint32_t value)
      : bytes_{LowByte(value), LowByte(value >> 8), LowByte(value >> 16), LowByte(value >> 24)} {}

 private:
  std::uint8_t bytes_[4] = {};
};

/// A number whose bytes in memory are in big-endian order.
inline std::uint32_t ToBigEndian32(std::uint32_t number) {
  const std::uint8_t bytes[] = {LowByte(number >> 24), LowByte(number >> 16), LowByte(number >> 8),
                                LowByte(number)};
  std::uint32_t big_endian = 0;
  std::memcpy(&big_endian, bytes, sizeof big_endian);
  return big_endian;
}

// A layout is a list of named fields, read with `view[field]`. Multi-byte numbers are big-endian,
// as in all layouts of the camera itself.

/// A number.
template <typename Number>
struct NumberField {
  std::uint16_t offset;
};
using U8Field = NumberField<std::uint8_t>;
using S8Field = NumberField<std::int8_t>;
using U16Field = NumberField<std::uint16_t>;
using S16Field = NumberField<std::int16_t>;
using U32Field = NumberField<std::uint32_t>;

/// A text of at most `width` bytes, not necessarily terminated.
struct TextField {
  std::uint16_t offset;
  std::uint16_t width;
};
/// `size` uninterpreted bytes.
struct BytesField {
  std::uint16_t offset;
  std::uint16_t size;
};

/// A view of received bytes. Bytes beyond the end read as 0, so a layout can also be read from a
/// partial reply.
class ByteView {
 public:
  constexpr ByteView(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes), size_(size) {}

  [[nodiscard]] constexpr std::size_t Size() const { return size_; }

  [[nodiscard]] constexpr std::uint8_t U8(std::size_t offset) const {
    return offset < size_ ? bytes_[offset] : std::uint8_t{0};
  }
  [[nodiscard]] constexpr std::uint16_t U16LittleEndian(std::size_t offset) const {
    return static_cast<std::uint16_t>(U8(offset + 1) << 8 | U8(offset));
  }

  /// The text in a field of `width` bytes. It ends at a NUL, or with the field or the bytes.
  [[nodiscard]] std::string_view Text(std::size_t offset, std::size_t width) const {
    if (offset >= size_) {
      return "";
    }
    const std::size_t available = size_ - offset < width ? size_ - offset : width;
    const char* const text = reinterpret_cast<const char*>(bytes_ + offset);
    return {text, strnlen(text, available)};
  }

  template <typename Number>
  constexpr Number operator[](NumberField<Number> field) const {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i) {
      number = number << 8 | U8(field.offset + i);
    }
    return static_cast<Number>(number);
  }
  std::string_view operator[](TextField field) const { return Text(field.offset, field.width); }
  constexpr ByteView operator[](BytesField field) const {
    const std::size_t start = field.offset < size_ ? field.offset : size_;
    const std::size_t available = size_ - start;
    return {bytes_ + start, field.size < available ? field.size : available};
  }

 private:
  const std::uint8_t* bytes_;
  std::size_t size_;
};

/// Writes the fields of a layout. Bytes beyond the end are dropped.
class ByteWriter {
 public:
  ByteWriter(std::uint8_t* bytes, std::size_t size) : bytes_(bytes), size_(size) {}

  /// A big-endian number, truncated to `width` bytes.
  void PutNumber(std::size_t offset, std::size_t width, std::uint32_t number) {
    for (std::size_t i = width; i > 0; --i) {
      PutByte(offset + i - 1, LowByte(number));
      number >>= 8;
    }
  }

  template <typename Number>
  void Put(NumberField<Number> field, std::uint32_t number) {
    PutNumber(field.offset, sizeof(Number), number);
  }

  /// A text, truncated to leave room for the NUL in its field.
  void Put(TextField field, std::string_view text) {
    for (std::size_t i = 0; i < field.width; ++i) {
      const bool is_text = i < text.size() && i + 1U < field.width;
      PutByte(field.offset + i, is_text ? static_cast<std::uint8_t>(text[i]) : std::uint8_t{0});
    }
  }

 private:
  void PutByte(std::size_t offset, std::uint8_t byte) {
    if (offset < size_) {
      bytes_[offset] = byte;
    }
  }

  std::uint8_t* bytes_;
  std::size_t size_;
};
