#pragma once
// MOX_VECTOR_CLONES: compiles a plain line loop once for the baseline x86-64
// and once for x86-64-v3 (AVX2 and FMA); the loader picks the clone the
// processor runs. The loops stay portable C++ that GCC vectorises at -O3.
// The loader's choice runs before the sanitizers' runtimes are ready, so
// sanitized builds keep the one baseline loop.

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && \
    !defined(__SANITIZE_THREAD__)
#define MOX_VECTOR_CLONES __attribute__((target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#else
#define MOX_VECTOR_CLONES
#endif
