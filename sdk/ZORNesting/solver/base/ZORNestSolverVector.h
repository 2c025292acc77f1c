// Vector arithmetic that is the same on every processor.

#pragma once

#include <cstdint>

/// One source, compiled for the vector unit at hand; no operation is contracted or reordered, so that every
/// processor decides alike.
#if defined(__SANITIZE_THREAD__) // clones are chosen before the sanitizer is ready, which crashes
#define ZOR_VECTOR_CLONES
#else
#define ZOR_VECTOR_CLONES __attribute__((target_clones("avx2", "default")))
#endif

namespace ZORNestSolver {

typedef double Quad __attribute__((vector_size(32), aligned(8), may_alias));
typedef float Octet __attribute__((vector_size(32), aligned(4), may_alias));
typedef int64_t QuadMask __attribute__((vector_size(32)));
typedef int32_t OctetMask __attribute__((vector_size(32)));

/// Four numbers at a time, wherever they lie.
inline const Quad& At(const double* values)
{
    return *reinterpret_cast<const Quad*>(values);
}

/// Eight numbers at a time, wherever they lie.
inline const Octet& At(const float* values)
{
    return *reinterpret_cast<const Octet*>(values);
}

/// No lane of the mask is set.
inline bool IsClear(const QuadMask& mask)
{
    return (mask[0] | mask[1] | mask[2] | mask[3]) == 0;
}
inline bool IsClear(const OctetMask& mask)
{
    return IsClear(reinterpret_cast<QuadMask>(mask));
}

} // namespace ZORNestSolver
