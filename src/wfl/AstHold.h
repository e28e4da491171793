#pragma once
// Small helpers shared by the syntax-tree sources (not a public header).

namespace Corvane::Mox::WFL {

// Acquires a child reference that a node keeps; null stays null.
template <class T>
T* Hold(T* object) {
  if (object) object->Acquire();
  return object;
}

template <class T>
void Drop(T* object) {
  if (object) object->Release();
}

}  // namespace Corvane::Mox::WFL
