#include "System/Media/Y4m/Y4mFrame.h"

#include <cstring>

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/Y4m/Y4mParameter.h"

namespace Corvane::Mox {

CY4mFrame::CY4mFrame(int length) : CObject(TypeCode), length_(length), position_(0), buffer_(nullptr) {}

CY4mFrame::~CY4mFrame() {
  if (buffer_) buffer_->Release();
}

void CY4mFrame::SetBuffer(CByteArray* buffer) {
  if (buffer) buffer->Acquire();
  if (buffer_) buffer_->Release();
  buffer_ = buffer;
}

Result CY4mFrame::Read(CBinaryReader* reader, unsigned char& last) {
  unsigned char signature[5];
  Result result = reader->ReadBytes(signature, sizeof(signature));
  if (result.Failed()) return result;
  if (std::memcmp(signature, "FRAME", sizeof(signature)) != 0) return ResultUnexpected("missing 'FRAME'");
  result = reader->ReadByte(&last);
  while (result.Succeeded() && last == ' ') result = CY4mParameter::Skip(reader, last);
  if (result.Failed()) return result;
  if (last != '\n') return ResultUnexpected("frame header not ended by a line feed");
  position_ = reader->GetPosition();
  if (!buffer_) return Result();
  if (buffer_->GetLength() < length_) {
    result = buffer_->SetLength(length_);
    if (result.Failed()) return result;
  }
  return reader->ReadBytes(buffer_->GetData(), length_);
}

Result CY4mFrame::Write(CBinaryWriter* writer) const {
  static const unsigned char kHeader[] = {'F', 'R', 'A', 'M', 'E', '\n'};
  Result result = writer->WriteBytes(kHeader, sizeof(kHeader));
  if (result.Failed() || !buffer_) return result;
  return writer->WriteBytes(buffer_->GetData(), length_ < buffer_->GetLength() ? length_ : buffer_->GetLength());
}

}  // namespace Corvane::Mox
