#include "System/IO/FileStream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "System/Console.h"
#include "System/Text.h"

namespace Corvane::Mox {

CFileStream::CFileStream(unsigned int type, FileMode mode)
    : CStream(type),
      knownLength_(0),
      mode_(mode),
      path_(nullptr),
      readTimeout_(0),
      readMargin_(0),
      caching_(true) {}

CFileStream::~CFileStream() {
  if (path_) path_->Release();
}

bool CFileStream::IsType(unsigned int type) const { return type == TypeCode || CStream::IsType(type); }

// The mode table: append-and-read deliberately reports neither direction.
bool CFileStream::CanRead() {
  return mode_ == FileMode::Read || mode_ == FileMode::ReadWrite || mode_ == FileMode::Update;
}

bool CFileStream::CanWrite() {
  return mode_ == FileMode::Write || mode_ == FileMode::ReadWrite || mode_ == FileMode::Append ||
         mode_ == FileMode::Update;
}

Result CFileStream::Open(const char* path, FileMode mode) {
  SetMode(mode);
  return Open(path);
}

Result CFileStream::Open(CString* path, FileMode mode) {
  SetMode(mode);
  return Open(path);
}

CString* CFileStream::GetPath() const {
  if (path_) path_->Acquire();
  return path_;
}

void CFileStream::SetPath(const char* path) {
  auto* copy = new CString(path);
  if (path_) path_->Release();
  path_ = copy;
}

Result CFileStream::GetReadTimeout(int& milliseconds) const {
  CAutoLock lock(this);
  milliseconds = readTimeout_;
  return Result();
}

Result CFileStream::SetReadTimeout(int milliseconds) {
  if (milliseconds > MaximumReadTimeout) return ResultArgumentOutOfRange();
  CAutoLock lock(this);
  readTimeout_ = milliseconds;
  NotifyAll();
  return Result();
}

Result CFileStream::GetReadMargin(int& bytes) const {
  CAutoLock lock(this);
  bytes = readMargin_;
  return Result();
}

Result CFileStream::SetReadMargin(int bytes) {
  CAutoLock lock(this);
  readMargin_ = bytes;
  NotifyAll();
  return Result();
}

int CFileStream::ReadTimeoutNow() const { return readTimeout_.load(std::memory_order_acquire); }

int CFileStream::ReadMarginNow() const { return readMargin_.load(std::memory_order_acquire); }

bool CFileStream::IsCaching() const { return caching_.load(std::memory_order_acquire); }

Result CFileStream::SetInt(int length, const unsigned char* data, Result (CFileStream::*setter)(int)) {
  if (length != 4 || !data) return ResultError("incorrect length");
  int value = 0;
  std::memcpy(&value, data, sizeof value);
  return (this->*setter)(value);
}

Result CFileStream::GetInt(int length, unsigned char* data, int value) {
  if (length != 4 || !data) return ResultError("incorrect length");
  std::memcpy(data, &value, sizeof value);
  return Result();
}

Result CFileStream::Control(unsigned int code, int length, unsigned char* data) {
  switch (code) {
    case SetReadTimeoutCode:
      return SetInt(length, data, &CFileStream::SetReadTimeout);
    case GetReadTimeoutCode:
      return GetInt(length, data, ReadTimeoutNow());
    case SetReadMarginCode:
      return SetInt(length, data, &CFileStream::SetReadMargin);
    case GetReadMarginCode:
      return GetInt(length, data, ReadMarginNow());
    case SetCachingCode: {
      // Without a payload (as readers send it once their index reached the
      // end of a growing file) caching is turned back on.
      if (length != 0 && (length != 1 || !data)) return ResultError("incorrect length");
      CAutoLock lock(this);
      caching_ = length == 0 || data[0] != 0;
      return Result();
    }
    default:
      return ResultNotSupported();
  }
}

Result CFileStream::WriteFailure(int error) {
  if (error == ENOSPC) return ResultDiskFull();
  if (error == EFBIG) return ResultIOError("file too large");
  return ResultIOError("%s", std::strerror(error));
}

Result CFileStream::ReadFollowing(unsigned char* buffer, int count, int* read, bool logWaits) {
  if (read) *read = 0;
  if (count < 0) return ResultArgumentOutOfRange();
  int total = 0;
  int timeout = ReadTimeoutNow();
  while (total < count) {
    int n = 0;
    Result result = ReadOnce(buffer + total, count - total, n);
    if (result.Failed()) {
      if (read) *read = total;
      return result;
    }
    total += n;
    if (n > 0 || total == count) continue;
    // At the current end of the file: stop unless there is time to wait.
    timeout = std::min(timeout, ReadTimeoutNow());
    if (timeout <= 0) break;
    long long reached = GetPosition();
    timeout = WaitForGrowth(timeout, reached, logWaits);
    // Re-reading from the same place clears the handle's end-of-file state.
    result = SeekTo(reached);
    if (result.Failed()) {
      if (read) *read = total;
      return result;
    }
  }
  if (read) *read = total;
  return Result();
}

int CFileStream::WaitForGrowth(int timeout, long long position, bool logWaits) {
  if (logWaits) MOX_LOG(4, "waiting for %d ms at position %lld ...", timeout, position);
  CAutoLock lock(this);
  // A file that is still being written is read once: keep it out of the cache.
  caching_ = false;
  for (;;) {
    // A control may have shortened the timeout while we slept.
    timeout = std::min(timeout, ReadTimeoutNow());
    if (timeout <= 0) return 0;
    long long length = GetAvailableLength();
    if (length > position) {
      if (logWaits) MOX_LOG(4, "file length increased to %lld", length);
      knownLength_ = length;
      return ReadTimeoutNow();
    }
    Wait(PollInterval);
    timeout -= PollInterval;
  }
}

}  // namespace Corvane::Mox
