#include "System/Media/Video/VideoSample.h"

#include <cstring>

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

CVideoSample::CVideoSample(int frameNumber, long long duration, int pictureType)
    : CMediaSample(TypeCode, duration),
      frameNumber_(frameNumber),
      pictureType_(pictureType),
      pictureStructure_(0),
      compositionOffset_(0) {}

CVideoSample::CVideoSample(const CVideoSample* sample)
    : CMediaSample(TypeCode, sample),
      frameNumber_(sample->frameNumber_),
      pictureType_(sample->pictureType_),
      pictureStructure_(sample->pictureStructure_),
      compositionOffset_(sample->compositionOffset_) {}

long long CVideoSample::GetCompositionTime() const { return GetTime() + compositionOffset_; }

Result CVideoSample::SetFrameNumber(int frameNumber) {
  frameNumber_ = frameNumber;
  return Result();
}

Result CVideoSample::SetPictureType(int pictureType) {
  if (pictureType < 0 || pictureType > 2) return ResultNotSupported();
  pictureType_ = pictureType;
  return Result();
}

Result CVideoSample::SetPictureStructure(int pictureStructure) {
  if (pictureStructure < 0 || pictureStructure > 2) return ResultNotSupported();
  pictureStructure_ = pictureStructure;
  return Result();
}

Result CVideoSample::SetCompositionOffset(int offset) {
  compositionOffset_ = offset;
  return Result();
}

Result CVideoSample::AdjustTime(int delta) {
  SetTime(GetTime() + delta);
  compositionOffset_ -= delta;
  return Result();
}

Result CVideoSample::WriteExtra(CBinaryWriter* writer) const {
  Result r = writer->WriteInt32(frameNumber_);
  if (r.Succeeded()) r = writer->WriteInt32(pictureType_);
  if (r.Succeeded()) r = writer->WriteInt32(pictureStructure_);
  if (r.Succeeded()) r = writer->WriteInt32(compositionOffset_);
  return r;
}

Result CVideoSample::ReadExtra(CBinaryReader* reader) {
  int values[4] = {};
  for (int& value : values) {
    Result r = reader->ReadInt32(&value);
    if (r.Failed()) return r;
  }
  frameNumber_ = values[0];
  pictureType_ = values[1];
  pictureStructure_ = values[2];
  compositionOffset_ = values[3];
  return Result();
}

void CVideoSample::DescribeExtra(CProperties* bag) const {
  static const char* const kTypes[] = {"I", "P", "B", "?"};
  static const char* const kStructures[] = {"frame", "upper", "lower", "?"};
  bag->SetProperty("frame_number", frameNumber_);
  bag->SetProperty("picture_type", kTypes[GetPictureType()]);
  bag->SetProperty("picture_structure", kStructures[GetPictureStructure()]);
  bag->SetProperty("composition_offset", compositionOffset_);
}

Result CVideoSample::SplitIntoFields(CVideoProperties* properties, CVideoSample* frame, CVideoSample*& first,
                                     CVideoSample*& second) {
  first = second = nullptr;
  if (!properties || !frame) return ResultArgumentNull();
  if (VideoFormat::GetCanonicalFormat(properties->GetFormat()) != FourCC("mjp2")) return ResultNotSupported();
  // Cutting a JPEG 2000 codestream into its two fields is the codec's work;
  // until a codestream reader is registered there is nothing to cut with.
  return ResultNotImplemented("JPEG 2000 field codestreams");
}

Result CVideoSample::MergeFields(CVideoProperties*, CVideoSample* first, CVideoSample* second, CVideoSample*& frame) {
  frame = nullptr;
  if (!first || !second) return ResultArgumentNull();
  RObject<CVideoSample> merged(new CVideoSample(first->GetFrameNumber(), first->GetDuration() + second->GetDuration(),
                                                first->GetPictureType()));
  merged->SetTime(first->GetTime());
  merged->SetCompositionOffset(first->GetCompositionOffset());
  merged->SetProperties(first);
  RObject<CLockedDataReference> a(first->GetLockedDataReference(CDataReference::LockShared));
  RObject<CLockedDataReference> b(second->GetLockedDataReference(CDataReference::LockShared));
  if (a && b && a->GetData() && b->GetData()) {
    long long total = static_cast<long long>(a->GetLength()) + b->GetLength();
    if (total > 0x7FFFFFFF) return ResultOverflow();
    RObject<CBufferDataReference> data(new CBufferDataReference(static_cast<int>(total)));
    std::memcpy(data->GetData(), a->GetData(), static_cast<size_t>(a->GetLength()));
    std::memcpy(data->GetData() + a->GetLength(), b->GetData(), static_cast<size_t>(b->GetLength()));
    merged->SetDataReference(data.Get());
  }
  frame = merged.Detach();
  return Result();
}

}  // namespace Corvane::Mox
