#include "System/Media/Y4m/Y4mReader.h"

#include <cstring>

#include "System/IO/BinaryReader.h"
#include "System/IO/Stream.h"
#include "System/Media/Y4m/Y4mFrame.h"
#include "System/Media/Y4m/Y4mParameters.h"

namespace Corvane::Mox {

CY4mReader::CY4mReader() : CObject(TypeCode) {}

CY4mReader::~CY4mReader() {
  for (CY4mParameter* parameter : parameters_) parameter->Release();
}

Result CY4mReader::ReadHeader(CStream* stream) {
  if (!stream) return ResultArgumentNull();
  RObject<CBinaryReader> reader(new CBinaryReader(stream, CBinary::BigEndian));
  unsigned char signature[9];
  Result result = reader->ReadBytes(signature, sizeof(signature));
  if (result.Failed()) return ResultUnexpected(result, "missing 'YUV4MPEG2' signature");
  if (std::memcmp(signature, "YUV4MPEG2", sizeof(signature)) != 0) return ResultUnexpected("missing 'YUV4MPEG2' signature");
  unsigned char last = 0;
  result = reader->ReadByte(&last);
  while (result.Succeeded() && last == ' ') {
    unsigned char letter = 0;
    result = reader->ReadByte(&letter);
    if (result.Failed()) break;
    if (letter == ' ' || letter == '\n') {
      last = letter;  // an empty parameter: nothing to read
      continue;
    }
    CY4mParameter* parameter = CY4mParameter::Create(letter);
    if (!parameter) {
      result = CY4mParameter::Skip(reader, last);
      continue;
    }
    result = parameter->Read(reader, last);
    parameters_.push_back(parameter);
  }
  if (result.Failed()) return ResultUnexpected(result, "incomplete header");
  if (last != '\n') return ResultUnexpected("header not ended by a line feed");
  return Result();
}

Result CY4mReader::ReadFrame(CStream* stream, CY4mFrame*& frame) {
  frame = nullptr;
  if (!stream) return ResultArgumentNull();
  RObject<CBinaryReader> reader(new CBinaryReader(stream, CBinary::BigEndian));
  RObject<CY4mFrame> read(new CY4mFrame(static_cast<int>(GetFrameSize())));
  unsigned char last = 0;
  Result result = read->Read(reader, last);
  if (result.Failed()) return result;
  frame = read.Detach();
  return Result();
}

CY4mParameter* CY4mReader::GetParameter(unsigned char letter) const {
  for (auto it = parameters_.rbegin(); it != parameters_.rend(); ++it)
    if ((*it)->GetIdentifier() == letter) return *it;
  return nullptr;
}

long long CY4mReader::GetWidth() const {
  auto* width = static_cast<CY4mFrameWidthParameter*>(GetParameter('W'));
  return width ? width->GetWidth() : 0;
}

long long CY4mReader::GetHeight() const {
  auto* height = static_cast<CY4mFrameHeightParameter*>(GetParameter('H'));
  return height ? height->GetHeight() : 0;
}

Rational<int> CY4mReader::GetFrameRate() const {
  auto* rate = static_cast<CY4mRatioParameter*>(GetParameter('F'));
  return rate ? rate->GetValue() : Rational<int>(0, 0);
}

Rational<int> CY4mReader::GetPixelAspectRatio() const {
  auto* ratio = static_cast<CY4mRatioParameter*>(GetParameter('A'));
  return ratio ? ratio->GetValue() : Rational<int>(0, 0);
}

Y4mColorSpace CY4mReader::GetColorSpace() const {
  auto* space = static_cast<CY4mColorSpaceParameter*>(GetParameter('C'));
  return space ? space->GetColorSpace() : Y4mColorSpace::C420;
}

Y4mInterlacingMode CY4mReader::GetInterlacingMode() const {
  auto* mode = static_cast<CY4mInterlacingModeParameter*>(GetParameter('I'));
  return mode ? mode->GetMode() : Y4mInterlacingMode::Progressive;
}

long long CY4mReader::GetFrameSize() const { return GetFrameSize(GetWidth(), GetHeight(), GetColorSpace()); }

long long CY4mReader::GetFrameSize(long long width, long long height, Y4mColorSpace space) {
  // Bounded first, so that the products below cannot overflow.
  if (width <= 0 || height <= 0 || width > 1 << 20 || height > 1 << 20) return 0;
  const long long halfWidth = (width + 1) / 2;
  long long size = 0;
  switch (space) {
    case Y4mColorSpace::C411: size = width * height + 2 * ((width + 3) / 4) * height; break;
    case Y4mColorSpace::C422: size = width * height + 2 * halfWidth * height; break;
    case Y4mColorSpace::C444: size = 3 * width * height; break;
    case Y4mColorSpace::C420p10: size = 2 * (width * height + 2 * halfWidth * ((height + 1) / 2)); break;
    case Y4mColorSpace::C422p10: size = 2 * (width * height + 2 * halfWidth * height); break;
    default: size = width * height + 2 * halfWidth * ((height + 1) / 2); break;
  }
  return size > 0x7FFFFFFF ? 0 : size;
}

}  // namespace Corvane::Mox
