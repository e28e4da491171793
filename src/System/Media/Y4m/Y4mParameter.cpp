#include "System/Media/Y4m/Y4mParameter.h"

#include <cstring>

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/Y4m/Y4mParameters.h"

namespace Corvane::Mox {

namespace {
bool EndsValue(unsigned char byte) { return byte == ' ' || byte == '\n'; }
}  // namespace

CY4mParameter::CY4mParameter(unsigned char identifier) : CObject(TypeCode), identifier_(identifier) {}

Result CY4mParameter::Skip(CBinaryReader* reader, unsigned char& last) {
  for (;;) {
    Result result = reader->ReadByte(&last);
    if (result.Failed()) return result;
    if (EndsValue(last)) return Result();
  }
}

CY4mParameter* CY4mParameter::Create(unsigned char identifier) {
  switch (identifier) {
    case 'W': return new CY4mFrameWidthParameter();
    case 'H': return new CY4mFrameHeightParameter();
    case 'F': return new CY4mFrameRateParameter();
    case 'A': return new CY4mPixelAspectRatioParameter();
    case 'I': return new CY4mInterlacingModeParameter();
    case 'C': return new CY4mColorSpaceParameter();
    case 'X': return new CY4mCommentParameter();
    default: return nullptr;
  }
}

Result CY4mParameter::ReadNumber(CBinaryReader* reader, unsigned char& last, long long& value, bool stopAtColon) {
  unsigned long long accumulated = 0;
  for (;;) {
    Result result = reader->ReadByte(&last);
    if (result.Failed()) return result;
    if (EndsValue(last) || (stopAtColon && last == ':')) break;
    accumulated = accumulated * 10 + static_cast<unsigned long long>(last - '0');
  }
  value = static_cast<long long>(accumulated);
  return Result();
}

Result CY4mParameter::WriteText(CBinaryWriter* writer, const char* text) const {
  Result result = writer->WriteByte(identifier_);
  if (result.Failed()) return result;
  return writer->WriteBytes(reinterpret_cast<const unsigned char*>(text), static_cast<int>(std::strlen(text)));
}

}  // namespace Corvane::Mox
