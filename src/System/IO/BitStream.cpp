#include "System/IO/BitStream.h"

#include <climits>
#include <cstring>

#include "System/ByteArray.h"

namespace Corvane::Mox {

namespace {

constexpr int PeekLimit = 57;  // a 64-bit load shifted by up to 7 bits still holds 57

}  // namespace

CBitStream::CBitStream(int bits) : CBitStream(RObject<CByteArray>(new CByteArray(bits > 0 ? (bits + 7) / 8 : 0, 8))) {
  // Bits that are never written read as zeros.
  buffer_->Clear();
  length_ = 0;
}

CBitStream::CBitStream(CByteArray* buffer)
    : buffer_(buffer), data_(nullptr), bytes_(0), length_(0), position_(0) {
  if (!buffer_) return;
  buffer_->Acquire();
  data_ = buffer_->GetData();
  bytes_ = buffer_->GetLength();
  length_ = bytes_ > INT_MAX / 8 ? INT_MAX : bytes_ * 8;
}

CBitStream::~CBitStream() {
  if (buffer_) buffer_->Release();
}

CByteArray* CBitStream::GetBuffer() const {
  if (buffer_) buffer_->Acquire();
  return buffer_;
}

Result CBitStream::SetPosition(int position) {
  if (!buffer_) return ResultNullPointer();
  if (position < 0 || position >= length_) return ResultArgumentOutOfRange();
  position_ = position;
  return Result();
}

Result CBitStream::Skip(int bits) {
  if (!buffer_) return ResultNullPointer();
  long long target = static_cast<long long>(position_) + bits;
  if (target < 0 || target > length_) return ResultArgumentOutOfRange();
  position_ = static_cast<int>(target);
  return Result();
}

Result CBitStream::GetStopPosition(int& position) const {
  if (!buffer_) return ResultNullPointer();
  for (int byte = (length_ - 1) / 8; length_ > 0 && byte >= 0; --byte) {
    unsigned int bits = data_[byte];
    // Bits at or past the length do not count.
    int used = length_ - byte * 8;
    if (used < 8) bits &= 0xFFu << (8 - used);
    if (bits != 0) {
      position = byte * 8 + 7 - __builtin_ctz(bits);
      return Result();
    }
  }
  return ResultError();
}

unsigned long long CBitStream::Peek(int n) const {
  if (n == 0) return 0;
  int byte = position_ >> 3;
  unsigned long long word = 0;
  if (byte + 8 <= bytes_) {
    std::memcpy(&word, data_ + byte, sizeof word);
    word = __builtin_bswap64(word);
  } else {
    for (int i = 0; i < 8; ++i) word = word << 8 | (byte + i < bytes_ ? data_[byte + i] : 0u);
  }
  return (word << (position_ & 7)) >> (64 - n);
}

unsigned long long CBitStream::Take(int n) {
  if (n > PeekLimit) {
    unsigned long long high = Take(n - 32);
    return high << 32 | Take(32);
  }
  unsigned long long bits = Peek(n);
  position_ += n;
  return bits;
}

Result CBitStream::CheckRead(int n, int limit) const {
  if (!buffer_) return ResultNullPointer();
  if (n < 0 || n > limit || n > length_ - position_) return ResultArgumentOutOfRange();
  return Result();
}

Result CBitStream::Read(bool& value) {
  Result result = CheckRead(1, 1);
  if (result.Succeeded()) value = Take(1) != 0;
  return result;
}

Result CBitStream::Read(int bits, unsigned char& value) {
  Result result = CheckRead(bits, 8);
  if (result.Succeeded()) value = static_cast<unsigned char>(Take(bits));
  return result;
}

Result CBitStream::Read(int bits, unsigned short& value) {
  Result result = CheckRead(bits, 16);
  if (result.Succeeded()) value = static_cast<unsigned short>(Take(bits));
  return result;
}

Result CBitStream::Read(int bits, unsigned int& value, unsigned int prefix) {
  Result result = CheckRead(bits, 32);
  if (result.Succeeded()) value = static_cast<unsigned int>(static_cast<unsigned long long>(prefix) << bits | Take(bits));
  return result;
}

Result CBitStream::Read(int bits, unsigned long long& value) {
  Result result = CheckRead(bits, 64);
  if (result.Succeeded()) value = Take(bits);
  return result;
}

Result CBitStream::Read(unsigned char& value) { return Read(8, value); }
Result CBitStream::Read(unsigned short& value) { return Read(16, value); }

Result CBitStream::Read(signed char& value) {
  unsigned char bits = 0;
  Result result = Read(8, bits);
  if (result.Succeeded()) value = static_cast<signed char>(bits);
  return result;
}

Result CBitStream::Read(short& value) {
  unsigned short bits = 0;
  Result result = Read(16, bits);
  if (result.Succeeded()) value = static_cast<short>(bits);
  return result;
}

Result CBitStream::ReadExpGolomb(unsigned long long& value) {
  if (!buffer_) return ResultNullPointer();
  int start = position_;
  // Count the leading zeros a window at a time.
  int zeros = 0;
  for (;;) {
    int window = length_ - position_ < PeekLimit ? length_ - position_ : PeekLimit;
    if (window <= 0 || zeros > 32) {
      position_ = start;
      return ResultArgumentOutOfRange();
    }
    unsigned long long bits = Peek(window);
    if (bits != 0) {
      int leading = __builtin_clzll(bits) - (64 - window);
      zeros += leading;
      position_ += leading + 1;
      break;
    }
    zeros += window;
    position_ += window;
  }
  if (zeros > 32 || zeros > length_ - position_) {
    position_ = start;
    return ResultArgumentOutOfRange();
  }
  value = Take(zeros) + (1ULL << zeros) - 1;
  return Result();
}

Result CBitStream::Read(unsigned int& value) {
  int start = position_;
  unsigned long long code = 0;
  Result result = ReadExpGolomb(code);
  if (result.Failed()) return result;
  if (code > UINT_MAX) {
    position_ = start;
    return ResultArgumentOutOfRange();
  }
  value = static_cast<unsigned int>(code);
  return result;
}

Result CBitStream::Read(int& value) {
  int start = position_;
  unsigned long long code = 0;
  Result result = ReadExpGolomb(code);
  if (result.Failed()) return result;
  long long signedValue = code & 1 ? static_cast<long long>((code + 1) / 2) : -static_cast<long long>(code / 2);
  if (signedValue > INT_MAX || signedValue < INT_MIN) {
    position_ = start;
    return ResultArgumentOutOfRange();
  }
  value = static_cast<int>(signedValue);
  return result;
}

Result CBitStream::Read(const PrefixTable* table, int& value) {
  if (!buffer_) return ResultNullPointer();
  if (!table) return ResultArgumentNull();
  int start = position_;
  unsigned int code = 0;
  int read = 0;
  for (int i = 0; i < table->count; ++i) {
    const PrefixCode& entry = table->entries[i];
    int more = entry.length - read;
    if (more > 0) {
      if (more > length_ - position_ || entry.length > 32) break;
      code = static_cast<unsigned int>(static_cast<unsigned long long>(code) << more | Take(more));
      read = entry.length;
    }
    if (read == entry.length && code == entry.code) {
      value = entry.value;
      return Result();
    }
  }
  position_ = start;
  return ResultError();
}

Result CBitStream::Write(int bits, unsigned long long value) {
  if (!buffer_) return ResultNullPointer();
  if (bits < 0 || bits > 64 || static_cast<long long>(position_) + bits > 8LL * bytes_)
    return ResultArgumentOutOfRange();
  while (bits > 0) {
    int offset = position_ & 7;
    int take = 8 - offset < bits ? 8 - offset : bits;
    int shift = 8 - offset - take;
    unsigned int mask = ((1u << take) - 1) << shift;
    unsigned int chunk = static_cast<unsigned int>(value >> (bits - take)) << shift;
    unsigned char& byte = data_[position_ >> 3];
    byte = static_cast<unsigned char>((byte & ~mask) | (chunk & mask));
    position_ += take;
    bits -= take;
  }
  if (position_ > length_) length_ = position_;
  return Result();
}

Result CBitStream::Write(bool value) { return Write(1, value ? 1ULL : 0ULL); }
Result CBitStream::Write(unsigned char value) { return Write(8, static_cast<unsigned long long>(value)); }

Result CBitStream::WriteExpGolomb(unsigned long long value) {
  unsigned long long c = value + 1;
  int z = 63 - __builtin_clzll(c);
  if (!buffer_) return ResultNullPointer();
  if (static_cast<long long>(position_) + 2 * z + 1 > 8LL * bytes_) return ResultArgumentOutOfRange();
  // z zeros, then c itself, whose top bit is the 1 that ends the zeros.
  Result result = Write(z, 0ULL);
  if (result.Succeeded()) result = Write(z + 1, c);
  return result;
}

Result CBitStream::Write(unsigned int value) { return WriteExpGolomb(value); }

Result CBitStream::Write(int value) {
  long long v = value;
  return WriteExpGolomb(static_cast<unsigned long long>(v > 0 ? 2 * v - 1 : -2 * v));
}

CByteArray* CBitStream::ToByteArray() const {
  return new CByteArray(data_, (length_ + 7) / 8);
}

}  // namespace Corvane::Mox
