// Reading a sample's metadata: elements whose payload still points into the
// file are read through the reader and decoded from their bytes; the rest
// are left alone, and the first failure is the result.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Metadata/Metadata.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"

using namespace Corvane::Mox;

namespace {

// An element that keeps the bytes it was decoded from.
class CTextElement : public CMetadataElement {
 public:
  explicit CTextElement(unsigned int type) : CMetadataElement(type) {}
  int GetLength() const override { return static_cast<int>(text.size()); }
  Result Read(CBinaryReader* reader, int length) override {
    text.assign(static_cast<size_t>(length), '\0');
    return reader->ReadBytes(reinterpret_cast<unsigned char*>(text.data()), length);
  }
  std::string text;
};

// One video track; a metadata payload at position p reads as "meta@p",
// except at position 13, which fails.
class CMetadataReader : public CContainerReader {
 public:
  CMetadataReader() : CContainerReader(FourCC("mtrd")) {}
  using CContainerReader::ReadVideoMetadata;
  int GetVideoMediaCount() const override { return 1; }
  CVideoProperties* GetVideoProperties(int track) const override { return track == 0 ? new CVideoProperties() : nullptr; }
  Result ReadVideoMetadata(int, unsigned int, CContainerDataReference* reference, CMemoryDataReference*& data) override {
    ++reads;
    if (reference->GetPosition() == 13) return ResultIOError("metadata at 13 is unreadable");
    const std::string text = "meta@" + std::to_string(reference->GetPosition());
    RObject<CByteArray> bytes(new CByteArray(static_cast<int>(text.size()), 0));
    bytes->SetLength(static_cast<int>(text.size()));
    std::copy(text.begin(), text.end(), bytes->GetData());
    data = new CBufferDataReference(bytes.Get());
    return Result();
  }
  int reads = 0;
};

class ContainerMetadataTest : public LeakCheckedTest {
 protected:
  CTextElement* AddElement(CVideoSample* sample, unsigned int type, long long position) {
    RObject<CMetadata> metadata(sample->AddMetadata());
    RObject<CTextElement> element(new CTextElement(type));
    RObject<CContainerDataReference> payload(new CContainerDataReference(CContainerDataReference::TypeCode, position, 4));
    element->SetDataReference(payload);
    metadata->AddElement(element);
    return element;
  }
};

TEST_F(ContainerMetadataTest, ReadPayloadsAreReadAndDecodedOthersLeftAlone) {
  RObject<CMetadataReader> reader(new CMetadataReader());
  RObject<CVideoSample> sample(new CVideoSample(0, 1, 0));
  RObject<CBufferDataReference> essence(new CBufferDataReference(8));
  sample->SetDataReference(essence);
  CTextElement* first = AddElement(sample, FourCC("tst1"), 100);
  CTextElement* second = AddElement(sample, FourCC("tst2"), 250);
  RObject<CTextElement> inMemory(new CTextElement(FourCC("tst3")));
  RObject<CBufferDataReference> bytes(new CBufferDataReference(4));
  inMemory->SetDataReference(bytes);
  RObject<CMetadata>(sample->AddMetadata())->AddElement(inMemory);

  ASSERT_TRUE(reader->ReadVideoMetadata(0, sample.Get()).Succeeded());
  EXPECT_EQ(first->text, "meta@100");
  EXPECT_EQ(second->text, "meta@250");
  EXPECT_EQ(reader->reads, 2) << "an element already in memory is not read again";
  RObject<CDataReference> payload(first->GetDataReference());
  EXPECT_FALSE(payload->IsType(CContainerDataReference::TypeCode)) << "the payload now holds the bytes";
  EXPECT_EQ(payload->GetLength(), 8);
}

TEST_F(ContainerMetadataTest, FirstFailureEndsTheLoopAndMissingTracksAreRefused) {
  RObject<CMetadataReader> reader(new CMetadataReader());
  RObject<CVideoSample> sample(new CVideoSample(0, 1, 0));
  AddElement(sample, FourCC("tst1"), 13);
  CTextElement* after = AddElement(sample, FourCC("tst2"), 40);
  Result result = reader->ReadVideoMetadata(0, sample.Get());
  EXPECT_EQ(result.GetType(), ResultIOError().GetType());
  EXPECT_EQ(after->text, "") << "elements after the failure are not read";
  EXPECT_EQ(reader->ReadVideoMetadata(1, sample.Get()).GetType(), ResultNullPointer().GetType());

  // A sample without metadata gets an empty one; the base reader reads none.
  RObject<CVideoSample> bare(new CVideoSample(1, 1, 0));
  ASSERT_TRUE(reader->ReadVideoMetadata(0, bare.Get()).Succeeded());
  EXPECT_TRUE(bare->HasMetadata());
}

}  // namespace
