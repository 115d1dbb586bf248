// _fstrnzcpy with a random source and limit into a fixed buffer: nothing is
// written past the limit, the copy is terminated, and the count is right.
#include "quill32.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    constexpr int kBuffer = 64;
    if (size < 1)
        return 0;
    // The limit lies in -8 .. kBuffer, so that the target is always large enough
    // for a positive limit and a negative one means "no limit".
    int limit = (int)(data[0] % (kBuffer + 9)) - 8;
    std::string source((const char*)data + 1, size - 1);
    size_t sourceLength = strlen(source.c_str());
    if (limit < 0 && sourceLength >= (size_t)kBuffer)
        return 0; // an unbounded copy needs a target as long as the source
    char target[kBuffer + 8];
    memset(target, 0x5A, sizeof target);
    int count = _fstrnzcpy(target, source.c_str(), limit);
    if (limit == 0) {
        if (count != 0 || target[0] != 0x5A)
            abort();
        return 0;
    }
    size_t expected = limit > 0 && sourceLength > (size_t)(limit - 1) ? (size_t)(limit - 1) : sourceLength;
    if ((size_t)count != expected || target[count] != 0 || memcmp(target, source.c_str(), expected) != 0)
        abort();
    for (size_t i = (size_t)count + 1; i < sizeof target; ++i)
        if (target[i] != 0x5A)
            abort();
    return 0;
}
