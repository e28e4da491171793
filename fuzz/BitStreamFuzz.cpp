// Arbitrary bytes read as a bit stream by a program taken from the input
// itself: reads must stay inside the stream, failed compound reads must leave
// the position alone, and every Exp-Golomb value read must write back to the
// same bits.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "System/ByteArray.h"
#include "System/IO/BitStream.h"

using namespace Corvane::Mox;

namespace {

const CBitStream::PrefixCode Codes[] = {{0, 0b1, 1}, {1, 0b01, 2}, {2, 0b001, 3}, {3, 0b0001, 4}, {4, 0b00001, 5}};
const CBitStream::PrefixTable Table = {5, Codes};

void Check(bool condition) {
  if (!condition) std::abort();
}

// Re-encodes what one Exp-Golomb read consumed and compares the bits.
template <class T>
void CheckExpGolomb(CBitStream* stream, int start, T value) {
  int used = stream->GetPosition() - start;
  RObject<CBitStream> again(new CBitStream(used + 8));
  Check(again->Write(value).Succeeded());
  Check(again->GetLength() == used);
  RObject<CBitStream> copy(new CBitStream(RObject<CByteArray>(stream->GetBuffer())));
  Check(copy->Skip(start).Succeeded());
  RObject<CByteArray> written(again->ToByteArray());
  RObject<CBitStream> reread(new CBitStream(written));
  for (int i = 0; i < used; ++i) {
    bool a = false;
    bool b = false;
    Check(copy->Read(a).Succeeded() && reread->Read(b).Succeeded() && a == b);
  }
}

void Step(CBitStream* stream, std::uint8_t op) {
  int start = stream->GetPosition();
  Result result;
  switch (op % 6) {
    case 0: {
      unsigned int value = 0;
      result = stream->Read(op % 33, value, op);
      break;
    }
    case 1: {
      unsigned int value = 0;
      result = stream->Read(value);
      if (result.Succeeded()) CheckExpGolomb(stream, start, value);
      break;
    }
    case 2: {
      int value = 0;
      result = stream->Read(value);
      if (result.Succeeded()) CheckExpGolomb(stream, start, value);
      break;
    }
    case 3: {
      int value = 0;
      result = stream->Read(&Table, value);
      Check(result.Failed() || (value >= 0 && value < 5 && stream->GetPosition() - start == value + 1));
      break;
    }
    case 4: {
      unsigned long long value = 0;
      result = stream->Read(op % 65, value);
      break;
    }
    default:
      result = stream->Skip(op % 17 - 8);
      break;
  }
  if (result.Failed()) Check(stream->GetPosition() == start);
  Check(stream->GetPosition() >= 0 && stream->GetPosition() <= stream->GetLength());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  std::size_t program = data[0] % 32 + 1;
  if (program >= size) return 0;
  RObject<CByteArray> bytes(new CByteArray(data + 1 + program, static_cast<int>(size - 1 - program)));
  RObject<CBitStream> stream(new CBitStream(bytes));
  for (int round = 0; round < 4; ++round)
    for (std::size_t i = 0; i < program; ++i) Step(stream, data[1 + i]);
  int stop = -1;
  if (stream->GetStopPosition(stop).Succeeded()) Check(stop >= 0 && stop < stream->GetLength());
  return 0;
}
