#include "System/IO/ChecksumStream.h"

namespace Corvane::Mox {

CChecksumStream::CChecksumStream(CStream* inner) : CWrappedStream(TypeCode, inner), sum_(0) {}

void CChecksumStream::Add(const unsigned char* bytes, int count) {
  if (!bytes) return;
  for (int i = 0; i < count; ++i) sum_ = static_cast<unsigned char>(sum_ + bytes[i]);
}

Result CChecksumStream::Read(unsigned char* buffer, int count, int* read) {
  Result result = CWrappedStream::Read(buffer, count, read);
  if (result.Succeeded()) Add(buffer, count);
  return result;
}

int CChecksumStream::ReadByte() {
  unsigned char byte = 0;
  int read = 0;
  Result result = CWrappedStream::Read(&byte, 1, &read);
  if (result.Failed() || read != 1) return -1;
  Add(&byte, 1);
  return byte;
}

Result CChecksumStream::Write(const unsigned char* buffer, int count, int* written) {
  Add(buffer, count);
  return CWrappedStream::Write(buffer, count, written);
}

}  // namespace Corvane::Mox
