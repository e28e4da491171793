#include "System/ByteArray.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "System/Diagnostics/Leaks.h"

namespace Corvane::Mox {

namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

CByteArray::CByteArray(int capacity, int alignment)
    : CPoolObject(TypeCode),
      capacity_(std::max(capacity, 0)),
      length_(capacity_),
      alignment_(std::max(alignment, 1)),
      allocation_(nullptr),
      data_(nullptr),
      owner_(nullptr) {}

CByteArray::CByteArray(const unsigned char* bytes, int length) : CByteArray(length, 1) {
  Allocate();
  if (bytes && length_ > 0) std::memcpy(data_, bytes, static_cast<std::size_t>(length_));
}

CByteArray::CByteArray(int length, unsigned char* bytes, const CObject* owner)
    : CPoolObject(TypeCode),
      capacity_(std::max(length, 0)),
      length_(capacity_),
      alignment_(1),
      allocation_(nullptr),
      data_(bytes),
      owner_(owner) {
  if (owner_) owner_->Acquire();
}

CByteArray::~CByteArray() {
  Free();
  if (owner_) owner_->Release();
}

Result CByteArray::FromHexString(const char* text, CByteArray*& out) {
  out = nullptr;
  if (!text) return ResultArgumentNull();
  std::size_t n = std::strlen(text);
  if (n % 2 != 0) return ResultArgumentOutOfRange();
  out = new CByteArray(static_cast<int>(n / 2), 1);
  unsigned char* bytes = out->GetData();
  for (std::size_t i = 0; i < n; i += 2) {
    int high = HexDigit(text[i]);
    int low = HexDigit(text[i + 1]);
    if (high < 0 || low < 0) return ResultArgumentOutOfRange();
    bytes[i / 2] = static_cast<unsigned char>(high << 4 | low);
  }
  return ResultOK();
}

unsigned char* CByteArray::GetData() {
  if (!data_) Allocate();
  return data_;
}

Result CByteArray::SetLength(int length) {
  if (length < 0 || length > capacity_) return ResultArgumentOutOfRange();
  length_ = length;
  return ResultOK();
}

void CByteArray::Allocate() {
  if (data_ || allocation_) return;
  std::size_t size = static_cast<std::size_t>(capacity_) + static_cast<std::size_t>(alignment_) - 1;
  // malloc(0) may legitimately return null; ask for one byte so an empty
  // array still gets a data pointer.
  allocation_ = static_cast<unsigned char*>(std::malloc(std::max<std::size_t>(size, 1)));
  if (!allocation_) throw std::bad_alloc();
  // GCC 12 mistakes passing fresh malloc memory as const void* for a read of it.
MOX_SUPPRESS_MAYBE_UNINITIALIZED_BEGIN
  CLeaks::AddMemory(this, allocation_, size);
MOX_SUPPRESS_MAYBE_UNINITIALIZED_END
  std::size_t r = reinterpret_cast<std::uintptr_t>(allocation_) % static_cast<std::size_t>(alignment_);
  data_ = allocation_ + (r == 0 ? 0 : static_cast<std::size_t>(alignment_) - r);
}

void CByteArray::Free() {
  if (!allocation_) return;
  CLeaks::RemoveMemory(this, allocation_);
  std::free(allocation_);
  allocation_ = nullptr;
  data_ = nullptr;
}

void CByteArray::Clear() {
  unsigned char* data = GetData();
  if (length_ > 0) std::memset(data, 0, static_cast<std::size_t>(length_));
}

Result CByteArray::Clear(int offset, int count) {
  if (!data_) return ResultError();
  if (offset < 0 || offset > length_ || count < 0 || count > length_ || offset + count > length_)
    return ResultArgumentOutOfRange();
  if (count > 0) std::memset(data_ + offset, 0, static_cast<std::size_t>(count));
  return ResultOK();
}

bool CByteArray::StartsWith(const unsigned char* bytes, int count) const {
  if (count < 0 || !bytes || length_ < count) return false;
  if (count == 0) return true;
  return data_ && std::memcmp(data_, bytes, static_cast<std::size_t>(count)) == 0;
}

bool CByteArray::Equals(CByteArray* other) const {
  if (!other || other->length_ != length_) return false;
  const unsigned char* theirs = other->GetData();
  if (!data_ || !theirs) return false;
  return std::memcmp(data_, theirs, static_cast<std::size_t>(length_)) == 0;
}

bool CByteArray::Equals(const unsigned char* bytes, int count) const {
  if (count < 0 || !bytes || length_ != count) return false;
  if (count == 0) return true;
  return data_ && std::memcmp(data_, bytes, static_cast<std::size_t>(count)) == 0;
}

int CByteArray::GetHashCode() const {
  if (!data_) return 0;
  std::uint32_t h = 0x811C9DC5u;
  for (int i = 0; i < length_; ++i) h = (h ^ data_[i]) * 16777619u;
  return static_cast<int>(h);
}

}  // namespace Corvane::Mox
