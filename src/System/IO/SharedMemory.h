#pragma once
// CSharedMemory: a named POSIX shared-memory object mapped into this
// process. Other processes (or other objects in this one) that open the same
// name see the same bytes. The mapping and the descriptor are released with
// the object; the name itself stays until the platform's shm_unlink removes it.

#include "System/Object.h"

namespace Corvane::Mox {

class CSharedMemory : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("shm ");

  // Maps size bytes of the open descriptor (taken over) under name
  // (acquired). GetData is null when the mapping failed.
  CSharedMemory(CString* name, int descriptor, long long size);
  ~CSharedMemory() override;

  // Opens the object, creating it when needed, sets its size and maps it;
  // null (and a log line) on failure.
  static CSharedMemory* Create(const char* name, long long size);
  static CSharedMemory* Create(CString* name, long long size);
  // Opens an object that must exist already and maps size bytes of it.
  static CSharedMemory* CreateExisting(const char* name, long long size);
  static CSharedMemory* CreateExisting(CString* name, long long size);

  // The name, acquired.
  CString* GetName() const;
  long long GetSize() const { return size_; }
  unsigned char* GetData() const { return data_; }
  // Throw ResultArgumentOutOfRange outside the mapping.
  unsigned char GetByte(long long offset) const;
  void SetByte(long long offset, unsigned char value);
  // count bytes from offset into out; ResultArgumentOutOfRange outside the
  // mapping, ResultArgumentNull without out.
  Result Copy(long long offset, unsigned char* out, long long count) const;

 private:
  static CSharedMemory* Open(const char* name, long long size, bool create);
  void CheckOffset(long long offset) const;

  CString* name_;
  int descriptor_;
  long long size_;
  unsigned char* data_;
};

}  // namespace Corvane::Mox
