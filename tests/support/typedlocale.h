// The typed-data tests run under one known locale and give the library's back as they found it.
#pragma once
#include "typed/typed_internal.h"
#include "seam.h"
#include "testseam.h"
#include <gtest/gtest.h>
#include <string.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class TypedLocale : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const Slot& s : kSlots) saved_.emplace_back((const char*)s.address, s.size);
        g_cThousandSep = ',', g_cDecimalSep = '.', g_cDateSep = '/', g_cTimeSep = ':';
        strcpy(g_szDateFormat, "mm/dd/yyyy");
        strcpy(g_szTimeFormat, "h:mm:ss ap");
    }
    void TearDown() override
    {
        for (const auto& [name, old] : profile_) TestSetProfile("Intl", name.c_str(), old ? old->c_str() : nullptr);
        for (size_t i = 0; i < std::size(kSlots); ++i) memcpy(kSlots[i].address, saved_[i].data(), kSlots[i].size);
    }
    // Writes keys of the profile's Intl section for this test and reads the locale from them.
    void SetProfile(std::initializer_list<std::pair<const char*, const char*>> keys)
    {
        for (const auto& [name, value] : keys) {
            char old[64];
            SeamProfileString("Intl", name, "\x01", old, sizeof old);
            profile_.emplace_back(name, strcmp(old, "\x01") ? std::optional<std::string>(old) : std::nullopt);
            TestSetProfile("Intl", name, value);
        }
        GetIntlSettings();
    }

private:
    struct Slot {
        void* address;
        size_t size;
    };
    static inline const Slot kSlots[] = {
        {&g_cThousandSep, 1}, {&g_cDecimalSep, 1}, {&g_cDateSep, 1}, {&g_cTimeSep, 1}, {g_szDateFormat, 16},
        {g_szTimeFormat, 16}, {&g_nTLZero, sizeof(int)}, {g_sz1159, 4}, {g_sz2359, 4}, {g_szCurrency, 5}};
    std::vector<std::string> saved_;
    std::vector<std::pair<std::string, std::optional<std::string>>> profile_;
};
