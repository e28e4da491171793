#include "System/IO/StandardFileStream.h"

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

const char* ModeString(FileMode mode) {
  switch (mode) {
    case FileMode::Read:
      return "rb";
    case FileMode::Write:
      return "wb";
    case FileMode::ReadWrite:
      return "wb+";
    case FileMode::Append:
      return "ab";
    case FileMode::AppendRead:
      return "ab+";
    default:
      return nullptr;
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

CStandardFileStream::CStandardFileStream(FileMode mode)
    : CFileStream(TypeCode, mode), file_(nullptr), direction_(Direction::None) {}

CStandardFileStream::~CStandardFileStream() { Close(); }

Result CStandardFileStream::Open(const char* path, FileMode mode, CStream*& out) {
  return OpenNew<CStandardFileStream>(path, mode, out);
}

Result CStandardFileStream::Open(CString* path, FileMode mode, CStream*& out) {
  return OpenNew<CStandardFileStream>(path ? path->GetChars() : nullptr, mode, out);
}

Result CStandardFileStream::Open(CString* path) { return Open(path ? path->GetChars() : nullptr); }

Result CStandardFileStream::Open(const char* path) {
  if (!path) return ResultArgumentNull();
  const char* mode = ModeString(GetMode());
  if (!mode) return ResultNotSupported();
  Close();
  SetPath(path);
  file_ = std::fopen(path, mode);
  if (!file_) return ResultIOError("'%s' could not be opened: %s", path, std::strerror(errno));
  direction_ = Direction::None;
  // The length is recorded once; a followed file raises it as it grows.
  fseeko(file_, 0, SEEK_END);
  knownLength_ = ftello(file_);
  fseeko(file_, 0, SEEK_SET);
  return Result();
}

void CStandardFileStream::Turn(Direction direction) {
  if (direction_ != Direction::None && direction_ != direction) fseeko(file_, 0, SEEK_CUR);
  direction_ = direction;
}

long long CStandardFileStream::GetAvailableLength() {
  if (!file_) return -1;
  off_t here = ftello(file_);
  fseeko(file_, 0, SEEK_END);
  off_t length = ftello(file_);
  fseeko(file_, here, SEEK_SET);
  return length;
}

Result CStandardFileStream::SetLength(long long length) {
  if (!file_) return ResultInvalidOperation();
  if (length < 0) return ResultArgumentOutOfRange();
  std::fflush(file_);
  if (ftruncate(fileno(file_), static_cast<off_t>(length)) != 0) return ResultIOError("%s", std::strerror(errno));
  knownLength_ = length;
  return Result();
}

long long CStandardFileStream::GetPosition() { return file_ ? ftello(file_) : -1; }

Result CStandardFileStream::Read(unsigned char* buffer, int count, int* read) {
  if (read) *read = 0;
  if (!file_) return ResultInvalidOperation();
  Turn(Direction::Reading);
  return ReadFollowing(buffer, count, read, false);
}

Result CStandardFileStream::ReadOnce(unsigned char* buffer, int count, int& read) {
  read = static_cast<int>(std::fread(buffer, 1, static_cast<std::size_t>(count), file_));
  if (std::ferror(file_)) {
    int error = errno;
    std::clearerr(file_);
    return ResultIOError("%s", std::strerror(error));
  }
  return Result();
}

Result CStandardFileStream::SeekTo(long long position) {
  if (fseeko(file_, static_cast<off_t>(position), SEEK_SET) != 0) return ResultIOError("%s", std::strerror(errno));
  return Result();
}

Result CStandardFileStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  if (!file_) return ResultInvalidOperation();
  int whence = Whence(origin);
  if (whence < 0) return ResultNotImplemented();
  if (fseeko(file_, static_cast<off_t>(offset), whence) != 0) {
    if (errno == EINVAL) return ResultArgumentOutOfRange();
    return ResultIOError("%s", std::strerror(errno));
  }
  direction_ = Direction::None;
  if (position) *position = ftello(file_);
  return Result();
}

Result CStandardFileStream::Write(const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  if (!file_) return ResultInvalidOperation();
  if (count < 0) return ResultArgumentOutOfRange();
  Turn(Direction::Writing);
  std::size_t n = std::fwrite(buffer, 1, static_cast<std::size_t>(count), file_);
  if (written) *written = static_cast<int>(n);
  if (std::ferror(file_)) {
    int error = errno;
    std::clearerr(file_);
    return WriteFailure(error);
  }
  knownLength_ = std::max<long long>(knownLength_, ftello(file_));
  return Result();
}

Result CStandardFileStream::Flush() {
  if (file_ && std::fflush(file_) != 0) return ResultIOError("%s", std::strerror(errno));
  return Result();
}

void CStandardFileStream::Close() {
  if (!file_) return;
  std::fclose(file_);
  file_ = nullptr;
  direction_ = Direction::None;
}

}  // namespace Corvane::Mox
