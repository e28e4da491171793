#include "System/Media/Y4m/Y4mWriter.h"

#include "System/IO/BinaryWriter.h"
#include "System/Media/Y4m/Y4mFrame.h"
#include "System/Media/Y4m/Y4mParameter.h"

namespace Corvane::Mox {

CY4mWriter::CY4mWriter() : CObject(TypeCode) {}

CY4mWriter::~CY4mWriter() {
  for (CY4mParameter* parameter : parameters_) parameter->Release();
}

void CY4mWriter::AddParameter(CY4mParameter* parameter) {
  if (!parameter) return;
  parameter->Acquire();
  parameters_.push_back(parameter);
}

Result CY4mWriter::WriteHeader(CStream* stream) const {
  if (!stream) return ResultArgumentNull();
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream, CBinary::BigEndian));
  static const unsigned char kSignature[] = {'Y', 'U', 'V', '4', 'M', 'P', 'E', 'G', '2'};
  Result result = writer->WriteBytes(kSignature, sizeof(kSignature));
  for (const CY4mParameter* parameter : parameters_) {
    if (result.Succeeded()) result = writer->WriteByte(' ');
    if (result.Succeeded()) result = parameter->Write(writer);
  }
  if (result.Succeeded()) result = writer->WriteByte('\n');
  return result;
}

Result CY4mWriter::WriteFrame(CStream* stream, CY4mFrame* frame) const {
  if (!stream || !frame) return ResultArgumentNull();
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream, CBinary::BigEndian));
  return frame->Write(writer);
}

}  // namespace Corvane::Mox
