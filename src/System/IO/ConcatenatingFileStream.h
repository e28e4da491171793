#pragma once
// CConcatenatingFileStream: files named by path, read as one stream, with at
// most one of them open at a time. Each file's length is measured once, when
// it is added, and kept in a table of start offsets (entry i is where file i
// begins, the last entry the total length).
//
// Moving past a file in the middle of a read or a relative seek leaves that
// file open, so the next step finds it exhausted and moves on once more: a
// read that crosses a file boundary mid-request skips the following file.
// Segment readers only ever read whole packets or boxes, which end on file
// boundaries, and depend on these steps as they are.

#include "System/Collections/ArrayList.h"
#include "System/Collections/List.h"
#include "System/Collections/Value.h"
#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CFileDescriptorStream;

class CConcatenatingFileStream : public CStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("cnfs");

  CConcatenatingFileStream();
  ~CConcatenatingFileStream() override;

  // Appends a file and its measured length (0 when it does not exist).
  Result Add(const char* path);
  int GetCount() const { return names_->GetCount(); }
  int GetCurrentIndex() const { return index_; }

  // Open each file to ask it; a missing file answers false, a file that
  // exists but cannot be opened throws.
  bool CanRead() override;
  bool CanSeek() override;
  bool CanWrite() override;
  long long GetLength() override;
  // The files' current lengths, up to the first missing one; throws when an
  // existing file cannot be opened.
  long long GetAvailableLength() override;
  long long GetPosition() override;
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  // Throws the failure of the read.
  int ReadByte() override;
  // Begin: absolute, landing in the last file when beyond the total length.
  // Current: forward through the files (see the class comment). End: within
  // the last file, reporting the position in that file.
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  Result Write(const unsigned char* buffer, int count, int* written) override;
  Result WriteByte(unsigned char value, int* written) override;
  Result Flush() override;
  // Closes the open file but keeps it as the current one.
  void Close() override;

 private:
  long long StartOf(int index) const;
  // Opens file index read-only into out (acquired).
  Result OpenFile(int index, CFileDescriptorStream*& out) const;
  Result OpenCurrent();
  void ReleaseOpen();
  // Asks every file one question; see CanRead.
  bool AllFiles(bool (CStream::*question)());
  Result SeekFromBegin(long long offset, long long* position);
  Result SeekFromCurrent(long long offset, long long* position);
  Result SeekFromEnd(long long offset, long long* position);

  CList<CString>* names_;
  CArrayList<CValue<long long>>* starts_;
  CFileDescriptorStream* open_;
  int index_;
};

}  // namespace Corvane::Mox
