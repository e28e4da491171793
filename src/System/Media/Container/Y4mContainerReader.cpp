#include "System/Media/Container/Y4mContainerReader.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <iterator>

#include "System/Collections/Value.h"
#include "System/Console.h"
#include "System/IO/FileStream.h"
#include "System/IO/MemoryStream.h"
#include "System/IO/Stream.h"
#include "System/Media/Container/ContainerMediaReader.h"
#include "System/Media/Container/VideoReaderProperties.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Variance/Variance.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Media/Y4m/Y4mFrame.h"
#include "System/Media/Y4m/Y4mReader.h"
#include "System/PropertiesDocumentation.h"
#include "System/Types.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

namespace {

// The track formats the colour spaces map to, each once.
constexpr unsigned int kFormats[] = {FourCC("I420"), FourCC("I411"), FourCC("I422"),
                                     FourCC("I444"), FourCC("I0AL"), FourCC("I2AL")};

unsigned int FormatOf(Y4mColorSpace space) {
  switch (space) {
    case Y4mColorSpace::C411: return FourCC("I411");
    case Y4mColorSpace::C422: return FourCC("I422");
    case Y4mColorSpace::C444: return FourCC("I444");
    case Y4mColorSpace::C420p10: return FourCC("I0AL");
    case Y4mColorSpace::C422p10: return FourCC("I2AL");
    default: return FourCC("I420");
  }
}

bool IsPal(long long width, long long height) { return width == 720 && (height == 576 || height == 544); }
bool IsNtsc(long long width, long long height) {
  return width == 720 && (height == 480 || height == 486 || height == 512);
}

// The header's rate, or the usual rate of the picture size.
Rational<int> FrameRateOf(const CY4mReader* reader) {
  Rational<int> rate = reader->GetFrameRate();
  if (rate.numerator > 0 && rate.denominator > 0) return rate;
  if (IsPal(reader->GetWidth(), reader->GetHeight())) return Rational<int>(25, 1);
  if (IsNtsc(reader->GetWidth(), reader->GetHeight())) return Rational<int>(30000, 1001);
  return Rational<int>(24000, 1001);
}

// The header's pixel aspect ratio, or the usual one of the picture size.
Rational<int> PixelAspectRatioOf(const CY4mReader* reader) {
  Rational<int> ratio = reader->GetPixelAspectRatio();
  if (ratio.numerator > 0 && ratio.denominator > 0) return ratio;
  if (IsPal(reader->GetWidth(), reader->GetHeight())) return Rational<int>(16, 15);
  if (IsNtsc(reader->GetWidth(), reader->GetHeight())) return Rational<int>(8, 9);
  return Rational<int>(1, 1);
}

}  // namespace

CY4mContainerReader::CY4mContainerReader()
    : CContainerReader(ComponentCode),
      stream_(nullptr),
      reader_(nullptr),
      properties_(nullptr),
      media_(new CContainerMediaReader(this)),
      headerEnd_(0),
      frameSize_(0) {}

CY4mContainerReader::~CY4mContainerReader() {
  StopIndexThread();
  media_->Release();
  if (properties_) properties_->Release();
  if (reader_) reader_->Release();
  if (stream_) stream_->Release();
}

int CY4mContainerReader::Validate(CStream* stream) {
  if (!stream) return 0;
  unsigned char signature[8];
  int read = 0;
  Result result = stream->Read(signature, sizeof(signature), &read);
  if (result.Failed()) return result.GetResultCode() < 0 ? result.GetResultCode() : 0;
  return read == 8 && std::memcmp(signature, "YUV4MPEG", 8) == 0 ? 128 : 0;
}

Result CY4mContainerReader::DescribeTrack() {
  if (reader_->GetInterlacingMode() == Y4mInterlacingMode::Mixed)
    return ResultNotSupported("mixed interlacing is not supported");
  frameSize_ = reader_->GetFrameSize();
  if (frameSize_ <= 0)
    return ResultFormatError("unsupported picture size %lldx%lld", reader_->GetWidth(), reader_->GetHeight());
  const Rational<int> rate = FrameRateOf(reader_);
  // Every value comes from the file's header: the container's word.
  const int from = CMediaReader::Container;
  RObject<CVideoReaderProperties> properties(new CVideoReaderProperties());
  Result result;
  try {
    result = properties->SetFormat(from, FormatOf(reader_->GetColorSpace()));
    if (result.Succeeded()) result = properties->SetWidth(from, static_cast<int>(reader_->GetWidth()));
    if (result.Succeeded()) result = properties->SetHeight(from, static_cast<int>(reader_->GetHeight()));
    if (result.Succeeded()) result = properties->SetTimeScale(from, rate.numerator);
    if (result.Succeeded()) result = properties->SetFrameDuration(from, rate.denominator);
    if (result.Succeeded()) result = properties->SetPixelAspectRatio(from, PixelAspectRatioOf(reader_));
    if (result.Succeeded())
      result = properties->SetFieldOrder(from, static_cast<int>(reader_->GetInterlacingMode()) + 1);
    // The frame count estimated from the whole length: the header and the
    // "FRAME" lines are deliberately not subtracted.
    const long long length = stream_->GetLength();
    if (result.Succeeded()) result = properties->SetDuration(from, (length > 0 ? length / frameSize_ : 0) * rate.denominator);
  } catch (const Result& thrown) {
    result = thrown;
  }
  if (result.Failed()) return ResultFormatError(result, "unsupported header values");
  properties_ = properties.Detach();
  return Result();
}

Result CY4mContainerReader::BeginIndex() {
  if (stream_) return ResultFalse();
  Result result = OpenStream(stream_);
  if (result.Failed()) return result;
  reader_ = new CY4mReader();
  {
    CAutoLock lock(stream_);
    result = stream_->Seek(0, SeekOrigin::Begin, nullptr);
    if (result.Succeeded()) result = reader_->ReadHeader(stream_);
    headerEnd_ = stream_->GetPosition();
  }
  if (result.Succeeded()) result = DescribeTrack();
  if (result.Failed()) {
    MOX_LOG(2, "unable to read the header: %s\n", result.GetDetails() ? result.GetDetails() : result.GetErrorMessage());
    return result;
  }
  media_->BeginIndex();
  SetReady(true);
  indexThread_ = std::thread([this] {
    Result outcome = ReadIndex();
    MOX_LOG(4, "thread exiting with result: %d (%s)\n", outcome.GetResultCode(), outcome.GetErrorMessage());
  });
  return Result();
}

Result CY4mContainerReader::ReadFrameAt(long long position, long long length, long long& picture) {
  CAutoLock lock(stream_);
  // A frame line is short: read a few bytes straight from the file and
  // parse them in memory, so that indexing neither fills the read cache with
  // picture data nor costs a call per byte. Only bytes already written are
  // asked for, so that a stream following a growing file never waits here.
  unsigned char line[256];
  const int wanted = static_cast<int>(std::min<long long>(sizeof(line), length - position));
  int read = 0;
  Result result = ReadUncached(stream_, position, line, wanted, read);
  if (result.Succeeded()) {
    RObject<CMemoryStream> memory(new CMemoryStream(read, line));
    RObject<CY4mFrame> frame;
    result = reader_->ReadFrame(memory, frame.Out());
    if (result.Succeeded()) {
      picture = position + frame->GetPosition();
      return Result();
    }
    // Only a line longer than the bytes read is worth a second look.
    if (read < static_cast<int>(sizeof(line))) return result;
  }
  result = stream_->Seek(position, SeekOrigin::Begin, nullptr);
  if (result.Failed()) return result;
  RObject<CY4mFrame> frame;
  result = reader_->ReadFrame(stream_, frame.Out());
  if (result.Failed()) return result;
  picture = frame->GetPosition();
  return Result();
}

long long CY4mContainerReader::GetWrittenLength() const {
  CAutoLock lock(stream_);
  return std::max(stream_->GetLength(), stream_->GetAvailableLength());
}

void CY4mContainerReader::MarkIndexAtEnd() {
  bool atEnd = false;
  if (GetProperty(ContainerProperty::ContainerReader::IsIndexAtEnd, atEnd).GetResultCode() == 0 && atEnd) return;
  SetProperty(ContainerProperty::ContainerReader::IsIndexAtEnd, true);
  // Whoever waits on the reader may want to know.
  CAutoLock lock(this);
  NotifyAll();
}

bool CY4mContainerReader::WaitForGrowth(long long length) {
  if (GetReadTimeout() <= 0) return false;
  MarkIndexAtEnd();
  using Clock = std::chrono::steady_clock;
  auto deadline = Clock::now() + std::chrono::milliseconds(GetReadTimeout());
  for (;;) {
    if (GetWrittenLength() > length) return true;
    // A changed ReadTimeout counts from now; the wait wakes for it, for a
    // stop, and at the poll interval to look at the file again.
    const auto now = Clock::now();
    deadline = std::min(deadline, now + std::chrono::milliseconds(GetReadTimeout()));
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - now).count();
    if (left <= 0) return false;
    CAutoLock lock(this);
    if (!IsReady()) return false;
    Wait(static_cast<int>(std::min<long long>(left, CFileStream::PollInterval)));
  }
}

CY4mContainerReader::FrameState CY4mContainerReader::FindWholeFrame(long long position, long long& length,
                                                                    long long& picture) {
  for (;;) {
    Result result = position < length ? ReadFrameAt(position, length, picture) : ResultEndOfStream();
    if (result.Succeeded() && picture + frameSize_ <= length) return FrameState::Whole;
    // The frame is not all there: a growing file may still complete it (a
    // damaged frame line never will).
    const bool damaged = result.GetResultCode() == ResultUnexpected().GetResultCode();
    if (damaged || !WaitForGrowth(length)) return position < length ? FrameState::Incomplete : FrameState::End;
    length = GetWrittenLength();
    EstimateDuration(length);
  }
}

void CY4mContainerReader::EstimateDuration(long long length) {
  // Estimated as when indexing began, from the whole length: the header and
  // the "FRAME" lines are deliberately not subtracted.
  CAutoLock lock(this);
  const long long estimate = length / frameSize_ * properties_->GetFrameDuration();
  if (estimate > properties_->GetDuration()) properties_->SetDuration(CMediaReader::Container, estimate);
}

Result CY4mContainerReader::ReadIndex() {
  const long long duration = properties_->GetFrameDuration();
  long long length = GetWrittenLength();
  long long position = headerEnd_;
  Result outcome;
  for (int frame = 0; IsReady(); ++frame) {
    long long picture = 0;
    const FrameState state = FindWholeFrame(position, length, picture);
    if (state == FrameState::Incomplete) {
      // A damaged or truncated frame ends the track at the previous frame.
      MOX_LOG(2, "frame %d at %lld is incomplete; the track ends before it\n", frame, position);
      CVariance::Report(position, CVariance::Major, "frame %d at %lld is incomplete; the track ends before it\n", frame,
                        position);
    }
    if (state != FrameState::Whole) break;
    RObject<CVideoSample> sample(new CVideoSample(frame, duration, 0));
    sample->SetTime(frame * duration);
    RObject<CContainerDataReference> reference(
        new CContainerDataReference(CContainerDataReference::TypeCode, picture, static_cast<int>(frameSize_)));
    sample->SetDataReference(reference);
    Result result = media_->EnqueueSample(sample);
    if (result.Failed()) {
      MOX_LOG(2, "indexing terminated\n");
      outcome = ResultError(result, "indexing terminated");
      break;
    }
    position = picture + frameSize_;
  }
  media_->EnqueueSample(nullptr);
  SynchronizeVariances();
  return outcome;
}

void CY4mContainerReader::StopIndexThread() {
  SetReady(false);
  if (indexThread_.joinable()) indexThread_.join();
}

Result CY4mContainerReader::EndIndex() {
  StopIndexThread();
  return media_->EndIndex();
}

CFormatList* CY4mContainerReader::GetVideoFormats() const {
  return NewFormatList(kFormats, static_cast<int>(std::size(kFormats)));
}

int CY4mContainerReader::GetVideoMediaCount() const { return properties_ ? 1 : 0; }

CVideoProperties* CY4mContainerReader::GetVideoProperties(int track) const {
  if (track != 0 || !properties_) return nullptr;
  // The index thread raises the duration while a growing file is followed.
  CAutoLock lock(this);
  return new CVideoProperties(properties_);
}

bool CY4mContainerReader::IsVideoReady(int track) const { return track == 0 && properties_ && media_->IsReady(); }

Result CY4mContainerReader::ReadVideoSample(int track, CVideoSample*& sample) {
  sample = nullptr;
  if (track != 0 || !properties_) return ResultIndexOutOfRange();
  CMediaSample* next = nullptr;
  Result result = media_->DequeueSample(next);
  if (result.Failed()) return result;
  if (!next) MOX_LOG(4, "indexing complete\n");
  sample = static_cast<CVideoSample*>(next);
  return Result();
}

Result CY4mContainerReader::ReadVideoData(int track, CContainerDataReference* reference, CDataReference*& data) {
  data = nullptr;
  if (track != 0 || !properties_) return ResultIndexOutOfRange();
  return ReadVideoData(stream_, properties_, reference, data);
}

Result CY4mContainerReader::ResolveVideoData(int track, CContainerDataReference* reference,
                                             CStreamDataReference*& data) {
  data = nullptr;
  if (track != 0 || !properties_) return ResultIndexOutOfRange();
  return ResolveData(stream_, reference, data);
}

CProperties* CY4mContainerReader::GetDocumentation() const {
  return IPropertiesDocumentation::GetDocumentationT<ContainerProperty::ContainerReader>();
}

}  // namespace Corvane::Mox
