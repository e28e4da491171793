#pragma once
// CWindowsAudioFormat: the WAVEFORMAT structure of RIFF files and of the
// decoder configuration of WAVE codecs, in its three forms: the plain 16-byte
// WAVEFORMAT, WAVEFORMATEX (cbSize and that many extra bytes) and
// WAVEFORMATEXTENSIBLE (tag 0xFFFE, whose extra bytes hold the valid bits,
// the channel mask and the sub-format GUID). The extra bytes are kept as
// read, so a structure written back is byte for byte the one read.
//
// Library audio format codes: PCM maps by width to "raw ", "sowt", "02ni",
// "42ni", "23ni"; IEEE float to "23lf" and "46lf"; any other tag to "ms"
// followed by the 16-bit tag (0x6D730000 | tag).

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {

class CAudioProperties;
class CBinaryReader;
class CBinaryWriter;
class CByteArray;

class CWindowsAudioFormat : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("wfmt");
  static constexpr unsigned short FormatPcm = 0x0001;
  static constexpr unsigned short FormatAdpcm = 0x0002;
  static constexpr unsigned short FormatIeeeFloat = 0x0003;
  static constexpr unsigned short FormatAlaw = 0x0006;
  static constexpr unsigned short FormatMulaw = 0x0007;
  static constexpr unsigned short FormatImaAdpcm = 0x0011;
  static constexpr unsigned short FormatGsm610 = 0x0031;
  static constexpr unsigned short FormatG726 = 0x0045;
  static constexpr unsigned short FormatMpeg = 0x0050;
  static constexpr unsigned short FormatMpegLayer3 = 0x0055;
  static constexpr unsigned short FormatExtensible = 0xFFFE;
  // "ms" in the two high bytes of a code made from a format tag.
  static constexpr unsigned int MicrosoftPrefix = 0x6D730000u;
  // Extra bytes of WAVEFORMATEXTENSIBLE: valid bits, mask, sub-format GUID.
  static constexpr int ExtensibleExtraBytes = 22;

  CWindowsAudioFormat();
  ~CWindowsAudioFormat() override;

  // Reads `size` bytes: the 16-byte WAVEFORMAT, and when size exceeds 16 the
  // cbSize field and up to cbSize extra bytes (never beyond size). Bytes of
  // size that the structure does not use are skipped.
  Result Read(CBinaryReader* reader, int size);
  // Writes GetSize() bytes.
  Result Write(CBinaryWriter* writer) const;
  // 16 for PCM without extra bytes; 18 + extra bytes otherwise.
  int GetSize() const;
  // A structure from raw bytes (a decoder configuration); acquired.
  static Result Parse(const unsigned char* bytes, int length, CWindowsAudioFormat*& format);
  static Result Parse(CByteArray* bytes, CWindowsAudioFormat*& format);
  // The structure as written (GetSize() bytes), acquired.
  CByteArray* ToByteArray() const;

  // The format tag; for WAVE_FORMAT_EXTENSIBLE the sub-format's tag.
  unsigned short GetFormat() const;
  // The tag as stored in the structure (0xFFFE for the extensible form).
  unsigned short GetFormatTag() const { return formatTag_; }
  bool IsExtensible() const;
  // The library's audio format code (see above); 0 for PCM or float of a
  // width that has no code.
  unsigned int GetAudioFormat() const;
  int GetChannels() const { return channels_; }
  unsigned int GetSamplesPerSecond() const { return samplesPerSecond_; }
  unsigned int GetBytesPerSecond() const { return bytesPerSecond_; }
  int GetBlockAlignment() const { return blockAlignment_; }
  int GetBitsPerSample() const { return bitsPerSample_; }
  // Extensible form: the valid bits per sample, else GetBitsPerSample().
  int GetValidBitsPerSample() const;
  // Extensible form: the speaker mask; 0 otherwise.
  unsigned int GetChannelMask() const;
  // The extra bytes after cbSize (acquired), null when there are none.
  CByteArray* GetExtraBytes() const;
  int GetExtraByteCount() const { return static_cast<int>(extra_.size()); }
  // The codec's view of the extra bytes, acquired: a CAdpcmExtension for tag
  // 2, a CImaAdpcmExtension for tag 0x11; null for every other tag or when
  // the extra bytes are too short.
  CObject* GetExtension() const;

  void SetFormatTag(unsigned short tag) { formatTag_ = tag; }
  void SetChannels(int channels) { channels_ = static_cast<unsigned short>(channels); }
  void SetSamplesPerSecond(unsigned int rate) { samplesPerSecond_ = rate; }
  void SetBytesPerSecond(unsigned int bytes) { bytesPerSecond_ = bytes; }
  void SetBlockAlignment(int bytes) { blockAlignment_ = static_cast<unsigned short>(bytes); }
  void SetBitsPerSample(int bits) { bitsPerSample_ = static_cast<unsigned short>(bits); }
  void SetExtraBytes(const unsigned char* bytes, int count);
  // Turns the structure into WAVE_FORMAT_EXTENSIBLE around the current tag.
  void SetExtensible(int validBitsPerSample, unsigned int channelMask);

  // Describes a track: format code, sample rate, channels, bits per sample,
  // block alignment as bytes per frame and per packet, frames per packet,
  // bit rate and, for the extensible form, the channel labels of the mask.
  Result GetProperties(CAudioProperties* properties) const;
  // The structure for a description. PCM (8 to 32-bit integers), float and
  // G.711 can be expressed; other formats fail with ResultNotSupported. The
  // extensible form is used when asked for.
  Result SetProperties(const CAudioProperties* properties, bool extensible);

  // Channel mask bit i is speaker label i + 1 (L, R, C, LFE, Ls, Rs, ...).
  static unsigned int GetChannelMask(const CAudioProperties* properties);
  // The format code of a tag and sample width (see above).
  static unsigned int GetAudioFormat(unsigned short tag, int bitsPerSample);

 private:
  // Frames in one block of the codec.
  int GetFramesPerPacket() const;

  unsigned short formatTag_;
  unsigned short channels_;
  unsigned int samplesPerSecond_;
  unsigned int bytesPerSecond_;
  unsigned short blockAlignment_;
  unsigned short bitsPerSample_;
  std::vector<unsigned char> extra_;
};

}  // namespace Corvane::Mox
