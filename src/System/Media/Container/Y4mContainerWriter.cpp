#include "System/Media/Container/Y4mContainerWriter.h"

#include <iterator>

#include "System/ByteArray.h"
#include "System/Collections/Value.h"
#include "System/FourString.h"
#include "System/IO/Stream.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Media/Y4m/Y4mFrame.h"
#include "System/Media/Y4m/Y4mParameters.h"
#include "System/Media/Y4m/Y4mReader.h"
#include "System/Media/Y4m/Y4mWriter.h"
#include "System/Types.h"

namespace Corvane::Mox {

namespace {

struct FormatSpace {
  unsigned int format;
  Y4mColorSpace space;
};

constexpr FormatSpace kSpaces[] = {
    {FourCC("I420"), Y4mColorSpace::C420}, {FourCC("I411"), Y4mColorSpace::C411},
    {FourCC("I422"), Y4mColorSpace::C422}, {FourCC("I444"), Y4mColorSpace::C444},
    {FourCC("I0AL"), Y4mColorSpace::C420p10}, {FourCC("I2AL"), Y4mColorSpace::C422p10},
};

bool ColorSpaceOf(unsigned int format, Y4mColorSpace& space) {
  for (const FormatSpace& entry : kSpaces) {
    if (entry.format == format) {
      space = entry.space;
      return true;
    }
  }
  return false;
}

Y4mInterlacingMode InterlacingOf(int fieldOrder) {
  if (fieldOrder == 2) return Y4mInterlacingMode::TopFieldFirst;
  if (fieldOrder == 3) return Y4mInterlacingMode::BottomFieldFirst;
  return Y4mInterlacingMode::Progressive;
}

}  // namespace

CFormatList* CY4mContainerWriter::GetVideoFormats() const {
  unsigned int formats[std::size(kSpaces)];
  for (std::size_t i = 0; i < std::size(kSpaces); ++i) formats[i] = kSpaces[i].format;
  return NewFormatList(formats, static_cast<int>(std::size(kSpaces)));
}

CY4mContainerWriter::CY4mContainerWriter() : CSingleVideoTrackWriter(ComponentCode), frameSize_(0) {}

CY4mContainerWriter::~CY4mContainerWriter() { CloseOutput(); }

Result CY4mContainerWriter::BeginIndex() {
  if (!properties_) return ResultInvalidOperation("no video track");
  Y4mColorSpace space;
  if (!ColorSpaceOf(properties_->GetFormat(), space))
    return ResultNotSupported("format %s has no YUV4MPEG2 colour space", FourString(properties_->GetFormat()).GetChars());
  frameSize_ = CY4mReader::GetFrameSize(properties_->GetWidth(), properties_->GetHeight(), space);
  if (frameSize_ <= 0) return ResultInvalidArgument("no picture size");
  Result result = OpenStream(stream_.Out());
  if (result.Failed()) return result;
  writer_ = new CY4mWriter();
  const Rational<int> rate(static_cast<int>(properties_->GetTimeScale()), static_cast<int>(properties_->GetFrameDuration()));
  RObject<CY4mParameter> parameters[] = {
      new CY4mFrameWidthParameter(properties_->GetWidth()),
      new CY4mFrameHeightParameter(properties_->GetHeight()),
      new CY4mFrameRateParameter(rate),
      new CY4mColorSpaceParameter(space),
      new CY4mInterlacingModeParameter(InterlacingOf(properties_->GetFieldOrder())),
      new CY4mPixelAspectRatioParameter(properties_->GetPixelAspectRatio()),
  };
  for (const RObject<CY4mParameter>& parameter : parameters) writer_->AddParameter(parameter);
  return writer_->WriteHeader(stream_);
}

Result CY4mContainerWriter::WriteVideoSample(int track, CVideoSample* sample) {
  if (!sample) return Result();
  RObject<CLockedDataReference> data;
  Result result = LockTrackSample(track, sample, frameSize_, data.Out());
  if (result.Failed()) return result;
  RObject<CByteArray> view(new CByteArray(static_cast<int>(frameSize_), data->GetData(), data.Get()));
  RObject<CY4mFrame> frame(new CY4mFrame(static_cast<int>(frameSize_)));
  frame->SetBuffer(view);
  return writer_->WriteFrame(stream_, frame);
}

}  // namespace Corvane::Mox
