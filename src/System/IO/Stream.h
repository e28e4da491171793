#pragma once
// CStream: the byte-stream abstraction under every reader and writer of the
// library. Operations return a Result; positions and lengths are signed
// 64-bit. The defaults describe a stream that can do nothing but what a
// subclass adds: Read and Write are the two operations every stream defines.

#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;

// Where a seek offset counts from.
enum class SeekOrigin : int {
  Begin = 0,
  Current = 1,
  End = 2,
};

class CStream : public CObject {
 public:
  // Largest pattern Contains searches for, and the size of the scratch area
  // the default Seek reads into.
  static constexpr int ScratchSize = 65536;

  CStream();
  explicit CStream(unsigned int type);

  virtual bool IsDataAvailable();
  // Stream-specific requests named by four-character codes.
  virtual Result Control(unsigned int code, int length, unsigned char* data);
  virtual bool CanRead();
  virtual bool CanSeek();
  virtual bool CanWrite();
  // -1 when unknown.
  virtual long long GetLength();
  // What can be read now; a file that is still being written may have more
  // than its recorded length.
  virtual long long GetAvailableLength();
  virtual Result SetLength(long long length);
  // -1 when unknown.
  virtual long long GetPosition();
  // read (may be null) receives the number of bytes delivered.
  virtual Result Read(unsigned char* buffer, int count, int* read) = 0;
  // Reads up to the array's length into it.
  virtual Result Read(CByteArray* array, int* read);
  // The next byte, or -1 on failure or at the end.
  virtual int ReadByte();
  // Offset of pattern from the current position, searched no further than
  // limit bytes; -1 when absent, a negative result code when a read fails.
  // The bytes searched are consumed.
  virtual long long Contains(const unsigned char* pattern, int length, long long limit);
  // The default moves forward only, by reading and discarding.
  virtual Result Seek(long long offset, SeekOrigin origin, long long* position);
  virtual Result Write(const unsigned char* buffer, int count, int* written) = 0;
  virtual Result Write(CByteArray* array, int* written);
  virtual Result Write(CByteArray* array, int offset, int count, int* written);
  virtual Result WriteByte(unsigned char value, int* written);
  virtual Result Flush();
  virtual void Close();

  // Conveniences without a count.
  Result Read(unsigned char* buffer, int count) { return Read(buffer, count, nullptr); }
  Result Read(CByteArray* array) { return Read(array, nullptr); }
  Result Write(const unsigned char* buffer, int count) { return Write(buffer, count, nullptr); }
  Result Write(CByteArray* array) { return Write(array, nullptr); }
  Result Write(CByteArray* array, int offset, int count) { return Write(array, offset, count, nullptr); }
  Result WriteByte(unsigned char value) { return WriteByte(value, nullptr); }
};

}  // namespace Corvane::Mox
