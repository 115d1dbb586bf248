// The .GRS format: hand-built streams of each version, saved bytes, the 0x4848
// asymmetry, and what cut or malformed streams give.
#include "grid/grid.h"
#include "frame/strings.h"
#include <gtest/gtest.h>
#include <stdio.h>
#include <string.h>
#include <string>
#include <vector>
#ifdef _WIN32
#include <direct.h>
#define MAKEDIR(d) _mkdir(d)
#define REMOVEDIR(d) _rmdir(d)
#define SEP "\\"
#else
#include <sys/stat.h>
#include <unistd.h>
#define MAKEDIR(d) mkdir(d, 0755)
#define REMOVEDIR(d) rmdir(d)
#define SEP "/"
#endif

bool operator==(const OFSTRUCT& a, const OFSTRUCT& b) { return memcmp(&a, &b, sizeof a) == 0; }

namespace {

using Bytes = std::vector<BYTE>;

// Little-endian stream written by hand.
struct Stream {
    Bytes b;
    Stream& w8(int v) { b.push_back((BYTE)v); return *this; }
    Stream& w16(int v) { return w8(v).w8(v >> 8); }
    Stream& w32(DWORD v) { return w16((int)(v & 0xFFFF)).w16((int)(v >> 16)); }
    Stream& raw(const char* s) { b.insert(b.end(), s, s + strlen(s)); return *this; }
    Stream& str(const char* s) { return w16((int)strlen(s)).raw(s); }
};

struct FieldValues {
    WORD flags;
    SHORT width, height, size;
    char c1, t1, c2, t2, kind;
    DWORD style;
    const char* title;
    const char* format;
};

const FieldValues kName = {HGF_READONLY | 0x0100, 120, 0, 20, 's', 's', 0, 0, 'e', 0x80, "Name", "!>"};
const FieldValues kCode = {HGF_CODED, 60, 90, 4, 'n', 'l', 's', 's', 'd', 0x1234, "Code", ""};

Stream& PutField(Stream& s, const FieldValues& f)
{
    s.w16(f.flags).w16(f.width).w16(f.height).w16(f.size);
    s.w8(f.c1).w8(f.t1).w8(f.c2).w8(f.t2).w8(f.kind).w32(f.style);
    return s.str(f.title).str(f.format);
}

// A stream of the given version: head values, the name "Orders", and the two fields.
Bytes GridStream(int version, DWORD style = 0x00010081)
{
    Stream s;
    s.w16(version).w32(style).w16(1).w16(18).w16(30).w16(22);
    if (version == HGV_HH)
        s.w16(6).raw("Orders").raw("Orders"); // what the loader reads in step
    else
        s.str("Orders");
    if (version >= HGV_IH)
        s.w32(0x11).w16(4);
    s.w16(2);
    PutField(s, kName);
    return PutField(s, kCode).b;
}

HGridData* LoadBytes(const Bytes& b)
{
    HGMemStream stream = {b.data(), b.data() + b.size()};
    return HGLoad(HGMemRead, &stream);
}

// Collects what HGSave writes; fails at call number failAt.
struct Sink {
    Bytes b;
    int calls = 0;
    int failAt = -1;
};
LONG CALLBACK SinkWrite(LPVOID context, LPVOID buffer, LONG count)
{
    Sink* sink = (Sink*)context;
    if (sink->calls++ == sink->failAt)
        return 5;
    sink->b.insert(sink->b.end(), (BYTE*)buffer, (BYTE*)buffer + count);
    return 0;
}

Bytes Save(HGridData* g, UINT version)
{
    Sink sink;
    EXPECT_TRUE(HGSave(SinkWrite, &sink, version, g));
    return sink.b;
}

void ExpectField(const FieldValues& f, const HGField* got)
{
    ASSERT_NE(got, nullptr);
    EXPECT_EQ(f.flags, got->flags);
    EXPECT_EQ(f.width, got->width);
    EXPECT_EQ(f.height, got->height);
    EXPECT_EQ(f.size, got->size);
    EXPECT_EQ(f.c1, got->classLetter);
    EXPECT_EQ(f.t1, got->typeLetter);
    EXPECT_EQ(f.c2, got->classLetter2);
    EXPECT_EQ(f.t2, got->typeLetter2);
    EXPECT_EQ(f.kind, got->editorKind);
    EXPECT_EQ(f.style, got->editorStyle);
    EXPECT_STREQ(f.title, got->title);
    EXPECT_STREQ(f.format, got->format);
}

TEST(GridFile, EachVersionLoadsEveryValue)
{
    struct Case {
        int version;
        DWORD style;
        DWORD options;
        SHORT minRows;
    } cases[] = {
        {HGV_GH, 0x00310081, 0, 0}, // the first version always gets both scroll bars
        {HGV_HH, 0x00010081, 0, 0},
        {HGV_IH, 0x00010081, 0x11, 4},
        {HGV_JH, 0x00010081, 0x11, 4},
    };
    for (const Case& c : cases) {
        HGridData* g = LoadBytes(GridStream(c.version));
        ASSERT_NE(g, nullptr) << std::hex << c.version;
        EXPECT_EQ(c.version, g->version);
        EXPECT_EQ(c.style, g->style) << std::hex << c.version;
        EXPECT_EQ(c.options, g->options);
        EXPECT_EQ(c.minRows, g->minRows);
        EXPECT_EQ(1, g->frozenCols);
        EXPECT_EQ(18, g->rowHeight);
        EXPECT_EQ(30, g->rowHeaderWidth);
        EXPECT_EQ(22, g->colHeaderHeight);
        EXPECT_STREQ("Orders", g->name);
        ASSERT_EQ(2, g->fields->count);
        ExpectField(kName, HGFieldAt(g, 0));
        ExpectField(kCode, HGFieldAt(g, 1));
        EXPECT_EQ(20, HGFieldAt(g, 1)->offset);
        EXPECT_EQ(24u, g->records->userWord);
        EXPECT_EQ(28, g->records->itemSize);
        HGridDestroy(g);
    }
}

TEST(GridFile, FieldsGoThroughFieldCreateAgain)
{
    FieldValues odd = {HGF_CODED | HGF_HIDDEN, 1, 5, 99, 'n', 'l', 0, 0, 'e', 0, "", ""};
    Stream s;
    s.w16(HGV_JH).w32(0).w16(-3).w16(-1).w16(-1).w16(-1).str("").w32(0).w16(0).w16(1);
    HGridData* g = LoadBytes(PutField(s, odd).b);
    ASSERT_NE(g, nullptr);
    EXPECT_STREQ("", g->name);
    EXPECT_EQ(0, g->frozenCols);
    EXPECT_EQ(20, g->rowHeight); // negative metrics mean the defaults
    EXPECT_EQ(35, g->rowHeaderWidth);
    HGField* f = HGFieldAt(g, 0);
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(HGF_HIDDEN, f->flags); // coded only for kinds d and l
    EXPECT_EQ(2, f->width);
    EXPECT_EQ(GetDataSize('n', 'l'), f->size);
    EXPECT_STREQ("", f->title);
    EXPECT_STREQ("", f->format);
    HGridDestroy(g);
}

TEST(GridFile, SavingALoadedStreamGivesTheSameBytes)
{
    for (int version : {HGV_GH, HGV_IH, HGV_JH}) {
        Bytes original = GridStream(version, 0x00310081);
        HGridData* g = LoadBytes(original);
        ASSERT_NE(g, nullptr);
        EXPECT_EQ(original, Save(g, version)) << std::hex << version;
        HGridDestroy(g);
    }
}

TEST(GridFile, SaveWritesWhatTheVersionArgumentHolds)
{
    HGridData* g = LoadBytes(GridStream(HGV_JH));
    EXPECT_EQ(GridStream(HGV_IH), Save(g, HGV_IH));
    EXPECT_EQ(GridStream(HGV_GH), Save(g, 0xABCD0000 | HGV_GH)); // low 16 bits only
    EXPECT_EQ(HGV_JH, g->version);
    EXPECT_EQ(0x11u, g->options);
    Sink sink;
    EXPECT_FALSE(HGSave(SinkWrite, &sink, 0x4846, g));
    EXPECT_FALSE(HGSave(SinkWrite, &sink, 0x484B, g));
    EXPECT_EQ(0, sink.calls);
    EXPECT_FALSE(HGSave(SinkWrite, &sink, HGV_JH, nullptr));
    HGridDestroy(g);
}

TEST(GridFile, SaveStopsAtTheFirstFailingWrite)
{
    HGridData* g = LoadBytes(GridStream(HGV_JH));
    Sink all;
    ASSERT_TRUE(HGSave(SinkWrite, &all, HGV_JH, g));
    for (int n = 0; n < all.calls; ++n) {
        Sink sink;
        sink.failAt = n;
        EXPECT_FALSE(HGSave(SinkWrite, &sink, HGV_JH, g)) << "write " << n;
        EXPECT_EQ(n + 1, sink.calls) << "write " << n;
    }
    HGridDestroy(g);
}

// HGSave writes the 0x4848 name with its length twice; HGLoad reads one length
// and the name twice. They agree only for a two-byte name.
TEST(GridFile, VersionHHSaveAndLoadDisagreeButForTwoByteNames)
{
    HGridData* g = HGridCreate("AB", 0, 0, 0, 1, 2, 3, 0);
    g->version = HGV_HH;
    HGAppendFld(g, HGFieldCreate("T", 0, 9, 0, 's', 's', 0, 0, 3, 'e', 0, ""));
    Bytes saved = Save(g, HGV_HH);
    Stream expected;
    expected.w16(HGV_HH).w32(0).w16(0).w16(1).w16(2).w16(3).w16(2).w16(2).raw("AB").w16(1);
    PutField(expected, {0, 9, 0, 3, 's', 's', 0, 0, 'e', 0, "T", ""});
    EXPECT_EQ(expected.b, saved);
    HGridData* back = LoadBytes(saved);
    ASSERT_NE(back, nullptr);
    EXPECT_FALSE(HGridChanged(g, back));
    HGridDestroy(back);

    HStrReplace(&g->name, "GRID");
    saved = Save(g, HGV_HH);
    back = LoadBytes(saved);
    ASSERT_NE(back, nullptr);
    // Length 4, then "\4\0GR" and over it "ID" and the field count's bytes.
    EXPECT_STREQ("ID\x01", back->name);
    EXPECT_TRUE(HGridChanged(g, back));
    HGridDestroy(back);
    HGridDestroy(g);
}

// Every cut of a stream: null inside the version word and the header, then a
// grid with the fields that came whole.
TEST(GridFile, CutStreamsGiveTheResultsOfTheFailureTable)
{
    for (int version : {HGV_GH, HGV_HH, HGV_JH}) {
        Bytes whole = GridStream(version);
        size_t header = whole.size() - 2 - (21 + 4 + 2) - (21 + 4 + 0);
        struct Range {
            size_t below;
            int fields; // -1: null
        } ranges[] = {
            {header, -1},
            {header + 2, 0},                 // no field count
            {header + 2 + 27, 0},            // cut in the first field
            {whole.size(), 1},               // cut in the second
            {whole.size() + 1, 2},
        };
        size_t cut = 0;
        for (const Range& r : ranges) {
            for (; cut < r.below; ++cut) {
                Bytes part(whole.begin(), whole.begin() + cut);
                HGridData* g = LoadBytes(part);
                if (r.fields < 0) {
                    EXPECT_EQ(nullptr, g) << std::hex << version << std::dec << " cut " << cut;
                } else {
                    ASSERT_NE(nullptr, g) << std::hex << version << std::dec << " cut " << cut;
                    EXPECT_EQ(r.fields, g->fields->count) << std::hex << version << std::dec << " cut " << cut;
                }
                HGridDestroy(g);
            }
        }
    }
}

TEST(GridFile, MalformedCountsAndLengthsNeverReadOutsideTheStream)
{
    struct Case {
        const char* what;
        Bytes stream;
        int fields; // -1: null
    };
    Stream header;
    header.w16(HGV_JH).w32(0).w16(0).w16(1).w16(1).w16(1).str("g").w32(0).w16(0);
    auto with = [&header](std::initializer_list<BYTE> tail) {
        Bytes b = header.b;
        b.insert(b.end(), tail);
        return b;
    };
    Stream oneField = header;
    oneField.w16(3);
    PutField(oneField, kCode);
    Stream badTitle = oneField;
    badTitle.w16(0).w16(2).w16(0).w16(1).w8('s').w8('s').w8(0).w8(0).w8('e').w32(0).w16(-2);
    Case cases[] = {
        {"wrong version", {0x46, 0x48, 0, 0}, -1},
        {"empty", {}, -1},
        {"negative name length", Stream().w16(HGV_JH).w32(0).w16(0).w16(1).w16(1).w16(1).w16(-1).raw("abcdefgh").b, -1},
        {"name longer than the stream", Stream().w16(HGV_GH).w32(0).w16(0).w16(1).w16(1).w16(1).w16(0x7FFF).raw("abc").b, -1},
        {"negative field count", with({0xFE, 0xFF}), 0},
        {"count larger than the blocks", oneField.b, 1},
        {"negative title length", badTitle.b, 1},
    };
    for (const Case& c : cases) {
        HGridData* g = LoadBytes(c.stream);
        if (c.fields < 0) {
            EXPECT_EQ(nullptr, g) << c.what;
        } else {
            ASSERT_NE(nullptr, g) << c.what;
            EXPECT_EQ(c.fields, g->fields->count) << c.what;
        }
        HGridDestroy(g);
    }
    EXPECT_EQ(nullptr, HGLoad(nullptr, nullptr));
}

void WriteFile(const std::string& path, const Bytes& b)
{
    FILE* f = fopen(path.c_str(), "wb");
    ASSERT_NE(f, nullptr) << path;
    fwrite(b.data(), 1, b.size(), f);
    fclose(f);
}

TEST(GridFile, GridLoadAddsTheExtensionOnlyToANameWithoutAPoint)
{
    MAKEDIR("gridtest");
    MAKEDIR("gridtest.d");
    WriteFile("gridtest" SEP "ORDERS.GRS", GridStream(HGV_JH));
    WriteFile("gridtest" SEP "orders.dat", GridStream(HGV_IH));
    WriteFile("gridtest.d" SEP "PLAIN", GridStream(HGV_GH));
    struct Case {
        const char* name;
        int version; // 0: not found
    } cases[] = {
        {"gridtest" SEP "ORDERS", HGV_JH},
        {"gridtest" SEP "orders.dat", HGV_IH},
        {"gridtest.d" SEP "PLAIN", HGV_GH}, // the point in the directory counts
        {"gridtest" SEP "MISSING", 0},
    };
    for (const Case& c : cases) {
        OFSTRUCT of;
        memset(&of, 0x5A, sizeof of);
        HGridData* g = HGridLoad(c.name, &of);
        if (!c.version) {
            EXPECT_EQ(nullptr, g) << c.name;
            EXPECT_EQ(OFSTRUCT(), of) << c.name;
            continue;
        }
        ASSERT_NE(nullptr, g) << c.name;
        EXPECT_EQ(c.version, g->version) << c.name;
        EXPECT_EQ(sizeof of, of.cBytes);
        EXPECT_NE(nullptr, strstr(of.szPathName, c.name)) << of.szPathName;
        HGridDestroy(g);
    }
    EXPECT_EQ(nullptr, HGridLoad(nullptr, nullptr));
    remove("gridtest" SEP "ORDERS.GRS");
    remove("gridtest" SEP "orders.dat");
    remove("gridtest.d" SEP "PLAIN");
    REMOVEDIR("gridtest");
    REMOVEDIR("gridtest.d");
}

TEST(GridFile, GridLoadRefusesANameLongerThanItsBuffer)
{
    std::string name(116, 'n'); // with ".GRS" and the terminator: 121 bytes
    OFSTRUCT of;
    memset(&of, 0x5A, sizeof of);
    EXPECT_EQ(nullptr, HGridLoad(name.c_str(), &of));
    EXPECT_EQ(OFSTRUCT(), of);
    name = std::string(119, 'n') + ".";
    EXPECT_EQ(nullptr, HGridLoad(name.c_str(), nullptr));
    name = std::string(118, 'n') + ".";
    EXPECT_EQ(nullptr, HGridLoad(name.c_str(), nullptr)); // fits, but there is no such file
}

} // namespace
