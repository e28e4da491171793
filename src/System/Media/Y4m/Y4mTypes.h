#pragma once
// The enumerations of the YUV4MPEG2 header.

namespace Corvane::Mox {

enum class Y4mInterlacingMode : int {
  Progressive = 0,      // "Ip"
  TopFieldFirst = 1,    // "It"
  BottomFieldFirst = 2, // "Ib"
  Mixed = 3,            // "Im": per-frame modes, not supported by the reader
};

enum class Y4mColorSpace : int {
  C420 = 0,  // also plain "420", "420mpeg2" and any unrecognised text
  C420jpeg,
  C420paldv,
  C411,
  C422,
  C444,
  C420p10,
  C422p10,
};

}  // namespace Corvane::Mox
