// The language and region helpers of CMediaProperties, over the ISO 639-2
// and ISO 3166-1 tables.
#include <cctype>
#include <cstring>

#include "System/Media/MediaProperties.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

struct Language {
  const char* terminology;    // ISO 639-2/T
  const char* bibliographic;  // ISO 639-2/B (equal to /T where the forms agree)
  const char* alpha2;         // ISO 639-1 or ""
  const char* region;         // a two-letter region conventionally paired, or ""
  const char* name;
};

const Language kLanguages[] = {
#define MOX_LANGUAGE(t, b, a2, region, name) {t, b, a2, region, name},
#include "System/Media/Languages.def"
#undef MOX_LANGUAGE
};

struct Region {
  const char* alpha2;
  const char* alpha3;
  int numeric;
  const char* name;
};

const Region kRegions[] = {
#define MOX_REGION(a2, a3, numeric, name) {a2, a3, numeric, name},
#include "System/Media/Regions.def"
#undef MOX_REGION
};

bool SameLetters(const char* a, const char* b) {
  for (; *a && *b; ++a, ++b) {
    if (std::tolower(static_cast<unsigned char>(*a)) != std::tolower(static_cast<unsigned char>(*b))) return false;
  }
  return *a == *b;
}

const Language* FindLanguage(const char* code) {
  if (!code) return nullptr;
  size_t length = std::strlen(code);
  for (const Language& language : kLanguages) {
    if (length == 2 && *language.alpha2 && SameLetters(language.alpha2, code)) return &language;
    if (length == 3 && (SameLetters(language.terminology, code) || SameLetters(language.bibliographic, code)))
      return &language;
  }
  return nullptr;
}

const Region* FindRegion(const char* code) {
  if (!code) return nullptr;
  size_t length = std::strlen(code);
  for (const Region& region : kRegions) {
    if ((length == 2 && SameLetters(region.alpha2, code)) || (length == 3 && SameLetters(region.alpha3, code)))
      return &region;
  }
  return nullptr;
}

// The three letters of a packed code, lower case.
void Letters(unsigned short code, char (&text)[4]) {
  CMediaProperties::UnpackLanguageCode(code, text[0], text[1], text[2]);
  text[3] = 0;
}

unsigned short Pack(const char* text) { return CMediaProperties::PackLanguageCode(text[0], text[1], text[2]); }

}  // namespace

const char* CMediaProperties::ConvertToTerminologyCodeIfBibliographicCode(const char* code) {
  const Language* language = code && std::strlen(code) == 3 ? FindLanguage(code) : nullptr;
  return language && SameLetters(language->bibliographic, code) ? language->terminology : code;
}

const char* CMediaProperties::ConvertToBibliographicCodeIfTerminologyCode(const char* code) {
  const Language* language = code && std::strlen(code) == 3 ? FindLanguage(code) : nullptr;
  return language && SameLetters(language->terminology, code) ? language->bibliographic : code;
}

unsigned short CMediaProperties::ConvertToTerminologyCodeIfBibliographicCode(unsigned short code) {
  char text[4];
  Letters(code, text);
  const char* converted = ConvertToTerminologyCodeIfBibliographicCode(text);
  return converted == text ? code : Pack(converted);
}

unsigned short CMediaProperties::ConvertToBibliographicCodeIfTerminologyCode(unsigned short code) {
  char text[4];
  Letters(code, text);
  const char* converted = ConvertToBibliographicCodeIfTerminologyCode(text);
  return converted == text ? code : Pack(converted);
}

const char* CMediaProperties::ConvertToAlpha3IfAlpha2(const char* code) {
  if (!code || std::strlen(code) != 2) return code;
  const Language* language = FindLanguage(code);
  return language ? language->bibliographic : nullptr;
}

const char* CMediaProperties::ConvertToAlpha3_TIfAlpha2(const char* code) {
  if (!code || std::strlen(code) != 2) return code;
  const Language* language = FindLanguage(code);
  return language ? language->terminology : nullptr;
}

const char* CMediaProperties::ConvertAlpha3ToAlpha2(const char* code) {
  const Language* language = code && std::strlen(code) == 3 ? FindLanguage(code) : nullptr;
  return language && *language->alpha2 ? language->alpha2 : nullptr;
}

const char* CMediaProperties::ConvertNameToAlpha2(const char* name) {
  if (!name) return nullptr;
  for (const Language& language : kLanguages) {
    if (*language.alpha2 && SameLetters(language.name, name)) return language.alpha2;
  }
  return nullptr;
}

const char* CMediaProperties::ConvertRegionToAlpha3IfAlpha2(const char* code) {
  if (!code || std::strlen(code) != 2) return code;
  const Region* region = FindRegion(code);
  return region ? region->alpha3 : nullptr;
}

const char* CMediaProperties::ConvertRegionAlpha3ToAlpha2(const char* code) {
  const Region* region = code && std::strlen(code) == 3 ? FindRegion(code) : nullptr;
  return region ? region->alpha2 : nullptr;
}

CString* CMediaProperties::ConvertToRfc5646(unsigned short language, unsigned short region) {
  char text[4];
  Letters(language, text);
  // The /T code first, then the /B code.
  const Language* entry = nullptr;
  for (const Language& candidate : kLanguages) {
    if (std::strcmp(candidate.terminology, text) == 0) {
      entry = &candidate;
      break;
    }
  }
  if (!entry) entry = FindLanguage(text);
  if (!entry || !*entry->alpha2) return nullptr;
  if (region == 0) {
    return *entry->region ? CString::WithFormat("%s-%s", entry->alpha2, entry->region)
                          : CString::WithString(entry->alpha2);
  }
  char regionText[4];
  Letters(region, regionText);
  const char* alpha2 = ConvertRegionAlpha3ToAlpha2(regionText);
  return alpha2 ? CString::WithFormat("%s-%s", entry->alpha2, alpha2) : nullptr;
}

}  // namespace Corvane::Mox
