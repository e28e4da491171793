#pragma once
// CY4mContainerWriter ("y4m ", extension "y4m"): writes one video track of
// planar YUV as a YUV4MPEG2 file, a frame per sample as it comes.

#include "System/Media/Container/ContainerWriter.h"

namespace Corvane::Mox {

class CY4mWriter;

class CY4mContainerWriter : public CContainerWriter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("y4m ");

  CY4mContainerWriter();
  ~CY4mContainerWriter() override;

  const char* GetDefaultExtension() const override { return "y4m"; }
  int GetVideoMediaCount() const override;
  CVideoProperties* GetVideoProperties(int track) const override;
  // One track; a second fails with ResultNotSupported.
  Result AddVideoMedia(CVideoProperties* properties) override;
  // Opens the output and writes the header (W, H, F, C, I, A); a format
  // without a YUV4MPEG2 colour space fails with ResultNotSupported.
  Result BeginIndex() override;
  Result WriteVideoSample(int track, CVideoSample* sample) override;
  // Flushes and closes the output.
  Result EndIndex() override;

 private:
  CStream* stream_;
  CY4mWriter* writer_;
  CVideoProperties* properties_;
  long long frameSize_;
};

}  // namespace Corvane::Mox
