#pragma once
// ConnectionReasons: why a target refused the media offered to it, as flags
// collected during the converter search, and the no-viable-path message
// built from them.

#include <string>

namespace Corvane::Mox {
class CMediaFilter;
class CMediaProperties;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class ConnectionReasons {
 public:
  // In the order the message lists them.
  enum Flag : unsigned int {
    MediaFormat = 1u << 0,
    VideoBitDepth = 1u << 1,
    FrameRate = 1u << 2,
    ChromaSubsampling = 1u << 3,
    FrameWidth = 1u << 4,
    FrameHeight = 1u << 5,
    MatrixCoefficients = 1u << 6,
    ColorPrimaries = 1u << 7,
    TransferCharacteristics = 1u << 8,
    VideoRange = 1u << 9,
    Orientation = 1u << 10,
    ChromaSiting = 1u << 11,
    FieldOrder = 1u << 12,
    VideoReferenceLevels = 1u << 13,
    PixelAspectRatio = 1u << 14,
    SampleRate = 1u << 15,
    AudioBitDepth = 1u << 16,
    AudioChannels = 1u << 17,
    FilterConfiguration = 1u << 18,
    Unspecified = 1u << 19,
  };

  // The attributes of the description that none of the filter's input
  // configurations accept (each configuration judged on the fields it
  // specifies); Unspecified when no single attribute is to blame.
  static unsigned int Examine(const CMediaFilter* target, const CMediaProperties* description);

  // "could not connect from 'a' to 'b'" and, with flags, "; possibly because:
  // <attributes> is incompatible" (or "are incompatible" for several).
  static std::string Format(const char* from, const char* to, unsigned int flags);
};

}  // namespace Corvane::Mox::WFL
