#include "System/Text/Iso6937Encoding.h"

#include <cwchar>
#include <string_view>
#include <vector>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// The bytes 0x80-0xFF. 0x80-0x9F are the C1 control codes; 0xC0-0xCF are the
// diacritic prefixes (handled separately) and, like the unassigned positions
// 0xD8-0xDB and 0xE5, hold 0.
constexpr wchar_t kHighHalf[128] = {
    // 0x80
    0x0080, 0x0081, 0x0082, 0x0083, 0x0084, 0x0085, 0x0086, 0x0087,
    0x0088, 0x0089, 0x008A, 0x008B, 0x008C, 0x008D, 0x008E, 0x008F,
    // 0x90
    0x0090, 0x0091, 0x0092, 0x0093, 0x0094, 0x0095, 0x0096, 0x0097,
    0x0098, 0x0099, 0x009A, 0x009B, 0x009C, 0x009D, 0x009E, 0x009F,
    // 0xA0: NBSP ¡ ¢ £ $ ¥ # § ¤ ‘ “ « ← ↑ → ↓
    0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x0024, 0x00A5, 0x0023, 0x00A7,
    0x00A4, 0x2018, 0x201C, 0x00AB, 0x2190, 0x2191, 0x2192, 0x2193,
    // 0xB0: ° ± ² ³ × µ ¶ · ÷ ’ ” » ¼ ½ ¾ ¿
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x00D7, 0x00B5, 0x00B6, 0x00B7,
    0x00F7, 0x2019, 0x201D, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF,
    // 0xC0: diacritic prefixes
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    // 0xD0: ― ¹ ® © ™ ♪ ¬ ¦ - - - - ⅛ ⅜ ⅝ ⅞
    0x2015, 0x00B9, 0x00AE, 0x00A9, 0x2122, 0x266A, 0x00AC, 0x00A6,
    0, 0, 0, 0, 0x215B, 0x215C, 0x215D, 0x215E,
    // 0xE0: Ω Æ Đ ª Ħ - Ĳ Ŀ Ł Ø Œ º Þ Ŧ Ŋ ŉ
    0x2126, 0x00C6, 0x0110, 0x00AA, 0x0126, 0, 0x0132, 0x013F,
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00DE, 0x0166, 0x014A, 0x0149,
    // 0xF0: ĸ æ đ ð ħ ı ĳ ŀ ł ø œ ß þ ŧ ŋ SHY
    0x0138, 0x00E6, 0x0111, 0x00F0, 0x0127, 0x0131, 0x0133, 0x0140,
    0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x0167, 0x014B, 0x00AD,
};

// For each diacritic prefix 0xC1-0xCF: the base characters it combines with
// and, position by position, the composed characters. A space after the
// prefix gives the spacing form of the diacritic. 0xC9 and 0xCC are
// reserved and combine with nothing.
struct Diacritic {
  const char* bases;
  const wchar_t* composed;
};

constexpr Diacritic kDiacritics[15] = {
    // 0xC1 grave
    {"AEIOUaeiou", L"\u00C0\u00C8\u00CC\u00D2\u00D9\u00E0\u00E8\u00EC\u00F2\u00F9"},
    // 0xC2 acute
    {" ACEILNORSUYZaceilnorsuyz",
     L"\u00B4\u00C1\u0106\u00C9\u00CD\u0139\u0143\u00D3\u0154\u015A\u00DA\u00DD\u0179"
     L"\u00E1\u0107\u00E9\u00ED\u013A\u0144\u00F3\u0155\u015B\u00FA\u00FD\u017A"},
    // 0xC3 circumflex
    {"ACEGHIJOSUWYaceghijosuwy",
     L"\u00C2\u0108\u00CA\u011C\u0124\u00CE\u0134\u00D4\u015C\u00DB\u0174\u0176"
     L"\u00E2\u0109\u00EA\u011D\u0125\u00EE\u0135\u00F4\u015D\u00FB\u0175\u0177"},
    // 0xC4 tilde
    {"AINOUainou", L"\u00C3\u0128\u00D1\u00D5\u0168\u00E3\u0129\u00F1\u00F5\u0169"},
    // 0xC5 macron
    {" AEIOUaeiou", L"\u00AF\u0100\u0112\u012A\u014C\u016A\u0101\u0113\u012B\u014D\u016B"},
    // 0xC6 breve
    {" AGUagu", L"\u02D8\u0102\u011E\u016C\u0103\u011F\u016D"},
    // 0xC7 dot above
    {" CEGIZcegz", L"\u02D9\u010A\u0116\u0120\u0130\u017B\u010B\u0117\u0121\u017C"},
    // 0xC8 diaeresis
    {" AEIOUYaeiouy", L"\u00A8\u00C4\u00CB\u00CF\u00D6\u00DC\u0178\u00E4\u00EB\u00EF\u00F6\u00FC\u00FF"},
    // 0xC9 reserved
    {"", L""},
    // 0xCA ring above
    {" AUau", L"\u02DA\u00C5\u016E\u00E5\u016F"},
    // 0xCB cedilla
    {" CGKLNRSTcgklnrst",
     L"\u00B8\u00C7\u0122\u0136\u013B\u0145\u0156\u015E\u0162\u00E7\u0123\u0137\u013C\u0146\u0157\u015F\u0163"},
    // 0xCC reserved
    {"", L""},
    // 0xCD double acute
    {" OUou", L"\u02DD\u0150\u0170\u0151\u0171"},
    // 0xCE ogonek
    {" AEIUaeiu", L"\u02DB\u0104\u0118\u012E\u0172\u0105\u0119\u012F\u0173"},
    // 0xCF caron
    {" CDELNRSTZcdelnrstz",
     L"\u02C7\u010C\u010E\u011A\u013D\u0147\u0158\u0160\u0164\u017D\u010D\u010F\u011B\u013E\u0148\u0159\u0161\u0165\u017E"},
};

constexpr unsigned char kFirstPrefix = 0xC1;
constexpr unsigned char kLastPrefix = 0xCF;

constexpr bool ListsMatch() {
  for (const Diacritic& d : kDiacritics)
    if (std::char_traits<char>::length(d.bases) != std::char_traits<wchar_t>::length(d.composed)) return false;
  return true;
}
static_assert(ListsMatch(), "every base letter needs its composed character");

// The composed character of base under the diacritic prefix, 0 when the
// combination does not exist.
wchar_t Compose(unsigned char prefix, unsigned char base) {
  const Diacritic& d = kDiacritics[prefix - kFirstPrefix];
  if (base == 0) return 0;
  const char* hit = std::char_traits<char>::find(d.bases, std::char_traits<char>::length(d.bases), static_cast<char>(base));
  return hit ? d.composed[hit - d.bases] : 0;
}

// The prefix and base byte that compose c; false when no diacritic does.
bool Decompose(wchar_t c, unsigned char& prefix, unsigned char& base) {
  for (int k = 0; k <= kLastPrefix - kFirstPrefix; ++k) {
    const wchar_t* hit = std::wcschr(kDiacritics[k].composed, c);
    if (!hit) continue;
    prefix = static_cast<unsigned char>(kFirstPrefix + k);
    base = static_cast<unsigned char>(kDiacritics[k].bases[hit - kDiacritics[k].composed]);
    return true;
  }
  return false;
}

// Appends the bytes of c (one or two), or nothing when c has no encoding.
void EncodeChar(wchar_t c, std::vector<unsigned char>& out) {
  // ISO/IEC 6937 swaps the dollar sign (0xA4) and the currency sign (0x24).
  if (c == L'$') {
    out.push_back(0xA4);
  } else if (c == 0x00A4) {
    out.push_back(0x24);
  } else if (c > 0 && c < 0x80) {
    out.push_back(static_cast<unsigned char>(c));
  } else {
    for (int i = 0; i < 128; ++i) {
      if (kHighHalf[i] == c) {
        out.push_back(static_cast<unsigned char>(0x80 + i));
        return;
      }
    }
    unsigned char prefix = 0;
    unsigned char base = 0;
    if (Decompose(c, prefix, base)) {
      out.push_back(prefix);
      out.push_back(base);
    }
  }
}

std::vector<unsigned char> Encode(const wchar_t* text) {
  std::vector<unsigned char> out;
  if (!text) return out;
  for (; *text; ++text) EncodeChar(*text, out);
  return out;
}

std::vector<wchar_t> Decode(const unsigned char* bytes, int count) {
  std::vector<wchar_t> out;
  if (!bytes) return out;
  for (int i = 0; i < count && bytes[i] != 0;) {
    unsigned char b = bytes[i];
    if (b < 0x80) {
      out.push_back(b == 0x24 ? 0x00A4 : b);
      ++i;
    } else if (b == 0xC0 || b == 0xC9 || b == 0xCC) {
      break;  // reserved prefixes: what follows cannot be interpreted
    } else if (b >= kFirstPrefix && b <= kLastPrefix) {
      if (i + 1 >= count || bytes[i + 1] == 0) break;  // a prefix with nothing to combine with
      // An unknown combination is skipped as a whole.
      if (wchar_t c = Compose(b, bytes[i + 1])) out.push_back(c);
      i += 2;
    } else {
      if (wchar_t c = kHighHalf[b - 0x80]) out.push_back(c);
      ++i;
    }
  }
  return out;
}

}  // namespace

CIso6937Encoding::CIso6937Encoding() : CEncoding("ISO-6937") {}

int CIso6937Encoding::GetByteCount(const wchar_t* text) const { return static_cast<int>(Encode(text).size()); }

CByteArray* CIso6937Encoding::GetBytes(const wchar_t* text) const {
  std::vector<unsigned char> bytes = Encode(text);
  return NewByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

int CIso6937Encoding::GetCharCount(const unsigned char* bytes, int count) const {
  return static_cast<int>(Decode(bytes, count).size());
}

CString* CIso6937Encoding::GetString(const unsigned char* bytes, int count) const {
  std::vector<wchar_t> text = Decode(bytes, count);
  return new CString(text.data(), static_cast<int>(text.size()));
}

}  // namespace Corvane::Mox
