#include "System/Media/Container/ElementaryWriterProperties.h"

#include "System/IO/BufferedStream.h"
#include "System/IO/FileStream.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerStreamContext.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Formats/AudioFormat.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

CElementaryWriterProperties::CElementaryWriterProperties(unsigned int tag)
    : CMediaPropertiesExtension(tag), stream_(nullptr), writer_(nullptr) {}

CElementaryWriterProperties::~CElementaryWriterProperties() { End(); }

unsigned int CElementaryWriterProperties::ChooseWriterType(const CMediaProperties* properties) {
  if (!properties) return 0;
  int chosen = 0;
  if (properties->GetProperty(ContainerProperty::ContainerWriter::ContainerFormat, chosen).Succeeded() && chosen != 0)
    return static_cast<unsigned int>(chosen);
  const unsigned int format = properties->GetFormat();
  if (properties->IsType(CVideoProperties::TypeCode)) {
    const unsigned int canonical = VideoFormat::GetCanonicalFormat(format);
    if (canonical == FourCC("avc1") || canonical == FourCC("h264")) return FourCC("h264");
    if (canonical == FourCC("h265") || canonical == FourCC("hvc1")) return FourCC("hevc");
    return FourCC("vide");
  }
  if (properties->IsType(CAudioProperties::TypeCode)) {
    const unsigned int canonical = AudioFormat::GetCanonicalFormat(format);
    if (canonical == FourCC("ac-3") || canonical == FourCC("ec-3")) return FourCC("ac3 ");
    if (canonical == FourCC("dlbe") || canonical == FourCC("lpcm")) return FourCC("wav ");
    return FourCC("audi");
  }
  return 0;
}

Result CElementaryWriterProperties::Begin(CStream* stream, CMediaProperties* properties) {
  End();
  if (!stream || !properties) return ResultArgumentNull();
  RObject<CContainerContext> context(new CContainerStreamContext(stream));
  RObject<CContainerWriter> writer(CContainerWriter::Create(context.Get(), ChooseWriterType(properties)));
  if (!writer) return ResultInvalidArgument("no elementary writer for the track");
  Result result;
  if (properties->IsType(CVideoProperties::TypeCode)) {
    result = writer->AddVideoMedia(static_cast<CVideoProperties*>(properties));
  } else if (properties->IsType(CAudioProperties::TypeCode)) {
    result = writer->AddAudioMedia(static_cast<CAudioProperties*>(properties));
  } else {
    result = ResultNotSupported("elementary streams carry video or audio");
  }
  if (result.Succeeded()) result = writer->BeginIndex();
  if (result.Failed()) return result;
  stream->Acquire();
  stream_ = stream;
  writer_ = writer.Detach();
  return Result();
}

Result CElementaryWriterProperties::Resolve(CMediaSample* sample, CStreamDataReference*& data) {
  data = nullptr;
  if (!writer_) return ResultInvalidOperation("the writer has not begun");
  if (!sample) return ResultArgumentNull();
  stream_->Flush();
  const long long position = stream_->GetPosition();
  Result result;
  if (sample->IsType(CVideoSample::TypeCode) && writer_->GetVideoMediaCount() == 1) {
    result = writer_->WriteVideoSample(0, static_cast<CVideoSample*>(sample));
  } else if (sample->IsType(CAudioSample::TypeCode) && writer_->GetAudioMediaCount() == 1) {
    result = writer_->WriteAudioSample(0, static_cast<CAudioSample*>(sample));
  } else {
    return ResultInvalidArgument("the sample does not match the elementary track");
  }
  if (result.Failed()) return result;
  stream_->Flush();
  const int length = static_cast<int>(stream_->GetPosition() - position);
  RObject<CStream> base(stream_->IsType(CBufferedStream::TypeCode)
                            ? static_cast<CBufferedStream*>(stream_)->GetStream()
                            : (stream_->Acquire(), stream_));
  if (base->IsType(CFileStream::TypeCode)) {
    data = new CFileDataReference(static_cast<CFileStream*>(base.Get()), position, length);
  } else {
    data = new CStreamDataReference(base, position, length);
  }
  return Result();
}

Result CElementaryWriterProperties::End() {
  if (!writer_) return ResultFalse();
  Result result = writer_->EndIndex();
  writer_->Release();
  writer_ = nullptr;
  stream_->Release();
  stream_ = nullptr;
  return result;
}

CEncoderSettingsProperties::CEncoderSettingsProperties(unsigned int tag, CProperties* settings)
    : CMediaPropertiesExtension(tag), settings_(settings) {
  if (settings_) settings_->Acquire();
}

CEncoderSettingsProperties::~CEncoderSettingsProperties() {
  if (settings_) settings_->Release();
}

Result CEncoderSettingsProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  if (!settings_) return Result();
  return bag->SetProperty("settings", settings_);
}

}  // namespace Corvane::Mox
