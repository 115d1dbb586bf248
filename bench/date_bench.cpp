// FormatData of one million dates with 'dd/mm/yyyy' against GetDateFormatA
// with the same picture, in the same run. Each side starts from its own
// storage of the same dates: the library's class d type d (year, month, day
// words), the platform's SYSTEMTIME. Prints times and the ratio, after
// checking that both made the same texts.
#include "quill32.h"
#include "bench.h"
#include <stdio.h>
#include <string.h>
#include <vector>

namespace {

constexpr int kCount = 1000000;
constexpr int kRounds = 3;
constexpr int kTextSize = 16;

// Dates spread over 1900 to 2099, as a register of births and contracts holds them.
std::vector<SYSTEMTIME> MakeDates()
{
    static const int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    std::vector<SYSTEMTIME> dates(kCount);
    bench::Random random;
    for (SYSTEMTIME& d : dates) {
        unsigned long long state = random.Next();
        memset(&d, 0, sizeof d);
        d.wYear = (WORD)(1900 + state % 200);
        d.wMonth = (WORD)(1 + (state >> 8) % 12);
        d.wDay = (WORD)(1 + (state >> 16) % kDays[d.wMonth - 1]);
    }
    return dates;
}

} // namespace

int main()
{
    SetDateSep('/');
    std::vector<SYSTEMTIME> dates = MakeDates();
    std::vector<WORD> stored((size_t)kCount * 3);
    for (int i = 0; i < kCount; ++i) {
        stored[(size_t)i * 3] = dates[i].wYear;
        stored[(size_t)i * 3 + 1] = dates[i].wMonth;
        stored[(size_t)i * 3 + 2] = dates[i].wDay;
    }
    std::vector<char> ours((size_t)kCount * kTextSize), theirs((size_t)kCount * kTextSize);

    double tOurs = bench::Best(kRounds, [&] {
        char* o = ours.data();
        for (int i = 0; i < kCount; ++i, o += kTextSize)
            FormatData(&stored[(size_t)i * 3], HCLASS_DATE, HTYPE_YMD, "dd/mm/yyyy", o, kTextSize, nullptr, 0);
    });
    double tTheirs = bench::Best(kRounds, [&] {
        char* t = theirs.data();
        for (int i = 0; i < kCount; ++i, t += kTextSize)
            GetDateFormatA(LOCALE_USER_DEFAULT, 0, &dates[i], "dd/MM/yyyy", t, kTextSize);
    });

    int differ = 0;
    for (int i = 0; i < kCount; ++i)
        differ += strcmp(&ours[(size_t)i * kTextSize], &theirs[(size_t)i * kTextSize]) != 0;
    printf("FormatData 'dd/mm/yyyy'          %8.1f ns/date   GetDateFormatA 'dd/MM/yyyy' %8.1f ns/date   ratio %.2f\n",
           tOurs * 1e9 / kCount, tTheirs * 1e9 / kCount, tOurs / tTheirs);
    printf("first texts: '%s' and '%s'; %d of %d differ\n", ours.data(), theirs.data(), differ, kCount);
    return differ ? 1 : 0;
}
