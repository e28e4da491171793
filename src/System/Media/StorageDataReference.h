#pragma once
// Data references to bytes that stay in storage until someone reads them:
// a position and length in storage ("disk"), in a stream ("strm"), in a file
// ("file"), or inside a container that only its reader can resolve ("read").
// Their binary form is the position and the length, so a serialised stream
// or file reference reads back as a plain storage reference.

#include "System/Media/DataReference.h"

namespace Corvane::Mox {

class CBufferDataReference;
class CFileStream;
class CStream;

class CStorageDataReference : public CDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("disk");

  CStorageDataReference(long long position, int length);

  bool IsType(unsigned int type) const override;
  int GetLength() override { return length_; }
  unsigned char* GetData() override { return nullptr; }
  // 64-bit position and 32-bit length.
  int GetSize() const override { return 12; }
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) const override;

  long long GetPosition() const { return position_; }

 protected:
  CStorageDataReference(unsigned int type, long long position, int length);

 private:
  long long position_;
  int length_;
};

class CStreamDataReference : public CStorageDataReference {
 public:
  // Acquires stream (may be null). The chunk is the stretch of the stream
  // (a container chunk, say) that holds the bytes.
  CStreamDataReference(CStream* stream, long long position, int length, long long chunkPosition = 0,
                       int chunkLength = 0);
  ~CStreamDataReference() override;

  bool IsType(unsigned int type) const override;

  // The stream, acquired.
  CStream* GetStream() const;
  // Asks the stream's IsType; false without a stream.
  bool IsStreamType(unsigned int tag) const;
  long long GetChunkPosition() const { return chunkPosition_; }
  int GetChunkLength() const { return chunkLength_; }
  // Reads Length bytes at Position into a new buffer reference.
  Result ReadData(CBufferDataReference*& data);

 private:
  CStream* stream_;
  long long chunkPosition_;
  int chunkLength_;
};

class CFileDataReference : public CStreamDataReference {
 public:
  CFileDataReference(CFileStream* stream, long long position, int length);

  bool IsType(unsigned int type) const override;

  // The file stream, acquired.
  CFileStream* GetFileStream() const;
  // The file's path, acquired; null without a stream.
  CString* GetPath() const;
};

class CContainerDataReference : public CStorageDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("read");

  CContainerDataReference();
  // A reference of a container's own tag (".mp4", ".mxf", ...).
  explicit CContainerDataReference(unsigned int tag, long long position = 0, int length = 0);

  bool IsType(unsigned int type) const override;
};

}  // namespace Corvane::Mox
