// The combo's records freed without its windows, as the grid's cell types need.
#include "wintest.h"
#include "list/hcomb.h"
#include "list/hlist.h"

namespace {

TEST(CombRecords, FreeingTheRecordsLeavesThreePlainWindows)
{
    const struct {
        const char* name;
        DWORD style;
    } cases[] = {
        {"a one-item child sharing the list's store", HCS_DROPLIST},
        {"an edit child", HCS_DROPLIST | HCS_EDITABLE},
        {"an open list", 0},
    };
    HLibraryEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestParent parent;
        HWND combo = parent.Child(HCOMB_CLASS, "%s", c.style, 9, 0, 0, 150, 24);
        auto* r = (HCombRecord*)SendMessageA(combo, HM_GETPTR, 0, 0);
        ASSERT_TRUE(r);
        HWND child = r->hChild, list = r->hList;
        ASSERT_TRUE(r->childRecord && r->listRecord);
        SendMessageA(combo, CB_ADDSTRING, 0, (LPARAM)"apple");
        HCombFreeRecords(r);
        for (HWND w : {combo, child, list})
            EXPECT_EQ(0, SendMessageA(w, HM_GETPTR, 0, 0));
        DestroyWindow(list);
        DestroyWindow(combo);
        EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
    }
}

} // namespace
