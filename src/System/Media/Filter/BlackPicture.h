#pragma once
// BlackPicture: fills the bytes of an uncompressed picture with black for its
// pixel format: luma and RGB at the black level of the description's range
// and bit depth, chroma at its midpoint, alpha opaque. The planes follow the
// format's plane layout at their natural strides, one after the other.

namespace Corvane::Mox {

class CVideoProperties;
class Result;

class BlackPicture {
 public:
  // ResultNotSupported "unsupported video format, '%s'" for a format without
  // a plane layout; ResultArgumentOutOfRange when length is too small.
  static Result Fill(const CVideoProperties* properties, unsigned char* data, long long length);
  // True when the format has a fill rule.
  static bool IsSupported(unsigned int format);
};

}  // namespace Corvane::Mox
