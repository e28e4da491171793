#include "System/Security/Cryptography/CryptoStream.h"

#include <algorithm>
#include <cstring>

#include "System/Security/Cryptography/CryptoTransform.h"

namespace Corvane::Mox {

CCryptoStream::CCryptoStream(CStream* inner, CCryptoTransform* transform, CryptoMode mode)
    : CStream(TypeCode),
      inner_(inner),
      transform_(transform),
      mode_(mode),
      inputCapacity_(std::max(transform->GetInputBlockSize(), 1)),
      input_(new unsigned char[static_cast<std::size_t>(inputCapacity_)]),
      // Two output blocks: an update may release a held-back block beside the new one.
      outputCapacity_(std::max(2 * transform->GetOutputBlockSize(), inputCapacity_ + transform->GetOutputBlockSize())),
      output_(new unsigned char[static_cast<std::size_t>(outputCapacity_)]) {
  if (inner_) inner_->Acquire();
  transform_->Acquire();
}

CCryptoStream::~CCryptoStream() {
  if (mode_ == ModeWrite) FlushFinalBlock();
  if (inner_) inner_->Release();
  transform_->Release();
}

Result CCryptoStream::TransformInput() {
  int produced = 0;
  Result r = transform_->TransformBlock(input_.get(), inputCount_, output_.get(), outputCapacity_, &produced);
  inputCount_ = 0;
  outputPosition_ = 0;
  outputCount_ = r.Succeeded() ? produced : 0;
  return r;
}

Result CCryptoStream::Refill() {
  // A cipher may hold back whole blocks (a decryptor keeps the last one until it
  // knows whether it is the padding), so gather until output appears or the
  // inner stream ends.
  while (outputPosition_ >= outputCount_) {
    outputPosition_ = outputCount_ = 0;
    if (finalDone_) return ResultOK();
    inputCount_ = 0;
    Result r;
    do {
      int got = 0;
      r = inner_->Read(input_.get() + inputCount_, inputCapacity_ - inputCount_, &got);
      if (r.Failed()) return r;
      inputCount_ += got;
    } while (inputCount_ < inputCapacity_ && r.GetResultCode() > 0);
    if (inputCount_ == 0) {
      int produced = 0;
      r = transform_->TransformFinalBlock(output_.get(), outputCapacity_, &produced);
      finalDone_ = true;
      if (r.Failed()) return r;
      outputCount_ = produced;
      return ResultOK();
    }
    r = TransformInput();
    if (r.Failed()) return r;
  }
  return ResultOK();
}

Result CCryptoStream::Read(unsigned char* buffer, int count, int* read) {
  if (read) *read = 0;
  if (mode_ != ModeRead) return ResultIOError("crypto stream is not readable");
  if (!inner_) return ResultNullPointer("no inner stream");
  int done = 0;
  while (done < count) {
    Result r = Refill();
    if (r.Failed()) return r;
    int available = outputCount_ - outputPosition_;
    if (available <= 0) break;
    int n = std::min(available, count - done);
    std::memcpy(buffer + done, output_.get() + outputPosition_, static_cast<std::size_t>(n));
    outputPosition_ += n;
    done += n;
  }
  if (read) *read = done;
  return ResultOK();
}

int CCryptoStream::ReadByte() {
  if (mode_ != ModeRead) return ResultIOError().GetResultCode();
  if (!inner_ || Refill().Failed() || outputPosition_ >= outputCount_) return -1;
  return output_[outputPosition_++];
}

Result CCryptoStream::WriteOutput(int count) {
  int done = 0;
  while (done < count) {
    int written = 0;
    Result r = inner_->Write(output_.get() + done, count - done, &written);
    if (r.Failed()) return r;
    if (written <= 0) return ResultIOError("inner stream accepted no bytes");
    done += written;
  }
  return ResultOK();
}

Result CCryptoStream::Write(const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  if (mode_ != ModeWrite) return ResultIOError("crypto stream is not writable");
  if (!inner_) return ResultNullPointer("no inner stream");
  int done = 0;
  while (done < count) {
    if (inputCount_ == inputCapacity_) {
      Result r = TransformInput();
      if (r.Failed()) return r;
      r = WriteOutput(outputCount_);
      if (r.Failed()) return r;
    }
    int n = std::min(inputCapacity_ - inputCount_, count - done);
    std::memcpy(input_.get() + inputCount_, buffer + done, static_cast<std::size_t>(n));
    inputCount_ += n;
    done += n;
  }
  if (written) *written = done;
  return ResultOK();
}

Result CCryptoStream::WriteByte(unsigned char value, int* written) {
  Result r = Write(&value, 1, written);
  if (r.Failed()) return r;
  if (inputCount_ > inputCapacity_) return ResultIOError("input buffer overflow");
  return ResultOK();
}

Result CCryptoStream::FlushFinalBlock() {
  if (mode_ != ModeWrite) return ResultIOError("crypto stream is not writable");
  if (!inner_) return ResultNullPointer("no inner stream");
  if (inputCount_ > 0) {
    Result r = TransformInput();
    if (r.Failed()) return r;
    r = WriteOutput(outputCount_);
    if (r.Failed()) return r;
  }
  // Closing and then releasing a stream reaches this step twice; the
  // transforms answer a second final step with nothing, so one final block
  // reaches the inner stream.
  int produced = 0;
  Result r = transform_->TransformFinalBlock(output_.get(), outputCapacity_, &produced);
  if (r.Failed()) return r;
  return WriteOutput(produced);
}

void CCryptoStream::Close() {
  if (mode_ == ModeWrite) FlushFinalBlock();
}

}  // namespace Corvane::Mox
