#include "System/Media/Audio/ImaAdpcmExtension.h"

namespace Corvane::Mox {

CImaAdpcmExtension::CImaAdpcmExtension(int samplesPerBlock) : CObject(TypeCode), samplesPerBlock_(samplesPerBlock) {}

CImaAdpcmExtension* CImaAdpcmExtension::Create(const unsigned char* bytes, int count) {
  if (!bytes || count < 2) return nullptr;
  return new CImaAdpcmExtension(bytes[0] | (bytes[1] << 8));
}

}  // namespace Corvane::Mox
