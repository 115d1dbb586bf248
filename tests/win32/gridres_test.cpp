// Grids loaded from module resources of type 300 (tests/win32/gridres.rc).
#include <windows.h>
#include <gtest/gtest.h>
#include "quill32.h"

namespace {

HMODULE Self() { return GetModuleHandleA(nullptr); }

TEST(GridResource, LoadsEveryValueOfTheStream)
{
    HGridData* g = HGLoadResourceGrid(Self(), "ORDERS");
    ASSERT_NE(nullptr, g);
    EXPECT_EQ(HGV_JH, g->version);
    EXPECT_EQ(0x00010081u, g->style);
    EXPECT_EQ(0x11u, g->options);
    EXPECT_EQ(4, g->minRows);
    EXPECT_EQ(1, g->frozenCols);
    EXPECT_EQ(18, g->rowHeight);
    EXPECT_EQ(30, g->rowHeaderWidth);
    EXPECT_EQ(22, g->colHeaderHeight);
    EXPECT_STREQ("Orders", g->name);
    ASSERT_EQ(2, g->fields->count);
    HGField* name = HGFieldAt(g, 0);
    EXPECT_STREQ("Name", name->title);
    EXPECT_STREQ("!>", name->format);
    EXPECT_EQ(0x0104, name->flags);
    EXPECT_EQ(120, name->width);
    EXPECT_EQ(20, name->size);
    EXPECT_EQ('e', name->editorKind);
    EXPECT_EQ(0x80u, name->editorStyle);
    HGField* code = HGFieldAt(g, 1);
    EXPECT_STREQ("Code", code->title);
    EXPECT_STREQ("", code->format);
    EXPECT_EQ(HGF_CODED, code->flags);
    EXPECT_EQ(60, code->width);
    EXPECT_EQ(90, code->height);
    EXPECT_EQ('n', code->classLetter);
    EXPECT_EQ('s', code->classLetter2);
    EXPECT_EQ('d', code->editorKind);
    EXPECT_EQ(0x1234u, code->editorStyle);
    EXPECT_EQ(4, code->size); // coded by a string: the size in the stream stands
    EXPECT_EQ(20, code->offset);
    HGridDestroy(g);
}

TEST(GridResource, AStreamCutBeforeTheFieldCountGivesAGridWithoutFields)
{
    HGridData* g = HGLoadResourceGrid(Self(), "EMPTY");
    ASSERT_NE(nullptr, g);
    EXPECT_EQ(HGV_GH, g->version);
    EXPECT_EQ(0x00300000u, g->style);
    EXPECT_EQ(20, g->rowHeight);
    EXPECT_EQ(35, g->rowHeaderWidth);
    EXPECT_STREQ("Empty", g->name);
    EXPECT_EQ(0, g->fields->count);
    HGridDestroy(g);
}

TEST(GridResource, ReadsNoFurtherThanTheResourceSize)
{
    EXPECT_EQ(nullptr, HGLoadResourceGrid(Self(), "LONGNAME"));
}

TEST(GridResource, MissingResourceOrNameGivesNull)
{
    EXPECT_EQ(nullptr, HGLoadResourceGrid(Self(), "NOSUCHGRID"));
    EXPECT_EQ(nullptr, HGLoadResourceGrid(Self(), nullptr));
}

} // namespace
