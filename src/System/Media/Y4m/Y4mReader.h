#pragma once
// CY4mReader: parses the header of a YUV4MPEG2 stream and its frames.

#include <vector>

#include "System/Media/Y4m/Y4mTypes.h"
#include "System/Object.h"
#include "System/Rational.h"

namespace Corvane::Mox {

class CStream;
class CY4mFrame;
class CY4mParameter;

class CY4mReader : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("y4mr");

  CY4mReader();
  ~CY4mReader() override;

  // "YUV4MPEG2" and the parameters up to the line feed; a wrong signature or
  // terminator is ResultUnexpected.
  Result ReadHeader(CStream* stream);
  // The next frame's header (a new frame of GetFrameSize bytes, without
  // buffer); the stream is left at the picture.
  Result ReadFrame(CStream* stream, CY4mFrame*& frame);

  // The last parameter read with that letter (not acquired), or null.
  CY4mParameter* GetParameter(unsigned char letter) const;
  long long GetWidth() const;
  long long GetHeight() const;
  // 0/0 when absent.
  Rational<int> GetFrameRate() const;
  Rational<int> GetPixelAspectRatio() const;
  Y4mColorSpace GetColorSpace() const;
  Y4mInterlacingMode GetInterlacingMode() const;
  // The bytes of one picture: every plane at its subsampled size (chroma
  // planes round up for odd sizes), 2 bytes per sample for 10 bits. 0 when
  // a dimension is missing, not positive, or the size exceeds 2^31 - 1.
  long long GetFrameSize() const;
  static long long GetFrameSize(long long width, long long height, Y4mColorSpace space);

 private:
  std::vector<CY4mParameter*> parameters_;
};

}  // namespace Corvane::Mox
