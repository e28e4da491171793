#include "System/IO/Crc16Stream.h"

namespace Corvane::Mox {

CCrc16Stream::CCrc16Stream(unsigned short polynomial, CStream* inner)
    : CObservingStream(TypeCode, inner), crc_(0), polynomial_(polynomial) {}

unsigned short CCrc16Stream::UpdateCrc(unsigned short crc, unsigned char byte) {
  // Bit by bit: CRC-16 streams carry small headers, where a table would not pay.
  unsigned int value = crc ^ (static_cast<unsigned int>(byte) << 8);
  for (int bit = 0; bit < 8; ++bit) value = (value & 0x8000) ? (value << 1) ^ polynomial_ : value << 1;
  return static_cast<unsigned short>(value);
}

void CCrc16Stream::ComputeCrc(unsigned char byte) { crc_ = UpdateCrc(crc_, byte); }

void CCrc16Stream::Observe(const unsigned char* bytes, int count) {
  for (int i = 0; i < count; ++i) ComputeCrc(bytes[i]);
}

}  // namespace Corvane::Mox
