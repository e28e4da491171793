#include "System/Media/Audio/AudioProperties.h"

#include <cstring>
#include <cstdlib>

#include "System/FourString.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/MediaPropertyName.h"
#include "System/Text.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

// Short names of speaker labels, with the alternative spellings accepted
// when channel names are parsed. The "Ctr" row carries label 16 like "Ltr",
// so 16 prints as "Ltr" and label 17 has no name.
struct Speaker {
  int label;
  const char* name;
  const char* alternative;
  const char* second;
};

const Speaker kSpeakers[] = {
    {1, "L", "FL", nullptr},      {2, "R", "FR", nullptr},       {3, "C", "FC", nullptr},
    {4, "LFE", nullptr, nullptr}, {5, "Ls", "BL", nullptr},      {6, "Rs", "BR", nullptr},
    {7, "Lc", "FLC", nullptr},    {8, "Rc", "FRC", nullptr},     {9, "Cs", "BC", nullptr},
    {10, "Lsd", "SL", nullptr},   {11, "Rsd", "SR", nullptr},    {12, "Ts", "TC", nullptr},
    {13, "Ltf", "TFL", nullptr},  {14, "Ctf", "TFC", nullptr},   {15, "Rtf", "TFR", nullptr},
    {16, "Ltr", "TBL", "Trl"},    {16, "Ctr", "Trc", "TBC"},     {18, "Rtr", "TBR", "Trr"},
    {19, "Lts", "TSL", nullptr},  {20, "Rts", "TSR", nullptr},   {33, "Lt", nullptr, nullptr},
    {34, "Rt", nullptr, nullptr}, {35, "M", nullptr, nullptr},   {65, "Lw", nullptr, nullptr},
    {66, "Rw", nullptr, nullptr}, {68, "LFE2", nullptr, nullptr}, {69, "Lrs", nullptr, nullptr},
    {70, "Rrs", nullptr, nullptr}, {4096, "O", nullptr, nullptr},
};

constexpr int kDiscreteLabel = 65536;
constexpr int kDiscreteCount = 24;

const char* const kContentTypes[] = {"commentary",       "complete_mix",        "dialog",
                                     "effects",          "hearing_impaired",    "international_sound",
                                     "music",            "clean_effects",       "secondary_audio_program",
                                     "visually_impaired"};

const CAudioProperties::ChannelLayout kLayouts[] = {
#define MOX_CHANNEL_LAYOUT(standard, layout, channels, ...) {standard, layout, channels, {__VA_ARGS__}},
#include "System/Media/Audio/ChannelLayouts.def"
#undef MOX_CHANNEL_LAYOUT
    {0, 0, 0, {}},  // end of the table
};

}  // namespace

// The derived sample layout of a format: a value of −1 keeps the stored one;
// bytes per frame is a multiple of the channel count, or −1.
struct CAudioProperties::Derived {
  unsigned int format;
  int bitsPerSample;
  int bytesPerSample;
  int bytesPerFrameFactor;
  int framesPerPacket;
};

const CAudioProperties::Derived* CAudioProperties::FindDerived(unsigned int format) {
  static const Derived kDerived[] = {
      {F("int8"), 8, 1, 1, 1},     {F("raw "), 8, 1, 1, 1},     {F("alaw"), 8, 1, 1, 1},
      {F("ulaw"), 8, 1, 1, 1},     {F("twos"), 16, 2, 2, 1},    {F("sowt"), 16, 2, 2, 1},
      {F("in20"), 20, 3, 3, 1},    {F("02ni"), 20, 3, 3, 1},    {F("in24"), 24, 3, 3, 1},
      {F("42ni"), 24, 3, 3, 1},    {F("u24b"), 24, 3, 3, 1},    {F("u24l"), 24, 3, 3, 1},
      {F("in32"), 32, 4, 4, 1},    {F("23ni"), 32, 4, 4, 1},    {F("fl32"), 32, 4, 4, 1},
      {F("23lf"), 32, 4, 4, 1},    {F("fl64"), 64, 8, 8, 1},    {F("46lf"), 64, 8, 8, 1},
      {F("331m"), -1, 4, -1, 1},   {F("ac-3"), 16, 0, -1, 1536}, {F("ec-3"), 16, 0, -1, 1536},
      {F("mp4a"), -1, 0, -1, 1024}, {F("gsm "), -1, 0, -1, 320}, {F("WMA1"), -1, 0, -1, 8192},
      {F("WMA2"), -1, 0, -1, 8192}, {F("WMAL"), -1, 0, -1, 8192}, {F("WMAP"), -1, 0, -1, 8192},
  };
  for (const Derived& row : kDerived) {
    if (row.format == format) return &row;
  }
  return nullptr;
}

CAudioProperties::CAudioProperties()
    : CMediaProperties(TypeCode, nullptr),
      channels_(0),
      labels_(),
      programs_(),
      contents_(),
      codings_(),
      bitsPerSample_(0),
      bytesPerFrame_(0),
      bytesPerPacket_(0),
      framesPerPacket_(0) {}

CAudioProperties::CAudioProperties(const CAudioProperties* source)
    : CMediaProperties(TypeCode, source),
      channels_(source->channels_),
      bitsPerSample_(source->bitsPerSample_),
      bytesPerFrame_(source->bytesPerFrame_),
      bytesPerPacket_(source->bytesPerPacket_),
      framesPerPacket_(source->framesPerPacket_) {
  std::memcpy(labels_, source->labels_, sizeof labels_);
  std::memcpy(programs_, source->programs_, sizeof programs_);
  std::memcpy(contents_, source->contents_, sizeof contents_);
  std::memcpy(codings_, source->codings_, sizeof codings_);
}

bool CAudioProperties::IsType(unsigned int type) const { return type == TypeCode || CMediaProperties::IsType(type); }

Result CAudioProperties::SetSampleRate(long long rate) {
  if (rate < 0) return ResultArgumentOutOfRange();
  return SetTimeScale(rate);
}

Result CAudioProperties::SetChannels(int channels) {
  if (channels < 0 || channels > MaximumChannels) return ResultArgumentOutOfRange();
  channels_ = channels;
  return Result();
}

// Per-channel fields ---------------------------------------------------------

namespace {

bool ValidChannel(int channel) { return channel >= 0 && channel < CAudioProperties::MaximumChannels; }

}  // namespace

int CAudioProperties::GetChannelLabel(int channel) const { return ValidChannel(channel) ? labels_[channel] : 0; }

Result CAudioProperties::GetChannelLabel(int channel, int& label) const {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  label = labels_[channel];
  return Result();
}

Result CAudioProperties::SetChannelLabel(int channel, int label) {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  labels_[channel] = label;
  return Result();
}

int CAudioProperties::GetChannelProgram(int channel) const { return ValidChannel(channel) ? programs_[channel] : 0; }

Result CAudioProperties::GetChannelProgram(int channel, int& program) const {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  program = programs_[channel];
  return Result();
}

Result CAudioProperties::SetChannelProgram(int channel, int program) {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  programs_[channel] = program;
  return Result();
}

int CAudioProperties::GetChannelContent(int channel) const { return ValidChannel(channel) ? contents_[channel] : 0; }

Result CAudioProperties::GetChannelContent(int channel, int& content) const {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  content = contents_[channel];
  return Result();
}

Result CAudioProperties::SetChannelContent(int channel, int content) {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  contents_[channel] = content;
  return Result();
}

unsigned int CAudioProperties::GetChannelCoding(int channel) const {
  return ValidChannel(channel) ? codings_[channel] : 0;
}

Result CAudioProperties::GetChannelCoding(int channel, unsigned int& coding) const {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  coding = codings_[channel];
  return Result();
}

Result CAudioProperties::SetChannelCoding(int channel, unsigned int coding) {
  if (!ValidChannel(channel)) return ResultArgumentOutOfRange();
  codings_[channel] = coding;
  return Result();
}

Result CAudioProperties::SetChannelLayout(const ChannelLayout* layout) {
  if (!layout) return ResultArgumentNull();
  if (layout->channels < 0 || layout->channels > MaximumLayoutChannels) return ResultArgumentOutOfRange();
  channels_ = layout->channels;
  for (int i = 0; i < layout->channels; ++i) {
    labels_[i] = layout->assignments[i].label;
    programs_[i] = layout->assignments[i].program;
    contents_[i] = layout->assignments[i].content;
  }
  return Result();
}

// Sample layout ---------------------------------------------------------------

int CAudioProperties::GetBitsPerSample() const {
  const Derived* d = FindDerived(GetFormat());
  return d && d->bitsPerSample >= 0 ? d->bitsPerSample : bitsPerSample_;
}

Result CAudioProperties::SetBitsPerSample(int bits) {
  if (bits < 0 || bits > 64) return ResultArgumentOutOfRange();
  bitsPerSample_ = bits;
  return Result();
}

int CAudioProperties::GetBytesPerSample(unsigned int format) {
  const Derived* d = FindDerived(format);
  return d ? d->bytesPerSample : 0;
}

int CAudioProperties::GetBytesPerFrame() const {
  const Derived* d = FindDerived(GetFormat());
  return d && d->bytesPerFrameFactor >= 0 ? d->bytesPerFrameFactor * channels_ : bytesPerFrame_;
}

Result CAudioProperties::SetBytesPerFrame(int bytes) {
  if (bytes < 0) return ResultArgumentOutOfRange();
  bytesPerFrame_ = bytes;
  return Result();
}

// Equal to the bytes per frame wherever a packet is one frame of PCM.
int CAudioProperties::GetBytesPerPacket() const {
  const Derived* d = FindDerived(GetFormat());
  return d && d->bytesPerSample > 0 ? GetBytesPerFrame() : bytesPerPacket_;
}

Result CAudioProperties::SetBytesPerPacket(int bytes) {
  if (bytes < 0) return ResultArgumentOutOfRange();
  bytesPerPacket_ = bytes;
  return Result();
}

int CAudioProperties::GetFramesPerPacket() const {
  const Derived* d = FindDerived(GetFormat());
  return d ? d->framesPerPacket : framesPerPacket_;
}

Result CAudioProperties::SetFramesPerPacket(int frames) {
  if (frames < 0) return ResultArgumentOutOfRange();
  framesPerPacket_ = frames;
  return Result();
}

int CAudioProperties::GetDecodeDelay() const {
  int delay = 0;
  GetProperty(MediaPropertyName::PrimingSamples, delay);
  return delay;
}

// Vocabulary ------------------------------------------------------------------

const char* CAudioProperties::GetSpeakerIdentifier(int label) {
  static const char* const kDiscrete[kDiscreteCount] = {"1",  "2",  "3",  "4",  "5",  "6",  "7",  "8",
                                                        "9",  "10", "11", "12", "13", "14", "15", "16",
                                                        "17", "18", "19", "20", "21", "22", "23", "24"};
  if (label >= kDiscreteLabel && label < kDiscreteLabel + kDiscreteCount) return kDiscrete[label - kDiscreteLabel];
  for (const Speaker& speaker : kSpeakers) {
    if (speaker.label == label) return speaker.name;
  }
  return "";
}

int CAudioProperties::ParseSpeakerIdentifier(const char* name) {
  if (!name || !*name) return 0;
  for (const Speaker& speaker : kSpeakers) {
    for (const char* spelling : {speaker.name, speaker.alternative, speaker.second}) {
      if (spelling && std::strcmp(spelling, name) == 0) return speaker.label;
    }
  }
  char* end = nullptr;
  long n = std::strtol(name, &end, 10);
  return *end == 0 && n >= 1 && n <= kDiscreteCount ? kDiscreteLabel + static_cast<int>(n) - 1 : 0;
}

const char* CAudioProperties::GetContentType(int content) {
  return content >= 1 && content <= 10 ? kContentTypes[content - 1] : "";
}

const CAudioProperties::ChannelLayout* CAudioProperties::GetChannelLayout(unsigned int standard, unsigned int layout) {
  for (const ChannelLayout& entry : kLayouts) {
    if (entry.standard == 0) break;
    if (entry.standard == standard && entry.layout == layout) return &entry;
  }
  return nullptr;
}

int CAudioProperties::GetChannelLayoutCount() { return static_cast<int>(sizeof(kLayouts) / sizeof(kLayouts[0])) - 1; }

const CAudioProperties::ChannelLayout* CAudioProperties::GetChannelLayoutAt(int index) {
  return index >= 0 && index < GetChannelLayoutCount() ? &kLayouts[index] : nullptr;
}

// Binary form -----------------------------------------------------------------

Result CAudioProperties::WriteFields(CBinaryWriter* writer) const {
  Result r = writer->WriteInt32(channels_);
  for (int i = 0; r.Succeeded() && i < channels_; ++i) r = writer->WriteInt32(labels_[i]);
  for (int i = 0; r.Succeeded() && i < channels_; ++i) r = writer->WriteInt32(programs_[i]);
  for (int i = 0; r.Succeeded() && i < channels_; ++i) r = writer->WriteInt32(contents_[i]);
  for (int i = 0; r.Succeeded() && i < channels_; ++i) r = writer->WriteFour(codings_[i]);
  if (r.Succeeded()) r = writer->WriteInt32(bitsPerSample_);
  if (r.Succeeded()) r = writer->WriteInt32(bytesPerFrame_);
  if (r.Succeeded()) r = writer->WriteInt32(bytesPerPacket_);
  if (r.Succeeded()) r = writer->WriteInt32(framesPerPacket_);
  return r;
}

Result CAudioProperties::ReadFields(CBinaryReader* reader, int size) {
  int channels = 0;
  Result r = reader->ReadInt32(&channels);
  if (r.Failed()) return r;
  if (channels < 0 || channels > MaximumChannels) return ResultFormatError("%d channels", channels);
  if (size != 4 + 16 * channels + 16) return ResultFormatError("audio description size %d", size + 40);
  int labels[MaximumChannels], programs[MaximumChannels], contents[MaximumChannels];
  unsigned int codings[MaximumChannels];
  for (int i = 0; r.Succeeded() && i < channels; ++i) r = reader->ReadInt32(&labels[i]);
  for (int i = 0; r.Succeeded() && i < channels; ++i) r = reader->ReadInt32(&programs[i]);
  for (int i = 0; r.Succeeded() && i < channels; ++i) r = reader->ReadInt32(&contents[i]);
  for (int i = 0; r.Succeeded() && i < channels; ++i) r = reader->ReadFour(&codings[i]);
  int tail[4] = {};
  for (int i = 0; r.Succeeded() && i < 4; ++i) r = reader->ReadInt32(&tail[i]);
  if (r.Failed()) return r;
  channels_ = channels;
  std::memset(labels_, 0, sizeof labels_);
  std::memset(programs_, 0, sizeof programs_);
  std::memset(contents_, 0, sizeof contents_);
  std::memset(codings_, 0, sizeof codings_);
  for (int i = 0; i < channels; ++i) {
    labels_[i] = labels[i];
    programs_[i] = programs[i];
    contents_[i] = contents[i];
    codings_[i] = codings[i];
  }
  bitsPerSample_ = tail[0];
  bytesPerFrame_ = tail[1];
  bytesPerPacket_ = tail[2];
  framesPerPacket_ = tail[3];
  return Result();
}

// Identity and description -----------------------------------------------------

void CAudioProperties::HashFields(unsigned int& hash) const {
  Hash(hash, static_cast<unsigned int>(GetSampleRate()));
  Hash(hash, static_cast<unsigned int>(channels_));
  Hash(hash, static_cast<unsigned int>(GetBitsPerSample()));
}

bool CAudioProperties::SameFields(const CMediaProperties* base) const {
  auto* other = static_cast<const CAudioProperties*>(base);
  if (!CMediaProperties::SameFields(other) || channels_ != other->channels_ ||
      GetBitsPerSample() != other->GetBitsPerSample() || GetBytesPerFrame() != other->GetBytesPerFrame() ||
      GetBytesPerPacket() != other->GetBytesPerPacket() || GetFramesPerPacket() != other->GetFramesPerPacket())
    return false;
  for (int i = 0; i < channels_; ++i) {
    if (labels_[i] != other->labels_[i] || programs_[i] != other->programs_[i] ||
        contents_[i] != other->contents_[i] || codings_[i] != other->codings_[i])
      return false;
  }
  return true;
}

void CAudioProperties::Describe(CProperties* bag) const {
  RObject<CVariantArray> channels(new CVariantArray(channels_));
  for (int i = 0; i < channels_; ++i) {
    RObject<CProperties> channel(new CProperties());
    channel->SetProperty("label", labels_[i]);
    if (*GetSpeakerIdentifier(labels_[i])) channel->SetPropertyDescription("label", GetSpeakerIdentifier(labels_[i]));
    channel->SetProperty("program", programs_[i]);
    channel->SetProperty("content", contents_[i]);
    if (*GetContentType(contents_[i])) channel->SetPropertyDescription("content", GetContentType(contents_[i]));
    channel->SetFourProperty("coding", codings_[i]);
    RObject<CVariant> value(new CVariant(channel.Get()));
    channels->Set(i, value.Get());
  }
  bag->SetProperty("channels", channels.Get());
  bag->SetProperty("bits_per_sample", GetBitsPerSample());
}

}  // namespace Corvane::Mox
