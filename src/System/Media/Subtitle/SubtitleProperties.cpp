#include "System/Media/Subtitle/SubtitleProperties.h"

#include <numeric>

namespace Corvane::Mox {

CSubtitleProperties::CSubtitleProperties() : CMediaProperties(TypeCode, nullptr) {}

CSubtitleProperties::CSubtitleProperties(const CSubtitleProperties* source) : CMediaProperties(TypeCode, source) {}

bool CSubtitleProperties::IsType(unsigned int type) const { return type == TypeCode || CMediaProperties::IsType(type); }

// The rate reduced, so that 50/2 and 25/1 hash alike.
void CSubtitleProperties::HashFields(unsigned int& hash) const {
  Rational<long long> rate = GetMediaSampleRate();
  long long g = rate.numerator && rate.denominator ? std::gcd(rate.numerator, rate.denominator) : 0;
  Hash(hash, static_cast<unsigned int>(g ? rate.numerator / g : 0));
  Hash(hash, static_cast<unsigned int>(g ? rate.denominator / g : 0));
}

}  // namespace Corvane::Mox
