#include "System/IO/ByteOrderConverter.h"

#include "System/IO/ByteSwap.h"

namespace Corvane::Mox {

const CByteOrderConverter CByteOrderConverter::BigEndian(CBinary::BigEndian);
const CByteOrderConverter CByteOrderConverter::LittleEndian(CBinary::LittleEndian);

void CByteOrderConverter::GetBytes(int value, unsigned char* out) const {
  ByteSwap::Store(value, order_ == CBinary::BigEndian, out);
}
void CByteOrderConverter::GetBytes(short value, unsigned char* out) const {
  ByteSwap::Store(value, order_ == CBinary::BigEndian, out);
}
void CByteOrderConverter::GetBytes(long long value, unsigned char* out) const {
  ByteSwap::Store(value, order_ == CBinary::BigEndian, out);
}

int CByteOrderConverter::ToInt32(const unsigned char* bytes) const {
  return ByteSwap::Load<int>(bytes, order_ == CBinary::BigEndian);
}
short CByteOrderConverter::ToInt16(const unsigned char* bytes) const {
  return ByteSwap::Load<short>(bytes, order_ == CBinary::BigEndian);
}
long long CByteOrderConverter::ToInt64(const unsigned char* bytes) const {
  return ByteSwap::Load<long long>(bytes, order_ == CBinary::BigEndian);
}

}  // namespace Corvane::Mox
