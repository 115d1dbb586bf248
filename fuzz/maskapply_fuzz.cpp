// HMaskApply in both modes with random source, mask and size, into a target of
// exactly `size` bytes: the result stays inside, is terminated, and the count
// agrees with the text (strip mode reports one more where it stopped).
#include "typed/format.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    BOOL strip = data[0] & 1;
    bool nullMask = data[0] & 2;
    int targetSize = data[1] % 64;
    size_t maskLength = data[2];
    data += 3;
    size -= 3;
    if (maskLength > size)
        maskLength = size;
    std::string mask((const char*)data, maskLength), source((const char*)data + maskLength, size - maskLength);
    std::vector<char> target((size_t)(targetSize ? targetSize : 1), '\x7f');
    int n = HMaskApply(source.c_str(), nullMask ? nullptr : mask.c_str(), target.data(), targetSize, strip);
    if (targetSize < 1) {
        if (n != 0 || target[0] != '\x7f')
            abort();
        return 0;
    }
    const void* end = memchr(target.data(), 0, target.size());
    if (!end)
        abort();
    int length = (int)((const char*)end - target.data());
    if (length > targetSize - 1)
        abort();
    if (n != length && !(strip && n == length + 1))
        abort();
    return 0;
}
