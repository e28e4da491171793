#pragma once
// CY4mContainerWriter ("y4m ", extension "y4m"): writes one video track of
// planar YUV as a YUV4MPEG2 file, a frame per sample as it comes.

#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Container/SingleVideoTrackWriter.h"

namespace Corvane::Mox {

class CY4mWriter;

class CY4mContainerWriter : public CSingleVideoTrackWriter<CContainerWriter> {
 public:
  static constexpr unsigned int ComponentCode = FourCC("y4m ");

  CY4mContainerWriter();
  ~CY4mContainerWriter() override;

  const char* GetDefaultExtension() const override { return "y4m"; }
  // The output's file name.
  CString* GetFileIdentifier(CString* name) const override { return GetOutputFileName(name); }
  // The planar formats that have a YUV4MPEG2 colour space.
  CFormatList* GetVideoFormats() const override;
  // Opens the output and writes the header (W, H, F, C, I, A); a format
  // without a YUV4MPEG2 colour space fails with ResultNotSupported.
  Result BeginIndex() override;
  Result WriteVideoSample(int track, CVideoSample* sample) override;
  // Flushes and closes the output.
  Result EndIndex() override { return CloseOutput(); }

 private:
  RObject<CY4mWriter> writer_;
  long long frameSize_;
};

}  // namespace Corvane::Mox
