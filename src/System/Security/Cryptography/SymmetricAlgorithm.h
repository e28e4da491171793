#pragma once
// CSymmetricAlgorithm: a block cipher with its key, vector, mode and padding.
// The object owns one cipher context, created at the first transform and
// shared by its encryptor and decryptor: make a fresh object per run.

#include "System/Object.h"
#include "System/Security/Cryptography/CryptoService.h"
#include "System/Security/Cryptography/KeySizes.h"

namespace Corvane::Mox {

class CByteArray;
class CCryptoTransform;

class CSymmetricAlgorithm : public CObject {
 public:
  // Mode codes of the provider interface, passed through unchanged.
  enum CipherMode : int {
    ModeNone = 0,
    ModeECB = 2,
    ModeECBPad = 3,
    ModeCBC = 4,
    ModeCBC_IV8 = 5,
    ModeCBCPadIV8 = 6,
    ModeCFB = 7,
    ModeOFB = 10,
    ModeCounter = 13,
  };

  CSymmetricAlgorithm(CCryptoService* service, unsigned int algorithm, CCryptoService::PaddingMode padding,
                      CipherMode mode, int keySize, int blockSize);
  ~CSymmetricAlgorithm() override;

  virtual KeySizes LegalBlockSizes() = 0;
  virtual int GetBlockSize() { return blockSize_; }
  virtual Result SetBlockSize(int bits);
  virtual KeySizes LegalKeySizes() = 0;
  virtual int GetKeySize() { return keySize_; }
  virtual Result SetKeySize(int bits);
  virtual CipherMode GetCipherMode() { return mode_; }
  virtual void SetCipherMode(CipherMode mode) { mode_ = mode; }
  virtual CCryptoService::PaddingMode GetPaddingMode() { return padding_; }
  virtual void SetPaddingMode(CCryptoService::PaddingMode padding) { padding_ = padding; }
  virtual CByteArray* GetKey();
  virtual Result SetKey(CByteArray* key);
  virtual Result SetKey(unsigned char* bytes, int length);
  virtual Result SetKey(unsigned char* bytes);
  virtual CByteArray* GetIV();
  virtual Result SetIV(CByteArray* iv);
  virtual Result SetIV(unsigned char* bytes);
  virtual Result Initialize();
  virtual Result GenerateIV();
  virtual Result GenerateKey();
  virtual Result CreateEncryptor(CCryptoTransform*& transform);
  virtual Result CreateEncryptor(unsigned char* key, unsigned char* iv, CCryptoTransform*& transform);
  virtual Result CreateDecryptor(CCryptoTransform*& transform);
  virtual Result CreateDecryptor(unsigned char* key, unsigned char* iv, CCryptoTransform*& transform);
  virtual Result Encrypt(const unsigned char* input, int count, unsigned char* output, int capacity, int* written);
  virtual Result Decrypt(const unsigned char* input, int count, unsigned char* output, int capacity, int* written);

  unsigned int GetAlgorithm() const { return algorithm_; }
  void* GetContext() const { return context_; }

  // Cipher steps used by the encryptor and decryptor on the shared context.
  Result Start(bool encrypt);
  Result Update(const unsigned char* input, int count, unsigned char* output, int capacity, int* written);
  Result Final(unsigned char* output, int capacity, int* written);

 private:
  static void ReplaceArray(CByteArray*& slot, CByteArray* value);

  CCryptoService* service_;
  unsigned int algorithm_;
  void* context_;
  CCryptoService::PaddingMode padding_;
  CipherMode mode_;
  int keySize_;
  CByteArray* key_;
  int blockSize_;
  CByteArray* iv_;
  bool encrypting_;
  bool finished_;
};

}  // namespace Corvane::Mox
