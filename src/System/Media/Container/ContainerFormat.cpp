#include "System/Media/Container/ContainerFormat.h"

#include <array>

#include "System/Types.h"

namespace Corvane::Mox {

namespace {

constexpr int kSlots = 8;
using Texts = std::array<const char*, kSlots>;

struct FormatRow {
  unsigned int code;
  unsigned int parent;
  const char* name;
  Texts mimeTypes;
  Texts extensions;
};

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

constexpr FormatRow kRows[] = {
#define MIME(...) Texts{__VA_ARGS__}
#define EXT(...) Texts{__VA_ARGS__}
#define NONE Texts{}
#define MOX_CONTAINER_FORMAT(code, parent, name, mimeTypes, extensions) {code, parent, name, mimeTypes, extensions},
#include "System/Media/Container/ContainerFormat.def"
#undef MOX_CONTAINER_FORMAT
#undef NONE
#undef EXT
#undef MIME
};

constexpr int kRowCount = static_cast<int>(sizeof(kRows) / sizeof(kRows[0]));

const FormatRow* Find(unsigned int code) {
  for (const FormatRow& row : kRows)
    if (row.code == code) return &row;
  return nullptr;
}

// Slot n of a list (n = 0 and n = 1 both name the first); null past the end.
const char* Nth(const Texts& texts, int n) {
  if (n < 0 || n > kSlots) return nullptr;
  return texts[n == 0 ? 0 : n - 1];
}

}  // namespace

int ContainerFormat::GetFormatCount() { return kRowCount; }

unsigned int ContainerFormat::GetFormat(int index) { return index >= 0 && index < kRowCount ? kRows[index].code : 0; }

const char* ContainerFormat::GetName(unsigned int code) {
  const FormatRow* row = Find(code);
  return row ? row->name : nullptr;
}

const char* ContainerFormat::GetMimeType(unsigned int code, int n) {
  const FormatRow* row = Find(code);
  return row ? Nth(row->mimeTypes, n) : nullptr;
}

const char* ContainerFormat::GetFileExtension(unsigned int code, int n) {
  const FormatRow* row = Find(code);
  // The chain is bounded by the table's size, so a cycle cannot hang.
  for (int hops = 0; row && !row->extensions[0] && hops < kRowCount; ++hops) row = row->parent ? Find(row->parent) : nullptr;
  return row && row->extensions[0] ? Nth(row->extensions, n) : nullptr;
}

unsigned int ContainerFormat::GetCanonicalFormat(unsigned int code) {
  const FormatRow* row = Find(code);
  for (int hops = 0; row && row->parent && hops < kRowCount; ++hops) {
    const FormatRow* parent = Find(row->parent);
    if (!parent) break;
    row = parent;
  }
  return row ? row->code : 0;
}

}  // namespace Corvane::Mox
