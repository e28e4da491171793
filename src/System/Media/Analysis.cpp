#include "System/Media/Analysis.h"

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/MediaBinary.h"

namespace Corvane::Mox {

CAnalysis::CAnalysis() : CObject(TypeCode), bytes_(nullptr) {}

CAnalysis::CAnalysis(CByteArray* bytes) : CObject(TypeCode), bytes_(bytes) {
  if (bytes_) bytes_->Acquire();
}

CAnalysis::~CAnalysis() {
  if (bytes_) bytes_->Release();
}

CByteArray* CAnalysis::GetBytes() const {
  if (bytes_) bytes_->Acquire();
  return bytes_;
}

int CAnalysis::GetLength() const { return bytes_ ? bytes_->GetLength() : 0; }

Result CAnalysis::Write(CBinaryWriter* writer) const {
  if (!writer) return ResultArgumentNull();
  return bytes_ ? writer->WriteBytes(bytes_) : Result();
}

Result CAnalysis::Read(CBinaryReader* reader, int length) {
  if (!reader) return ResultArgumentNull();
  Result check = MediaBinary::CheckRemaining(reader, length);
  if (check.Failed()) return check;
  RObject<CByteArray> bytes(new CByteArray(length, 1));
  if (length > 0) {
    Result result = reader->ReadBytes(bytes.Get());
    if (result.Failed()) return result;
  }
  if (bytes_) bytes_->Release();
  bytes_ = bytes.Detach();
  return Result();
}

}  // namespace Corvane::Mox
