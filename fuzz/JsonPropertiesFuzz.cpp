// Arbitrary bytes as JSON: FromJson must answer with a bag or a thrown
// Result, never crash, hang or leak. A bag that was read must also write out
// in every text form, and its JSON must settle after one trip.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "System/IO/MemoryStream.h"
#include "System/Properties.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

CProperties* Read(const unsigned char* bytes, int size) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  if (size > 0) stream->Write(bytes, size);
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  return CProperties::FromJson(stream.Get());
}

CProperties* Read(CString* text) {
  const char* chars = text->GetChars();
  return Read(reinterpret_cast<const unsigned char*>(chars), static_cast<int>(std::strlen(chars)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > (1u << 20)) return 0;
  RObject<CProperties> bag;
  try {
    bag = Read(data, static_cast<int>(size));
  } catch (const Result&) {
    return 0;
  }
  // Every other text form must be writable too.
  RObject<CString> yaml(bag->ToYaml());
  RObject<CString> xml(bag->ToXml());
  RObject<CString> json(bag->ToJson());
  if (!yaml || !xml || !json) std::abort();
  // Written JSON need not parse (texts keep raw control characters). When it
  // does, it keeps every entry, and from then on the text is a fixed point:
  // the first trip may still reorder members whose names were cut to valid
  // UTF-8 (the reader sorts names), later trips change nothing.
  RObject<CProperties> again;
  try {
    again = Read(json);
  } catch (const Result&) {
    return 0;
  }
  if (again->GetPropertyCount() != bag->GetPropertyCount()) std::abort();
  RObject<CString> second(again->ToJson());
  RObject<CProperties> third;
  try {
    third = Read(second);
  } catch (const Result&) {
    std::abort();  // text this writer produced from parsed text must parse
  }
  RObject<CString> last(third->ToJson());
  if (!last->Equals(second.Get())) std::abort();
  return 0;
}
