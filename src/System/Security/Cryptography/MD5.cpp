#include "System/Security/Cryptography/MD5.h"

#include "System/ByteArray.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/Security/Cryptography/CryptoService.h"

namespace Corvane::Mox {

Result CMD5::CreateHashFromFilename(const char* path, CByteArray*& hash) {
  hash = nullptr;
  if (!path) return ResultArgumentNull("path");
  RObject<CStream> stream;
  Result r = CFileDescriptorStream::Open(path, FileMode::Read, stream.Out());
  if (r.Failed()) return r;

  RObject<CCryptoService> service(new CCryptoService());
  RObject<CMD5> md5(new CMD5(service));
  constexpr int kChunk = 2048;
  unsigned char buffer[kChunk];
  long long length = stream->GetLength();
  // Whole chunks: failures here are deliberately ignored, the final read decides.
  while (length - stream->GetPosition() > kChunk) {
    int read = 0;
    stream->Read(buffer, kChunk, &read);
    if (read <= 0) break;  // a file that shrank or failed: let the final read report it
    md5->TransformBlock(buffer, read, nullptr, 0, nullptr);
  }
  int remaining = static_cast<int>(length - stream->GetPosition());
  int read = 0;
  r = stream->Read(buffer, remaining, &read);
  if (r.Failed()) return r;
  r = md5->TransformBlock(buffer, read, nullptr, 0, nullptr);
  if (r.Failed()) return r;
  RObject<CByteArray> digest(new CByteArray(16, 1));
  r = md5->TransformFinalBlock(digest->GetData(), 16, nullptr);
  if (r.Failed()) return r;
  hash = digest.Detach();
  return ResultOK();
}

}  // namespace Corvane::Mox
