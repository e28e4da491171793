#include "System/Media/Audio/AdpcmExtension.h"

#include <utility>

namespace Corvane::Mox {

namespace {

short ReadShort(const unsigned char* bytes) {
  return static_cast<short>(static_cast<unsigned short>(bytes[0] | (bytes[1] << 8)));
}

}  // namespace

CAdpcmExtension::CAdpcmExtension(int samplesPerBlock, std::vector<short> coefficients)
    : CObject(TypeCode), samplesPerBlock_(samplesPerBlock), coefficients_(std::move(coefficients)) {}

CAdpcmExtension* CAdpcmExtension::Create(const unsigned char* bytes, int count) {
  if (!bytes || count < 4) return nullptr;
  const int samplesPerBlock = static_cast<unsigned short>(ReadShort(bytes));
  const int declared = static_cast<unsigned short>(ReadShort(bytes + 2));
  // A damaged count cannot make us read past the bytes we have.
  const int available = (count - 4) / 4;
  const int pairs = declared < available ? declared : available;
  std::vector<short> coefficients;
  coefficients.reserve(static_cast<size_t>(pairs) * 2);
  for (int i = 0; i < pairs * 2; ++i) coefficients.push_back(ReadShort(bytes + 4 + 2 * i));
  return new CAdpcmExtension(samplesPerBlock, std::move(coefficients));
}

short CAdpcmExtension::GetCoefficient1(int i) const {
  return i >= 0 && i < GetPredictorCount() ? coefficients_[static_cast<size_t>(i) * 2] : 0;
}

short CAdpcmExtension::GetCoefficient2(int i) const {
  return i >= 0 && i < GetPredictorCount() ? coefficients_[static_cast<size_t>(i) * 2 + 1] : 0;
}

}  // namespace Corvane::Mox
