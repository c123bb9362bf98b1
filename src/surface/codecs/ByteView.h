#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zelvane {

/// Bytes of a file that somebody else keeps. Reading beyond the end yields zeros, never a fault.
class ByteView {
 public:
  ByteView() = default;
  ByteView(const unsigned char* data, size_t size) : data_(data), size_(size) {}

  const unsigned char* Data() const { return data_; }
  size_t Size() const { return size_; }
  bool Has(uint64_t at, uint64_t count) const { return at <= size_ && count <= size_ - at; }
  bool StartsWith(const void* text, size_t count) const {
    return Has(0, count) && std::memcmp(data_, text, count) == 0;
  }
  /// Only what lies within; empty where nothing does.
  ByteView Part(uint64_t at, uint64_t count) const {
    if (at >= size_) return {};
    const size_t rest = size_ - static_cast<size_t>(at);
    return {data_ + at, count < rest ? static_cast<size_t>(count) : rest};
  }
  ByteView From(uint64_t at) const { return Part(at, size_); }

  uint32_t At(uint64_t at) const { return at < size_ ? data_[at] : 0u; }
  uint32_t Little16(uint64_t at) const { return At(at) | At(at + 1) << 8; }
  uint32_t Little32(uint64_t at) const { return Little16(at) | Little16(at + 2) << 16; }
  uint32_t Big16(uint64_t at) const { return At(at) << 8 | At(at + 1); }
  uint32_t Big32(uint64_t at) const { return Big16(at) << 16 | Big16(at + 2); }

 private:
  const unsigned char* data_ = nullptr;
  size_t size_ = 0;
};

}  // namespace zelvane
