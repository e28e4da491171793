#include "System/PathTemplate/PathTemplateContext.h"

#include <cctype>
#include <cstring>

#include "System/DateTime.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/Variant.h"

namespace Corvane::Mox {

namespace {

struct NamePair {
  const char* from;
  const char* to;
};

// Format codes whose short name is not simply the code itself.
constexpr NamePair FormatNames[] = {
    {"avc1", "h264"}, {"avc3", "h264"}, {"h264", "h264"}, {"hvc1", "hevc"}, {"hev1", "hevc"}, {"hevc", "hevc"},
    {"mp4a", "aac"},  {"aac ", "aac"},  {"ac-3", "ac3"},  {"ec-3", "eac3"}, {"ac-4", "ac4"},  {"mp4v", "mpeg4"},
    {"mp2v", "mpeg2"}, {"m2v1", "mpeg2"}, {"mpga", "mp3"}, {".mp3", "mp3"}, {"wvtt", "webvtt"}, {"stpp", "ttml"},
    {"vp08", "vp8"},  {"vp09", "vp9"},  {"av01", "av1"},  {"Opus", "opus"}, {"fLaC", "flac"}, {"sowt", "pcm"},
    {"twos", "pcm"},  {"in24", "pcm"},  {"fl32", "pcm"},  {"c608", "cea608"}, {"c708", "cea708"},
};

// ISO 639-2 (terminology and bibliographic codes) to ISO 639-1.
constexpr NamePair Languages[] = {
    {"ara", "ar"}, {"bul", "bg"}, {"cat", "ca"}, {"ces", "cs"}, {"cze", "cs"}, {"chi", "zh"}, {"zho", "zh"},
    {"cym", "cy"}, {"wel", "cy"}, {"dan", "da"}, {"deu", "de"}, {"ger", "de"}, {"ell", "el"}, {"gre", "el"},
    {"eng", "en"}, {"spa", "es"}, {"est", "et"}, {"eus", "eu"}, {"baq", "eu"}, {"fas", "fa"}, {"per", "fa"},
    {"fin", "fi"}, {"fra", "fr"}, {"fre", "fr"}, {"gle", "ga"}, {"glg", "gl"}, {"heb", "he"}, {"hin", "hi"},
    {"hrv", "hr"}, {"hun", "hu"}, {"hye", "hy"}, {"arm", "hy"}, {"ind", "id"}, {"isl", "is"}, {"ice", "is"},
    {"ita", "it"}, {"jpn", "ja"}, {"kat", "ka"}, {"geo", "ka"}, {"kor", "ko"}, {"lit", "lt"}, {"lav", "lv"},
    {"mkd", "mk"}, {"mac", "mk"}, {"msa", "ms"}, {"may", "ms"}, {"nld", "nl"}, {"dut", "nl"}, {"nor", "no"},
    {"nob", "nb"}, {"nno", "nn"}, {"pol", "pl"}, {"por", "pt"}, {"ron", "ro"}, {"rum", "ro"}, {"rus", "ru"},
    {"slk", "sk"}, {"slo", "sk"}, {"slv", "sl"}, {"sqi", "sq"}, {"alb", "sq"}, {"srp", "sr"}, {"swe", "sv"},
    {"tha", "th"}, {"tur", "tr"}, {"ukr", "uk"}, {"vie", "vi"}, {"tam", "ta"}, {"tel", "te"}, {"urd", "ur"},
    {"ben", "bn"}, {"fil", "tl"}, {"tgl", "tl"}, {"swa", "sw"}, {"afr", "af"}, {"zul", "zu"},
};

// ISO 3166 alpha-3 to alpha-2.
constexpr NamePair Regions[] = {
    {"usa", "us"}, {"gbr", "gb"}, {"can", "ca"}, {"aus", "au"}, {"nzl", "nz"}, {"irl", "ie"}, {"fra", "fr"},
    {"deu", "de"}, {"aut", "at"}, {"che", "ch"}, {"bel", "be"}, {"nld", "nl"}, {"lux", "lu"}, {"esp", "es"},
    {"prt", "pt"}, {"ita", "it"}, {"dnk", "dk"}, {"swe", "se"}, {"nor", "no"}, {"fin", "fi"}, {"isl", "is"},
    {"pol", "pl"}, {"cze", "cz"}, {"svk", "sk"}, {"hun", "hu"}, {"rou", "ro"}, {"bgr", "bg"}, {"grc", "gr"},
    {"tur", "tr"}, {"rus", "ru"}, {"ukr", "ua"}, {"chn", "cn"}, {"twn", "tw"}, {"hkg", "hk"}, {"jpn", "jp"},
    {"kor", "kr"}, {"ind", "in"}, {"idn", "id"}, {"tha", "th"}, {"vnm", "vn"}, {"phl", "ph"}, {"sgp", "sg"},
    {"mys", "my"}, {"bra", "br"}, {"arg", "ar"}, {"mex", "mx"}, {"chl", "cl"}, {"col", "co"}, {"per", "pe"},
    {"zaf", "za"}, {"egy", "eg"}, {"sau", "sa"}, {"are", "ae"}, {"isr", "il"},
};

template <std::size_t N>
std::string Lookup(const NamePair (&table)[N], const std::string& key) {
  for (const NamePair& pair : table)
    if (key == pair.from) return pair.to;
  return std::string();
}

std::string ToUpper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

bool IsLfe(int label) { return label == 4 || label == 68; }

void PutText(CProperties* values, const char* name, CString* text) {
  if (text) values->SetProperty(PropertyName(name), text);
}

void PutText(CProperties* values, const char* name, const std::string& text) {
  if (text.empty()) return;
  RObject<CString> value(new CString(text.c_str()));
  values->SetProperty(PropertyName(name), value.Get());
}

void ReleaseText(CString*& slot) {
  if (slot) slot->Release();
  slot = nullptr;
}

}  // namespace

CPathTemplate::CContext::CContext() : CObject(TypeCode) {}

CPathTemplate::CContext::~CContext() {
  for (CString** slot : {&package_, &session_, &kid_, &segmentVariable_, &presentationVariable_, &container_,
                         &playlistName_, &initialization_, &mediaType_, &extension_, &title_, &data_})
    ReleaseText(*slot);
  Invalidate();
}

void CPathTemplate::CContext::Invalidate() {
  if (values_) values_->Release();
  values_ = nullptr;
}

void CPathTemplate::CContext::SetText(CString*& slot, CString* text) {
  if (text) text->Acquire();
  ReleaseText(slot);
  slot = text;
  Invalidate();
}

void CPathTemplate::CContext::SetText(CString*& slot, const char* text) {
  RObject<CString> value(text ? new CString(text) : nullptr);
  SetText(slot, value.Get());
}

void CPathTemplate::CContext::SetPackage(const char* text) { SetText(package_, text); }
void CPathTemplate::CContext::SetPackage(CString* text) { SetText(package_, text); }
void CPathTemplate::CContext::SetSession(const char* text) { SetText(session_, text); }
void CPathTemplate::CContext::SetSession(CString* text) { SetText(session_, text); }
void CPathTemplate::CContext::SetEncryptionKeyIdentifier(const char* text) { SetText(kid_, text); }
void CPathTemplate::CContext::SetEncryptionKeyIdentifier(CString* text) { SetText(kid_, text); }
void CPathTemplate::CContext::SetSegmentVariable(const char* text) { SetText(segmentVariable_, text); }
void CPathTemplate::CContext::SetSegmentVariable(CString* text) { SetText(segmentVariable_, text); }
void CPathTemplate::CContext::SetPresentationVariable(const char* text) { SetText(presentationVariable_, text); }
void CPathTemplate::CContext::SetPresentationVariable(CString* text) { SetText(presentationVariable_, text); }
void CPathTemplate::CContext::SetContainer(const char* text) { SetText(container_, text); }
void CPathTemplate::CContext::SetContainer(CString* text) { SetText(container_, text); }
void CPathTemplate::CContext::SetPlaylistName(const char* text) { SetText(playlistName_, text); }
void CPathTemplate::CContext::SetPlaylistName(CString* text) { SetText(playlistName_, text); }
void CPathTemplate::CContext::SetInitialization(const char* text) { SetText(initialization_, text); }
void CPathTemplate::CContext::SetInitialization(CString* text) { SetText(initialization_, text); }
void CPathTemplate::CContext::SetMediaType(const char* text) { SetText(mediaType_, text); }
void CPathTemplate::CContext::SetMediaType(CString* text) { SetText(mediaType_, text); }
void CPathTemplate::CContext::SetExtension(const char* text) { SetText(extension_, text); }
void CPathTemplate::CContext::SetExtension(CString* text) { SetText(extension_, text); }
void CPathTemplate::CContext::SetTitle(const char* text) { SetText(title_, text); }
void CPathTemplate::CContext::SetTitle(CString* text) { SetText(title_, text); }
void CPathTemplate::CContext::SetData(const char* text) { SetText(data_, text); }
void CPathTemplate::CContext::SetData(CString* text) { SetText(data_, text); }

void CPathTemplate::CContext::SetGuid(const Guid& guid) {
  guid_ = guid;
  hasGuid_ = true;
  Invalidate();
}

void CPathTemplate::CContext::SetSegmentIndex(int index) {
  segmentIndex_ = index;
  Invalidate();
}

void CPathTemplate::CContext::SetPresentationTime(long long time) {
  presentationTime_ = time;
  Invalidate();
}

void CPathTemplate::CContext::SetTrackIndex(int index) {
  trackIndex_ = index;
  Invalidate();
}

void CPathTemplate::CContext::SetDirectoryIndex(int index) {
  directoryIndex_ = index;
  Invalidate();
}

void CPathTemplate::CContext::AddVideo(const MediaInfo& video) {
  videos_.push_back(video);
  Invalidate();
}

void CPathTemplate::CContext::AddAudio(const MediaInfo& audio) {
  audios_.push_back(audio);
  Invalidate();
}

void CPathTemplate::CContext::AddSubtitle(const MediaInfo& subtitle) {
  subtitles_.push_back(subtitle);
  Invalidate();
}

bool CPathTemplate::CContext::IsVideoOnly() const { return HasVideo() && !HasAudio() && !HasSubtitle(); }
bool CPathTemplate::CContext::IsAudioOnly() const { return HasAudio() && !HasVideo() && !HasSubtitle(); }
bool CPathTemplate::CContext::IsSubtitleOnly() const { return HasSubtitle() && !HasVideo() && !HasAudio(); }

const CPathTemplate::CContext::MediaInfo* CPathTemplate::CContext::FirstMedia() const {
  if (HasVideo()) return &videos_.front();
  if (HasAudio()) return &audios_.front();
  if (HasSubtitle()) return &subtitles_.front();
  return nullptr;
}

std::string CPathTemplate::CContext::GetFormatName(unsigned int format) {
  if (format == 0) return std::string();
  char code[5];
  FourCCToChars(format, code);
  std::string name = Lookup(FormatNames, code);
  if (!name.empty()) return name;
  // Otherwise the code itself, lower case, letters and digits only.
  for (char c : std::string(code))
    if (std::isalnum(static_cast<unsigned char>(c))) name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name;
}

namespace {

CString* FormatOf(const std::vector<CPathTemplate::CContext::MediaInfo>& media) {
  if (media.empty()) return nullptr;
  std::string name = CPathTemplate::CContext::GetFormatName(media.front().format);
  return name.empty() ? nullptr : new CString(name.c_str());
}

}  // namespace

CString* CPathTemplate::CContext::GetFormat() const {
  const MediaInfo* media = FirstMedia();
  if (!media) return nullptr;
  std::string name = GetFormatName(media->format);
  return name.empty() ? nullptr : new CString(name.c_str());
}

CString* CPathTemplate::CContext::GetVideoFormat() const { return FormatOf(videos_); }
CString* CPathTemplate::CContext::GetAudioFormat() const { return FormatOf(audios_); }
CString* CPathTemplate::CContext::GetSubtitleFormat() const { return FormatOf(subtitles_); }

unsigned short CPathTemplate::CContext::GetLanguage() const {
  for (const auto* list : {&audios_, &subtitles_, &videos_})
    for (const MediaInfo& media : *list)
      if (media.language) return media.language;
  return 0;
}

unsigned short CPathTemplate::CContext::GetRegion() const {
  for (const auto* list : {&audios_, &subtitles_, &videos_})
    for (const MediaInfo& media : *list)
      if (media.region) return media.region;
  return 0;
}

int CPathTemplate::CContext::GetPid() const {
  for (const auto* list : {&videos_, &audios_, &subtitles_})
    for (const MediaInfo& media : *list)
      if (media.pid > 0) return media.pid;
  return 0;
}

long long CPathTemplate::CContext::GetBitRate() const {
  // A file's bit rate is that of all its media together.
  long long total = 0;
  for (const auto* list : {&videos_, &audios_, &subtitles_})
    for (const MediaInfo& media : *list)
      if (media.bitRate > 0) total += media.bitRate;
  return total;
}

CString* CPathTemplate::CContext::GetChannelLayout(const MediaInfo& audio) {
  int main = 0;
  int lfe = 0;
  if (!audio.channelLabels.empty()) {
    for (int label : audio.channelLabels) ++(IsLfe(label) ? lfe : main);
  } else {
    // Without labels the usual layouts of the common channel counts.
    main = audio.channels;
    if (audio.channels == 6 || audio.channels == 8) {
      main = audio.channels - 1;
      lfe = 1;
    }
  }
  if (main + lfe <= 0) return nullptr;
  return CString::WithFormat("%d%d", main, lfe);
}

std::string CPathTemplate::CContext::UnpackLetters(unsigned short code) {
  if (code == 0) return std::string();
  std::string letters;
  letters += static_cast<char>(((code >> 10) & 31) | 0x60);
  letters += static_cast<char>(((code >> 5) & 31) | 0x60);
  letters += static_cast<char>((code & 31) | 0x60);
  return letters;
}

std::string CPathTemplate::CContext::GetLanguageAlpha2(const std::string& alpha3) { return Lookup(Languages, alpha3); }
std::string CPathTemplate::CContext::GetRegionAlpha2(const std::string& alpha3) { return Lookup(Regions, alpha3); }

void CPathTemplate::CContext::AddTexts(CProperties* values) const {
  PutText(values, "package", package_);
  PutText(values, "session", session_);
  PutText(values, "init", initialization_);
  PutText(values, "kid", kid_);
  PutText(values, "container", container_);
  PutText(values, "playlist_name", playlistName_);
  PutText(values, "title", title_);
  PutText(values, "extension", extension_);
  PutText(values, "media", mediaType_);
  PutText(values, "data", data_);
  if (hasGuid_) {
    char text[Guid::MaxStringLength];
    PutText(values, "uuid", std::string(guid_.ToString('D', text)));
  }
}

void CPathTemplate::CContext::AddNumbers(CProperties* values) const {
  if (segmentVariable_) {
    PutText(values, "segment", segmentVariable_);
  } else if (segmentIndex_ >= 0) {
    values->SetProperty(PropertyName("segment"), segmentIndex_);
  }
  if (presentationVariable_) {
    PutText(values, "time", presentationVariable_);
  } else if (presentationTime_ >= 0) {
    values->SetProperty(PropertyName("time"), presentationTime_);
  }
  if (directoryIndex_ >= 0) values->SetProperty(PropertyName("directory"), directoryIndex_);
  if (trackIndex_ >= 0) values->SetProperty(PropertyName("track"), trackIndex_);
}

void CPathTemplate::CContext::AddMedia(CProperties* values) const {
  const MediaInfo* first = FirstMedia();
  if (first) PutText(values, "format", GetFormatName(first->format));
  if (HasVideo()) PutText(values, "video_format", GetFormatName(videos_.front().format));
  if (HasAudio()) PutText(values, "audio_format", GetFormatName(audios_.front().format));
  if (HasSubtitle()) PutText(values, "subtitle_format", GetFormatName(subtitles_.front().format));
  if (int pid = GetPid(); pid > 0) values->SetProperty(PropertyName("pid"), pid);
  if (long long bps = GetBitRate(); bps > 0) {
    values->SetProperty(PropertyName("bps"), bps);
    values->SetProperty(PropertyName("kbps"), (bps + 500) / 1000);
    values->SetProperty(PropertyName("mbps"), (bps + 500000) / 1000000);
  }
  if (HasVideo() && videos_.front().width > 0) values->SetProperty(PropertyName("width"), videos_.front().width);
  if (HasVideo() && videos_.front().height > 0) values->SetProperty(PropertyName("height"), videos_.front().height);
  if (HasAudio()) {
    if (audios_.front().channels > 0) values->SetProperty(PropertyName("channels"), audios_.front().channels);
    RObject<CString> layout(GetChannelLayout(audios_.front()));
    PutText(values, "layout", layout.Get());
  }
}

void CPathTemplate::CContext::AddLanguages(CProperties* values) const {
  std::string language = UnpackLetters(GetLanguage());
  if (!language.empty()) {
    PutText(values, "language3", language);
    PutText(values, "LANGUAGE3", ToUpper(language));
    // Without a two-letter code the three letters stand in.
    std::string alpha2 = GetLanguageAlpha2(language);
    if (alpha2.empty()) alpha2 = language;
    PutText(values, "language", alpha2);
    PutText(values, "LANGUAGE", ToUpper(alpha2));
  }
  std::string region = UnpackLetters(GetRegion());
  if (!region.empty()) {
    PutText(values, "region3", region);
    PutText(values, "REGION3", ToUpper(region));
    std::string alpha2 = GetRegionAlpha2(region);
    if (alpha2.empty()) alpha2 = region;
    PutText(values, "region", alpha2);
    PutText(values, "REGION", ToUpper(alpha2));
  }
}

void CPathTemplate::CContext::AddTimes(CProperties* values) const {
  DateTime now = DateTime::UtcNow();
  char text[DateTime::MaxStringLength];
  PutText(values, "now", std::string(now.ToString('s', text)));
  PutText(values, "date", std::string(now.ToString('o', text)));
}

CProperties* CPathTemplate::CContext::GetValues() const {
  auto* values = new CProperties();
  AddTexts(values);
  AddNumbers(values);
  AddMedia(values);
  AddLanguages(values);
  AddTimes(values);
  return values;
}

CVariant* CPathTemplate::CContext::GetValue(const char* token) const {
  if (!token) return nullptr;
  if (!values_) values_ = GetValues();
  return values_->GetProperty(PropertyName(token));
}

}  // namespace Corvane::Mox
