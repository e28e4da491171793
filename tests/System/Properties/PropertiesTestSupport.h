#pragma once
// Shared helpers of the property-bag tests: text in and out of streams and a
// realistic bag to push through the text forms.

#include <cstring>
#include <string>

#include "System/ByteArray.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/VariantArray.h"

namespace PropertiesTest {

using namespace Corvane::Mox;

// The text of a string the caller owns, released here; "<null>" for null.
inline std::string Take(CString* text) {
  RObject<CString> held(text);
  return held ? std::string(held->GetChars()) : std::string("<null>");
}

// A new stream holding a copy of the text.
inline CMemoryStream* StreamOf(const std::string& text) {
  auto* stream = new CMemoryStream();
  if (!text.empty()) stream->Write(reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  return stream;
}

inline CProperties* FromJsonText(const std::string& text) {
  RObject<CMemoryStream> stream(StreamOf(text));
  return CProperties::FromJson(stream.Get());
}

inline CProperties* FromXmlText(const std::string& text) {
  RObject<CMemoryStream> stream(StreamOf(text));
  return CProperties::FromXml(stream.Get());
}

inline CByteArray* BytesOf(std::initializer_list<unsigned char> bytes) {
  return new CByteArray(bytes.begin(), static_cast<int>(bytes.size()));
}

// A variant array of the given ints.
inline CVariantArray* IntArray(std::initializer_list<int> values) {
  auto* array = new CVariantArray(static_cast<int>(values.size()));
  int i = 0;
  for (int value : values) {
    RObject<CVariant> element(new CVariant(value));
    array->Set(i++, element.Get());
  }
  return array;
}

// What a container writer might carry: numbers of several widths, text,
// four-character codes, bytes, a nested bag with its own nested bag, an
// array mixing kinds, and descriptions at two levels.
inline CProperties* RealisticBag() {
  auto* bag = new CProperties();
  bag->SetProperty("Width", 1920);
  bag->SetProperty("Height", 1080);
  bag->SetProperty("Duration", 90000000000LL);
  bag->SetProperty("Interlaced", false);
  bag->SetProperty("Title", "Evening News");
  bag->SetFourProperty("Codec", FourCC("avc1"));
  bag->SetFourProperty("Format", FourCC("vid "));
  RObject<CByteArray> config(BytesOf({0x01, 0x64, 0x00, 0x28, 0xFF, 0xE1}));
  bag->SetProperty("DecoderConfiguration", config.Get());
  RObject<CProperties> audio(new CProperties());
  audio->SetProperty("Channels", 6);
  audio->SetProperty("Language", "eng");
  RObject<CProperties> loudness(new CProperties());
  loudness->SetProperty("Integrated", -23.5);
  audio->SetProperty("Loudness", loudness.Get());
  audio->SetPropertyDescription("Channels", "5.1 layout");
  bag->SetProperty("Audio", audio.Get());
  RObject<CVariantArray> tracks(new CVariantArray(3));
  RObject<CVariant> one(new CVariant(1));
  RObject<CVariant> name(new CVariant("main"));
  RObject<CProperties> extra(new CProperties());
  extra->SetProperty("Kind", "captions");
  RObject<CVariant> bagItem(new CVariant(extra.Get()));
  tracks->Set(0, one.Get());
  tracks->Set(1, name.Get());
  tracks->Set(2, bagItem.Get());
  bag->SetProperty("Tracks", tracks.Get());
  bag->SetPropertyDescription("Width", "luma samples per line");
  return bag;
}

}  // namespace PropertiesTest
