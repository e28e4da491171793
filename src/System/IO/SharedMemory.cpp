#include "System/IO/SharedMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "System/Console.h"
#include "System/Text.h"

namespace Corvane::Mox {

CSharedMemory::CSharedMemory(CString* name, int descriptor, long long size)
    : CObject(TypeCode), name_(name), descriptor_(descriptor), size_(size), data_(nullptr) {
  if (name_) name_->Acquire();
  if (descriptor_ < 0 || size_ <= 0) return;
  void* mapped = mmap(nullptr, static_cast<std::size_t>(size_), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, 0);
  if (mapped == MAP_FAILED)
    MOX_LOG(Console::Error, "mmap failed %d", errno);
  else
    data_ = static_cast<unsigned char*>(mapped);
}

CSharedMemory::~CSharedMemory() {
  if (data_) munmap(data_, static_cast<std::size_t>(size_));
  if (descriptor_ >= 0) close(descriptor_);
  if (name_) name_->Release();
}

CSharedMemory* CSharedMemory::Create(const char* name, long long size) { return Open(name, size, true); }

CSharedMemory* CSharedMemory::Create(CString* name, long long size) {
  return name ? Create(name->GetChars(), size) : nullptr;
}

CSharedMemory* CSharedMemory::CreateExisting(const char* name, long long size) { return Open(name, size, false); }

CSharedMemory* CSharedMemory::CreateExisting(CString* name, long long size) {
  return name ? CreateExisting(name->GetChars(), size) : nullptr;
}

CSharedMemory* CSharedMemory::Open(const char* name, long long size, bool create) {
  if (!name || size <= 0) return nullptr;
  int descriptor = shm_open(name, create ? O_RDWR | O_CREAT : O_RDWR, 0666);
  if (descriptor < 0) {
    MOX_LOG(Console::Error, "shm_open failed %d", errno);
    return nullptr;
  }
  if (create && ftruncate(descriptor, static_cast<off_t>(size)) != 0) {
    MOX_LOG(Console::Error, "ftruncate failed %d", errno);
    close(descriptor);
    return nullptr;
  }
  RObject<CString> text(new CString(name));
  RObject<CSharedMemory> memory(new CSharedMemory(text, descriptor, size));
  return memory->GetData() ? memory.Detach() : nullptr;
}

CString* CSharedMemory::GetName() const {
  if (name_) name_->Acquire();
  return name_;
}

void CSharedMemory::CheckOffset(long long offset) const {
  if (!data_ || offset < 0 || offset >= size_)
    throw ResultArgumentOutOfRange("offset %lld outside %lld bytes", offset, size_);
}

unsigned char CSharedMemory::GetByte(long long offset) const {
  CheckOffset(offset);
  return data_[offset];
}

void CSharedMemory::SetByte(long long offset, unsigned char value) {
  CheckOffset(offset);
  data_[offset] = value;
}

Result CSharedMemory::Copy(long long offset, unsigned char* out, long long count) const {
  if (!out) return ResultArgumentNull();
  if (!data_ || offset < 0 || count < 0 || offset > size_ - count)
    return ResultArgumentOutOfRange("%lld bytes at %lld outside %lld bytes", count, offset, size_);
  std::memcpy(out, data_ + offset, static_cast<std::size_t>(count));
  return ResultOK();
}

}  // namespace Corvane::Mox
