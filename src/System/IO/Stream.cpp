#include "System/IO/Stream.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "System/ByteArray.h"
#include "System/Console.h"

namespace Corvane::Mox {

namespace {

// A window of the last n bytes seen, kept as a ring so sliding costs one store.
class CSlidingWindow {
 public:
  explicit CSlidingWindow(int size) : bytes_(static_cast<std::size_t>(size)), start_(0) {}

  unsigned char* Data() { return bytes_.data(); }
  void Push(unsigned char byte) {
    bytes_[start_] = byte;
    start_ = (start_ + 1) % bytes_.size();
  }
  bool Matches(const unsigned char* pattern) const {
    std::size_t tail = bytes_.size() - start_;
    return std::memcmp(bytes_.data() + start_, pattern, tail) == 0 &&
           std::memcmp(bytes_.data(), pattern + tail, start_) == 0;
  }

 private:
  std::vector<unsigned char> bytes_;
  std::size_t start_;
};

}  // namespace

CStream::CStream() = default;

CStream::CStream(unsigned int type) : CObject(type) {}

bool CStream::IsDataAvailable() { return true; }

Result CStream::Control(unsigned int, int, unsigned char*) { return ResultNotSupported(); }

bool CStream::CanRead() { return false; }
bool CStream::CanSeek() { return false; }
bool CStream::CanWrite() { return false; }

long long CStream::GetLength() { return -1; }
long long CStream::GetAvailableLength() { return GetLength(); }
Result CStream::SetLength(long long) { return ResultNotImplemented(); }
long long CStream::GetPosition() { return -1; }

Result CStream::Read(CByteArray* array, int* read) {
  if (!array) return ResultArgumentNull();
  return Read(array->GetData(), array->GetLength(), read);
}

int CStream::ReadByte() {
  unsigned char byte = 0;
  int read = 0;
  Result result = Read(&byte, 1, &read);
  if (result.Failed() || read != 1) return -1;
  return byte;
}

long long CStream::Contains(const unsigned char* pattern, int length, long long limit) {
  if (length > ScratchSize) {
    MOX_LOG(2, "search pattern too large given %d max is %d ", length, ScratchSize);
    return -1;
  }
  CSlidingWindow window(length);
  int read = 0;
  Result result = Read(window.Data(), length, &read);
  if (result.Failed()) return result.GetResultCode();
  if (read < length) {
    MOX_LOG(3, "search pattern larger than bytes available %d > %d", length, read);
    return -1;
  }
  long long consumed = length;
  if (window.Matches(pattern)) return 0;
  while (consumed < limit) {
    int byte = ReadByte();
    if (byte < 0) return -1;
    window.Push(static_cast<unsigned char>(byte));
    ++consumed;
    if (window.Matches(pattern)) return consumed - length;
  }
  return -1;
}

Result CStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  if (origin != SeekOrigin::Current || offset < 0) return ResultNotImplemented();
  // Passes ask for a whole scratch area while at most that much remains and
  // for the whole remainder otherwise, so the area grows to the first request.
  std::vector<unsigned char> scratch;
  long long remaining = offset;
  while (remaining > 0) {
    int request = remaining <= ScratchSize ? ScratchSize : static_cast<int>(std::min<long long>(remaining, 0x7FFFFFFF));
    if (scratch.size() < static_cast<std::size_t>(request)) scratch.resize(static_cast<std::size_t>(request));
    int read = 0;
    Result result = Read(scratch.data(), request, &read);
    if (result.Failed()) return result;
    if (read <= 0) break;
    remaining -= read;
  }
  if (position) *position = GetPosition();
  return Result();
}

Result CStream::Write(CByteArray* array, int* written) {
  if (!array) return ResultArgumentNull();
  return Write(array->GetData(), array->GetLength(), written);
}

Result CStream::Write(CByteArray* array, int offset, int count, int* written) {
  if (!array) return ResultArgumentNull();
  if (offset < 0 || count < 0 || static_cast<long long>(offset) + count > array->GetLength())
    return ResultArgumentOutOfRange();
  return Write(array->GetData() + offset, count, written);
}

Result CStream::WriteByte(unsigned char value, int* written) { return Write(&value, 1, written); }

Result CStream::Flush() { return Result(); }

void CStream::Close() { Flush(); }

}  // namespace Corvane::Mox
