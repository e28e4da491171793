#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/Security/Cryptography/CryptoService.h"
#include "System/Security/Cryptography/MD5.h"
#include "System/Security/Cryptography/SHA1.h"
#include "System/Security/Cryptography/SHA256.h"

using namespace Corvane::Mox;

namespace {

std::string Hex(const unsigned char* bytes, int n) {
  std::string text;
  char pair[3];
  for (int i = 0; i < n; ++i) {
    std::snprintf(pair, sizeof pair, "%02x", bytes[i]);
    text += pair;
  }
  return text;
}

template <class THash>
std::string Digest(const std::string& message) {
  RObject<CCryptoService> service(new CCryptoService());
  RObject<THash> hash(new THash(service));
  std::vector<unsigned char> out(static_cast<std::size_t>(hash->GetOutputBlockSize()));
  std::vector<unsigned char> in(message.begin(), message.end());
  EXPECT_TRUE(hash->ComputeHash(in.data(), static_cast<int>(in.size()), out.data(), static_cast<int>(out.size())).Succeeded());
  return Hex(out.data(), static_cast<int>(out.size()));
}

// A temporary file removed when the test ends.
struct TempFile {
  std::string path;
  explicit TempFile(std::size_t size) {
    char name[] = "/tmp/mox-md5-XXXXXX";
    int fd = mkstemp(name);
    path = name;
    std::vector<unsigned char> bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<unsigned char>(i * 7 + 3);
    if (size) {
      EXPECT_EQ(write(fd, bytes.data(), size), static_cast<ssize_t>(size));
    }
    close(fd);
    content = std::string(bytes.begin(), bytes.end());
  }
  ~TempFile() { unlink(path.c_str()); }
  std::string content;
};

}  // namespace

TEST(HashTest, KnownAnswers) {
  EXPECT_EQ(Digest<CMD5>(""), "d41d8cd98f00b204e9800998ecf8427e");
  EXPECT_EQ(Digest<CMD5>("abc"), "900150983cd24fb0d6963f7d28e17f72");
  EXPECT_EQ(Digest<CSHA1>("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
  EXPECT_EQ(Digest<CSHA1>("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
  EXPECT_EQ(Digest<CSHA256>(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(Digest<CSHA256>("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(HashTest, SizesAndIdentifiers) {
  RObject<CCryptoService> service(new CCryptoService());
  RObject<CMD5> md5(new CMD5(service));
  RObject<CSHA1> sha1(new CSHA1(service));
  RObject<CSHA256> sha256(new CSHA256(service));
  EXPECT_EQ(md5->GetAlgorithm(), 7u);
  EXPECT_EQ(sha1->GetAlgorithm(), 8u);
  EXPECT_EQ(sha256->GetAlgorithm(), 0x8000000Eu);
  EXPECT_EQ(md5->GetOutputBlockSize(), 16);
  EXPECT_EQ(sha1->GetOutputBlockSize(), 20);
  EXPECT_EQ(sha256->GetInputBlockSize(), 1);
  EXPECT_FALSE(sha256->CanReuseTransform());
}

TEST(HashTest, IncrementalBlocksKeepTheHashAndFinishOnce) {
  RObject<CCryptoService> service(new CCryptoService());
  RObject<CSHA256> hash(new CSHA256(service));
  EXPECT_EQ(hash->GetHash(), nullptr);
  unsigned char a[] = {'a'};
  unsigned char bc[] = {'b', 'c'};
  int written = -1;
  ASSERT_TRUE(hash->TransformBlock(a, 1, nullptr, 0, &written).Succeeded());
  EXPECT_EQ(written, 0);
  ASSERT_TRUE(hash->TransformBlock(bc, 2, nullptr, 0, nullptr).Succeeded());
  unsigned char small[4];
  ASSERT_TRUE(hash->TransformFinalBlock(small, 4, &written).Succeeded());
  EXPECT_EQ(written, 32);  // the full length is reported, only what fits is copied
  EXPECT_EQ(Hex(small, 4), "ba7816bf");
  RObject<CByteArray> kept(hash->GetHash());
  ASSERT_NE(kept.Get(), nullptr);
  EXPECT_EQ(Hex(kept->GetData(), kept->GetLength()), Digest<CSHA256>("abc"));
  // A finished digest gives nothing more and refuses more input.
  ASSERT_TRUE(hash->TransformFinalBlock(small, 4, &written).Succeeded());
  EXPECT_EQ(written, 0);
  EXPECT_TRUE(hash->TransformBlock(a, 1, nullptr, 0, nullptr).Failed());
}

TEST(HashTest, FileHashMatchesOneShotAtChunkBoundaries) {
  for (std::size_t size : {0u, 1u, 2047u, 2048u, 2049u, 10000u}) {
    TempFile file(size);
    RObject<CByteArray> hash;
    ASSERT_TRUE(CMD5::CreateHashFromFilename(file.path.c_str(), hash.Out()).Succeeded()) << size;
    ASSERT_EQ(hash->GetLength(), 16);
    EXPECT_EQ(Hex(hash->GetData(), 16), Digest<CMD5>(file.content)) << size;
  }
}

TEST(HashTest, FileHashFailures) {
  CByteArray* hash = reinterpret_cast<CByteArray*>(0x1);
  EXPECT_EQ(static_cast<int>(CMD5::CreateHashFromFilename(nullptr, hash).GetType()), -19004);
  EXPECT_EQ(hash, nullptr);
  Result missing = CMD5::CreateHashFromFilename("/nonexistent/mox/clip.mov", hash);
  EXPECT_TRUE(missing.Failed());
  EXPECT_EQ(hash, nullptr);
}
