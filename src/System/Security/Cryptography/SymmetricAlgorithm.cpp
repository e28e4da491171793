#include "System/Security/Cryptography/SymmetricAlgorithm.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <cstring>

#include "System/ByteArray.h"
#include "System/Security/Cryptography/SymmetricDecryptor.h"
#include "System/Security/Cryptography/SymmetricEncryptor.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int kAlgorithmAES = 0x80000001;
// Returned when a final block does not fit the caller's buffer.
constexpr int kFinalBlockTooLarge = static_cast<int>(0x80010902);

EVP_CIPHER_CTX* Context(void* p) { return static_cast<EVP_CIPHER_CTX*>(p); }

bool IsBlockMode(CSymmetricAlgorithm::CipherMode mode) {
  return mode >= CSymmetricAlgorithm::ModeECB && mode <= CSymmetricAlgorithm::ModeCBCPadIV8;
}

// AES ciphers by mode family and key size (128, 192, 256 bits).
using CipherFactory = const EVP_CIPHER* (*)();
struct AesFamily {
  CSymmetricAlgorithm::CipherMode first;
  CSymmetricAlgorithm::CipherMode last;
  CipherFactory bySize[3];
};
constexpr AesFamily kAesFamilies[] = {
    {CSymmetricAlgorithm::ModeECB, CSymmetricAlgorithm::ModeECBPad, {EVP_aes_128_ecb, EVP_aes_192_ecb, EVP_aes_256_ecb}},
    {CSymmetricAlgorithm::ModeCBC, CSymmetricAlgorithm::ModeCBCPadIV8, {EVP_aes_128_cbc, EVP_aes_192_cbc, EVP_aes_256_cbc}},
    {CSymmetricAlgorithm::ModeCFB, CSymmetricAlgorithm::ModeCFB, {EVP_aes_128_cfb128, EVP_aes_192_cfb128, EVP_aes_256_cfb128}},
    {CSymmetricAlgorithm::ModeOFB, CSymmetricAlgorithm::ModeOFB, {EVP_aes_128_ofb, EVP_aes_192_ofb, EVP_aes_256_ofb}},
    {CSymmetricAlgorithm::ModeCounter, CSymmetricAlgorithm::ModeCounter, {EVP_aes_128_ctr, EVP_aes_192_ctr, EVP_aes_256_ctr}},
};

const EVP_CIPHER* AesCipher(CSymmetricAlgorithm::CipherMode mode, int keyBits) {
  const int k = keyBits == 128 ? 0 : keyBits == 192 ? 1 : keyBits == 256 ? 2 : -1;
  if (k < 0) return nullptr;
  for (const AesFamily& family : kAesFamilies)
    if (mode >= family.first && mode <= family.last) return family.bySize[k]();
  return nullptr;
}

Result ProviderFailure() { return ResultExternalError(CCryptoService::LastProviderError(), nullptr); }

}  // namespace

CSymmetricAlgorithm::CSymmetricAlgorithm(CCryptoService* service, unsigned int algorithm,
                                         CCryptoService::PaddingMode padding, CipherMode mode, int keySize,
                                         int blockSize)
    : CObject(FourCC("symm")),
      service_(service),
      algorithm_(algorithm),
      context_(nullptr),
      padding_(padding),
      mode_(mode),
      keySize_(keySize),
      key_(nullptr),
      blockSize_(blockSize),
      iv_(nullptr),
      encrypting_(true),
      finished_(false) {
  if (service_) service_->Acquire();
}

CSymmetricAlgorithm::~CSymmetricAlgorithm() {
  if (context_) EVP_CIPHER_CTX_free(Context(context_));
  if (key_) key_->Release();
  if (iv_) iv_->Release();
  if (service_) service_->Release();
}

void CSymmetricAlgorithm::ReplaceArray(CByteArray*& slot, CByteArray* value) {
  if (value) value->Acquire();
  if (slot) slot->Release();
  slot = value;
}

// The block-size setter reports "invalid key size" too; callers match that text.
Result CSymmetricAlgorithm::SetBlockSize(int bits) {
  if (!LegalBlockSizes().IsValid(bits)) return ResultError("invalid key size");
  blockSize_ = bits;
  return ResultOK();
}

Result CSymmetricAlgorithm::SetKeySize(int bits) {
  if (!LegalKeySizes().IsValid(bits)) return ResultError("invalid key size");
  keySize_ = bits;
  return ResultOK();
}

CByteArray* CSymmetricAlgorithm::GetKey() {
  if (key_) key_->Acquire();
  return key_;
}

Result CSymmetricAlgorithm::SetKey(CByteArray* key) {
  if (!key) return ResultOK();
  Result r = SetKeySize(key->GetLength() * 8);
  if (r.Failed()) return r;
  ReplaceArray(key_, key);  // kept by reference, not copied
  return ResultOK();
}

Result CSymmetricAlgorithm::SetKey(unsigned char* bytes, int length) {
  if (!bytes) return ResultOK();
  Result r = SetKeySize(length * 8);
  if (r.Failed()) return r;
  RObject<CByteArray> copy(new CByteArray(bytes, length));
  ReplaceArray(key_, copy);
  return ResultOK();
}

Result CSymmetricAlgorithm::SetKey(unsigned char* bytes) {
  if (!bytes) return ResultOK();
  RObject<CByteArray> copy(new CByteArray(bytes, keySize_ / 8));
  ReplaceArray(key_, copy);
  return ResultOK();
}

CByteArray* CSymmetricAlgorithm::GetIV() {
  if (iv_) iv_->Acquire();
  return iv_;
}

Result CSymmetricAlgorithm::SetIV(CByteArray* iv) {
  if (iv) ReplaceArray(iv_, iv);
  return ResultOK();
}

Result CSymmetricAlgorithm::SetIV(unsigned char* bytes) {
  if (!bytes) return ResultOK();
  RObject<CByteArray> copy(new CByteArray(bytes, blockSize_ / 8));
  ReplaceArray(iv_, copy);
  return ResultOK();
}

Result CSymmetricAlgorithm::Initialize() {
  if (context_) return ResultOK();
  if (!service_) return ResultNullPointer("no crypto service");
  Result r = service_->Initialize();
  if (r.Failed()) return r;
  if (!key_) return ResultNullPointer("no key");
  if (!iv_) return ResultNullPointer("no initialisation vector");
  if (algorithm_ != kAlgorithmAES || blockSize_ != 128 || !AesCipher(mode_, keySize_))
    return ResultNotSupported("algorithm 0x%X with mode %d, %d-bit key and %d-bit block", algorithm_, mode_,
                              keySize_, blockSize_);
  context_ = EVP_CIPHER_CTX_new();
  if (!context_) return ProviderFailure();
  return ResultOK();
}

Result CSymmetricAlgorithm::Start(bool encrypt) {
  const EVP_CIPHER* cipher = AesCipher(mode_, keySize_);
  if (key_->GetLength() * 8 < keySize_) return ResultError("invalid key size");
  if (iv_->GetLength() < EVP_CIPHER_get_iv_length(cipher))
    return ResultInvalidArgument("initialisation vector of %d bytes", iv_->GetLength());
  if (EVP_CipherInit_ex(Context(context_), cipher, nullptr, key_->GetData(), iv_->GetData(), encrypt ? 1 : 0) != 1)
    return ProviderFailure();
  bool pad = IsBlockMode(mode_) && (padding_ == CCryptoService::PaddingPKCS7 || padding_ == CCryptoService::PaddingPKCS5);
  EVP_CIPHER_CTX_set_padding(Context(context_), pad ? 1 : 0);
  encrypting_ = encrypt;
  finished_ = false;
  return ResultOK();
}

Result CSymmetricAlgorithm::Update(const unsigned char* input, int count, unsigned char* output, int capacity,
                                   int* written) {
  if (written) *written = 0;
  if (count < 0) return ResultArgumentOutOfRange("negative count %d", count);
  // The provider may release one held-back block on top of the input.
  if (capacity < count + GetBlockSize() / 8)
    return ResultBufferTooSmall("%d bytes of room for %d bytes of input", capacity, count);
  int produced = 0;
  if (count > 0 && EVP_CipherUpdate(Context(context_), output, &produced, input, count) != 1)
    return ProviderFailure();
  if (written) *written = produced;
  return ResultOK();
}

Result CSymmetricAlgorithm::Final(unsigned char* output, int capacity, int* written) {
  if (written) *written = 0;
  // A finished context yields nothing more: a stream that is closed and then
  // released must not append a second padding block.
  if (finished_) return ResultOK();
  unsigned char last[EVP_MAX_BLOCK_LENGTH];
  int produced = 0;
  finished_ = true;
  if (EVP_CipherFinal_ex(Context(context_), last, &produced) != 1) return ProviderFailure();
  if (produced > capacity) return ResultExternalError(kFinalBlockTooLarge, nullptr);
  if (produced > 0) std::memcpy(output, last, static_cast<std::size_t>(produced));
  if (written) *written = produced;
  return ResultOK();
}

Result CSymmetricAlgorithm::GenerateKey() {
  Result r = service_ ? service_->Initialize() : ResultNullPointer("no crypto service");
  if (r.Failed()) return r;
  RObject<CByteArray> key(new CByteArray(keySize_ / 8, 1));
  if (RAND_bytes(key->GetData(), key->GetLength()) != 1) return ProviderFailure();
  ReplaceArray(key_, key);
  return ResultOK();
}

Result CSymmetricAlgorithm::GenerateIV() { return ResultNotImplemented(); }

Result CSymmetricAlgorithm::Encrypt(const unsigned char*, int, unsigned char*, int, int*) {
  return ResultNotImplemented();
}

Result CSymmetricAlgorithm::Decrypt(const unsigned char*, int, unsigned char*, int, int*) {
  return ResultNotImplemented();
}

Result CSymmetricAlgorithm::CreateEncryptor(CCryptoTransform*& transform) {
  transform = new CSymmetricEncryptor(this);
  return ResultOK();
}

Result CSymmetricAlgorithm::CreateEncryptor(unsigned char* key, unsigned char* iv, CCryptoTransform*& transform) {
  SetKey(key);
  SetIV(iv);
  return CreateEncryptor(transform);
}

Result CSymmetricAlgorithm::CreateDecryptor(CCryptoTransform*& transform) {
  transform = new CSymmetricDecryptor(this);
  return ResultOK();
}

Result CSymmetricAlgorithm::CreateDecryptor(unsigned char* key, unsigned char* iv, CCryptoTransform*& transform) {
  SetKey(key);
  SetIV(iv);
  return CreateDecryptor(transform);
}

}  // namespace Corvane::Mox
