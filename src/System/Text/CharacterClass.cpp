#include "System/Text/CharacterClass.h"

#include <locale.h>
#include <wctype.h>

namespace Corvane::Mox::CharacterClass {

namespace {

// Created once and kept for the life of the process: locale objects are
// immutable and may be used from any thread.
locale_t Utf8Locale() {
  static const locale_t locale = [] {
    locale_t l = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    if (!l) l = newlocale(LC_CTYPE_MASK, "C.utf8", static_cast<locale_t>(nullptr));
    return l ? l : LC_GLOBAL_LOCALE;
  }();
  return locale;
}

}  // namespace

wchar_t ToLowerFromTable(wchar_t c) {
  return static_cast<wchar_t>(towlower_l(static_cast<wint_t>(c), Utf8Locale()));
}

wchar_t ToUpperFromTable(wchar_t c) {
  return static_cast<wchar_t>(towupper_l(static_cast<wint_t>(c), Utf8Locale()));
}

bool IsSpaceFromTable(wchar_t c) { return iswspace_l(static_cast<wint_t>(c), Utf8Locale()) != 0; }

bool IsDigitFromTable(wchar_t c) { return iswdigit_l(static_cast<wint_t>(c), Utf8Locale()) != 0; }

}  // namespace Corvane::Mox::CharacterClass
