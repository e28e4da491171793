#include "System/IO/FileDescriptorStream.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

int OpenFlags(FileMode mode) {
  switch (mode) {
    case FileMode::Read:
      return O_RDONLY;
    case FileMode::Write:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case FileMode::ReadWrite:
    case FileMode::Update:
      return O_RDWR | O_CREAT | O_TRUNC;
    case FileMode::Append:
      return O_WRONLY | O_CREAT | O_APPEND;
    case FileMode::AppendRead:
      return O_RDWR | O_CREAT | O_APPEND;
  }
  return O_RDONLY;
}

Result OpenFailure(int error, const char* path) {
  switch (error) {
    case ENOENT:
      return ResultPathDoesNotExist("'%s' does not exist", path);
    case EACCES:
      return ResultAccessDenied("access to '%s' is denied", path);
    case EEXIST:
      return ResultFileExists("'%s' already exists", path);
    case EISDIR:
      return ResultPathIsDirectory("'%s' is a directory", path);
    case ENOSPC:
      return ResultDiskFull();
    case ENAMETOOLONG:
      return ResultPathNameTooLong("'%s' is too long", path);
    default:
      return ResultError("'%s': %s", path, std::strerror(error));
  }
}

Result ReadFailure(int error) {
  switch (error) {
    case EISDIR:
      return ResultPathIsDirectory();
    case ENOMEM:
      return ResultOutOfMemory();
    default:
      return ResultIOError("%s", std::strerror(error));
  }
}

int Whence(SeekOrigin origin) {
  switch (origin) {
    case SeekOrigin::Begin:
      return SEEK_SET;
    case SeekOrigin::Current:
      return SEEK_CUR;
    case SeekOrigin::End:
      return SEEK_END;
  }
  return -1;
}

}  // namespace

CFileDescriptorStream::CFileDescriptorStream(FileMode mode)
    : CFileStream(TypeCode, mode), descriptor_(-1), position_(0), append_(false), dropPages_(false) {}

CFileDescriptorStream::~CFileDescriptorStream() { Close(); }

Result CFileDescriptorStream::Open(const char* path, FileMode mode, CStream*& out) {
  return OpenNew<CFileDescriptorStream>(path, mode, out);
}

Result CFileDescriptorStream::Open(CString* path, FileMode mode, CStream*& out) {
  return OpenNew<CFileDescriptorStream>(path ? path->GetChars() : nullptr, mode, out);
}

Result CFileDescriptorStream::Open(CString* path) { return Open(path ? path->GetChars() : nullptr); }

Result CFileDescriptorStream::Open(const char* path) {
  if (!path) return ResultArgumentNull();
  Close();
  SetPath(path);
  int flags = OpenFlags(GetMode());
  int descriptor = ::open(path, flags | O_NONBLOCK | O_CLOEXEC, 0666);
  if (descriptor < 0) return OpenFailure(errno, path);
  descriptor_ = descriptor;
  append_ = (flags & O_APPEND) != 0;
  if (flags & O_CREAT) {
    // Files this stream writes are shared with other readers and writers:
    // an advisory shared lock, and permissions that ignore the creator's umask.
    flock(descriptor_, LOCK_SH | LOCK_NB);
    fchmod(descriptor_, 0666);
  }
  knownLength_ = lseek(descriptor_, 0, SEEK_END);
  position_ = lseek(descriptor_, 0, SEEK_SET);
  return Result();
}

Result CFileDescriptorStream::Control(unsigned int code, int length, unsigned char* data) {
  if (code != ReadAheadCode && code != CacheCode) return CFileStream::Control(code, length, data);
  if (length != 1 || !data) return ResultError("incorrect length");
  return code == ReadAheadCode ? ReadAhead(data[0] != 0) : Cache(data[0] != 0);
}

Result CFileDescriptorStream::Cache(bool enable) {
  CAutoLock lock(this);
  dropPages_.store(!enable, std::memory_order_release);
  if (descriptor_ >= 0 && !enable) posix_fadvise(descriptor_, 0, 0, POSIX_FADV_DONTNEED);
  return Result();
}

Result CFileDescriptorStream::ReadAhead(bool enable) {
  if (descriptor_ >= 0) posix_fadvise(descriptor_, 0, 0, enable ? POSIX_FADV_SEQUENTIAL : POSIX_FADV_RANDOM);
  return Result();
}

long long CFileDescriptorStream::GetAvailableLength() {
  struct stat status {};
  if (descriptor_ < 0 || fstat(descriptor_, &status) != 0) return -1;
  return status.st_size;
}

Result CFileDescriptorStream::SetLength(long long length) {
  if (descriptor_ < 0) return ResultInvalidOperation();
  if (length < 0) return ResultArgumentOutOfRange();
  if (ftruncate(descriptor_, static_cast<off_t>(length)) != 0) return ResultIOError("%s", std::strerror(errno));
  knownLength_ = length;
  return Result();
}

long long CFileDescriptorStream::GetPosition() { return descriptor_ < 0 ? -1 : position_; }

Result CFileDescriptorStream::WaitForData(int count, int& timeout) {
  int margin = ReadMarginNow();
  if (timeout == 0 || margin == 0) return Result();
  long long position = GetPosition();
  {
    CAutoLock lock(this);
    for (;;) {
      timeout = std::min(timeout, ReadTimeoutNow());
      if (timeout <= 0) break;
      if (GetAvailableLength() > position + count + margin) break;
      Wait(PollInterval);
      timeout -= PollInterval;
    }
  }
  return SeekTo(position);
}

Result CFileDescriptorStream::Read(unsigned char* buffer, int count, int* read) {
  if (read) *read = 0;
  if (descriptor_ < 0) return ResultInvalidOperation();
  if (count < 0) return ResultArgumentOutOfRange();
  int timeout = ReadTimeoutNow();
  if (timeout != 0) {
    Result waited = WaitForData(count, timeout);
    if (waited.Failed()) return waited;
  }
  return ReadFollowing(buffer, count, read, true);
}

Result CFileDescriptorStream::ReadOnce(unsigned char* buffer, int count, int& read) {
  read = 0;
  ssize_t n;
  do {
    n = ::read(descriptor_, buffer, static_cast<std::size_t>(count));
  } while (n < 0 && errno == EINTR);
  if (n < 0) {
    if (errno == EAGAIN) return Result();
    return ReadFailure(errno);
  }
  read = static_cast<int>(n);
  if (n > 0 && DropsPages()) posix_fadvise(descriptor_, position_, static_cast<off_t>(n), POSIX_FADV_DONTNEED);
  position_ += n;
  return Result();
}

bool CFileDescriptorStream::DropsPages() const {
  return dropPages_.load(std::memory_order_acquire) || !IsCaching();
}

Result CFileDescriptorStream::SeekTo(long long position) {
  off_t reached = lseek(descriptor_, static_cast<off_t>(position), SEEK_SET);
  if (reached < 0) return ResultIOError("%s", std::strerror(errno));
  position_ = reached;
  return Result();
}

Result CFileDescriptorStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  if (descriptor_ < 0) return ResultInvalidOperation();
  int whence = Whence(origin);
  if (whence < 0) return ResultNotImplemented();
  off_t reached = lseek(descriptor_, static_cast<off_t>(offset), whence);
  if (reached < 0) {
    if (errno == EINVAL) return ResultArgumentOutOfRange();
    return ResultIOError("%s", std::strerror(errno));
  }
  position_ = reached;
  if (position) *position = reached;
  return Result();
}

Result CFileDescriptorStream::Write(const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  if (descriptor_ < 0) return ResultInvalidOperation();
  if (count < 0) return ResultArgumentOutOfRange();
  int total = 0;
  Result result;
  while (total < count) {
    ssize_t n = ::write(descriptor_, buffer + total, static_cast<std::size_t>(count - total));
    if (n >= 0) {
      total += static_cast<int>(n);
    } else if (errno != EINTR) {
      result = WriteFailure(errno);
      break;
    }
  }
  if (written) *written = total;
  // Appending writes land at the end, wherever the descriptor stood.
  position_ = append_ ? lseek(descriptor_, 0, SEEK_CUR) : position_ + total;
  knownLength_ = std::max<long long>(knownLength_, position_);
  return result;
}

void CFileDescriptorStream::Close() {
  if (descriptor_ < 0) return;
  ::close(descriptor_);
  descriptor_ = -1;
}

}  // namespace Corvane::Mox

