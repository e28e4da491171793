#include "System/Security/Cryptography/HashAlgorithm.h"

#include <openssl/evp.h>

#include <algorithm>
#include <cstring>

#include "System/ByteArray.h"
#include "System/Security/Cryptography/CryptoService.h"

namespace Corvane::Mox {

namespace {

// The library's algorithm numbers and the digests that implement them.
const EVP_MD* DigestFor(unsigned int algorithm) {
  switch (algorithm) {
    case 7:
      return EVP_md5();
    case 8:
      return EVP_sha1();
    case 0x8000000E:
      return EVP_sha256();
    default:
      return nullptr;
  }
}

EVP_MD_CTX* Context(void* p) { return static_cast<EVP_MD_CTX*>(p); }

}  // namespace

CHashAlgorithm::CHashAlgorithm(CCryptoService* service, unsigned int algorithm)
    : CCryptoTransform(FourCC("hash")), service_(service), algorithm_(algorithm), context_(nullptr), hash_(nullptr), finished_(false) {
  if (service_) service_->Acquire();
}

CHashAlgorithm::~CHashAlgorithm() {
  if (context_) EVP_MD_CTX_free(Context(context_));
  if (hash_) hash_->Release();
  if (service_) service_->Release();
}

Result CHashAlgorithm::Initialize() {
  if (context_) return ResultOK();
  if (!service_) return ResultNullPointer("no crypto service");
  Result r = service_->Initialize();
  if (r.Failed()) return r;
  const EVP_MD* digest = DigestFor(algorithm_);
  if (!digest) return ResultNotSupported("digest algorithm 0x%X", algorithm_);
  EVP_MD_CTX* context = EVP_MD_CTX_new();
  if (!context || EVP_DigestInit_ex(context, digest, nullptr) != 1) {
    EVP_MD_CTX_free(context);
    return ResultExternalError(CCryptoService::LastProviderError(), nullptr);
  }
  context_ = context;
  return ResultOK();
}

Result CHashAlgorithm::TransformBlock(unsigned char* input, int inputCount, unsigned char*, int, int* written) {
  Result r = Initialize();
  if (r.Failed()) return r;
  if (written) *written = 0;
  if (finished_) return ResultInvalidOperation("the hash is already finished");
  if (inputCount < 0) return ResultArgumentOutOfRange("negative count %d", inputCount);
  if (inputCount > 0 && EVP_DigestUpdate(Context(context_), input, static_cast<std::size_t>(inputCount)) != 1)
    return ResultExternalError(CCryptoService::LastProviderError(), nullptr);
  return ResultOK();
}

Result CHashAlgorithm::Finish() {
  if (hash_) hash_->Release();
  hash_ = new CByteArray(GetOutputBlockSize(), 1);
  unsigned int length = 0;
  if (EVP_DigestFinal_ex(Context(context_), hash_->GetData(), &length) != 1)
    return ResultExternalError(CCryptoService::LastProviderError(), nullptr);
  return hash_->SetLength(static_cast<int>(length));
}

Result CHashAlgorithm::TransformFinalBlock(unsigned char* output, int outputCapacity, int* written) {
  Result r = Initialize();
  if (r.Failed()) return r;
  if (written) *written = 0;
  // A finished digest has no more output; its hash stays available.
  if (finished_) return ResultOK();
  finished_ = true;
  r = Finish();
  if (r.Failed()) return r;
  if (written) *written = hash_->GetLength();
  if (output) std::memcpy(output, hash_->GetData(), static_cast<std::size_t>(std::clamp(outputCapacity, 0, hash_->GetLength())));
  return ResultOK();
}

Result CHashAlgorithm::ComputeHash(unsigned char* input, int count, unsigned char* output, int outputCapacity) {
  Result r = TransformBlock(input, count, nullptr, 0, nullptr);
  if (r.Failed()) return r;
  return TransformFinalBlock(output, outputCapacity, nullptr);
}

CByteArray* CHashAlgorithm::GetHash() {
  if (hash_) hash_->Acquire();
  return hash_;
}

}  // namespace Corvane::Mox
