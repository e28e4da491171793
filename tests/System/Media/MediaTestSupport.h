#pragma once
// Helpers of the media tests: binary forms to and from byte vectors.

#include <cstring>
#include <vector>

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/Object.h"

namespace MediaTest {

using Bytes = std::vector<unsigned char>;

// The bytes a writer function produced.
template <class Write>
Bytes Capture(Write write, Corvane::Mox::CBinary::ByteOrder order = Corvane::Mox::CBinary::LittleEndian) {
  using namespace Corvane::Mox;
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream.Get(), order));
  Result r = write(writer.Get());
  EXPECT_TRUE(r.Succeeded()) << r.GetErrorMessage();
  long long length = stream->GetLength();
  Bytes bytes(static_cast<size_t>(length));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  int read = 0;
  if (length > 0) stream->Read(bytes.data(), static_cast<int>(length), &read);
  return bytes;
}

// A reader over a copy of bytes.
inline Corvane::Mox::CBinaryReader* ReaderOver(const Bytes& bytes,
                                               Corvane::Mox::CBinary::ByteOrder order = Corvane::Mox::CBinary::LittleEndian) {
  using namespace Corvane::Mox;
  RObject<CMemoryStream> stream(new CMemoryStream());
  int written = 0;
  if (!bytes.empty()) stream->Write(bytes.data(), static_cast<int>(bytes.size()), &written);
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  return new CBinaryReader(stream.Get(), order);
}

// Little-endian builders for expected layouts.
inline void Put32(Bytes& out, unsigned int v) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<unsigned char>(v >> (8 * i)));
}
inline void Put64(Bytes& out, unsigned long long v) {
  for (int i = 0; i < 8; ++i) out.push_back(static_cast<unsigned char>(v >> (8 * i)));
}
inline void PutFour(Bytes& out, const char* code) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<unsigned char>(code[i]));
}

}  // namespace MediaTest
