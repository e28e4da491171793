#include "System/Media/Container/MediaReader.h"

#include "System/Media/MediaProperties.h"

namespace Corvane::Mox {

const char* CMediaReader::GetPropertyContextName(int context) {
  static const char* const kNames[ContextCount] = {"unspecified", "container", "essence"};
  return context >= 0 && context < ContextCount ? kNames[context] : nullptr;
}

void CMediaReader::ThrowBadContext(int context) { throw ResultArgumentOutOfRange("property context %d", context); }

void CMediaReader::CheckTimeScale(long long timeScale) {
  if (timeScale < 1 || timeScale > 2000000000) throw ResultArgumentOutOfRange("time scale %lld", timeScale);
}

unsigned short CMediaReader::PackLanguage(char a, char b, char c) { return CMediaProperties::PackLanguageCode(a, b, c); }

void CMediaReader::UnpackLanguage(unsigned short language, char& a, char& b, char& c) {
  CMediaProperties::UnpackLanguageCode(language, a, b, c);
}

Result CMediaReader::PackRegion(char a, char b, unsigned short& region) {
  region = 0;
  const char alpha2[] = {a, b, 0};
  const char* alpha3 = a && b ? CMediaProperties::ConvertRegionToAlpha3IfAlpha2(alpha2) : nullptr;
  if (!alpha3) return ResultInvalidArgument("unknown region '%.2s'", alpha2);
  region = CMediaProperties::PackRegionCode(alpha3[0], alpha3[1], alpha3[2]);
  return Result();
}

void CMediaReader::UnpackRegion(unsigned short region, char& a, char& b) {
  a = b = 0;
  if (!region) return;
  char alpha3[4] = {};
  CMediaProperties::UnpackRegionCode(region, alpha3[0], alpha3[1], alpha3[2]);
  if (const char* alpha2 = CMediaProperties::ConvertRegionAlpha3ToAlpha2(alpha3)) {
    a = alpha2[0];
    b = alpha2[1];
  }
}

}  // namespace Corvane::Mox
