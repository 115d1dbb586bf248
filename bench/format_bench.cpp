// FormatData and ParseData of one million numbers against the platform's peers
// in the same run: msvcrt's _snprintf("%.2f") plus GetNumberFormatA with the
// same layout as '#,##0.00', and msvcrt's strtod. Prints times and ratios.
#include "quill32.h"
#include "bench.h"
#include <stdio.h>
#include <string.h>
#include <vector>

namespace {

constexpr int kCount = 1000000;
constexpr int kRounds = 3;
constexpr int kTextSize = 64;

typedef int(__cdecl* SnprintfProc)(char*, size_t, const char*, ...);
typedef double(__cdecl* StrtodProc)(const char*, char**);

// Amounts in cents between -10 million and 10 million, as a ledger holds them.
std::vector<double> MakeValues()
{
    std::vector<double> values(kCount);
    bench::Random random;
    for (double& v : values) {
        unsigned long long state = random.Next();
        long long cents = (long long)(state % 2000000000ull) - 1000000000ll;
        v = (double)cents / 100.0;
    }
    return values;
}

void Report(const char* what, double ours, const char* peer, double theirs)
{
    printf("%-34s %8.1f ns/value   %-40s %8.1f ns/value   ratio %.2f\n", what, ours * 1e9 / kCount, peer,
           theirs * 1e9 / kCount, ours / theirs);
}

} // namespace

int main()
{
    HMODULE crt = LoadLibraryA("msvcrt.dll");
    SnprintfProc crtSnprintf = crt ? (SnprintfProc)(void*)GetProcAddress(crt, "_snprintf") : nullptr;
    StrtodProc crtStrtod = crt ? (StrtodProc)(void*)GetProcAddress(crt, "strtod") : nullptr;
    if (!crtSnprintf || !crtStrtod) {
        printf("msvcrt.dll's _snprintf or strtod not found\n");
        return 1;
    }
    SetDecimalSep('.');
    SetThousandsSep(',');

    std::vector<double> values = MakeValues();
    std::vector<char> ours((size_t)kCount * kTextSize), theirs((size_t)kCount * kTextSize);
    std::vector<char> plain((size_t)kCount * kTextSize);
    char* o = ours.data();
    char* t = theirs.data();
    char* p = plain.data();

    double tFormat = bench::Best(kRounds, [&] {
        for (int i = 0; i < kCount; ++i)
            FormatData(&values[i], HCLASS_NUMBER, 'd', "#,##0.00", o + i * kTextSize, kTextSize, nullptr, FALSE);
    });

    char decimal[] = ".", thousand[] = ",";
    NUMBERFMTA layout = {};
    layout.NumDigits = 2;
    layout.LeadingZero = 1;
    layout.Grouping = 3;
    layout.lpDecimalSep = decimal;
    layout.lpThousandSep = thousand;
    layout.NegativeOrder = 1; // "-1.1"
    double tPlatform = bench::Best(kRounds, [&] {
        for (int i = 0; i < kCount; ++i) {
            crtSnprintf(p + i * kTextSize, kTextSize, "%.2f", values[i]);
            GetNumberFormatA(LOCALE_USER_DEFAULT, 0, p + i * kTextSize, &layout, t + i * kTextSize, kTextSize);
        }
    });
    double tSnprintf = bench::Best(kRounds, [&] {
        for (int i = 0; i < kCount; ++i)
            crtSnprintf(p + i * kTextSize, kTextSize, "%.2f", values[i]);
    });

    int differ = 0;
    for (int i = 0; i < kCount; ++i)
        if (strcmp(o + i * kTextSize, t + i * kTextSize) != 0 && differ++ < 5)
            printf("differs: ours '%s' platform '%s'\n", o + i * kTextSize, t + i * kTextSize);

    std::vector<double> parsed(kCount), read(kCount);
    double tParse = bench::Best(kRounds, [&] {
        for (int i = 0; i < kCount; ++i)
            ParseData(nullptr, &parsed[i], HCLASS_NUMBER, 'd', "#,##0.00", o + i * kTextSize, nullptr);
    });
    double tStrtod = bench::Best(kRounds, [&] {
        for (int i = 0; i < kCount; ++i)
            read[i] = crtStrtod(p + i * kTextSize, nullptr);
    });
    int wrong = 0, wrongCrt = 0;
    for (int i = 0; i < kCount; ++i) {
        wrong += parsed[i] != values[i];
        wrongCrt += read[i] != values[i];
    }

    printf("%d values, '#,##0.00', best of %d rounds\n", kCount, kRounds);
    Report("FormatData", tFormat, "_snprintf %.2f + GetNumberFormatA", tPlatform);
    Report("FormatData", tFormat, "_snprintf %.2f alone", tSnprintf);
    Report("ParseData of the grouped texts", tParse, "strtod of the plain texts", tStrtod);
    printf("texts that differ from the platform's: %d\n", differ);
    printf("values read back wrong: ParseData %d, strtod %d\n", wrong, wrongCrt);
    return differ ? 2 : 0;
}
