#pragma once
// CVideoContainerWriter ("vide", extension "raw"): the elementary video
// writer. Uncompressed pictures are written back to back in the track's
// plane layout (raw video); compressed samples as their bytes come.

#include "System/Media/Container/IndexedContainerWriter.h"
#include "System/Media/Container/SingleVideoTrackWriter.h"

namespace Corvane::Mox {

class CVideoContainerWriter : public CSingleVideoTrackWriter<CIndexedContainerWriter> {
 public:
  static constexpr unsigned int ComponentCode = FourCC("vide");

  CVideoContainerWriter();
  ~CVideoContainerWriter() override;

  const char* GetDefaultExtension() const override { return "raw"; }
  // The output's file name.
  CString* GetFileIdentifier(CString* name) const override { return GetOutputFileName(name); }
  // Every video format: pictures and coded samples alike are stored as
  // their bytes.
  CFormatList* GetVideoFormats() const override;
  Result BeginIndex() override;
  Result WriteVideoSample(int track, CVideoSample* sample) override;
  Result EndIndex() override { return CloseOutput(); }

 private:
  // The bytes of one picture for planar formats, 0 for compressed video.
  int pictureSize_;
};

}  // namespace Corvane::Mox
