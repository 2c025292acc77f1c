// What the fuzz targets share. Each target is a source that defines LLVMFuzzerTestOneInput(): the fuzzing engine
// calls it with inputs that it makes, and the replay program with the files of the target's corpus.

#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>

class ZORWorkContext;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

/// Aborts the program unless the promise holds, so that the engine keeps the input.
void Require(bool holds, const char* promise);

/// Returns a view of the input, valid as long as the input.
inline QByteArray ToBytes(const uint8_t* data, size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
}

/// Returns the context of a job that runs until the program ends.
const ZORWorkContext& GetJobContext();
