#include "System/IO/Crc32Stream.h"

namespace Corvane::Mox {

CCrc32Stream::CCrc32Stream(unsigned int polynomial, CStream* inner)
    : CWrappedStream(TypeCode, inner), crc_(0), polynomial_(polynomial) {}

unsigned int CCrc32Stream::UpdateCrc(unsigned int crc, unsigned char byte) {
  // Bit by bit: the streams guard tables and headers of a few hundred bytes.
  crc ^= static_cast<unsigned int>(byte) << 24;
  for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x80000000u) ? (crc << 1) ^ polynomial_ : crc << 1;
  return crc;
}

void CCrc32Stream::Fold(const unsigned char* bytes, int count) {
  for (int i = 0; i < count; ++i) crc_ = UpdateCrc(crc_, bytes[i]);
}

Result CCrc32Stream::Read(unsigned char* buffer, int count, int* read) {
  int delivered = 0;
  Result result = CWrappedStream::Read(buffer, count, &delivered);
  if (read) *read = delivered;
  if (result.Succeeded()) Fold(buffer, delivered);
  return result;
}

Result CCrc32Stream::Write(const unsigned char* buffer, int count, int* written) {
  int accepted = 0;
  Result result = CWrappedStream::Write(buffer, count, &accepted);
  if (written) *written = accepted;
  if (result.Succeeded()) Fold(buffer, accepted);
  return result;
}

}  // namespace Corvane::Mox
