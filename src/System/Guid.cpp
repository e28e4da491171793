#include "System/Guid.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>

#include "System/ByteArray.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

constexpr int GuidBytes = 16;
constexpr int MaxParseLength = 40;

// Fills bytes from the kernel's random source, falling back to the random
// device file and, failing both, to the C++ library's random device.
void RandomBytes(unsigned char* bytes, std::size_t count) {
  if (getrandom(bytes, count, 0) == static_cast<ssize_t>(count)) return;
  int fd = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
  if (fd >= 0) {
    ssize_t n = read(fd, bytes, count);
    close(fd);
    if (n == static_cast<ssize_t>(count)) return;
  }
  std::random_device device;
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(device());
}

unsigned int BigEndian(const unsigned char* p, int count) {
  unsigned int value = 0;
  for (int i = 0; i < count; ++i) value = (value << 8) | p[i];
  return value;
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Skips separators, then reads one to maxDigits hexadecimal digits.
bool ReadHex(const char*& p, int maxDigits, unsigned int& value) {
  while (*p && HexValue(*p) < 0) ++p;
  int digits = 0;
  value = 0;
  for (; digits < maxDigits && HexValue(*p) >= 0; ++digits, ++p) value = (value << 4) | HexValue(*p);
  return digits > 0;
}

}  // namespace

Guid::Guid() : data1_(0), data2_(0), data3_(0), data4_{} {}

Guid::Guid(const unsigned char* bytes) : Guid() {
  if (bytes) std::memcpy(static_cast<void*>(this), bytes, GuidBytes);
}

Guid::Guid(const CByteArray* bytes) : Guid() {
  if (!bytes) throw ResultArgumentNull("Guid: no bytes");
  if (bytes->GetLength() < GuidBytes) throw ResultArgumentOutOfRange("Guid: %d bytes", bytes->GetLength());
  unsigned char copy[GuidBytes];
  for (int i = 0; i < GuidBytes; ++i) copy[i] = bytes->GetData(i);
  std::memcpy(static_cast<void*>(this), copy, GuidBytes);
}

Guid::Guid(unsigned int data1, unsigned short data2, unsigned short data3, unsigned char b0, unsigned char b1,
           unsigned char b2, unsigned char b3, unsigned char b4, unsigned char b5, unsigned char b6,
           unsigned char b7)
    : data1_(data1), data2_(data2), data3_(data3), data4_{b0, b1, b2, b3, b4, b5, b6, b7} {}

Guid Guid::NewGuid(unsigned int version) {
  if (version != 4) return Guid();
  unsigned char bytes[GuidBytes];
  RandomBytes(bytes, GuidBytes);
  // The random bytes are a UUID in network order; the fields take host order.
  Guid guid(BigEndian(bytes, 4), static_cast<unsigned short>(BigEndian(bytes + 4, 2)),
            static_cast<unsigned short>(BigEndian(bytes + 6, 2)), bytes[8], bytes[9], bytes[10], bytes[11],
            bytes[12], bytes[13], bytes[14], bytes[15]);
  guid.data3_ = static_cast<unsigned short>((guid.data3_ & 0x0FFF) | 0x4000);
  guid.data4_[0] = static_cast<unsigned char>((guid.data4_[0] & 0x3F) | 0x80);
  return guid;
}

Guid Guid::NewPseudoRandom() { return NewGuid(4); }

Result Guid::Parse(const char* text) {
  if (!text) return ResultArgumentNull();
  if (std::strlen(text) >= MaxParseLength) return ResultError("Guid::Parse: '%s' is too long", text);
  unsigned int fields[11];
  static const int widths[11] = {8, 4, 4, 2, 2, 2, 2, 2, 2, 2, 2};
  const char* p = text;
  for (int i = 0; i < 11; ++i) {
    if (!ReadHex(p, widths[i], fields[i])) return ResultError("Guid::Parse: '%s' is not a GUID", text);
  }
  *this = Guid(fields[0], static_cast<unsigned short>(fields[1]), static_cast<unsigned short>(fields[2]),
               static_cast<unsigned char>(fields[3]), static_cast<unsigned char>(fields[4]),
               static_cast<unsigned char>(fields[5]), static_cast<unsigned char>(fields[6]),
               static_cast<unsigned char>(fields[7]), static_cast<unsigned char>(fields[8]),
               static_cast<unsigned char>(fields[9]), static_cast<unsigned char>(fields[10]));
  return ResultOK();
}

Result Guid::Parse(CString* text) {
  if (!text) return ResultArgumentNull();
  return Parse(text->GetChars());
}

bool Guid::IsEmpty() const { return Equals(Guid()); }

bool Guid::Equals(const Guid& other) const {
  return data1_ == other.data1_ && data2_ == other.data2_ && data3_ == other.data3_ &&
         std::memcmp(data4_, other.data4_, sizeof data4_) == 0;
}

void Guid::Swap() {
  data1_ = __builtin_bswap32(data1_);
  data2_ = __builtin_bswap16(data2_);
  data3_ = __builtin_bswap16(data3_);
}

void Guid::ToByteArray(unsigned char* bytes) const {
  if (bytes) std::memcpy(bytes, static_cast<const void*>(this), GuidBytes);
}

CByteArray* Guid::ToByteArray() const {
  unsigned char bytes[GuidBytes];
  ToByteArray(bytes);
  return new CByteArray(bytes, GuidBytes);
}

Result Guid::ToByteArray(CByteArray*& bytes) const {
  bytes = ToByteArray();
  return ResultOK();
}

char* Guid::ToString(char format, char* buffer) const {
  const char* layout;
  switch (format) {
    case 'B':
      layout = "{%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x}";
      break;
    case 'N':
      layout = "%08x%04x%04x%02x%02x%02x%02x%02x%02x%02x%02x";
      break;
    case 'P':
      layout = "(%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x)";
      break;
    default:
      layout = "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x";
      break;
  }
  std::snprintf(buffer, MaxStringLength, layout, data1_, data2_, data3_, data4_[0], data4_[1], data4_[2], data4_[3],
                data4_[4], data4_[5], data4_[6], data4_[7]);
  return buffer;
}

CString* Guid::ToString(unsigned int style) const {
  char format = 'D';
  if (style == FourCC("brac"))
    format = 'B';
  else if (style == FourCC("numb"))
    format = 'N';
  else if (style == FourCC("pare"))
    format = 'P';
  char buffer[MaxStringLength];
  return new CString(ToString(format, buffer));
}

}  // namespace Corvane::Mox
