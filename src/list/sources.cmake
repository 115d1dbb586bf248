# Sources of src/list.
list(APPEND QUILL_WIN_SOURCES list/hlist.cpp list/hlistpaint.cpp list/hlitems.cpp list/hcomb.cpp list/hcombdrop.cpp)
