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

// A field's values as one line.
std::string Describe(const FieldValues& f)
{
    char s[200];
    snprintf(s, sizeof s, "%04X %d,%d size %d %c%c%c%c %c %X '%s' '%s'", f.flags, f.width, f.height, f.size, f.c1 ? f.c1 : '-',
             f.t1 ? f.t1 : '-', f.c2 ? f.c2 : '-', f.t2 ? f.t2 : '-', f.kind, (unsigned)f.style, f.title, f.format);
    return s;
}

std::string Describe(const HGField* f)
{
    return Describe({(WORD)f->flags, (SHORT)f->width, (SHORT)f->height, (SHORT)f->size, f->classLetter, f->typeLetter,
                     f->classLetter2, f->typeLetter2, f->editorKind, f->editorStyle, f->title, f->format});
}

// The head of a grid, its fields and its record sizes as one line.
std::string Describe(HGridData* g)
{
    if (!g)
        return "null";
    char s[200];
    snprintf(s, sizeof s, "%X style %X options %X min %d frozen %d metrics %d,%d,%d '%s' record %u,%d", g->version,
             (unsigned)g->style, (unsigned)g->options, g->minRows, g->frozenCols, g->rowHeight, g->rowHeaderWidth,
             g->colHeaderHeight, g->name, (unsigned)g->records->userWord, (int)g->records->itemSize);
    std::string d = s;
    for (int i = 0; i < g->fields->count; ++i)
        d += " | @" + std::to_string(HGFieldAt(g, i)->offset) + " " + Describe(HGFieldAt(g, i));
    return d;
}

// What loading gives: -1 for no grid, else the number of fields.
int LoadedFields(const Bytes& b)
{
    HGridData* g = LoadBytes(b);
    int fields = g ? g->fields->count : -1;
    HGridDestroy(g);
    return fields;
}

TEST(GridFile, EachVersionLoadsEveryValueAndFieldsGoThroughFieldCreateAgain)
{
    const std::string fields = " | @0 " + Describe(kName) + " | @20 " + Describe(kCode);
    FieldValues odd = {HGF_CODED | HGF_HIDDEN, 1, 5, 99, 'n', 'l', 0, 0, 'e', 0, "", ""};
    Stream oddStream;
    oddStream.w16(HGV_JH).w32(0).w16(-3).w16(-1).w16(-1).w16(-1).str("").w32(0).w16(0).w16(1);
    PutField(oddStream, odd);
    const struct {
        Bytes stream;
        std::string loaded;
    } cases[] = {
        // The first version always gets both scroll bars.
        {GridStream(HGV_GH), "4847 style 310081 options 0 min 0 frozen 1 metrics 18,30,22 'Orders' record 24,28" + fields},
        {GridStream(HGV_HH), "4848 style 10081 options 0 min 0 frozen 1 metrics 18,30,22 'Orders' record 24,28" + fields},
        {GridStream(HGV_IH), "4849 style 10081 options 11 min 4 frozen 1 metrics 18,30,22 'Orders' record 24,28" + fields},
        {GridStream(HGV_JH), "484A style 10081 options 11 min 4 frozen 1 metrics 18,30,22 'Orders' record 24,28" + fields},
        // Negative metrics mean the defaults; coded only for kinds d and l; the
        // width is made even and the size comes from the type.
        {oddStream.b, "484A style 0 options 0 min 0 frozen 0 metrics 20,35,20 '' record 4,6 | @0 0001 2,5 size 4 nl-- e 0 '' ''"},
    };
    for (const auto& c : cases) {
        HGridData* g = LoadBytes(c.stream);
        EXPECT_EQ(c.loaded, Describe(g));
        HGridDestroy(g);
    }
}

TEST(GridFile, SaveWritesTheBytesOfTheVersionArgumentAndStopsAtAFailingWrite)
{
    for (int version : {HGV_GH, HGV_IH, HGV_JH}) {
        Bytes original = GridStream(version, 0x00310081);
        HGridData* g = LoadBytes(original);
        ASSERT_NE(g, nullptr);
        EXPECT_EQ(original, Save(g, version)) << std::hex << version;
        HGridDestroy(g);
    }
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
    Sink all;
    ASSERT_TRUE(HGSave(SinkWrite, &all, HGV_JH, g));
    for (int n = 0; n < all.calls; ++n) {
        Sink failing;
        failing.failAt = n;
        EXPECT_FALSE(HGSave(SinkWrite, &failing, HGV_JH, g)) << "write " << n;
        EXPECT_EQ(n + 1, failing.calls) << "write " << n;
    }
    HGridDestroy(g);
}

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
        // Below each bound, the fields loaded (-1: null).
        const std::pair<size_t, int> ranges[] = {
            {header, -1}, {header + 2 + 27, 0}, {whole.size(), 1}, {whole.size() + 1, 2}};
        size_t cut = 0;
        for (const auto& r : ranges)
            for (; cut < r.first; ++cut)
                EXPECT_EQ(r.second, LoadedFields(Bytes(whole.begin(), whole.begin() + cut)))
                    << std::hex << version << std::dec << " cut " << cut;
    }
}

TEST(GridFile, MalformedCountsAndLengthsNeverReadOutsideTheStream)
{
    Stream header;
    header.w16(HGV_JH).w32(0).w16(0).w16(1).w16(1).w16(1).str("g").w32(0).w16(0);
    Stream oneField = header;
    oneField.w16(3);
    PutField(oneField, kCode);
    Stream badTitle = oneField;
    badTitle.w16(0).w16(2).w16(0).w16(1).w8('s').w8('s').w8(0).w8(0).w8('e').w32(0).w16(-2);
    const struct {
        const char* what;
        Bytes stream;
        int fields; // -1: null
    } cases[] = {
        {"wrong version", {0x46, 0x48, 0, 0}, -1},
        {"empty", {}, -1},
        {"negative name length", Stream().w16(HGV_JH).w32(0).w16(0).w16(1).w16(1).w16(1).w16(-1).raw("abcdefgh").b, -1},
        {"name longer than the stream", Stream().w16(HGV_GH).w32(0).w16(0).w16(1).w16(1).w16(1).w16(0x7FFF).raw("abc").b, -1},
        {"negative field count", Stream(header).w16(-2).b, 0},
        {"count larger than the blocks", oneField.b, 1},
        {"negative title length", badTitle.b, 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.fields, LoadedFields(c.stream)) << c.what;
    EXPECT_EQ(nullptr, HGLoad(nullptr, nullptr));
}

void WriteFile(const std::string& path, const Bytes& b)
{
    FILE* f = fopen(path.c_str(), "wb");
    ASSERT_NE(f, nullptr) << path;
    fwrite(b.data(), 1, b.size(), f);
    fclose(f);
}

TEST(GridFile, GridLoadAddsTheExtensionOnlyToANameWithoutAPointAndRefusesLongNames)
{
    MAKEDIR("gridtest");
    MAKEDIR("gridtest.d");
    WriteFile("gridtest" SEP "ORDERS.GRS", GridStream(HGV_JH));
    WriteFile("gridtest" SEP "orders.dat", GridStream(HGV_IH));
    WriteFile("gridtest.d" SEP "PLAIN", GridStream(HGV_GH));
    const struct {
        std::string name;
        int version; // 0: no grid, and the OFSTRUCT cleared
    } cases[] = {
        {"gridtest" SEP "ORDERS", HGV_JH},
        {"gridtest" SEP "orders.dat", HGV_IH},
        {"gridtest.d" SEP "PLAIN", HGV_GH}, // the point in the directory counts
        {"gridtest" SEP "MISSING", 0},
        {std::string(116, 'n'), 0}, // with ".GRS" and the terminator: 121 bytes
        {std::string(119, 'n') + ".", 0},
        {std::string(118, 'n') + ".", 0}, // fits, but there is no such file
    };
    for (const auto& c : cases) {
        OFSTRUCT of;
        memset(&of, 0x5A, sizeof of);
        HGridData* g = HGridLoad(c.name.c_str(), &of);
        EXPECT_EQ(c.version, g ? g->version : 0) << c.name;
        if (g) {
            EXPECT_EQ(sizeof of, of.cBytes);
            EXPECT_NE(nullptr, strstr(of.szPathName, c.name.c_str())) << of.szPathName;
        } else {
            EXPECT_EQ(OFSTRUCT(), of) << c.name;
        }
        HGridDestroy(g);
    }
    EXPECT_EQ(nullptr, HGridLoad(nullptr, nullptr));
    remove("gridtest" SEP "ORDERS.GRS");
    remove("gridtest" SEP "orders.dat");
    remove("gridtest.d" SEP "PLAIN");
    REMOVEDIR("gridtest");
    REMOVEDIR("gridtest.d");
}

} // namespace
