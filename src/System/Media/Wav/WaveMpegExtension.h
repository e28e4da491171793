#pragma once
// CWaveMpegExtension ("mext"): the MPEG audio extension of Broadcast Wave:
// sound information, frame size, ancillary data length and definition,
// followed by 4 reserved bytes.

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CWaveMpegExtension : public CWaveChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("mext");
  static constexpr unsigned int PayloadSize = 12;

  CWaveMpegExtension();
  CWaveMpegExtension(long long position, unsigned int size);

  unsigned short GetSoundInformation() const { return fields_[0]; }
  unsigned short GetFrameSize() const { return fields_[1]; }
  unsigned short GetAncillaryDataLength() const { return fields_[2]; }
  unsigned short GetAncillaryDataDefinition() const { return fields_[3]; }
  void SetSoundInformation(unsigned short value) { fields_[0] = value; }
  void SetFrameSize(unsigned short value) { fields_[1] = value; }
  void SetAncillaryDataLength(unsigned short value) { fields_[2] = value; }
  void SetAncillaryDataDefinition(unsigned short value) { fields_[3] = value; }

  unsigned int GetSize() const override { return PayloadSize; }
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) override;

 private:
  unsigned short fields_[4];
};

}  // namespace Corvane::Mox
