// The typed-data tests run under one known locale and give the library's back as they found it.
#pragma once
#include "typed/typed_internal.h"
#include "seam.h"
#include "testseam.h"
#include <gtest/gtest.h>
#include <string.h>
#include <string>
#include <vector>

class TypedLocale : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const Slot& s : Slots()) saved_.emplace_back((const char*)s.address, s.size);
        g_cThousandSep = ',', g_cDecimalSep = '.', g_cDateSep = '/', g_cTimeSep = ':';
        strcpy(g_szDateFormat, "mm/dd/yyyy");
        strcpy(g_szTimeFormat, "h:mm:ss ap");
    }
    void TearDown() override
    {
        for (const auto& [name, value] : profile_) TestSetProfile("Intl", name.c_str(), value.c_str()[0] == 1 ? nullptr : value.c_str());
        for (size_t i = 0; i < Slots().size(); ++i) memcpy(Slots()[i].address, saved_[i].data(), Slots()[i].size);
    }
    // Writes keys of the profile's Intl section for this test and reads the locale from it.
    void SetProfile(std::initializer_list<std::pair<const char*, const char*>> keys)
    {
        for (const auto& [name, value] : keys) {
            char old[64];
            SeamProfileString("Intl", name, "\x01", old, sizeof old);
            profile_.emplace_back(name, old);
            TestSetProfile("Intl", name, value);
        }
        GetIntlSettings();
    }

private:
    struct Slot {
        void* address;
        size_t size;
    };
    static const std::vector<Slot>& Slots()
    {
        static const std::vector<Slot> slots = {
            {&g_cThousandSep, 1}, {&g_cDecimalSep, 1}, {&g_cDateSep, 1}, {&g_cTimeSep, 1},
            {g_szDateFormat, 16}, {g_szTimeFormat, 16}, {&g_nTLZero, sizeof(int)}, {g_sz1159, 4},
            {g_sz2359, 4},        {g_szCurrency, 5}};
        return slots;
    }
    std::vector<std::string> saved_;
    std::vector<std::pair<std::string, std::string>> profile_;
};
