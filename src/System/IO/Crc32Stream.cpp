#include "System/IO/Crc32Stream.h"

namespace Corvane::Mox {

CCrc32Stream::CCrc32Stream(unsigned int polynomial, CStream* inner)
    : CObservingStream(TypeCode, inner), crc_(0), polynomial_(polynomial) {}

unsigned int CCrc32Stream::UpdateCrc(unsigned int crc, unsigned char byte) {
  // Bit by bit: the streams guard tables and headers of a few hundred bytes.
  crc ^= static_cast<unsigned int>(byte) << 24;
  for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x80000000u) ? (crc << 1) ^ polynomial_ : crc << 1;
  return crc;
}

void CCrc32Stream::Observe(const unsigned char* bytes, int count) {
  for (int i = 0; i < count; ++i) crc_ = UpdateCrc(crc_, bytes[i]);
}

}  // namespace Corvane::Mox
