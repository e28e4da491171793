#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/MemoryStream.h"
#include "System/Security/Cryptography/AES.h"
#include "System/Security/Cryptography/CryptoStream.h"
#include "System/Security/Cryptography/CryptoTransform.h"

using namespace Corvane::Mox;

namespace {

std::vector<unsigned char> Bytes(const char* hex) {
  std::vector<unsigned char> out;
  for (const char* p = hex; p[0] && p[1]; p += 2) {
    unsigned int v = 0;
    std::sscanf(p, "%2x", &v);
    out.push_back(static_cast<unsigned char>(v));
  }
  return out;
}

std::string Hex(const std::vector<unsigned char>& bytes) {
  std::string text;
  char pair[3];
  for (unsigned char b : bytes) {
    std::snprintf(pair, sizeof pair, "%02x", b);
    text += pair;
  }
  return text;
}

const char* kKey128 = "2b7e151628aed2a6abf7158809cf4f3c";
const char* kKey256 = "603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4";
const char* kIV = "000102030405060708090a0b0c0d0e0f";
const char* kPlain = "6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51";

// Runs one algorithm object through an encryptor or decryptor over the whole input.
std::vector<unsigned char> Cipher(const char* key, CSymmetricAlgorithm::CipherMode mode,
                               CCryptoService::PaddingMode padding, bool encrypt,
                               const std::vector<unsigned char>& input, Result* failure = nullptr) {
  RObject<CCryptoService> service(new CCryptoService());
  RObject<CAES> aes(new CAES(service));
  std::vector<unsigned char> k = Bytes(key), iv = Bytes(kIV);
  EXPECT_TRUE(aes->SetKey(k.data(), static_cast<int>(k.size())).Succeeded());
  aes->SetIV(iv.data());
  aes->SetCipherMode(mode);
  aes->SetPaddingMode(padding);
  RObject<CCryptoTransform> transform;
  if (encrypt)
    aes->CreateEncryptor(transform.Out());
  else
    aes->CreateDecryptor(transform.Out());
  std::vector<unsigned char> out(input.size() + 32);
  int n = 0, last = 0;
  Result r = transform->TransformBlock(const_cast<unsigned char*>(input.data()), static_cast<int>(input.size()),
                                       out.data(), static_cast<int>(out.size()), &n);
  if (r.Succeeded()) r = transform->TransformFinalBlock(out.data() + n, static_cast<int>(out.size()) - n, &last);
  if (failure) *failure = r;
  EXPECT_TRUE(failure || r.Succeeded());
  out.resize(static_cast<std::size_t>(n + last));
  return out;
}

}  // namespace

TEST(AesTest, NistVectorsWithoutPadding) {
  const std::vector<unsigned char> plain = Bytes(kPlain);
  EXPECT_EQ(Hex(Cipher(kKey128, CSymmetricAlgorithm::ModeECB, CCryptoService::PaddingNone, true, plain)),
            "3ad77bb40d7a3660a89ecaf32466ef97f5d3d58503b9699de785895a96fdbaaf");
  EXPECT_EQ(Hex(Cipher(kKey128, CSymmetricAlgorithm::ModeCBC, CCryptoService::PaddingNone, true, plain)),
            "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2");
  EXPECT_EQ(Hex(Cipher(kKey256, CSymmetricAlgorithm::ModeECB, CCryptoService::PaddingNone, true, plain)),
            "f3eed1bdb5d2a03c064b5a7e3db181f8591ccb10d410ed26dc5ba74a31362870");
  EXPECT_EQ(Hex(Cipher(kKey256, CSymmetricAlgorithm::ModeCBC, CCryptoService::PaddingNone, true, plain)),
            "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d");
  // Decryption inverts each of them.
  std::vector<unsigned char> cipher = Bytes("f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d");
  EXPECT_EQ(Hex(Cipher(kKey256, CSymmetricAlgorithm::ModeCBC, CCryptoService::PaddingNone, false, cipher)), kPlain);
}

TEST(AesTest, Pkcs7PaddingAddsAWholeBlockToAlignedInput) {
  const std::vector<unsigned char> plain = Bytes(kPlain);
  for (auto mode : {CSymmetricAlgorithm::ModeECBPad, CSymmetricAlgorithm::ModeCBCPadIV8}) {
    std::vector<unsigned char> cipher = Cipher(kKey128, mode, CCryptoService::PaddingPKCS7, true, plain);
    ASSERT_EQ(cipher.size(), 48u);
    std::vector<unsigned char> unpadded =
        Cipher(kKey128, mode == CSymmetricAlgorithm::ModeECBPad ? CSymmetricAlgorithm::ModeECB : CSymmetricAlgorithm::ModeCBC,
            CCryptoService::PaddingNone, true, plain);
    EXPECT_TRUE(std::equal(unpadded.begin(), unpadded.end(), cipher.begin()));
    EXPECT_EQ(Hex(Cipher(kKey128, mode, CCryptoService::PaddingPKCS7, false, cipher)), kPlain);
  }
  // Unaligned input pads to the next multiple of 16.
  std::vector<unsigned char> five = {1, 2, 3, 4, 5};
  std::vector<unsigned char> cipher = Cipher(kKey256, CSymmetricAlgorithm::ModeCBCPadIV8, CCryptoService::PaddingPKCS7, true, five);
  EXPECT_EQ(cipher.size(), 16u);
  EXPECT_EQ(Cipher(kKey256, CSymmetricAlgorithm::ModeCBCPadIV8, CCryptoService::PaddingPKCS7, false, cipher), five);
}

TEST(AesTest, CorruptPaddingIsAProviderFailure) {
  std::vector<unsigned char> cipher = Cipher(kKey128, CSymmetricAlgorithm::ModeCBCPadIV8, CCryptoService::PaddingPKCS7, true, {9, 9, 9});
  cipher.back() ^= 0x5A;
  Result failure;
  Cipher(kKey128, CSymmetricAlgorithm::ModeCBCPadIV8, CCryptoService::PaddingPKCS7, false, cipher, &failure);
  EXPECT_EQ(static_cast<int>(failure.GetType()), -19023);
}

TEST(AesTest, KeyAndBlockSizeRules) {
  RObject<CCryptoService> service(new CCryptoService());
  RObject<CAES> aes(new CAES(service));
  EXPECT_EQ(aes->GetKeySize(), 128);
  EXPECT_EQ(aes->GetCipherMode(), CSymmetricAlgorithm::ModeCBCPadIV8);
  EXPECT_EQ(aes->GetPaddingMode(), CCryptoService::PaddingPKCS7);
  RObject<CByteArray> key16(new CByteArray(Bytes(kKey128).data(), 16));
  ASSERT_TRUE(aes->SetKey(key16).Succeeded());
  RObject<CByteArray> key15(new CByteArray(15, 1));
  Result bad = aes->SetKey(key15);
  EXPECT_STREQ(bad.GetDetails(), "invalid key size");
  RObject<CByteArray> kept(aes->GetKey());
  EXPECT_EQ(kept.Get(), key16.Get());  // the old key stays, by reference
  RObject<CByteArray> key24(new CByteArray(24, 1));
  ASSERT_TRUE(aes->SetKey(key24).Succeeded());
  EXPECT_EQ(aes->GetKeySize(), 192);
  Result block = aes->SetBlockSize(100);
  EXPECT_STREQ(block.GetDetails(), "invalid key size");
  EXPECT_EQ(aes->GetBlockSize(), 128);

  KeySizes steps{128, 256, 64};
  EXPECT_TRUE(steps.IsValid(192));
  EXPECT_FALSE(steps.IsValid(160));
  EXPECT_FALSE(steps.IsValid(320));
  KeySizes single{128, 128, 0};
  EXPECT_TRUE(single.IsValid(128));
  EXPECT_FALSE(single.IsValid(192));
  EXPECT_EQ(static_cast<int>(aes->GenerateIV().GetType()), -19005);
}

TEST(AesTest, InitializeNeedsKeyAndVectorInEveryMode) {
  RObject<CCryptoService> service(new CCryptoService());
  RObject<CAES> aes(new CAES(service));
  aes->SetCipherMode(CSymmetricAlgorithm::ModeECB);
  EXPECT_EQ(static_cast<int>(aes->Initialize().GetType()), -19001);
  ASSERT_TRUE(aes->GenerateKey().Succeeded());
  RObject<CByteArray> key(aes->GetKey());
  EXPECT_EQ(key->GetLength(), 16);
  EXPECT_EQ(static_cast<int>(aes->Initialize().GetType()), -19001);  // still no vector
  std::vector<unsigned char> iv(16, 0);
  aes->SetIV(iv.data());
  EXPECT_TRUE(aes->Initialize().Succeeded());
}

TEST(AesTest, FinalBlockThatDoesNotFitIsRefused) {
  RObject<CCryptoService> service(new CCryptoService());
  RObject<CAES> aes(new CAES(service));
  std::vector<unsigned char> key = Bytes(kKey128), iv = Bytes(kIV);
  RObject<CCryptoTransform> encryptor;
  aes->CreateEncryptor(key.data(), iv.data(), encryptor.Out());
  unsigned char out[8];
  int written = 0;
  Result r = encryptor->TransformFinalBlock(out, sizeof out, &written);
  EXPECT_EQ(r.GetResultCode(), static_cast<int>(0x80010902));
}

TEST(CryptoStreamTest, RoundTripsAtBlockBoundaries) {
  std::vector<unsigned char> key = Bytes(kKey256), iv = Bytes(kIV);
  for (int size : {0, 1, 15, 16, 17, 1 << 20}) {
    std::vector<unsigned char> plain(static_cast<std::size_t>(size));
    for (int i = 0; i < size; ++i) plain[static_cast<std::size_t>(i)] = static_cast<unsigned char>(i * 31 + 7);

    RObject<CMemoryStream> sink(new CMemoryStream());
    {
      RObject<CCryptoService> service(new CCryptoService());
      RObject<CAES> aes(new CAES(service));
      RObject<CCryptoTransform> encryptor;
      aes->CreateEncryptor(key.data(), iv.data(), encryptor.Out());
      RObject<CCryptoStream> stream(new CCryptoStream(sink, encryptor, CCryptoStream::ModeWrite));
      ASSERT_TRUE(stream->Write(plain.data(), size).Succeeded());
      stream->Close();  // then released: the final block must not be written twice
    }
    EXPECT_EQ(sink->GetLength(), (size / 16 + 1) * 16) << size;

    RObject<CByteArray> cipher(sink->ToByteArray());
    RObject<CMemoryStream> source(new CMemoryStream(cipher));
    RObject<CCryptoService> service(new CCryptoService());
    RObject<CAES> aes(new CAES(service));
    RObject<CCryptoTransform> decryptor;
    aes->CreateDecryptor(key.data(), iv.data(), decryptor.Out());
    RObject<CCryptoStream> stream(new CCryptoStream(source, decryptor, CCryptoStream::ModeRead));
    std::vector<unsigned char> back(plain.size() + 64);
    int read = 0;
    ASSERT_TRUE(stream->Read(back.data(), static_cast<int>(back.size()), &read).Succeeded());
    EXPECT_EQ(read, size);
    back.resize(static_cast<std::size_t>(read));
    EXPECT_TRUE(back == plain) << size;
  }
}

TEST(CryptoStreamTest, DirectionAndSeekingAreRefused) {
  std::vector<unsigned char> key = Bytes(kKey128), iv = Bytes(kIV);
  RObject<CCryptoService> service(new CCryptoService());
  RObject<CAES> aes(new CAES(service));
  RObject<CCryptoTransform> encryptor;
  aes->CreateEncryptor(key.data(), iv.data(), encryptor.Out());
  RObject<CMemoryStream> sink(new CMemoryStream());
  RObject<CCryptoStream> stream(new CCryptoStream(sink, encryptor, CCryptoStream::ModeWrite));
  unsigned char byte = 0;
  EXPECT_EQ(static_cast<int>(stream->Read(&byte, 1).GetType()), -19100);
  EXPECT_LT(stream->ReadByte(), -1);
  EXPECT_EQ(static_cast<int>(stream->Seek(0, SeekOrigin::Begin, nullptr).GetType()), -19006);
  EXPECT_FALSE(stream->CanSeek());
  EXPECT_TRUE(stream->CanWrite());
  EXPECT_EQ(stream->GetLength(), -1);
  // Sixteen bytes written one at a time give two blocks after the final flush.
  for (int i = 0; i < 16; ++i) ASSERT_TRUE(stream->WriteByte(static_cast<unsigned char>(i)).Succeeded());
  ASSERT_TRUE(stream->FlushFinalBlock().Succeeded());
  EXPECT_EQ(sink->GetLength(), 32);
}
