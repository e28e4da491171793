#pragma once
// CPathTemplate::CContext: what is known about the file being named (package,
// segment, container, media descriptions, ...) and the token values built
// from it. Every setter invalidates the values, which are built again on the
// next lookup.

#include <string>
#include <vector>

#include "System/Guid.h"
#include "System/PathTemplate/PathTemplate.h"
#include "System/PropertyName.h"

namespace Corvane::Mox {

class CProperties;
class CVariant;

class CPathTemplate::CContext : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("ptcx");
  // The media property that names a stream's transport stream PID.
  static constexpr const char* PidProperty = "Mpeg2TransportStreamPid";

  // What the tokens need from one media description.
  struct MediaInfo {
    unsigned int format = 0;      // four-character code
    long long bitRate = 0;        // bits per second
    unsigned short language = 0;  // ISO 639-2 letters packed 5 bits each
    unsigned short region = 0;    // ISO 3166 alpha-3 letters packed the same way
    int pid = 0;                  // 0 when unknown
    int width = 0;
    int height = 0;
    int channels = 0;
    std::vector<int> channelLabels;  // speaker labels, one per channel when known
  };

  CContext();
  ~CContext() override;

  // Texts; null clears.
  void SetPackage(const char* text);
  void SetPackage(CString* text);
  void SetSession(const char* text);
  void SetSession(CString* text);
  void SetEncryptionKeyIdentifier(const char* text);
  void SetEncryptionKeyIdentifier(CString* text);
  void SetSegmentVariable(const char* text);
  void SetSegmentVariable(CString* text);
  void SetPresentationVariable(const char* text);
  void SetPresentationVariable(CString* text);
  void SetContainer(const char* text);
  void SetContainer(CString* text);
  void SetPlaylistName(const char* text);
  void SetPlaylistName(CString* text);
  void SetInitialization(const char* text);
  void SetInitialization(CString* text);
  void SetMediaType(const char* text);
  void SetMediaType(CString* text);
  void SetExtension(const char* text);
  void SetExtension(CString* text);
  void SetTitle(const char* text);
  void SetTitle(CString* text);
  void SetData(const char* text);
  void SetData(CString* text);
  void SetGuid(const Guid& guid);
  // Numbers; a negative index or time means "not set".
  void SetSegmentIndex(int index);
  void SetPresentationTime(long long time);
  void SetTrackIndex(int index);
  void SetDirectoryIndex(int index);

  // Media of the file.
  void AddVideo(const MediaInfo& video);
  void AddAudio(const MediaInfo& audio);
  void AddSubtitle(const MediaInfo& subtitle);
  // The same from media descriptions (any class with the description
  // accessors GetFormat, GetBitRate, GetLanguage, GetRegion and the property
  // bag lookup; video adds GetWidth/GetHeight, audio GetChannels and
  // GetChannelLabel).
  template <class TVideoProperties>
  void AddVideoProperties(const TVideoProperties* video);
  template <class TAudioProperties>
  void AddAudioProperties(const TAudioProperties* audio);
  template <class TSubtitleProperties>
  void AddSubtitleProperties(const TSubtitleProperties* subtitle);

  bool IsVideoOnly() const;
  bool IsAudioOnly() const;
  bool IsSubtitleOnly() const;
  bool HasVideo() const { return !videos_.empty(); }
  bool HasAudio() const { return !audios_.empty(); }
  bool HasSubtitle() const { return !subtitles_.empty(); }

  // Short format names ("h264", "aac", ...) of the first media, and of the
  // first of each kind (acquired); null when there is no such media.
  CString* GetFormat() const;
  CString* GetVideoFormat() const;
  CString* GetAudioFormat() const;
  CString* GetSubtitleFormat() const;
  // The packed language and region of the media (audio first, then
  // subtitles, then video); 0 when none has one.
  unsigned short GetLanguage() const;
  unsigned short GetRegion() const;
  // The PID of the first media that has one, 0 when none.
  int GetPid() const;
  // "20", "51", "71": main channels then LFE channels (acquired).
  static CString* GetChannelLayout(const MediaInfo& audio);
  template <class TAudioProperties>
  static CString* GetChannelLayout(const TAudioProperties* audio);

  // The token values (acquired): one entry per token that has a value.
  CProperties* GetValues() const;
  // One token's value (acquired), or null.
  CVariant* GetValue(const char* token) const;

  // The short name of a format code, e.g. "avc1" -> "h264".
  static std::string GetFormatName(unsigned int format);
  // Three letters of a packed code (empty for 0), and the two-letter forms
  // of languages (ISO 639-1) and regions (ISO 3166 alpha-2); empty when unknown.
  static std::string UnpackLetters(unsigned short code);
  static std::string GetLanguageAlpha2(const std::string& alpha3);
  static std::string GetRegionAlpha2(const std::string& alpha3);

 private:
  template <class TProperties>
  static MediaInfo Describe(const TProperties* properties);
  void Invalidate();
  void SetText(CString*& slot, CString* text);
  void SetText(CString*& slot, const char* text);
  void AddTexts(CProperties* values) const;
  void AddNumbers(CProperties* values) const;
  void AddMedia(CProperties* values) const;
  void AddLanguages(CProperties* values) const;
  void AddTimes(CProperties* values) const;
  const MediaInfo* FirstMedia() const;
  long long GetBitRate() const;

  CString* package_ = nullptr;
  CString* session_ = nullptr;
  CString* kid_ = nullptr;
  CString* segmentVariable_ = nullptr;
  CString* presentationVariable_ = nullptr;
  CString* container_ = nullptr;
  CString* playlistName_ = nullptr;
  CString* initialization_ = nullptr;
  CString* mediaType_ = nullptr;
  CString* extension_ = nullptr;
  CString* title_ = nullptr;
  CString* data_ = nullptr;
  Guid guid_;
  bool hasGuid_ = false;
  int segmentIndex_ = -1;
  long long presentationTime_ = -1;
  int trackIndex_ = -1;
  int directoryIndex_ = -1;
  std::vector<MediaInfo> videos_;
  std::vector<MediaInfo> audios_;
  std::vector<MediaInfo> subtitles_;
  mutable CProperties* values_ = nullptr;  // built on demand
};

template <class TProperties>
CPathTemplate::CContext::MediaInfo CPathTemplate::CContext::Describe(const TProperties* properties) {
  MediaInfo info;
  info.format = properties->GetFormat();
  info.bitRate = properties->GetBitRate();
  info.language = properties->GetLanguage();
  info.region = properties->GetRegion();
  int pid = 0;
  if (properties->GetProperty(PropertyName(PidProperty), pid).Succeeded()) info.pid = pid;
  return info;
}

template <class TVideoProperties>
void CPathTemplate::CContext::AddVideoProperties(const TVideoProperties* video) {
  if (!video) return;
  MediaInfo info = Describe(video);
  info.width = video->GetWidth();
  info.height = video->GetHeight();
  AddVideo(info);
}

template <class TAudioProperties>
void CPathTemplate::CContext::AddAudioProperties(const TAudioProperties* audio) {
  if (!audio) return;
  MediaInfo info = Describe(audio);
  info.channels = audio->GetChannels();
  for (int i = 0; i < info.channels && i < 128; ++i) info.channelLabels.push_back(audio->GetChannelLabel(i));
  AddAudio(info);
}

template <class TSubtitleProperties>
void CPathTemplate::CContext::AddSubtitleProperties(const TSubtitleProperties* subtitle) {
  if (subtitle) AddSubtitle(Describe(subtitle));
}

template <class TAudioProperties>
CString* CPathTemplate::CContext::GetChannelLayout(const TAudioProperties* audio) {
  MediaInfo info;
  if (audio) {
    info.channels = audio->GetChannels();
    for (int i = 0; i < info.channels && i < 128; ++i) info.channelLabels.push_back(audio->GetChannelLabel(i));
  }
  return GetChannelLayout(info);
}

}  // namespace Corvane::Mox
