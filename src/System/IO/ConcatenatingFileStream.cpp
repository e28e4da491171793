#include "System/IO/ConcatenatingFileStream.h"

#include <algorithm>

#include "System/IO/File.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// Room for the start offsets of a long run of segments without regrowing.
constexpr int InitialStartCapacity = 262144;

// A file that cannot be measured counts as empty, so the offsets never fall.
long long FileLength(CString* path) { return std::max(CFile::GetLength(path), 0LL); }

}  // namespace

CConcatenatingFileStream::CConcatenatingFileStream()
    : CStream(TypeCode),
      names_(new CList<CString>()),
      starts_(new CArrayList<CValue<long long>>(InitialStartCapacity)),
      open_(nullptr),
      index_(0) {
  RObject<CValue<long long>> zero(new CValue<long long>(0));
  starts_->Add(zero);
}

CConcatenatingFileStream::~CConcatenatingFileStream() {
  ReleaseOpen();
  starts_->Release();
  names_->Release();
}

Result CConcatenatingFileStream::Add(const char* path) {
  if (!path) return ResultArgumentNull();
  RObject<CString> name(new CString(path));
  Result result = names_->Add(name);
  if (result.Failed()) return result;
  RObject<CValue<long long>> end(new CValue<long long>(StartOf(starts_->GetCount() - 1) + FileLength(name)));
  return starts_->Add(end);
}

long long CConcatenatingFileStream::StartOf(int index) const {
  RObject<CValue<long long>> start;
  if (starts_->Get(index, start.Out()).Failed() || !start) return 0;
  return start->GetValue();
}

Result CConcatenatingFileStream::OpenFile(int index, CFileDescriptorStream*& out) const {
  out = nullptr;
  RObject<CString> name;
  Result result = names_->Get(index, name.Out());
  if (result.Failed()) return result;
  RObject<CFileDescriptorStream> stream(new CFileDescriptorStream(FileMode::Read));
  result = stream->Open(name.Get());
  if (result.Succeeded()) out = stream.Detach();
  return result;
}

Result CConcatenatingFileStream::OpenCurrent() {
  ReleaseOpen();
  return OpenFile(index_, open_);
}

void CConcatenatingFileStream::ReleaseOpen() {
  CFileDescriptorStream* open = open_;
  open_ = nullptr;
  if (open) open->Release();
}

bool CConcatenatingFileStream::AllFiles(bool (CStream::*question)()) {
  for (int index = 0; index < names_->GetCount(); ++index) {
    RObject<CString> name;
    names_->Get(index, name.Out());
    if (!CFile::Exists(name)) return false;
    RObject<CFileDescriptorStream> stream;
    OpenFile(index, stream.Out()).ThrowIfFailed();
    if (!(stream.Get()->*question)()) return false;
  }
  return true;
}

bool CConcatenatingFileStream::CanRead() { return AllFiles(&CStream::CanRead); }
bool CConcatenatingFileStream::CanSeek() { return AllFiles(&CStream::CanSeek); }
bool CConcatenatingFileStream::CanWrite() { return AllFiles(&CStream::CanWrite); }

long long CConcatenatingFileStream::GetLength() { return StartOf(starts_->GetCount() - 1); }

long long CConcatenatingFileStream::GetAvailableLength() {
  long long total = 0;
  for (int index = 0; index < names_->GetCount(); ++index) {
    RObject<CString> name;
    names_->Get(index, name.Out());
    if (!CFile::Exists(name)) return total;
    RObject<CFileDescriptorStream> stream;
    OpenFile(index, stream.Out()).ThrowIfFailed();
    total += stream->GetAvailableLength();
  }
  return total;
}

long long CConcatenatingFileStream::GetPosition() {
  long long start = index_ >= 0 && index_ < starts_->GetCount() ? StartOf(index_) : 0;
  return start + (open_ ? open_->GetPosition() : 0);
}

Result CConcatenatingFileStream::Read(unsigned char* buffer, int count, int* read) {
  int delivered = 0;
  while (index_ < names_->GetCount()) {
    if (!open_) {
      Result opened = OpenCurrent();
      if (opened.Failed()) return opened;
    }
    if (open_->GetPosition() < open_->GetLength()) {
      int n = 0;
      Result result = open_->Read(buffer + delivered, count - delivered, &n);
      if (result.Failed()) return result;
      delivered += n;
      if (delivered >= count) break;
      // The exhausted file stays open; the next pass finds it at its end.
      ++index_;
      continue;
    }
    ReleaseOpen();
    ++index_;
  }
  if (read) *read = delivered;
  return ResultOK();
}

int CConcatenatingFileStream::ReadByte() {
  unsigned char byte = 0;
  int read = 0;
  Read(&byte, 1, &read).ThrowIfFailed();
  return read == 1 ? byte : -1;
}

Result CConcatenatingFileStream::SeekFromBegin(long long offset, long long* position) {
  int count = names_->GetCount();
  if (count == 0) return ResultInvalidOperation();
  int target = count - 1;
  for (int index = 0; index < count; ++index) {
    if (StartOf(index) <= offset && offset < StartOf(index + 1)) {
      target = index;
      break;
    }
  }
  if (target != index_ || !open_) {
    index_ = target;
    Result opened = OpenCurrent();
    if (opened.Failed()) return opened;
  }
  long long reached = 0;
  Result result = open_->Seek(offset - StartOf(target), SeekOrigin::Begin, &reached);
  if (result.Succeeded() && position) *position = StartOf(target) + reached;
  return result;
}

Result CConcatenatingFileStream::SeekFromCurrent(long long offset, long long* position) {
  long long covered = 0;
  while (index_ < names_->GetCount()) {
    if (!open_) {
      Result opened = OpenCurrent();
      if (opened.Failed()) return opened;
    }
    long long here = open_->GetPosition();
    long long length = open_->GetLength();
    if (here >= length) {
      ReleaseOpen();
      ++index_;
      continue;
    }
    long long remaining = length - here;
    if (offset <= remaining) {
      long long reached = 0;
      Result result = open_->Seek(offset, SeekOrigin::Current, &reached);
      if (result.Succeeded() && position) *position = covered + reached;
      return result;
    }
    // As in Read, the file passed over stays open and is measured again.
    offset -= remaining;
    covered += remaining;
    ++index_;
  }
  if (position) *position = covered;
  return ResultOK();
}

Result CConcatenatingFileStream::SeekFromEnd(long long offset, long long* position) {
  int count = names_->GetCount();
  if (count == 0) return ResultInvalidOperation();
  ReleaseOpen();
  index_ = count - 1;
  RObject<CString> name;
  names_->Get(index_, name.Out());
  if (offset > FileLength(name)) return ResultArgumentOutOfRange();
  Result result = OpenCurrent();
  if (result.Failed()) return result;
  return open_->Seek(offset, SeekOrigin::End, position);
}

Result CConcatenatingFileStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  switch (origin) {
    case SeekOrigin::Begin:
      return SeekFromBegin(offset, position);
    case SeekOrigin::Current:
      return SeekFromCurrent(offset, position);
    case SeekOrigin::End:
      return SeekFromEnd(offset, position);
  }
  return ResultUnexpected();
}

Result CConcatenatingFileStream::Write(const unsigned char*, int, int*) { return ResultNotSupported(); }

Result CConcatenatingFileStream::WriteByte(unsigned char, int*) { return ResultNotSupported(); }

Result CConcatenatingFileStream::Flush() { return open_ ? open_->Flush() : ResultOK(); }

void CConcatenatingFileStream::Close() {
  if (open_) open_->Close();
}

}  // namespace Corvane::Mox
