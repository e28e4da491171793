#include "wfl/ReaderTracks.h"

#include <string>

#include "System/FourString.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Text.h"
#include "wfl/ComponentValue.h"
#include "wfl/ObjectValue.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

CSymbol* ObjectSymbol(CSymbolDictionary* dictionary) {
  RObject<CSymbolValue> value(new CObjectValue(dictionary));
  return new CSymbol(value.Get());
}

template <class T>
void Set(CSymbolDictionary* members, const char* name, T value) {
  RObject<CSymbol> symbol(new CSymbol(value));
  members->SetSymbol(name, symbol).ThrowIfFailed();
}

void SetObject(CSymbolDictionary* members, const char* name, CSymbolDictionary* object) {
  RObject<CSymbol> symbol(ObjectSymbol(object));
  members->SetSymbol(name, symbol).ThrowIfFailed();
}

void SetFormat(CSymbolDictionary* members, unsigned int format) {
  Set(members, "format", FourString(format).GetChars());
}

// "language": the RFC 5646 tag of the track's language and region, when set.
void SetLanguage(CSymbolDictionary* members, const CMediaProperties* properties) {
  if (properties->GetLanguage() == 0) return;
  RObject<CString> tag(CMediaProperties::ConvertToRfc5646(properties->GetLanguage(), properties->GetRegion()));
  if (tag) Set(members, "language", tag.Get());
}

void DescribeVideo(CSymbolDictionary* members, const CVideoProperties* video) {
  Set(members, "bitRate", video->GetBitRate());
  Set(members, "duration", video->GetDuration());
  Set(members, "frameDuration", video->GetFrameDuration());
  Set(members, "timeScale", video->GetTimeScale());
  SetFormat(members, video->GetFormat());
  Set(members, "bitDepth", video->GetBitDepth());
  const Rectangle<int> aperture = video->GetCleanAperture();
  RObject<CSymbolDictionary> clean(new CSymbolDictionary());
  Set(clean.Get(), "left", aperture.left);
  Set(clean.Get(), "right", aperture.right);
  Set(clean.Get(), "top", aperture.top);
  Set(clean.Get(), "bottom", aperture.bottom);
  SetObject(members, "cleanAperture", clean);
  Set(members, "videoRange", video->GetVideoRange());
  RObject<CSymbolDictionary> colour(new CSymbolDictionary());
  Set(colour.Get(), "colorPrimaries", static_cast<int>(video->GetColorPrimaries()));
  Set(colour.Get(), "matrixCoefficients", static_cast<int>(video->GetMatrixCoefficients()));
  Set(colour.Get(), "transferCharacteristics", static_cast<int>(video->GetTransferCharacteristics()));
  SetObject(members, "colorSpace", colour);
  Set(members, "fieldOrder", video->GetFieldOrder());
  Set(members, "width", video->GetWidth());
  Set(members, "height", video->GetHeight());
  Set(members, "orientation", video->GetOrientation());
  Set(members, "subsampling", video->GetSubsampling());
  const Rational<int> ratio = video->GetPixelAspectRatio();
  RObject<CSymbolDictionary> aspect(new CSymbolDictionary());
  Set(aspect.Get(), "x", ratio.numerator);
  Set(aspect.Get(), "y", ratio.denominator);
  SetObject(members, "pixelAspectRatio", aspect);
  SetLanguage(members, video);
}

void DescribeAudio(CSymbolDictionary* members, const CAudioProperties* audio) {
  Set(members, "channels", audio->GetChannels());
  Set(members, "bitRate", audio->GetBitRate());
  Set(members, "bitsPerSample", audio->GetBitsPerSample());
  Set(members, "bytesPerFrame", audio->GetBytesPerFrame());
  Set(members, "bytesPerPacket", audio->GetBytesPerPacket());
  Set(members, "bytesPerSample", audio->GetBytesPerSample());
  Set(members, "duration", audio->GetDuration());
  SetFormat(members, audio->GetFormat());
  SetLanguage(members, audio);
  Set(members, "framesPerPacket", audio->GetFramesPerPacket());
  Set(members, "sampleRate", audio->GetSampleRate());
}

void DescribeSubtitle(CSymbolDictionary* members, const CSubtitleProperties* subtitle) {
  SetFormat(members, subtitle->GetFormat());
  Set(members, "bitRate", subtitle->GetBitRate());
  Set(members, "duration", subtitle->GetDuration());
  Set(members, "timeScale", subtitle->GetTimeScale());
  Set(members, "frameDuration", subtitle->GetSampleDuration());
  SetLanguage(members, subtitle);
}

// One kind's object: track values "0", "1", ... with their descriptions.
template <class Track, class Properties, class Get, class Describe>
void AddKind(CSymbolDictionary* tracks, const char* kind, CComponentValue* readerValue, int count, Get get,
             Describe describe) {
  RObject<CSymbolDictionary> ofKind(new CSymbolDictionary());
  for (int i = 0; i < count; ++i) {
    RObject<Track> track(new Track(readerValue, i));
    RObject<Properties> properties(get(i));
    if (properties) {
      RObject<CSymbolDictionary> members(track->ToDictionary());
      describe(members.Get(), properties.Get());
    }
    RObject<CSymbol> symbol(new CSymbol(static_cast<CSymbolValue*>(track.Get())));
    ofKind->SetSymbol(std::to_string(i).c_str(), symbol).ThrowIfFailed();
  }
  SetObject(tracks, kind, ofKind);
}

}  // namespace

void AddReaderTracks(CSymbolDictionary* members, CComponentValue* readerValue, CContainerReader* reader) {
  RObject<CSymbolDictionary> tracks(new CSymbolDictionary());
  const int video = reader ? reader->GetVideoMediaCount() : 0;
  const int audio = reader ? reader->GetAudioMediaCount() : 0;
  const int subtitle = reader ? reader->GetSubtitleMediaCount() : 0;
  AddKind<CVideoTrackValue, CVideoProperties>(
      tracks, "video", readerValue, video, [reader](int i) { return reader->GetVideoProperties(i); }, DescribeVideo);
  AddKind<CAudioTrackValue, CAudioProperties>(
      tracks, "audio", readerValue, audio, [reader](int i) { return reader->GetAudioProperties(i); }, DescribeAudio);
  AddKind<CSubtitleTrackValue, CSubtitleProperties>(
      tracks, "subtitle", readerValue, subtitle, [reader](int i) { return reader->GetSubtitleProperties(i); },
      DescribeSubtitle);
  SetObject(members, "tracks", tracks);
}

}  // namespace Corvane::Mox::WFL
