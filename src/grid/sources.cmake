# Sources of src/grid.
list(APPEND QUILL_WIN_SOURCES grid/hgrid.cpp grid/gridcells.cpp grid/gridwin.cpp)
list(APPEND QUILL_CORE_SOURCES grid/griddata.cpp grid/gridfile.cpp)
list(APPEND QUILL_WIN_SOURCES grid/gridres.cpp)
list(APPEND QUILL_WIN_SOURCES grid/gridlayout.cpp grid/gridpaint.cpp)
list(APPEND QUILL_WIN_SOURCES grid/gridmsg.cpp grid/gridmove.cpp)
list(APPEND QUILL_WIN_SOURCES grid/grideditor.cpp grid/gridmouse.cpp grid/gridclip.cpp)
