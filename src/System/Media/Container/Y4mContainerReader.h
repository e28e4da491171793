#pragma once
// CY4mContainerReader ("y4m "): a YUV4MPEG2 file as one video track. The
// header gives the track; an index thread walks the "FRAME" lines, skipping
// the pictures, and queues one sample per frame with a "read" reference to
// its bytes.
//
// A file that another process is still writing is followed when ReadTimeout
// is positive: at the end of what has been written the index thread waits
// for the file to grow (IsIndexAtEnd turns true the first time), and ends at
// the last whole frame once ReadTimeout passes without growth. With no
// ReadTimeout (the default) the end of the file is the end of the track.

#include <thread>

#include "System/Media/Container/ContainerReader.h"

namespace Corvane::Mox {

class CContainerMediaReader;
class CVideoReaderProperties;
class CY4mReader;

class CY4mContainerReader : public CContainerReader {
 public:
  static constexpr unsigned int ComponentCode = FourCC("y4m ");

  CY4mContainerReader();
  ~CY4mContainerReader() override;

  // 128 when the stream starts with "YUV4MPEG".
  int Validate(CStream* stream) override;
  Result BeginIndex() override;
  Result EndIndex() override;

  // The file's name.
  CString* GetFileIdentifier(CString* name) const override { return GetContextFileName(name); }
  // The planar formats of the YUV4MPEG2 colour spaces.
  CFormatList* GetVideoFormats() const override;
  int GetVideoMediaCount() const override;
  CVideoProperties* GetVideoProperties(int track) const override;
  bool IsVideoReady(int track) const override;

  using CContainerReader::ReadVideoData;
  Result ReadVideoSample(int track, CVideoSample*& sample) override;
  Result ReadVideoData(int track, CContainerDataReference* reference, CDataReference*& data) override;
  Result ResolveVideoData(int track, CContainerDataReference* reference, CStreamDataReference*& data) override;
  CProperties* GetDocumentation() const override;

 private:
  // Track description from the header; fails for what cannot be read.
  Result DescribeTrack();
  // The index thread's body: queue every whole frame, then the end marker.
  Result ReadIndex();
  // Reads the frame header at `position`, looking no further than `length`,
  // under the stream's lock.
  Result ReadFrameAt(long long position, long long length, long long& picture);
  enum class FrameState { Whole, End, Incomplete };
  // Finds the whole frame at `position`, waiting for a growing file to
  // complete it (`length` follows the file); End when the file ends there.
  FrameState FindWholeFrame(long long position, long long& length, long long& picture);
  // The bytes the file holds now.
  long long GetWrittenLength() const;
  // Records IsIndexAtEnd the first time the index thread waits.
  void MarkIndexAtEnd();
  // Raises the track's duration to the estimate for a file grown to `length`.
  void EstimateDuration(long long length);
  // Waits for the file to grow beyond `length`: true when it did, false when
  // ReadTimeout is not positive, passes without growth, or the reader stops.
  bool WaitForGrowth(long long length);
  void StopIndexThread();

  CStream* stream_;
  CY4mReader* reader_;
  CVideoReaderProperties* properties_;
  CContainerMediaReader* media_;
  std::thread indexThread_;
  long long headerEnd_;
  long long frameSize_;
};

}  // namespace Corvane::Mox
