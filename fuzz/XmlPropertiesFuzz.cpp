// Arbitrary bytes as a "container" document: FromXml must answer with a bag
// or a thrown Result, never crash, hang, leak or print. A bag that was read
// must write back to XML that reads to the same bag.
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
  return CProperties::FromXml(stream.Get());
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
  RObject<CString> xml(bag->ToXml());
  RObject<CString> json(bag->ToJson());
  RObject<CString> yaml(bag->ToYaml());
  if (!xml || !json || !yaml) std::abort();
  // What was written reads back, and writes the same document again.
  const char* text = xml->GetChars();
  RObject<CProperties> again;
  try {
    again = Read(reinterpret_cast<const unsigned char*>(text), static_cast<int>(std::strlen(text)));
  } catch (const Result&) {
    std::abort();
  }
  RObject<CString> second(again->ToXml());
  if (!second->Equals(xml.Get())) std::abort();
  return 0;
}
