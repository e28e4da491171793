#pragma once
// Helpers shared by the binary forms of samples, data references and
// descriptions.

#include "System/IO/BinaryReader.h"

namespace Corvane::Mox::MediaBinary {

// ResultEndOfStream when a seekable stream holds fewer than count bytes past
// its position, so that a corrupt length field fails before anything is
// allocated for it. Streams of unknown length pass.
inline Result CheckRemaining(CBinaryReader* reader, long long count) {
  if (count < 0) return ResultFormatError("negative length %lld", count);
  long long length = reader->GetLength();
  long long position = reader->GetPosition();
  if (length >= 0 && position >= 0 && length - position < count) return ResultEndOfStream();
  return Result();
}

}  // namespace Corvane::Mox::MediaBinary
