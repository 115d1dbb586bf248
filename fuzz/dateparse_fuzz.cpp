// A date text and a mask through the date reader, in buffers of exactly their
// own size: nothing is read past either terminator. What was read is then
// checked with repair, which must leave every field in range, displayed by
// the same mask into an exact buffer, and stored in every date type.
#include "fuzz_typed.h"
#include "typed/dates.h"
#include <stdlib.h>
#include <string.h>
#include <vector>

namespace {

constexpr const char* kDateFormats[] = {"mm/dd/yyyy", "dd/mm/yy", "yyyy.mm.dd", "d/m/yyyy", "mmm dd yy"};
constexpr const char* kTimeFormats[] = {"h:mm:ss ap", "hh:mm:ss", "hh:mm", "h:mm ap", "hh:mm:ss.ff"};
constexpr char kDateTypes[] = "DQqusAadlIitTm"; // T and m fail outside 1970 to 2038

std::vector<char> Exact(const uint8_t* data, size_t n)
{
    std::vector<char> v(data, data + n);
    v.push_back(0);
    return v;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 4)
        return 0;
    BOOL hasDate = data[0] & 1, hasTime = (data[0] >> 1) & 1;
    bool nullMask = data[0] & 4;
    BOOL editing = (data[0] >> 6) & 1;
    SetDateSep(kFuzzSeparators[(data[0] >> 3) % (sizeof kFuzzSeparators - 1)]);
    SetTimeSep(kFuzzSeparators[data[1] % (sizeof kFuzzSeparators - 1)]);
    SetDefDateFormat(kDateFormats[(data[1] >> 3) % 5]);
    SetDefTimeFormat(kTimeFormats[data[2] % 5]);
    size_t maskLength = data[3];
    data += 4;
    size -= 4;
    if (maskLength > size)
        maskLength = size;
    std::vector<char> mask = Exact(data, maskLength);
    std::vector<char> text = Exact(data + maskLength, size - maskLength);
    const char* m = nullMask ? nullptr : mask.data();

    HDateTime r;
    if (HDateParse(&r, text.data(), m, hasDate, hasTime) != 1)
        abort();
    HDateCheck(nullptr, &r, 1, 1, 1, 1);
    HTimeCheck(nullptr, &r, 1, 0, 1, 1, 1);
    static const int kDays[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int limit = r.bMonth == 2 && HDateIsCommonYear(r.wYear) ? 28 : kDays[(r.bMonth + 11) % 12];
    if (r.bMonth < 1 || r.bMonth > 12 || r.bDay < 1 || r.bDay > limit || r.bHour > 23 || r.bMinute > 59 ||
        r.bSecond > 59)
        abort(); // a repaired record is in range

    for (int textSize : {1, 2, 9, 40}) {
        std::vector<char> out((size_t)textSize, '\x7f');
        int n = HDateFormat(&r, m, out.data(), textSize, editing, hasDate, hasTime);
        if (n < 0 || n > textSize - 1 || out[(size_t)n] != 0 || (int)strlen(out.data()) != n)
            abort();
    }
    for (const char* t = kDateTypes; *t; ++t) {
        std::vector<unsigned char> value((size_t)FuzzValueSize('a', *t));
        bool calendar = *t == 'T' || *t == 'm';
        if (!DateTimeToData(&r, value.data(), *t)) {
            if (!calendar)
                abort();
            continue;
        }
        HDateTime back;
        if (!DataToDateTime(&back, value.data(), *t))
            abort();
    }
    return 0;
}
